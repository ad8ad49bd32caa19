// The player's window procedures behind one of ours, which turns what a message carries into the device's pixels.
#pragma once

#include "platform/ce.h"

namespace cardsong::screen {

// The procedure of every class that the player registers while the screen is set up.
LRESULT CALLBACK PlayersProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Registers a class whose windows have the procedure that `windowClass` names behind ours.
ATOM RegisterPlayersClass(const WNDCLASSW& windowClass);
// Puts a procedure of the player's in front of a window's; returns the one that was there.
LONG_PTR ReplaceProcedure(HWND window, WNDPROC procedure);

// While an object made with `comes` true lives, the player's next window on this thread becomes the screen's.
class ScreenWindowComes {
public:
    explicit ScreenWindowComes(bool comes);
    ~ScreenWindowComes();
    ScreenWindowComes(const ScreenWindowComes&) = delete;
    ScreenWindowComes& operator=(const ScreenWindowComes&) = delete;
};

// Asks the player to end; it saves what it has to save. Any thread, also before there is a window.
void PressExitKey();
// A key, as if it were struck: to the window that has the focus. False while there is no window.
bool PressKey(UINT key);

} // namespace cardsong::screen
