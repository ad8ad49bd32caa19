#include "platform/linux/display/frame.h"

#include <algorithm>
#include <utility>

namespace cardsong::display {

bool FrameBox::Post()
{
    const std::lock_guard lock(m_mutex);
    const std::uint64_t generation = gdi::ScreenGeneration();
    if (generation == m_generation)
        return false;
    const bool isFirst = !std::exchange(m_generation, generation);
    // Most repaints draw the same picture once more.
    if (!gdi::UpdateScreenCopy(m_frame) && !isFirst)
        return false;
    return !std::exchange(m_waits, true);
}

bool FrameBox::Take(Frame& frame)
{
    const std::lock_guard lock(m_mutex);
    if (!m_waits)
        return false;
    frame = m_frame;
    m_waits = false;
    return true;
}

std::vector<RowRange> RangesOf(const RowSet& rows)
{
    std::vector<RowRange> ranges;
    for (int y = 0; y < kFrameHeightPx; ++y) {
        if (!rows.test(static_cast<std::size_t>(y)))
            continue;
        if (!ranges.empty() && ranges.back().end == y)
            ranges.back().end = y + 1;
        else
            ranges.push_back({ y, y + 1 });
    }
    return ranges;
}

std::vector<RowRange> FindChangedRows(const Frame& before, const Frame& after)
{
    RowSet changed;
    for (int y = 0; y < kFrameHeightPx; ++y) {
        const auto offset = static_cast<std::ptrdiff_t>(y) * kFrameWidthPx;
        changed[static_cast<std::size_t>(y)] =
            !std::equal(before.begin() + offset, before.begin() + offset + kFrameWidthPx, after.begin() + offset);
    }
    return RangesOf(changed);
}

} // namespace cardsong::display
