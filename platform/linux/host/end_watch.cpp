#include "platform/linux/host/end_watch.h"

#include "platform/linux/ce/messages.h"
#include "platform/linux/user/input.h"

#include <csignal>
#include <cstdlib>
#include <ctime>

namespace cardsong::host {
namespace {

constexpr int kStopSignal = SIGUSR1; // from Stop to its own thread
// A player that does not answer the exit key so often hangs, and must not keep its user.
constexpr int kPatience = 3;
constexpr int kGaveUpStatus = 130;

sigset_t WatchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : { SIGINT, SIGTERM, SIGHUP, kStopSignal })
        sigaddset(&signals, signal);
    return signals;
}

// The signal that came; -1 when the time was over first.
int WaitForSignal(double seconds)
{
    const sigset_t signals = WatchedSignals();
    if (seconds <= 0)
        return sigwaitinfo(&signals, nullptr);
    timespec limit{};
    limit.tv_sec = static_cast<std::time_t>(seconds);
    limit.tv_nsec = static_cast<long>((seconds - static_cast<double>(limit.tv_sec)) * 1e9);
    return sigtimedwait(&signals, nullptr, &limit);
}

} // namespace

EndWatch::EndWatch()
{
    const sigset_t signals = WatchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

EndWatch::~EndWatch()
{
    Stop();
}

void EndWatch::Start(double seconds, std::function<void()> beforeEnd)
{
    m_thread = std::thread([this, seconds, run = std::move(beforeEnd)] { Watch(seconds, run); });
}

void EndWatch::Stop()
{
    if (!m_thread.joinable())
        return;
    m_stops = true;
    pthread_kill(m_thread.native_handle(), kStopSignal);
    m_thread.join();
}

void EndWatch::Watch(double seconds, const std::function<void()>& beforeEnd)
{
    for (int asked = 0;; ++asked) {
        const int signal = WaitForSignal(asked == 0 ? seconds : 0);
        if (m_stops)
            return;
        if (signal == -1 && asked > 0)
            continue; // interrupted
        if (asked == kPatience)
            std::_Exit(kGaveUpStatus);
        if (asked == 0)
            beforeEnd();
        user::KeyDown(VK_F24);
        user::KeyUp(VK_F24);
    }
}

} // namespace cardsong::host
