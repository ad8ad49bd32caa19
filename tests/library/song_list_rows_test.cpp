#include "library/song_list_rows.h"

#include "tests/containers/ptr_list_ctrl_peer.h"
#include "tests/library/lists.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::AddEntry;

class SongListRowsTest : public testing::Test {
protected:
    ~SongListRowsTest() override { SongList(list).FreeAll(); }
    CPtrListCtrl list;
};

TEST_F(SongListRowsTest, HoldNumberNameTimeAndState)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 215.9);
    AddEntry(list, TEXT("b.wma"), TEXT("\\SDMMC"), 0);
    BuildSongListRows(list, false);
    const auto rows = PlayListRows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(WString(rows[0].mainText), TEXT("1 a.mp3"));
    EXPECT_EQ(WString(rows[0].secondaryText), TEXT("3:35"));
    EXPECT_EQ(rows[0].firstCheckState, 4);
    EXPECT_EQ(WString(rows[1].mainText), TEXT("2 b.wma"));
    EXPECT_EQ(WString(rows[1].secondaryText), TEXT("--:--"));
    EXPECT_EQ(rows[1].firstCheckState, 4);
}

TEST_F(SongListRowsTest, OfTheCardHaveStateZeroAndAreKeptApart)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, false);
    AddEntry(list, TEXT("b.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    EXPECT_EQ(PlayListRows().size(), 1u);
    ASSERT_EQ(CardSongRows().size(), 2u);
    EXPECT_EQ(CardSongRows()[1].firstCheckState, 0);
    EXPECT_EQ(PlayListRows()[0].firstCheckState, 4);
}

TEST_F(SongListRowsTest, AreMadeAnew)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    AddEntry(list, TEXT("b.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    EXPECT_NE(SongList(list).Take(0), nullptr);
    BuildSongListRows(list, true);
    ASSERT_EQ(CardSongRows().size(), 1u);
    EXPECT_EQ(WString(CardSongRows()[0].mainText), TEXT("1 b.mp3"));
}

TEST_F(SongListRowsTest, OfAnEmptyListStayAsTheyWere)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    BuildSongListRows(CPtrListCtrl(), true);
    EXPECT_EQ(CardSongRows().size(), 1u);
}

TEST_F(SongListRowsTest, CutALongLabelToItsField)
{
    AddEntry(list, WString(200, TEXT('x')), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    EXPECT_EQ(WString(CardSongRows()[0].mainText), TEXT("1 ") + WString(97, TEXT('x')));
}

TEST_F(SongListRowsTest, TakeANegativeDurationAsNone)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), -5);
    BuildSongListRows(list, true);
    EXPECT_EQ(WString(CardSongRows()[0].secondaryText), TEXT("--:--"));
}

TEST_F(SongListRowsTest, OfMoreThanTheMostEntriesAreNone)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    ASSERT_EQ(CardSongRows().size(), 1u);
    CPtrListCtrlPeer::Claim(list, 10'526'881);
    BuildSongListRows(list, true);
    CPtrListCtrlPeer::Claim(list, 1);
    EXPECT_EQ(CardSongRows().size(), 0u);
}

} // namespace
