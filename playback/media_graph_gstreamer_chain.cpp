#include "playback/media_graph_gstreamer_chain.h"

#include "platform/linux/kernel/start_trace.h"
#include "playback/media_graph_gstreamer_sink.h"
#include "playback/media_graph_song_probe.h"

#include <atomic>
#include <cstdlib>

namespace cardsong::playback {

namespace {

// As much sound as lies parsed ahead of the decoder. It lets the parser see enough of a stream without a length field
// to tell its length when cued.
constexpr guint64 kReadAheadNs = 3 * GST_SECOND;

struct WmaDecoder {
    const char* mediaType;
    int version; // 0: any
    const char* factory;
};
constexpr WmaDecoder kWmaDecoders[] = {
    { "audio/x-wma", 1, "avdec_wmav1" },    { "audio/x-wma", 2, "avdec_wmav2" },
    { "audio/x-wma", 3, "avdec_wmapro" },   { "audio/x-wma", 4, "avdec_wmalossless" },
    { "audio/x-wms", 0, "avdec_wmavoice" },
};

const char* DecoderFor(GstPad* pad)
{
    GstCaps* const caps = gst_pad_get_current_caps(pad);
    const char* factory = nullptr;
    if (caps != nullptr && gst_caps_get_size(caps) > 0) {
        const GstStructure* const type = gst_caps_get_structure(caps, 0);
        int version = 0;
        gst_structure_get_int(type, "wmaversion", &version);
        for (const WmaDecoder& decoder : kWmaDecoders) {
            if (gst_structure_has_name(type, decoder.mediaType) && (decoder.version == 0 || decoder.version == version))
                factory = decoder.factory;
        }
    }
    if (caps != nullptr)
        gst_caps_unref(caps);
    return factory;
}

// By the clock that keeps the time the song is over, but a sound server holds its last moment still: whoever stops at
// the end must not cut it off.
constexpr GstClockTime kLastMomentNs = 60 * GST_MSECOND;

struct End {
    std::shared_ptr<GraphEvents> events;
    unsigned play;
};

gboolean ReportEnd(GstClock*, GstClockTime, GstClockID, gpointer data)
{
    const End& end = *static_cast<End*>(data);
    end.events->OnEnd(end.play);
    return TRUE;
}

void ReportEndSoon(const std::shared_ptr<GraphEvents>& events)
{
    GstClock* const clock = gst_system_clock_obtain();
    const GstClockID id = gst_clock_new_single_shot_id(clock, gst_clock_get_time(clock) + kLastMomentNs);
    const auto forget = +[](gpointer data) { delete static_cast<End*>(data); };
    gst_clock_id_wait_async(id, ReportEnd, new End{ events, events->Play() }, forget);
    gst_clock_id_unref(id);
    gst_object_unref(clock);
}

// Runs on the engine's threads. No message is kept: nobody would ever take it.
GstBusSyncReply HandleMessage(GstBus*, GstMessage* message, gpointer data)
{
    const auto& events = *static_cast<std::shared_ptr<GraphEvents>*>(data);
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ASYNC_DONE: events->OnCued(); break;
    case GST_MESSAGE_EOS: ReportEndSoon(events); break;
    case GST_MESSAGE_ERROR: events->OnError(); break;
    default: break;
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void ForgetEvents(gpointer data)
{
    delete static_cast<std::shared_ptr<GraphEvents>*>(data);
}

// A sink takes its first buffer and keeps it until it may play; so the first sound is out when the second one comes.
GstPadProbeReturn TraceSecondBuffer(GstPad*, GstPadProbeInfo*, gpointer)
{
    static std::atomic<int> s_buffers = 0;
    if (++s_buffers < 2)
        return GST_PAD_PROBE_OK;
    kernel::TraceStart("first sound");
    return GST_PAD_PROBE_REMOVE;
}

void TraceFirstSound(GstElement* sink)
{
    static std::atomic<bool> s_asked = std::getenv("CARDSONG_TRACE_START") == nullptr;
    if (s_asked.exchange(true))
        return;
    GstPad* const pad = gst_element_get_static_pad(sink, "sink");
    if (pad == nullptr)
        return;
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, TraceSecondBuffer, nullptr, nullptr);
    gst_object_unref(pad);
}

} // namespace

std::unique_ptr<Chain> Chain::Build(const std::string& hostPath, const Settings& settings,
                                    const std::shared_ptr<GraphEvents>& events)
{
    const SongKind kind = LookAtSong(hostPath);
    if (kind == SongKind::None)
        return nullptr;
    std::unique_ptr<Chain> chain(new Chain);
    chain->m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    if (!chain->AddTail(settings))
        return nullptr;
    if (!(kind == SongKind::Asf ? chain->AddAsfHead(hostPath) : chain->AddMpegHead(hostPath)))
        return nullptr;
    chain->WatchBus(events);
    return chain;
}

Chain::~Chain()
{
    if (!m_pipeline)
        return;
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    GstBus* const bus = gst_element_get_bus(m_pipeline.get());
    gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
    gst_object_unref(bus);
}

bool Chain::SetState(GstState state)
{
    return gst_element_set_state(Pipeline(), state) != GST_STATE_CHANGE_FAILURE;
}

void Chain::SetVolumeFactor(double factor)
{
    g_object_set(m_volume, "volume", factor, nullptr);
}

GstElement* Chain::Add(ElementPtr element)
{
    if (element)
        gst_bin_add(GST_BIN(Pipeline()), element.get()); // takes a share; ours ends with this call
    return element.get();
}

bool Chain::AddTail(const Settings& settings)
{
    m_convert = Add(MakeElement("audioconvert", "audioconvert"));
    GstElement* const resample = Add(MakeElement("audioresample", "audioresample"));
    m_volume = Add(MakeElement("volume", "volume"));
    GstElement* const sink = Add(OpenAudioSink(settings.sinkName));
    if (m_convert == nullptr || resample == nullptr || m_volume == nullptr || sink == nullptr)
        return false;
    SetVolumeFactor(settings.volumeFactor);
    TraceFirstSound(sink);
    if (gst_element_link_many(m_convert, resample, nullptr) == FALSE || gst_element_link(m_volume, sink) == FALSE)
        return false;
    if (settings.side == 0.0)
        return gst_element_link(resample, m_volume) != FALSE;
    GstElement* const balance = Add(MakeElement("audiopanorama", "audiofx"));
    if (balance == nullptr)
        return false;
    gst_util_set_object_arg(G_OBJECT(balance), "method", "simple"); // lowers one side and leaves the other
    g_object_set(balance, "panorama", static_cast<gfloat>(settings.side), nullptr);
    return gst_element_link_many(resample, balance, m_volume, nullptr) != FALSE;
}

bool Chain::AddMpegHead(const std::string& hostPath)
{
    GstElement* const source = Add(MakeElement("filesrc", "coreelements"));
    GstElement* const parser = Add(MakeElement("mpegaudioparse", "audioparsers"));
    GstElement* const queue = Add(MakeElement("queue", "coreelements"));
    GstElement* const decoder = Add(MakeElement("mpg123audiodec", "mpg123"));
    if (source == nullptr || parser == nullptr || queue == nullptr || decoder == nullptr)
        return false;
    g_object_set(source, "location", hostPath.c_str(), nullptr);
    g_object_set(queue, "max-size-time", kReadAheadNs, "max-size-bytes", 0U, "max-size-buffers", 0U, nullptr);
    return gst_element_link_many(source, parser, queue, decoder, m_convert, nullptr) != FALSE;
}

bool Chain::AddAsfHead(const std::string& hostPath)
{
    GstElement* const source = Add(MakeElement("filesrc", "coreelements"));
    GstElement* const demultiplexer = Add(MakeElement("asfdemux", "asf"));
    if (source == nullptr || demultiplexer == nullptr)
        return false;
    g_object_set(source, "location", hostPath.c_str(), nullptr);
    const auto connect =
        +[](GstElement*, GstPad* pad, gpointer chain) { static_cast<Chain*>(chain)->ConnectDemultiplexed(pad); };
    g_signal_connect(demultiplexer, "pad-added", G_CALLBACK(connect), this);
    return gst_element_link(source, demultiplexer) != FALSE;
}

// Runs on the demultiplexer's thread, which ends before the chain does. A stream that finds no decoder stays
// unconnected; when none is connected, the demultiplexer reports that itself.
void Chain::ConnectDemultiplexed(GstPad* pad)
{
    if (m_decoder == nullptr) {
        const char* const factory = DecoderFor(pad);
        if (factory == nullptr)
            return;
        m_decoder = Add(MakeElement(factory, "libav"));
        if (m_decoder == nullptr || gst_element_link(m_decoder, m_convert) == FALSE)
            return;
        gst_element_sync_state_with_parent(m_decoder);
    }
    GstPad* const input = gst_element_get_static_pad(m_decoder, "sink");
    if (gst_pad_is_linked(input) == FALSE)
        gst_pad_link(pad, input);
    gst_object_unref(input);
}

void Chain::WatchBus(const std::shared_ptr<GraphEvents>& events)
{
    GstBus* const bus = gst_element_get_bus(Pipeline());
    gst_bus_set_sync_handler(bus, HandleMessage, new std::shared_ptr<GraphEvents>(events), ForgetEvents);
    gst_object_unref(bus);
}

void PreloadChain(const std::string& sinkName)
{
    if (!StartGstreamer())
        return;
    MakeElement("mpegaudioparse", "audioparsers");
    MakeElement("mpg123audiodec", "mpg123");
    MakeElement("audioconvert", "audioconvert");
    MakeElement("audioresample", "audioresample");
    MakeElement("volume", "volume");
    if (ElementPtr sink = OpenAudioSink(sinkName))
        gst_element_set_state(sink.get(), GST_STATE_NULL);
}

} // namespace cardsong::playback
