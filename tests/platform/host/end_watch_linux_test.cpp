// A run that is ended from outside: by its time, and by the system.
#include "platform/linux/host/end_watch.h"

#include "platform/ce.h"
#include "platform/linux/user/input.h"

#include <gtest/gtest.h>

#include <csignal>

#include <future>
#include <unistd.h>

using namespace cardsong;

namespace {

// A window that waits for its first key, as the player does for its exit key.
WPARAM AwaitKey()
{
    const HWND window = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                                        nullptr, nullptr, nullptr);
    SetForegroundWindow(window);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0)) {
        if (message.message == WM_KEYDOWN)
            break;
        DispatchMessageW(&message);
    }
    DestroyWindow(window);
    user::ResetWindows();
    return message.wParam;
}

} // namespace

TEST(EndWatch, PressesTheExitKeyWhenTheTimeIsOver)
{
    host::EndWatch watch;
    std::promise<void> ran;
    watch.Start(0.001, [&] { ran.set_value(); });
    EXPECT_EQ(AwaitKey(), VK_F24);
    EXPECT_EQ(ran.get_future().wait_for(std::chrono::seconds(0)), std::future_status::ready);
}

TEST(EndWatch, DoesNotEndBeforeItsTime)
{
    const auto start = std::chrono::steady_clock::now();
    host::EndWatch watch;
    watch.Start(0.05, [] {});
    EXPECT_EQ(AwaitKey(), VK_F24);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST(EndWatch, PressesTheExitKeyWhenTheSystemAsksTheProcessToEnd)
{
    host::EndWatch watch;
    watch.Start(0, [] {});
    kill(getpid(), SIGTERM); // blocked on every thread: it waits for the watch
    EXPECT_EQ(AwaitKey(), VK_F24);
}

TEST(EndWatch, PressesTheExitKeyWhileTheDisplayIsInactive)
{
    user::SetDisplayActive(false);
    host::EndWatch watch;
    watch.Start(0.001, [] {});
    EXPECT_EQ(AwaitKey(), VK_F24);
}

TEST(EndWatch, StopsWithoutAKeyAndWithoutDelay)
{
    host::EndWatch watch;
    bool ran = false;
    watch.Start(3600, [&] { ran = true; });
    watch.Stop();
    EXPECT_FALSE(ran);
}

TEST(EndWatch, IsHarmlessWhenItNeverStarted)
{
    host::EndWatch watch;
    watch.Stop();
}
