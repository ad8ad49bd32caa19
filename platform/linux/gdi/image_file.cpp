#include "platform/device_tree.h"
#include "platform/linux/gdi/bitmaps.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

namespace cardsong::gdi {
namespace {

constexpr int kMaxImageSidePx = 4096;

struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};
using Picture = std::unique_ptr<GdkPixbuf, UnrefObject>;

// The size is asked for first: it stands in the header, before anything is allocated for the pixels.
Picture ReadPicture(const std::string& path)
{
    int widthPx = 0;
    int heightPx = 0;
    if (gdk_pixbuf_get_file_info(path.c_str(), &widthPx, &heightPx) == nullptr || widthPx > kMaxImageSidePx ||
        heightPx > kMaxImageSidePx)
        return nullptr;
    Picture picture(gdk_pixbuf_new_from_file(path.c_str(), nullptr));
    const bool isSound = picture && gdk_pixbuf_get_width(picture.get()) <= kMaxImageSidePx &&
                         gdk_pixbuf_get_height(picture.get()) <= kMaxImageSidePx &&
                         gdk_pixbuf_get_bits_per_sample(picture.get()) == 8;
    return isSound ? std::move(picture) : nullptr;
}

// Draws the picture over the bitmap's black, as the system's imaging library draws it into a fresh bitmap.
void CopyPicture(const GdkPixbuf* picture, const Surface& target)
{
    const auto channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(picture));
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(picture) != FALSE;
    const auto rowBytes = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(picture));
    const guint8* bytes = gdk_pixbuf_read_pixels(picture);
    for (int y = 0; y < target.heightPx; ++y) {
        const guint8* from = bytes + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < target.widthPx; ++x, from += channels) {
            const int alpha = hasAlpha ? from[3] : 255;
            const COLORREF color = RGB(from[0] * alpha / 255, from[1] * alpha / 255, from[2] * alpha / 255);
            *target.At(x, y) = PixelFromColor(color);
        }
    }
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

HBITMAP CreateBitmapFromImageFile(HWND, LPCWSTR path)
{
    if (path == nullptr || *path == 0)
        return nullptr;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    const Picture picture = hostPath ? ReadPicture(*hostPath) : nullptr;
    if (!picture)
        return nullptr;
    const std::lock_guard lock(RoomLock());
    auto bitmap = MakeBitmap(gdk_pixbuf_get_width(picture.get()), gdk_pixbuf_get_height(picture.get()));
    if (!bitmap)
        return nullptr;
    CopyPicture(picture.get(), bitmap->surface);
    return static_cast<HBITMAP>(AddObject(std::move(bitmap)));
}
