// The engine on DirectShow: one filter graph, its interfaces, and what each call of the graph means to them.
#include "playback/media_graph_directshow.h"

#include "platform/console_notice.h"
#include "platform/device_tree.h"
#include "playback/media_graph_directshow_sink.h"
#include "playback/media_graph_song_probe.h"

#include <mmsystem.h>

#include <utility>

using cardsong::kernel::TellOnce;
using cardsong::playback::ComPointer;
using cardsong::playback::LookAtSong;
using cardsong::playback::SilentSong;
using cardsong::playback::SongKind;

namespace {

constexpr LONG kStateTimeoutMs = 10;
constexpr LONG kCueTimeoutMs = 1500; // a song on a slow card that takes longer goes on cueing by itself

template <typename Interface>
bool Query(IGraphBuilder* graph, REFIID id, ComPointer<Interface>& pointer)
{
    return SUCCEEDED(graph->QueryInterface(id, pointer.Receive()));
}

// The file is music; what is missing is the machine's.
void TellWhatIsMissing(SongKind kind)
{
    if (waveOutGetNumDevs() == 0)
        TellOnce("no device takes sound: songs pass in silence");
    else if (kind == SongKind::Asf)
        TellOnce("no decoder takes this WMA song; Windows has its own in the Media Feature Pack");
    else
        TellOnce("no decoder takes this MP3 song; Windows has its own in the Media Feature Pack");
}

} // namespace

bool MediaGraph::Engine::QueryInterfaces()
{
    const bool hasControl = Query(graph.Get(), IID_IMediaControl, control);
    const bool hasEvents = Query(graph.Get(), IID_IMediaEventEx, events);
    const bool hasVideo = Query(graph.Get(), IID_IBasicVideo, video);
    const bool hasAudio = Query(graph.Get(), IID_IBasicAudio, audio);
    const bool hasWindow = Query(graph.Get(), IID_IVideoWindow, videoWindow);
    const bool hasSeeking = Query(graph.Get(), IID_IMediaSeeking, seeking);
    if (hasSeeking)
        seeking->SetTimeFormat(&TIME_FORMAT_MEDIA_TIME);
    return hasControl && hasEvents && hasVideo && hasAudio && hasWindow && hasSeeking;
}

bool MediaGraph::Engine::IsIn(OAFilterState wanted) const
{
    if (silence)
        return silence->State() == wanted;
    OAFilterState state = -1;
    return control && SUCCEEDED(control->GetState(kStateTimeoutMs, &state)) && state == wanted;
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
    return SUCCEEDED(made) && m_engine->QueryInterfaces();
}

bool MediaGraph::Attach(IGraphBuilder* graph)
{
    ReleaseAll();
    if (graph == nullptr)
        return true;
    graph->AddRef();
    m_engine->graph = ComPointer<IGraphBuilder>(graph);
    return m_engine->QueryInterfaces();
}

void MediaGraph::ReleaseAll()
{
    Engine& engine = *m_engine;
    engine.silence.reset();
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
    engine.window = nullptr;
    engine.holdsNoSong = false;
    engine.ForgetBreak();
}

bool MediaGraph::RenderFile(const WCHAR* path)
{
    Engine& engine = *m_engine;
    if (!engine.graph || path == nullptr)
        return false;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    const SongKind kind = hostPath ? LookAtSong(*hostPath) : SongKind::None;
    engine.holdsNoSong = kind == SongKind::None;
    if (engine.holdsNoSong)
        return false;
    cardsong::playback::AddWishedRenderer(*engine.graph.Get());
    if (SUCCEEDED(engine.graph->RenderFile(hostPath->c_str(), nullptr)))
        return true;
    TellWhatIsMissing(kind);
    engine.silence = std::make_unique<SilentSong>(engine.window);
    return false;
}

bool MediaGraph::Run()
{
    if (!m_engine->graph || !m_engine->control)
        return false;
    if (IsRunning())
        return true;
    if (m_engine->silence)
        return m_engine->silence->Run();
    SetVideoOwner(nullptr);
    return SUCCEEDED(m_engine->control->Run());
}

bool MediaGraph::Pause()
{
    if (!m_engine->control)
        return false;
    if (IsPaused())
        return true;
    if (m_engine->silence)
        return m_engine->silence->Pause();
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
    if (m_engine->silence)
        return m_engine->silence->Stop();
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
    m_engine->window = window;
    if (m_engine->silence)
        m_engine->silence->SetNotifyWindow(window);
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
    if (engine.silence && engine.silence->TakeEnd()) {
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
