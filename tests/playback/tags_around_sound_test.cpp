// What of a file is sound, and what are tags around it.
#include "playback/tags_around_sound.h"

#include "tests/playback/mpeg_builder.h"

#include <gtest/gtest.h>

using namespace cardsong::test;
using cardsong::playback::ByteRange;
using cardsong::playback::FindSound;

namespace {

const std::string kSound(3000, 's');

std::string Id3v1()
{
    return "TAG" + std::string(125, 't');
}

std::string ApeBlock(std::uint64_t itemsBytes, unsigned flags)
{
    // Version 2000, size with the footer, one item, flags, reserved.
    return "APETAGEX" + LittleEndian(2000, 4) + LittleEndian(itemsBytes + 32, 4) + LittleEndian(1, 4) +
           LittleEndian(flags, 4) + std::string(8, '\0');
}

std::string Ape(std::size_t itemsBytes, bool hasHeader)
{
    const unsigned flags = hasHeader ? 0x80000000U : 0U;
    return (hasHeader ? ApeBlock(itemsBytes, flags) : "") + std::string(itemsBytes, 'a') + ApeBlock(itemsBytes, flags);
}

std::string Lyrics(const std::string& text)
{
    const std::string body = "LYRICSBEGIN" + text;
    std::string size = std::to_string(body.size());
    size.insert(0, 6 - size.size(), '0');
    return body + size + "LYRICS200";
}

struct Tags {
    const char* name;
    std::string before;
    std::string behind;
};

TEST(SoundRange, LiesBetweenTheTags)
{
    const Tags cases[] = {
        { "none", "", "" },
        { "ID3v2", Id3Tag(5000), "" },
        { "two ID3v2 in a row", Id3Tag(5000) + Id3Tag(70000), "" },
        { "ID3v2 with a footer",
          std::string("ID3\x04\0\x10", 6) + std::string("\0\0\0\x05", 4) + "12345" + "3DI7654321", "" },
        { "APE in front", Ape(300, true), "" },
        { "ID3v1", "", Id3v1() },
        { "enhanced ID3v1", "", "TAG+" + std::string(223, 'e') + Id3v1() },
        { "APE", "", Ape(100, false) },
        { "APE with a header", "", Ape(100, true) },
        { "APE and ID3v1", "", Ape(100, true) + Id3v1() },
        { "Lyrics3 v2 and ID3v1", "", Lyrics("LYR00005hello") + Id3v1() },
        { "Lyrics3 v1 and ID3v1", "", "LYRICSBEGINhelloLYRICSEND" + Id3v1() },
        { "an appended ID3v2", "", Id3Tag(20) + std::string("3DI\x04\0\x10\0\0\0\x14", 10) },
        { "all", Id3Tag(9), Ape(10, true) + Lyrics("x") + Id3v1() },
    };
    SongFileTest files;
    for (const Tags& tags : cases) {
        SCOPED_TRACE(tags.name);
        const auto file = files.Open(tags.before + kSound + tags.behind);
        const ByteRange sound = FindSound(*file);
        EXPECT_EQ(sound.begin, tags.before.size());
        EXPECT_EQ(sound.end, tags.before.size() + kSound.size());
    }
}

TEST(SoundRange, TagThatClaimsToReachPastTheOtherEndIsNone)
{
    const std::string cases[] = {
        std::string("ID3\x03\0\0\x7F\x7F\x7F\x7F", 10) + kSound,
        kSound + ApeBlock(100000, 0),
        kSound + ApeBlock(0xFFFFFF00, 0x80000000),
        kSound + "999999LYRICS200",
        kSound + "00001xLYRICS200",
        kSound + "hello LYRICSEND",
        kSound + std::string("3DI\x04\0\x10\x7F\x7F\x7F\x7F", 10),
    };
    SongFileTest files;
    for (const std::string& bytes : cases) {
        SCOPED_TRACE(bytes.substr(bytes.size() - 15));
        const auto file = files.Open(bytes);
        const ByteRange sound = FindSound(*file);
        EXPECT_EQ(sound.begin, 0U);
        EXPECT_EQ(sound.end, bytes.size());
    }
}

TEST(SoundRange, ApeFooterThatLeavesItselfOutIsNone)
{
    const std::string bytes = kSound + "APETAGEX" + LittleEndian(2000, 4) + LittleEndian(31, 4) + std::string(16, '\0');
    SongFileTest files;
    EXPECT_EQ(FindSound(*files.Open(bytes)).end, bytes.size());
}

TEST(SoundRange, ApeFooterWithoutItemsIsATag)
{
    SongFileTest files;
    EXPECT_EQ(FindSound(*files.Open(kSound + Ape(0, false))).end, kSound.size());
}

TEST(SoundRange, FileOfTagsAloneIsEmpty)
{
    SongFileTest files;
    for (const std::string& bytes : { Id3Tag(500), Id3v1(), Id3Tag(500) + Id3v1(), std::string() })
        EXPECT_EQ(FindSound(*files.Open(bytes)).Bytes(), 0U) << bytes.size();
}

TEST(SoundRange, EveryCutOfATaggedSongIsLookedAtWithinItsBounds)
{
    const std::string whole = Id3Tag(40) + std::string(60, 's') + Ape(20, true) + Lyrics("abc") + Id3v1();
    SongFileTest files;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const auto file = files.Open(whole.substr(0, length));
        const ByteRange sound = FindSound(*file);
        ASSERT_LE(sound.begin, sound.end) << length;
        ASSERT_LE(sound.end, length) << length;
    }
}

} // namespace
