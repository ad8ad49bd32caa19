#include "platform/linux/sound/sound_chain.h"

#include "platform/audio_sink.h"
#include "platform/console_notice.h"
#include "platform/linux/sound/audio_sinks.h"

#include <algorithm>
#include <utility>

namespace cardsong::sound {

namespace {

// A second of a compact disc has 172 of these; what is pushed at once has to be converted at once.
constexpr std::size_t kPieceFrames = 8192;

const char* FormatName(const WaveSound& wave)
{
    if (wave.kind == SampleKind::Float)
        return wave.bitsPerSample == 64 ? "F64LE" : "F32LE";
    switch (wave.bitsPerSample) {
    case 8: return "U8";
    case 16: return "S16LE";
    case 24: return "S24LE";
    default: return "S32LE";
    }
}

GstCaps* CapsOf(const WaveSound& wave)
{
    return gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, FormatName(wave), "layout", G_TYPE_STRING,
                               "interleaved", "rate", G_TYPE_INT, static_cast<int>(wave.samplesPerSecond), "channels",
                               G_TYPE_INT, static_cast<int>(wave.channels), nullptr);
}

ElementPtr MakePart(const char* factory, const char* plugin)
{
    ElementPtr element = MakeElement(factory, plugin);
    if (!element)
        kernel::NoteMissingPackage("Sounds", PackageOf(plugin));
    return element;
}

// All of the sound in pieces that share its memory, then its end.
void Feed(GstElement* source, Sound given)
{
    auto* const sound = new Sound(std::move(given));
    const auto forget = +[](gpointer data) { delete static_cast<Sound*>(data); };
    const WaveSound& wave = sound->wave;
    const auto samples = wave.samples;
    const std::size_t frameBytes = wave.FrameBytes();
    const unsigned speed = wave.samplesPerSecond;
    GstBuffer* const whole =
        gst_buffer_new_wrapped_full(GST_MEMORY_FLAG_READONLY, const_cast<std::byte*>(samples.data()), samples.size(), 0,
                                    samples.size(), sound, forget);
    const auto timeOf = [speed](std::size_t frame) { return gst_util_uint64_scale(frame, GST_SECOND, speed); };
    const std::size_t frames = samples.size() / frameBytes;
    GstFlowReturn result = GST_FLOW_OK;
    for (std::size_t frame = 0; frame < frames && result == GST_FLOW_OK; frame += kPieceFrames) {
        const std::size_t end = std::min(frame + kPieceFrames, frames);
        GstBuffer* const piece =
            gst_buffer_copy_region(whole, GST_BUFFER_COPY_MEMORY, frame * frameBytes, (end - frame) * frameBytes);
        GST_BUFFER_PTS(piece) = timeOf(frame);
        GST_BUFFER_DURATION(piece) = timeOf(end) - timeOf(frame);
        g_signal_emit_by_name(source, "push-buffer", piece, &result);
        gst_buffer_unref(piece);
    }
    gst_buffer_unref(whole);
    g_signal_emit_by_name(source, "end-of-stream", &result);
}

// Runs on the chain's threads. No message is kept: nobody would ever take it.
GstBusSyncReply HandleMessage(GstBus*, GstMessage* message, gpointer onEnd)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS || GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        reinterpret_cast<void (*)()>(onEnd)();
    gst_message_unref(message);
    return GST_BUS_DROP;
}

} // namespace

SoundChain::SoundChain(Sound sound, void (*onEnd)()) : m_onEnd(onEnd)
{
    if (!StartGstreamer() || !Build(sound.wave) ||
        gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        m_onEnd();
        return;
    }
    Feed(m_source, std::move(sound));
}

SoundChain::~SoundChain()
{
    if (!m_pipeline)
        return;
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    GstBus* const bus = gst_element_get_bus(m_pipeline.get());
    gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
    gst_object_unref(bus);
}

bool SoundChain::Build(const WaveSound& wave)
{
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    GstBus* const bus = gst_element_get_bus(m_pipeline.get());
    gst_bus_set_sync_handler(bus, HandleMessage, reinterpret_cast<gpointer>(m_onEnd), nullptr);
    gst_object_unref(bus);
    m_source = Add(MakePart("appsrc", "app"));
    GstElement* const convert = Add(MakePart("audioconvert", "audioconvert"));
    GstElement* const resample = Add(MakePart("audioresample", "audioresample"));
    if (m_source == nullptr || convert == nullptr || resample == nullptr)
        return false;
    GstElement* const sink = Add(OpenAudioSink(kernel::AudioSink(), SoundRole::Event));
    if (sink == nullptr)
        return false;
    GstCaps* const caps = CapsOf(wave);
    g_object_set(m_source, "caps", caps, "format", GST_FORMAT_TIME, nullptr);
    gst_caps_unref(caps);
    return gst_element_link_many(m_source, convert, resample, sink, nullptr) != FALSE;
}

GstElement* SoundChain::Add(ElementPtr element)
{
    GstElement* const added = element.get();
    if (added != nullptr)
        gst_bin_add(GST_BIN(m_pipeline.get()), added); // takes a share; ours ends with this call
    return added;
}

} // namespace cardsong::sound
