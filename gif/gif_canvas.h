// The screen of a GIF: frames are drawn over what their predecessors left. Knows neither bytes nor files.
#pragma once

#include "gif/gif_frame.h"

#include <cstddef>
#include <cstdint>

// The part of a frame that lies on the screen; right and bottom are the first column and row outside.
struct GifArea {
    std::size_t left = 0, top = 0, right = 0, bottom = 0;
};

class GifCanvas {
public:
    // Draws `frame` over what is left when the frames before are disposed of, clipped to the screen. Pixels that its
    // data did not reach and transparent ones show what was there; a frame without any colour table is black.
    // `background` is RGB565. False, and nothing changed, when there is no memory. `frame.canvas` then shows this
    // canvas.
    [[nodiscard]] bool Draw(const GifScreen& screen, std::uint16_t background, GifFrame& frame);

    // The next frame is drawn on the background.
    void Restart() { m_left = Left::Background; }

private:
    // What the frames before leave of themselves. Their pixels stay until the next frame is drawn, which then brings it
    // about: a picture that has no next frame is spared the work.
    enum class Left { Background, Picture, BackgroundInArea, SavedInArea };

    bool Save(const GifScreen& screen, const GifArea& area);
    void Dispose(const GifScreen& screen, std::uint16_t background);

    PixelBuffer<std::uint16_t> m_pixels; // as the last frame shows them
    PixelBuffer<std::uint16_t> m_saved;  // what stood in m_area before it
    GifArea m_area;                      // of the last frame
    Left m_left = Left::Background;
};
