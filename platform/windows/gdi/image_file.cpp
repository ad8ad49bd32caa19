// Pictures of any format, through the system's imaging library.
#include "platform/device_tree.h"

#include <wincodec.h>

#include <cstdint>
#include <vector>

namespace {

constexpr UINT kMaxImageSidePx = 4096;
constexpr UINT kBytesAPixel = 4;

template <typename Interface>
class Component {
public:
    Component() = default;
    ~Component()
    {
        if (m_pointer != nullptr)
            m_pointer->Release();
    }
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    explicit operator bool() const { return m_pointer != nullptr; }
    Interface* operator->() const { return m_pointer; }
    Interface* Get() const { return m_pointer; }
    Interface** Receive() { return &m_pointer; }

private:
    Interface* m_pointer = nullptr;
};

// The library is a component, whose apartment the calling thread may not have entered.
class Apartment {
public:
    Apartment() : m_entered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~Apartment()
    {
        if (m_entered)
            CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    const bool m_entered;
};

struct Picture {
    UINT widthPx = 0;
    UINT heightPx = 0;
    std::vector<BYTE> pixels; // blue, green, red, alpha
};

// The size is asked for first: nothing is allocated for the pixels of a picture that is too large.
bool ReadPicture(const wchar_t* path, Picture& picture)
{
    Component<IWICImagingFactory> factory;
    Component<IWICBitmapDecoder> decoder;
    Component<IWICBitmapFrameDecode> frame;
    Component<IWICFormatConverter> converter;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(factory.Receive()))) ||
        FAILED(factory->CreateDecoderFromFilename(path, nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                  decoder.Receive())) ||
        FAILED(decoder->GetFrame(0, frame.Receive())) || FAILED(frame->GetSize(&picture.widthPx, &picture.heightPx)) ||
        picture.widthPx == 0 || picture.heightPx == 0 || picture.widthPx > kMaxImageSidePx ||
        picture.heightPx > kMaxImageSidePx)
        return false;
    if (FAILED(factory->CreateFormatConverter(converter.Receive())) ||
        FAILED(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom)))
        return false;
    const UINT rowBytes = picture.widthPx * kBytesAPixel;
    picture.pixels.resize(std::size_t{ rowBytes } * picture.heightPx);
    return SUCCEEDED(
        converter->CopyPixels(nullptr, rowBytes, static_cast<UINT>(picture.pixels.size()), picture.pixels.data()));
}

// Drawn over the bitmap's black.
std::uint16_t PixelOf(const BYTE* color)
{
    const unsigned alpha = color[3];
    const unsigned blue = color[0] * alpha / 255;
    const unsigned green = color[1] * alpha / 255;
    const unsigned red = color[2] * alpha / 255;
    return static_cast<std::uint16_t>(red >> 3 << 11 | green >> 2 << 5 | blue >> 3);
}

// A bitmap of the device's screen format, its first row on top.
HBITMAP MakeBitmap(const Picture& picture)
{
    struct {
        BITMAPINFOHEADER header;
        DWORD masks[3];
    } info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = static_cast<LONG>(picture.widthPx);
    info.header.biHeight = -static_cast<LONG>(picture.heightPx);
    info.header.biPlanes = 1;
    info.header.biBitCount = 16;
    info.header.biCompression = BI_BITFIELDS;
    info.masks[0] = 0xF800;
    info.masks[1] = 0x07E0;
    info.masks[2] = 0x001F;
    void* bits = nullptr;
    const HBITMAP bitmap =
        CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap == nullptr)
        return nullptr;
    const std::size_t rowPixels = (picture.widthPx + 1) / 2 * 2; // rows end on four bytes
    for (std::size_t y = 0; y < picture.heightPx; ++y) {
        auto* const row = static_cast<std::uint16_t*>(bits) + y * rowPixels;
        for (std::size_t x = 0; x < picture.widthPx; ++x)
            row[x] = PixelOf(&picture.pixels[(y * picture.widthPx + x) * kBytesAPixel]);
    }
    return bitmap;
}

} // namespace

HBITMAP CreateBitmapFromImageFile(HWND, LPCWSTR path)
{
    if (path == nullptr || *path == L'\0')
        return nullptr;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    const Apartment apartment;
    Picture picture;
    return hostPath && ReadPicture(hostPath->c_str(), picture) ? MakeBitmap(picture) : nullptr;
}
