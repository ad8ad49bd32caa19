// What the strip puts on the screen.
#include "platform/linux/gdi/screen.h"
#include "platform/screen_size.h"
#include "tests/lyrics/strip_fixture.h"

#include <numeric>

namespace {

using namespace cardsong::test;

constexpr std::uint16_t kTextWhite = 0xFFFF;
constexpr std::uint16_t kMark = 0x07E0;
constexpr RECT kStripOnScreen = { 34, 45, 284, 115 };

class StripOnScreen : public StripTest {
protected:
    static int Count(std::uint16_t color, const RECT& rect = kStripOnScreen)
    {
        std::vector<std::uint16_t> frame(static_cast<std::size_t>(kScreenWidthPx) * kScreenHeightPx);
        cardsong::gdi::CopyScreen(frame);
        int count = 0;
        for (LONG y = rect.top; y < rect.bottom; ++y) {
            const auto row = frame.begin() + y * kScreenWidthPx;
            count += static_cast<int>(std::count(row + rect.left, row + rect.right, color));
        }
        return count;
    }
    // Covers the strip, as another picture would, without telling it.
    void Cover()
    {
        const HDC target = GetDC(strip->Window());
        const UniqueBrush green(CreateSolidBrush(RGB(0, 255, 0)));
        constexpr RECT all = { 0, 0, 250, 70 };
        FillRect(target, &all, green.Get());
        ReleaseDC(strip->Window(), target);
        ASSERT_EQ(Count(kMark), 250 * 70);
    }
};

TEST_F(StripOnScreen, BeforeItsFirstLineItIsThePlayersBackground)
{
    LoadAndShow("[00:00.00]First[00:05.00]Second");
    EXPECT_EQ(Count(background), 250 * 70);
}

TEST_F(StripOnScreen, TheCurrentLineIsWhiteWhereItStands)
{
    LoadAndShow("[00:00.00]####[00:05.00] ");
    strip->Update(2000);
    const LONG left = kStripOnScreen.left + context.Positions().lineX;
    const LONG right = left + WidthOfText("####");
    EXPECT_GT(Count(kTextWhite), 50);
    EXPECT_EQ(Count(kTextWhite), Count(kTextWhite, { left, 45, right, 115 }));
    EXPECT_GT(Count(kTextWhite, { left, 45, left + 15, 115 }), 5);
}

TEST_F(StripOnScreen, AMovedLineLeavesNoTrace)
{
    LoadAndShow("[00:00.00]####[00:05.00] ");
    strip->Update(1000);
    const int text = Count(kTextWhite);
    strip->Update(2000);
    EXPECT_EQ(Count(kTextWhite), text);
}

TEST_F(StripOnScreen, AnOnlyLineStandsInTheMiddleAndIsDrawnOnce)
{
    LoadAndShow("[00:00.00]####");
    strip->Update(100);
    const LONG width = WidthOfText("####");
    const LONG left = 34 + (250 - width) / 2;
    EXPECT_GT(Count(kTextWhite), 50);
    EXPECT_EQ(Count(kTextWhite, { left, 45, left + width, 115 }), Count(kTextWhite));
    Cover();
    for (int positionMs = 200; positionMs < 60'000; positionMs += 100)
        strip->Update(positionMs);
    EXPECT_EQ(Count(kMark), 250 * 70);
}

TEST_F(StripOnScreen, ALineThatIsTooWideBeginsAtTheLeftEdge)
{
    LoadAndShow("[00:00.00]" + std::string(100, '#'));
    strip->Update(100);
    EXPECT_GT(Count(kTextWhite, { 34, 45, 60, 115 }), 20);
    EXPECT_GT(Count(kTextWhite, { 258, 45, 284, 115 }), 20);
    EXPECT_EQ(Count(kTextWhite, { 0, 0, 320, 240 }), Count(kTextWhite));
}

TEST_F(StripOnScreen, AFirstLineWithoutSpeedIsReadable)
{
    LoadAndShow("[00:00.00]First[00:05.00]####");
    strip->Update(8000); // the song was entered at its end
    const LONG width = WidthOfText("####");
    const LONG left = 34 + (250 - width) / 2;
    EXPECT_GT(Count(kTextWhite, { left, 45, left + width, 115 }), 50);
}

TEST_F(StripOnScreen, AStripThatStandsDrawsNothing)
{
    LoadAndShow("[00:00.00]####[00:05.00]####");
    strip->Update(2000);
    Cover();
    strip->Update(2000);
    strip->Update(2010); // less than two pixels
    EXPECT_EQ(Count(kMark), 250 * 70);
    strip->Update(2200);
    EXPECT_EQ(Count(kMark), 0);
}

TEST_F(StripOnScreen, AHiddenStripDrawsNothing)
{
    LoadAndShow("[00:00.00]####[00:05.00]####");
    strip->Update(2000);
    strip->Pause();
    ParentWindow::Pump();
    const HDC target = GetDC(parent.Get());
    const UniqueBrush green(CreateSolidBrush(RGB(0, 255, 0)));
    FillRect(target, &kStripOnScreen, green.Get());
    ReleaseDC(parent.Get(), target);
    strip->Update(3000);
    ParentWindow::Pump();
    EXPECT_EQ(Count(kMark), 250 * 70);
}

TEST_F(StripOnScreen, WhatWasPaintedOverComesBackWithTheNextPaint)
{
    LoadAndShow("[00:00.00]####");
    strip->Update(100);
    const int text = Count(kTextWhite);
    Cover();
    InvalidateRect(strip->Window(), nullptr, TRUE);
    UpdateWindow(strip->Window());
    EXPECT_EQ(Count(kTextWhite), text);
    Cover();
    InvalidateRect(strip->Window(), nullptr, FALSE); // nor does it need an erased ground
    UpdateWindow(strip->Window());
    EXPECT_EQ(Count(kTextWhite), text);
    EXPECT_EQ(Count(kMark), 0);
}

TEST_F(StripOnScreen, AfterAPauseTheLineIsThereAgainAndAfterAStopItIsNot)
{
    LoadAndShow("[00:00.00]####");
    strip->Update(100);
    const int text = Count(kTextWhite);
    strip->Pause();
    strip->Show(parent.Get());
    ParentWindow::Pump();
    EXPECT_EQ(Count(kTextWhite), text);
    strip->Stop();
    LoadAndShow("[00:00.00]Other[00:05.00]Song");
    EXPECT_EQ(Count(kTextWhite), 0);
    EXPECT_EQ(Count(background), 250 * 70);
}

TEST_F(StripOnScreen, TheColoursOfTheSettingsChangeNothing)
{
    key.SetText("Play Color", "RGB(255,0,0)");
    key.SetText("Next Color", "RGB(255,0,0)");
    key.SetText("Lyrics Back Ground Color", "RGB(0,255,0)");
    key.SetNumber("Lyrics Transparent", 0);
    strip->ReloadSettings();
    LoadAndShow("[00:00.00]####");
    strip->Update(100);
    EXPECT_EQ(Count(0xF800), 0);
    EXPECT_EQ(Count(kMark), 0);
    EXPECT_GT(Count(kTextWhite), 50);
}

TEST_F(StripOnScreen, TheSkinIsReadOnceForEachChange)
{
    LoadAndShow("[00:00.00] [00:05.00] ");
    strip->Update(1000);
    skin.Plain("red.gif", 320, 240, kRed);
    skin.Device().WriteFile("user/Windows/gui_musicplayer_background.gif", PlainGif(320, 240, kRed));
    strip->Update(2000);
    EXPECT_EQ(Count(background), 250 * 70);
    strip->ReloadSettings();
    strip->Update(3000);
    EXPECT_EQ(Count(0xF800), 250 * 70);
}

TEST_F(StripOnScreen, PreviousCurrentAndNextLineStandBesideEachOther)
{
    LoadAndShow("[00:00.00]##[00:05.00]##[00:10.00]##[00:15.00]##");
    for (int positionMs = 0; positionMs <= 10'500; positionMs += 100)
        strip->Update(positionMs);
    // Three pieces of text with more than 10 empty columns between them.
    std::vector<std::pair<int, int>> pieces;
    for (int x = 34; x < 284; ++x) {
        if (Count(kTextWhite, { x, 45, x + 1, 115 }) == 0)
            continue;
        if (pieces.empty() || x - pieces.back().second > 10)
            pieces.emplace_back(x, x);
        pieces.back().second = x;
    }
    ASSERT_EQ(pieces.size(), 3U);
    const LONG x = context.Positions().lineX + 34;
    EXPECT_NEAR(pieces[1].first, x, 5);
    EXPECT_NEAR(pieces[2].first, x + WidthOfText("##") + 50, 5);
    EXPECT_NEAR((pieces[0].first + pieces[0].second) / 2, (34 + x - 50) / 2, 3);
}

} // namespace
