// The block at the end of a song.
#include "tags/id3_tags.h"

#include "tags/mp3_info.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;

Bytes Id3v1Block(const char* magic)
{
    Bytes block(magic);
    block.Text("Title").Fill(25).Text("Artist").Fill(24).Text("Album").Fill(25).Text("2003").Text("Comment").Fill(21);
    return block.Fill(1, 0).Fill(1, 7).Fill(1, 17);
}

TEST(Id3v1, ABlockAtTheEndIsRead)
{
    const Bytes bytes = Bytes("audio").Append(Id3v1Block("TAG"));
    MemorySource source(bytes);
    Mp3FileInfo info;
    ASSERT_EQ(ReadId3v1(&source, info), 0);
    EXPECT_TRUE(HasId3v1(info.id3v1));
    EXPECT_STREQ(info.id3v1.title, "Title");
    EXPECT_STREQ(info.id3v1.artist, "Artist");
    EXPECT_STREQ(info.id3v1.album, "Album");
    EXPECT_EQ(std::string(info.id3v1.year, 4), "2003");
    EXPECT_STREQ(info.id3v1.comment, "Comment");
    EXPECT_EQ(info.id3v1.zero, 0);
    EXPECT_EQ(info.id3v1.track, 7);
    EXPECT_EQ(info.id3v1.genre, 17);
}

TEST(Id3v1, TheMagicMayBeInLowerCase)
{
    const Bytes bytes = Id3v1Block("tag");
    MemorySource source(bytes);
    Mp3FileInfo info;
    ReadId3v1(&source, info);
    EXPECT_TRUE(HasId3v1(info.id3v1));
    EXPECT_STREQ(info.id3v1.title, "Title");
}

TEST(Id3v1, OtherBytesLeaveOnlyTheirFirstThree)
{
    const Bytes bytes = Id3v1Block("XYZ");
    MemorySource source(bytes);
    Mp3FileInfo info;
    info.id3v1.genre = 9;
    ReadId3v1(&source, info);
    EXPECT_FALSE(HasId3v1(info.id3v1));
    EXPECT_EQ(std::string(info.id3v1.magic, 3), "XYZ");
    EXPECT_EQ(info.id3v1.title[0], 0);
    EXPECT_EQ(info.id3v1.genre, 0);
}

TEST(Id3v1, AFileShorterThanABlockHasNone)
{
    Bytes bytes = Id3v1Block("TAG");
    bytes.pop_back();
    MemorySource source(bytes);
    Mp3FileInfo info;
    ASSERT_EQ(ReadId3v1(&source, info), 0);
    EXPECT_FALSE(HasId3v1(info.id3v1));
    EXPECT_EQ(info.id3v1.magic[0], 0);
}

TEST(Id3v1, ANullSourceIsNothingOpen)
{
    Mp3FileInfo info;
    EXPECT_EQ(ReadId3v1(nullptr, info), -18);
}

TEST(Id3v1, TextsThatFillTheirFieldsAreKeptWhole)
{
    Bytes block("TAG");
    block.Fill(30, 't').Fill(30, 'a').Fill(30, 'l').Fill(4, '9').Fill(28, 'c').Fill(1, 1).Fill(1, 2).Fill(1, 3);
    MemorySource source(block);
    Mp3FileInfo info;
    ReadId3v1(&source, info);
    EXPECT_EQ(std::string(info.id3v1.title, 30), std::string(30, 't'));
    EXPECT_EQ(std::string(info.id3v1.artist, 30), std::string(30, 'a'));
    EXPECT_EQ(std::string(info.id3v1.album, 30), std::string(30, 'l'));
    EXPECT_EQ(std::string(info.id3v1.comment, 28), std::string(28, 'c'));
    EXPECT_EQ(info.id3v1.zero, 1);
    EXPECT_EQ(info.id3v1.track, 2);
    EXPECT_EQ(info.id3v1.genre, 3);
}

} // namespace
