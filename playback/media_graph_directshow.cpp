// The engine on DirectShow: one filter graph, its interfaces, and what each call of the graph means to them.
#include "playback/media_graph_directshow.h"

#include "platform/device_tree.h"
#include "playback/media_graph_directshow_sink.h"
#include "playback/media_graph_song_probe.h"

#include <mmsystem.h>

#include <algorithm>
#include <cmath>

using cardsong::playback::ComPointer;
using cardsong::playback::LookAtSong;
using cardsong::playback::SongKind;

namespace {

constexpr double kUnitsPerSecond = 10'000'000.0; // reference time counts 100 nanoseconds
constexpr LONG kStateTimeoutMs = 10;
constexpr LONG kCueTimeoutMs = 1500; // a song on a slow card that takes longer goes on cueing by itself
constexpr double kMostSeconds = 1e9; // longer than any song, and short of what a reference time can hold
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

template <typename Interface>
bool Query(IGraphBuilder* graph, REFIID id, ComPointer<Interface>& pointer)
{
    return SUCCEEDED(graph->QueryInterface(id, pointer.Receive()));
}

} // namespace

bool MediaGraph::Engine::IsIn(OAFilterState wanted) const
{
    OAFilterState state = -1;
    return control && SUCCEEDED(control->GetState(kStateTimeoutMs, &state)) && state == wanted;
}

bool MediaGraph::Engine::GoTo(double start, const double* stop)
{
    if (!seeking || !std::isfinite(start) || (stop != nullptr && !std::isfinite(*stop)))
        return false;
    ForgetBreak();
    LONGLONG current = ToReferenceTime(start);
    if (stop == nullptr)
        return SUCCEEDED(seeking->SetPositions(&current, kToPosition, nullptr, AM_SEEKING_NoPositioning));
    LONGLONG end = ToReferenceTime(*stop);
    return SUCCEEDED(seeking->SetPositions(&current, kToPosition, &end, kToPosition));
}

// What takes long is the first song's own decoders, and they come with the song.
void MediaGraph::WarmUp() {}

MediaGraph::MediaGraph() : m_engine(std::make_unique<Engine>()) {}

MediaGraph::~MediaGraph()
{
    MediaGraph::ReleaseAll();
}

bool MediaGraph::Init()
{
    if (m_engine->graph)
        return false;
    const HRESULT made = CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                          m_engine->graph.Receive());
    return SUCCEEDED(made) && QueryInterfaces();
}

bool MediaGraph::Attach(IGraphBuilder* graph)
{
    ReleaseAll();
    if (graph == nullptr)
        return true;
    graph->AddRef();
    m_engine->graph = ComPointer<IGraphBuilder>(graph);
    return QueryInterfaces();
}

bool MediaGraph::QueryInterfaces()
{
    Engine& engine = *m_engine;
    IGraphBuilder* const graph = engine.graph.Get();
    const bool hasControl = Query(graph, IID_IMediaControl, engine.control);
    const bool hasEvents = Query(graph, IID_IMediaEventEx, engine.events);
    const bool hasVideo = Query(graph, IID_IBasicVideo, engine.video);
    const bool hasAudio = Query(graph, IID_IBasicAudio, engine.audio);
    const bool hasWindow = Query(graph, IID_IVideoWindow, engine.videoWindow);
    const bool hasSeeking = Query(graph, IID_IMediaSeeking, engine.seeking);
    if (hasSeeking)
        engine.seeking->SetTimeFormat(&TIME_FORMAT_MEDIA_TIME);
    return hasControl && hasEvents && hasVideo && hasAudio && hasWindow && hasSeeking;
}

void MediaGraph::ReleaseAll()
{
    Engine& engine = *m_engine;
    engine.seeking.Reset();
    engine.control.Reset();
    engine.events.Reset();
    engine.video.Reset();
    engine.audio.Reset();
    if (engine.videoWindow) {
        engine.videoWindow->put_Visible(OAFALSE);
        engine.videoWindow->put_MessageDrain(0);
        engine.videoWindow->put_Owner(0);
        engine.videoWindow.Reset();
    }
    engine.graph.Reset();
    engine.holdsNoSong = false;
    engine.ForgetBreak();
}

bool MediaGraph::RenderFile(const WCHAR* path)
{
    Engine& engine = *m_engine;
    if (!engine.graph || path == nullptr)
        return false;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    engine.holdsNoSong = !hostPath || LookAtSong(*hostPath) == SongKind::None;
    if (engine.holdsNoSong)
        return false;
    cardsong::playback::AddWishedRenderer(*engine.graph.Get());
    const bool rendered = SUCCEEDED(engine.graph->RenderFile(hostPath->c_str(), nullptr));
    // Where no device takes sound, nothing is known about the song.
    engine.holdsNoSong = !rendered && waveOutGetNumDevs() > 0;
    return rendered;
}

bool MediaGraph::Run()
{
    if (!m_engine->graph || !m_engine->control)
        return false;
    if (IsRunning())
        return true;
    SetVideoOwner(nullptr);
    return SUCCEEDED(m_engine->control->Run());
}

bool MediaGraph::Pause()
{
    if (!m_engine->control)
        return false;
    if (IsPaused())
        return true;
    const HRESULT paused = m_engine->control->Pause();
    OAFilterState state = State_Stopped;
    if (paused == S_FALSE) // on its way there
        m_engine->control->GetState(kCueTimeoutMs, &state);
    return SUCCEEDED(paused);
}

bool MediaGraph::Stop()
{
    if (m_engine->videoWindow)
        m_engine->videoWindow->put_Visible(OAFALSE);
    if (!m_engine->control)
        return false;
    m_engine->ForgetBreak();
    return IsStopped() || SUCCEEDED(m_engine->control->Stop());
}

bool MediaGraph::IsRunning() const
{
    return m_engine->IsIn(State_Running);
}

bool MediaGraph::IsPaused() const
{
    return m_engine->IsIn(State_Paused);
}

bool MediaGraph::IsStopped() const
{
    return m_engine->IsIn(State_Stopped);
}

bool MediaGraph::SetNotifyWindow(HWND window)
{
    IMediaEventEx* const events = m_engine->events.Get();
    if (events == nullptr || FAILED(events->SetNotifyWindow(reinterpret_cast<OAHWND>(window), kGraphEventMessage, 0)))
        return false;
    // The graph announces only what comes from now on.
    OAEVENT waiting = 0;
    if (window != nullptr && SUCCEEDED(events->GetEventHandle(&waiting)) &&
        WaitForSingleObject(reinterpret_cast<HANDLE>(waiting), 0) == WAIT_OBJECT_0)
        PostMessageW(window, kGraphEventMessage, 0, 0);
    return true;
}

IMediaEventEx* MediaGraph::GetEventInterface() const
{
    return m_engine->events.Get();
}

bool MediaGraph::TakeEvent(long& code)
{
    Engine& engine = *m_engine;
    if (std::exchange(engine.owesComplete, false)) {
        engine.toldComplete = true;
        code = kGraphComplete;
        return true;
    }
    LONG_PTR first = 0;
    LONG_PTR second = 0;
    while (engine.events && SUCCEEDED(engine.events->GetEvent(&code, &first, &second, 0))) {
        engine.events->FreeEventParams(code, first, second);
        if (code == kGraphComplete && std::exchange(engine.toldComplete, false))
            continue;
        engine.owesComplete = code == kGraphErrorAbort && !engine.toldComplete;
        return true;
    }
    return false;
}

void MediaGraph::DrainEvents()
{
    long code = 0;
    while (TakeEvent(code)) {
    }
}

bool MediaGraph::GetDuration(double& seconds) const
{
    if (ReadSeconds(m_engine->seeking, &IMediaSeeking::GetDuration, seconds))
        return true;
    if (m_engine->holdsNoSong)
        seconds = 0.0;
    return m_engine->holdsNoSong;
}

bool MediaGraph::GetCurrentPosition(double& seconds) const
{
    return ReadSeconds(m_engine->seeking, &IMediaSeeking::GetCurrentPosition, seconds);
}

bool MediaGraph::GetStopPosition(double& seconds) const
{
    return ReadSeconds(m_engine->seeking, &IMediaSeeking::GetStopPosition, seconds);
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
    return m_engine->seeking && SUCCEEDED(m_engine->seeking->SetRate(rate));
}

bool MediaGraph::GetRate(double& rate) const
{
    return m_engine->seeking && SUCCEEDED(m_engine->seeking->GetRate(&rate));
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
