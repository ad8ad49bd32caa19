#include "platform/linux/display/threaded_display.h"

#include "platform/linux/kernel/start_trace.h"
#include "platform/linux/user/input.h"

#include <unistd.h>
#include <utility>

namespace cardsong::display {

std::string ThreadedDisplay::Start()
{
    // Frames may be finished while the window is still opening; the last of them is shown as soon as it is there.
    user::InstallPresenter([this] { FrameReady(); });
    user::InstallRaiser([this] {
        m_isToRise = true;
        m_wait.WakeUp();
    });
    m_thread = std::thread([this] { Run(); });
    switch (AwaitEndOf(State::Opening)) {
    case State::Open: return {};
    case State::Closed: Stop(); return m_trouble;
    default: return "the display went away";
    }
}

void ThreadedDisplay::Stop()
{
    if (!m_thread.joinable())
        return;
    user::InstallPresenter({});
    user::InstallRaiser({});
    m_stops = true;
    m_wait.WakeUp();
    if (AwaitEndOf(State::Open) != State::LostWithinCall) {
        m_thread.join();
        return;
    }
    Abandon();
    m_thread.detach(); // it stands still until the process ends
}

bool ThreadedDisplay::IsLost() const
{
    const std::lock_guard lock(m_mutex);
    return m_state == State::Lost || m_state == State::LostWithinCall;
}

void ThreadedDisplay::FrameReady()
{
    if (m_box.Post())
        m_wait.WakeUp();
}

// A thread that stands still does not touch the object afterwards: its owner may destroy it as soon as the lock is
// free.
void ThreadedDisplay::Enter(State state)
{
    const std::lock_guard lock(m_mutex);
    m_state = state;
    m_stateChanged.notify_all();
}

ThreadedDisplay::State ThreadedDisplay::AwaitEndOf(State state)
{
    std::unique_lock lock(m_mutex);
    m_stateChanged.wait(lock, [&] { return m_state != state; });
    return m_state;
}

void ThreadedDisplay::LoseHere()
{
    user::PressExitKey();
    Enter(State::LostWithinCall);
    for (;;)
        pause();
}

void ThreadedDisplay::Run()
{
    m_trouble = Open();
    bool isLost = false;
    if (m_trouble.empty()) {
        Enter(State::Open);
        isLost = !HandleUntilStopped();
    }
    if (isLost)
        user::PressExitKey();
    Close();
    Enter(isLost ? State::Lost : State::Closed);
}

bool ThreadedDisplay::HandleUntilStopped()
{
    while (!m_stops) {
        if (m_isToRise.exchange(false))
            Raise();
        const bool handled = HandleEvents();
        const bool shown = ShowFrame();
        // Drawing may make a library read events, too. No wait ends for them: only another look finds them.
        if (!handled && !shown && !Wait(m_wait))
            return false;
    }
    return true;
}

bool ThreadedDisplay::ShowFrame()
{
    if (!CanShow() || !m_box.Take(m_next))
        return false;
    Show(m_next);
    if (!std::exchange(m_hasShown, true))
        kernel::TraceStart("first frame");
    return true;
}

} // namespace cardsong::display
