#include "lyrics/lyrics_frame.h"

#include "common/rect.h"

namespace {

constexpr COLORREF kTextColor = RGB(0xFF, 0xFF, 0xFF);

bool IsFirstOfPair(WCHAR unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

void Write(HDC context, const PlacedText& placed, const RECT& area, UINT format)
{
    RECT rect = placed.rect;
    rect.left -= area.left;
    rect.right -= area.left;
    rect.top -= area.top;
    rect.bottom -= area.top;
    const WStringView text = ShownPart(placed.text);
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &rect, format | DT_NOPREFIX);
}

} // namespace

WStringView ShownPart(WStringView text)
{
    if (text.size() <= kMostShownUnits)
        return text;
    return text.substr(0, IsFirstOfPair(text[kMostShownUnits - 1]) ? kMostShownUnits - 1 : kMostShownUnits);
}

void LyricsFrame::Draw(HDC like, const RECT& area, const LyricsStripBackground& background, HFONT font,
                       const std::optional<PlacedText>& centred, std::span<const PlacedText> others)
{
    Prepare(like, WidthOf(area), HeightOf(area));
    if (!m_bitmap)
        return;
    const UniqueMemoryContext context(CreateCompatibleDC(like));
    const SelectedObject bitmap(context.Get(), m_bitmap.Get());
    const SelectedObject selectedFont(context.Get(), font);
    const RECT whole = { 0, 0, m_size.cx, m_size.cy };
    FillRect(context.Get(), &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))); // the last picture goes
    background.Draw(context.Get());
    SetBkMode(context.Get(), TRANSPARENT);
    SetTextColor(context.Get(), kTextColor);
    if (centred)
        Write(context.Get(), *centred, area, DT_CENTER);
    for (const PlacedText& placed : others)
        Write(context.Get(), placed, area, DT_LEFT);
    m_isDrawn = true;
}

void LyricsFrame::CopyTo(HDC target) const
{
    if (!m_isDrawn)
        return;
    const UniqueMemoryContext source(CreateCompatibleDC(target));
    const SelectedObject bitmap(source.Get(), m_bitmap.Get());
    BitBlt(target, 0, 0, m_size.cx, m_size.cy, source.Get(), 0, 0, SRCCOPY);
}

void LyricsFrame::Clear()
{
    m_isDrawn = false;
}

void LyricsFrame::Prepare(HDC like, int widthPx, int heightPx)
{
    if (m_size.cx == widthPx && m_size.cy == heightPx)
        return;
    m_isDrawn = false;
    m_size = { widthPx, heightPx };
    m_bitmap.Reset(widthPx > 0 && heightPx > 0 ? CreateCompatibleBitmap(like, widthPx, heightPx) : nullptr);
}
