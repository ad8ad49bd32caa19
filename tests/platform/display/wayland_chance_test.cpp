// Whatever a Wayland desktop sends, in any order: the window lives, and nothing that went down stays down.
#include "tests/platform/display/wayland_hands.h"

#include <map>
#include <random>

namespace {

using namespace cardsong::test;

class WaylandChance : public WaylandInputs {
protected:
    int Any(int first, int last) { return std::uniform_int_distribution(first, last)(random); }
    double AnyPlace() { return Any(-200, 5000) / 10.0; }
    std::uint32_t AnyKey()
    {
        constexpr std::uint32_t kKeys[] = { KEY_ENTER, KEY_LEFT, KEY_RIGHT, KEY_S, KEY_LEFTSHIFT, KEY_X, KEY_F24, 700 };
        return kKeys[Any(0, 7)];
    }

    void DoAnything()
    {
        switch (Any(0, 14)) {
        case 0: PointAt(AnyPlace(), AnyPlace()); break;
        case 1: MoveTo(AnyPlace(), AnyPlace()); break;
        case 2:
        case 3: Click(static_cast<std::uint32_t>(Any(BTN_LEFT, BTN_MIDDLE)), Any(0, 1) != 0); break;
        case 4: FingerDown(Any(0, 3), AnyPlace(), AnyPlace()); break;
        case 5: FingerMove(Any(0, 3), AnyPlace(), AnyPlace()); break;
        case 6: FingerUp(Any(0, 3)); break;
        case 7: EnterKeyboard(); break;
        case 8:
        case 9: Key(AnyKey(), Any(0, 1) != 0); break;
        case 10: With([this](CompositorState& state) { state.Configure({ Any(-9, 900), Any(-9, 900) }, {}); }); break;
        case 11: With([this](CompositorState& state) { wl_output_send_scale(state.output, Any(-1, 3)); }); break;
        case 12: With([](const CompositorState& state) { wl_touch_send_cancel(state.touch); }); break;
        case 13:
            With([this](const CompositorState& state) {
                wl_keyboard_send_repeat_info(state.keyboard, Any(0, 1) * 1000, Any(0, 1));
            });
            break;
        default:
            With([](const CompositorState& state) {
                wl_keyboard_send_leave(state.keyboard, state.NextSerial(), state.surface);
            });
        }
    }

    std::minstd_rand random;
};

TEST_F(WaylandChance, LeavesNothingPressed)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(seed);
        random.seed(seed);
        Open();
        BringKeyboard();
        for (int round = 0; round < 200; ++round)
            DoAnything();
        With([](CompositorState& state) { state.TakeAway("wl_seat"); });
        std::map<std::string, bool> isDown;
        for (const std::string& heard : Heard()) {
            if (heard.starts_with("down") || heard.starts_with("up") || heard == "cancel") {
                EXPECT_NE(isDown["pointer"], heard.starts_with("down"));
                isDown["pointer"] = heard.starts_with("down");
            } else if (heard.starts_with("key")) {
                isDown[heard.substr(4)] = heard[3] == '+';
            }
        }
        for (const auto& [what, down] : isDown)
            EXPECT_FALSE(down) << what;
        EXPECT_FALSE(isDown.empty());
        EXPECT_FALSE(stage->display->IsLost());
        stage.reset();
    }
}

} // namespace
