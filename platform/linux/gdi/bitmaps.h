// Makes and copies RGB565 pixel memory. The size gate of the room: no pixels are allocated anywhere else.
#pragma once

#include "platform/linux/gdi/objects.h"

namespace cardsong::gdi {

// 16 million pixels, 32 MB: a foreign picture may ask for more than the machine should give.
constexpr std::int64_t kMaxBitmapPixels = 4096LL * 4096;

// Rows of `rowWords` words. Null when the size is out of range or memory is short. Under the room's lock, as is the
// release.
enum class FirstPixels { Black, Whatever };
PixelMemory AllocatePixels(std::int64_t rowWords, std::int64_t rows, FirstPixels first);
// Words in a row of `widthPx` pixels: rows start on four bytes, as the blending library and sections want it.
std::int64_t PaddedRow(std::int64_t widthPx);
// A bitmap of the screen's format; null as above. It reports rows without padding, since nobody sees its pixels.
std::unique_ptr<Bitmap> MakeBitmap(int widthPx, int heightPx);

} // namespace cardsong::gdi
