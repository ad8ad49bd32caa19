#include "platform/linux/ce/kernel.h"
#include "platform/linux/gdi/bitmaps.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <vector>

namespace cardsong::gdi {
namespace {

constexpr int kMaxImageSidePx = 4096;

constexpr DWORD kPieceBytes = 64 * 1024;

struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};
using Picture = std::unique_ptr<GdkPixbuf, UnrefObject>;
using Loader = std::unique_ptr<GdkPixbufLoader, UnrefObject>;

struct CloseFile {
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using OpenFile = std::unique_ptr<void, CloseFile>;

bool IsReadable(int widthPx, int heightPx)
{
    return widthPx > 0 && heightPx > 0 && widthPx <= kMaxImageSidePx && heightPx <= kMaxImageSidePx;
}

// Called with the size of the header, before anything is allocated for the pixels. A loader that is told to make
// nothing of the picture ends there.
void RefuseLargePicture(GdkPixbufLoader* loader, int widthPx, int heightPx, gpointer)
{
    if (!IsReadable(widthPx, heightPx))
        gdk_pixbuf_loader_set_size(loader, 0, 0);
}

// What a picture that is cut off does not tell stays black.
void Blacken(GdkPixbufLoader* loader, gpointer)
{
    gdk_pixbuf_fill(gdk_pixbuf_loader_get_pixbuf(loader), 0x000000FF);
}

bool Feed(GdkPixbufLoader* loader, HANDLE file)
{
    std::vector<guchar> piece(kPieceBytes);
    DWORD readBytes = 0;
    while (ReadFile(file, piece.data(), kPieceBytes, &readBytes, nullptr)) {
        if (readBytes == 0)
            return true;
        if (gdk_pixbuf_loader_write(loader, piece.data(), readBytes, nullptr) == FALSE)
            return false;
    }
    return false;
}

// Null when the picture is damaged; most kinds are that when they are cut off.
Picture ReadPicture(LPCWSTR path)
{
    const HANDLE file =
        CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    const OpenFile closing(file);
    const Loader loader(gdk_pixbuf_loader_new());
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(RefuseLargePicture), nullptr);
    g_signal_connect(loader.get(), "area-prepared", G_CALLBACK(Blacken), nullptr);
    const bool isFed = Feed(loader.get(), file);
    const bool isWhole = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    GdkPixbuf* const loaded = isFed && isWhole ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    if (loaded == nullptr)
        return nullptr;
    Picture picture(GDK_PIXBUF(g_object_ref(loaded)));
    const bool isSound = IsReadable(gdk_pixbuf_get_width(loaded), gdk_pixbuf_get_height(loaded)) &&
                         gdk_pixbuf_get_bits_per_sample(loaded) == 8;
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
    const Picture picture = ReadPicture(path);
    if (!picture)
        return nullptr;
    const std::lock_guard lock(RoomLock());
    auto bitmap = MakeBitmap(gdk_pixbuf_get_width(picture.get()), gdk_pixbuf_get_height(picture.get()));
    if (!bitmap)
        return nullptr;
    CopyPicture(picture.get(), bitmap->surface);
    return static_cast<HBITMAP>(AddObject(std::move(bitmap)));
}
