// A parent window for tests of controls, made through the API, and pictures to draw into. Records what reaches the
// parent.
#pragma once

#include "common/gdi_handles.h"
#include "gui/gif_bitmap.h"
#include "platform/ce.h"

#include <cstdint>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

namespace cardsong::test {

struct SeenMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// The pixel as an RGB565 word, however the system widens it.
inline std::uint16_t Pixel565(HDC context, int x, int y)
{
    const COLORREF color = GetPixel(context, x, y);
    EXPECT_NE(color, CLR_INVALID) << x << ", " << y;
    return static_cast<std::uint16_t>((color & 0xF8) << 8 | (color >> 5 & 0x07E0) | (color >> 19 & 0x1F));
}

class ParentWindow {
public:
    ParentWindow()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Procedure;
        windowClass.lpszClassName = kClassName;
        RegisterClassW(&windowClass);
        s_current = this;
        m_window = CreateWindowExW(0, kClassName, TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, nullptr, nullptr,
                                   nullptr, nullptr);
        EXPECT_NE(m_window, nullptr);
        SetFocus(m_window);
        Pump();
    }
    ~ParentWindow()
    {
        onDrawItem = nullptr;
        DestroyWindow(m_window);
        Pump();
        UnregisterClassW(kClassName, nullptr);
        s_current = nullptr;
    }
    ParentWindow(const ParentWindow&) = delete;
    ParentWindow& operator=(const ParentWindow&) = delete;

    HWND Get() const { return m_window; }

    // Delivers all messages that wait, paints included.
    static void Pump()
    {
        MSG message;
        for (int i = 0; i < 1000 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
            DispatchMessageW(&message);
    }

    std::function<void(const DRAWITEMSTRUCT&)> onDrawItem;
    std::function<void(const SeenMessage&)> onSeen; // each of those below, while it is being sent
    std::vector<SeenMessage> seen;                  // WM_COMMAND, WM_NOTIFY and private messages

private:
    static constexpr LPCWSTR kClassName = TEXT("CardsongTestParent");

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (s_current != nullptr && (message == WM_COMMAND || message == WM_NOTIFY || message >= WM_USER)) {
            s_current->seen.push_back({ message, wParam, lParam });
            if (s_current->onSeen)
                s_current->onSeen({ message, wParam, lParam });
        }
        if (message == WM_DRAWITEM) {
            if (s_current != nullptr && s_current->onDrawItem)
                s_current->onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    inline static ParentWindow* s_current = nullptr;
    HWND m_window = nullptr;
};

// A picture in memory, of one colour at first.
class Picture {
public:
    explicit Picture(COLORREF color = RGB(0, 0, 255), int widthPx = 320, int heightPx = 240)
        : m_rowWords((widthPx + 1) & ~1), m_heightPx(heightPx), m_context(CreateCompatibleDC(nullptr)),
          m_bitmap(CreateRgb565Dib(widthPx, heightPx, &m_bits)), m_selected(m_context.Get(), m_bitmap.Get())
    {
        const RECT whole = { 0, 0, widthPx, heightPx };
        const UniqueBrush brush(CreateSolidBrush(color));
        FillRect(m_context.Get(), &whole, brush.Get());
    }

    HDC Context() const { return m_context.Get(); }
    HBITMAP Bitmap() const { return m_bitmap.Get(); }
    std::uint16_t At(int x, int y) const
    {
        const bool isInside = x >= 0 && x < m_rowWords && y >= 0 && y < m_heightPx;
        EXPECT_TRUE(isInside) << x << ", " << y;
        return isInside ? m_bits[y * m_rowWords + x] : std::uint16_t{ 0 };
    }
    // Pixels of `color` in the rectangle.
    int Count(std::uint16_t color, const RECT& rect) const
    {
        int count = 0;
        for (int y = rect.top; y < rect.bottom; ++y) {
            for (int x = rect.left; x < rect.right; ++x)
                count += At(x, y) == color ? 1 : 0;
        }
        return count;
    }

private:
    std::uint16_t* m_bits = nullptr;
    int m_rowWords; // with a row's padding
    int m_heightPx;
    UniqueMemoryContext m_context;
    UniqueBitmap m_bitmap;
    SelectedObject m_selected;
};

} // namespace cardsong::test
