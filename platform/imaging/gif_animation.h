// The frames of an animated GIF, one after the other on one bitmap of the screen's format. Knows neither target nor
// clock.
#pragma once

#include "gif/gif_sequence.h"
#include "platform/imaging/rgb565_section.h"

#include <vector>

namespace cardsong::imaging {

// Such a picture is kept four times while it plays; the screen has a tenth of it.
constexpr std::uint32_t kMaxAnimationPixels = 1024 * 1024;
// No picture and no frame of one is wider or higher.
constexpr std::uint32_t kMaxSidePx = 4096;
// The file is kept in memory while it plays.
constexpr DWORD kMaxFileBytes = 16 * 1024 * 1024;
// Of a frame without a delay of its own; as long as the decoder has the shortest ones stay.
constexpr std::uint32_t kUntoldDelayMs = 100;

class GifAnimation {
public:
    // `key` stands wherever no frame has drawn.
    explicit GifAnimation(COLORREF key);
    ~GifAnimation();
    GifAnimation(const GifAnimation&) = delete;
    GifAnimation& operator=(const GifAnimation&) = delete;

    // Once, with a device path. False when the file cannot be read or is too large.
    [[nodiscard]] bool Open(LPCWSTR path);
    std::uint32_t FrameCount() const { return m_images.FrameCount(); }
    int WidthPx() const { return m_images.Screen().widthPx; }
    int HeightPx() const { return m_images.Screen().heightPx; }

    // Disposes of the frame shown and draws the next one; after the last comes the first, on an empty picture again.
    // False when it cannot be decoded.
    [[nodiscard]] bool ShowNextFrame();
    bool IsLastFrame() const { return m_next == FrameCount(); }
    // How long the frame shown stays.
    std::uint32_t DelayMs() const { return m_delayMs; }
    // The picture with the frame on it; the animation's own, the same from Open to the end.
    HBITMAP Picture() const { return m_picture.bitmap; }

private:
    bool StartRound();

    const std::uint16_t m_key;
    std::vector<std::byte> m_file;
    GifSequence m_images; // borrows m_file
    std::uint32_t m_next = 0;
    std::uint32_t m_delayMs = kUntoldDelayMs;
    Rgb565Section m_picture;
};

} // namespace cardsong::imaging
