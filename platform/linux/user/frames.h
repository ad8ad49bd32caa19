// When the picture is complete and the display may show it. A thread at rest sleeps or waits; while it is awake and
// holds a context, it is taken to be drawing.
#pragma once

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

// Shows the frame unless somebody is amid a picture: a paint is open, another thread draws, or a window whose painting
// has begun since the last frame still owes a part. Whoever that is shows the frame when it rests next. `self`: the
// calling thread's queue.
void ShowFrame(Desktop& desktop, const ThreadQueue& self);

// Stands around a wait of the calling thread, whose queue is `self`: shows the frame and lets others show theirs.
// Begins and ends with the desktop locked.
class AtRest {
public:
    AtRest(Desktop& desktop, ThreadQueue& self);
    ~AtRest() { m_self.isResting = false; }
    AtRest(const AtRest&) = delete;
    AtRest& operator=(const AtRest&) = delete;

private:
    ThreadQueue& m_self;
};

// Has every sleep and wait of a thread with a queue count as rest.
void WatchRests();

} // namespace cardsong::user
