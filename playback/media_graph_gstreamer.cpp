// The engine on GStreamer: what each call of the graph means for its song.
#include "playback/media_graph.h"

#include "platform/audio_sink.h"
#include "platform/device_tree.h"
#include "playback/media_graph_gstreamer_song.h"

#include <cmath>
#include <future>
#include <thread>

using cardsong::playback::GraphState;
using cardsong::playback::RenderResult;
using cardsong::playback::Song;

struct MediaGraph::Engine {
    Song song;

    Song* Rendered() { return song.IsRendered() ? &song : nullptr; }
};

namespace {

// An engine that is not ready at the program's end is waited for, but not for a sound server that hangs.
class WarmingUp {
public:
    WarmingUp()
        : m_done(std::make_shared<std::promise<void>>()), m_result(m_done->get_future()),
          m_thread([done = m_done, sink = cardsong::kernel::AudioSink()] {
              cardsong::playback::PreloadChain(sink);
              done->set_value();
          })
    {
    }
    ~WarmingUp()
    {
        if (m_result.wait_for(kLimit) == std::future_status::ready)
            m_thread.join();
        else
            m_thread.detach();
    }
    WarmingUp(const WarmingUp&) = delete;
    WarmingUp& operator=(const WarmingUp&) = delete;

private:
    static constexpr std::chrono::milliseconds kLimit{ 200 };
    std::shared_ptr<std::promise<void>> m_done;
    std::future<void> m_result;
    std::thread m_thread;
};

} // namespace

void MediaGraph::WarmUp()
{
    static const WarmingUp s_warm;
}

MediaGraph::MediaGraph() = default;

MediaGraph::~MediaGraph()
{
    MediaGraph::ReleaseAll();
}

bool MediaGraph::Init()
{
    if (m_engine || !cardsong::sound::StartGstreamer())
        return false;
    m_engine = std::make_unique<Engine>();
    return true;
}

void MediaGraph::ReleaseAll()
{
    m_engine.reset();
}

bool MediaGraph::RenderFile(const WCHAR* path)
{
    if (!m_engine || m_engine->Rendered() != nullptr || path == nullptr)
        return false;
    const auto hostPath = cardsong::kernel::FindHostPath(path);
    return hostPath && m_engine->song.Render(*hostPath) == RenderResult::Ready;
}

bool MediaGraph::Run()
{
    if (!m_engine)
        return false;
    if (IsRunning())
        return true;
    SetVideoOwner(nullptr);
    return m_engine->song.EnterState(GraphState::Running);
}

bool MediaGraph::Pause()
{
    return m_engine && (IsPaused() || m_engine->song.EnterState(GraphState::Paused));
}

bool MediaGraph::Stop()
{
    return m_engine && (IsStopped() || m_engine->song.EnterState(GraphState::Stopped));
}

bool MediaGraph::IsRunning() const
{
    return m_engine && m_engine->song.State() == GraphState::Running;
}

bool MediaGraph::IsPaused() const
{
    return m_engine && m_engine->song.State() == GraphState::Paused;
}

bool MediaGraph::IsStopped() const
{
    return m_engine && m_engine->song.State() == GraphState::Stopped;
}

bool MediaGraph::SetNotifyWindow(HWND window)
{
    if (!m_engine)
        return false;
    m_engine->song.Events().SetWindow(window);
    return true;
}

bool MediaGraph::TakeEvent(long& code)
{
    return m_engine && m_engine->song.Events().Take(code);
}

void MediaGraph::DrainEvents()
{
    if (m_engine)
        m_engine->song.Events().Clear();
}

bool MediaGraph::GetDuration(double& seconds) const
{
    if (!m_engine)
        return false;
    const auto duration = m_engine->Rendered() != nullptr ? m_engine->song.Duration() : 0.0;
    if (duration)
        seconds = *duration;
    return duration.has_value();
}

bool MediaGraph::GetCurrentPosition(double& seconds) const
{
    if (!m_engine)
        return false;
    seconds = m_engine->song.Position();
    return true;
}

bool MediaGraph::GetStopPosition(double& seconds) const
{
    if (!m_engine || !m_engine->song.StopPosition())
        return GetDuration(seconds);
    seconds = *m_engine->song.StopPosition();
    return true;
}

bool MediaGraph::SetPosition(double seconds)
{
    return m_engine && m_engine->Rendered() != nullptr && std::isfinite(seconds) && m_engine->song.GoTo(seconds);
}

bool MediaGraph::SetPositions(double start, double stop)
{
    if (!m_engine || m_engine->Rendered() == nullptr || !std::isfinite(start) || !std::isfinite(stop) || stop < start)
        return false;
    m_engine->song.StopAt(stop);
    return m_engine->song.GoTo(start);
}

bool MediaGraph::SetRate(double rate)
{
    return m_engine && rate > 0.0 && std::isfinite(rate) && m_engine->song.SetRate(rate);
}

bool MediaGraph::GetRate(double& rate) const
{
    if (!m_engine)
        return false;
    rate = m_engine->song.Rate();
    return true;
}

bool MediaGraph::SetVolume(long volume)
{
    if (!m_engine || m_engine->Rendered() == nullptr || volume < kSilent || volume > kLoudest)
        return false;
    m_engine->song.SetVolume(volume);
    return true;
}

long MediaGraph::GetVolume() const
{
    return m_engine && m_engine->Rendered() != nullptr ? m_engine->song.Volume() : 0;
}

bool MediaGraph::SetBalance(long balance)
{
    return m_engine && m_engine->Rendered() != nullptr && balance >= kSilent && balance <= -kSilent &&
           m_engine->song.SetBalance(balance);
}

long MediaGraph::GetBalance() const
{
    return m_engine && m_engine->Rendered() != nullptr ? m_engine->song.Balance() : 0;
}
