// The elements of one song, wired by hand from file to sink. Knows no graph and no window: what it meets goes to
// GraphEvents.
#pragma once

#include "playback/media_graph_gstreamer_events.h"
#include "playback/media_graph_gstreamer_library.h"

#include <memory>
#include <string>

namespace cardsong::playback {

// The elements inside belong to the pipeline, which is taken down with the chain.
class Chain {
public:
    struct Settings {
        std::string sinkName;      // as for OpenAudioSink
        double volumeFactor = 1.0; // of the amplitude
        double side = 0.0;         // -1 (left only) to 1 (right only)
    };
    // Null when the file is missing, empty or no ordinary file, or when a part is not installed. The file's first bytes
    // choose between ASF (WMA) and MPEG audio, whatever its name. The song is not looked into any further: cue it. A
    // chain serves once: not every demultiplexer starts afresh after it went back to ready.
    static std::unique_ptr<Chain> Build(const std::string& hostPath, const Settings& settings,
                                        const std::shared_ptr<GraphEvents>& events);
    ~Chain();
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    GstElement* Pipeline() const { return m_pipeline.get(); }
    // False when the engine refuses at once; a later refusal goes to the events.
    bool SetState(GstState state);
    void SetVolumeFactor(double factor);

private:
    Chain() = default;
    bool AddTail(const Settings& settings);
    bool AddMpegHead(const std::string& hostPath);
    bool AddAsfHead(const std::string& hostPath);
    GstElement* Add(ElementPtr element);
    void WatchBus(const std::shared_ptr<GraphEvents>& events);
    void ConnectDemultiplexed(GstPad* pad);

    ElementPtr m_pipeline;
    GstElement* m_decoder = nullptr; // of an ASF song: made when its stream shows itself
    GstElement* m_convert = nullptr;
    GstElement* m_volume = nullptr;
};

// Loads what most songs need, so that the first of them does not wait for it.
void PreloadChain(const std::string& sinkName);

} // namespace cardsong::playback
