#include "lyrics/lyrics_strip.h"

#include "tests/lyrics/strip_fixture.h"

namespace {

using namespace cardsong::test;

class LyricsStripTest : public StripTest {};

constexpr const char* kThreeLines = "[00:00.00]First[00:05.00]Second[00:09.00]Third";

TEST_F(LyricsStripTest, BeginsStoppedAndWithoutAWindow)
{
    EXPECT_EQ(strip->State(), LyricsDisplay::Stopped);
    EXPECT_EQ(static_cast<std::int32_t>(LyricsDisplay::Shown), 0);
    EXPECT_EQ(static_cast<std::int32_t>(LyricsDisplay::Paused), 1);
    EXPECT_EQ(static_cast<std::int32_t>(LyricsDisplay::Stopped), 2);
    EXPECT_EQ(strip->SecondValue(), 1);
    EXPECT_EQ(strip->Window(), nullptr);
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
    EXPECT_EQ(g_msgLyricsSettingChange, RegisterWindowMessageW(TEXT("Lyrics Setting Change")));
    EXPECT_NE(g_msgLyricsSettingChange, 0U);
    EXPECT_EQ(key.Text("Play Color"), "RGB(0,0,0)"); // the settings were read
}

TEST_F(LyricsStripTest, IsNotShownUntilLyricsAreReady)
{
    strip->Show(parent.Get());
    EXPECT_EQ(strip->State(), LyricsDisplay::Stopped);
    EXPECT_EQ(strip->Window(), nullptr);
}

TEST_F(LyricsStripTest, ShowMakesTheWindowInItsPlace)
{
    LoadAndShow(kThreeLines);
    EXPECT_EQ(strip->State(), LyricsDisplay::Shown);
    const HWND window = strip->Window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(IsVisible());
    EXPECT_EQ(GetParent(window), parent.Get());
    WCHAR name[32] = {};
    GetClassNameW(window, name, 32);
    EXPECT_EQ(WStringView(name), TEXT("Lyrics Class"));
    EXPECT_EQ(FindWindowW(TEXT("Lyrics Class"), nullptr), nullptr); // a child, not a window of the desktop
    EXPECT_NE(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)) & WS_EX_NOACTIVATE, 0U);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    EXPECT_EQ(style & (WS_CHILD | WS_VISIBLE | WS_POPUP | WS_DISABLED), WS_CHILD | WS_VISIBLE);
    RECT place;
    GetWindowRect(window, &place);
    POINT origin{ 0, 0 };
    ClientToScreen(parent.Get(), &origin);
    EXPECT_EQ(place.left - origin.x, 34);
    EXPECT_EQ(place.top - origin.y, 45);
    EXPECT_EQ(place.right - place.left, 250);
    EXPECT_EQ(place.bottom - place.top, 70);
}

TEST_F(LyricsStripTest, TheStripsRectangleIsItsClientArea)
{
    LoadAndShow(kThreeLines);
    const RECT& rect = context.StripRect();
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 250);
    EXPECT_EQ(rect.bottom, 70);
}

TEST_F(LyricsStripTest, ARectangleBeyondTheGreatestAreaIsClipped)
{
    LoadAndShow(kThreeLines);
    constexpr RECT huge = { 0, 0, 285, 71 };
    context.SetStripRect(&huge);
    EXPECT_EQ(context.StripRect().right, 284);
    EXPECT_EQ(context.StripRect().bottom, 70);
}

TEST_F(LyricsStripTest, PauseAndStopHideTheWindowAndShowBringsItBack)
{
    LoadAndShow(kThreeLines);
    const HWND window = strip->Window();
    strip->Pause();
    EXPECT_EQ(strip->State(), LyricsDisplay::Paused);
    EXPECT_FALSE(IsVisible());
    EXPECT_TRUE(context.IsReady());
    strip->Show(parent.Get());
    EXPECT_EQ(strip->State(), LyricsDisplay::Shown);
    EXPECT_TRUE(IsVisible());
    strip->Stop();
    EXPECT_EQ(strip->State(), LyricsDisplay::Stopped);
    EXPECT_FALSE(IsVisible());
    EXPECT_FALSE(context.IsReady());
    strip->Show(parent.Get()); // nothing is ready any more
    EXPECT_EQ(strip->State(), LyricsDisplay::Stopped);
    EXPECT_FALSE(IsVisible());
    EXPECT_EQ(strip->Window(), window); // it lives until the end
}

TEST_F(LyricsStripTest, PauseAndStopWithoutAWindowChangeTheState)
{
    strip->Pause();
    EXPECT_EQ(strip->State(), LyricsDisplay::Paused);
    strip->Stop();
    EXPECT_EQ(strip->State(), LyricsDisplay::Stopped);
    strip->SetVisible(true);
    EXPECT_EQ(strip->Window(), nullptr);
}

TEST_F(LyricsStripTest, VisibilityAloneLeavesTheState)
{
    LoadAndShow(kThreeLines);
    strip->SetVisible(false);
    EXPECT_FALSE(IsVisible());
    EXPECT_EQ(strip->State(), LyricsDisplay::Shown);
    strip->SetVisible(true);
    EXPECT_TRUE(IsVisible());
}

TEST_F(LyricsStripTest, TheEndOfTheStripTakesItsWindowAndClassAlong)
{
    LoadAndShow(kThreeLines);
    const HWND window = strip->Window();
    strip.reset();
    EXPECT_FALSE(IsWindow(window));
    strip = std::make_unique<LyricsStrip>(context); // the class can be registered again
    strip->Show(parent.Get());
    EXPECT_TRUE(IsVisible());
}

TEST_F(LyricsStripTest, TheEndOfTheParentLeavesAStripWithoutWindow)
{
    LoadAndShow(kThreeLines);
    DestroyWindow(strip->Window());
    EXPECT_EQ(strip->Window(), nullptr);
    strip->Update(1000);
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
    strip->Show(parent.Get()); // and it is made anew
    EXPECT_TRUE(IsVisible());
}

TEST_F(LyricsStripTest, TheLineOfThePositionIsCurrent)
{
    LoadAndShow(kThreeLines);
    const std::pair<std::int32_t, std::int32_t> steps[] = { { 0, 0 },    { 4999, 0 }, { 5000, 1 }, { 8999, 1 },
                                                            { 9000, 1 }, { 9001, 2 }, { 100, 0 },  { 3'000'000, 2 } };
    for (const auto& [positionMs, line] : steps) {
        strip->Update(positionMs);
        EXPECT_EQ(strip->CurrentLine(), line) << positionMs;
    }
}

TEST_F(LyricsStripTest, PlaceholderLinesTakeTurns)
{
    LoadAndShow("no stamps at all");
    ASSERT_FALSE(context.HasLyrics());
    const std::pair<std::int32_t, std::int32_t> steps[] = { { 0, 0 }, { 15'000, 1 }, { 30'000, 2 }, { 45'000, 0 } };
    for (const auto& [positionMs, line] : steps) {
        strip->Update(positionMs);
        EXPECT_EQ(strip->CurrentLine(), line) << positionMs;
    }
}

TEST_F(LyricsStripTest, AnOffsetShowsEachLineLater)
{
    LoadAndShow(kThreeLines);
    context.SetTimeOffsetMs(500);
    strip->Update(499);
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
    strip->Update(500);
    EXPECT_EQ(strip->CurrentLine(), 0);
    strip->Update(5499);
    EXPECT_EQ(strip->CurrentLine(), 0);
    strip->Update(5500);
    EXPECT_EQ(strip->CurrentLine(), 1);
    context.SetTimeOffsetMs(-5000);
    strip->Update(0);
    EXPECT_EQ(strip->CurrentLine(), 1);
    context.SetTimeOffsetMs(std::numeric_limits<std::int32_t>::min());
    strip->Update(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(strip->CurrentLine(), 2);
}

TEST_F(LyricsStripTest, AHiddenStripDoesNothing)
{
    LoadAndShow(kThreeLines);
    strip->Pause();
    strip->Update(5000);
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
    strip->Show(parent.Get());
    strip->Update(5000);
    EXPECT_EQ(strip->CurrentLine(), 1);
    strip->Stop();
    strip->Update(0);
    EXPECT_EQ(strip->CurrentLine(), 1);
}

TEST_F(LyricsStripTest, AnEmptyListShowsNothing)
{
    LoadAndShow(kThreeLines);
    strip->Update(0);
    context.Clear();
    strip->Update(5000);
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
}

TEST_F(LyricsStripTest, TheWidthAndHeightOfTheCurrentLineAreKept)
{
    LoadAndShow(kThreeLines);
    strip->Update(0);
    EXPECT_EQ(context.CurrentLineSize().cx, WidthOfText("First"));
    EXPECT_GT(context.CurrentLineSize().cy, 18);
    strip->Update(5000);
    EXPECT_EQ(context.CurrentLineSize().cx, WidthOfText("Second"));
}

TEST_F(LyricsStripTest, ANewLineEntersFromTheRightAndTheNextOneTakesOver)
{
    LoadAndShow(kThreeLines);
    strip->Update(0);
    EXPECT_EQ(context.Positions(), (LyricsPositions{ 0, 225, 225, -1 }));
    for (int positionMs = 100; positionMs < 5000; positionMs += 100)
        strip->Update(positionMs);
    const LONG next = context.Positions().nextLineLeft;
    EXPECT_EQ(next, context.Positions().lineX + WidthOfText("First") + 50);
    strip->Update(5000);
    EXPECT_EQ(context.Positions().startX, next);
    EXPECT_EQ(context.Positions().currentLine, 1);
}

TEST_F(LyricsStripTest, NewLyricsBeginAnew)
{
    LoadAndShow(kThreeLines);
    strip->Update(4900);
    strip->Stop();
    LoadAndShow("[00:00.00]Other[00:05.00]Song");
    EXPECT_EQ(strip->CurrentLine(), kNoLine);
    strip->Update(0);
    EXPECT_EQ(context.Positions(), (LyricsPositions{ 0, 225, 225, -1 }));
}

TEST_F(LyricsStripTest, ASettingChangeTakesEffectThere)
{
    LoadAndShow(kThreeLines);
    constexpr RECT smaller = { 10, 0, 200, 60 };
    context.SetStripRect(&smaller);
    key.SetText("Play Color", "RGB(1,2,3)");
    key.SetText("Next Color", "RGB(4,5,6)");
    key.SetText("Lyrics Back Ground Color", "RGB(7,8,9)");
    key.SetText("Lyrics Rect", "RECT(1,2,3,4)");
    key.SetNumber("Lyrics Transparent", 0);
    key.SetText("Lyrics Path", "\\SDMMC\\Words");
    SendMessageW(strip->Window(), RegisterWindowMessageW(TEXT("Lyrics Setting Change")), 0, 0);
    EXPECT_EQ(context.Settings().playColor, RGB(1, 2, 3));
    EXPECT_EQ(context.Settings().nextColor, RGB(4, 5, 6));
    EXPECT_EQ(context.Settings().backgroundColor, RGB(7, 8, 9));
    EXPECT_EQ(context.Settings().isTransparent, 0U);
    EXPECT_EQ(context.Settings().folder, TEXT("\\SDMMC\\Words"));
    EXPECT_EQ(context.StripRect().left, 10); // stays
    EXPECT_EQ(context.StripRect().right, 200);
    EXPECT_EQ(strip->State(), LyricsDisplay::Shown);
    EXPECT_TRUE(IsVisible());
}

TEST_F(LyricsStripTest, APausedStripStaysPausedWhenTheSettingsChange)
{
    LoadAndShow(kThreeLines);
    strip->Pause();
    SendMessageW(strip->Window(), g_msgLyricsSettingChange, 0, 0);
    EXPECT_EQ(strip->State(), LyricsDisplay::Paused);
    EXPECT_FALSE(IsVisible());
}

TEST_F(LyricsStripTest, OtherMessagesOfTheSameKindChangeNothing)
{
    LoadAndShow(kThreeLines);
    key.SetText("Play Color", "RGB(1,2,3)");
    SendMessageW(strip->Window(), RegisterWindowMessageW(TEXT("Lyrics Setting Changed")), 0, 0);
    EXPECT_EQ(context.Settings().playColor, RGB(0, 0, 0));
}

} // namespace
