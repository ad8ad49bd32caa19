// One record of the play list file.
#include "library/play_list_file.h"

#include "tests/library/lists.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::At;
using cardsong::test::EmptyLists;
using cardsong::test::ScratchDevice;

class PlayListRecord : public testing::Test {
protected:
    PlayListRecord() { device.WriteFile("card/a.mp3"); }
    int Parse(WStringView text) { return ParsePlayListRecord(text, PlayList); }

    ScratchDevice device;
    EmptyLists lists;
};

TEST_F(PlayListRecord, OfASongThatIsThereIsAppended)
{
    EXPECT_EQ(Parse(TEXT("1$a.mp3$\\SDMMC$215")), 1);
    ASSERT_EQ(PlayList.GetCount(), 1);
    const MediaFileEntry& entry = At(PlayList, 0);
    EXPECT_EQ(WString(entry.fileName), TEXT("a.mp3"));
    EXPECT_EQ(WString(entry.folder), TEXT("\\SDMMC"));
    EXPECT_EQ(entry.duration, 215.0);
    EXPECT_EQ(entry.fileSize, 0u);
    EXPECT_EQ(entry.playMark, 0);
}

TEST_F(PlayListRecord, OfNothingIsNone)
{
    EXPECT_EQ(Parse(TEXT("")), 0);
}

TEST_F(PlayListRecord, TheNumberIsIgnored)
{
    EXPECT_EQ(Parse(TEXT("$a.mp3$\\SDMMC$215")), 1);
    EXPECT_EQ(Parse(TEXT("nonsense$a.mp3$\\SDMMC$215")), 1);
}

TEST_F(PlayListRecord, WithoutAPlayTimeHasNone)
{
    EXPECT_EQ(Parse(TEXT("1$a.mp3$\\SDMMC$")), 1);
    EXPECT_EQ(At(PlayList, 0).duration, 0.0);
}

TEST_F(PlayListRecord, EndsAtItsEndUnit)
{
    EXPECT_EQ(Parse(WString(TEXT("1$a.mp3$\\SDMMC$21")) + static_cast<WCHAR>(0x0A0D) + TEXT("5")), 1);
    EXPECT_EQ(At(PlayList, 0).duration, 21.0);
}

TEST_F(PlayListRecord, WithFewerThanThreeSeparatorsIsNone)
{
    EXPECT_EQ(Parse(TEXT("1$a.mp3$\\SDMMC")), 0);
    EXPECT_EQ(Parse(TEXT("1$a.mp3")), 0);
    EXPECT_EQ(Parse(TEXT("a.mp3")), 0);
    EXPECT_TRUE(PlayList.IsEmpty());
}

TEST_F(PlayListRecord, OfANameWithASeparatorIsDropped)
{
    device.WriteFile("card/a$b.mp3");
    EXPECT_EQ(Parse(TEXT("1$a$b.mp3$\\SDMMC$1")), 0);
}

TEST_F(PlayListRecord, WithoutItsLastSeparatorIsNone)
{
    device.WriteFile("user/a.mp3");
    EXPECT_EQ(Parse(TEXT("1$a.mp3$9")), 0);
    EXPECT_EQ(Parse(TEXT("1$a.mp3$$9")), 1);
}

TEST_F(PlayListRecord, WithoutANameIsNone)
{
    EXPECT_EQ(Parse(TEXT("1$$\\SDMMC$1")), 0);
}

TEST_F(PlayListRecord, OfAPathTooLongIsNone)
{
    EXPECT_EQ(Parse(TEXT("1$") + WString(300, TEXT('x')) + TEXT("$\\SDMMC$1")), 0);
    EXPECT_EQ(Parse(TEXT("1$a.mp3$") + WString(300, TEXT('\\')) + TEXT("$1")), 0);
}

TEST_F(PlayListRecord, OnlyItsFirstThousandUnitsCount)
{
    const WString blank(1000, TEXT(' '));
    EXPECT_EQ(Parse(blank + TEXT("$a.mp3$\\SDMMC$1")), 0);
    const WString number(1000 - 16, TEXT('7'));
    EXPECT_EQ(Parse(number + TEXT("$a.mp3$\\SDMMC$234")), 1);
    EXPECT_EQ(At(PlayList, 0).duration, 23.0);
}

TEST_F(PlayListRecord, ThePlayTimeIsTheNumberAtTheFrontOfItsText)
{
    const struct {
        const WCHAR* text;
        double seconds;
    } rows[] = { { TEXT("007"), 7 }, { TEXT("12.9"), 12 }, { TEXT("3x"), 3 },  { TEXT(" 8"), 8 },
                 { TEXT("-5"), -5 }, { TEXT("x"), 0 },     { TEXT("1$2"), 1 }, { TEXT("214748"), 214748 } };
    for (const auto& row : rows) {
        EmptyLists::Clear();
        ASSERT_EQ(Parse(WString(TEXT("1$a.mp3$\\SDMMC$")) + row.text), 1);
        EXPECT_EQ(At(PlayList, 0).duration, row.seconds) << row.seconds;
    }
}

TEST_F(PlayListRecord, OfASongThatIsGoneIsNone)
{
    EXPECT_EQ(Parse(TEXT("1$gone.mp3$\\SDMMC$1")), 0);
    EXPECT_EQ(Parse(TEXT("1$a.mp3$\\SDMMC\\gone$1")), 0);
    EXPECT_TRUE(PlayList.IsEmpty());
}

TEST_F(PlayListRecord, OfASongNamedInOtherCaseKeepsItsLetters)
{
    EXPECT_EQ(Parse(TEXT("1$A.MP3$\\sdmmc$1")), 1);
    EXPECT_EQ(WString(At(PlayList, 0).fileName), TEXT("A.MP3"));
    EXPECT_EQ(WString(At(PlayList, 0).folder), TEXT("\\sdmmc"));
}

// Whether there is something is all that is asked.
TEST_F(PlayListRecord, OfAFolderIsAppended)
{
    device.MakeFolder("card/live.mp3");
    EXPECT_EQ(Parse(TEXT("1$live.mp3$\\SDMMC$1")), 1);
}

} // namespace
