#include "tags/wma_info.h"

#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ScratchDevice;

Bytes Guid(std::uint32_t a, int b, int c, std::uint64_t rest)
{
    return Bytes()
        .Little(a, 4)
        .Little(static_cast<std::uint64_t>(b), 2)
        .Little(static_cast<std::uint64_t>(c), 2)
        .Big(rest, 8);
}

const Bytes kHeaderGuid = Guid(0x75B22630, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
const Bytes kPropertiesGuid = Guid(0x8CABDCA1, 0xA947, 0x11CF, 0x8EE400C00C205365);
const Bytes kContentGuid = Guid(0x75B22633, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
const Bytes kExtendedGuid = Guid(0xD2D0A440, 0xE307, 0x11D2, 0x97F000A0C95EA850);
const Bytes kDataGuid = Guid(0x75B22636, 0x668E, 0x11CF, 0xA6D900AA0062CE6C);
const Bytes kOtherGuid = Guid(0x01234567, 0x89AB, 0xCDEF, 0x0123456789ABCDEF);

Bytes Object(const Bytes& guid, const Bytes& body)
{
    return Bytes().Append(guid).Little(body.size() + 24, 8).Append(body);
}

// A song of these objects, and a Data Object behind them.
Bytes Song(const std::vector<Bytes>& objects)
{
    Bytes bytes = kHeaderGuid;
    bytes.Little(0, 8).Little(objects.size(), 4).Fill(1, 1).Fill(1, 2);
    for (const Bytes& object : objects)
        bytes.Append(object);
    return bytes.Append(kDataGuid).Little(1'000'000, 8).Fill(26);
}

Bytes Properties(std::uint64_t playDuration, std::uint32_t prerollMs, std::uint32_t flags)
{
    Bytes body;
    body.Fill(16, 0xAB).Little(11, 8).Little(22, 8).Little(33, 8).Little(playDuration, 8).Little(44, 8);
    body.Little(prerollMs, 4).Little(55, 4).Little(flags, 4).Little(66, 4).Little(77, 4).Little(88, 4);
    return Object(kPropertiesGuid, body);
}

Bytes Utf16(const std::string& text)
{
    Bytes bytes;
    for (const char letter : text)
        bytes.Text(std::string(1, letter)).Fill(1);
    return bytes;
}

Bytes Content(const std::vector<std::string>& texts)
{
    Bytes body;
    for (const std::string& text : texts)
        body.Little(text.size() * 2, 2);
    for (const std::string& text : texts)
        body.Append(Utf16(text));
    return Object(kContentGuid, body);
}

Bytes Descriptor(const std::string& name, std::uint64_t type, const Bytes& value)
{
    Bytes bytes;
    bytes.Little(name.size() * 2 + 2, 2).Append(Utf16(name)).Fill(2).Little(type, 2).Little(value.size(), 2);
    return bytes.Append(value);
}

Bytes Extended(const std::vector<Bytes>& descriptors)
{
    Bytes body;
    body.Little(descriptors.size(), 2);
    for (const Bytes& descriptor : descriptors)
        body.Append(descriptor);
    return Object(kExtendedGuid, body);
}

Bytes Number(std::uint64_t value, int sizeBytes)
{
    return Bytes().Little(value, sizeBytes);
}

class Wma : public testing::Test {
protected:
    int Read(const Bytes& bytes)
    {
        info = std::make_unique<WmaInfo>();
        info->trackNumber = 99;
        MemorySource source(bytes);
        return ReadWmaInfo(source, *info);
    }
    std::uint32_t Track(const std::string& name, std::uint64_t type, const Bytes& value)
    {
        EXPECT_EQ(Read(Song({ Extended({ Descriptor(name, type, value) }) })), 0);
        return info->trackNumber;
    }
    std::unique_ptr<WmaInfo> info;
};

TEST_F(Wma, ASongOfNothingButADataObjectIsReadToItsEnd)
{
    EXPECT_EQ(Read(Song({})), 0);
    EXPECT_EQ(info->duration, 0);
}

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

TEST_F(Wma, ADataObjectOfAnySizeEndsTheWalkWithSuccess)
{
    for (const std::uint64_t sizeBytes :
         { std::uint64_t{ 0 }, std::uint64_t{ 1 }, std::uint64_t{ 23 }, std::uint64_t{ 24 }, std::uint64_t{ 1024 },
           std::uint64_t{ 1025 }, std::uint64_t{ 1 } << 40, ~std::uint64_t{ 0 } }) {
        Bytes song = kHeaderGuid;
        song.Little(0, 8).Little(1, 4).Fill(2).Append(Properties(7, 0, 0));
        song.Append(kDataGuid).Little(sizeBytes, 8).Fill(26);
        EXPECT_EQ(Read(song), 0) << sizeBytes;
        EXPECT_EQ(info->duration, 7) << sizeBytes;
    }
}

TEST_F(Wma, TwentySixBytesOfTheDataObjectAreNeeded)
{
    Bytes song = Song({ Properties(7, 0, 0) });
    ASSERT_EQ(Read(song), 0);
    song.pop_back();
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, TheStatedNumberOfObjectsIsNotUsed)
{
    for (const std::size_t place : { 24, 25, 26, 27 }) {
        Bytes song = Song({ Properties(7, 0, 0), Content({ "Title", "", "", "", "" }) });
        song[place] = std::byte{ 0xFF };
        EXPECT_EQ(Read(song), 0);
        EXPECT_EQ(WString(info->title), TEXT("Title"));
    }
    Bytes song = Song({ Properties(7, 0, 0) });
    song[24] = std::byte{ 0 };
    EXPECT_EQ(Read(song), 0);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, ADurationPast429SecondsIsKeptWhole)
{
    ASSERT_EQ(Read(Song({ Properties(5'000'000'000, 0, 0) })), 0);
    EXPECT_EQ(info->duration, 5'000'000'000);
}

TEST_F(Wma, ALaterObjectOfTheSameKindReplacesTheEarlier)
{
    ASSERT_EQ(Read(Song({ Properties(7, 0, 0), Content({ "First", "", "", "", "" }), Properties(8, 0, 0),
                          Content({ "Two", "", "", "", "" }) })),
              0);
    EXPECT_EQ(info->duration, 8);
    EXPECT_EQ(WString(info->title), TEXT("Two"));
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

TEST_F(Wma, AnObjectBehindItsFieldsIsSteppedWhole)
{
    Bytes content = Content({ "Title", "", "", "", "" });
    Bytes body(std::string(reinterpret_cast<const char*>(content.data()) + 24, content.size() - 24));
    ASSERT_EQ(Read(Song({ Object(kContentGuid, body.Fill(6)), Properties(7, 0, 0) })), 0);
    EXPECT_EQ(WString(info->title), TEXT("Title"));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, OtherObjectsOfUpTo1024BytesAreStepped)
{
    EXPECT_EQ(Read(Song({ Object(kOtherGuid, Bytes()), Object(kOtherGuid, Bytes().Fill(1000)), Properties(7, 0, 0) })),
              0);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(Wma, ALargerObjectEndsTheWalkAndWhatWasReadStays)
{
    EXPECT_EQ(Read(Song({ Properties(7, 0, 0), Object(kOtherGuid, Bytes().Fill(1001)) })), -1);
    EXPECT_EQ(info->duration, 7);
    EXPECT_EQ(Read(Song({ Object(kOtherGuid, Bytes().Fill(1001)), Properties(7, 0, 0) })), -1);
    EXPECT_EQ(info->duration, 0);
}

TEST_F(Wma, ALargeExtendedContentDescriptionEndsTheWalk)
{
    const Bytes picture = Descriptor("WM/Picture", 1, Bytes().Fill(2000));
    EXPECT_EQ(Read(Song({ Extended({ Descriptor("WM/TrackNumber", 3, Number(5, 4)), picture }) })), -1);
    EXPECT_EQ(info->trackNumber, 99u);
}

TEST_F(Wma, AWalkOverMoreThanFourThousandObjectsEnds)
{
    const Bytes empty = Object(kOtherGuid, Bytes());
    EXPECT_EQ(Read(Song(std::vector<Bytes>(4095, empty))), 0);
    EXPECT_EQ(Read(Song(std::vector<Bytes>(4096, empty))), -1);
}

TEST_F(Wma, AnotherFormatIsRefused)
{
    Bytes song = Song({ Properties(7, 0, 0) });
    song[15] = std::byte{ 0 };
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->duration, 0);
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

TEST(ReadUtf16Field, AnOddLastByteIsTakenAndNotKept)
{
    Bytes bytes = Utf16("ab");
    ByteReader reader(bytes);
    WCHAR field[4] = { 9, 9, 9, 9 };
    ReadUtf16Field(reader, 3, field);
    EXPECT_EQ(WString(field), TEXT("a"));
    EXPECT_EQ(reader.RestBytes(), 1u);
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

} // namespace
