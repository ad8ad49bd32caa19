// A thread's unread input: how it is kept, and how it becomes messages when the thread looks: hit tests, capture,
// activation by tap, double clicks.
#pragma once

#include "platform/linux/user/message_filter.h"

namespace cardsong::user {

// Puts the event at the end of the thread's input and wakes the thread. Moves of the pointer with nothing between them
// become one. Input is dropped while 256 events wait. Call it with the desktop locked.
void Enqueue(ThreadQueue& queue, InputEvent event);
// Keeps a key that is struck before there is a window for the first window. Up to 256 are kept.
void KeepEarlyKey(Desktop& desktop, InputEvent event);
// Gives the exit key, where the thread has not read it, to whoever keys are meant for: it is told to the program, not
// to a window. Call it with the desktop locked, when the thread has no window any more.
void PassExitKeyOn(Desktop& desktop, const ThreadQueue& queue);
// The thread's next input that `filter` allows, as a message. With `remove` it has its effects: key states, activation.
std::optional<MSG> TakeInput(const std::shared_ptr<ThreadQueue>& queue, const MessageFilter& filter, bool remove);

} // namespace cardsong::user
