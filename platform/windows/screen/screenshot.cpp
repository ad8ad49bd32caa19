#include "platform/windows/screen/screenshot.h"

#include "platform/screen_size.h"
#include "platform/windows/kernel/utf8.h"
#include "platform/windows/screen/device_screen.h"

#include <array>
#include <memory>
#include <mutex>
#include <vector>
#include <wincodec.h>

namespace cardsong::screen {
namespace {

constexpr int kBytesAPixel = 4;

using Pixels = std::vector<BYTE>; // blue, green, red and nothing, from the top row down

std::mutex g_mutex;
Pixels g_lastPicture;

struct ReleaseComponent {
    void operator()(IUnknown* component) const { component->Release(); }
};
template <typename Interface>
using Component = std::unique_ptr<Interface, ReleaseComponent>;

// A picture in memory with a context that draws into it.
class Canvas {
public:
    Canvas() : m_context(CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = kScreenWidthPx;
        info.bmiHeader.biHeight = -kScreenHeightPx;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 8 * kBytesAPixel;
        m_bitmap = CreateDIBSection(m_context, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        m_before = SelectObject(m_context, m_bitmap);
        SetStretchBltMode(m_context, COLORONCOLOR); // keeps one of several equal pixels
    }
    ~Canvas()
    {
        SelectObject(m_context, m_before);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Context() const { return m_context; }
    Pixels Bytes() const
    {
        GdiFlush();
        const auto* const bytes = static_cast<const BYTE*>(m_bits);
        return { bytes, bytes + std::size_t{ kScreenWidthPx } * kScreenHeightPx * kBytesAPixel };
    }

private:
    HDC m_context;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_before = nullptr;
    void* m_bits = nullptr;
};

void DrawWindow(HWND window, HDC target)
{
    RECT client{};
    GetClientRect(window, &client);
    POINT corner{};
    ClientToScreen(window, &corner);
    const POINT place = FromDesktop(corner);
    const RECT size = Reduce(client);
    const HDC source = GetDCEx(window, nullptr, DCX_CACHE); // with its children
    StretchBlt(target, place.x, place.y, size.right, size.bottom, source, 0, 0, client.right, client.bottom, SRCCOPY);
    ReleaseDC(window, source);
}

BOOL CALLBACK CollectWindow(HWND window, LPARAM windows)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

Pixels LookAtScreen()
{
    const Canvas canvas;
    std::vector<HWND> windows; // the topmost first
    EnumWindows(CollectWindow, reinterpret_cast<LPARAM>(&windows));
    for (auto window = windows.rbegin(); window != windows.rend(); ++window)
        DrawWindow(*window, canvas.Context());
    return canvas.Bytes();
}

bool WritePng(const std::wstring& path, Pixels pixels)
{
    IWICImagingFactory* factoryPointer = nullptr;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(&factoryPointer))))
        return false;
    const Component<IWICImagingFactory> factory(factoryPointer);
    IWICStream* streamPointer = nullptr;
    IWICBitmapEncoder* encoderPointer = nullptr;
    if (FAILED(factory->CreateStream(&streamPointer)))
        return false;
    const Component<IWICStream> stream(streamPointer);
    if (FAILED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) ||
        FAILED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoderPointer)))
        return false;
    const Component<IWICBitmapEncoder> encoder(encoderPointer);
    IWICBitmapFrameEncode* framePointer = nullptr;
    if (FAILED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(&framePointer, nullptr)))
        return false;
    const Component<IWICBitmapFrameEncode> frame(framePointer);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    std::vector<BYTE> packed;
    for (std::size_t i = 0; i < pixels.size(); i += kBytesAPixel)
        packed.insert(packed.end(), { pixels[i], pixels[i + 1], pixels[i + 2] });
    constexpr UINT kRowBytes = kScreenWidthPx * 3;
    return SUCCEEDED(frame->Initialize(nullptr)) && SUCCEEDED(frame->SetSize(kScreenWidthPx, kScreenHeightPx)) &&
           SUCCEEDED(frame->SetPixelFormat(&format)) && format == GUID_WICPixelFormat24bppBGR &&
           SUCCEEDED(frame->WritePixels(kScreenHeightPx, kRowBytes, static_cast<UINT>(packed.size()), packed.data())) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

} // namespace

bool SaveScreenshot(const std::string& path)
{
    Pixels pixels;
    if (ScreenWindow() != nullptr) {
        pixels = LookAtScreen();
    } else {
        const std::lock_guard lock(g_mutex);
        pixels = g_lastPicture;
    }
    if (pixels.empty())
        return false;
    const bool entered = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    const bool isWritten = WritePng(kernel::Utf16FromUtf8(path), std::move(pixels));
    if (entered)
        CoUninitialize();
    return isWritten;
}

void KeepLastPicture()
{
    Pixels pixels = LookAtScreen();
    const std::lock_guard lock(g_mutex);
    g_lastPicture = std::move(pixels);
}

} // namespace cardsong::screen
