#include "platform/linux/display/display.h"
#include "tests/platform/display/recorded_input.h"
#include "tests/platform/display/screen_painter.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

using namespace cardsong::test;
using cardsong::display::Display;
using cardsong::display::MakeSdlDisplay;
using Log = std::vector<std::string>;

// The window library's own stand-in for a server: windows have pixels there, and events come from the test.
constexpr cardsong::CommandKey kCommands[] = {
    { 260, "Stop", { { "S" } } },
    { 257, "Back5", { { "," } }, cardsong::WhenKeyIsHeld::ActsAgain },
};
constexpr cardsong::TapKey kTaps[] = { { { 3, 4 }, { { "1" } } } };
constexpr cardsong::DesktopKeys kKeys{ TEXT("Main"), kCommands, kTaps };

class SdlEvents : public testing::Test {
protected:
    explicit SdlEvents(const cardsong::display::DisplayOptions& options = { 2, false, kKeys })
    {
        ResetRecordedInput();
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        display = MakeSdlDisplay(options);
        EXPECT_EQ(display->Start(), "");
        SDL_Event gained{};
        gained.type = SDL_WINDOWEVENT;
        gained.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
        SDL_PushEvent(&gained);
        // Whatever the library reports of the new window comes before this.
        while (true) {
            const Log log = WaitForInput(++m_before);
            if (log.size() < m_before || log[m_before - 1] == "inactive")
                break;
        }
    }
    ~SdlEvents() override { display->Stop(); }

    static void PushKey(Uint32 type, SDL_Keycode key, bool repeats = false)
    {
        SDL_Event event{};
        event.type = type;
        event.key.keysym.sym = key;
        event.key.repeat = repeats ? 1 : 0;
        SDL_PushEvent(&event);
    }
    static void PushButton(Uint32 type, Uint8 button, int x, int y)
    {
        SDL_Event event{};
        event.type = type;
        event.button.button = button;
        event.button.x = x;
        event.button.y = y;
        SDL_PushEvent(&event);
    }
    static void PushMotion(int x, int y)
    {
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = x;
        event.motion.y = y;
        SDL_PushEvent(&event);
    }
    static void PushFinger(Uint32 type, SDL_FingerID finger, float x, float y)
    {
        SDL_Event event{};
        event.type = type;
        event.tfinger.fingerId = finger;
        event.tfinger.x = x;
        event.tfinger.y = y;
        SDL_PushEvent(&event);
    }
    // What came since the display opened, `count` entries and not one more: a key that is known marks the end.
    Log Heard(std::size_t count)
    {
        PushKey(SDL_KEYUP, SDLK_TAB);
        Log log = WaitForInput(m_before + count + 1);
        log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(std::min(m_before, log.size())));
        EXPECT_FALSE(log.empty());
        if (!log.empty()) {
            EXPECT_EQ(log.back(), "key- 9");
            log.pop_back();
        }
        return log;
    }

    std::unique_ptr<Display> display;
    std::size_t m_before = 0;
};

// Its window has 480 x 640 pixels.
class TurnedSdlEvents : public SdlEvents {
protected:
    TurnedSdlEvents() : SdlEvents({ 2, false, kKeys, cardsong::host::Turn::Quarter }) {}
};

TEST_F(TurnedSdlEvents, TheMouseMeansWhatItPointsAt)
{
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 470, 20);
    PushMotion(0, 639);
    PushMotion(-100, 10'000);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 479, 0);
    EXPECT_EQ(Heard(4), (Log{ "down 10,4", "move 319,239", "move 319,239", "up 0,0" }));
}

TEST_F(TurnedSdlEvents, AFingerMeansWhatItTouches)
{
    PushFinger(SDL_FINGERDOWN, 1, 0.5F, 0.25F);
    PushFinger(SDL_FINGERMOTION, 1, 0.0F, 0.0F);
    PushFinger(SDL_FINGERUP, 1, 1.0F, 1.0F);
    EXPECT_EQ(Heard(3), (Log{ "down 80,119", "move 0,239", "up 319,0" }));
}

TEST_F(SdlEvents, KeysBecomeTheDevicesKeys)
{
    const std::pair<SDL_Keycode, int> keys[] = {
        { SDLK_RETURN, 13 },    { SDLK_KP_ENTER, 13 }, { SDLK_LEFT, 37 },      { SDLK_UP, 38 },
        { SDLK_RIGHT, 39 },     { SDLK_DOWN, 40 },     { SDLK_SPACE, 13 },     { SDLK_ESCAPE, 135 },
        { SDLK_AUDIOPLAY, 13 }, { SDLK_F24, 135 },     { SDLK_AUDIOPREV, 37 }, { SDLK_AUDIONEXT, 39 },
    };
    Log expected;
    for (const auto& [from, to] : keys) {
        PushKey(SDL_KEYDOWN, from);
        PushKey(SDL_KEYUP, from);
        expected.push_back("key+ " + std::to_string(to));
        expected.push_back("key- " + std::to_string(to));
    }
    EXPECT_EQ(Heard(expected.size()), expected);
}

TEST_F(SdlEvents, OtherKeysAreSilent)
{
    PushKey(SDL_KEYDOWN, SDLK_x);
    PushKey(SDL_KEYUP, SDLK_s);
    EXPECT_EQ(Heard(0), Log{});
}

TEST_F(SdlEvents, RepeatedKeysPass)
{
    PushKey(SDL_KEYDOWN, SDLK_RIGHT);
    PushKey(SDL_KEYDOWN, SDLK_RIGHT, true);
    EXPECT_EQ(Heard(2), (Log{ "key+ 39", "key+ 39" }));
}

TEST_F(SdlEvents, KeysOfTheProgramBecomeCommandsAndTaps)
{
    for (const SDL_Keycode key : { SDLK_s, SDLK_1, SDLK_F2 }) {
        PushKey(SDL_KEYDOWN, key);
        PushKey(SDL_KEYUP, key);
    }
    EXPECT_EQ(Heard(3), (Log{ "command 260 to Main", "tap 3,4 in front of Main", "bottom button 2" }));
}

TEST_F(SdlEvents, AHeldKeyGivesItsCommandAgainOnlyWhereTheProgramSaysSo)
{
    for (const SDL_Keycode key : { SDLK_s, SDLK_COMMA, SDLK_F2 }) {
        PushKey(SDL_KEYDOWN, key);
        PushKey(SDL_KEYDOWN, key, true);
    }
    EXPECT_EQ(Heard(4),
              (Log{ "command 260 to Main", "command 257 to Main", "command 257 to Main", "bottom button 2" }));
}

TEST_F(SdlEvents, TheCloseButtonIsTheExitKey)
{
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
    EXPECT_EQ(Heard(1), Log{ "exit key" });
}

TEST_F(SdlEvents, TheMouseTapsInScreenPixels)
{
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 639, 479);
    PushMotion(100, 50);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, -5, 1000);
    EXPECT_EQ(Heard(3), (Log{ "down 319,239", "move 50,25", "up 0,239" }));
}

TEST_F(SdlEvents, AMouseThatOnlyMovesIsSilent)
{
    PushMotion(100, 50);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 10, 10);
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, 10, 10);
    EXPECT_EQ(Heard(0), Log{});
}

TEST_F(SdlEvents, OnlyTheFirstFingerCounts)
{
    PushFinger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    PushFinger(SDL_FINGERDOWN, 2, 0.1F, 0.1F);
    PushFinger(SDL_FINGERMOTION, 2, 0.2F, 0.2F);
    PushFinger(SDL_FINGERUP, 2, 0.2F, 0.2F);
    PushFinger(SDL_FINGERUP, 1, 0.75F, 0.25F);
    EXPECT_EQ(Heard(2), (Log{ "down 160,120", "up 240,60" }));
}

TEST_F(SdlEvents, FocusIsTheDisplaysActivity)
{
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_FOCUS_GAINED;
    SDL_PushEvent(&event);
    EXPECT_EQ(Heard(1), Log{ "active" });
}

TEST_F(SdlEvents, FramesAreTakenWhileItIsOpen)
{
    ScreenPainter painter;
    painter.Fill({ 0, 0, 320, 240 }, RGB(0, 255, 0));
    EXPECT_TRUE(PresentFrame());
    EXPECT_EQ(Heard(0), Log{});
    display->Stop();
    EXPECT_FALSE(PresentFrame());
}

class SdlCursor : public testing::Test {
protected:
    SdlCursor()
    {
        ResetRecordedInput();
        setenv("SDL_VIDEODRIVER", "dummy", 1);
    }
    static bool IsShown() { return SDL_ShowCursor(SDL_QUERY) == SDL_ENABLE; }
};

TEST_F(SdlCursor, IsShownInAWindow)
{
    const auto display = MakeSdlDisplay({ 1, false });
    ASSERT_EQ(display->Start(), "");
    EXPECT_TRUE(IsShown());
    display->Stop();
}

TEST_F(SdlCursor, IsHiddenOnTheFullScreenUntilTheMouseMoves)
{
    const auto display = MakeSdlDisplay({ 0, true });
    ASSERT_EQ(display->Start(), "");
    EXPECT_FALSE(IsShown());
    for (const Uint32 type : { SDL_MOUSEMOTION, SDL_QUIT }) { // what is heard of the second marks the end
        SDL_Event event{};
        event.type = type;
        SDL_PushEvent(&event);
    }
    std::size_t count = 1;
    while (WaitForInput(count).size() >= count && RecordedInput()[count - 1] != "exit key")
        ++count;
    EXPECT_EQ(RecordedInput().back(), "exit key");
    EXPECT_TRUE(IsShown());
    display->Stop();
}

TEST(SdlDisplay, NamesTheClassOfItsWindowUnlessTheUserDid)
{
    unsetenv("SDL_VIDEO_X11_WMCLASS");
    MakeSdlDisplay({});
    EXPECT_STREQ(getenv("SDL_VIDEO_X11_WMCLASS"), "cardsong");
    setenv("SDL_VIDEO_X11_WMCLASS", "mine", 1);
    MakeSdlDisplay({});
    EXPECT_STREQ(getenv("SDL_VIDEO_X11_WMCLASS"), "mine");
}

// The library has stand-ins that open everywhere and show nothing.
TEST(SdlDisplay, SaysWhichDisplayItCannotOpenInsteadOfShowingNothing)
{
    if (std::filesystem::exists("/dev/dri"))
        GTEST_SKIP() << "this machine has a screen that can be opened";
    unsetenv("SDL_VIDEODRIVER");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_RUNTIME_DIR");
    setenv("DISPLAY", ":4711", 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus", 1);
    testing::internal::CaptureStderr();
    const auto onX = MakeSdlDisplay({});
    EXPECT_EQ(onX->Start(), "cannot open the X display :4711");
    onX->Stop();
    unsetenv("DISPLAY");
    const auto anywhere = MakeSdlDisplay({});
    EXPECT_EQ(anywhere->Start(), "there is no display: no Wayland compositor, no X server, no screen");
    anywhere->Stop();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(SdlDisplay, SaysWhyItCannotOpen)
{
    setenv("SDL_VIDEODRIVER", "no_such_driver", 1);
    const auto display = MakeSdlDisplay({});
    EXPECT_NE(display->Start(), "");
    display->Stop();
}

} // namespace
