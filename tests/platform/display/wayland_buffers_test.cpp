#include "platform/linux/display/wayland_buffers.h"

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace cardsong::display;

TEST(SharedMemory, IsZeroAndIsSeenThroughItsFile)
{
    const SharedMemory memory(4096);
    ASSERT_EQ(memory.Bytes().size(), 4096U);
    EXPECT_TRUE(std::ranges::all_of(memory.Bytes(), [](std::byte byte) { return byte == std::byte{}; }));
    memory.Bytes()[4095] = std::byte{ 7 };
    std::byte seen{};
    EXPECT_EQ(pread(memory.File(), &seen, 1, 4095), 1);
    EXPECT_EQ(seen, std::byte{ 7 });
}

TEST(SharedMemory, CannotBeMadeShorterByWhoeverHasItsFile)
{
    const SharedMemory memory(4096);
    EXPECT_EQ(ftruncate(memory.File(), 1), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST(SharedMemory, IsEmptyWhereThereIsNotEnoughOfIt)
{
    EXPECT_TRUE(SharedMemory(std::size_t{ 1 } << 60).Bytes().empty());
}

TEST(WaylandBuffers, AreFreeBeforeThereAreAny)
{
    WaylandBuffers buffers;
    buffers.Resize(320, 240);
    EXPECT_TRUE(buffers.HasFree());
    EXPECT_EQ(buffers.WidthPx(), 320);
    EXPECT_EQ(buffers.HeightPx(), 240);
    EXPECT_EQ(buffers.StrideBytes(), 1280);
}

} // namespace
