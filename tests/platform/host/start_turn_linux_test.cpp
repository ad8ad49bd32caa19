#include "platform/linux/host/start_turn.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using cardsong::host::StartTurn;
using cardsong::test::ScratchDevice;

TEST(StartTurn, IsHadByOneStartAtATime)
{
    const ScratchDevice device;
    StartTurn first(device.UserDirectory());
    StartTurn second(device.UserDirectory());
    EXPECT_TRUE(first.Await());
    EXPECT_FALSE(second.Await(std::chrono::milliseconds(0)));
    first.End();
    EXPECT_TRUE(second.Await(std::chrono::milliseconds(0)));
}

TEST(StartTurn, IsAwaited)
{
    const ScratchDevice device;
    StartTurn first(device.UserDirectory());
    ASSERT_TRUE(first.Await());
    std::atomic<bool> hasEnded = false;
    std::thread next([&] {
        StartTurn second(device.UserDirectory());
        EXPECT_TRUE(second.Await());
        EXPECT_TRUE(hasEnded);
    });
    hasEnded = true;
    first.End();
    next.join();
}

TEST(StartTurn, EndsWithItsStart)
{
    const ScratchDevice device;
    ASSERT_TRUE(StartTurn(device.UserDirectory()).Await());
    EXPECT_TRUE(StartTurn(device.UserDirectory()).Await(std::chrono::milliseconds(0)));
}

TEST(StartTurn, IsNotAwaitedWhereNoLockCanBeHad)
{
    EXPECT_TRUE(StartTurn("/dev/null").Await(std::chrono::milliseconds(0)));
    EXPECT_TRUE(StartTurn("/dev/null").Await(std::chrono::milliseconds(0)));
}
