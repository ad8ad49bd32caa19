// A Wayland display before a compositor for tests, with hands for the compositor's part.
#pragma once

#include "platform/linux/display/display.h"
#include "tests/platform/display/recorded_input.h"
#include "tests/platform/display/screen_painter.h"
#include "tests/platform/display/test_compositor.h"

#include <gtest/gtest.h>

#include <memory>

namespace cardsong::test {

using Log = std::vector<std::string>;

class WaylandStage {
public:
    explicit WaylandStage(const CompositorOffer& offer = {}, const display::DisplayOptions& options = { 2, false })
        : compositor(offer),
          display((ResetRecordedInput(), display::MakeWaylandDisplay(options, compositor.SocketPath())))
    {
        EXPECT_EQ(display->Start(), "");
    }
    ~WaylandStage() { display->Stop(); }
    WaylandStage(const WaylandStage&) = delete;
    WaylandStage& operator=(const WaylandStage&) = delete;

    // The player finishes a frame of one colour; see AwaitCommits for what becomes of it.
    void Paint(COLORREF color, RECT rect = { 0, 0, 320, 240 })
    {
        painter.Fill(rect, color);
        EXPECT_TRUE(PresentFrame());
    }
    // The window shows its first frame, and the player has been told that it is active.
    void Appear()
    {
        Paint(RGB(0, 0, 255));
        AwaitCommits(1);
        before = WaitForInput(1).size();
    }
    void AwaitCommits(int count)
    {
        EXPECT_TRUE(compositor.Await([count](const CompositorState& state) { return state.commits >= count; }));
    }
    // Returns when the display has seen all that it was sent.
    void AwaitAnswer()
    {
        std::uint32_t serial = 0;
        compositor.With([&](CompositorState& state) { serial = state.Ping(); });
        EXPECT_TRUE(compositor.Await([serial](const CompositorState& state) { return state.pongSerial == serial; }));
    }
    // What the player heard since the window appeared.
    Log Heard()
    {
        AwaitAnswer();
        Log log = RecordedInput();
        log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(std::min(before, log.size())));
        return log;
    }

    TestCompositor compositor;
    std::unique_ptr<display::Display> display;
    ScreenPainter painter;
    std::size_t before = 0;
};

} // namespace cardsong::test
