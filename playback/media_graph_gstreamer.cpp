// The engine on GStreamer: the states, places and speeds of one chain.
#include "playback/media_graph.h"

#include "platform/linux/kernel/audio_sink.h"
#include "platform/linux/kernel/device_tree.h"
#include "playback/media_graph_gstreamer_chain.h"
#include "playback/media_graph_gstreamer_events.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <optional>

using cardsong::playback::Chain;
using cardsong::playback::CueResult;
using cardsong::playback::GraphEvents;

namespace {

// How long a cue may keep the caller. A song on a slow card that takes longer goes on cueing by itself.
constexpr std::chrono::milliseconds kCueLimit{ 3000 };

enum class GraphState { Stopped, Paused, Running };

GstClockTime ToNs(double seconds)
{
    return static_cast<GstClockTime>(seconds * static_cast<double>(GST_SECOND));
}
double ToSeconds(gint64 ns)
{
    return static_cast<double>(ns) / static_cast<double>(GST_SECOND);
}

double FactorOf(long volume)
{
    return volume <= kSilent ? 0.0 : std::pow(10.0, static_cast<double>(volume) / 2000.0);
}

} // namespace

// The pipeline's own state runs ahead of the graph's: a rendered song is cued (paused) while the graph still counts as
// stopped, since only a cue shows whether it can be played. A stopped song lets go of its file.
struct MediaGraph::Engine {
    std::shared_ptr<GraphEvents> events = std::make_shared<GraphEvents>();
    std::unique_ptr<Chain> chain; // null: nothing rendered
    GraphState state = GraphState::Stopped;
    bool cued = false;         // the pipeline is paused or playing
    bool untouched = false;    // cued at startSeconds, and not run since
    double startSeconds = 0.0; // where the next cue begins, or the last seek went
    std::optional<double> stopSeconds;
    double rate = 1.0;
    long volume = kLoudest;
    long balance = 0;
    double lastPositionSeconds = 0.0; // what to answer while the pipeline knows none
    std::optional<double> lastDurationSeconds;

    ~Engine() { events->SetWindow(nullptr); }

    bool Cue();
    bool Seek(double seconds);
    void Uncue();
    double Position();
    bool EnterPipelineState(GstState next);
};

// Brings the pipeline to the paused state, at startSeconds. False when the song proves broken.
bool MediaGraph::Engine::Cue()
{
    events->ExpectCue();
    if (!chain->SetState(GST_STATE_PAUSED))
        events->OnError();
    const CueResult result = events->AwaitCue(kCueLimit);
    if (result == CueResult::Failed)
        return false;
    cued = true;
    untouched = true;
    const bool fromTheStart = startSeconds == 0.0 && rate == 1.0 && !stopSeconds;
    if (!fromTheStart && Seek(startSeconds))
        events->AwaitCue(kCueLimit);
    return !events->IsBroken();
}

bool MediaGraph::Engine::Seek(double seconds)
{
    events->ExpectCueAfterSeek();
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    const gboolean done =
        gst_element_seek(chain->Pipeline(), rate, GST_FORMAT_TIME, flags, GST_SEEK_TYPE_SET,
                         static_cast<gint64>(ToNs(seconds)), stopSeconds ? GST_SEEK_TYPE_SET : GST_SEEK_TYPE_NONE,
                         stopSeconds ? static_cast<gint64>(ToNs(*stopSeconds)) : -1);
    if (done == FALSE) {
        events->OnCued();
        return false;
    }
    startSeconds = seconds;
    lastPositionSeconds = seconds;
    return true;
}

void MediaGraph::Engine::Uncue()
{
    startSeconds = Position();
    lastPositionSeconds = startSeconds;
    cued = false;
    events->SetRunning(false);
    chain->SetState(GST_STATE_READY);
    events->Clear();
}

double MediaGraph::Engine::Position()
{
    if (!chain)
        return 0.0;
    if (!cued)
        return startSeconds;
    gint64 positionNs = 0;
    // While a seek is under way the pipeline still tells the place it left.
    if (!events->IsCueing() && !events->IsBroken() &&
        gst_element_query_position(chain->Pipeline(), GST_FORMAT_TIME, &positionNs) != FALSE && positionNs >= 0)
        lastPositionSeconds = ToSeconds(positionNs);
    return lastPositionSeconds;
}

bool MediaGraph::Engine::EnterPipelineState(GstState next)
{
    if (!chain)
        return true;
    if (!cued && !Cue()) {
        cued = false;
        return false;
    }
    return next == GST_STATE_PAUSED && untouched ? true : chain->SetState(next);
}

void MediaGraph::WarmUp()
{
    // The program waits for it at its end, if it has not become ready by then.
    static const std::future<void> s_warm =
        std::async(std::launch::async, [] { cardsong::playback::PreloadChain(cardsong::kernel::AudioSink()); });
}

MediaGraph::MediaGraph() = default;

MediaGraph::~MediaGraph()
{
    MediaGraph::ReleaseAll();
}

bool MediaGraph::Init()
{
    if (m_engine || !cardsong::playback::StartGstreamer())
        return false;
    m_engine = std::make_unique<Engine>();
    return QueryInterfaces();
}

void MediaGraph::ReleaseAll()
{
    m_engine.reset();
}

bool MediaGraph::Attach(IGraphBuilder* graph)
{
    ReleaseAll();
    return graph == nullptr;
}

bool MediaGraph::QueryInterfaces()
{
    return m_engine != nullptr;
}

bool MediaGraph::RenderFile(const WCHAR* path)
{
    if (!m_engine || m_engine->chain || path == nullptr)
        return false;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    if (!hostPath)
        return false;
    m_engine->chain = Chain::Build(*hostPath, cardsong::kernel::AudioSink(), m_engine->events);
    if (!m_engine->chain || !m_engine->Cue()) {
        m_engine->chain.reset();
        return false;
    }
    return true;
}

bool MediaGraph::Run()
{
    if (!m_engine)
        return false;
    if (IsRunning())
        return true;
    SetVideoOwner(nullptr);
    m_engine->state = GraphState::Running;
    const bool entered = m_engine->EnterPipelineState(GST_STATE_PLAYING);
    m_engine->untouched = false;
    m_engine->events->SetRunning(true);
    if (!entered)
        m_engine->events->OnError();
    return entered;
}

bool MediaGraph::Pause()
{
    if (!m_engine)
        return false;
    if (IsPaused())
        return true;
    m_engine->state = GraphState::Paused;
    m_engine->events->SetRunning(false);
    return m_engine->EnterPipelineState(GST_STATE_PAUSED);
}

bool MediaGraph::Stop()
{
    if (!m_engine)
        return false;
    if (IsStopped())
        return true;
    m_engine->state = GraphState::Stopped;
    if (m_engine->chain)
        m_engine->Uncue();
    return true;
}

bool MediaGraph::IsRunning() const
{
    return m_engine && m_engine->state == GraphState::Running;
}
bool MediaGraph::IsPaused() const
{
    return m_engine && m_engine->state == GraphState::Paused;
}
bool MediaGraph::IsStopped() const
{
    return m_engine && m_engine->state == GraphState::Stopped;
}

bool MediaGraph::SetNotifyWindow(HWND window)
{
    if (!m_engine)
        return false;
    m_engine->events->SetWindow(window);
    return true;
}

IMediaEventEx* MediaGraph::GetEventInterface() const
{
    return nullptr;
}

bool MediaGraph::TakeEvent(long& code)
{
    return m_engine && m_engine->events->Take(code);
}

void MediaGraph::DrainEvents()
{
    if (m_engine)
        m_engine->events->Clear();
}

bool MediaGraph::GetDuration(double& seconds) const
{
    if (!m_engine)
        return false;
    if (!m_engine->chain) {
        seconds = 0.0;
        return true;
    }
    gint64 durationNs = 0;
    if (m_engine->cued &&
        gst_element_query_duration(m_engine->chain->Pipeline(), GST_FORMAT_TIME, &durationNs) != FALSE &&
        durationNs > 0)
        m_engine->lastDurationSeconds = ToSeconds(durationNs);
    if (!m_engine->lastDurationSeconds)
        return false;
    seconds = *m_engine->lastDurationSeconds;
    return true;
}

bool MediaGraph::GetCurrentPosition(double& seconds) const
{
    if (!m_engine)
        return false;
    seconds = m_engine->Position();
    return true;
}

bool MediaGraph::GetStopPosition(double& seconds) const
{
    if (!m_engine || !m_engine->stopSeconds)
        return GetDuration(seconds);
    seconds = *m_engine->stopSeconds;
    return true;
}

bool MediaGraph::SetPosition(double seconds)
{
    if (!m_engine || !m_engine->chain || !std::isfinite(seconds) || m_engine->events->IsBroken())
        return false;
    const double place = std::max(seconds, 0.0);
    if (m_engine->cued)
        return (m_engine->untouched && place == m_engine->startSeconds) || m_engine->Seek(place);
    m_engine->startSeconds = place;
    return true;
}

bool MediaGraph::SetPositions(double start, double stop)
{
    if (!m_engine || !m_engine->chain || !std::isfinite(stop) || stop < start)
        return false;
    m_engine->stopSeconds = stop;
    m_engine->untouched = false;
    return SetPosition(start);
}

bool MediaGraph::SetRate(double rate)
{
    if (!m_engine || !(rate > 0.0) || !std::isfinite(rate))
        return false;
    m_engine->rate = rate;
    return !m_engine->chain || !m_engine->cued || m_engine->Seek(m_engine->Position());
}

bool MediaGraph::GetRate(double& rate) const
{
    if (!m_engine)
        return false;
    rate = m_engine->rate;
    return true;
}

bool MediaGraph::SetVolume(long volume)
{
    if (!m_engine || !m_engine->chain || volume < kSilent || volume > kLoudest)
        return false;
    m_engine->volume = volume;
    m_engine->chain->SetVolumeFactor(FactorOf(volume));
    return true;
}

long MediaGraph::GetVolume() const
{
    return m_engine && m_engine->chain ? m_engine->volume : 0;
}

bool MediaGraph::SetBalance(long balance)
{
    if (!m_engine || !m_engine->chain || balance < kSilent || balance > -kSilent)
        return false;
    const double side = 1.0 - FactorOf(-std::abs(balance));
    m_engine->balance = balance;
    if (balance == 0 && !m_engine->chain->HasBalance())
        return true;
    // The element that turns the balance goes into a chain at rest.
    const bool rewire = m_engine->cued && !m_engine->chain->HasBalance();
    const GraphState state = m_engine->state;
    if (rewire)
        m_engine->Uncue();
    if (!m_engine->chain->SetBalance(balance < 0 ? -side : side))
        return false;
    if (!rewire)
        return true;
    m_engine->state = GraphState::Stopped;
    return state == GraphState::Running ? Run() : state == GraphState::Paused ? Pause() : m_engine->Cue();
}

long MediaGraph::GetBalance() const
{
    return m_engine && m_engine->chain ? m_engine->balance : 0;
}

// Songs have no picture here, and no pin to reach.
bool MediaGraph::SetVideoOwner(HWND)
{
    return false;
}
bool MediaGraph::SetVideoRect(int, int, int, int)
{
    return false;
}
bool MediaGraph::SetFullScreen(bool)
{
    return false;
}
bool MediaGraph::IsFullScreen() const
{
    return false;
}
bool MediaGraph::ConnectDirect(IPin*, IPin*, const _AMMediaType*)
{
    return false;
}
bool MediaGraph::Disconnect(IPin*)
{
    return false;
}
