// A sink of the tests' own: keeps what it is given, and hangs when it is told to, as a sound server may.
#pragma once

#include "platform/audio_sink.h"
#include "platform/linux/sound/gstreamer_library.h"

#include <gst/base/gstbasesink.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>

namespace cardsong::test {

struct Loudspeaker {
    std::mutex mutex;
    std::condition_variable changed;
    std::string heard;      // the bytes of all sounds
    int opened = 0;         // how many chains have opened it
    int closed = 0;         // how many are down again
    bool answers = true;    // false: who opens it waits
    bool takes = true;      // false: who gives it sound waits, after a first piece
    bool refuses = false;   // true: the first piece is an error
    bool isFlushed = false; // the chain that waits is to go down

    void Set(bool Loudspeaker::*what, bool value)
    {
        const std::lock_guard lock(mutex);
        this->*what = value;
        changed.notify_all();
    }
    // For ten seconds at most.
    bool Comes(const std::function<bool(const Loudspeaker&)>& isThere)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] { return isThere(*this); });
    }
};

inline Loudspeaker& TheLoudspeaker()
{
    static Loudspeaker s_loudspeaker;
    return s_loudspeaker;
}

namespace loudspeaker {

inline gboolean Open(GstBaseSink*)
{
    Loudspeaker& self = TheLoudspeaker();
    std::unique_lock lock(self.mutex);
    ++self.opened;
    self.isFlushed = false;
    self.changed.notify_all();
    self.changed.wait(lock, [&] { return self.answers; });
    return TRUE;
}

inline gboolean Close(GstBaseSink*)
{
    Loudspeaker& self = TheLoudspeaker();
    const std::lock_guard lock(self.mutex);
    ++self.closed;
    self.changed.notify_all();
    return TRUE;
}

inline gboolean Flush(GstBaseSink*)
{
    TheLoudspeaker().Set(&Loudspeaker::isFlushed, true);
    return TRUE;
}

inline GstFlowReturn Take(GstBaseSink* sink, GstBuffer* buffer)
{
    Loudspeaker& self = TheLoudspeaker();
    std::unique_lock lock(self.mutex);
    if (self.refuses) {
        lock.unlock();
        GST_ELEMENT_ERROR(sink, RESOURCE, WRITE, (nullptr), (nullptr));
        return GST_FLOW_ERROR;
    }
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_READ);
    self.heard.append(reinterpret_cast<const char*>(map.data), map.size);
    gst_buffer_unmap(buffer, &map);
    self.changed.notify_all();
    self.changed.wait(lock, [&] { return self.takes || self.isFlushed; });
    return self.isFlushed ? GST_FLOW_FLUSHING : GST_FLOW_OK;
}

inline void InitClass(gpointer type, gpointer)
{
    gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "Loudspeaker", "Sink", "Keeps sound", "Cardsong");
    gst_element_class_add_pad_template(GST_ELEMENT_CLASS(type),
                                       gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS, gst_caps_new_any()));
    auto* const methods = GST_BASE_SINK_CLASS(type);
    methods->start = Open;
    methods->stop = Close;
    methods->unlock = Flush;
    methods->render = Take;
}

inline void InitSink(GTypeInstance* sink, gpointer)
{
    gst_base_sink_set_sync(GST_BASE_SINK(sink), FALSE);
}

} // namespace loudspeaker

// Makes it the program's sink.
inline void UseLoudspeaker()
{
    sound::StartGstreamer();
    static const bool s_registered = [] {
        const GType type =
            g_type_register_static_simple(GST_TYPE_BASE_SINK, "Loudspeaker", sizeof(GstBaseSinkClass),
                                          loudspeaker::InitClass, sizeof(GstBaseSink), loudspeaker::InitSink, {});
        return gst_element_register(nullptr, "loudspeaker", GST_RANK_NONE, type) != FALSE;
    }();
    kernel::SetAudioSink(s_registered ? "loudspeaker" : "");
}

} // namespace cardsong::test
