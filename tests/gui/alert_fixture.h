// The owner of alerts: a window on the test's thread, and what it hears from them.
#pragma once

#include "common/string_table.h"
#include "gui/alert_message_window.h"
#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace cardsong::test {

// What an owner was told, and how things stood at that moment.
struct HeardAnswer {
    WPARAM id;
    HWND alert;
    bool wasWindowGone;
    bool operator==(const HeardAnswer&) const = default;
};

class AlertOwner {
public:
    AlertOwner()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Procedure;
        windowClass.cbWndExtra = sizeof(AlertOwner*);
        windowClass.lpszClassName = kClassName;
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, kClassName, TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, nullptr, nullptr,
                                   nullptr, nullptr);
        EXPECT_NE(m_window, nullptr);
        SetWindowLongPtrW(m_window, 0, reinterpret_cast<LONG_PTR>(this));
        SetActiveWindow(m_window);
        Pump();
    }
    ~AlertOwner()
    {
        DestroyWindow(m_window);
        Pump();
    }
    AlertOwner(const AlertOwner&) = delete;
    AlertOwner& operator=(const AlertOwner&) = delete;

    operator HWND() const { return m_window; }
    // Delivers all messages that wait.
    static void Pump()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    // Goes on delivering until `isTrue`; another thread makes it so.
    [[nodiscard]] static bool PumpUntil(const std::function<bool()>& isTrue)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!isTrue()) {
            if (std::chrono::steady_clock::now() > limit)
                return false;
            Pump();
            std::this_thread::yield();
        }
        return true;
    }

    std::vector<HeardAnswer> heard;                        // WM_COMMANDs
    std::function<LRESULT(WPARAM id, LPARAM)> onCommand{}; // answers them

private:
    static constexpr LPCWSTR kClassName = TEXT("CardsongAlertOwner");

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* const self = reinterpret_cast<AlertOwner*>(GetWindowLongPtrW(window, 0));
        if (self == nullptr || message != WM_COMMAND)
            return DefWindowProcW(window, message, wParam, lParam);
        const auto alert = reinterpret_cast<HWND>(lParam);
        self->heard.push_back({ wParam, alert, IsWindow(alert) == FALSE });
        return self->onCommand ? self->onCommand(wParam, lParam) : 0;
    }

    HWND m_window = nullptr;
};

inline bool IsFree(const CAlertMessageWin& alert)
{
    return alert.State() == AlertState::Free;
}

// Prepares and shows an alert of copied texts.
inline HWND ShowAlert(CAlertMessageWin& alert, HWND owner, int kind, int sound = kAlertInfoSound)
{
    EXPECT_EQ(alert.Prepare(owner, TEXT("Title"), TEXT("Message"), kind, sound, 0, 0), 0);
    return alert.Show();
}

// Taps a button the way its window tells of it.
inline void Answer(HWND alert, UINT id)
{
    PostMessageW(alert, WM_COMMAND, id, 0);
}

} // namespace cardsong::test
