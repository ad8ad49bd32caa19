// The elements of one song, wired by hand from file to sink. Knows no graph and no window: what it meets goes to
// GraphEvents.
#pragma once

#include "platform/linux/sound/gstreamer_library.h"
#include "playback/media_graph_gstreamer_events.h"
#include "playback/mpeg_song.h"

#include <memory>
#include <string>

namespace cardsong::playback {

// What a chain is built for.
struct SongSource {
    std::string hostPath;
    std::unique_ptr<MpegSong> mpeg; // null: an ASF song, whose file the demultiplexer reads by itself
};

// The elements inside belong to the pipeline, which is taken down with the chain.
class Chain {
public:
    struct Settings {
        double volumeFactor = 1.0; // of the amplitude
        double side = 0.0;         // -1 (left only) to 1 (right only)
    };
    // All but the sink. Null when a part is not installed; the console is told which package holds it. Whether the song
    // plays is known when it is cued. A chain serves once: not every demultiplexer starts afresh after it went back to
    // ready.
    static std::unique_ptr<Chain> Build(SongSource source, const Settings& settings,
                                        const std::shared_ptr<GraphEvents>& events);
    ~Chain();
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    // Links the sink, which asks its server what sound it takes. False for a null sink, and when it takes none.
    bool Connect(sound::ElementPtr sink);

    GstElement* Pipeline() const { return m_pipeline.get(); }
    // False when the engine refuses at once; a later refusal goes to the events.
    bool SetState(GstState state);
    void SetVolumeFactor(double factor);

private:
    explicit Chain(const std::shared_ptr<GraphEvents>& events) : m_events(events) {}
    bool AddTail(const Settings& settings);
    bool AddMpegHead(std::unique_ptr<MpegSong> song);
    bool AddAsfHead(const std::string& hostPath);
    GstElement* Add(sound::ElementPtr element);
    void WatchBus();
    void WatchSink(GstElement* sink);
    void ConnectDemultiplexed(GstPad* pad);

    const std::shared_ptr<GraphEvents> m_events;
    sound::ElementPtr m_pipeline;
    GstElement* m_decoder = nullptr; // of an ASF song: made when its stream shows itself
    GstElement* m_convert = nullptr;
    GstElement* m_volume = nullptr;
};

// Loads what most songs need, so that the first song does not wait for it.
void PreloadChain(const std::string& sinkName);

} // namespace cardsong::playback
