// The images of one GIF in memory, decoded one after another and without end. Knows no file.
#pragma once

#include "gif/gif_canvas.h"
#include "gif/gif_frame.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Which colour stands behind the frames: the one the file names, where it has a global colour table, or always the one
// that is given.
enum class GifBackground { OfFile, Given };

class GifSequence {
public:
    // `file` is borrowed for as long as frames are decoded. `plainBackground` (RGB565) stands behind the frames of a
    // file without a global colour table, or of any. False when the start of the file is not a GIF's or the file holds
    // no image.
    [[nodiscard]] bool Open(std::span<const std::byte> file, std::uint16_t plainBackground,
                            GifBackground background = GifBackground::OfFile);

    const GifScreen& Screen() const { return m_screen; }
    std::uint32_t FrameCount() const { return m_frameCount; }

    // The next image in file order, without end: behind the last comes the first. A round after a trailer starts from
    // the background, a round after the mere end of the data from what is shown. Where the data end before another
    // image starts, an empty frame without a canvas. Null when the sequence is not open or the image cannot be decoded;
    // the next call then tries the next image. The frame stays until the next call.
    const GifFrame* DecodeNextFrame();

private:
    enum class Found { Image, End, Nothing };

    Found FindImage();
    bool DecodeImage(GifFrame& frame);

    GifReader m_reader;
    std::size_t m_firstBlock = 0;
    std::uint16_t m_background = 0; // RGB565
    GifScreen m_screen;
    std::uint32_t m_frameCount = 0;
    GifGraphicControl m_pendingControl;
    GifCanvas m_canvas;
    std::optional<GifFrame> m_frame;
};
