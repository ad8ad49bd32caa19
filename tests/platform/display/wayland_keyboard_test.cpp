// What the keyboards of a Wayland desktop do.
#include "platform/linux/kernel/clock.h"
#include "tests/platform/display/wayland_hands.h"

namespace {

using namespace cardsong::test;

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

// A key is held, and time passes when a test says so.
class AHeldKey : public WaylandInputs {
protected:
    AHeldKey()
    {
        cardsong::kernel::InstallClock(&clock);
        Open();
        BringKeyboard("us", 20, 300);
        Key(KEY_COMMA, true);
        EXPECT_EQ(Heard(), Log{ "command 257 to Main" });
    }
    ~AHeldKey() override
    {
        stage.reset();
        cardsong::kernel::InstallClock(nullptr);
    }

    cardsong::kernel::VirtualClock clock;
};

TEST_F(AHeldKey, RestsWhenTheDesktopSwitchesItsRepeatingOff)
{
    With([](const CompositorState& state) { wl_keyboard_send_repeat_info(state.keyboard, 0, 1); });
    stage->AwaitAnswer();
    clock.Advance(1000);
    stage->AwaitAnswer();
    stage->AwaitAnswer(); // a strike would have come by now
    Strike(KEY_S);
    EXPECT_EQ(Heard(), (Log{ "command 257 to Main", "command 260 to Main" }));
}

// Time passes while the compositor hangs; fingers show how far the player has come.
class AHangingCompositor : public AHeldKey {
protected:
    AHangingCompositor() { stage->compositor.Hang(); }
    // The display has looked at the time between the two.
    void LetTimePassAndTap()
    {
        clock.Advance(1000);
        const std::size_t count = RecordedInput().size();
        FingerDown(1, 0, 0);
        WaitForInput(count + 1);
        FingerUp(1);
        EXPECT_GE(WaitForInput(count + 2).size(), count + 2);
    }
    void WakeUp()
    {
        stage->compositor.WakeUp();
        stage->AwaitAnswer(); // what it had not read is answered now
    }
};

TEST_F(AHangingCompositor, MakesNoKeyStrikeThatMayHaveGoneUp)
{
    LetTimePassAndTap();
    LetTimePassAndTap();
    Key(KEY_COMMA, false);
    WakeUp();
    EXPECT_EQ(Heard(), (Log{ "command 257 to Main", "down 0,0", "up 0,0", "down 0,0", "up 0,0" }));
}

TEST_F(AHangingCompositor, MakesAHeldKeyStrikeOnceWhenItIsBack)
{
    LetTimePassAndTap();
    LetTimePassAndTap();
    WakeUp();
    EXPECT_EQ(Heard(),
              (Log{ "command 257 to Main", "down 0,0", "up 0,0", "down 0,0", "up 0,0", "command 257 to Main" }));
    clock.Advance(50);
    stage->AwaitAnswer();
    EXPECT_EQ(HeardFirst(7).back(), "command 257 to Main");
}

TEST_F(AHangingCompositor, MakesNoKeyStrikeThatWentUpAndCameDownAgain)
{
    LetTimePassAndTap();
    Key(KEY_COMMA, false);
    Key(KEY_COMMA, true);
    WakeUp();
    EXPECT_EQ(Heard(), (Log{ "command 257 to Main", "down 0,0", "up 0,0", "command 257 to Main" }));
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
