#include "bench/gif/peers.h"

#include <cstdlib>

#define STBI_ONLY_GIF
#define STBI_NO_STDIO
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

Canvas FirstFrameByStb(std::span<const std::byte> file)
{
    int widthPx = 0;
    int heightPx = 0;
    int channels = 0;
    stbi_uc* const pixels = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(file.data()),
                                                  static_cast<int>(file.size()), &widthPx, &heightPx, &channels, 4);
    if (pixels == nullptr)
        std::abort();
    Canvas canvas(static_cast<std::size_t>(widthPx) * static_cast<std::size_t>(heightPx));
    for (std::size_t i = 0; i < canvas.size(); ++i) {
        const stbi_uc* const color = pixels + 4 * i;
        canvas[i] = static_cast<std::uint16_t>((color[0] >> 3) << 11 | (color[1] >> 2) << 5 | color[2] >> 3);
    }
    stbi_image_free(pixels);
    return canvas;
}
