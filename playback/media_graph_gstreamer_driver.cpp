#include "playback/media_graph_gstreamer_driver.h"

#include "platform/linux/sound/audio_sinks.h"

#include <algorithm>
#include <utility>

namespace cardsong::playback {

namespace {

// Longer than any song, and short of what a count of nanoseconds can hold.
constexpr double kMostSeconds = 1e9;

// How often a thread that waits for a cue looks whether it is to end.
constexpr std::chrono::milliseconds kLookAgain{ 20 };

gint64 ToNs(double seconds)
{
    return static_cast<gint64>(std::clamp(seconds, 0.0, kMostSeconds) * static_cast<double>(GST_SECOND));
}

double ToSeconds(gint64 ns)
{
    return static_cast<double>(ns) / static_cast<double>(GST_SECOND);
}

// What the chain is to come to. Nothing: as it is.
struct Wish {
    std::optional<GstState> state;
    std::optional<SongPlace> place;
};

} // namespace

struct ChainDriver::Work {
    explicit Work(const std::shared_ptr<GraphEvents>& graphEvents) : events(graphEvents) {}

    void Do(Start start);
    void Cue(Start start);
    void Fulfil(const Wish& wish);
    void Seek(const SongPlace& place) const;
    bool AwaitFirstStep();
    bool AwaitDone(std::unique_lock<std::mutex>& lock);

    const std::shared_ptr<GraphEvents> events;
    std::mutex mutex; // guards all below except what is inside the chain
    std::condition_variable changed;
    std::unique_ptr<Chain> chain; // null until it is built; gone at the end
    Wish wish;
    double volumeFactor = 1.0;
    bool isAsked = false;
    bool isBusy = true;
    bool isLate = false;
    bool quits = false;
    bool hasEnded = false;
};

ChainDriver::ChainDriver(Start start, const std::shared_ptr<GraphEvents>& events)
    : m_work(std::make_shared<Work>(events))
{
    m_work->volumeFactor = start.settings.volumeFactor;
    m_thread = std::thread([work = m_work](Start given) { work->Do(std::move(given)); }, std::move(start));
}

ChainDriver::~ChainDriver()
{
    std::unique_lock lock(m_work->mutex);
    m_work->quits = true;
    m_work->changed.notify_all();
    const auto limit = m_work->isLate ? std::chrono::milliseconds(0) : kServerLimit;
    const bool hasEnded = m_work->changed.wait_for(lock, limit, [this] { return m_work->hasEnded; });
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void ChainDriver::Run()
{
    Ask(GST_STATE_PLAYING, std::nullopt);
}

void ChainDriver::RunFrom(const SongPlace& place)
{
    Ask(GST_STATE_PLAYING, place);
}

void ChainDriver::Pause()
{
    Ask(GST_STATE_PAUSED, std::nullopt);
}

void ChainDriver::GoTo(const SongPlace& place)
{
    Ask(std::nullopt, place);
}

void ChainDriver::SetVolumeFactor(double factor)
{
    const std::lock_guard lock(m_work->mutex);
    m_work->volumeFactor = factor;
    if (m_work->chain)
        m_work->chain->SetVolumeFactor(factor);
}

std::optional<double> ChainDriver::PositionSeconds() const
{
    const std::lock_guard lock(m_work->mutex);
    gint64 positionNs = 0;
    // While a seek is under way the pipeline still tells the place it left.
    if (!m_work->chain || m_work->isBusy || m_work->isAsked || m_work->events->IsCueing() ||
        m_work->events->IsBroken() ||
        gst_element_query_position(m_work->chain->Pipeline(), GST_FORMAT_TIME, &positionNs) == FALSE || positionNs < 0)
        return std::nullopt;
    return ToSeconds(positionNs);
}

std::optional<double> ChainDriver::DurationSeconds() const
{
    const std::lock_guard lock(m_work->mutex);
    gint64 durationNs = 0;
    if (!m_work->chain ||
        gst_element_query_duration(m_work->chain->Pipeline(), GST_FORMAT_TIME, &durationNs) == FALSE || durationNs <= 0)
        return std::nullopt;
    return ToSeconds(durationNs);
}

void ChainDriver::Ask(std::optional<GstState> state, const std::optional<SongPlace>& place)
{
    if (place)
        m_work->events->ExpectCueAfterSeek();
    std::unique_lock lock(m_work->mutex);
    if (state)
        m_work->wish.state = state;
    if (place)
        m_work->wish.place = place;
    m_work->isAsked = true;
    m_work->changed.notify_all();
    if (!m_work->isLate)
        m_work->isLate = !m_work->AwaitDone(lock);
}

bool ChainDriver::Work::AwaitDone(std::unique_lock<std::mutex>& lock)
{
    return changed.wait_for(lock, kServerLimit, [this] { return !isAsked && !isBusy; });
}

// ---- the driver's thread ----

void ChainDriver::Work::Do(Start start)
{
    Cue(std::move(start));
    std::unique_lock lock(mutex);
    isBusy = false;
    for (;;) {
        changed.notify_all();
        changed.wait(lock, [this] { return quits || isAsked; });
        if (quits)
            break;
        const Wish asked = std::exchange(wish, {});
        isAsked = false;
        isBusy = true;
        lock.unlock();
        Fulfil(asked);
        lock.lock();
        isBusy = false;
        if (!isAsked)
            isLate = false;
    }
    std::unique_ptr<Chain> done = std::move(chain);
    lock.unlock();
    done.reset();
    lock.lock();
    hasEnded = true;
    changed.notify_all();
}

void ChainDriver::Work::Cue(Start start)
{
    std::unique_ptr<Chain> built = Chain::Build(std::move(start.source), start.settings, events);
    if (!built) {
        events->OnBeyondTheMachine();
        events->OnError();
        return;
    }
    events->OnWaitForServer();
    const bool hasSink = built->Connect(sound::OpenAudioSink(start.sinkName, sound::SoundRole::Music));
    events->OnServerAnswered();
    Chain& cued = *built;
    {
        const std::lock_guard lock(mutex);
        chain = std::move(built);
        chain->SetVolumeFactor(volumeFactor);
    }
    if (!hasSink || !cued.SetState(GST_STATE_PAUSED))
        events->OnError();
    else if (!start.place.IsPlainStart() && AwaitFirstStep())
        Seek(start.place);
}

bool ChainDriver::Work::AwaitFirstStep()
{
    while (!events->AwaitLastStep(kLookAgain)) {
        const std::lock_guard lock(mutex);
        if (quits || events->IsBroken())
            return false;
    }
    return true;
}

void ChainDriver::Work::Fulfil(const Wish& wished)
{
    if (!chain || events->IsBroken())
        return;
    // A song that is to run goes to its place first. One that is to pause pauses first.
    if (wished.state == GST_STATE_PAUSED)
        chain->SetState(GST_STATE_PAUSED);
    if (wished.place) {
        events->ExpectCueAfterSeek();
        Seek(*wished.place);
    }
    if (wished.state == GST_STATE_PLAYING && !chain->SetState(GST_STATE_PLAYING))
        events->OnError();
}

// Without ACCURATE a demultiplexer may guess a place, and report that it is where it was asked to be.
void ChainDriver::Work::Seek(const SongPlace& wished) const
{
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    const gint64 stopNs = wished.stopSeconds ? ToNs(*wished.stopSeconds) : -1;
    if (gst_element_seek(chain->Pipeline(), wished.rate, GST_FORMAT_TIME, flags, GST_SEEK_TYPE_SET,
                         ToNs(wished.seconds), GST_SEEK_TYPE_SET, stopNs) == FALSE)
        events->OnCued();
}

} // namespace cardsong::playback
