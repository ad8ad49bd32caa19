// The screen as the user has it: shows finished frames and turns touch and keys into input. Knows no window and no
// library behind it.
#pragma once

#include "platform/desktop_keys.h"
#include "platform/host/viewport.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace cardsong::display {

struct DisplayOptions {
    int scale = 0; // size of one of the screen's pixels; 0: as fits the desktop comfortably
    bool fullScreen = false;
    DesktopKeys keys = {};
    std::optional<host::Turn> turn = {}; // nothing: as the screen needs
};

class Display {
public:
    virtual ~Display() = default;
    // Opens the display and has finished frames reported to it. Returns an empty text, or one line that says why it
    // cannot be opened. Call it once. Another thread may go on with the program's start meanwhile.
    [[nodiscard]] virtual std::string Start() = 0;
    // Closes it; no call reaches the display any more. Harmless when it never started.
    virtual void Stop() = 0;
    // Whether it went away by itself while it was open: its server ended. It asked the player to end then. Any thread.
    virtual bool IsLost() const = 0;
    // A drawing thread has finished a frame. Quick, any thread; a frame like the one before costs nothing.
    virtual void FrameReady() = 0;
};

// A window, the full screen or a bare screen, on a thread of its own; on the desktop that the user is at. Make it
// before any other thread runs.
std::unique_ptr<Display> MakeDesktopDisplay(const DisplayOptions& options);

// The kinds of it. On X11 and bare screens:
std::unique_ptr<Display> MakeSdlDisplay(const DisplayOptions& options);
// On Wayland; `name` is that of the compositor's socket in XDG_RUNTIME_DIR, or its whole path. Start gives a compositor
// `answerLimitMs` for each of its two answers.
constexpr int kWaylandAnswerLimitMs = 5000;
std::unique_ptr<Display> MakeWaylandDisplay(const DisplayOptions& options, const std::string& name,
                                            int answerLimitMs = kWaylandAnswerLimitMs);

} // namespace cardsong::display
