#include "platform/linux/host/end_watch.h"

#include "platform/linux/user/input.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>

namespace cardsong::host {
namespace {

constexpr int kStopSignal = SIGUSR1; // from Stop to its own thread
// A player that leaves so many exit keys without an answer may hang.
constexpr int kPatience = 3;
constexpr int kGaveUpStatus = 130;

bool IsIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t WatchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, kStopSignal);
    for (const int signal : { SIGINT, SIGTERM, SIGHUP })
        if (!IsIgnored(signal))
            sigaddset(&signals, signal);
    return signals;
}

using SteadyClock = std::chrono::steady_clock;
constexpr SteadyClock::time_point kNoLimit = SteadyClock::time_point::max();

timespec TimeUntil(SteadyClock::time_point limit)
{
    const auto left = std::max(limit - SteadyClock::now(), SteadyClock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return { static_cast<std::time_t>(seconds.count()),
             static_cast<long>(std::chrono::nanoseconds(left - seconds).count()) };
}

// Returns when one of the signals has come or the time is over. A debugger that only looks in does not end the wait.
void WaitForSignal(const sigset_t& signals, SteadyClock::time_point limit)
{
    for (;;) {
        const timespec left = limit == kNoLimit ? timespec{} : TimeUntil(limit);
        const int signal = limit == kNoLimit ? sigwaitinfo(&signals, nullptr) : sigtimedwait(&signals, nullptr, &left);
        if (signal != -1 || errno != EINTR)
            return;
    }
}

} // namespace

EndWatch::EndWatch(std::chrono::milliseconds patience) : m_signals(WatchedSignals()), m_patience(patience)
{
    pthread_sigmask(SIG_BLOCK, &m_signals, nullptr);
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
    const auto limit = seconds > 0 ? SteadyClock::now() + std::chrono::duration_cast<SteadyClock::duration>(
                                                              std::chrono::duration<double>(seconds))
                                   : kNoLimit;
    SteadyClock::time_point hangsSince = kNoLimit; // if it does not end
    for (int asked = 0;; ++asked) {
        WaitForSignal(m_signals, asked == 0 ? limit : kNoLimit);
        if (m_stops)
            return;
        if (asked == 0)
            hangsSince = SteadyClock::now() + m_patience;
        if (asked >= kPatience && SteadyClock::now() >= hangsSince)
            std::_Exit(kGaveUpStatus);
        if (asked == 0)
            beforeEnd();
        user::PressExitKey();
    }
}

} // namespace cardsong::host
