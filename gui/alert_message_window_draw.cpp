#include "gui/alert_message_window_draw.h"

#include "gui/gif_bitmap.h"
#include "gui/skin_image.h"
#include "platform/screen_size.h"

#include <climits>

namespace {

constexpr COLORREF kTitleColor = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kMessageColor = RGB(0, 0, 0);
constexpr int kTitleMarginPx = 32;
constexpr int kTitleTopPx = 10;
constexpr int kMessageMarginsPx = 70; // left and right together
constexpr int kMessageRoomPx = 200;   // above the buttons
constexpr int kButtonRoomPx = 48;

// Text without a ground of its own, in that font and colour, for as long as the guard lives.
class Writing {
public:
    Writing(HDC context, HFONT font, COLORREF color)
        : m_context(context), m_font(context, font), m_modeBefore(SetBkMode(context, TRANSPARENT)),
          m_colorBefore(SetTextColor(context, color))
    {
    }
    ~Writing()
    {
        SetTextColor(m_context, m_colorBefore);
        SetBkMode(m_context, m_modeBefore);
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    HDC m_context;
    SelectedObject m_font;
    int m_modeBefore;
    COLORREF m_colorBefore;
};

int LineHeight(HDC context)
{
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    return metrics.tmHeight + metrics.tmExternalLeading;
}

int WidthOf(HDC context, WStringView text)
{
    SIZE size = {};
    GetTextExtentExPointW(context, text.data(), static_cast<int>(text.size()), INT_MAX, nullptr, nullptr, &size);
    return size.cx;
}

// In the middle of the screen; one that is larger is cut at its edges.
void DrawBackground(HDC target, SkinImage background)
{
    const int widthPx = background.WidthPx();
    const int heightPx = background.HeightPx();
    BitBlt(target, (kScreenWidthPx - widthPx) / 2, (kScreenHeightPx - heightPx) / 2, widthPx, heightPx,
           background.Context(target), 0, 0, SRCCOPY);
}

} // namespace

void WrapAlertMessage(HDC context, AlertText& text, int windowWidthPx)
{
    const SelectedObject font(context, text.font.Get());
    text.lines = WrapMessage(text.message, windowWidthPx - kMessageMarginsPx,
                             [context](WStringView part) { return WidthOf(context, part); });
}

void DrawAlertTitle(HDC context, const AlertText& text, int windowWidthPx)
{
    const Writing writing(context, text.font.Get(), kTitleColor);
    RECT place = { kTitleMarginPx, kTitleTopPx, windowWidthPx - kTitleMarginPx, kTitleTopPx + LineHeight(context) };
    DrawTextW(context, text.title.c_str(), -1, &place, DT_WORDBREAK | DT_NOPREFIX);
}

void DrawAlertMessage(HDC context, const AlertText& text, int windowHeightPx)
{
    const Writing writing(context, text.font.Get(), kMessageColor);
    const int lineHeightPx = LineHeight(context);
    int top = (kMessageRoomPx - lineHeightPx * (static_cast<int>(text.lines.size()) - 1)) / 2;
    for (const MessageLine& line : text.lines) {
        if (top > windowHeightPx - lineHeightPx - kButtonRoomPx)
            return;
        RECT place = { 0, top, kScreenWidthPx, top + lineHeightPx };
        if (line.length > 0)
            DrawTextW(context, text.message.c_str() + line.start, static_cast<int>(line.length), &place,
                      DT_CENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
        top += lineHeightPx;
    }
}

UniqueBitmap DrawAlertPicture(HDC like, LPCWSTR backgroundPath, const AlertText& text)
{
    UniqueBitmap picture(CreateCompatibleBitmap(like, kScreenWidthPx, kScreenHeightPx));
    const UniqueMemoryContext context(CreateCompatibleDC(like));
    const SelectedObject selected(context.Get(), picture.Get());
    constexpr RECT whole{ 0, 0, kScreenWidthPx, kScreenHeightPx };
    FillRect(context.Get(), &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    DrawBackground(context.Get(), SkinImage(LoadGifBitmap(backgroundPath)));
    DrawAlertTitle(context.Get(), text, kScreenWidthPx);
    DrawAlertMessage(context.Get(), text, kScreenHeightPx);
    return picture;
}

void CopyAlertPicture(HDC screen, HBITMAP picture)
{
    const UniqueMemoryContext context(CreateCompatibleDC(screen));
    const SelectedObject selected(context.Get(), picture);
    BitBlt(screen, 0, 0, kScreenWidthPx, kScreenHeightPx, context.Get(), 0, 0, SRCCOPY);
}
