#include "platform/windows/gdi/gif_animation.h"

#include <algorithm>

namespace cardsong::gdi {

GifAnimation::GifAnimation(COLORREF key) : m_key(Rgb565Of(GetRValue(key), GetGValue(key), GetBValue(key))) {}

GifAnimation::~GifAnimation()
{
    DeleteObject(m_picture.bitmap);
}

bool GifAnimation::Open(const wchar_t* hostPath)
{
    if (!m_file.Open(hostPath) || WidthPx() > kMaxAnimationPixels / HeightPx())
        return false;
    m_picture = MakeRgb565Section(WidthPx(), HeightPx());
    return m_picture.bitmap != nullptr;
}

bool GifAnimation::ShowNextFrame()
{
    GdiFlush(); // the picture's pixels are written directly
    const bool startsAnew = IsLastFrame() || m_next == 0;
    if (startsAnew) {
        m_next = 0;
        Clear({ 0, 0, static_cast<LONG>(WidthPx()), static_cast<LONG>(HeightPx()) });
    } else {
        Dispose();
    }
    if (!m_file.ReadFrame(m_next, m_frame))
        return false;
    ++m_next;
    const auto end = [](LONG start, UINT extent, UINT limit) {
        return std::min(start + static_cast<LONG>(extent), static_cast<LONG>(limit));
    };
    m_place = { m_frame.corner.x, m_frame.corner.y, end(m_frame.corner.x, m_frame.widthPx, WidthPx()),
                end(m_frame.corner.y, m_frame.heightPx, HeightPx()) };
    if (m_frame.disposal == FrameDisposal::ToPrevious)
        Keep();
    Draw();
    return true;
}

UINT GifAnimation::DelayMs() const
{
    return std::max(m_frame.delayMs, kShortestDelayMs);
}

void GifAnimation::Clear(const RECT& part)
{
    for (LONG y = part.top; y < part.bottom; ++y) {
        std::uint16_t* const row = m_picture.Row(static_cast<std::size_t>(y));
        for (LONG x = part.left; x < part.right; ++x)
            row[x] = m_key;
    }
}

void GifAnimation::Dispose()
{
    if (m_frame.disposal == FrameDisposal::ToBackground)
        Clear(m_place);
    else if (m_frame.disposal == FrameDisposal::ToPrevious)
        std::copy(m_before.begin(), m_before.end(), m_picture.pixels);
}

void GifAnimation::Keep()
{
    m_before.assign(m_picture.pixels, m_picture.Row(HeightPx()));
}

// Pixels of a GIF are either solid or not there.
void GifAnimation::Draw()
{
    for (LONG y = m_place.top; y < m_place.bottom; ++y) {
        const auto frameRow = static_cast<std::size_t>(y - m_place.top) * m_frame.widthPx;
        const BYTE* color = m_frame.pixels.data() + frameRow * kImagePixelBytes;
        std::uint16_t* const row = m_picture.Row(static_cast<std::size_t>(y));
        for (LONG x = m_place.left; x < m_place.right; ++x, color += kImagePixelBytes) {
            if (color[3] != 0)
                row[x] = Rgb565Of(color[2], color[1], color[0]);
        }
    }
}

} // namespace cardsong::gdi
