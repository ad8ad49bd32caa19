// How often a song is read for its length and title: looking through a card of thousands costs little else.
#include "tags/block_source.h"
#include "tags/id3_frame_search.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"
#include "tests/tags/bytes.h"
#include "tests/tags/counting_source.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::CountingSource;
using cardsong::test::Sample;
using cardsong::test::SampleText;

constexpr std::size_t kHeadBytes = 4096;
constexpr std::size_t kId3v1Bytes = 128;
constexpr std::size_t kAudioBytes = 300'000;

Bytes Audio()
{
    return Bytes().Big(0xFFFB9004, 4).Fill(kAudioBytes);
}

Bytes TextFrame(const char* identifier, const std::string& text)
{
    return Bytes(identifier).Big(text.size(), 4).Fill(2).Text(text);
}

Bytes Id3v2(const Bytes& body)
{
    Bytes tag("ID3\3");
    tag.Fill(2);
    for (const int shift : { 21, 14, 7, 0 })
        tag.Big(body.size() >> shift & 0x7F, 1);
    return tag.Append(body);
}

struct Cost {
    int reads;
    std::size_t bytes;
    std::string title; // of the ID3v2 tag
};

Cost ReadMp3(const Bytes& song)
{
    CountingSource below(song);
    BlockSource source(below);
    Mp3FileInfo info;
    EXPECT_EQ(ReadMp3Info(&source, info, TagFrames::Skip), kTagOk);
    EXPECT_GT(info.durationMs, 0U);
    std::vector<std::byte> title;
    if (info.id3v2TagBytes > 0)
        title = FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", 1024);
    EXPECT_LE(below.sizeQuestions, 1);
    return { below.reads, below.askedBytes, { reinterpret_cast<const char*>(title.data()), title.size() } };
}

TEST(SongReads, AnMp3WithoutTagTakesTwo)
{
    const Cost cost = ReadMp3(Audio());
    EXPECT_EQ(cost.reads, 2);
    EXPECT_EQ(cost.bytes, kHeadBytes + kId3v1Bytes);
}

TEST(SongReads, AnMp3WithAnId3v1TagTakesTwo)
{
    const Cost cost = ReadMp3(Audio().Text("TAG").Text("Title").Fill(120));
    EXPECT_EQ(cost.reads, 2);
    EXPECT_EQ(cost.bytes, kHeadBytes + kId3v1Bytes);
}

TEST(SongReads, AnMp3WithAnId3v2TagTakesTwo)
{
    const Cost cost =
        ReadMp3(Id3v2(TextFrame("TALB", "Album").Append(TextFrame("TIT2", "Title")).Fill(3000)).Append(Audio()));
    EXPECT_EQ(cost.title, "Title");
    EXPECT_EQ(cost.reads, 2);
    EXPECT_EQ(cost.bytes, kHeadBytes + kId3v1Bytes);
}

TEST(SongReads, AnMp3WithAPictureInItsTagTakesThree)
{
    const Cost cost =
        ReadMp3(Id3v2(TextFrame("TIT2", "Title").Append(TextFrame("APIC", std::string(200'000, 'p')))).Append(Audio()));
    EXPECT_EQ(cost.title, "Title");
    EXPECT_EQ(cost.reads, 3);
    EXPECT_EQ(cost.bytes, kHeadBytes + kId3v1Bytes + kHeadBytes);
}

TEST(SongReads, AnMp3WithAPictureInFrontOfItsTitleTakesFour)
{
    const Cost cost =
        ReadMp3(Id3v2(TextFrame("APIC", std::string(200'000, 'p')).Append(TextFrame("TIT2", "Title")).Fill(5000))
                    .Append(Audio()));
    EXPECT_EQ(cost.title, "Title");
    EXPECT_EQ(cost.reads, 4);
}

TEST(SongReads, AnMp3OfLessThanTheFirstBlockTakesOne)
{
    EXPECT_EQ(ReadMp3(Sample("mp3/cbr_id3v1.mp3")).reads, 1);
    EXPECT_EQ(ReadMp3(Sample("mp3/vbr_id3v2.mp3")).reads, 1);
}

TEST(SongReads, AnMp3WhoseHeaderReachesOverTheFirstBlockTakesThree)
{
    const Cost cost = ReadMp3(Id3v2(TextFrame("TIT2", "Title").Fill(kHeadBytes - 10 - 15 - 100)).Append(Audio()));
    EXPECT_EQ(cost.title, "Title");
    EXPECT_EQ(cost.reads, 3);
}

TEST(SongReads, AWmaTakesOneAndDoesNotAskForItsSize)
{
    Bytes song = Sample("wma/tagged.wma");
    song.Fill(kAudioBytes);
    CountingSource below(song);
    BlockSource source(below);
    const auto info = std::make_unique<WmaInfo>();
    EXPECT_EQ(ReadWmaInfo(source, *info), 0);
    EXPECT_EQ(below.reads, 1);
    EXPECT_EQ(below.askedBytes, kHeadBytes);
    EXPECT_EQ(below.sizeQuestions, 0);
}

TEST(SongReads, AWmaWithALongHeaderIsReadInBlocks)
{
    const std::string sample = SampleText("wma/tagged.wma");
    constexpr std::size_t kHeaderObjectBytes = 30;
    Bytes song(sample.substr(0, kHeaderObjectBytes));
    for (int i = 0; i < 20; ++i) // 20 KB of objects of another kind
        song.Fill(16, 'o').Little(1024, 8).Fill(1000);
    song.Text(sample.substr(kHeaderObjectBytes)).Fill(kAudioBytes);
    CountingSource below(song);
    BlockSource source(below);
    const auto info = std::make_unique<WmaInfo>();
    EXPECT_EQ(ReadWmaInfo(source, *info), 0);
    EXPECT_EQ(below.reads, 6); // 21 KB in blocks of four
}

} // namespace
