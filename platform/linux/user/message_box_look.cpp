#include "platform/linux/user/message_box_look.h"

#include "platform/linux/ce/kernel.h"

namespace cardsong::user {

namespace {

constexpr COLORREF kGround = RGB(0x08, 0x14, 0x21);
constexpr COLORREF kPanel = RGB(0x10, 0x24, 0x39);
constexpr COLORREF kEdge = RGB(0x29, 0x51, 0x6B);
constexpr COLORREF kAccent = RGB(0x00, 0xBE, 0xF7);
constexpr COLORREF kWarning = RGB(0xFF, 0x8E, 0x21);
constexpr COLORREF kText = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kFace = RGB(0x10, 0x5D, 0x84);
constexpr COLORREF kFaceTop = RGB(0x42, 0x9E, 0xC6);
constexpr COLORREF kPressedFace = RGB(0x00, 0x7D, 0xAD);
constexpr LANGID kSimplifiedChinese = 0x0804;
constexpr LANGID kTraditionalChinese = 0x0404;

void Fill(HDC context, const RECT& rect, COLORREF color)
{
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(context, &rect, brush);
    DeleteObject(brush);
}

RECT Shrink(const RECT& rect, int byPx)
{
    return { rect.left + byPx, rect.top + byPx, rect.right - byPx, rect.bottom - byPx };
}

void DrawWords(HDC context, RECT rect, LPCWSTR text, COLORREF color, HFONT font, UINT format)
{
    const HGDIOBJ before = SelectObject(context, font);
    const int modeBefore = SetBkMode(context, TRANSPARENT);
    const COLORREF colorBefore = SetTextColor(context, color);
    DrawTextW(context, text, -1, &rect, format);
    SetTextColor(context, colorBefore);
    SetBkMode(context, modeBefore);
    SelectObject(context, before);
}

// A triangle on its base, with an exclamation mark in it.
void DrawSign(HDC context, const RECT& place)
{
    const LONG middle = (place.left + place.right) / 2;
    const LONG height = place.bottom - place.top;
    for (LONG row = 0; row < height; ++row) {
        const LONG half = 1 + row * (kSignPx / 2 - 1) / (height - 1);
        Fill(context, { middle - half, place.top + row, middle + half, place.top + row + 1 }, kWarning);
    }
    Fill(context, { middle - 2, place.top + 13, middle + 2, place.top + 25 }, kGround);
    Fill(context, { middle - 2, place.top + 28, middle + 2, place.top + 32 }, kGround);
}

} // namespace

HFONT MakeMessageFont()
{
    const LANGID language = GetUserDefaultUILanguage();
    const bool isChinese = language == kSimplifiedChinese || language == kTraditionalChinese;
    LOGFONTW description{};
    description.lfHeight = -15;
    description.lfWeight = isChinese ? 400 : 700;
    return CreateFontIndirectW(&description);
}

void DrawMessageBox(HDC context, const MessageBoxLayout& plan, const std::u16string& caption, HFONT font)
{
    const RECT whole = { 0, 0, plan.box.right - plan.box.left, plan.box.bottom - plan.box.top };
    Fill(context, whole, kEdge);
    Fill(context, Shrink(whole, 1), kPanel);
    Fill(context, plan.band, kAccent);
    RECT title = plan.band;
    title.left += 12;
    title.right -= 12;
    DrawWords(context, title, caption.c_str(), kGround, font,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_WORD_ELLIPSIS);
    if (plan.sign.right > plan.sign.left)
        DrawSign(context, plan.sign);
    DrawWords(context, plan.message, plan.shownText.c_str(), kText, font, kMessageFormat);
}

void DrawMessageBoxButton(HDC context, const RECT& rect, LPCWSTR caption, ButtonFace face, HFONT font)
{
    Fill(context, rect, face == ButtonFace::Normal ? kPanel : kAccent);
    const RECT inner = Shrink(rect, 2);
    Fill(context, inner, face == ButtonFace::Pressed ? kPressedFace : kFace);
    Fill(context, { inner.left, inner.top, inner.right, inner.top + 1 },
         face == ButtonFace::Pressed ? kAccent : kFaceTop);
    DrawWords(context, inner, caption, kText, font, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

} // namespace cardsong::user
