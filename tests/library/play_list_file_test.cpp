#include "library/play_list_file.h"

#include "tests/library/lists.h"
#include "tests/library/play_list_bytes.h"
#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::At;
using cardsong::test::EmptyLists;
using cardsong::test::Paths;
using cardsong::test::PlayListRecord;
using cardsong::test::ScratchDevice;
using cardsong::test::Utf16;

using Names = std::vector<std::string>;

class PlayListFile : public testing::Test {
protected:
    Names Load(const std::string& bytes)
    {
        device.WriteFile("user/Windows/play_list.txt", bytes);
        return Load();
    }
    Names Load()
    {
        EmptyLists::Clear();
        LoadPlayList(PlayList);
        return Paths(PlayList);
    }
    std::string Written() { return device.ReadFile("user/Windows/play_list.txt"); }

    ScratchDevice device;
    EmptyLists lists;
};

TEST_F(PlayListFile, IsWrittenByteForByte)
{
    AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC\\Music"), 215.9);
    AddEntry(PlayList, TEXT("\x554A.wma"), TEXT("\\SDMMC"), 0);
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), PlayListRecord("1$song.mp3$\\SDMMC\\Music$215") + Utf16("2$") + "\x4A\x55" +
                             Utf16(".wma$\\SDMMC$0") + "\r\n");
}

TEST_F(PlayListFile, PlayTimesAreCutToWholeSeconds)
{
    const struct {
        double duration;
        const char* written;
    } rows[] = { { 0.9, "0" },
                 { 215.9, "215" },
                 { -0.9, "0" },
                 { -1.0, "-1" },
                 { -5.9, "-5" },
                 { -2147483648.0, "-2147483648" },
                 { -1e300, "-2147483648" },
                 { 4294967295.0, "4294967295" },
                 { 1e300, "4294967295" },
                 { std::numeric_limits<double>::quiet_NaN(), "0" } };
    for (const auto& row : rows) {
        EmptyLists::Clear();
        AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\SDMMC"), row.duration);
        SavePlayList(PlayList);
        EXPECT_EQ(Written(), PlayListRecord("1$a.mp3$\\SDMMC$" + std::string(row.written)));
    }
}

TEST_F(PlayListFile, ANegativePlayTimeIsWrittenBackAsItWasRead)
{
    device.WriteFile("card/a.mp3");
    for (const char* seconds : { "-1", "-5", "-2147483648" }) {
        const std::string bytes = PlayListRecord("1$a.mp3$\\SDMMC$" + std::string(seconds));
        ASSERT_EQ(Load(bytes).size(), 1u);
        SavePlayList(PlayList);
        EXPECT_EQ(Written(), bytes);
    }
}

TEST_F(PlayListFile, OfMoreThanABlockIsWrittenWhole)
{
    std::string expected;
    for (int i = 1; i <= 1000; ++i) {
        AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC\\Music"), 215);
        expected += PlayListRecord(std::to_string(i) + "$song.mp3$\\SDMMC\\Music$215");
    }
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), expected);
}

TEST_F(PlayListFile, LeavesNothingBesideIt)
{
    AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC"), 1);
    SavePlayList(PlayList);
    EXPECT_EQ(GetFileAttributesW(TEXT("\\Windows\\play_list.new")), INVALID_FILE_ATTRIBUTES);
}

TEST_F(PlayListFile, ThatCannotBeWrittenIsTheOldOne)
{
    device.WriteFile("user/Windows/play_list.txt", PlayListRecord("1$old.mp3$\\SDMMC$1"));
    device.MakeFolder("user/Windows/play_list.new"); // stands in the way
    AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC"), 1);
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), PlayListRecord("1$old.mp3$\\SDMMC$1"));
}

TEST_F(PlayListFile, LeftUnfinishedByAnEarlierRunCountsForNothing)
{
    device.WriteFile("user/Windows/play_list.new", std::string(5000, '1'));
    AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC"), 1);
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), PlayListRecord("1$song.mp3$\\SDMMC$1"));
}

TEST_F(PlayListFile, AnEntryWithoutANameIsLeftOutAndKeepsItsNumber)
{
    AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    AddEntry(PlayList, TEXT(""), TEXT("\\SDMMC"), 2);
    AddEntry(PlayList, TEXT("c.mp3"), TEXT("\\SDMMC"), 3);
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), PlayListRecord("1$a.mp3$\\SDMMC$1") + PlayListRecord("3$c.mp3$\\SDMMC$3"));
}

TEST_F(PlayListFile, ANullEntryEndsTheWriting)
{
    CPtrListCtrl list;
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    list.Add(static_cast<void*>(nullptr), -1);
    AddEntry(list, TEXT("c.mp3"), TEXT("\\SDMMC"), 3);
    SavePlayList(list);
    EXPECT_EQ(Written(), PlayListRecord("1$a.mp3$\\SDMMC$1"));
    SongList(list).FreeAll();
}

TEST_F(PlayListFile, AShorterListReplacesALongerOneWholly)
{
    AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    AddEntry(PlayList, TEXT("b.mp3"), TEXT("\\SDMMC"), 1);
    SavePlayList(PlayList);
    EmptyLists::Clear();
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), "");
}

TEST_F(PlayListFile, WhatIsWrittenIsReadBackInOrder)
{
    CPtrListCtrl list;
    for (int i = 0; i < 30; ++i) {
        const std::string name = "song" + std::to_string(i) + ".mp3";
        device.WriteFile("card/Music/" + name);
        AddEntry(list, WString(name.begin(), name.end()), TEXT("\\SDMMC\\Music"), i * 10);
    }
    SavePlayList(list);
    EXPECT_EQ(Load(), Paths(list));
    for (std::int32_t i = 0; i < PlayList.GetCount(); ++i)
        EXPECT_EQ(At(PlayList, i).duration, i * 10.0);
    SongList(list).FreeAll();
}

TEST_F(PlayListFile, AMissingFileHoldsNoSongs)
{
    EXPECT_EQ(Load(), Names{});
}

TEST_F(PlayListFile, AnEmptyFileHoldsNoSongs)
{
    EXPECT_EQ(Load(""), Names{});
}

TEST_F(PlayListFile, SongsThatAreGoneAreDropped)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/c.mp3");
    const std::string bytes =
        PlayListRecord("1$a.mp3$\\SDMMC$1") + PlayListRecord("2$b.mp3$\\SDMMC$2") + PlayListRecord("3$c.mp3$\\SDMMC$3");
    EXPECT_EQ(Load(bytes), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\c.mp3" }));
}

TEST_F(PlayListFile, NewSongsAreAppendedToTheList)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("user/Windows/play_list.txt", PlayListRecord("1$a.mp3$\\SDMMC$1"));
    AddEntry(PlayList, TEXT("first.mp3"), TEXT("\\SDMMC"));
    LoadPlayList(PlayList);
    EXPECT_EQ(Paths(PlayList), (Names{ "\\SDMMC\\first.mp3", "\\SDMMC\\a.mp3" }));
}

TEST_F(PlayListFile, ALastRecordWithoutItsEndIsRead)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/b.mp3");
    const std::string bytes = PlayListRecord("1$a.mp3$\\SDMMC$1") + Utf16("2$b.mp3$\\SDMMC$21");
    EXPECT_EQ(Load(bytes).size(), 2u);
    EXPECT_EQ(At(PlayList, 1).duration, 21.0);
    EXPECT_EQ(Load(bytes + "5").size(), 2u); // half a unit
}

TEST_F(PlayListFile, EveryTearKeepsTheWholeRecordsBeforeIt)
{
    device.WriteFile("card/a.mp3");
    device.WriteFile("card/b.mp3");
    const std::string first = PlayListRecord("1$a.mp3$\\SDMMC$12");
    const std::string bytes = first + PlayListRecord("2$b.mp3$\\SDMMC$21");
    for (std::size_t sizeBytes = 0; sizeBytes <= bytes.size(); ++sizeBytes) {
        const bool isSecondTold = sizeBytes >= bytes.size() - 6; // the last two digits and the end
        const std::size_t least = sizeBytes < first.size() ? 0 : isSecondTold ? 2 : 1;
        ASSERT_GE(Load(bytes.substr(0, sizeBytes)).size(), least) << sizeBytes;
    }
}

TEST_F(PlayListFile, RecordsAcrossTheBlocksOfReadingAreWhole)
{
    std::string bytes;
    for (int i = 0; i < 100; ++i) {
        const std::string name = std::string(static_cast<std::size_t>(i % 13) + 1, 'x') + std::to_string(i) + ".mp3";
        device.WriteFile("card/" + name);
        bytes += PlayListRecord(std::to_string(i + 1) + "$" + name + "$\\SDMMC$" + std::to_string(i));
    }
    ASSERT_EQ(Load(bytes).size(), 100u);
    for (std::int32_t i = 0; i < 100; ++i)
        EXPECT_EQ(At(PlayList, i).duration, i);
}

TEST_F(PlayListFile, TheSampleIsOneSong)
{
    device.WriteFile("card/\xE5\x95\x8A.wma");
    device.WriteFile("user/Windows/play_list.txt", cardsong::test::SampleText("play_list/one_song.txt"));
    Load();
    ASSERT_EQ(PlayList.GetCount(), 1);
    EXPECT_EQ(WString(At(PlayList, 0).fileName), TEXT("\x554A.wma"));
    EXPECT_EQ(At(PlayList, 0).duration, 215.0);
    SavePlayList(PlayList);
    EXPECT_EQ(Written(), cardsong::test::SampleText("play_list/one_song.txt"));
}

TEST_F(PlayListFile, ANameThatBeginsWithAZeroIsNone)
{
    device.WriteFile("card/a.mp3");
    EXPECT_TRUE(Load(Utf16("1$") + std::string(2, '\0') + Utf16("$\\SDMMC$1") + "\r\n").empty());
}

TEST_F(PlayListFile, ARecordTooLongIsDroppedAndTheNextRead)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(Load(PlayListRecord("1$" + std::string(5000, 'x') + "$\\SDMMC$1") + PlayListRecord("2$a.mp3$\\SDMMC$1")),
              (Names{ "\\SDMMC\\a.mp3" }));
}

TEST_F(PlayListFile, AFileOfNoiseHoldsNoSongs)
{
    std::string noise;
    for (int i = 0; i < 20'000; ++i)
        noise += static_cast<char>(i * i % 253 * 7);
    EXPECT_EQ(Load(noise), Names{});
}

TEST_F(PlayListFile, EmptyRecordsAreStepped)
{
    device.WriteFile("card/a.mp3");
    EXPECT_EQ(Load("\r\n\r\n" + PlayListRecord("1$a.mp3$\\SDMMC$1") + "\r\n"), (Names{ "\\SDMMC\\a.mp3" }));
}

} // namespace
