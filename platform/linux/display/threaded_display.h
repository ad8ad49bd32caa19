// What every display with a thread of its own has in common: its life, and the road of a frame. Knows no library.
#pragma once

#include "platform/linux/display/display.h"
#include "platform/linux/display/event_wait.h"
#include "platform/linux/display/frame.h"

#include <atomic>
#include <condition_variable>
#include <thread>

namespace cardsong::display {

// The destructor of a class derived from it calls Stop. The display's thread alone calls what such a class overrides,
// but for Abandon.
class ThreadedDisplay : public Display {
public:
    std::string Start() final;
    void Stop() final;
    bool IsLost() const final;
    void FrameReady() final;

protected:
    // An empty text, or why it cannot be opened. Close follows in both cases.
    [[nodiscard]] virtual std::string Open() = 0;
    virtual void Close() = 0;
    // Looks at what the server has sent so far; false when that was nothing.
    virtual bool HandleEvents() = 0;
    // Whether Show would show a frame now. Until then the newest one is kept.
    virtual bool CanShow() const { return true; }
    // Shows `frame` and leaves any other in exchange.
    virtual void Show(Frame& frame) = 0;
    // Brings the window before those of other programs, as far as the desktop allows.
    virtual void Raise() = 0;
    // Returns when there may be something to do; false when the server is gone.
    [[nodiscard]] virtual bool Wait(EventWait& wait) = 0;
    // Forgets the window of a server that is gone without closing it. Any thread; only after LoseHere.
    virtual void Abandon() {}
    // For a thread that found its server dead within a call of its library, which must neither go on nor end the
    // process: it stands still while the player saves what it has to save and ends.
    [[noreturn]] void LoseHere();

private:
    enum class State { Opening, Open, Closed, Lost, LostWithinCall };

    void Run();
    // False when the server is gone.
    bool HandleUntilStopped();
    bool ShowFrame();
    void Enter(State state);
    State AwaitEndOf(State state);

    std::thread m_thread;
    mutable std::mutex m_mutex; // guards the state
    std::condition_variable m_stateChanged;
    State m_state = State::Opening;
    std::string m_trouble; // why it could not be opened; written before the state says so
    std::atomic<bool> m_stops = false;
    std::atomic<bool> m_isToRise = false;
    EventWait m_wait;
    FrameBox m_box;
    Frame m_next; // the display's thread only, as the next one
    bool m_hasShown = false;
};

} // namespace cardsong::display
