#include "library/display_texts.h"

#include "tests/containers/ptr_list_ctrl_peer.h"
#include "tests/library/lists.h"
#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::SampleText;
using cardsong::test::ScratchDevice;

TEST(FormatPlayTime, HasTheseTexts)
{
    const struct {
        std::uint32_t seconds;
        const WCHAR* text;
    } rows[] = { { 0, TEXT("--:--") },
                 { 1, TEXT("0:01") },
                 { 59, TEXT("0:59") },
                 { 60, TEXT("1:00") },
                 { 215, TEXT("3:35") },
                 { 3599, TEXT("59:59") },
                 { 3600, TEXT("1:00:00") },
                 { 3661, TEXT("1:01:01") },
                 { 36000, TEXT("10:00:00") },
                 { 35999, TEXT("9:59:59") },
                 { 4294967295, TEXT("1193046:28:15") } };
    for (const auto& row : rows)
        EXPECT_EQ(WString(FormatPlayTime(row.seconds)), row.text) << row.seconds;
}

TEST(FormatPlayTime, OverwritesOneText)
{
    const WCHAR* first = FormatPlayTime(59);
    EXPECT_EQ(FormatPlayTime(60), first);
    EXPECT_EQ(WString(first), TEXT("1:00"));
}

class MeasuredText : public testing::Test {
protected:
    MeasuredText() : m_font(Font(20)) {}
    ~MeasuredText() override { DeleteObject(m_font); }

    static HFONT Font(LONG heightPx)
    {
        LOGFONTW description = {};
        description.lfHeight = heightPx;
        return CreateFontIndirectW(&description);
    }
    SIZE Size(const WCHAR* text) { return MeasureText(text, m_font); }

private:
    HFONT m_font;
};

TEST_F(MeasuredText, OfMoreTextIsWiderAndAsHigh)
{
    const SIZE one = Size(TEXT("M"));
    const SIZE three = Size(TEXT("MMM"));
    EXPECT_GT(one.cx, 0);
    EXPECT_GT(one.cy, 0);
    EXPECT_EQ(three.cx, 3 * one.cx);
    EXPECT_EQ(three.cy, one.cy);
}

TEST_F(MeasuredText, OfTheSameTextInALargerFontIsLarger)
{
    const HFONT font = Font(40);
    const SIZE small = Size(TEXT("M"));
    const SIZE large = MeasureText(TEXT("M"), font);
    DeleteObject(font);
    EXPECT_GT(large.cx, small.cx);
    EXPECT_GT(large.cy, small.cy);
}

TEST_F(MeasuredText, OfNothingIsNothing)
{
    EXPECT_EQ(Size(nullptr).cx, 0);
    EXPECT_EQ(Size(nullptr).cy, 0);
    EXPECT_EQ(Size(TEXT("")).cx, 0);
}

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
    EXPECT_EQ(WString(rows[0].label), TEXT("1 a.mp3"));
    EXPECT_EQ(WString(rows[0].time), TEXT("3:35"));
    EXPECT_EQ(rows[0].state, 4);
    EXPECT_EQ(WString(rows[1].label), TEXT("2 b.wma"));
    EXPECT_EQ(WString(rows[1].time), TEXT("--:--"));
    EXPECT_EQ(rows[1].state, 4);
}

TEST_F(SongListRowsTest, OfTheCardHaveStateZeroAndAreKeptApart)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, false);
    AddEntry(list, TEXT("b.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    EXPECT_EQ(PlayListRows().size(), 1u);
    ASSERT_EQ(CardSongRows().size(), 2u);
    EXPECT_EQ(CardSongRows()[1].state, 0);
    EXPECT_EQ(PlayListRows()[0].state, 4);
}

TEST_F(SongListRowsTest, AreMadeAnew)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), 1);
    AddEntry(list, TEXT("b.mp3"), TEXT("\\SDMMC"), 1);
    BuildSongListRows(list, true);
    EXPECT_NE(SongList(list).Take(0), nullptr);
    BuildSongListRows(list, true);
    ASSERT_EQ(CardSongRows().size(), 1u);
    EXPECT_EQ(WString(CardSongRows()[0].label), TEXT("1 b.mp3"));
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
    EXPECT_EQ(WString(CardSongRows()[0].label), TEXT("1 ") + WString(97, TEXT('x')));
}

TEST_F(SongListRowsTest, TakeANegativeDurationAsNone)
{
    AddEntry(list, TEXT("a.mp3"), TEXT("\\SDMMC"), -5);
    BuildSongListRows(list, true);
    EXPECT_EQ(WString(CardSongRows()[0].time), TEXT("--:--"));
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

class SongTitle : public testing::Test {
protected:
    // The title of a song in the card's folder "Music".
    WString Of(const WString& name, std::uint32_t number = 7)
    {
        WString title = TEXT("before");
        EXPECT_EQ(GetSongDisplayTitle((TEXT("\\SDMMC\\Music\\") + name).c_str(), title, number), 1);
        return title;
    }
    // A song whose ID3v1 title is these bytes.
    void WriteTitled(const std::string& title)
    {
        std::string song = SampleText("mp3/cbr_id3v1.mp3");
        song.replace(song.size() - 125, 30, title + std::string(30 - title.size(), 0));
        device.WriteFile("card/Music/song.mp3", song);
    }

    ScratchDevice device;
};

TEST_F(SongTitle, OfAMissingFileIsItsName)
{
    EXPECT_EQ(Of(TEXT("Yesterday.mp3")), TEXT("07.Yesterday"));
    EXPECT_EQ(Of(TEXT("Yesterday.wma")), TEXT("07.Yesterday"));
    EXPECT_EQ(Of(TEXT("Yesterday.ogg")), TEXT("07.Yesterday"));
}

TEST_F(SongTitle, HasANumberOfTwoDigitsAtLeast)
{
    EXPECT_EQ(Of(TEXT("x.mp3"), 0), TEXT("00.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 9), TEXT("09.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 10), TEXT("10.x"));
    EXPECT_EQ(Of(TEXT("x.mp3"), 123), TEXT("123.x"));
}

TEST_F(SongTitle, OfGb2312IsConverted)
{
    WriteTitled("AB\xC4\xE3\xBA\xC3");
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.AB\x4F60\x597D"));
}

TEST_F(SongTitle, OfGb2312MayFillItsField)
{
    std::string title;
    for (int i = 0; i < 15; ++i)
        title += "\xB0\xA1";
    WriteTitled(title);
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.") + WString(15, 0x554A));
}

TEST_F(SongTitle, OfBig5IsConverted)
{
    WriteTitled("\xA7\x41\xA6\x6E"); // the same two characters as in GB2312 above
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.\x4F60\x597D"));
}

TEST_F(SongTitle, OfAsciiIsTheFileName)
{
    WriteTitled("Plain Title");
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfNoTagIsTheFileName)
{
    device.WriteFile("card/Music/song.mp3", SampleText("mp3/cbr_joint_stereo.mp3"));
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfWmaIsItsTitle)
{
    device.WriteFile("card/Music/tagged.wma", SampleText("wma/tagged.wma"));
    EXPECT_EQ(Of(TEXT("Tagged.WMA")), TEXT("07.Song"));
}

TEST_F(SongTitle, OfWmaWithoutATitleIsTheFileName)
{
    device.WriteFile("card/Music/untagged.wma", SampleText("wma/untagged.wma"));
    EXPECT_EQ(Of(TEXT("untagged.wma")), TEXT("07.untagged"));
}

TEST_F(SongTitle, OfWmaThatCannotBeReadToItsDataIsTheFileName)
{
    device.WriteFile("card/Music/torn.wma", SampleText("wma/tagged.wma").substr(0, 700));
    EXPECT_EQ(Of(TEXT("torn.wma")), TEXT("07.torn"));
}

TEST_F(SongTitle, OfAnExtensionAloneIsTheNumber)
{
    EXPECT_EQ(Of(TEXT(".mp3")), TEXT("07."));
}

TEST_F(SongTitle, OfANullPathIsTheNumber)
{
    WString title;
    EXPECT_EQ(GetSongDisplayTitle(nullptr, title, 7), 1);
    EXPECT_EQ(title, TEXT("07."));
}

TEST_F(SongTitle, OfGb2312BeyondTheKnownHanziKeepsItsWidenedBytes)
{
    WriteTitled("\xA1\xA1\xB0\xA1"); // a wide space, which is no hanzi, and one
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.\xFFA1\xFFA1\x554A"));
}

TEST_F(SongTitle, IsReadWhateverTheCaseOfTheFileName)
{
    WriteTitled("\xC4\xE3\xBA\xC3");
    EXPECT_EQ(Of(TEXT("SONG.Mp3")), TEXT("07.\x4F60\x597D"));
}

TEST_F(SongTitle, OfAnMp3WithoutAFrameIsTheFileName)
{
    std::string block("TAG\xC4\xE3\xBA\xC3");
    block.resize(128);
    device.WriteFile("card/Music/song.mp3", std::string(1000, 'x') + block);
    EXPECT_EQ(Of(TEXT("song.mp3")), TEXT("07.song"));
}

TEST_F(SongTitle, OfAPathWithoutABackslashIsThePathLessItsExtension)
{
    WString title;
    EXPECT_EQ(GetSongDisplayTitle(TEXT("a.b.mp3"), title, 7), 1);
    EXPECT_EQ(title, TEXT("07.a.b"));
}

} // namespace
