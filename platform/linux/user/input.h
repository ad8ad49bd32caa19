// What the display tells the windows: taps, keys, activation. Every function may be called from any thread and returns
// at once; the message reaches the queue of the thread that owns the window concerned.
#pragma once

#include "platform/linux/ce/types.h"

#include <functional>

namespace cardsong::user {

// Screen pixels. Hit-tests, honours capture and disabled windows, activates the top-level window tapped.
void PointerDown(POINT at);
void PointerMove(POINT at);
void PointerUp(POINT at);
// `key`: a virtual key code (VK_...). Goes to the focus window of the foreground queue. A key that goes down again
// without having gone up is told as repeated.
void KeyDown(UINT key);
void KeyUp(UINT key);
// Strikes the key that asks the player to end; it saves what it has to save. Heard while the display is inactive, too,
// and before there is a window. What other threads than the program's own show, such as an alert, is closed: it would
// swallow the key.
void PressExitKey();
// The display's own window gained or lost the foreground among the machine's programs.
void SetDisplayActive(bool active);

// Called on a thread that has windows or draws, each time that a complete frame may be shown: before it sleeps, waits
// or ends, when it finds no message, and after UpdateWindow once none of its windows owes a paint. Never while a window
// is half painted. The windows are locked meanwhile: `presenter` must be quick and must not call them. It does not run
// any more once another is installed; empty: nobody looks.
void InstallPresenter(std::function<void()> presenter);

// Called when the program asks for the foreground: `raiser` is to bring the display's own window before those of the
// machine's other programs. The windows are locked meanwhile: it must be quick and must not call them. Empty: nobody
// does.
void InstallRaiser(std::function<void()> raiser);

// Destroys every window, class, timer and queue: between tests.
void ResetWindows();

} // namespace cardsong::user
