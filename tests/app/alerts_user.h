// Whoever sees an alert while the player waits for its answer.
#pragma once

#include "platform/ce.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/window_threads.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace cardsong::test {

constexpr LPCWSTR kAlertClass = TEXT("ALERTMSGWIN");

// While start-up waits for the alert: does `answer` when it is shown, and lets the time pass in which start-up looks.
class AlertsUser {
public:
    AlertsUser(kernel::VirtualClock& clock, std::function<void()> answer)
        : m_thread([this, &clock, does = std::move(answer)] {
              while (FindWindowW(kAlertClass, nullptr) == nullptr)
                  std::this_thread::yield();
              SendMessageW(FindWindowW(kAlertClass, nullptr), WM_NULL, 0, 0); // it looks at its messages now
              does();
              while (!m_isDone) {
                  clock.Advance(100);
                  m_waitedMs += 100;
                  std::this_thread::yield();
              }
          })
    {
    }
    ~AlertsUser()
    {
        m_isDone = true;
        m_thread.join();
        while (WindowThreads() > m_threads)
            std::this_thread::yield(); // the alert's thread uses the clock
    }
    AlertsUser(const AlertsUser&) = delete;
    AlertsUser& operator=(const AlertsUser&) = delete;
    int WaitedMs() const { return m_waitedMs; }

    static void TapOk()
    {
        user::PointerDown({ 230, 217 });
        user::PointerUp({ 230, 217 });
    }

    // Whether the alert goes by itself, before its own time is over; gives it ten seconds of the real clock.
    static bool IsAlertGoneWhileTimeStands()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (FindWindowW(kAlertClass, nullptr) != nullptr && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        return FindWindowW(kAlertClass, nullptr) == nullptr;
    }

private:
    const int m_threads = [] {
        GetActiveWindow(); // from here on the test's own thread has to do with windows
        return WindowThreads();
    }();
    std::atomic<bool> m_isDone = false;
    std::atomic<int> m_waitedMs = 0;
    std::thread m_thread;
};

} // namespace cardsong::test
