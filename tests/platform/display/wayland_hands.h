// What a test does with the mice, touch screens and keyboards of a Wayland desktop.
#pragma once

#include "tests/platform/display/keymap_file.h"
#include "tests/platform/display/wayland_stage.h"

#include <linux/input-event-codes.h>
#include <wayland-server.h>

namespace cardsong::test {

inline constexpr CommandKey kCommands[] = {
    { 260, "Stop", { { "S" } } },
    { 257, "Back5", { { "," } }, WhenKeyIsHeld::ActsAgain },
};
inline constexpr TapKey kTaps[] = { { { 3, 4 }, { { "1" } } } };
inline constexpr display::DisplayOptions kInWindow = { 2, false, { TEXT("Main"), kCommands, kTaps } };
inline constexpr display::DisplayOptions kFullScreen = { 0, true, { TEXT("Main"), kCommands, kTaps } };
inline constexpr std::uint32_t kPointer = 1;
inline constexpr std::uint32_t kTouch = 4;

class WaylandInputs : public testing::Test {
protected:
    void Open(const CompositorOffer& offer = {}, const display::DisplayOptions& options = kInWindow)
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

} // namespace cardsong::test
