// Where the lines of the lyrics stand in the strip: they move from right to left, the line that is sung in the middle.
// It knows no window, no font and no list.
#pragma once

#include "lyrics/lyrics_context.h"

#include <optional>

// The strip's width is divided by it to get the step, by which lines stand apart.
inline constexpr LONG kScrollStepDivisor = 5;
// A line that moves less is not drawn anew.
inline constexpr LONG kLeastMovementPx = 2;

// A line that begins. `endMs`: when the next one does, later than `startMs`; nothing for the last line.
struct MarqueeLine {
    std::int64_t startMs;
    std::optional<std::int64_t> endMs;
    LONG widthPx;
};

enum class HasNeighbour { No, Yes };

// Each as high as the strip. What has no room, or is not there, is nothing.
struct MarqueeFrame {
    std::optional<RECT> previous; // its text stands in the middle
    RECT current;
    std::optional<RECT> next;
};

// It keeps its places in `positions`, which is borrowed, and begins anew when they are -1.
class LyricsMarquee {
public:
    explicit LyricsMarquee(LyricsPositions& positions) : m_positions(positions) {}

    // Line `index` takes the place where it stood as the next one, else it enters from the right. It will be gone when
    // its time is over. The last line keeps the speed of the line before it. One that has none to keep stands still: in
    // the middle, or at the left edge when it is wider than the strip.
    void StartLine(std::int32_t index, const MarqueeLine& line, const RECT& strip);

    // The current line goes where it belongs at `positionMs`. True when that is far enough to draw it. The last line
    // stops where a step of the strip is free to its right.
    bool MoveTo(std::int64_t positionMs);

    // The places of the lines now. Keeps that of the next line for its start.
    MarqueeFrame TakeFrame(HasNeighbour previous, HasNeighbour next);

    // Pixels in a millisecond; nothing before the first line that has an end.
    std::optional<double> Speed() const { return m_speed; }

private:
    void Begin(LONG startX);

    LyricsPositions& m_positions;
    std::optional<double> m_speed;
    MarqueeLine m_line = {};
    RECT m_strip = {};
};
