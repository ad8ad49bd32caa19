// Keys of a desktop's keyboard for what a device leaves to the finger. The program names them in its own commands and
// places; its host presses them.
#pragma once

#include "platform/ce.h"

#include <array>
#include <span>
#include <string_view>

namespace cardsong {

// The machine's keys that stand for something.
struct MachineKeys {
    std::array<std::string_view, 2> names = {}; // as SDL_GetKeyName calls them; the unused ones are empty
    std::array<UINT, 2> desktopCodes = {};      // virtual key codes on a Windows desktop; the unused ones are 0
};

enum class WhenKeyIsHeld { ActsOnce, ActsAgain };

// A key that gives a command to the main window, as the button of that id does: while the window is the active one, and
// the button is not disabled.
struct CommandKey {
    WORD command = 0;
    std::string_view scriptName = {}; // how input scripts call it
    MachineKeys keys = {};
    WhenKeyIsHeld whenHeld = WhenKeyIsHeld::ActsOnce;
};

// A key that taps a window in front of the main one.
struct TapKey {
    POINT place = {}; // on the screen
    MachineKeys keys = {};
};

struct DesktopKeys {
    LPCWSTR mainWindowClass = nullptr; // null: there is no main window, and no key does anything
    std::span<const CommandKey> commands = {};
    std::span<const TapKey> taps = {};
    WORD exitCommand = 0; // given to the main window by another program, it ends this one
};

// Defined by the program, as WinMain is. All that it names lives as long as the program.
[[nodiscard]] DesktopKeys ProgramDesktopKeys();

} // namespace cardsong
