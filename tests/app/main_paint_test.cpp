// What the display panel shows, compared with a picture that the test draws from the same skin and fonts.
#include "app/main_paint.h"

#include "app/player_controls.h"
#include "app/title_ticker.h"
#include "common/gdi_handles.h"
#include "gui/gif_bitmap.h"
#include "tests/app/player_fixture.h"

using namespace cardsong::test;

namespace {

constexpr RECT kPanelArea{ 30, 40, 290, 138 };
constexpr RECT kScreenArea{ 0, 0, 320, 240 };
constexpr COLORREF kWhite = RGB(0xFF, 0xFF, 0xFF);

// A picture of the screen's size that starts with the skin's background.
class Picture {
public:
    Picture()
    {
        const UniqueBitmap background(LoadGifBitmap(TEXT("\\Windows\\gui_musicplayer_background.gif")));
        const UniqueMemoryContext source(CreateCompatibleDC(nullptr));
        const SelectedObject selected(source.Get(), background.Get());
        BitBlt(Context(), 0, 0, 320, 240, source.Get(), 0, 0, SRCCOPY);
        SetBkMode(Context(), TRANSPARENT);
        SetTextColor(Context(), kWhite);
    }
    void Write(const WCHAR* text, int points, RECT rect, UINT format)
    {
        LOGFONTW description{};
        description.lfHeight = -(points * 96 / 72);
        const UniqueFont font(CreateFontIndirectW(&description));
        const SelectedObject selected(Context(), font.Get());
        DrawTextW(Context(), text, -1, &rect, format);
    }
    HDC Context() const { return m_context.Get(); }
    Frame Pixels() const
    {
        // By way of the screen, which a test can read.
        const HDC screen = GetDC(nullptr);
        BitBlt(screen, 0, 0, 320, 240, Context(), 0, 0, SRCCOPY);
        ReleaseDC(nullptr, screen);
        Frame frame(320 * 240);
        cardsong::gdi::CopyScreen(frame);
        return frame;
    }

private:
    static HBITMAP MakeBitmap()
    {
        const HDC screen = GetDC(nullptr);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, 320, 240);
        ReleaseDC(nullptr, screen);
        return bitmap;
    }
    UniqueMemoryContext m_context{ CreateCompatibleDC(nullptr) };
    UniqueBitmap m_bitmap{ MakeBitmap() };
    SelectedObject m_selected{ m_context.Get(), m_bitmap.Get() };
};

class MainPaint : public PlayerTest {};

} // namespace

TEST_F(MainPaint, TheTotalTimeStandsOnTheLeftAndTheElapsedTimeOnTheRight)
{
    Start();
    AddSong("a.mp3", 83);
    Press(VK_RETURN);
    Advance(50);
    g_titleText.clear(); // only the times
    Advance(1);
    const Frame shown = Screen();
    Picture expected;
    expected.Write(TEXT("1:23"), 12, { 33, 117, 113, 137 }, DT_SINGLELINE | DT_CENTER);
    expected.Write(TEXT("0:05"), 12, { 221, 117, 300, 137 }, DT_SINGLELINE | DT_BOTTOM | DT_CENTER);
    EXPECT_EQ(Differences(shown, expected.Pixels(), kPanelArea), 0);
}

TEST_F(MainPaint, TimesOfEveryWidthStandInTheMiddleOfTheirPlaces)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    g_titleText.clear();
    for (const WCHAR* time : { TEXT("1"), TEXT("0:1"), TEXT("10:05"), TEXT("1:00:00"), TEXT("--:--") }) {
        g_totalText = time;
        g_elapsedText = time;
        InvalidateRect(m_window, nullptr, FALSE);
        Pump();
        const Frame shown = Screen();
        Picture expected;
        expected.Write(time, 12, { 33, 117, 113, 137 }, DT_SINGLELINE | DT_CENTER);
        expected.Write(time, 12, { 221, 117, 300, 137 }, DT_SINGLELINE | DT_BOTTOM | DT_CENTER);
        EXPECT_EQ(Differences(shown, expected.Pixels(), { 30, 40, 284, 137 }), 0)
            << Narrow(time); // the panel cuts there
    }
}

TEST_F(MainPaint, ANewTitleStandsFromPixel180OnInEighteenPoints)
{
    Start();
    AddSong("title & co.mp3", 30);
    Press(VK_RETURN);
    g_totalText.clear();
    g_elapsedText.clear();
    InvalidateRect(m_window, nullptr, FALSE);
    Pump();
    const Frame shown = Screen();
    Picture expected;
    const LONG right = 180 + g_titleWidthPx;
    expected.Write(TEXT("01.title & co"), 18, { 180, 45, right, 115 }, DT_SINGLELINE | DT_NOPREFIX);
    const Frame whole = expected.Pixels();
    EXPECT_EQ(Differences(shown, whole, { 30, 40, 284, 137 }), 0);
    EXPECT_GT(Differences(shown, whole, { 284, 45, 320, 115 }), 0); // where the panel cuts it off
}

TEST_F(MainPaint, BothCopiesOfTheTitleAreDrawn)
{
    Start();
    AddSong("copy.mp3", 30);
    Press(VK_RETURN);
    g_totalText.clear();
    g_elapsedText.clear();
    g_titleStripA = { { 40, 45, 140, 115 }, true };
    g_titleStripB = { { 150, 45, 250, 115 }, false }; // drawn even while it is inactive
    InvalidateRect(m_window, nullptr, FALSE);
    Pump();
    const Frame shown = Screen();
    Picture expected;
    expected.Write(TEXT("01.copy"), 18, { 40, 45, 140, 115 }, DT_SINGLELINE | DT_NOPREFIX);
    expected.Write(TEXT("01.copy"), 18, { 150, 45, 250, 115 }, DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(Differences(shown, expected.Pixels(), kPanelArea), 0);
}

TEST_F(MainPaint, TheTitleIsCutOffAtThePanelsEdges)
{
    Start();
    AddSong("wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww.mp3", 30);
    Press(VK_RETURN);
    g_totalText.clear();
    g_elapsedText.clear();
    g_titleStripA = { { 0, 45, 320, 115 }, true };
    InvalidateRect(m_window, nullptr, FALSE);
    Pump();
    const Frame shown = Screen();
    const Frame bare = Picture().Pixels();
    Picture lettered;
    lettered.Write(g_titleText.c_str(), 18, { 0, 45, 320, 115 }, DT_SINGLELINE | DT_NOPREFIX);
    const Frame letters = lettered.Pixels();
    EXPECT_EQ(Differences(shown, letters, { 34, 45, 284, 137 }), 0);
    EXPECT_EQ(Differences(shown, bare, { 0, 40, 34, 137 }), 0);
    EXPECT_EQ(Differences(shown, bare, { 284, 40, 320, 137 }), 0);
    EXPECT_GT(Differences(letters, bare, { 34, 45, 35, 115 }), 0); // a letter crosses either edge
    EXPECT_GT(Differences(letters, bare, { 283, 45, 284, 115 }), 0);
}

TEST_F(MainPaint, AStoppedPlayerShowsNoText)
{
    Start();
    const Frame shown = Screen();
    EXPECT_EQ(Differences(shown, Picture().Pixels(), { 0, 0, 320, 138 }), 0);
}

TEST_F(MainPaint, ErasingShowsTheWholeBackground)
{
    Start();
    const HDC screen = GetDC(m_window);
    SendMessageW(m_window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(screen), 0);
    ReleaseDC(m_window, screen);
    const Frame erased = Screen();
    EXPECT_EQ(Differences(erased, Picture().Pixels(), kScreenArea), 0);
}

TEST_F(MainPaint, ErasingIsAnswered)
{
    Start();
    const HDC screen = GetDC(m_window);
    EXPECT_EQ(SendMessageW(m_window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(screen), 0), 1);
    ReleaseDC(m_window, screen);
}

TEST_F(MainPaint, ASoftKeyThatChangesItsCaptionLeavesNothingOfTheOldOne)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Press(VK_RETURN); // paused: nothing else changes
    Advance(2);
    const Frame before = Screen();
    const ButtonCaption other = { TEXT("Wider caption"), 0, 14, kWhite };
    const ButtonCaption exit = { nullptr, 17002, 14, kWhite };
    g_controls.softKeys.SetCaption(18, other);
    Advance(2);
    EXPECT_GT(Differences(before, Screen(), { 0, 208, 106, 240 }), 50);
    g_controls.softKeys.SetCaption(18, exit);
    Advance(2);
    EXPECT_EQ(Differences(before, Screen(), kScreenArea), 0);
}

TEST_F(MainPaint, EveryTickPaintsTheSamePictureAsAWholeRepaint)
{
    Start();
    AddSong("a title of some length.mp3", 30);
    Press(VK_RETURN);
    for (int i = 0; i < 40; ++i) {
        Advance(1);
        const Frame ticked = Screen();
        FreeBackground(); // forgets what was painted
        LoadBackground();
        InvalidateRect(m_window, nullptr, FALSE);
        Pump();
        ASSERT_EQ(Differences(ticked, Screen(), kScreenArea), 0) << i;
    }
}
