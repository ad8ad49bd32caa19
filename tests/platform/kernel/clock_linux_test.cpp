#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/clock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace cardsong::kernel {
namespace {

class VirtualTime : public ::testing::Test {
protected:
    VirtualTime() { InstallClock(&clock); }
    ~VirtualTime() override { InstallClock(nullptr); }

    VirtualClock clock;
};

TEST_F(VirtualTime, StandsStillUntilItIsAdvanced)
{
    const DWORD before = GetTickCount();
    EXPECT_EQ(GetTickCount(), before);
    clock.Advance(15'000);
    EXPECT_EQ(GetTickCount(), before + 15'000);
}

TEST_F(VirtualTime, AWaitForNothingReturnsAtOnce)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(CloseHandle(event));
}

struct TimedWait {
    HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<DWORD> result = 77;
    ~TimedWait() { CloseHandle(event); }
};

TEST_F(VirtualTime, AWaitEndsWhenItsTimeHasCome)
{
    TimedWait wait;
    std::thread waiter([&] { wait.result = WaitForSingleObject(wait.event, 5000); });
    while (wait.result == 77U)
        clock.Advance(1000); // the wait may begin after any of these steps
    waiter.join();
    EXPECT_EQ(wait.result, WAIT_TIMEOUT);
}

TEST_F(VirtualTime, AWaitIsAnsweredWithoutAnyTimePassing)
{
    TimedWait wait;
    std::thread waiter([&] { wait.result = WaitForSingleObject(wait.event, 5000); });
    EventModify(wait.event, EVENT_SET);
    waiter.join();
    EXPECT_EQ(wait.result, WAIT_OBJECT_0);
}

TEST_F(VirtualTime, ASleepEndsOnlyAfterItsLastMillisecond)
{
    std::atomic<bool> isAwake = false;
    std::atomic<std::uint64_t> startMs = 0;
    std::atomic<std::uint64_t> endMs = 0;
    std::thread sleeper([&] {
        startMs = clock.NowMs();
        Sleep(100);
        endMs = clock.NowMs();
        isAwake = true;
    });
    while (!isAwake)
        clock.Advance(1);
    sleeper.join();
    EXPECT_GE(endMs - startMs, 100U);
}

TEST_F(VirtualTime, ManySleepersAllWakeUp)
{
    std::atomic<int> awake = 0;
    std::vector<std::thread> sleepers;
    for (DWORD i = 1; i <= 8; ++i) {
        sleepers.emplace_back([&awake, i] {
            for (int turn = 0; turn < 20; ++turn)
                Sleep(i);
            ++awake;
        });
    }
    while (awake != 8)
        clock.Advance(1);
    for (auto& sleeper : sleepers)
        sleeper.join();
    EXPECT_EQ(awake, 8);
}

TEST_F(VirtualTime, APulseLetsOnlyThoseGoWhoWait)
{
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::atomic<DWORD> result = 77;
    std::thread waiter([&] { result = WaitForSingleObject(event, INFINITE); });
    while (result == 77U) {
        EventModify(event, EVENT_PULSE);
        std::this_thread::yield();
    }
    waiter.join();
    EXPECT_EQ(result, WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(CloseHandle(event));
}

TEST(MonotonicTime, AWaitTakesAtLeastItsTime)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const auto before = CurrentClock().NowMs();
    EXPECT_EQ(WaitForSingleObject(event, 5), WAIT_TIMEOUT);
    EXPECT_GE(CurrentClock().NowMs() - before, 5U);
    EXPECT_TRUE(CloseHandle(event));
}

} // namespace
} // namespace cardsong::kernel
