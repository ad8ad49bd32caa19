// Picture files through the system's imaging library, their first frame. Knows neither bitmaps nor device paths.
#pragma once

#include "platform/ce.h"

#include <wincodec.h>

#include <vector>

namespace cardsong::gdi {

// No picture and no frame of one is wider or higher; a larger one counts as unreadable before its pixels are allocated.
constexpr UINT kMaxImageSidePx = 4096;
constexpr std::size_t kImagePixelBytes = 4; // blue, green, red, alpha

// A reference to a component of the library, released at the end.
template <typename Interface>
class Component {
public:
    Component() = default;
    ~Component() { Reset(); }
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    explicit operator bool() const { return m_pointer != nullptr; }
    Interface* operator->() const { return m_pointer; }
    Interface* Get() const { return m_pointer; }
    Interface** Receive()
    {
        Reset();
        return &m_pointer;
    }

private:
    void Reset()
    {
        if (m_pointer != nullptr)
            m_pointer->Release();
        m_pointer = nullptr;
    }
    Interface* m_pointer = nullptr;
};

// Enters the components' apartment, whether or not the calling thread is in one already. It lives as long as the thread
// uses an ImageFile.
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

struct ImageFrame {
    POINT corner{}; // on the whole picture; the frame may reach past it
    UINT widthPx = 0;
    UINT heightPx = 0;
    std::vector<BYTE> pixels; // rows without padding, the upper one first
};

class ImageFile {
public:
    // False when the file is missing or foreign, holds no frame, or is empty or too large in either direction.
    [[nodiscard]] bool Open(const wchar_t* hostPath);
    // Of the whole picture: a GIF's logical screen, otherwise the first frame.
    UINT WidthPx() const { return m_widthPx; }
    UINT HeightPx() const { return m_heightPx; }
    // False, with `frame` in no certain state, when the first frame cannot be decoded or is too large.
    [[nodiscard]] bool ReadFrame(ImageFrame& frame) const;

private:
    bool ReadSize();

    Component<IWICImagingFactory> m_factory;
    Component<IWICBitmapDecoder> m_decoder;
    bool m_isGif = false;
    UINT m_widthPx = 0;
    UINT m_heightPx = 0;
};

} // namespace cardsong::gdi
