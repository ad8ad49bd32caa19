// A finished frame on its way from the thread that drew it to the one that shows it.
#pragma once

#include "platform/linux/gdi/screen.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <vector>

namespace cardsong::display {

constexpr int kFrameWidthPx = gdi::kScreenWidthPx;
constexpr int kFrameHeightPx = gdi::kScreenHeightPx;
using Frame = std::array<std::uint16_t, static_cast<std::size_t>(kFrameWidthPx) * kFrameHeightPx>;

// Holds the newest finished frame. Copied where it is finished, so that nobody sees a half-painted one.
class FrameBox {
public:
    // Copies the screen if it changed since the last call. Returns whether a frame waits now that was not waiting
    // before: then somebody has to be woken.
    bool Post();
    // Moves the waiting frame to `frame`; false when none waits.
    bool Take(Frame& frame);

private:
    std::mutex m_mutex;
    Frame m_frame{};
    std::uint64_t m_generation = UINT64_MAX;
    bool m_waits = false;
};

// Rows first to end - 1.
struct RowRange {
    int first;
    int end;
    bool operator==(const RowRange&) const = default;
};
// The rows in which the frames differ, in order; neighbours are one range.
std::vector<RowRange> FindChangedRows(const Frame& before, const Frame& after);

} // namespace cardsong::display
