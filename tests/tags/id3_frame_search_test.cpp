#include "tags/id3_frame_search.h"

#include "tests/tags/bytes.h"
#include "tests/tags/counting_source.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;
using cardsong::test::CountingSource;
using cardsong::test::Prefix;

constexpr std::uint8_t kVersion3 = 3;
constexpr std::uint8_t kVersion4 = 4;
constexpr std::size_t kMost = 1000;

Bytes Frame(const char* identifier, const std::string& data)
{
    return Bytes(identifier).Big(data.size(), 4).Fill(2).Append(Bytes(data));
}

std::string Find(const std::vector<std::byte>& body, std::uint8_t version = kVersion3, std::size_t mostBytes = kMost,
                 std::uint32_t tagBytes = 100'000)
{
    Bytes file;
    file.Fill(10, 'h').Append(body);
    const std::vector<std::byte> exact(file.begin(), file.end());
    MemorySource source(exact);
    const auto data = FindId3v2Frame(source, tagBytes, version, "TIT2", mostBytes);
    return { reinterpret_cast<const char*>(data.data()), data.size() };
}

TEST(Id3FrameSearch, FindsTheFrameBehindOthers)
{
    EXPECT_EQ(Find(Frame("TALB", "album").Append(Frame("TIT2", "title")).Append(Frame("TIT2", "other"))), "title");
}

TEST(Id3FrameSearch, ReadsNothingOfThePictureInFront)
{
    Bytes file;
    file.Fill(10, 'h').Append(Frame("APIC", std::string(50'000, 'p'))).Append(Frame("TIT2", "title"));
    CountingSource source(file);
    EXPECT_EQ(FindId3v2Frame(source, 60'000, kVersion3, "TIT2", kMost).size(), 5U);
    EXPECT_EQ(source.askedBytes, 10U + 10U + 5U);
}

TEST(Id3FrameSearch, SizesHaveSevenBitsAByteFromVersionFour)
{
    Bytes body("APIC");
    body.Big(0x0101, 4).Fill(2).Append(Bytes(std::string(129, 'p'))); // 1 * 128 + 1
    body.Append(Frame("TIT2", "title"));
    EXPECT_EQ(Find(body, kVersion4), "title");
    EXPECT_EQ(Find(body, kVersion3), "");
}

TEST(Id3FrameSearch, ANoughtEndsTheFrames)
{
    EXPECT_EQ(Find(Bytes().Fill(10).Append(Frame("TIT2", "title"))), "");
}

TEST(Id3FrameSearch, AFrameThatRunsPastTheEndHasTheBytesThatAreThere)
{
    Bytes body("TIT2");
    body.Big(0xFFFFFFFF, 4).Fill(2).Text("tit");
    EXPECT_EQ(Find(body), "tit");
    EXPECT_EQ(Find(Frame("TIT2", "title"), kVersion3, kMost, 12), "ti");
}

TEST(Id3FrameSearch, NoMoreIsReadThanAskedFor)
{
    EXPECT_EQ(Find(Frame("TIT2", "title"), kVersion3, 3), "tit");
}

TEST(Id3FrameSearch, EveryTruncationEndsWell)
{
    const Bytes body = Frame("TALB", "album").Append(Frame("TIT2", "title"));
    for (std::size_t size = 0; size <= body.size(); ++size) {
        const std::size_t there = size > 25 ? size - 25 : 0;
        EXPECT_EQ(Find(Prefix(body, size)), std::string("title").substr(0, there)) << size;
    }
}

TEST(Id3FrameSearch, EmptyFramesWithoutEndAreNotWalkedForEver)
{
    Bytes body;
    for (int i = 0; i < 2000; ++i)
        body.Append(Frame("TALB", ""));
    EXPECT_EQ(Find(body.Append(Frame("TIT2", "title"))), "");
}

} // namespace
