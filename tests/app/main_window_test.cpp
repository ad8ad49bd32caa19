#include "app/main_window.h"

#include "app/player_controls.h"
#include "app/title_ticker.h"
#include "tests/app/player_fixture.h"

#include <algorithm>
#include <filesystem>

using namespace cardsong::test;

namespace {

class MainWindow : public PlayerTest {
protected:
    // Paints over the whole window, as no part of the player would.
    void Scribble() const
    {
        constexpr RECT screen{ 0, 0, 320, 240 };
        const HBRUSH brush = CreateSolidBrush(RGB(0x12, 0x34, 0x56));
        const HDC context = GetDC(m_window);
        FillRect(context, &screen, brush);
        ReleaseDC(m_window, context);
        DeleteObject(brush);
    }
};

constexpr RECT kTitleArea{ 34, 45, 284, 115 };
constexpr RECT kElapsedArea{ 221, 117, 284, 137 };

std::string Record(int number, const std::string& name, const std::string& seconds)
{
    const std::string text = std::to_string(number) + "$" + name + "$\\SDMMC$" + seconds;
    std::string bytes;
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes + "\r\n";
}

} // namespace

TEST_F(MainWindow, CoversTheScreenAndMayNotBeAnimated)
{
    Start();
    RECT rect;
    ASSERT_TRUE(GetWindowRect(m_window, &rect));
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 320);
    EXPECT_EQ(rect.bottom, 240);
    EXPECT_NE(static_cast<DWORD>(GetWindowLongPtrW(m_window, GWL_EXSTYLE)) & WS_EX_NOANIMATION, 0U);
}

TEST_F(MainWindow, HasTheFocusAndKeepsItAfterTaps)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 30);
    EXPECT_EQ(GetFocus(), m_window);
    Tap(kPlayKey);
    EXPECT_EQ(GetFocus(), m_window);
    Press(VK_RIGHT);
    EXPECT_EQ(g_currentNumber, 2);
    EXPECT_EQ(GetFocus(), m_window);
}

TEST_F(MainWindow, AnEnterKeyThatIsHeldPlaysOrPausesOnce)
{
    Start();
    AddSong("a.mp3", 30);
    for (int i = 0; i < 5; ++i) {
        cardsong::user::KeyDown(static_cast<UINT>(VK_RETURN)); // what the first is repeated as
        Pump();
        EXPECT_EQ(g_isPlaying, 1) << i;
    }
    cardsong::user::KeyUp(static_cast<UINT>(VK_RETURN));
    Pump();
    EXPECT_EQ(g_isPlaying, 1);
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 0);
}

TEST_F(MainWindow, AnArrowKeyThatIsHeldStepsOn)
{
    Start();
    for (const char* name : { "a.mp3", "b.mp3", "c.mp3", "d.mp3" })
        AddSong(name, 30);
    Press(VK_RETURN);
    for (int i = 0; i < 3; ++i)
        cardsong::user::KeyDown(static_cast<UINT>(VK_RIGHT));
    Pump();
    EXPECT_EQ(g_currentNumber, 4);
}

TEST_F(MainWindow, AHeldButtonKeepsItsPressedLookWhileTheWindowRepaints)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 30);
    Press(VK_RETURN);
    struct Held {
        const char* name;
        POINT at;
        RECT place;
    };
    const Held buttons[] = {
        { "pause", kPlayKey, { 113, 159, 160, 208 } },
        { "next", kNextKey, { 160, 159, 207, 208 } },
        { "exit", kExitKey, { 0, 208, 106, 240 } },
    };
    for (const Held& button : buttons) {
        const Frame released = Screen();
        cardsong::user::PointerDown(button.at);
        Pump();
        const Frame pressed = Screen();
        EXPECT_GT(Differences(released, pressed, button.place), 200) << button.name;
        Advance(3);
        EXPECT_EQ(Differences(pressed, Screen(), button.place), 0) << button.name;
        cardsong::user::PointerMove({ 300, 20 });
        Advance(3);
        EXPECT_EQ(Differences(released, Screen(), button.place), 0) << button.name;
        cardsong::user::PointerMove(button.at);
        Advance(3);
        EXPECT_EQ(Differences(pressed, Screen(), button.place), 0) << button.name;
        cardsong::user::PointerMove({ 300, 20 });
        cardsong::user::PointerUp({ 300, 20 });
        Advance(1);
        EXPECT_EQ(Differences(released, Screen(), button.place), 0) << button.name;
    }
}

TEST_F(MainWindow, AHeldButtonThatIsDisabledLooksDisabled)
{
    Start();
    AddSong("a.mp3", 30);
    AddSong("b.mp3", 30);
    constexpr RECT stop{ 66, 159, 113, 208 };
    const Frame disabled = Screen();
    Press(VK_RETURN);
    cardsong::user::PointerDown(kStopKey);
    Pump();
    EXPECT_GT(Differences(disabled, Screen(), stop), 200);
    SendMessageW(m_window, WM_COMMAND, kCommandStop, 0);
    Pump();
    EXPECT_EQ(Differences(disabled, Screen(), stop), 0);
}

TEST_F(MainWindow, StartsStoppedWithTheFirstFacesShown)
{
    Start();
    for (const int id :
         { kCommandPrevious, kCommandPlay, kCommandStop, kCommandNext, kCommandShuffleOff, kCommandRepeatOff })
        EXPECT_TRUE(IsShown(id)) << id;
    for (const int id : { kCommandPause, kCommandShuffleOn, kCommandRepeatAll, kCommandRepeatSingle })
        EXPECT_FALSE(IsShown(id)) << id;
    EXPECT_TRUE(IsEnabled(kCommandPlay));
    for (const int id : { kCommandPrevious, kCommandStop, kCommandNext, kCommandShuffleOff, kCommandRepeatOff })
        EXPECT_FALSE(IsEnabled(id)) << id;
    for (const int id : { kCommandExit, kCommandPlayListWindow, kCommandAudioSettings })
        EXPECT_TRUE(IsEnabled(id)) << id;
}

TEST_F(MainWindow, TheSliderIsTheFirstChild)
{
    Start();
    const HWND slider = GetWindow(m_window, GW_CHILD);
    RECT rect;
    GetWindowRect(slider, &rect);
    EXPECT_EQ(rect.left, 17);
    EXPECT_EQ(rect.top, 139);
    EXPECT_EQ(rect.right, 17 + 286);
    EXPECT_EQ(rect.bottom, 139 + 15);
    EXPECT_FALSE(IsWindowEnabled(slider));
}

TEST_F(MainWindow, TheTitleMovesWhilePlayingOnly)
{
    Start();
    AddSong("a long enough title.mp3", 30);
    Press(VK_RETURN);
    Advance(1);
    const Frame first = Screen();
    Advance(1);
    const Frame second = Screen();
    EXPECT_GT(Differences(first, second, kTitleArea), 50);
    Press(VK_RETURN);
    Advance(1);
    const Frame third = Screen();
    Advance(3);
    EXPECT_EQ(Differences(third, Screen(), kTitleArea), 0);
}

TEST_F(MainWindow, TheElapsedTimeIsDrawnAsItChanges)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Advance(5);
    const Frame before = Screen();
    Advance(10);
    EXPECT_GT(Differences(before, Screen(), kElapsedArea), 5);
}

TEST_F(MainWindow, TheTicksOfProgressAndTitleRepaintTheWholeWindow)
{
    Start();
    const Frame whole = Screen();
    for (const UINT_PTR timer : { UINT_PTR{ 100 }, UINT_PTR{ 1000 } }) {
        Scribble();
        ASSERT_GT(Differences(whole, Screen(), { 0, 0, 320, 240 }), 320 * 200);
        SendMessageW(m_window, WM_TIMER, timer, 0); // at once: nothing waits for the next message
        EXPECT_EQ(Differences(whole, Screen(), { 0, 0, 320, 240 }), 0) << timer;
    }
}

TEST_F(MainWindow, TheTicksOfOtherTimersRepaintNothing)
{
    Start();
    Scribble();
    const Frame scribbled = Screen();
    SendMessageW(m_window, WM_TIMER, 101, 0);
    Pump();
    EXPECT_EQ(Differences(scribbled, Screen(), { 0, 0, 320, 240 }), 0);
}

TEST_F(MainWindow, AChangeOfItsSizeRepaintsTheWholeWindow)
{
    Start();
    const Frame whole = Screen();
    Scribble();
    MoveWindow(m_window, 0, 0, 300, 230, TRUE);
    Pump();
    EXPECT_EQ(Differences(whole, Screen(), { 0, 0, 300, 200 }), 0);
}

TEST_F(MainWindow, TheControlsHaveTheirNumbers)
{
    Start();
    const std::pair<int, POINT> places[] = {
        { 18, { 0, 208 } },    { 24, { 106, 208 } },  { 22, { 212, 208 } },  { 256, { 0, 159 } },
        { 260, { 66, 159 } },  { 258, { 113, 159 } }, { 259, { 113, 159 } }, { 262, { 160, 159 } },
        { 265, { 207, 159 } }, { 266, { 207, 159 } }, { 267, { 207, 159 } }, { 263, { 254, 159 } },
        { 264, { 254, 159 } },
    };
    for (const auto& [id, place] : places) {
        RECT rect{};
        ASSERT_TRUE(GetWindowRect(Control(id), &rect)) << id;
        EXPECT_EQ(rect.left, place.x) << id;
        EXPECT_EQ(rect.top, place.y) << id;
    }
}

TEST_F(MainWindow, AMessageThatIsNotItsOwnGetsTheSystemsAnswer)
{
    Start();
    EXPECT_EQ(SendMessageW(m_window, WM_USER + 7, 1, 2), 0);
}

TEST_F(MainWindow, TheSoftKeysAreCalledExitAndPlayList)
{
    Start();
    EXPECT_EQ(WString(g_controls.softKeys.Find(18)->Caption()), TEXT("Exit"));
    EXPECT_EQ(WString(g_controls.softKeys.Find(24)->Caption()), TEXT("Play list"));
    EXPECT_EQ(WString(g_controls.softKeys.Find(22)->Caption()), TEXT(""));
}

TEST_F(MainWindow, TheMessagesOfOtherProgramsHaveTheirNames)
{
    Start();
    EXPECT_EQ(g_msgAreYouMe, RegisterWindowMessageW(TEXT("WM_ARE_YOU_ME-{0F53DE7F-024B-4003-8DE1-545F577398AB}")));
    EXPECT_EQ(g_msgUserAddSongs, RegisterWindowMessageW(TEXT("WM_USER_!-{{1FCF03ED-B487-4997-8A32-6029F108FA9F}}")));
    EXPECT_EQ(g_msgMassStorage, RegisterWindowMessageW(TEXT("TAVO_MASS_STORAGE_NOTIFICATION")));
    EXPECT_EQ(g_msgAudioManager, RegisterWindowMessageW(TEXT("TAVO_AUDIOMGR_UPDATESTATE_IND")));
    EXPECT_EQ(g_msgStatusRequest, RegisterWindowMessageW(TEXT("CARDSONG_STATUS_REQUEST")));
}

TEST_F(MainWindow, TheProgramHasAnIcon)
{
    Start();
    EXPECT_NE(LoadIconW(g_hInstance, TEXT("AUDIOPLAYER")), nullptr);
    EXPECT_EQ(LoadIconW(g_hInstance, TEXT("VIDEOPLAYER")), nullptr);
}

TEST_F(MainWindow, EveryRequestToDrawAControlIsAnswered)
{
    Start();
    DRAWITEMSTRUCT request{};
    request.CtlID = 18;
    EXPECT_EQ(SendMessageW(m_window, WM_DRAWITEM, 18, reinterpret_cast<LPARAM>(&request)), TRUE);
}

TEST_F(MainWindow, TheTaskBarIsHiddenWhileThePlayerRuns)
{
    WNDCLASSW taskBarClass{};
    taskBarClass.lpfnWndProc = DefWindowProcW;
    taskBarClass.lpszClassName = TEXT("HHTaskBar");
    RegisterClassW(&taskBarClass);
    const HWND taskBar = CreateWindowExW(0, TEXT("HHTaskBar"), TEXT("x"), WS_POPUP | WS_VISIBLE, 0, 214, 320, 26,
                                         nullptr, nullptr, nullptr, nullptr);
    Start();
    EXPECT_FALSE(IsWindowVisible(taskBar));
    Press(VK_F24);
    EXPECT_TRUE(IsWindowVisible(taskBar));
    DestroyWindow(taskBar);
}

TEST_F(MainWindow, TheSkinsPanelFramesWhatMayShowOfTheTitleAndTheTimes)
{
    Start();
    const Frame frame = Screen();
    const auto ground = PixelOf(frame, 20, 60);
    const auto edge = PixelOf(frame, 33, 60);
    const auto panel = PixelOf(frame, 34, 60);
    EXPECT_NE(ground, edge);
    EXPECT_NE(edge, panel);
    const std::vector<std::uint16_t> inwards{ ground, edge, panel };
    const auto pixels = [&frame](std::initializer_list<POINT> points) {
        std::vector<std::uint16_t> seen;
        for (const POINT at : points)
            seen.push_back(PixelOf(frame, at.x, at.y));
        return seen;
    };
    // 250 x 92 at 34, 45: the first and last columns and rows inside, the frame around them, the ground behind it.
    EXPECT_EQ(pixels({ { 32, 60 }, { 33, 60 }, { 34, 60 } }), inwards);
    EXPECT_EQ(pixels({ { 285, 60 }, { 284, 60 }, { 283, 60 } }), inwards);
    EXPECT_EQ(pixels({ { 160, 43 }, { 160, 44 }, { 160, 45 } }), inwards);
    EXPECT_EQ(pixels({ { 160, 138 }, { 160, 137 }, { 160, 136 } }), inwards);
}

TEST_F(MainWindow, NothingOfTheTitleLeavesItsPanel)
{
    Start();
    const Frame stopped = Screen();
    AddSong("wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww.mp3", 30);
    Press(VK_RETURN);
    Advance(30);
    const Frame playing = Screen();
    EXPECT_EQ(Differences(stopped, playing, { 0, 45, 34, 115 }), 0);
    EXPECT_EQ(Differences(stopped, playing, { 284, 45, 320, 115 }), 0);
    EXPECT_GT(Differences(stopped, playing, kTitleArea), 100);
}

TEST_F(MainWindow, AMissingSkinLeavesBlankFacesAndAWorkingPlayer)
{
    cardsong::kernel::DeviceTree bare;
    bare.userDirectory = m_device.UserDirectory();
    bare.systemDirectory = m_device.SystemDirectory();
    bare.cardDirectory = m_device.CardDirectory();
    std::filesystem::create_directories(m_device.SystemDirectory() + "/Windows");
    std::filesystem::copy(std::string(CARDSONG_DEVICE_TREE) + "/Windows/cardsong.resources.dll",
                          m_device.SystemDirectory() + "/Windows/cardsong.resources.dll");
    cardsong::kernel::InstallDeviceTree(bare);
    Start();
    ASSERT_TRUE(IsWindow(m_window));
    EXPECT_EQ(g_hStringModule, nullptr);
    AddSong("a.mp3", 30);
    Tap(kPlayKey);
    Advance(10);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_elapsedText), "0:01");
}

TEST_F(MainWindow, ExitWritesThePlayListAndEndsTheProgram)
{
    Start();
    AddSong("a.mp3", 30.9);
    AddSong("b.mp3", 20);
    Press(VK_RETURN);
    Press(VK_F24);
    EXPECT_TRUE(m_hasQuit);
    EXPECT_FALSE(IsWindow(m_window));
    EXPECT_EQ(m_device.ReadFile("user/Windows/play_list.txt"), Record(1, "a.mp3", "30") + Record(2, "b.mp3", "0"));
    EXPECT_EQ(PlayList.GetCount(), 0);
    EXPECT_EQ(LiveSimulatedGraphs(), 0);
}

TEST_F(MainWindow, TheExitKeyOnTheScreenExits)
{
    Start();
    Tap(kExitKey);
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(MainWindow, TheNextStartHasTheSavedPlayListButNotSongsThatAreGone)
{
    m_device.WriteFile("card/a.mp3", "x");
    m_device.WriteFile("card/c.mp3", "x");
    m_device.WriteFile("user/Windows/play_list.txt",
                       Record(1, "a.mp3", "215") + Record(2, "gone.mp3", "9") + Record(3, "c.mp3", "7"));
    Start();
    ASSERT_EQ(PlayList.GetCount(), 2);
    EXPECT_DOUBLE_EQ(SongList(PlayList).At(0).duration, 215);
    Press(VK_RETURN);
    EXPECT_EQ(Narrow(g_titleText), "01.a");
}

TEST_F(MainWindow, MassStorageModeEndsThePlayer)
{
    Start();
    PostMessageW(HWND_BROADCAST, g_msgMassStorage, 0, 0);
    Pump();
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(MainWindow, UpAndDownOnADeviceWithoutAudioSettingsDoNothing)
{
    Start();
    AddSong("a.mp3", 30);
    Press(VK_RETURN);
    Press(VK_UP);
    Press(VK_DOWN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(GetFocus(), m_window);
}

TEST_F(MainWindow, ClosingTheWindowFromOutsideIsAnExitToo)
{
    Start();
    DestroyWindow(m_window);
    Pump();
    EXPECT_TRUE(m_hasQuit);
}

class MainWindowInLanguage : public PlayerTest, public ::testing::WithParamInterface<LANGID> {};

TEST_P(MainWindowInLanguage, TheSoftKeysShowCaptions)
{
    UseLanguage(GetParam());
    Start();
    ASSERT_NE(g_hStringModule, nullptr);
    const Frame frame = Screen();
    // White pixels of a caption on each of the two captioned keys; none on the row's edges, so that nothing is cut.
    for (const LONG left : { 0, 106 }) {
        int white = 0;
        for (LONG y = 210; y < 240; ++y)
            for (LONG x = left + 4; x < left + 102; ++x)
                white += PixelOf(frame, x, y) == 0xFFFF ? 1 : 0;
        EXPECT_GT(white, 30) << "key at " << left;
        for (LONG y = 210; y < 240; ++y) {
            EXPECT_NE(PixelOf(frame, left + 3, y), 0xFFFF);
            EXPECT_NE(PixelOf(frame, left + 102, y), 0xFFFF);
        }
    }
}

TEST_F(MainWindow, TheSoftKeysAreWrittenIn14PointsInChinese)
{
    UseLanguage(0x0404);
    Start();
    const Frame frame = Screen();
    LONG first = 320;
    LONG last = 0;
    for (LONG y = 210; y < 240; ++y) {
        for (LONG x = 110; x < 208; ++x) {
            if (PixelOf(frame, x, y) == 0xFFFF) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    constexpr LONG kCharacterPx = 14 * 96 / 72;
    const auto count = static_cast<LONG>(WString(g_controls.softKeys.Find(24)->Caption()).size());
    // Characters leave a little room at their sides; those of one point more would be wider.
    EXPECT_LE(last - first + 1, count * kCharacterPx);
    EXPECT_GE(last - first + 1, count * kCharacterPx - 6);
}

INSTANTIATE_TEST_SUITE_P(Languages, MainWindowInLanguage,
                         ::testing::Values(LANGID{ 0x0404 }, LANGID{ 0x0804 }, LANGID{ 0x0409 }));
