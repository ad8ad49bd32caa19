// A finished frame on its way from the thread that drew it to the one that shows it.
#pragma once

#include "platform/linux/gdi/screen.h"
#include "platform/screen_size.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace cardsong::display {

constexpr int kFrameWidthPx = kScreenWidthPx;
constexpr int kFrameHeightPx = kScreenHeightPx;

// The pixels of a screen, rows without padding. It owns them; to swap two frames copies none.
class Frame {
public:
    Frame() : m_pixels(static_cast<std::size_t>(kFrameWidthPx) * kFrameHeightPx) {}
    auto begin() { return m_pixels.begin(); }
    auto end() { return m_pixels.end(); }
    auto begin() const { return m_pixels.begin(); }
    auto end() const { return m_pixels.end(); }
    std::uint16_t* data() { return m_pixels.data(); }
    const std::uint16_t* data() const { return m_pixels.data(); }
    std::size_t size() const { return m_pixels.size(); }
    std::uint16_t& operator[](std::size_t index) { return m_pixels[index]; }
    std::uint16_t operator[](std::size_t index) const { return m_pixels[index]; }
    bool operator==(const Frame&) const = default;

private:
    std::vector<std::uint16_t> m_pixels;
};

// Holds the newest finished frame. The thread that finished it copies it, so that nobody sees a half-painted one.
class FrameBox {
public:
    // Copies the screen if its picture has changed since the last call. True when a frame waits now and none did
    // before: then the display's thread has to be woken.
    bool Post();
    // Copies the waiting frame; false when none waits.
    bool Take(Frame& frame);

private:
    std::mutex m_mutex;
    Frame m_frame;                             // the newest, waiting or taken
    std::optional<std::uint64_t> m_generation; // of the screen when it was copied
    bool m_waits = false;
};

// Rows first to end - 1.
struct RowRange {
    int first;
    int end;
    bool operator==(const RowRange&) const = default;
};
using RowSet = std::bitset<kFrameHeightPx>;
// The rows of a set in order; neighbours are one range.
std::vector<RowRange> RangesOf(const RowSet& rows);
// The rows in which the frames differ, in the same way.
std::vector<RowRange> FindChangedRows(const Frame& before, const Frame& after);

} // namespace cardsong::display
