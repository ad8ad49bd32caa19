// The known libraries that the decoder is measured beside: from a file in memory to RGB565.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

using Canvas = std::vector<std::uint16_t>;

// The first frame of a file that covers its screen, is not interlaced and has no transparent pixel.
Canvas FirstFrameByGiflib(std::span<const std::byte> file);
Canvas FirstFrameByStb(std::span<const std::byte> file);

// Draws every frame and returns the last canvas. The frames leave their pixels to the next one (disposal 0 and 1).
// - CanvasEach: a canvas for each frame, copied from the one that the frames before left;
// - InPlace: all frames drawn over each other on one canvas.
enum class Composition { CanvasEach, InPlace };
Canvas AnimationByGiflib(std::span<const std::byte> file, Composition composition);
