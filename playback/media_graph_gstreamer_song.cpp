#include "playback/media_graph_gstreamer_song.h"

#include "platform/audio_sink.h"
#include "platform/console_notice.h"
#include "playback/asf_song.h"
#include "playback/media_graph.h"
#include "playback/media_graph_gstreamer_volume.h"

#include <algorithm>

namespace cardsong::playback {

Song::~Song()
{
    m_events->SetWindow(nullptr);
}

RenderResult Song::Render(const std::string& hostPath)
{
    auto look = LookAt(hostPath);
    if (!look)
        return RenderResult::NoMusic;
    m_hostPath = hostPath;
    RenderResult result = RenderResult::BeyondTheMachine;
    if (look->isProtected)
        kernel::TellOnce("a protected song plays on no machine without its licence");
    else
        result = Cue(std::move(*look));
    if (result == RenderResult::BeyondTheMachine)
        EnterSilence();
    else if (result == RenderResult::NoMusic)
        m_hostPath.clear();
    return result;
}

std::optional<Song::Look> Song::LookAt(const std::string& hostPath)
{
    auto file = SongFile::Open(hostPath);
    if (!file)
        return std::nullopt;
    if (IsAsf(*file)) {
        const auto asf = ReadAsfSong(*file);
        return asf ? std::optional<Look>({ { hostPath, nullptr }, asf->seconds, asf->isProtected }) : std::nullopt;
    }
    auto mpeg = MpegSong::Open(std::move(file));
    if (!mpeg)
        return std::nullopt;
    const double seconds = mpeg->Seconds();
    return Look{ { hostPath, std::move(mpeg) }, seconds, false };
}

// Builds the chain and brings it to m_startSeconds. A song that cannot be cued has no chain.
RenderResult Song::Cue(Look look)
{
    m_seconds = look.seconds;
    const SongPlace place = PlaceAt(m_startSeconds);
    m_events->ExpectCue(place.IsPlainStart() ? 1 : 2);
    m_driver = std::make_unique<ChainDriver>(
        ChainDriver::Start{
            std::move(look.source), kernel::AudioSink(), { FactorOf(m_volume), SideOf(m_balance) }, place },
        m_events);
    m_events->AwaitCue();
    if (m_events->IsBroken()) {
        m_driver.reset();
        return m_events->IsBeyondTheMachine() ? RenderResult::BeyondTheMachine : RenderResult::NoMusic;
    }
    m_untouched = true;
    m_isHeld = false;
    m_lastPositionSeconds = m_startSeconds;
    return RenderResult::Ready;
}

// Builds the chain of a song that has none: it was stopped, or its chain lacked a part that it needs now.
bool Song::CueAgain()
{
    auto look = LookAt(m_hostPath);
    if (look)
        return Cue(std::move(*look)) == RenderResult::Ready;
    m_events->ExpectCue(1);
    m_events->OnError();
    return false;
}

void Song::EnterSilence()
{
    m_seconds.reset();
    m_events->ExpectCue(0);
    m_silence = std::make_unique<SilentSecond>([events = m_events] { events->OnEnd(events->Play()); });
    m_silence->GoTo(m_startSeconds);
}

bool Song::EnterState(GraphState state)
{
    m_state = state;
    switch (state) {
    case GraphState::Stopped: Stop(); return true;
    case GraphState::Paused: return Pause();
    case GraphState::Running: return Run();
    }
    return false;
}

double Song::Position()
{
    if (m_silence)
        return m_silence->Position();
    if (!m_driver)
        return m_startSeconds;
    if (m_isHeld)
        return m_lastPositionSeconds;
    const auto position = m_driver->PositionSeconds();
    m_lastPositionSeconds = position.value_or(m_lastPositionSeconds);
    m_isHeld = position && m_state != GraphState::Running;
    return m_lastPositionSeconds;
}

bool Song::GoTo(double seconds)
{
    const double place = std::max(0.0, seconds);
    if (m_silence) {
        m_events->ExpectCue(0);
        return m_silence->GoTo(place);
    }
    if (m_driver && m_untouched && place == m_startSeconds)
        return true;
    m_startSeconds = place;
    m_lastPositionSeconds = place;
    m_isHeld = false;
    m_untouched = m_state != GraphState::Running;
    if (m_driver)
        m_driver->GoTo(PlaceAt(place));
    return true;
}

void Song::StopAt(double seconds)
{
    m_stopSeconds = seconds;
    m_untouched = false; // the next GoTo seeks even if the song stands there
}

std::optional<double> Song::Duration()
{
    if (!m_seconds && m_driver)
        m_seconds = m_driver->DurationSeconds();
    return m_seconds;
}

bool Song::SetRate(double rate)
{
    m_rate = rate;
    if (m_silence)
        return m_silence->SetRate(rate);
    if (m_driver)
        m_driver->GoTo(PlaceAt(Position()));
    m_isHeld = false;
    return true;
}

void Song::SetVolume(long volume)
{
    m_volume = volume;
    if (m_driver)
        m_driver->SetVolumeFactor(FactorOf(volume));
}

bool Song::SetBalance(long balance)
{
    const bool changes = balance != m_balance;
    m_balance = balance;
    if (!changes || !m_driver)
        return true;
    // A chain has no element for a balance that it was built without. So it is built again.
    DropChain();
    return m_state == GraphState::Stopped ? CueAgain() : EnterState(m_state);
}

// A sink that goes on by itself after a pause places its sound by a guess at how far the server has come. So the song
// is sought where it was held.
bool Song::Run()
{
    if (m_silence)
        m_silence->Run();
    const bool entered = m_silence || !IsRendered() || m_driver || CueAgain();
    if (m_driver && m_untouched)
        m_driver->Run();
    else if (m_driver)
        m_driver->RunFrom(PlaceAt(Position()));
    m_untouched = false;
    m_isHeld = false;
    m_events->SetRunning(IsRendered());
    return entered;
}

bool Song::Pause()
{
    m_events->SetRunning(false);
    if (m_silence)
        m_silence->Pause();
    if (m_silence || !IsRendered())
        return true;
    if (!m_driver)
        return CueAgain();
    if (!m_untouched) {
        Position(); // remembered: the pause may come late
        m_driver->Pause();
        m_isHeld = false;
    }
    return true;
}

void Song::Stop()
{
    if (m_silence)
        m_silence->Stop();
    DropChain();
    if (m_silence)
        m_events->ExpectCue(0);
}

void Song::DropChain()
{
    Duration(); // remembered: a song at rest has no chain to ask
    m_startSeconds = Position();
    m_lastPositionSeconds = m_startSeconds;
    m_events->SetRunning(false);
    m_driver.reset();
    m_events->Forget();
}

} // namespace cardsong::playback
