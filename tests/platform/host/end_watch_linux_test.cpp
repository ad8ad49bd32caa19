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

// One after the other: a request that still waits would be the next one, too.
void AskToEnd(int times)
{
    for (int i = 0; i < times; ++i) {
        kill(getpid(), SIGTERM);
        sigset_t waiting;
        do {
            sigpending(&waiting);
        } while (sigismember(&waiting, SIGTERM));
    }
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

TEST(EndWatch, ASignalThatIsSetToBeIgnoredStaysSo)
{
    sigset_t signals;
    sigfillset(&signals);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr); // what the watches before this one have blocked
    std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGINT, SIG_IGN);
    host::EndWatch watch;
    std::signal(SIGHUP, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    pthread_sigmask(SIG_BLOCK, nullptr, &signals);
    EXPECT_FALSE(sigismember(&signals, SIGHUP));
    EXPECT_FALSE(sigismember(&signals, SIGINT));
    EXPECT_TRUE(sigismember(&signals, SIGTERM));
}

TEST(EndWatch, ManyRequestsWithinAMomentAreOne)
{
    EXPECT_EXIT(
        {
            host::EndWatch watch(std::chrono::hours(1));
            watch.Start(0, [] {});
            AskToEnd(10);
            _exit(AwaitKey() == VK_F24 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(EndWatch, AFourthRequestEndsAProcessThatHangsForLong)
{
    EXPECT_EXIT(
        {
            host::EndWatch watch(std::chrono::milliseconds(0));
            watch.Start(0, [] {});
            AskToEnd(4);
            for (;;)
                pause();
        },
        testing::ExitedWithCode(130), "");
}

TEST(EndWatch, ThreeRequestsEndNoProcess)
{
    EXPECT_EXIT(
        {
            host::EndWatch watch(std::chrono::milliseconds(0));
            watch.Start(0, [] {});
            AskToEnd(3);
            _exit(AwaitKey() == VK_F24 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
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
