// What mice, touch screens and keyboards of a Wayland desktop do.
#include "tests/platform/display/keymap_file.h"
#include "tests/platform/display/wayland_stage.h"

#include <linux/input-event-codes.h>
#include <wayland-server.h>

namespace {

using namespace cardsong::test;
using cardsong::display::DisplayOptions;

constexpr cardsong::CommandKey kCommands[] = {
    { 260, "Stop", { { "S" } } },
    { 257, "Back5", { { "," } }, cardsong::WhenKeyIsHeld::ActsAgain },
};
constexpr cardsong::TapKey kTaps[] = { { { 3, 4 }, { { "1" } } } };
constexpr DisplayOptions kInWindow = { 2, false, { TEXT("Main"), kCommands, kTaps } };
constexpr DisplayOptions kFullScreen = { 0, true, { TEXT("Main"), kCommands, kTaps } };
constexpr std::uint32_t kPointer = 1;
constexpr std::uint32_t kTouch = 4;

class WaylandInputs : public testing::Test {
protected:
    void Open(const CompositorOffer& offer = {}, const DisplayOptions& options = kInWindow)
    {
        stage = std::make_unique<WaylandStage>(offer, options);
        stage->Appear();
    }
    void With(const std::function<void(CompositorState&)>& act) { stage->compositor.With(act); }

    void PointAt(double x, double y)
    {
        With([&](const CompositorState& state) {
            wl_pointer_send_enter(state.pointer, state.NextSerial(), state.surface, wl_fixed_from_double(x),
                                  wl_fixed_from_double(y));
        });
    }
    void MoveTo(double x, double y)
    {
        With([&](const CompositorState& state) {
            wl_pointer_send_motion(state.pointer, 0, wl_fixed_from_double(x), wl_fixed_from_double(y));
        });
    }
    void Click(std::uint32_t button, bool isDown)
    {
        With([&](const CompositorState& state) {
            wl_pointer_send_button(state.pointer, state.NextSerial(), 0, button, isDown ? 1 : 0);
        });
    }
    void FingerDown(int finger, double x, double y)
    {
        With([&](const CompositorState& state) {
            wl_touch_send_down(state.touch, state.NextSerial(), 0, state.surface, finger, wl_fixed_from_double(x),
                               wl_fixed_from_double(y));
            wl_touch_send_frame(state.touch);
        });
    }
    void FingerMove(int finger, double x, double y)
    {
        With([&](const CompositorState& state) {
            wl_touch_send_motion(state.touch, 0, finger, wl_fixed_from_double(x), wl_fixed_from_double(y));
        });
    }
    void FingerUp(int finger)
    {
        With([&](const CompositorState& state) { wl_touch_send_up(state.touch, state.NextSerial(), 0, finger); });
    }
    // `repeatPerSecond` 0: no key repeats.
    void BringKeyboard(const char* layouts = "us", int repeatPerSecond = 0, int repeatDelayMs = 0)
    {
        const KeymapFile keymap(layouts);
        With([&](const CompositorState& state) {
            wl_keyboard_send_keymap(state.keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, keymap.File(),
                                    keymap.SizeBytes());
            wl_keyboard_send_repeat_info(state.keyboard, repeatPerSecond, repeatDelayMs);
        });
        EnterKeyboard();
    }
    void EnterKeyboard()
    {
        With([&](const CompositorState& state) {
            wl_array none;
            wl_array_init(&none);
            wl_keyboard_send_enter(state.keyboard, state.NextSerial(), state.surface, &none);
        });
    }
    void Key(std::uint32_t key, bool isDown)
    {
        With([&](const CompositorState& state) {
            wl_keyboard_send_key(state.keyboard, state.NextSerial(), 0, key, isDown ? 1 : 0);
        });
    }
    void Strike(std::uint32_t key)
    {
        Key(key, true);
        Key(key, false);
    }
    Log Heard() { return stage->Heard(); }
    // The next that the player hears, and no more of it.
    Log HeardFirst(std::size_t count)
    {
        Log log = WaitForInput(stage->before + count);
        log.resize(std::min(log.size(), stage->before + count));
        log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(stage->before));
        return log;
    }

    std::unique_ptr<WaylandStage> stage;
};

TEST_F(WaylandInputs, TheMouseTapsInTheDevicesPixels)
{
    Open();
    PointAt(639.9, 479.9);
    Click(BTN_LEFT, true);
    MoveTo(100.5, 50);
    MoveTo(-5, 1000);
    Click(BTN_LEFT, false);
    EXPECT_EQ(Heard(), (Log{ "down 319,239", "move 50,25", "move 0,239", "up 0,239" }));
}

TEST_F(WaylandInputs, AMouseThatOnlyMovesIsSilent)
{
    Open();
    PointAt(5, 5);
    MoveTo(100, 50);
    Click(BTN_MIDDLE, true);
    Click(BTN_MIDDLE, false);
    With([](const CompositorState& state) { wl_pointer_send_axis(state.pointer, 0, 0, 5000); });
    EXPECT_EQ(Heard(), Log{});
}

TEST_F(WaylandInputs, TheMouseTapsTheSamePlaceOnAScreenWithMorePixels)
{
    Open({ .scale = 2 });
    PointAt(2.5, 1.9);
    Click(BTN_LEFT, true);
    Click(BTN_LEFT, false);
    EXPECT_EQ(Heard(), (Log{ "down 1,0", "up 1,0" }));
}

TEST_F(WaylandInputs, TapsFollowAPictureThatIsTurned)
{
    Open({}, { .scale = 1, .turn = cardsong::host::Turn::Quarter });
    FingerDown(1, 239, 0); // the picture's top left
    FingerMove(1, 239, 10);
    FingerUp(1);
    EXPECT_EQ(Heard(), (Log{ "down 0,0", "move 10,0", "up 10,0" }));
}

TEST_F(WaylandInputs, AMouseThatIsTakenAwayLetsGo)
{
    Open();
    PointAt(10, 10);
    Click(BTN_LEFT, true);
    With([](const CompositorState& state) { wl_pointer_send_leave(state.pointer, state.NextSerial(), state.surface); });
    EXPECT_EQ(Heard(), (Log{ "down 5,5", "up 5,5" }));
    PointAt(20, 20);
    Click(BTN_LEFT, true);
    With([](const CompositorState& state) { wl_seat_send_capabilities(state.seat, kTouch); });
    EXPECT_EQ(Heard(), (Log{ "down 5,5", "up 5,5", "down 10,10", "up 10,10" }));
    With([](const CompositorState& state) { EXPECT_EQ(state.pointer, nullptr); });
}

TEST_F(WaylandInputs, AMouseThatIsPluggedInLaterTaps)
{
    Open({ .capabilities = 0 });
    With([](const CompositorState& state) {
        EXPECT_EQ(state.pointer, nullptr);
        wl_seat_send_capabilities(state.seat, kPointer);
    });
    EXPECT_TRUE(stage->compositor.Await([](const CompositorState& state) { return state.pointer != nullptr; }));
    PointAt(10, 10);
    Click(BTN_LEFT, true);
    EXPECT_EQ(Heard(), (Log{ "down 5,5" }));
}

TEST_F(WaylandInputs, TheSecondButtonOpensTheDesktopsMenuWhereThereIsNoFrame)
{
    Open({ .without = { "zxdg_decoration_manager_v1" } });
    PointAt(10, 10);
    Click(BTN_RIGHT, true);
    Click(BTN_RIGHT, false);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.menusAsked, 1); });
}

TEST_F(WaylandInputs, TheSecondButtonDoesNothingInAFrame)
{
    Open();
    PointAt(10, 10);
    Click(BTN_RIGHT, true);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.menusAsked, 0); });
}

TEST_F(WaylandInputs, TheArrowIsShownInAWindow)
{
    Open();
    PointAt(1, 1);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) {
        EXPECT_EQ(state.cursorsShown, 1);
        EXPECT_EQ(state.cursorsHidden, 0);
    });
}

TEST_F(WaylandInputs, TheArrowIsHiddenOnTheFullScreenUntilTheMouseMoves)
{
    Open({ .windowSize = { 640, 480 } }, kFullScreen);
    PointAt(1, 1);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) {
        EXPECT_EQ(state.cursorsShown, 0);
        EXPECT_EQ(state.cursorsHidden, 1);
    });
    MoveTo(2, 2);
    MoveTo(3, 3);
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) { EXPECT_EQ(state.cursorsShown, 1); });
}

TEST_F(WaylandInputs, OnlyTheFirstFingerCounts)
{
    Open();
    FingerDown(4, 320, 240);
    FingerDown(5, 10, 10);
    FingerMove(5, 20, 20);
    FingerUp(5);
    FingerMove(4, 480, 120);
    FingerUp(4);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "move 240,60", "up 240,60" }));
}

TEST_F(WaylandInputs, ATouchThatTheDesktopTakesForItselfEndsWhereItWas)
{
    Open();
    FingerDown(4, 320, 240);
    With([](const CompositorState& state) { wl_touch_send_cancel(state.touch); });
    FingerDown(4, 2, 2);
    FingerUp(4);
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "up 160,120", "down 1,1", "up 1,1" }));
}

TEST_F(WaylandInputs, ATouchScreenThatIsPulledOutLetsGo)
{
    Open();
    FingerDown(4, 320, 240);
    With([](const CompositorState& state) { wl_seat_send_capabilities(state.seat, kPointer); });
    EXPECT_EQ(Heard(), (Log{ "down 160,120", "up 160,120" }));
}

TEST_F(WaylandInputs, FingersAnywhereInTheWorldAreHarmless)
{
    Open();
    With([](const CompositorState& state) {
        wl_touch_send_down(state.touch, 0, 0, state.surface, -1, INT32_MIN, INT32_MAX);
        wl_touch_send_motion(state.touch, 0, -1, INT32_MAX, INT32_MIN);
        wl_touch_send_up(state.touch, 0, 0, -7);
        wl_touch_send_up(state.touch, 0, 0, -1);
    });
    EXPECT_EQ(Heard(), Log{});
}

TEST_F(WaylandInputs, KeysBecomeTheDevicesKeys)
{
    Open();
    BringKeyboard();
    for (const std::uint32_t key : { KEY_ENTER, KEY_KPENTER, KEY_SPACE, KEY_PLAYPAUSE, KEY_LEFT, KEY_PREVIOUSSONG,
                                     KEY_RIGHT, KEY_NEXTSONG, KEY_UP, KEY_DOWN, KEY_ESC, KEY_Q, KEY_F24, KEY_TAB })
        Strike(key);
    Log expected;
    for (const int code : { 13, 13, 13, 13, 37, 37, 39, 39, 38, 40, 135, 135, 135, 9 }) {
        expected.push_back("key+ " + std::to_string(code));
        expected.push_back("key- " + std::to_string(code));
    }
    EXPECT_EQ(Heard(), expected);
}

TEST_F(WaylandInputs, KeysOfTheProgramBecomeCommandsAndTaps)
{
    Open();
    BringKeyboard();
    for (const std::uint32_t key : { KEY_S, KEY_1, KEY_F2, KEY_X })
        Strike(key);
    EXPECT_EQ(Heard(), (Log{ "command 260 to Main", "tap 3,4 in front of Main", "bottom button 2" }));
}

TEST_F(WaylandInputs, ShiftAndCapsLockChangeNoKey)
{
    Open();
    BringKeyboard();
    With([](const CompositorState& state) { wl_keyboard_send_modifiers(state.keyboard, 0, 1, 0, 2, 0); });
    Strike(KEY_S);
    Strike(KEY_1);
    EXPECT_EQ(Heard(), (Log{ "command 260 to Main", "tap 3,4 in front of Main" }));
}

TEST_F(WaylandInputs, AKeyKeepsItsNameWhenTheUserSwitchesToAnotherScript)
{
    Open();
    BringKeyboard("us,ru");
    With([](const CompositorState& state) { wl_keyboard_send_modifiers(state.keyboard, 0, 0, 0, 0, 1); });
    Strike(KEY_S);
    EXPECT_EQ(Heard(), (Log{ "command 260 to Main" }));
}

TEST_F(WaylandInputs, AHeldKeyRepeatsAsFastAsTheDesktopSays)
{
    Open();
    BringKeyboard("us", 1000, 1);
    Key(KEY_COMMA, true);
    EXPECT_EQ(HeardFirst(4), Log(4, "command 257 to Main"));
    Key(KEY_COMMA, false);
    stage->AwaitAnswer();
    const std::size_t count = RecordedInput().size();
    Strike(KEY_S);
    stage->AwaitAnswer();
    EXPECT_EQ(RecordedInput().size(), count + 1); // it has stopped
}

TEST_F(WaylandInputs, AModifierDoesNotRepeat)
{
    Open();
    BringKeyboard("us", 1000, 0);
    Key(KEY_LEFTSHIFT, true);
    Key(KEY_RIGHT, true);
    EXPECT_EQ(HeardFirst(4), (Log{ "key+ 16", "key+ 39", "key+ 39", "key+ 39" }));
}

TEST_F(WaylandInputs, HeldKeysGoUpWhenTheKeyboardTurnsToAnotherWindow)
{
    Open();
    BringKeyboard("us", 1000, 600000);
    Key(KEY_LEFT, true);
    Key(KEY_RIGHT, true);
    With([](const CompositorState& state) {
        wl_keyboard_send_leave(state.keyboard, state.NextSerial(), state.surface);
    });
    Key(KEY_LEFT, false); // meant for another, and heard by mistake
    EXPECT_EQ(Heard(), (Log{ "key+ 37", "key+ 39", "key- 37", "key- 39" }));
}

TEST_F(WaylandInputs, TheWindowIsActiveWithAKeyboardOrWhenTheDesktopSaysSo)
{
    Open();
    BringKeyboard();
    With([](CompositorState& state) { state.Configure({}, {}); });
    EXPECT_EQ(Heard(), Log{});
    With([](const CompositorState& state) {
        wl_keyboard_send_leave(state.keyboard, state.NextSerial(), state.surface);
    });
    EXPECT_EQ(Heard(), Log{ "inactive" });
    EnterKeyboard();
    EXPECT_EQ(Heard(), (Log{ "inactive", "active" }));
    With([](const CompositorState& state) { wl_seat_send_capabilities(state.seat, kPointer); });
    EXPECT_EQ(Heard(), (Log{ "inactive", "active", "inactive" }));
}

TEST_F(WaylandInputs, AKeymapThatMakesNoSenseLeavesTheKeysWithoutAName)
{
    Open();
    BringKeyboard();
    const KeymapFile good("us");
    const KeymapFile garbage(std::string("xkb_keymap { what? };"));
    const std::pair<int, std::uint32_t> maps[] = {
        { good.File(), 0 },          { good.File(), good.SizeBytes() + 1 },
        { good.File(), 0xFFFFFFFF }, { good.File(), 100 },
        { good.File(), 4u << 20 },   { garbage.File(), garbage.SizeBytes() },
    };
    for (const auto& [file, sizeBytes] : maps) {
        With([file = file, sizeBytes = sizeBytes](const CompositorState& state) {
            wl_keyboard_send_keymap(state.keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, sizeBytes);
        });
        Strike(KEY_S);
        EXPECT_EQ(Heard(), Log{}) << sizeBytes;
    }
}

TEST_F(WaylandInputs, KeysThatNoKeyboardHasAreSilent)
{
    Open();
    BringKeyboard();
    for (const std::uint32_t key : { 0U, 0x7FFFU, 0xFFFFFFF7U, 0xFFFFFFFFU })
        Strike(key);
    EXPECT_EQ(Heard(), Log{});
}

} // namespace
