#include "tags/wma_info.h"

#include "tests/platform/scratch_device.h"
#include "tests/tags/wma_fixture.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ScratchDevice;
using namespace cardsong::test::wma;
using namespace std::string_view_literals;

class Wma : public WmaFixture {
protected:
    std::uint32_t Track(const std::string& name, std::uint64_t type, const Bytes& value)
    {
        EXPECT_EQ(Read(Song({ Extended({ Descriptor(name, type, value) }) })), 0);
        return info->trackNumber;
    }
};

TEST_F(Wma, TheFilePropertiesAreRead)
{
    ASSERT_EQ(Read(Song({ Properties(2'150'000'000, 3000, 2) })), 0);
    EXPECT_EQ(info->fileId[0], 0xAB);
    EXPECT_EQ(info->fileId[15], 0xAB);
    EXPECT_EQ(info->fileBytes, 11u);
    EXPECT_EQ(info->creationDate, 22u);
    EXPECT_EQ(info->dataPackets, 33u);
    EXPECT_EQ(info->playDuration, 2'150'000'000u);
    EXPECT_EQ(info->sendDuration, 44u);
    EXPECT_EQ(info->prerollMsLow, 3000u);
    EXPECT_EQ(info->prerollMsHigh, 55u);
    EXPECT_EQ(info->flags, 2u);
    EXPECT_EQ(info->leastPacketBytes, 66u);
    EXPECT_EQ(info->mostPacketBytes, 77u);
    EXPECT_EQ(info->mostBitRate, 88u);
    EXPECT_EQ(info->duration, 2'120'000'000);
}

TEST_F(Wma, ADurationPast429SecondsIsKeptWhole)
{
    ASSERT_EQ(Read(Song({ Properties(5'000'000'000, 0, 0) })), 0);
    EXPECT_EQ(info->duration, 5'000'000'000);
}

TEST_F(Wma, ABroadcastHasNoDuration)
{
    ASSERT_EQ(Read(Song({ Properties(2'150'000'000, 0, 1) })), 0);
    EXPECT_EQ(info->duration, 0);
    ASSERT_EQ(Read(Song({ Properties(2'150'000'000, 0, 3) })), 0);
    EXPECT_EQ(info->duration, 0);
}

TEST_F(Wma, APrerollLongerThanThePlayTimeIsNegative)
{
    ASSERT_EQ(Read(Song({ Properties(10'000, 2, 0) })), 0);
    EXPECT_EQ(info->duration, -10'000);
}

TEST_F(Wma, TheLongestPrerollDoesNotWrapInMilliseconds)
{
    ASSERT_EQ(Read(Song({ Properties(0, 0xFFFFFFFF, 0) })), 0);
    EXPECT_EQ(info->duration, -0xFFFFFFFFll * 10'000);
}

TEST_F(Wma, TheContentDescriptionGivesFourTexts)
{
    ASSERT_EQ(Read(Song({ Content({ "Title", "Author", "Rights", "Text", "12" }), Properties(7, 0, 0) })), 0);
    EXPECT_EQ(WString(info->title), TEXT("Title"));
    EXPECT_EQ(WString(info->author), TEXT("Author"));
    EXPECT_EQ(WString(info->rights), TEXT("Rights"));
    EXPECT_EQ(WString(info->description), TEXT("Text"));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, AnAlbumTitleIsReadFromTextOrByteArray)
{
    ASSERT_EQ(Read(Song({ Extended({ Descriptor("WM/AlbumTitle", 0, Utf16("First")) }) })), 0);
    EXPECT_EQ(WString(info->album), TEXT("First"));
    ASSERT_EQ(Read(Song({ Extended({ Descriptor("WM/AlbumTitle", 1, Utf16("Second")) }) })), 0);
    EXPECT_EQ(WString(info->album), TEXT("Second"));
    ASSERT_EQ(Read(Song({ Extended({ Descriptor("WM/AlbumTitle", 3, Number(65, 4)) }) })), 0);
    EXPECT_EQ(WString(info->album), TEXT(""));
}

TEST_F(Wma, AnotherNameIsNoAlbumTitle)
{
    ASSERT_EQ(Read(Song({ Extended({ Descriptor("wm/albumtitle", 0, Utf16("First")) }) })), 0);
    EXPECT_EQ(WString(info->album), TEXT(""));
    EXPECT_EQ(info->trackNumber, 99u);
}

TEST_F(Wma, ATrackNumberIsReadFromEveryNumberType)
{
    EXPECT_EQ(Track("WM/TrackNumber", 3, Number(5, 4)), 5u);
    EXPECT_EQ(Track("WM/TrackNumber", 5, Number(5, 2)), 5u);
    EXPECT_EQ(Track("WM/TrackNumber", 4, Number(5, 8)), 5u);
    EXPECT_EQ(Track("WM/TrackNumber", 2, Number(1, 4)), 1u);
    EXPECT_EQ(Track("WM/TrackNumber", 3, Number(0x01020304, 4)), 0x01020304u);
    EXPECT_EQ(Track("WM/TrackNumber", 5, Number(0x0102, 2)), 0x0102u);
}

TEST_F(Wma, ATrackCountsFromZero)
{
    EXPECT_EQ(Track("WM/Track", 3, Number(4, 4)), 5u);
    EXPECT_EQ(Track("WM/Track", 3, Number(0xFFFFFFFF, 4)), 0u);
}

TEST_F(Wma, ATrackStoredAsTextIsZeroOrOne)
{
    EXPECT_EQ(Track("WM/TrackNumber", 0, Utf16("5")), 0u);
    EXPECT_EQ(Track("WM/Track", 0, Utf16("5")), 1u);
    EXPECT_EQ(Track("WM/TrackNumber", 1, Utf16("5")), 0u);
    EXPECT_EQ(Track("WM/Track", 6, Number(4, 4)), 1u);
}

TEST_F(Wma, ANumberShorterThanItsTypeIsZero)
{
    EXPECT_EQ(Track("WM/TrackNumber", 3, Number(5, 2)), 0u);
}

TEST_F(Wma, EveryDescriptorIsStepped)
{
    const Bytes song =
        Song({ Extended({ Descriptor("Odd", 1, Bytes("abc")), Descriptor("Unknown", 9, Bytes("abcde")),
                          Descriptor("Yes", 2, Number(1, 4)), Descriptor("WM/TrackNumber", 3, Number(8, 4)),
                          Descriptor("WM/AlbumTitle", 0, Utf16("Album")) }),
               Properties(7, 0, 0) });
    ASSERT_EQ(Read(song), 0);
    EXPECT_EQ(info->trackNumber, 8u);
    EXPECT_EQ(WString(info->album), TEXT("Album"));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, AnExtendedDescriptionWithoutItsCountIsRefused)
{
    EXPECT_EQ(Read(Song({ Object(kExtendedGuid, Bytes("")) })), -1);
    EXPECT_EQ(Read(Song({ Extended({}) })), 0);
}

TEST_F(Wma, NullArgumentsAndMissingFilesAreRefused)
{
    ScratchDevice device;
    info = std::make_unique<WmaInfo>();
    EXPECT_EQ(ReadWmaInfo(nullptr, info.get()), -1);
    EXPECT_EQ(ReadWmaInfo(device.Path(TEXT("a.wma")).c_str(), nullptr), -1);
    EXPECT_EQ(ReadWmaInfo(device.Path(TEXT("a.wma")).c_str(), info.get()), -1);
}

TEST_F(Wma, ASongOfTheDeviceIsRead)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/a.wma", cardsong::test::SampleText("wma/tagged.wma"));
    info = std::make_unique<WmaInfo>();
    EXPECT_EQ(ReadWmaInfo(device.Path(TEXT("a.wma")).c_str(), info.get()), 0);
    EXPECT_EQ(WString(info->title), TEXT("Song"));
}

TEST(ReadUtf16Field, KeepsWhatFitsAndTakesAllBytes)
{
    Bytes bytes = Utf16("abcdef");
    bytes.Text("xy");
    ByteReader reader(bytes);
    WCHAR field[4] = { 9, 9, 9, 9 };
    ReadUtf16Field(reader, 12, field);
    EXPECT_EQ(WString(field), TEXT("abc"));
    EXPECT_EQ(reader.RestBytes(), 2u);
}

TEST(ReadUtf16Field, AFieldThatJustFitsIsKeptWhole)
{
    const Bytes bytes = Utf16("abc");
    ByteReader reader(bytes);
    WCHAR field[4] = { 9, 9, 9, 9 };
    ReadUtf16Field(reader, 6, field);
    EXPECT_EQ(WString(field), TEXT("abc"));
}

TEST(ReadUtf16Field, AnOddLastByteIsLeft)
{
    const Bytes bytes("a\0b\0"sv);
    ByteReader reader(bytes);
    WCHAR field[4] = { 9, 9, 9, 9 };
    ReadUtf16Field(reader, 3, field);
    EXPECT_EQ(WString(field), TEXT("a"));
    EXPECT_EQ(reader.RestBytes(), 2u);
    ReadUtf16Field(reader, 1, field);
    EXPECT_EQ(WString(field), TEXT(""));
    EXPECT_EQ(reader.RestBytes(), 2u);
    EXPECT_TRUE(reader.Ok());
}

TEST(ReadUtf16Field, MoreThanThereIsGivesNoText)
{
    const Bytes bytes = Utf16("ab");
    ByteReader reader(bytes);
    WCHAR field[4] = { 9, 9, 9, 9 };
    ReadUtf16Field(reader, 6, field);
    EXPECT_EQ(WString(field), TEXT(""));
    EXPECT_FALSE(reader.Ok());
}

TEST(ReadUtf16Field, UnitsAreLittleEndian)
{
    const Bytes bytes("\x4A\x55");
    ByteReader reader(bytes);
    WCHAR field[4];
    ReadUtf16Field(reader, 2, field);
    EXPECT_EQ(field[0], 0x554A);
    EXPECT_EQ(field[1], 0);
}

TEST(ReadUtf16Field, OfATitleLongerThanItsField511UnitsAreKept)
{
    const Bytes bytes = Utf16(std::string(600, 't'));
    ByteReader reader(bytes);
    const auto info = std::make_unique<WmaInfo>();
    ReadUtf16Field(reader, 1200, info->title);
    EXPECT_EQ(WString(info->title), WString(511, TEXT('t')));
    EXPECT_EQ(info->title[511], 0);
    EXPECT_EQ(info->author[0], 0);
    EXPECT_EQ(reader.RestBytes(), 0u);
}

TEST_F(Wma, TheRatingIsStepped)
{
    const Bytes content = Content({ "Title", "", "", "", std::string(100, 'r') });
    ASSERT_EQ(Read(Song({ content, Properties(7, 0, 0) })), 0);
    EXPECT_EQ(WString(info->title), TEXT("Title"));
    EXPECT_EQ(WString(info->description), TEXT(""));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, ANameWithoutItsZeroIsTheSame)
{
    Bytes body;
    body.Little(1, 2).Little(28, 2).Append(Utf16("WM/TrackNumber")).Little(3, 2).Little(4, 2).Little(5, 4);
    ASSERT_EQ(Read(Song({ Object(kExtendedGuid, body) })), 0);
    EXPECT_EQ(info->trackNumber, 5u);
}

// What stands behind a text of an odd length is found by that length.
TEST_F(Wma, TextsOfOddLengthsAreSteppedByTheirLengths)
{
    Bytes body;
    body.Little(3, 2).Little(5, 2).Little(1, 2).Little(3, 2).Little(1, 2);
    body.Text("A\0?B\0C\0??D\0??"sv);
    ASSERT_EQ(Read(Song({ Object(kContentGuid, body), Properties(7, 0, 0) })), 0);
    EXPECT_EQ(WString(info->title), TEXT("A"));
    EXPECT_EQ(WString(info->author), TEXT("BC"));
    EXPECT_EQ(WString(info->rights), TEXT(""));
    EXPECT_EQ(WString(info->description), TEXT("D"));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, ADescriptorOfOddLengthsIsSteppedByThem)
{
    Bytes body;
    body.Little(2, 2).Little(27, 2).Append(Utf16("WM/AlbumTitle")).Text("?").Little(0, 2).Little(3, 2).Text("A\0?"sv);
    body.Append(Descriptor("WM/TrackNumber", 3, Number(5, 4)));
    ASSERT_EQ(Read(Song({ Object(kExtendedGuid, body) })), 0);
    EXPECT_EQ(WString(info->album), TEXT("A"));
    EXPECT_EQ(info->trackNumber, 5u);
}

TEST_F(Wma, OfTwoTrackAttributesTheLaterCounts)
{
    ASSERT_EQ(Read(Song({ Extended(
                  { Descriptor("WM/TrackNumber", 3, Number(5, 4)), Descriptor("WM/Track", 3, Number(8, 4)) }) })),
              0);
    EXPECT_EQ(info->trackNumber, 9u);
}

TEST_F(Wma, OfAnEightByteNumberTheLow32BitsCount)
{
    EXPECT_EQ(Track("WM/TrackNumber", 4, Number((std::uint64_t{ 1 } << 32) + 5, 8)), 5u);
}

} // namespace
