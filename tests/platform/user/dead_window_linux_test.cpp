// What the layer promises about a window that is gone, where the oracle is known to be wrong.
#include "platform/linux/user/window.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(DeadWindow, IsNotUpdated)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    EXPECT_FALSE(UpdateWindow(dead));
}

TEST(DeadWindow, LeavesItsHandleUnusedForThirtyTwoThousandOthers)
{
    constexpr std::size_t kGenerations = 0x7FFF;
    cardsong::user::WindowTable table;
    std::set<HWND> handles;
    for (std::size_t i = 0; i < kGenerations; ++i) {
        auto* const record = table.Add();
        EXPECT_TRUE(handles.insert(record->handle).second) << i;
        table.Remove(record);
    }
    auto* const again = table.Add();
    EXPECT_TRUE(handles.contains(again->handle));
    EXPECT_EQ(table.Find(again->handle), again);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(*handles.begin()) & 1, 0U);
    EXPECT_LE(reinterpret_cast<ULONG_PTR>(*handles.rbegin()), 0x7FFFFFFFU) << "a handle is a positive number";
}

} // namespace
