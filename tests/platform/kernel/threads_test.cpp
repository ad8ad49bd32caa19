#include "platform/ce.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

DWORD WINAPI StoreOwnId(LPVOID place)
{
    *static_cast<DWORD*>(place) = GetCurrentThreadId();
    return 0;
}

TEST(Threads, AThreadsHandleIsSignalledWhenItEnds)
{
    DWORD seen = 0;
    DWORD id = 0;
    const HANDLE thread = CreateThread(nullptr, 0, StoreOwnId, &seen, 0, &id);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(WaitForSingleObject(thread, 0), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(seen, id);
    EXPECT_NE(id, 0U);
    EXPECT_NE(id, GetCurrentThreadId());
    EXPECT_TRUE(CloseHandle(thread));
    EXPECT_FALSE(CloseHandle(thread));
}

struct Meeting {
    HANDLE ready = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE go = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> passed = 0;

    ~Meeting()
    {
        CloseHandle(ready);
        CloseHandle(go);
    }
};

DWORD WINAPI WaitToGo(LPVOID parameter)
{
    auto& meeting = *static_cast<Meeting*>(parameter);
    EventModify(meeting.ready, EVENT_SET);
    if (WaitForSingleObject(meeting.go, INFINITE) == WAIT_OBJECT_0)
        ++meeting.passed;
    return 0;
}

TEST(Threads, AnEventLetsAWaitingThreadGo)
{
    Meeting meeting;
    const HANDLE thread = CreateThread(nullptr, 0, WaitToGo, &meeting, 0, nullptr);
    EXPECT_EQ(WaitForSingleObject(meeting.ready, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(meeting.passed, 0);
    EXPECT_EQ(WaitForSingleObject(thread, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_TRUE(EventModify(meeting.go, EVENT_SET));
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(meeting.passed, 1);
    EXPECT_TRUE(CloseHandle(thread));
}

TEST(Threads, AManualEventLetsAllWaitersGo)
{
    Meeting meeting;
    HANDLE threads[4];
    for (auto& thread : threads) {
        thread = CreateThread(nullptr, 0, WaitToGo, &meeting, 0, nullptr);
        EXPECT_EQ(WaitForSingleObject(meeting.ready, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
    }
    EXPECT_TRUE(EventModify(meeting.go, EVENT_SET));
    for (const HANDLE thread : threads) {
        EXPECT_EQ(WaitForSingleObject(thread, INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
        EXPECT_TRUE(CloseHandle(thread));
    }
    EXPECT_EQ(meeting.passed, 4);
}

DWORD WINAPI SetAnError(LPVOID)
{
    SetLastError(ERROR_DISK_FULL);
    return 0;
}

TEST(Threads, EachThreadHasItsOwnLastError)
{
    SetLastError(ERROR_ACCESS_DENIED);
    const HANDLE thread = CreateThread(nullptr, 0, SetAnError, nullptr, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_TRUE(CloseHandle(thread));
}

TEST(Threads, TicksNeverFallAndSleepTakesTime)
{
    const DWORD before = GetTickCount();
    Sleep(50);
    EXPECT_GE(GetTickCount() - before, 50U - 17U); // the tick of a coarse clock may be 16 ms long
}

TEST(Threads, RandomNumbersDiffer)
{
    const DWORD first = Random();
    bool differs = false;
    for (int i = 0; i < 16; ++i)
        differs = differs || Random() != first;
    EXPECT_TRUE(differs);
}

TEST(Threads, TheApartmentIsCounted)
{
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
    CoUninitialize();
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
    CoUninitialize();
    CoUninitialize();
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    CoUninitialize();
}

} // namespace
