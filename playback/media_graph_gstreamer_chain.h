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
    // Null when the file is missing, empty or no ordinary file, or when a part is not installed. The file's first bytes
    // choose between ASF (WMA) and MPEG audio, whatever its name. The song is not looked into any further: cue it.
    static std::unique_ptr<Chain> Build(const std::string& hostPath, const std::string& sinkName,
                                        const std::shared_ptr<GraphEvents>& events);
    ~Chain();
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    GstElement* Pipeline() const { return m_pipeline.get(); }
    // False when the engine refuses at once; a later refusal goes to the events.
    bool SetState(GstState state);
    void SetVolumeFactor(double factor);
    // -1 (left only) to 1 (right only). The first that is not 0 adds an element, for which the pipeline has to be ready
    // at most (GST_STATE_READY).
    bool HasBalance() const { return m_balance != nullptr; }
    bool SetBalance(double side);

private:
    Chain() = default;
    bool AddTail(const std::string& sinkName);
    bool AddMpegHead(const std::string& hostPath);
    bool AddAsfHead(const std::string& hostPath);
    GstElement* Add(ElementPtr element);
    void WatchBus(const std::shared_ptr<GraphEvents>& events);
    void ConnectDemultiplexed(GstPad* pad);

    ElementPtr m_pipeline;
    GstElement* m_decoder = nullptr; // of an ASF song: made when its stream shows itself
    GstElement* m_convert = nullptr;
    GstElement* m_resample = nullptr;
    GstElement* m_balance = nullptr;
    GstElement* m_volume = nullptr;
    GstElement* m_sink = nullptr;
};

// Loads what most songs need, so that the first of them does not wait for it.
void PreloadChain(const std::string& sinkName);

} // namespace cardsong::playback
