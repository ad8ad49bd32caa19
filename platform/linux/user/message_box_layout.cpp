#include "platform/linux/user/message_box_layout.h"

#include "platform/linux/ce/user.h"
#include "platform/linux/user/message_box_look.h"
#include "platform/screen_size.h"

#include <algorithm>

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

private:
    const HDC m_context;
};

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
    int left = kWidthPx - kMarginPx - rowPx;
    if (count == 1)
        left = (kWidthPx - kButtonWidthPx) / 2;
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
    plan.shownText = parts.text;
    int textHeight = ruler.HeightOf(plan.shownText, textWidth);
    if (textHeight > roomPx) {
        plan.shownText = Shorten(parts.text, ruler, textWidth, roomPx);
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
