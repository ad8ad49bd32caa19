#include "playback/media_graph_gstreamer_song.h"

#include "platform/audio_sink.h"
#include "playback/media_graph.h"

#include <algorithm>
#include <cmath>

namespace cardsong::playback {

namespace {

// How long a cue may keep the caller. A song on a slow card that takes longer goes on cueing by itself.
constexpr std::chrono::milliseconds kCueLimit{ 1500 };

// Longer than any song, and short of what a count of nanoseconds can hold.
constexpr double kMostSeconds = 1e9;

gint64 ToNs(double seconds)
{
    return static_cast<gint64>(std::clamp(seconds, 0.0, kMostSeconds) * static_cast<double>(GST_SECOND));
}

double ToSeconds(gint64 ns)
{
    return static_cast<double>(ns) / static_cast<double>(GST_SECOND);
}

double FactorOf(long volume)
{
    return volume <= kSilent ? 0.0 : std::pow(10.0, static_cast<double>(volume) / 2000.0);
}

// -1 to 1: the share by which the other side's amplitude is lowered, with the sign of the side that stays.
double SideOf(long balance)
{
    const double side = 1.0 - FactorOf(-std::abs(balance));
    return balance < 0 ? -side : side;
}

} // namespace

Song::~Song()
{
    m_events->SetWindow(nullptr);
}

bool Song::Render(const std::string& hostPath)
{
    m_hostPath = hostPath;
    if (IsRendered() && Cue())
        return true;
    m_hostPath.clear();
    return false;
}

bool Song::EnterState(GraphState state)
{
    m_state = state;
    switch (state) {
    case GraphState::Stopped: DropChain(); return true;
    case GraphState::Paused: return Pause();
    case GraphState::Running: return Run();
    }
    return false;
}

double Song::Position()
{
    if (!m_chain)
        return m_startSeconds;
    gint64 positionNs = 0;
    // While a seek is under way the pipeline still tells the place it left.
    if (!m_events->IsCueing() && !m_events->IsBroken() &&
        gst_element_query_position(m_chain->Pipeline(), GST_FORMAT_TIME, &positionNs) != FALSE && positionNs >= 0)
        m_lastPositionSeconds = ToSeconds(positionNs);
    return m_lastPositionSeconds;
}

bool Song::GoTo(double seconds)
{
    const double place = std::clamp(seconds, 0.0, kMostSeconds);
    if (m_chain)
        return (m_untouched && place == m_startSeconds) || Seek(place);
    m_startSeconds = place;
    return true;
}

void Song::StopAt(double seconds)
{
    m_stopSeconds = seconds;
    m_untouched = false; // the next place to go to is to be sought even if the song is there
}

std::optional<double> Song::Duration()
{
    gint64 durationNs = 0;
    if (m_chain && gst_element_query_duration(m_chain->Pipeline(), GST_FORMAT_TIME, &durationNs) != FALSE &&
        durationNs > 0)
        m_lastDurationSeconds = ToSeconds(durationNs);
    return m_lastDurationSeconds;
}

bool Song::SetRate(double rate)
{
    m_rate = rate;
    return !m_chain || Seek(Position());
}

void Song::SetVolume(long volume)
{
    m_volume = volume;
    if (m_chain)
        m_chain->SetVolumeFactor(FactorOf(volume));
}

bool Song::SetBalance(long balance)
{
    const bool changes = balance != m_balance;
    m_balance = balance;
    if (!changes || !m_chain)
        return true;
    // The chain has no place for a balance until it needs one; so it is built again.
    DropChain();
    return m_state == GraphState::Stopped ? Cue() : EnterState(m_state);
}

// Builds the chain and brings it to m_startSeconds. Without success there is no chain.
bool Song::Cue()
{
    m_events->ExpectCue();
    m_chain = Chain::Build(m_hostPath, { kernel::AudioSink(), FactorOf(m_volume), SideOf(m_balance) }, m_events);
    if (!m_chain || !m_chain->SetState(GST_STATE_PAUSED))
        m_events->OnError();
    const CueResult result = m_events->AwaitCue(kCueLimit);
    const bool atItsStart = m_startSeconds == 0.0 && m_rate == 1.0 && !m_stopSeconds;
    if (result != CueResult::Failed && !atItsStart && Seek(m_startSeconds))
        m_events->AwaitCue(kCueLimit);
    if (m_events->IsBroken()) {
        m_chain.reset();
        return false;
    }
    m_untouched = true;
    return true;
}

// Without ACCURATE the parser of MPEG audio goes to a place that it guessed, and reports the one that it was asked for.
bool Song::Seek(double seconds)
{
    m_events->ExpectCueAfterSeek();
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    const gint64 stopNs = m_stopSeconds ? ToNs(*m_stopSeconds) : -1;
    if (gst_element_seek(m_chain->Pipeline(), m_rate, GST_FORMAT_TIME, flags, GST_SEEK_TYPE_SET, ToNs(seconds),
                         GST_SEEK_TYPE_SET, stopNs) == FALSE) {
        m_events->OnCued();
        return false;
    }
    m_startSeconds = seconds;
    m_lastPositionSeconds = seconds;
    return true;
}

bool Song::Run()
{
    if (!IsRendered())
        return true;
    const bool entered = (m_chain || Cue()) && m_chain->SetState(GST_STATE_PLAYING);
    m_untouched = false;
    m_events->SetRunning(true);
    if (!entered)
        m_events->OnError();
    return entered;
}

bool Song::Pause()
{
    m_events->SetRunning(false);
    if (!IsRendered())
        return true;
    if (!m_chain)
        return Cue();
    return m_untouched || m_chain->SetState(GST_STATE_PAUSED);
}

void Song::DropChain()
{
    Duration(); // remembered while the song is at rest
    m_startSeconds = Position();
    m_lastPositionSeconds = m_startSeconds;
    m_events->SetRunning(false);
    m_chain.reset();
    m_events->Forget();
}

} // namespace cardsong::playback
