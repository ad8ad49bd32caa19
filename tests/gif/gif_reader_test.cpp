#include "gif/gif_reader.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<std::byte> Data(std::initializer_list<unsigned> values)
{
    std::vector<std::byte> bytes;
    for (const unsigned value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

} // namespace

TEST(GifReader, WordsAreLittleEndian)
{
    const auto data = Data({ 0x34, 0x12, 0xFF, 0x80 });
    GifReader reader(data);
    EXPECT_EQ(reader.U16Le(), 0x1234);
    EXPECT_EQ(reader.U16Le(), 0x80FF);
    EXPECT_TRUE(reader.Ok());
    EXPECT_TRUE(reader.AtEnd());
}

TEST(GifReader, AWordCutInHalfFailsAndGoesToTheEnd)
{
    const auto data = Data({ 0x34 });
    GifReader reader(data);
    EXPECT_EQ(reader.U16Le(), 0);
    EXPECT_FALSE(reader.Ok());
    EXPECT_TRUE(reader.AtEnd());
}

TEST(GifReader, AByteBehindTheEndIsZeroAndAFailure)
{
    GifReader reader;
    EXPECT_EQ(reader.U8(), 0);
    EXPECT_FALSE(reader.Ok());
}

TEST(GifReader, TheFailureStaysUntilTheReaderIsMoved)
{
    const auto data = Data({ 7, 8 });
    GifReader reader(data);
    reader.Skip(3);
    EXPECT_EQ(reader.U8(), 0);
    EXPECT_FALSE(reader.Ok());
    reader.MoveTo(1);
    EXPECT_TRUE(reader.Ok());
    EXPECT_EQ(reader.Offset(), 1U);
    EXPECT_EQ(reader.U8(), 8);
}

TEST(GifReader, MovingBehindTheEndGoesToTheEnd)
{
    const auto data = Data({ 7, 8 });
    GifReader reader(data);
    reader.MoveTo(5);
    EXPECT_EQ(reader.Offset(), 2U);
    EXPECT_TRUE(reader.AtEnd());
}

TEST(GifReader, ExactlyAllBytesCanBeTaken)
{
    const auto data = Data({ 7, 8 });
    GifReader reader(data);
    EXPECT_EQ(reader.Take(2).size(), 2U);
    EXPECT_TRUE(reader.Ok());
}

TEST(GifReader, ASubBlockComesWithoutItsLength)
{
    const auto data = Data({ 2, 10, 11, 1, 12, 0, 99 });
    GifReader reader(data);
    const auto first = reader.SubBlock();
    ASSERT_EQ(first.size(), 2U);
    EXPECT_EQ(first[1], std::byte{ 11 });
    EXPECT_EQ(reader.SubBlock().size(), 1U);
    EXPECT_TRUE(reader.SubBlock().empty());
    EXPECT_EQ(reader.U8(), 99);
}

TEST(GifReader, OfACutSubBlockComesWhatThereIs)
{
    const auto data = Data({ 5, 10, 11 });
    GifReader reader(data);
    EXPECT_EQ(reader.SubBlock().size(), 2U);
    EXPECT_TRUE(reader.SubBlock().empty());
}

TEST(GifReader, SkippingSubBlocksStopsBehindTheTerminator)
{
    const auto data = Data({ 2, 10, 11, 1, 12, 0, 99 });
    GifReader reader(data);
    reader.SkipSubBlocks();
    EXPECT_EQ(reader.Offset(), 6U);
}
