// Pictures of any format as bitmaps of the screen's.
#include "gif/gif_pixels.h"
#include "platform/device_tree.h"
#include "platform/imaging/rgb565_section.h"
#include "platform/windows/gdi/imaging.h"

#include <algorithm>

namespace cardsong::gdi {
namespace {

// Drawn over the bitmap's black.
std::uint16_t PixelOf(const BYTE* color)
{
    const auto overBlack = [alpha = color[3]](BYTE part) { return static_cast<std::uint8_t>(part * alpha / 255); };
    return Rgb565(overBlack(color[2]), overBlack(color[1]), overBlack(color[0]));
}

// What of the frame lies on the picture; the rest of the picture stays black.
void CopyFrame(const ImageFrame& frame, const ImageFile& file, const imaging::Rgb565Section& section)
{
    const auto left = static_cast<UINT>(frame.corner.x);
    const auto top = static_cast<UINT>(frame.corner.y);
    const UINT right = std::min(left + frame.widthPx, file.WidthPx());
    const UINT bottom = std::min(top + frame.heightPx, file.HeightPx());
    for (UINT y = top; y < bottom; ++y) {
        const BYTE* color = frame.pixels.data() + std::size_t{ y - top } * frame.widthPx * kImagePixelBytes;
        for (UINT x = left; x < right; ++x, color += kImagePixelBytes)
            section.Row(y)[x] = PixelOf(color);
    }
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

HBITMAP CreateBitmapFromImageFile(HWND, LPCWSTR path)
{
    if (path == nullptr || *path == L'\0')
        return nullptr;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    const Apartment apartment;
    ImageFile file;
    ImageFrame frame;
    if (!hostPath || !file.Open(hostPath->c_str()) || !file.ReadFrame(frame))
        return nullptr;
    const auto section =
        cardsong::imaging::MakeRgb565Section(static_cast<int>(file.WidthPx()), static_cast<int>(file.HeightPx()));
    if (section.bitmap != nullptr)
        CopyFrame(frame, file, section);
    return section.bitmap;
}
