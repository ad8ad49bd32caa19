#include "playback/media_graph_gstreamer_chain.h"

#include "platform/console_notice.h"
#include "platform/linux/kernel/start_trace.h"
#include "platform/linux/sound/audio_sinks.h"
#include "platform/linux/sound/song_parts.h"
#include "playback/media_graph.h"
#include "playback/media_graph_gstreamer_mpeg_source.h"

#include <atomic>

namespace cardsong::playback {

namespace {

// A new element. Null when it is not installed: the console is then told what does not play for want of it.
sound::ElementPtr MakePart(sound::Part part, const char* what)
{
    sound::ElementPtr element = sound::MakeElement(part.factory, part.plugin);
    if (!element)
        kernel::NoteMissingPackage(what, sound::PackageOf(part.plugin));
    return element;
}

constexpr const char* kAnySongs = "Songs";
constexpr const char* kMpegSongs = "MP3 songs";
constexpr const char* kAsfSongs = "WMA songs";

struct WmaDecoder {
    const char* mediaType;
    int version; // 0: any
    const char* factory;
};
constexpr WmaDecoder kWmaDecoders[] = {
    { "audio/x-wma", 1, "avdec_wmav1" },    { "audio/x-wma", 2, sound::kUsualWmaDecoder },
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

// A sound server still holds the last moment of a song that is over by the clock. Who stops at the end must not cut
// that moment off, so the end is reported later.
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

// Errors that are no fault of the song: it needs a licence or an unknown decoder, or a sink or the card refuses.
bool IsBeyondTheMachine(GstMessage* message)
{
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    const bool isBeyond = error->domain == GST_RESOURCE_ERROR ||
                          g_error_matches(error, GST_STREAM_ERROR, GST_STREAM_ERROR_DECRYPT) ||
                          g_error_matches(error, GST_STREAM_ERROR, GST_STREAM_ERROR_DECRYPT_NOKEY) ||
                          g_error_matches(error, GST_STREAM_ERROR, GST_STREAM_ERROR_CODEC_NOT_FOUND) ||
                          g_error_matches(error, GST_CORE_ERROR, GST_CORE_ERROR_MISSING_PLUGIN);
    g_error_free(error);
    return isBeyond;
}

// A sink cannot pause its own song. It asks for the state that the sound server wants.
void PassStateRequestOn(GstMessage* message, GraphEvents& events)
{
    GstState state = GST_STATE_VOID_PENDING;
    gst_message_parse_request_state(message, &state);
    events.OnSoundServerAsks(state == GST_STATE_PLAYING ? kSongMaySound : kAnotherSounds);
}

// Runs on the engine's threads. No message is kept: nobody would ever take it.
GstBusSyncReply HandleMessage(GstBus*, GstMessage* message, gpointer data)
{
    const auto& events = *static_cast<std::shared_ptr<GraphEvents>*>(data);
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ASYNC_DONE: events->OnCued(); break;
    case GST_MESSAGE_EOS: ReportEndSoon(events); break;
    case GST_MESSAGE_REQUEST_STATE: PassStateRequestOn(message, *events); break;
    case GST_MESSAGE_ERROR:
        if (IsBeyondTheMachine(message))
            events->OnBeyondTheMachine();
        events->OnError();
        break;
    default: break;
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void ForgetEvents(gpointer data)
{
    delete static_cast<std::shared_ptr<GraphEvents>*>(data);
}

// A sink keeps its first buffer until it may play. So the first sound is out when the second buffer comes.
void TraceFirstSound()
{
    static std::atomic<int> s_buffers = 0;
    if (++s_buffers == 2)
        kernel::TraceStart("first sound");
}

// Announces what comes to the sink, before the sink gets it.
GstPadProbeReturn SeeSound(GstPad*, GstPadProbeInfo*, gpointer data)
{
    (*static_cast<std::shared_ptr<GraphEvents>*>(data))->OnWaitForServer();
    TraceFirstSound();
    return GST_PAD_PROBE_OK;
}

} // namespace

std::unique_ptr<Chain> Chain::Build(SongSource source, const Settings& settings,
                                    const std::shared_ptr<GraphEvents>& events)
{
    std::unique_ptr<Chain> chain(new Chain(events));
    chain->m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    if (!chain->AddTail(settings))
        return nullptr;
    if (!(source.mpeg ? chain->AddMpegHead(std::move(source.mpeg)) : chain->AddAsfHead(source.hostPath)))
        return nullptr;
    chain->WatchBus();
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

GstElement* Chain::Add(sound::ElementPtr element)
{
    GstElement* const added = element.get();
    if (added != nullptr)
        gst_bin_add(GST_BIN(Pipeline()), added); // takes a share; ours ends with this call
    return added;
}

bool Chain::Connect(sound::ElementPtr opened)
{
    GstElement* const sink = Add(std::move(opened));
    if (sink == nullptr)
        return false;
    WatchSink(sink);
    return gst_element_link(m_volume, sink) != FALSE;
}

bool Chain::AddTail(const Settings& settings)
{
    m_convert = Add(MakePart(sound::kConvert, kAnySongs));
    GstElement* const resample = Add(MakePart(sound::kResample, kAnySongs));
    m_volume = Add(MakePart(sound::kVolume, kAnySongs));
    if (m_convert == nullptr || resample == nullptr || m_volume == nullptr)
        return false;
    SetVolumeFactor(settings.volumeFactor);
    if (gst_element_link(m_convert, resample) == FALSE)
        return false;
    if (settings.side == 0.0)
        return gst_element_link(resample, m_volume) != FALSE;
    GstElement* const balance = Add(MakePart(sound::kBalance, "Songs with a balance"));
    if (balance == nullptr)
        return false;
    gst_util_set_object_arg(G_OBJECT(balance), "method", "simple"); // lowers one side and leaves the other
    g_object_set(balance, "panorama", static_cast<gfloat>(settings.side), nullptr);
    return gst_element_link_many(resample, balance, m_volume, nullptr) != FALSE;
}

bool Chain::AddMpegHead(std::unique_ptr<MpegSong> song)
{
    GstElement* const source = Add(MakeMpegSource(std::move(song)));
    GstElement* const decoder = Add(MakePart(sound::kMp3Decoder, kMpegSongs));
    return decoder != nullptr && gst_element_link_many(source, decoder, m_convert, nullptr) != FALSE;
}

bool Chain::AddAsfHead(const std::string& hostPath)
{
    GstElement* const source = Add(MakePart(sound::kFileSource, kAnySongs));
    GstElement* const demultiplexer = Add(MakePart(sound::kAsfDemultiplexer, kAsfSongs));
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
        m_decoder = factory == nullptr ? nullptr : Add(MakePart({ factory, sound::kWmaPlugin }, kAsfSongs));
        if (m_decoder == nullptr) {
            m_events->OnBeyondTheMachine();
            return;
        }
        if (gst_element_link(m_decoder, m_convert) == FALSE)
            return;
        gst_element_sync_state_with_parent(m_decoder);
    }
    GstPad* const input = gst_element_get_static_pad(m_decoder, "sink");
    if (gst_pad_is_linked(input) == FALSE)
        gst_pad_link(pad, input);
    gst_object_unref(input);
}

void Chain::WatchBus()
{
    GstBus* const bus = gst_element_get_bus(Pipeline());
    gst_bus_set_sync_handler(bus, HandleMessage, new std::shared_ptr<GraphEvents>(m_events), ForgetEvents);
    gst_object_unref(bus);
}

void Chain::WatchSink(GstElement* sink)
{
    GstPad* const pad = gst_element_get_static_pad(sink, "sink");
    if (pad == nullptr)
        return;
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, SeeSound, new std::shared_ptr<GraphEvents>(m_events),
                      ForgetEvents);
    gst_object_unref(pad);
}

void PreloadChain(const std::string& sinkName)
{
    if (!sound::StartGstreamer())
        return;
    for (const sound::Part& part : { sound::kMp3Decoder, sound::kConvert, sound::kResample, sound::kVolume })
        sound::MakeElement(part.factory, part.plugin);
    if (sound::ElementPtr sink = sound::OpenAudioSink(sinkName, sound::SoundRole::Music))
        gst_element_set_state(sink.get(), GST_STATE_NULL);
}

} // namespace cardsong::playback
