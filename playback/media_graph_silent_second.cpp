#include "playback/media_graph_silent_second.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardsong::playback {

using Guard = std::lock_guard<std::mutex>;
using SteadyClock = std::chrono::steady_clock;

// ---- the timeline ----

void SilentTimeline::Run(Time now)
{
    Anchor(Position(now), now);
    m_runs = true;
}

void SilentTimeline::Pause(Time now)
{
    Anchor(Position(now), now);
    m_runs = false;
}

void SilentTimeline::Stop(Time now)
{
    Pause(now);
    m_endTaken = false;
}

bool SilentTimeline::GoTo(double seconds, Time now)
{
    if (!std::isfinite(seconds))
        return false;
    Anchor(std::clamp(seconds, 0.0, kSilentSeconds), now);
    m_endTaken = false;
    return true;
}

bool SilentTimeline::SetRate(double rate, Time now)
{
    if (!std::isfinite(rate) || rate <= 0.0)
        return false;
    Anchor(Position(now), now);
    m_rate = rate;
    return true;
}

double SilentTimeline::Position(Time now) const
{
    if (!m_runs)
        return m_anchorSeconds;
    const std::chrono::duration<double> played = now - m_anchorTime;
    return std::clamp(m_anchorSeconds + played.count() * m_rate, m_anchorSeconds, kSilentSeconds);
}

std::optional<SilentTimeline::Time> SilentTimeline::EndTime() const
{
    if (!m_runs || m_endTaken)
        return std::nullopt;
    // A speed close to 0 would take it past what a clock can hold.
    const std::chrono::duration<double> left((kSilentSeconds - m_anchorSeconds) / m_rate);
    if (left > std::chrono::hours(24 * 365))
        return std::nullopt;
    return m_anchorTime + std::chrono::ceil<Time::duration>(left);
}

bool SilentTimeline::TakeEnd(Time now)
{
    const auto end = EndTime();
    if (!end || now < *end)
        return false;
    Anchor(kSilentSeconds, now);
    m_endTaken = true;
    return true;
}

void SilentTimeline::Anchor(double seconds, Time now)
{
    m_anchorSeconds = seconds;
    m_anchorTime = now;
}

// ---- in real time ----

SilentSecond::SilentSecond(std::function<void()> onEnd) : m_onEnd(std::move(onEnd)), m_thread([this] { AwaitEnds(); })
{
}

SilentSecond::~SilentSecond()
{
    {
        const Guard guard(m_mutex);
        m_closes = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void SilentSecond::Run()
{
    const Guard guard(m_mutex);
    m_timeline.Run(SteadyClock::now());
    m_changed.notify_all();
}

void SilentSecond::Pause()
{
    const Guard guard(m_mutex);
    m_timeline.Pause(SteadyClock::now());
    m_changed.notify_all();
}

void SilentSecond::Stop()
{
    const Guard guard(m_mutex);
    m_timeline.Stop(SteadyClock::now());
    m_changed.notify_all();
}

bool SilentSecond::GoTo(double seconds)
{
    const Guard guard(m_mutex);
    m_changed.notify_all();
    return m_timeline.GoTo(seconds, SteadyClock::now());
}

bool SilentSecond::SetRate(double rate)
{
    const Guard guard(m_mutex);
    m_changed.notify_all();
    return m_timeline.SetRate(rate, SteadyClock::now());
}

double SilentSecond::Rate() const
{
    const Guard guard(m_mutex);
    return m_timeline.Rate();
}

double SilentSecond::Position() const
{
    const Guard guard(m_mutex);
    return m_timeline.Position(SteadyClock::now());
}

void SilentSecond::AwaitEnds()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_closes) {
        // Told under the lock, so that nobody changes the second between its end and the telling.
        if (m_timeline.TakeEnd(SteadyClock::now()))
            m_onEnd();
        if (const auto end = m_timeline.EndTime())
            m_changed.wait_until(lock, *end);
        else
            m_changed.wait(lock);
    }
}

} // namespace cardsong::playback
