#include "tags/id3_tags.h"

#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;

Bytes Frame(const char* identifier, const std::string& data, std::uint32_t flags = 0)
{
    Bytes bytes(identifier);
    return bytes.Big(data.size(), 4).Big(flags, 2).Append(Bytes(data));
}

Bytes Tag(const Bytes& body, const char* magic = "ID3")
{
    Bytes bytes(magic);
    return bytes.Fill(1, 3).Fill(2).Big(body.size() >> 7, 3).Big(body.size() & 0x7F, 1).Append(body);
}

std::string Text(const Id3Frame& frame)
{
    return { reinterpret_cast<const char*>(frame.data.data()), frame.data.size() };
}

class Id3v2 : public testing::Test {
protected:
    int Read(const Bytes& bytes, TagFrames frames = TagFrames::Read)
    {
        info = std::make_unique<Mp3FileInfo>();
        MemorySource source(bytes);
        return ReadId3v2(&source, *info, frames);
    }
    std::int32_t Count() const { return info->id3v2Frames.GetCount(); }
    const Id3Frame& At(std::int32_t index) const { return *static_cast<Id3Frame*>(info->id3v2Frames.GetAt(index)); }

    std::unique_ptr<Mp3FileInfo> info;
};

TEST_F(Id3v2, ANullSourceIsNothingOpen)
{
    info = std::make_unique<Mp3FileInfo>();
    EXPECT_EQ(ReadId3v2(nullptr, *info, TagFrames::Read), -18);
}

TEST_F(Id3v2, ATagIsReadWithItsHeaderAndFrames)
{
    const Bytes body = Bytes().Append(Frame("TIT2", "\1Song", 0xC0A1)).Append(Frame("TPE1", "x"));
    ASSERT_EQ(Read(Tag(body).Fill(500, 0xFF)), 0);
    EXPECT_EQ(info->id3v2TagBytes, 26u);
    EXPECT_EQ(std::string(info->id3v2Header.magic, 3), "ID3");
    EXPECT_EQ(info->id3v2Header.version, 3);
    EXPECT_EQ(info->id3v2Header.revision, 0);
    EXPECT_EQ(info->id3v2Header.flags, 0);
    EXPECT_EQ(info->id3v2Header.size[3], 26);
    ASSERT_EQ(Count(), 2);
    EXPECT_STREQ(At(0).identifier, "TIT2");
    EXPECT_STREQ(At(0).description, "Title/songname/content description");
    EXPECT_EQ(At(0).size, 5);
    EXPECT_EQ(At(0).flags, 0xC0A1);
    EXPECT_EQ(Text(At(0)), std::string("\1Song\0", 6));
    EXPECT_STREQ(At(1).identifier, "TPE1");
    EXPECT_EQ(At(1).size, 1);
    EXPECT_EQ(At(1).flags, 0);
}

TEST_F(Id3v2, TheMagicMayBeInLowerCase)
{
    ASSERT_EQ(Read(Tag(Frame("TIT2", "x"), "id3")), 0);
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(info->id3v2TagBytes, 11u);
}

TEST_F(Id3v2, AFrameIdentifierMayBeInLowerCaseAndIsKeptSo)
{
    Read(Tag(Frame("tit2", "x")));
    ASSERT_EQ(Count(), 1);
    EXPECT_STREQ(At(0).identifier, "tit2");
    EXPECT_STREQ(At(0).description, "Title/songname/content description");
}

TEST_F(Id3v2, NoMagicMeansNoTag)
{
    ASSERT_EQ(Read(Bytes("XD3").Append(Tag(Frame("TIT2", "x")))), 0);
    EXPECT_EQ(info->id3v2TagBytes, 0u);
    EXPECT_EQ(info->id3v2Header.magic[0], 0);
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, TheSizeIsSevenBitsOfEachByteWithoutTheHeader)
{
    Bytes bytes("ID3");
    bytes.Fill(3).Fill(1, 0x81).Fill(1, 0x82).Fill(1, 0x83).Fill(1, 0x84);
    Read(bytes, TagFrames::Skip);
    EXPECT_EQ(info->id3v2TagBytes, (1u << 21) + (2u << 14) + (3u << 7) + 4u);
}

TEST_F(Id3v2, SkippedFramesLeaveTheListEmpty)
{
    ASSERT_EQ(Read(Tag(Frame("TIT2", "x")), TagFrames::Skip), 0);
    EXPECT_EQ(info->id3v2TagBytes, 11u);
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, ATagCutShortIsAsLongAsTheBytesThatAreThere)
{
    Bytes bytes = Tag(Bytes().Append(Frame("TIT2", "x")).Fill(100));
    bytes.resize(40);
    Read(bytes);
    EXPECT_EQ(info->id3v2TagBytes, 30u);
    EXPECT_EQ(Count(), 1);
}

TEST_F(Id3v2, ATagOfNothingButItsHeaderIsEmpty)
{
    Bytes bytes("ID3\3");
    bytes.Fill(5).Fill(1, 100);
    Read(bytes);
    EXPECT_EQ(info->id3v2TagBytes, 0u);
    bytes.resize(4);
    Read(bytes);
    EXPECT_EQ(info->id3v2TagBytes, 0u);
}

TEST_F(Id3v2, VersionAndFlagsAreNotExamined)
{
    Bytes tag = Tag(Frame("TIT2", "x"));
    for (const std::size_t place : { 3U, 4U, 5U }) // version, revision, flags
        tag[place] = std::byte{ 0xFF };
    ASSERT_EQ(Read(tag), 0);
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(info->id3v2Header.version, 0xFF);
    EXPECT_EQ(info->id3v2Header.revision, 0xFF);
    EXPECT_EQ(info->id3v2Header.flags, 0xFF);
}

TEST_F(Id3v2, AnExtendedHeaderIsReadAsAFrameAndEndsTheList)
{
    Read(Tag(Bytes().Big(6, 4).Fill(6).Append(Frame("TIT2", "x"))));
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, FramesOfThreeLettersEndTheList)
{
    Read(Tag(Bytes("TT2").Big(2, 3).Fill(1).Text("x").Append(Frame("TIT2", "x"))));
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, AnInfoUsedBeforeIsFilledAnew)
{
    info = std::make_unique<Mp3FileInfo>();
    info->id3v2TagBytes = 77;
    info->id3v2Header.version = 9;
    const Bytes bytes("no tag here");
    MemorySource source(bytes);
    ASSERT_EQ(ReadId3v2(&source, *info, TagFrames::Read), 0);
    EXPECT_EQ(info->id3v2TagBytes, 0u);
    EXPECT_EQ(info->id3v2Header.version, 0);
}

TEST_F(Id3v2, TheMagicMayMixItsLetters)
{
    ASSERT_EQ(Read(Tag(Frame("TIT2", "x"), "iD3")), 0);
    EXPECT_EQ(info->id3v2TagBytes, 11u);
    EXPECT_EQ(std::string(info->id3v2Header.magic, 3), "iD3");
}

// A tag of ID3v2.4: 200 bytes are written 01 48, read as 328, so that the next header is looked for among the data.
TEST_F(Id3v2, SizesOfVersionFourEndTheListEarly)
{
    Bytes body("TIT2");
    body.Big(0x0148, 4).Fill(2).Fill(200, 'x').Append(Frame("TALB", "y")).Fill(200, 'z');
    Bytes tag = Tag(body.Append(Frame("TPE1", "never reached")));
    tag[3] = std::byte{ 4 };
    Read(tag);
    ASSERT_EQ(Count(), 1);
    EXPECT_STREQ(At(0).identifier, "TIT2");
    EXPECT_EQ(At(0).size, 328);
}

TEST_F(Id3v2, SizesOfVersionFourBelow128AreTheSame)
{
    Bytes tag = Tag(Bytes().Append(Frame("TIT2", std::string(127, 'x'))).Append(Frame("TALB", "y")));
    tag[3] = std::byte{ 4 };
    Read(tag);
    ASSERT_EQ(Count(), 2);
    EXPECT_EQ(At(0).size, 127);
}

TEST_F(Id3v2, AnUnknownFrameEndsTheList)
{
    Read(Tag(Bytes().Append(Frame("TIT2", "x")).Append(Frame("TDRC", "2003")).Append(Frame("TALB", "y"))));
    ASSERT_EQ(Count(), 1);
    EXPECT_STREQ(At(0).identifier, "TIT2");
}

TEST_F(Id3v2, PaddingEndsTheList)
{
    Read(Tag(Bytes().Append(Frame("TIT2", "x")).Fill(40)));
    EXPECT_EQ(Count(), 1);
}

TEST_F(Id3v2, AnEmptyFrameEndsTheList)
{
    Read(Tag(Bytes().Append(Frame("TIT2", "")).Append(Frame("TALB", "y"))));
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, ANegativeFrameSizeEndsTheList)
{
    Read(Tag(Bytes("TIT2").Big(0x80000000, 4).Fill(20)));
    EXPECT_EQ(Count(), 0);
}

TEST_F(Id3v2, FrameSizesAreNotSynchsafe)
{
    // 200 bytes written as an ID3v2.4 tag does: 01 48, which is 328 here. The frame takes what follows it too.
    Bytes body("TIT2");
    body.Big(0x0148, 4).Fill(2).Fill(200, 'x').Append(Frame("TALB", "y")).Fill(200, 'z');
    Read(Tag(body));
    ASSERT_EQ(Count(), 1);
    EXPECT_EQ(At(0).size, 328);
}

TEST_F(Id3v2, AFramePastTheTagIsTakenWithTheBytesThatAreThere)
{
    Read(Tag(Bytes("TIT2").Big(0x7FFFFFFF, 4).Fill(2).Text("abc")).Text("audio"));
    ASSERT_EQ(Count(), 1);
    EXPECT_EQ(At(0).size, 3);
    EXPECT_EQ(Text(At(0)), std::string("abc\0", 4));
}

TEST_F(Id3v2, AFrameHeaderCutShortEndsTheList)
{
    Read(Tag(Bytes().Append(Frame("TIT2", "x")).Text("TALB").Fill(4, 1).Fill(1)));
    EXPECT_EQ(Count(), 1);
}

TEST_F(Id3v2, ALargeTagKeepsItsSizeAndItsFirstFrames)
{
    const std::size_t picture = 17u << 20;
    Bytes body = Frame("TIT2", "x");
    body.Text("APIC").Big(picture, 4).Fill(2).Fill(picture, 'p');
    Bytes tag("ID3\3");
    tag.Fill(2);
    for (const int shift : { 21, 14, 7, 0 })
        tag.Big(body.size() >> shift & 0x7F, 1);
    Read(tag.Append(body));
    EXPECT_EQ(info->id3v2TagBytes, body.size());
    ASSERT_EQ(Count(), 2);
    EXPECT_EQ(At(1).size, (16 << 20) - 11 - 10);
}

TEST(Id3Frames, ParsingEmptiesTheListFirst)
{
    Id3Frame old = {};
    CPtrListCtrl list;
    list.Add(&old, -1);
    ParseId3v2Frames(list, Frame("TIT2", "x"));
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_NE(list.GetAt(0), &old);
    FreeId3Frames(list);
    EXPECT_TRUE(list.IsEmpty());
}

} // namespace
