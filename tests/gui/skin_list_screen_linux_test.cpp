// A skinned list on the screen while time passes: what is shown of it, frame by frame, and what it costs at rest.
#include "gui/text_line.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "tests/gui/skin_list_fixture.h"

using namespace cardsong;
using namespace cardsong::test;

namespace {

using Frame = std::vector<std::uint16_t>;

Frame Screen()
{
    Frame frame(static_cast<std::size_t>(kScreenWidthPx) * kScreenHeightPx);
    gdi::CopyScreen(frame);
    return frame;
}

class SkinListScreen : public SkinListTest {
protected:
    SkinListScreen() { kernel::InstallClock(&m_clock); }
    ~SkinListScreen() override
    {
        user::InstallPresenter({});
        m_list.Close();
        kernel::InstallClock(nullptr);
    }
    // From now on each frame that differs from the one before is kept.
    void WatchFrames()
    {
        user::InstallPresenter([this] {
            Frame now = Screen();
            if (m_frames.empty() ? now != m_before : now != m_frames.back())
                m_frames.push_back(std::move(now));
        });
        m_frames.clear();
        m_before = Screen();
    }
    void Advance(int milliseconds)
    {
        m_clock.Advance(static_cast<std::uint64_t>(milliseconds));
        ParentWindow::Pump();
    }
    static void Press(POINT at)
    {
        user::PointerDown(at);
        ParentWindow::Pump();
    }
    static void Release(POINT at)
    {
        user::PointerUp(at);
        ParentWindow::Pump();
    }
    void CreateSwinging(std::int32_t count, SkinListMode mode = SkinListMode::CheckedText)
    {
        m_list.SetLongText(SkinListLongText::Swings);
        Create(count, mode);
    }

    kernel::VirtualClock m_clock;
    Frame m_before;
    std::vector<Frame> m_frames;
};

constexpr POINT kDownButton = { 289, 162 };
constexpr POINT kPlayKey = { 150, 224 };

} // namespace

// ---- frames ----

TEST_F(SkinListScreen, ATurnOfThePageShowsOneWholeFrame)
{
    m_items.assign(9, ListItem(TEXT("Song"), TEXT("1:00"), 1));
    Create(9);
    m_list.SetPageIndicator(SkinListPageIndicator::Shown);
    for (int page = 2; page <= 3; ++page) { // with the last page a button goes dull, too
        Advance(1'000);                     // no second click of a fast pair
        Press(kDownButton);
        WatchFrames();
        Release(kDownButton);
        EXPECT_EQ(m_list.CurrentPage(), page);
        ASSERT_EQ(m_frames.size(), 1U);
        user::InstallPresenter({});
        InvalidateRect(m_list.Window(), nullptr, FALSE);
        ParentWindow::Pump();
        EXPECT_EQ(m_frames[0], Screen()) << "nothing was missing in it";
    }
}

TEST_F(SkinListScreen, ATapShowsOneFrameInWhichOnlyRowsDiffer)
{
    Create(9);
    Press({ 100, 50 });
    Release({ 100, 50 });
    WatchFrames();
    Press({ 100, 140 });
    Release({ 100, 140 });
    ASSERT_EQ(m_frames.size(), 1U);
    for (std::size_t i = 0; i < m_before.size(); ++i) {
        const auto x = static_cast<LONG>(i % kScreenWidthPx);
        const auto y = static_cast<LONG>(i / kScreenWidthPx);
        const bool isOfTheRows = SkinListRowAt({ x, y }) == 0 || SkinListRowAt({ x, y }) == 2;
        ASSERT_TRUE(isOfTheRows || m_frames[0][i] == m_before[i]) << x << ", " << y;
    }
}

TEST_F(SkinListScreen, OpeningShowsTheWholeListInOneFrame)
{
    WatchFrames();
    Create(9);
    ASSERT_EQ(m_frames.size(), 1U);
    EXPECT_EQ(m_frames[0], Screen());
    EXPECT_EQ(At(0, 27), m_unchecked);
}

TEST_F(SkinListScreen, AHeldButtonKeepsItsPressedLookWhileTheOwnerRepaints)
{
    Create(9);
    Press(kDownButton);
    EXPECT_EQ(At(kDownButton.x, kDownButton.y), m_scrollDownPressed);
    m_list.SetItemCount(10);
    m_list.RepaintAll();
    ParentWindow::Pump();
    EXPECT_EQ(At(kDownButton.x, kDownButton.y), m_scrollDownPressed);
    Release(kDownButton);
    EXPECT_EQ(At(kDownButton.x, kDownButton.y), m_scrollDown);
    Press(kPlayKey);
    m_list.RepaintAll();
    ParentWindow::Pump();
    EXPECT_EQ(At(kPlayKey.x, kPlayKey.y), m_keyPressed);
    Release(kPlayKey);
    EXPECT_EQ(At(kPlayKey.x, kPlayKey.y), m_key);
}

// ---- touch and keys, as a user has them ----

TEST_F(SkinListScreen, KeysOfADesktopReachAllThatAFingerReaches)
{
    Create(9);
    const auto tap = [](POINT place) {
        user::TapInFrontOf(TEXT("AnotherClass"), place);
        ParentWindow::Pump();
    };
    tap({ 289, 162 });
    EXPECT_EQ(m_list.CurrentPage(), 2);
    tap({ 289, 71 });
    EXPECT_EQ(m_list.CurrentPage(), 1);
    tap({ 129, 141 });
    EXPECT_EQ(m_list.SelectedIndex(), 2);
    m_owner.seen.clear();
    for (int number = 1; number <= 4; ++number) { // the scroll buttons are no bottom buttons
        user::TapBottomButton(number);
        ParentWindow::Pump();
    }
    ASSERT_EQ(m_owner.seen.size(), 3U);
    EXPECT_EQ(m_owner.seen[0].wParam, 16U);
    EXPECT_EQ(m_owner.seen[1].wParam, 29U);
    EXPECT_EQ(m_owner.seen[2].wParam, 33U);
    EXPECT_EQ(m_owner.seen[2].lParam, 2);
    user::KeyDown(VK_F24);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.Window(), nullptr);
}

TEST_F(SkinListScreen, AFingerSelectsTurnsAndCommands)
{
    Create(9);
    Press(kDownButton);
    Release(kDownButton);
    Press({ 100, 90 });
    Release({ 100, 90 });
    Press(kPlayKey);
    Release(kPlayKey);
    ASSERT_EQ(m_owner.seen.size(), 2U);
    EXPECT_EQ(m_owner.seen[0].message, static_cast<UINT>(WM_NOTIFY));
    EXPECT_EQ(m_owner.seen[0].lParam, 5);
    EXPECT_EQ(m_owner.seen[1].wParam, 29U);
    EXPECT_EQ(m_owner.seen[1].lParam, 5);
}

TEST_F(SkinListScreen, KeysReachTheListAfterAButtonWasPressed)
{
    Create(13);
    Press(kDownButton);
    Release(kDownButton);
    user::KeyDown(VK_DOWN);
    user::KeyUp(VK_DOWN);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.CurrentPage(), 3);
    EXPECT_EQ(GetFocus(), m_list.Window());
}

TEST_F(SkinListScreen, TheButtonThatTurnsToTheLastPageLeavesTheKeysToTheList)
{
    Create(5);
    Press(kDownButton);
    Release(kDownButton);
    EXPECT_FALSE(IsEnabled(41));
    user::KeyDown(VK_UP);
    user::KeyUp(VK_UP);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.CurrentPage(), 1);
}

TEST_F(SkinListScreen, TwoFastTapsTurnTwoPages)
{
    Create(50);
    for (int i = 0; i < 2; ++i) {
        Press(kDownButton);
        Release(kDownButton);
    }
    EXPECT_EQ(m_list.CurrentPage(), 3);
}

// ---- at rest ----

TEST_F(SkinListScreen, AListWithoutSwingingTextHasNoTimer)
{
    m_items.assign(4, ListItem(WString(100, TEXT('\u25A0'))));
    Create(4);
    TapRow(0);
    ParentWindow::Pump();
    m_clock.Advance(60'000);
    MSG message = {};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
}

TEST_F(SkinListScreen, AListInWhichNothingMovesDrawsNothing)
{
    m_items = { ListItem(TEXT("short")), ListItem(WString(100, TEXT('\u25A0'))) };
    CreateSwinging(2);
    const auto drawnInAMinute = [&] {
        ParentWindow::Pump();
        const std::uint64_t before = gdi::ScreenGeneration();
        for (int i = 0; i < 120; ++i)
            Advance(500);
        return gdi::ScreenGeneration() - before;
    };
    EXPECT_EQ(drawnInAMinute(), 0U);
    TapRow(0);
    EXPECT_EQ(drawnInAMinute(), 0U); // its text fits
    TapRow(1);
    EXPECT_NE(drawnInAMinute(), 0U);
}

TEST_F(SkinListScreen, ForeignTimersAreNotItsOwn)
{
    m_items = { ListItem(WString(100, TEXT('\u25A0'))) };
    CreateSwinging(1);
    TapRow(0);
    ParentWindow::Pump();
    SendMessageW(m_list.Window(), WM_TIMER, 2, 0);
    EXPECT_EQ(TakeUpdate().right, 0);
    SendMessageW(m_list.Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(TakeUpdate().right, 258);
}

// ---- the swinging text ----

TEST_F(SkinListScreen, TheSelectedTextMovesEveryHalfSecond)
{
    m_items = { ListItem(TEXT("0123456789 0123456789 0123456789")) };
    CreateSwinging(1);
    TapRow(0);
    ParentWindow::Pump();
    WatchFrames();
    Advance(499);
    EXPECT_TRUE(m_frames.empty());
    Advance(1);
    EXPECT_EQ(m_frames.size(), 1U);
    Advance(499);
    EXPECT_EQ(m_frames.size(), 1U);
    Advance(1);
    EXPECT_EQ(m_frames.size(), 2U);
}

// Each step of three whole swings looks as if drawn from where a plain model of the swing stands.
TEST_F(SkinListScreen, ASwingingTextLooksAsThePlainModelSaysOverWholeCycles)
{
    const WString text = TEXT("12 \u5F69\u96F2\u8FFD\u6708 & Clair de lune.mp3");
    m_items = { ListItem({}), ListItem(text, TEXT("2:58"), 1) };
    CreateSwinging(2);
    TapRow(1);
    ParentWindow::Pump();
    const Picture paper;
    const UniqueFont font = CreatePlainFont(paper.Context(), 14);
    std::size_t turn = 0;
    {
        const SelectedObject selected(paper.Context(), font.Get());
        for (RECT size = { 0, 0, 146, 0 }; size.right > 145; ++turn) {
            size = {};
            MeasureText(paper.Context(), text.c_str() + turn + 1, size);
        }
    }
    ASSERT_GT(turn, 5U);
    const RECT row = kSkinListRowRects[1];
    for (std::size_t step = 0; step < 6 * turn; ++step) {
        const std::size_t phase = step % (2 * turn);
        const std::size_t start = phase <= turn ? phase : 2 * turn - phase;
        FillRect(paper.Context(), &row, GetSysColorBrush(COLOR_HIGHLIGHT));
        CheckBoxImages::Shared()->Draw(paper.Context(), { 0, 73, 45, 117 }, 1);
        DrawTextLine(paper.Context(), WStringView(text).substr(start), { 45, 73, 190, 117 }, font.Get(), RGB(0, 0, 0),
                     DT_VCENTER | DT_WORD_ELLIPSIS | DT_NOPREFIX);
        const Frame shown = Screen();
        for (int y = row.top; y < row.bottom; ++y)
            for (int x = 0; x < 190; ++x)
                ASSERT_EQ(shown[static_cast<std::size_t>(y * kScreenWidthPx + x)], paper.At(x, y)) << "step " << step;
        Advance(500);
    }
}

TEST_F(SkinListScreen, ANewSelectionBeginsAtTheBeginning)
{
    m_items.assign(2, ListItem(WString(TEXT("0")) + WString(60, TEXT('\u25A0'))));
    CreateSwinging(2);
    TapRow(0);
    ParentWindow::Pump();
    const Frame fresh = Screen();
    Advance(500);
    Advance(500);
    EXPECT_NE(Screen(), fresh);
    TapRow(0);
    ParentWindow::Pump();
    EXPECT_EQ(Screen(), fresh);
}

TEST_F(SkinListScreen, TurningThePageStopsTheText)
{
    m_items.assign(9, ListItem(WString(100, TEXT('\u25A0'))));
    CreateSwinging(9);
    TapRow(0);
    Advance(500);
    Command(kPageDown);
    ParentWindow::Pump();
    const std::uint64_t before = gdi::ScreenGeneration();
    Advance(500);
    Advance(500);
    EXPECT_EQ(gdi::ScreenGeneration(), before);
}

TEST_F(SkinListScreen, AClosedListSwingsNoMore)
{
    m_items.assign(1, ListItem(WString(100, TEXT('\u25A0'))));
    CreateSwinging(1);
    TapRow(0);
    Advance(500);
    m_list.Close();
    m_clock.Advance(5'000);
    ParentWindow::Pump();
    MSG message = {};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE));
}
