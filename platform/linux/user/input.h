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
// The press is taken back: it ends outside every window, and so clicks nothing. What a press does at once is done.
void CancelPointer();
// `key`: a virtual key code (VK_...). Goes to the focus window of the foreground queue. A key that goes down again
// without having gone up is told as repeated.
void KeyDown(UINT key);
void KeyUp(UINT key);
// Sends the command to the active window if that is of the class `mainWindowClass`, is enabled, and its control of that
// id, if it has one, is not disabled. Comes in its turn among taps and keys.
void GiveCommand(LPCWSTR mainWindowClass, WORD command);
// Taps what stands in front of the windows of a class; nothing while one of these is active.
void TapInFrontOf(LPCWSTR mainWindowClass, POINT at);
// Taps one of the buttons along the bottom edge of the active window, counted from 1, from left to right.
void TapBottomButton(int number);
// Strikes the key that asks the player to end; it saves what it has to save. Its message counts no stroke, since no
// hand strikes it. Heard while the display is inactive, too, and before there is a window. What other threads than the
// program's own show, such as an alert, is closed, and so is what lies above another window of the program and belongs
// to it, such as a list: it would swallow the key.
void PressExitKey();
// The display's own window gained or lost the foreground among the machine's programs.
void SetDisplayActive(bool active);

// Called on a thread that has windows or draws, each time that a complete frame may be shown: before it sleeps, waits
// or ends, when it finds no message, and after UpdateWindow once none of its windows owes a paint. Never while a window
// is half painted. Called at once, too, for a frame that was finished before `presenter` came. The windows are locked
// meanwhile: it must be quick and must not call them. It does not run any more once another is installed; empty: nobody
// looks.
void InstallPresenter(std::function<void()> presenter);

// Called when the program asks for the foreground: `raiser` is to bring the display's own window before those of the
// machine's other programs. The windows are locked meanwhile: it must be quick and must not call them. Empty: nobody
// does.
void InstallRaiser(std::function<void()> raiser);

// Destroys every window, class, timer and queue: between tests.
void ResetWindows();

} // namespace cardsong::user
