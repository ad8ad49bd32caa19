#include "platform/linux/user/message_box_layout.h"

#include "platform/linux/ce/user.h"
#include "platform/linux/user/message_box_look.h"
#include "platform/screen_size.h"

#include <algorithm>
#include <string_view>

namespace cardsong::user {

namespace {

constexpr int kWidthPx = 296;
constexpr int kMarginPx = 12;
constexpr int kBandPx = 26;
constexpr int kButtonWidthPx = 96;
constexpr int kButtonHeightPx = 40; // a fingertip
constexpr int kMaxHeightPx = kScreenHeightPx - 8;
constexpr int kTextTopPx = kBandPx + kMarginPx;
constexpr int kBelowTextPx = kMarginPx + kButtonHeightPx + kMarginPx;

// A memory context with the font, for measuring.
class Ruler {
public:
    explicit Ruler(HFONT font) : m_context(CreateCompatibleDC(nullptr)) { SelectObject(m_context, font); }
    ~Ruler() { DeleteDC(m_context); }
    Ruler(const Ruler&) = delete;
    Ruler& operator=(const Ruler&) = delete;

    int HeightOf(const std::u16string& text, int widthPx) const
    {
        RECT rect = { 0, 0, widthPx, 0 };
        DrawTextW(m_context, text.c_str(), static_cast<int>(text.size()), &rect, kMessageFormat | DT_CALCRECT);
        return rect.bottom;
    }
    // At least one unit, and no half of a pair.
    std::size_t UnitsThatFit(std::u16string_view word, int widthPx) const
    {
        int fit = 0;
        SIZE size{};
        GetTextExtentExPointW(m_context, word.data(), static_cast<int>(word.size()), widthPx, &fit, nullptr, &size);
        auto units = std::max<std::size_t>(static_cast<std::size_t>(fit), 1);
        if (units < word.size() && IsSecondOfPair(word[units]))
            units = units == 1 ? 2 : units - 1;
        return units;
    }

private:
    static bool IsSecondOfPair(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

    const HDC m_context;
};

// Wrapping breaks a line at blanks and beside every Chinese character.
bool IsPartOfWord(char16_t unit)
{
    constexpr char16_t kFirstOfChinese = 0x2E80;
    const bool isHalfOfPair = unit >= 0xD800 && unit <= 0xDFFF;
    return unit > u' ' && (unit < kFirstOfChinese || isHalfOfPair);
}

// A word that is wider than a line goes on in the next one.
std::u16string BreakWideWords(std::u16string_view text, const Ruler& ruler, int widthPx)
{
    std::u16string broken;
    for (auto at = text.begin(); at != text.end();) {
        const auto end = std::find_if_not(at, text.end(), IsPartOfWord);
        if (end == at) {
            broken += *at++;
            continue;
        }
        std::u16string_view word(at, end);
        for (auto fit = ruler.UnitsThatFit(word, widthPx); fit < word.size(); fit = ruler.UnitsThatFit(word, widthPx)) {
            broken.append(word.substr(0, fit)).push_back(u'\n');
            word.remove_prefix(fit);
        }
        broken += word;
        at = end;
    }
    return broken;
}

// The longest beginning of the text that has room together with an ellipsis.
std::u16string Shorten(const std::u16string& text, const Ruler& ruler, int widthPx, int heightPx)
{
    std::size_t fits = 0;
    std::size_t tooMany = text.size();
    while (fits + 1 < tooMany) {
        const std::size_t middle = fits + (tooMany - fits) / 2;
        const bool hasRoom = ruler.HeightOf(text.substr(0, middle) + u'…', widthPx) <= heightPx;
        (hasRoom ? fits : tooMany) = middle;
    }
    return text.substr(0, fits) + u'…';
}

std::vector<RECT> PlaceButtons(int count, int bottom)
{
    std::vector<RECT> places;
    const int rowPx = count * kButtonWidthPx + (count - 1) * kMarginPx;
    int left = (kWidthPx - rowPx) / 2;
    for (int i = 0; i < count; ++i, left += kButtonWidthPx + kMarginPx)
        places.push_back({ left, bottom - kButtonHeightPx, left + kButtonWidthPx, bottom });
    return places;
}

} // namespace

MessageBoxLayout PlanMessageBox(const MessageBoxParts& parts, HFONT font)
{
    MessageBoxLayout plan;
    const Ruler ruler(font);
    int textLeft = kMarginPx;
    if (parts.hasSign) {
        plan.sign = { kMarginPx, kTextTopPx, kMarginPx + kSignPx, kTextTopPx + kSignPx };
        textLeft += kSignPx + kMarginPx;
    }
    const int textWidth = kWidthPx - kMarginPx - textLeft;
    const int roomPx = kMaxHeightPx - kTextTopPx - kBelowTextPx;
    plan.shownText = BreakWideWords(parts.text, ruler, textWidth);
    int textHeight = ruler.HeightOf(plan.shownText, textWidth);
    if (textHeight > roomPx) {
        plan.shownText = Shorten(plan.shownText, ruler, textWidth, roomPx);
        textHeight = ruler.HeightOf(plan.shownText, textWidth);
    }
    const int contentHeight = std::max(textHeight, parts.hasSign ? kSignPx : 0);
    const int textTop = kTextTopPx + (contentHeight - textHeight) / 2;
    const int height = kTextTopPx + contentHeight + kBelowTextPx;
    const int left = (kScreenWidthPx - kWidthPx) / 2;
    const int top = (kScreenHeightPx - height) / 2;
    plan.box = { left, top, left + kWidthPx, top + height };
    plan.band = { 0, 0, kWidthPx, kBandPx };
    plan.message = { textLeft, textTop, textLeft + textWidth, textTop + textHeight };
    plan.buttons = PlaceButtons(parts.buttonCount, height - kMarginPx);
    return plan;
}

} // namespace cardsong::user
