#include "platform/ce.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

class Events : public ::testing::Test {
protected:
    static bool IsSet(HANDLE event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }
};

TEST_F(Events, AnEventThatResetsItselfLetsOneWaiterGo)
{
    const HANDLE event = CreateEventW(nullptr, FALSE, TRUE, nullptr);
    ASSERT_NE(event, nullptr);
    EXPECT_TRUE(IsSet(event));
    EXPECT_FALSE(IsSet(event));
    EXPECT_TRUE(EventModify(event, EVENT_SET));
    EXPECT_TRUE(IsSet(event));
    EXPECT_TRUE(CloseHandle(event));
}

TEST_F(Events, AManualEventStaysSetUntilItIsReset)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_FALSE(IsSet(event));
    EXPECT_TRUE(EventModify(event, EVENT_SET));
    EXPECT_TRUE(IsSet(event));
    EXPECT_TRUE(IsSet(event));
    EXPECT_TRUE(EventModify(event, EVENT_RESET));
    EXPECT_FALSE(IsSet(event));
    EXPECT_TRUE(CloseHandle(event));
}

TEST_F(Events, APulseWithoutWaitersLeavesTheEventReset)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    EXPECT_TRUE(EventModify(event, EVENT_PULSE));
    EXPECT_FALSE(IsSet(event));
    EXPECT_TRUE(CloseHandle(event));
}

struct TwoWaiters {
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE passed = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::atomic<int> count = 0;
};

DWORD WINAPI WaitForIt(LPVOID parameter)
{
    auto& waiters = *static_cast<TwoWaiters*>(parameter);
    WaitForSingleObject(waiters.event, INFINITE);
    ++waiters.count;
    EventModify(waiters.passed, EVENT_SET);
    return 0;
}

TEST_F(Events, APulseLetsOneWaiterGoWhereTheEventResetsItself)
{
    TwoWaiters waiters;
    const HANDLE threads[] = { CreateThread(nullptr, 0, WaitForIt, &waiters, 0, nullptr),
                               CreateThread(nullptr, 0, WaitForIt, &waiters, 0, nullptr) };
    do { // a pulse before both wait is lost
        Sleep(20);
        EventModify(waiters.event, EVENT_PULSE);
    } while (WaitForSingleObject(waiters.passed, 1000) == WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(waiters.passed, 50), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(waiters.count, 1);
    EventModify(waiters.event, EVENT_SET);
    for (const HANDLE thread : threads) {
        EXPECT_EQ(WaitForSingleObject(thread, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
        CloseHandle(thread);
    }
    EXPECT_FALSE(IsSet(waiters.event));
    CloseHandle(waiters.event);
    CloseHandle(waiters.passed);
}

TEST_F(Events, AWaitThatIsNotAnsweredTimesOut)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 1), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_TRUE(CloseHandle(event));
}

TEST_F(Events, ASecondCreationOfANameOpensTheSameEvent)
{
    const auto* const name = TEXT("cardsong-test-event");
    const HANDLE first = CreateEventW(nullptr, TRUE, FALSE, name);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
    const HANDLE second = CreateEventW(nullptr, TRUE, FALSE, name);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_TRUE(EventModify(first, EVENT_SET));
    EXPECT_TRUE(IsSet(second));
    EXPECT_TRUE(CloseHandle(first));
    EXPECT_TRUE(IsSet(second));
    EXPECT_TRUE(CloseHandle(second));
}

TEST_F(Events, AnEventClosesOnce)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    EXPECT_TRUE(CloseHandle(event));
    EXPECT_FALSE(CloseHandle(event));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_FAILED));
    EXPECT_FALSE(EventModify(event, EVENT_SET));
}

TEST_F(Events, NullIsNoHandle)
{
    EXPECT_FALSE(CloseHandle(nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

} // namespace
