// What the layer promises about a window that is gone, where the oracle is known to be wrong.
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

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

} // namespace
