// The moments at which a thread sleeps or waits, for a room above this one that has something to do there.
#pragma once

namespace cardsong::kernel {

// Called on the thread that is about to wait and that has waited, with no lock of this room held.
struct RestHooks {
    void (*begin)();
    void (*end)();
};

// Puts `hooks` (borrowed for ever) in force for all threads.
void InstallRestHooks(const RestHooks& hooks);

// Stands around a wait of the calling thread.
class Rest {
public:
    Rest();
    ~Rest();
    Rest(const Rest&) = delete;
    Rest& operator=(const Rest&) = delete;

private:
    const RestHooks* const m_hooks;
};

} // namespace cardsong::kernel
