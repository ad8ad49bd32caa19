// Songs that say they are enormous: what is read and kept of them stays small.
#include "tags/id3_frame_search.h"
#include "tags/id3_frame_table.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::Sample;

constexpr std::uint64_t kTerabyte = std::uint64_t{ 1 } << 40;

// A song of a terabyte: `start`, then for ever a frame header of 128 kbit/s at 44100 Hz. Remembers the largest read.
class GiantSource final : public ByteSource {
public:
    explicit GiantSource(const Bytes& start) : m_start(start) {}

    std::uint64_t SizeBytes() override { return kTerabyte; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        constexpr std::byte kFrame[] = { std::byte{ 0xFF }, std::byte{ 0xFB }, std::byte{ 0x90 }, std::byte{ 0x04 } };
        largestRead = std::max(largestRead, target.size());
        for (std::size_t i = 0; i < target.size(); ++i, ++offset)
            target[i] = offset < m_start.size() ? m_start[static_cast<std::size_t>(offset)] : kFrame[offset % 4];
        return target.size();
    }

    std::size_t largestRead = 0;

private:
    Bytes m_start;
};

// A tag of 256 MB, the most that its header can state, that begins with `body`.
Bytes LargestTag(const Bytes& body)
{
    return Bytes("ID3\3").Fill(2).Fill(4, 0x7F).Append(body);
}

TEST(GiantSong, OfATagOnlySixteenMegabytesAreRead)
{
    constexpr std::size_t kMostBytes = 16 << 20;
    GiantSource source(LargestTag(Bytes("APIC").Big(0x7FFFFFFF, 4).Fill(2)));
    Mp3FileInfo info;
    ASSERT_EQ(ReadMp3Info(&source, info, TagFrames::Read), kTagOk);
    EXPECT_EQ(source.largestRead, kMostBytes);
    EXPECT_EQ(info.id3v2TagBytes, 0x0FFFFFFFU);
    ASSERT_EQ(info.id3v2Frames.GetCount(), 1);
    EXPECT_EQ(static_cast<const Id3Frame*>(info.id3v2Frames.GetAt(0))->data.capacity(), kMostBytes - 10 + 1);
}

TEST(GiantSong, WithoutFramesNothingOfItsTagIsRead)
{
    GiantSource source(LargestTag(Bytes("APIC").Big(0x7FFFFFFF, 4).Fill(2)));
    Mp3FileInfo info;
    ASSERT_EQ(ReadMp3Info(&source, info, TagFrames::Skip), kTagOk);
    EXPECT_LE(source.largestRead, 256U);
}

TEST(GiantSong, ItsSizeIsTheMostThat32BitsHold)
{
    GiantSource source((Bytes()));
    Mp3FileInfo info;
    ASSERT_EQ(ReadMp3Info(&source, info, TagFrames::Skip), kTagOk);
    EXPECT_EQ(info.fileBytes, 0xFFFFFFFFU);
    EXPECT_EQ(info.durationMs, static_cast<std::uint32_t>((4294967295.0 - 128) * 26.12244987487793 / 417));
}

TEST(GiantSong, OfATagFrameNoMoreIsHeldThanAskedFor)
{
    GiantSource source(LargestTag(Bytes("TIT2").Big(0x7FFFFFFF, 4).Fill(2)));
    const auto data = FindId3v2Frame(source, 0x0FFFFFFF, 3, "TIT2", 1000);
    EXPECT_EQ(data.size(), 1000U);
    EXPECT_EQ(source.largestRead, 1000U);
}

TEST(GiantSong, AThousandTagFramesAreKept)
{
    Bytes body;
    for (int i = 0; i < kMostTagFrames + 500; ++i)
        body.Text("TXXX").Big(1, 4).Fill(2).Fill(1, 'x');
    CPtrListCtrl list;
    ParseId3v2Frames(list, body);
    EXPECT_EQ(kMostTagFrames, 1000);
    EXPECT_EQ(list.GetCount(), kMostTagFrames);
    FreeId3Frames(list);
}

TEST(GiantSong, OfAWmaHeaderAnObjectIsReadAtATime)
{
    GiantSource source(Sample("wma/tagged.wma"));
    const auto info = std::make_unique<WmaInfo>();
    EXPECT_EQ(ReadWmaInfo(source, *info), 0);
    EXPECT_LE(source.largestRead, 1024U);
}

} // namespace
