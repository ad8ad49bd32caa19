#include "tags/byte_source.h"

#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using cardsong::test::Bytes;

TEST(MemorySource, ReadsFromAnOffset)
{
    const Bytes bytes("abcdef");
    MemorySource source(bytes);
    std::array<std::byte, 3> target = {};
    EXPECT_EQ(source.SizeBytes(), 6u);
    EXPECT_EQ(source.ReadAt(2, target), 3u);
    EXPECT_EQ(target[0], std::byte{ 'c' });
    EXPECT_EQ(target[2], std::byte{ 'e' });
}

TEST(MemorySource, ReadsFewerBytesAtTheEnd)
{
    const Bytes bytes("abc");
    MemorySource source(bytes);
    std::array<std::byte, 3> target = {};
    EXPECT_EQ(source.ReadAt(2, target), 1u);
    EXPECT_EQ(target[0], std::byte{ 'c' });
    EXPECT_EQ(target[1], std::byte{ 0 });
}

TEST(MemorySource, ReadsNothingPastTheEnd)
{
    const Bytes bytes("abc");
    MemorySource source(bytes);
    std::array<std::byte, 3> target = {};
    EXPECT_EQ(source.ReadAt(3, target), 0u);
    EXPECT_EQ(source.ReadAt(~std::uint64_t{ 0 }, target), 0u);
}

} // namespace
