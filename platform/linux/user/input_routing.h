// Which thread, and which of its windows, an input is meant for.
#pragma once

#include "platform/linux/user/hit_test.h"

namespace cardsong::user {

// The thread whose queue gets what the pointer does at that point of the screen; null: nobody.
std::shared_ptr<ThreadQueue> PointerReceiver(const Desktop& desktop, POINT at);
// The topmost window that the program shows and that no other window owns; null when it shows none.
HWND ProgramWindow(const Desktop& desktop);
// The window that the event is meant for, as far as the queue's thread can tell.
Target FindTarget(const std::shared_ptr<ThreadQueue>& queue, const InputEvent& event);
// What is meant for no window of this thread leaves the queue, to the thread that has the window if there is one.
void PassOn(ThreadQueue& queue, const InputEvent& event, const Target& target);
// Takes the event out of the queue; false when it has gone while windows were asked.
bool RemoveEvent(ThreadQueue& queue, std::uint64_t number);

} // namespace cardsong::user
