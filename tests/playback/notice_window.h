// A window that counts the notices of a graph and the ticks of the player's timer.
#pragma once

#include "playback/media_player.h"

namespace cardsong::test {

class NoticeWindow {
public:
    NoticeWindow()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Count;
        windowClass.lpszClassName = TEXT("NoticeWindow");
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, TEXT("NoticeWindow"), nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                                   nullptr);
        s_notices = 0;
        s_ticks = 0;
    }
    ~NoticeWindow()
    {
        DestroyWindow(m_window);
        UnregisterClassW(TEXT("NoticeWindow"), nullptr);
    }
    NoticeWindow(const NoticeWindow&) = delete;
    NoticeWindow& operator=(const NoticeWindow&) = delete;

    HWND Handle() const { return m_window; }
    // Both serve the messages that wait.
    int Notices() const
    {
        Serve();
        return s_notices;
    }
    int Ticks() const
    {
        Serve();
        return s_ticks;
    }

private:
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == kGraphEventMessage && wParam == 0 && lParam == 0)
            ++s_notices;
        if (message == WM_TIMER && wParam == kProgressTimerId)
            ++s_ticks;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    static void Serve()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }

    static inline int s_notices = 0;
    static inline int s_ticks = 0;
    HWND m_window = nullptr;
};

} // namespace cardsong::test
