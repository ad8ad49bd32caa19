#include "lyrics/lyrics_marquee.h"

#include "common/rect.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// So far from the strip nothing is seen, and sums of places stay in range.
constexpr double kFarPx = 1 << 28;

LONG StepOf(const RECT& strip)
{
    return std::abs(WidthOf(strip)) / kScrollStepDivisor;
}

// Rounded towards zero.
LONG Way(std::int64_t elapsedMs, double speed)
{
    return static_cast<LONG>(std::clamp(static_cast<double>(elapsedMs) * speed, -kFarPx, kFarPx));
}

} // namespace

void LyricsMarquee::StartLine(std::int32_t index, const MarqueeLine& line, const RECT& strip)
{
    if (m_positions.currentLine < 0)
        m_speed.reset(); // it was another song's
    m_positions.currentLine = index;
    m_line = line;
    m_strip = strip;
    const LONG widthPx = std::abs(WidthOf(strip));
    const LONG step = StepOf(strip);
    if (!line.endMs && !m_speed) {
        Begin(strip.left + std::max<LONG>(0, (widthPx - line.widthPx) / 2));
        return;
    }
    const LONG stoodAt = m_positions.nextLineLeft;
    const bool takesOver = stoodAt > 0;
    Begin(takesOver ? stoodAt : strip.right - step / 2);
    if (!line.endMs)
        return;
    const LONG way = takesOver ? line.widthPx + stoodAt - strip.left - 3 * step / 2 : line.widthPx + widthPx - step / 2;
    m_speed = static_cast<double>(way) / static_cast<double>(*line.endMs - line.startMs);
}

void LyricsMarquee::Begin(LONG startX)
{
    m_positions.startX = startX;
    m_positions.lineX = startX;
}

bool LyricsMarquee::MoveTo(std::int64_t positionMs)
{
    if (!m_speed)
        return false;
    const LONG startX = m_positions.startX;
    LONG x = startX - Way(positionMs - m_line.startMs, *m_speed);
    if (!m_line.endMs) {
        const LONG stopsBelow = std::abs(WidthOf(m_strip)) - StepOf(m_strip) - m_line.widthPx;
        if (m_positions.lineX < stopsBelow)
            return false;
        x = std::max(x, stopsBelow - kLeastMovementPx); // no jump in the song carries it further
    }
    if (std::abs(x - m_positions.lineX) < kLeastMovementPx)
        return false;
    m_positions.lineX = x;
    return true;
}

MarqueeFrame LyricsMarquee::TakeFrame(HasNeighbour previous, HasNeighbour next)
{
    const RECT& strip = m_strip;
    const LONG step = StepOf(strip);
    const LONG left = m_positions.lineX;
    const LONG right = left + m_line.widthPx;
    MarqueeFrame frame = { {}, { left, strip.top, right, strip.bottom }, {} };
    if (previous == HasNeighbour::Yes && left - step > 0)
        frame.previous = RECT{ strip.left, strip.top, left - step, strip.bottom };
    if (next == HasNeighbour::Yes && strip.right - right - step > 0) {
        frame.next = RECT{ right + step, strip.top, strip.right, strip.bottom };
        m_positions.nextLineLeft = frame.next->left;
    }
    return frame;
}
