#include "lyrics/lyrics_frame.h"

#include "common/rect.h"
#include "gui/text_line.h"

namespace {

constexpr COLORREF kTextColor = RGB(0xFF, 0xFF, 0xFF);

bool IsFirstOfPair(WCHAR unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

void Write(HDC context, const PlacedText& placed, const RECT& area, HFONT font, UINT placement)
{
    const RECT& place = placed.rect;
    const RECT box = { place.left - area.left, place.top - area.top, place.right - area.left, place.bottom - area.top };
    DrawTextLine(context, ShownPart(placed.text), box, font, kTextColor, placement | DT_NOPREFIX);
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
    const SIZE size = { WidthOf(area), HeightOf(area) };
    m_isDrawn = size.cx > 0 && size.cy > 0;
    if (!m_isDrawn)
        return;
    if (!m_picture || size.cx != m_size.cx || size.cy != m_size.cy)
        m_picture.emplace(like, size.cx, size.cy);
    m_size = size;
    const HDC context = m_picture->Context();
    const RECT whole = { 0, 0, size.cx, size.cy };
    FillRect(context, &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))); // the last picture goes
    background.Draw(context);
    if (centred)
        Write(context, *centred, area, font, DT_CENTER);
    for (const PlacedText& placed : others)
        Write(context, placed, area, font, DT_LEFT);
}

void LyricsFrame::CopyTo(HDC target) const
{
    if (m_isDrawn)
        m_picture->CopyTo(target);
}

void LyricsFrame::Clear()
{
    m_isDrawn = false;
}
