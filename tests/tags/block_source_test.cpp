#include "tags/block_source.h"

#include "tests/tags/bytes.h"
#include "tests/tags/counting_source.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using cardsong::test::Bytes;
using cardsong::test::CountingSource;

constexpr std::size_t kBlock = 4096;

// `count` bytes, each telling its offset.
Bytes Counted(std::size_t count)
{
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes.Fill(1, static_cast<int>(i % 251));
    return bytes;
}

Bytes Read(ByteSource& source, std::uint64_t offset, std::size_t count)
{
    Bytes bytes;
    bytes.Fill(count, 0xEE);
    bytes.resize(source.ReadAt(offset, bytes));
    return bytes;
}

Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t count)
{
    Bytes slice;
    for (std::size_t i = offset; i < std::min(offset + count, bytes.size()); ++i)
        slice.push_back(bytes[i]);
    return slice;
}

TEST(BlockSource, AnswersAsTheSourceBelowWhateverTheOrder)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (const std::size_t sizeBytes :
         { 0U, 1U, 127U, 4095U, 4096U, 4097U, 4223U, 4224U, 8191U, 8192U, 8193U, 30'000U }) {
        const Bytes bytes = Counted(sizeBytes);
        MemorySource below(bytes);
        BlockSource source(below);
        for (int i = 0; i < 500; ++i) {
            const std::size_t offset = random() % (sizeBytes + 20);
            const std::size_t count = i % 2 == 0 ? random() % 200 : random() % 6000;
            ASSERT_EQ(Read(source, offset, count), Slice(bytes, offset, count))
                << sizeBytes << ' ' << offset << ' ' << count;
        }
        ASSERT_EQ(source.SizeBytes(), sizeBytes);
    }
}

TEST(BlockSource, TheFirstBlockIsReadOnceAndTheSizeNotAskedFor)
{
    const Bytes bytes = Counted(10'000);
    CountingSource below(bytes);
    BlockSource source(below);
    Read(source, 0, 10);
    Read(source, 3000, 1000);
    Read(source, kBlock - 1, 1);
    EXPECT_EQ(below.reads, 1);
    EXPECT_EQ(below.sizeQuestions, 0);
}

TEST(BlockSource, AFileWithinTheFirstBlockIsReadOnceWithItsSize)
{
    const Bytes bytes = Counted(kBlock - 1);
    CountingSource below(bytes);
    BlockSource source(below);
    EXPECT_EQ(source.SizeBytes(), kBlock - 1);
    EXPECT_EQ(Read(source, kBlock - 129, 128).size(), 128U);
    EXPECT_EQ(Read(source, kBlock - 10, 128).size(), 9U);
    EXPECT_EQ(Read(source, kBlock, 128).size(), 0U);
    EXPECT_EQ(below.reads, 1);
    EXPECT_EQ(below.sizeQuestions, 0);
}

TEST(BlockSource, SmallReadsSideBySideAreOne)
{
    const Bytes bytes = Counted(100'000);
    CountingSource below(bytes);
    BlockSource source(below);
    for (std::size_t offset = 50'000; offset < 50'000 + kBlock; offset += 8)
        EXPECT_EQ(Read(source, offset, 8), Slice(bytes, offset, 8));
    EXPECT_EQ(below.reads, 2);
    EXPECT_EQ(below.sizeQuestions, 1);
    Read(source, 50'000 + kBlock - 1, 2);
    EXPECT_EQ(below.reads, 3);
}

TEST(BlockSource, NoByteBehindTheEndIsAskedFor)
{
    const Bytes bytes = Counted(100'000);
    CountingSource below(bytes);
    BlockSource source(below);
    Read(source, 100'000 - 128, 128);
    EXPECT_EQ(below.askedBytes, kBlock + 128);
}

TEST(BlockSource, MoreThanABlockIsReadStraight)
{
    const Bytes bytes = Counted(100'000);
    CountingSource below(bytes);
    BlockSource source(below);
    EXPECT_EQ(Read(source, 10, 60'000), Slice(bytes, 10, 60'000));
    EXPECT_EQ(below.reads, 2);
    EXPECT_EQ(below.askedBytes, kBlock + 60'000);
}

// Its size is larger than what can be read of it.
class TornSource final : public ByteSource {
public:
    explicit TornSource(std::span<const std::byte> bytes) : m_source(bytes) {}
    std::uint64_t SizeBytes() override { return 1'000'000; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        return m_source.ReadAt(offset, target);
    }

private:
    MemorySource m_source;
};

TEST(BlockSource, ReadingThatFailsYieldsTheBytesThatCame)
{
    const Bytes bytes = Counted(10'000);
    TornSource below(bytes);
    BlockSource source(below);
    EXPECT_EQ(Read(source, 9'990, 100), Slice(bytes, 9'990, 10));
    EXPECT_EQ(Read(source, 9'995, 100), Slice(bytes, 9'995, 5));
    EXPECT_EQ(Read(source, 500'000, 100).size(), 0U);
    EXPECT_EQ(Read(source, 9'995, 5), Slice(bytes, 9'995, 5));
}

// Its size cannot be told.
class SizelessSource final : public ByteSource {
public:
    std::uint64_t SizeBytes() override { return 0; }
    std::size_t ReadAt(std::uint64_t, std::span<std::byte> target) override { return target.size(); }
};

TEST(BlockSource, OfASourceWhoseSizeCannotBeToldTheFirstBlockIsRead)
{
    SizelessSource below;
    BlockSource source(below);
    EXPECT_EQ(Read(source, 0, kBlock).size(), kBlock);
    EXPECT_EQ(Read(source, kBlock, 1).size(), 0U);
    EXPECT_EQ(Read(source, 1, kBlock).size(), 0U);
}

} // namespace
