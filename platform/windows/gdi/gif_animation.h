// The frames of an animated GIF, one after the other on one picture of the screen's format. Knows neither target nor
// clock.
#pragma once

#include "platform/windows/gdi/imaging.h"
#include "platform/windows/gdi/rgb565_section.h"

#include <memory>

namespace cardsong::gdi {

// Two pictures of this size are kept while it plays; the screen has a tenth of it.
constexpr UINT kMaxAnimationPixels = 1024 * 1024;
// A faster animation would only keep the processor awake.
constexpr UINT kShortestDelayMs = 20;

class GifAnimation {
public:
    // `key` stands wherever no frame has drawn.
    explicit GifAnimation(COLORREF key);
    ~GifAnimation();
    GifAnimation(const GifAnimation&) = delete;
    GifAnimation& operator=(const GifAnimation&) = delete;

    // Once. False when the file cannot be read or is too large.
    [[nodiscard]] bool Open(const wchar_t* hostPath);
    UINT FrameCount() const { return m_file.FrameCount(); }
    UINT WidthPx() const { return m_file.WidthPx(); }
    UINT HeightPx() const { return m_file.HeightPx(); }

    // Disposes of the frame shown and draws the next one; after the last comes the first, on an empty picture again.
    // False when it cannot be decoded.
    [[nodiscard]] bool ShowNextFrame();
    bool IsLastFrame() const { return m_next == FrameCount(); }
    // How long the frame shown stays, at least the shortest delay.
    UINT DelayMs() const;
    // The picture with the frame on it; the animation's own, the same from Open to the end.
    HBITMAP Picture() const { return m_picture.bitmap; }

private:
    void Clear(const RECT& part);
    void Dispose();
    void Keep();
    void Draw();

    const std::uint16_t m_key;
    const Apartment m_apartment;
    ImageFile m_file;
    ImageFrame m_frame;
    RECT m_place{}; // of the frame shown, cut to the picture
    Rgb565Section m_picture;
    std::vector<std::uint16_t> m_before; // the picture without the frame shown, where that one asks for it
    UINT m_next = 0;
};

} // namespace cardsong::gdi
