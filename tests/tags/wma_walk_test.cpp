// The way from object to object of a WMA song.
#include "tests/tags/wma_fixture.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using namespace cardsong::test::wma;

class WmaWalk : public WmaFixture {};

TEST_F(WmaWalk, ASongOfNothingButADataObjectIsReadToItsEnd)
{
    EXPECT_EQ(Read(Song({})), 0);
    EXPECT_EQ(info->duration, 0);
}

TEST_F(WmaWalk, ADataObjectOfAnySizeEndsTheWalkWithSuccess)
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

TEST_F(WmaWalk, TwentySixBytesOfTheDataObjectAreNeeded)
{
    Bytes song = Song({ Properties(7, 0, 0) });
    ASSERT_EQ(Read(song), 0);
    song.pop_back();
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(WmaWalk, TheStatedNumberOfObjectsIsNotUsed)
{
    for (const std::size_t place : { 24U, 25U, 26U, 27U }) {
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

TEST_F(WmaWalk, ALaterObjectOfTheSameKindReplacesTheEarlier)
{
    ASSERT_EQ(Read(Song({ Properties(7, 0, 0), Content({ "First", "", "", "", "" }), Properties(8, 0, 0),
                          Content({ "Two", "", "", "", "" }) })),
              0);
    EXPECT_EQ(info->duration, 8);
    EXPECT_EQ(WString(info->title), TEXT("Two"));
}

TEST_F(WmaWalk, AnObjectBehindItsFieldsIsSteppedWhole)
{
    Bytes content = Content({ "Title", "", "", "", "" });
    Bytes body(std::string(reinterpret_cast<const char*>(content.data()) + 24, content.size() - 24));
    ASSERT_EQ(Read(Song({ Object(kContentGuid, body.Fill(6)), Properties(7, 0, 0) })), 0);
    EXPECT_EQ(WString(info->title), TEXT("Title"));
    EXPECT_EQ(info->duration, 7);
}

TEST_F(WmaWalk, OtherObjectsOfUpTo1024BytesAreStepped)
{
    EXPECT_EQ(Read(Song({ Object(kOtherGuid, Bytes()), Object(kOtherGuid, Bytes().Fill(1000)), Properties(7, 0, 0) })),
              0);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(WmaWalk, ALargerObjectEndsTheWalkAndWhatWasReadStays)
{
    EXPECT_EQ(Read(Song({ Properties(7, 0, 0), Object(kOtherGuid, Bytes().Fill(1001)) })), -1);
    EXPECT_EQ(info->duration, 7);
    EXPECT_EQ(Read(Song({ Object(kOtherGuid, Bytes().Fill(1001)), Properties(7, 0, 0) })), -1);
    EXPECT_EQ(info->duration, 0);
}

// File Properties that end behind `fieldBytes` bytes of their fields.
Bytes CutProperties(std::size_t fieldBytes)
{
    const Bytes whole = Properties(0x0102030405060708, 3000, 2);
    Bytes body;
    body.insert(body.end(), whole.begin() + 24, whole.begin() + 24 + static_cast<std::ptrdiff_t>(fieldBytes));
    return Object(kPropertiesGuid, body);
}

TEST_F(WmaWalk, FilePropertiesCutShortKeepTheFieldsBeforeTheCut)
{
    for (std::size_t fieldBytes = 0; fieldBytes < 80; ++fieldBytes) {
        SCOPED_TRACE(fieldBytes);
        EXPECT_EQ(Read(Song({ CutProperties(fieldBytes) })), -1);
        EXPECT_EQ(info->fileId[15], fieldBytes >= 16 ? 0xAB : 0);
        EXPECT_EQ(info->fileBytes, fieldBytes >= 24 ? 11u : 0u);
        EXPECT_EQ(info->creationDate, fieldBytes >= 32 ? 22u : 0u);
        EXPECT_EQ(info->dataPackets, fieldBytes >= 40 ? 33u : 0u);
        EXPECT_EQ(info->playDuration, fieldBytes >= 48 ? 0x0102030405060708u : 0u);
        EXPECT_EQ(info->sendDuration, fieldBytes >= 56 ? 44u : 0u);
        EXPECT_EQ(info->prerollMsLow, fieldBytes >= 60 ? 3000u : 0u);
        EXPECT_EQ(info->prerollMsHigh, fieldBytes >= 64 ? 55u : 0u);
        EXPECT_EQ(info->flags, fieldBytes >= 68 ? 2u : 0u);
        EXPECT_EQ(info->leastPacketBytes, fieldBytes >= 72 ? 66u : 0u);
        EXPECT_EQ(info->mostPacketBytes, fieldBytes >= 76 ? 77u : 0u);
        EXPECT_EQ(info->mostBitRate, 0u);
    }
    EXPECT_EQ(Read(Song({ CutProperties(80) })), 0);
    EXPECT_EQ(info->mostBitRate, 88u);
}

// Play duration, preroll and flags make it.
TEST_F(WmaWalk, FilePropertiesCutBehindTheirFlagsHaveADuration)
{
    EXPECT_EQ(Read(Song({ CutProperties(67) })), -1);
    EXPECT_EQ(info->duration, 0);
    EXPECT_EQ(Read(Song({ CutProperties(68) })), -1);
    EXPECT_EQ(info->duration, 0x0102030405060708 - 30'000'000);
}

TEST_F(WmaWalk, ASecondPropertiesObjectCutShortReplacesOnlyWhatItHolds)
{
    const Bytes first = Object(kPropertiesGuid, Bytes().Fill(80, 0x77));
    for (std::size_t fieldBytes = 0; fieldBytes < 80; ++fieldBytes) {
        SCOPED_TRACE(fieldBytes);
        EXPECT_EQ(Read(Song({ first, CutProperties(fieldBytes) })), -1);
        EXPECT_EQ(info->fileId[0], fieldBytes >= 16 ? 0xAB : 0x77);
        EXPECT_EQ(info->fileBytes, fieldBytes >= 24 ? 11u : 0x7777777777777777u);
        EXPECT_EQ(info->sendDuration, fieldBytes >= 56 ? 44u : 0x7777777777777777u);
        EXPECT_EQ(info->flags, fieldBytes >= 68 ? 2u : 0x77777777u);
        EXPECT_EQ(info->mostPacketBytes, fieldBytes >= 76 ? 77u : 0x77777777u);
        EXPECT_EQ(info->mostBitRate, 0x77777777u);
    }
}

TEST_F(WmaWalk, ASongCutInItsFilePropertiesKeepsTheFieldsBeforeTheCut)
{
    Bytes song = Song({ Properties(7, 0, 2) });
    song.resize(30 + 24 + 50);
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->playDuration, 7u);
    EXPECT_EQ(info->sendDuration, 0u);
}

TEST_F(WmaWalk, ALargeExtendedContentDescriptionEndsTheWalk)
{
    const Bytes picture = Descriptor("WM/Picture", 1, Bytes().Fill(2000));
    EXPECT_EQ(Read(Song({ Extended({ Descriptor("WM/TrackNumber", 3, Number(5, 4)), picture }) })), -1);
    EXPECT_EQ(info->trackNumber, 99u);
}

TEST_F(WmaWalk, AWalkOverMoreThanFourThousandObjectsEnds)
{
    const Bytes empty = Object(kOtherGuid, Bytes());
    EXPECT_EQ(Read(Song(std::vector<Bytes>(4095, empty))), 0);
    EXPECT_EQ(Read(Song(std::vector<Bytes>(4096, empty))), -1);
}

TEST_F(WmaWalk, AnotherFormatIsRefused)
{
    Bytes song = Song({ Properties(7, 0, 0) });
    song[15] = std::byte{ 0 };
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->duration, 0);
}

TEST_F(WmaWalk, AnObjectSmallerThanItsHeaderEndsTheWalk)
{
    for (const std::uint64_t sizeBytes : { 0U, 1U, 23U }) {
        const Bytes object = Bytes().Append(kOtherGuid).Little(sizeBytes, 8);
        EXPECT_EQ(Read(Song({ Properties(7, 0, 0), object })), -1) << sizeBytes;
        EXPECT_EQ(info->duration, 7) << sizeBytes;
    }
}

TEST_F(WmaWalk, TheLimitOf1024BytesHoldsForObjectsToBeReadToo)
{
    const Bytes properties = Properties(7, 0, 0);
    const auto padded = [&properties](std::uint64_t sizeBytes) {
        Bytes object = properties;
        object.resize(sizeBytes);
        object[16] = static_cast<std::byte>(sizeBytes);
        object[17] = static_cast<std::byte>(sizeBytes >> 8);
        return object;
    };
    EXPECT_EQ(Read(Song({ padded(1024) })), 0);
    EXPECT_EQ(info->duration, 7);
    EXPECT_EQ(Read(Song({ padded(1025) })), -1);
    EXPECT_EQ(info->duration, 0);
}

TEST_F(WmaWalk, OfALargeSizeNoBitIsOverlooked)
{
    const Bytes object = Bytes().Append(kOtherGuid).Little((std::uint64_t{ 1 } << 32) + 24, 8);
    EXPECT_EQ(Read(Song({ object })), -1);
}

TEST_F(WmaWalk, WithoutADataObjectTheWalkFailsAtTheEnd)
{
    Bytes song = Song({ Properties(7, 0, 0) });
    song.resize(song.size() - 24 - 26);
    EXPECT_EQ(Read(song), -1);
    EXPECT_EQ(info->duration, 7);
}

TEST_F(WmaWalk, WhatStandsBehindTheDataObjectIsNotRead)
{
    EXPECT_EQ(Read(Song({}).Append(Properties(7, 0, 0))), 0);
    EXPECT_EQ(info->duration, 0);
}

} // namespace
