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
// The display's own window gained or lost the foreground among the machine's programs.
void SetDisplayActive(bool active);

// Called on the drawing thread each time it is about to wait for a message (and in UpdateWindow-only stretches before a
// sleep): the frame may be shown now. `presenter` must be quick and thread-safe; empty: nobody looks.
void InstallPresenter(std::function<void()> presenter);

// Destroys every window, class, timer and queue: between tests.
void ResetWindows();

} // namespace cardsong::user
