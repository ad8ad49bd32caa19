// Places, lengths, speeds and loudness of the engine on DirectShow.
#include "playback/media_graph_directshow.h"

#include <algorithm>
#include <cmath>

using cardsong::playback::ComPointer;
using cardsong::playback::kSilentSeconds;

namespace {

constexpr double kUnitsPerSecond = 10'000'000.0; // reference time counts 100 nanoseconds
constexpr double kMostSeconds = 1e9;             // longer than any song, and short of what a reference time can hold
constexpr DWORD kToPosition = AM_SEEKING_AbsolutePositioning | AM_SEEKING_SeekToKeyFrame;

// Some decoders take a place before the beginning for the end, or for as much silence.
LONGLONG ToReferenceTime(double seconds)
{
    return static_cast<LONGLONG>(std::clamp(seconds, 0.0, kMostSeconds) * kUnitsPerSecond);
}

using ReadPosition = HRESULT (STDMETHODCALLTYPE IMediaSeeking::*)(LONGLONG*);

bool ReadSeconds(const ComPointer<IMediaSeeking>& seeking, ReadPosition read, double& seconds)
{
    LONGLONG position = 0;
    if (!seeking || FAILED((seeking.Get()->*read)(&position)))
        return false;
    seconds = static_cast<double>(position) / kUnitsPerSecond;
    return true;
}

} // namespace

bool MediaGraph::Engine::GoTo(double start, const double* stop)
{
    if (silence)
        return stop == nullptr && silence->Second().GoTo(start);
    if (!seeking || !std::isfinite(start) || (stop != nullptr && !std::isfinite(*stop)))
        return false;
    ForgetBreak();
    LONGLONG current = ToReferenceTime(start);
    if (stop == nullptr)
        return SUCCEEDED(seeking->SetPositions(&current, kToPosition, nullptr, AM_SEEKING_NoPositioning));
    LONGLONG end = ToReferenceTime(*stop);
    return SUCCEEDED(seeking->SetPositions(&current, kToPosition, &end, kToPosition));
}

bool MediaGraph::GetDuration(double& seconds) const
{
    if (m_engine->silence)
        return false;
    if (ReadSeconds(m_engine->seeking, &IMediaSeeking::GetDuration, seconds))
        return true;
    if (m_engine->holdsNoSong)
        seconds = 0.0;
    return m_engine->holdsNoSong;
}

bool MediaGraph::GetCurrentPosition(double& seconds) const
{
    if (!m_engine->silence)
        return ReadSeconds(m_engine->seeking, &IMediaSeeking::GetCurrentPosition, seconds);
    seconds = m_engine->silence->Second().Position();
    return true;
}

bool MediaGraph::GetStopPosition(double& seconds) const
{
    if (!m_engine->silence)
        return ReadSeconds(m_engine->seeking, &IMediaSeeking::GetStopPosition, seconds);
    seconds = kSilentSeconds;
    return true;
}

bool MediaGraph::SetPosition(double seconds)
{
    return m_engine->GoTo(seconds, nullptr);
}

bool MediaGraph::SetPositions(double start, double stop)
{
    return m_engine->GoTo(start, &stop);
}

bool MediaGraph::SetRate(double rate)
{
    if (m_engine->silence)
        return m_engine->silence->Second().SetRate(rate);
    return m_engine->seeking && SUCCEEDED(m_engine->seeking->SetRate(rate));
}

bool MediaGraph::GetRate(double& rate) const
{
    if (!m_engine->silence)
        return m_engine->seeking && SUCCEEDED(m_engine->seeking->GetRate(&rate));
    rate = m_engine->silence->Second().Rate();
    return true;
}

bool MediaGraph::SetVolume(long volume)
{
    return m_engine->audio && SUCCEEDED(m_engine->audio->put_Volume(volume));
}

long MediaGraph::GetVolume() const
{
    long volume = 0;
    return m_engine->audio && SUCCEEDED(m_engine->audio->get_Volume(&volume)) ? volume : 0;
}

bool MediaGraph::SetBalance(long balance)
{
    return m_engine->audio && SUCCEEDED(m_engine->audio->put_Balance(balance));
}

long MediaGraph::GetBalance() const
{
    long balance = 0;
    return m_engine->audio && SUCCEEDED(m_engine->audio->get_Balance(&balance)) ? balance : 0;
}
