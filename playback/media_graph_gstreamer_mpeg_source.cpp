#include "playback/media_graph_gstreamer_mpeg_source.h"

#include <gst/base/gstbasesrc.h>

#include <cmath>

namespace cardsong::playback {

namespace {

struct MpegSource {
    GstBaseSrc parent;
    MpegSong* song;
};

MpegSong& SongOf(void* source)
{
    return *static_cast<MpegSource*>(source)->song;
}

GstClockTime ToNs(double seconds)
{
    return static_cast<GstClockTime>(std::llround(seconds * static_cast<double>(GST_SECOND)));
}

// The form that GStreamer's decoders ask for: a whole frame in each buffer.
GstCaps* CapsOf(const MpegHeader& header)
{
    return gst_caps_new_simple("audio/mpeg", "mpegversion", G_TYPE_INT, 1, "layer", G_TYPE_INT,
                               static_cast<gint>(header.layer), "rate", G_TYPE_INT,
                               static_cast<gint>(header.samplesPerSecond), "channels", G_TYPE_INT,
                               static_cast<gint>(header.channels), "parsed", G_TYPE_BOOLEAN, TRUE, nullptr);
}

gboolean Negotiate(GstBaseSrc* source)
{
    GstCaps* const caps = CapsOf(SongOf(source).Header());
    const gboolean taken = gst_base_src_set_caps(source, caps);
    gst_caps_unref(caps);
    return taken;
}

gboolean IsSeekable(GstBaseSrc*)
{
    return TRUE;
}

// Frames in front of the segment ready the decoder. It does not pass on the sound of them.
gboolean DoSeek(GstBaseSrc* source, GstSegment* segment)
{
    SongOf(source).GoTo(static_cast<double>(segment->start) / static_cast<double>(GST_SECOND));
    segment->position = segment->start;
    segment->time = segment->start;
    return TRUE;
}

gboolean Unlock(GstBaseSrc* source)
{
    SongOf(source).Cancel();
    return TRUE;
}

gboolean UnlockStop(GstBaseSrc* source)
{
    SongOf(source).TakeCancelBack();
    return TRUE;
}

GstFlowReturn EndOf(GstBaseSrc* source)
{
    if (SongOf(source).IsCancelled())
        return GST_FLOW_FLUSHING;
    if (!SongOf(source).HasFailed())
        return GST_FLOW_EOS;
    GST_ELEMENT_ERROR(source, RESOURCE, READ, (nullptr), (nullptr));
    return GST_FLOW_ERROR;
}

GstFlowReturn Create(GstBaseSrc* source, guint64, guint, GstBuffer** buffer)
{
    const auto frame = SongOf(source).Next();
    if (!frame)
        return EndOf(source);
    *buffer = gst_buffer_new_allocate(nullptr, frame->bytes.size(), nullptr);
    gst_buffer_fill(*buffer, 0, frame->bytes.data(), frame->bytes.size());
    GST_BUFFER_PTS(*buffer) = ToNs(frame->startSeconds);
    GST_BUFFER_DURATION(*buffer) = ToNs(frame->endSeconds) - ToNs(frame->startSeconds);
    return GST_FLOW_OK;
}

gpointer g_parentClass;

gboolean Query(GstBaseSrc* source, GstQuery* query)
{
    GstFormat format = GST_FORMAT_UNDEFINED;
    if (GST_QUERY_TYPE(query) != GST_QUERY_DURATION)
        return GST_BASE_SRC_CLASS(g_parentClass)->query(source, query);
    gst_query_parse_duration(query, &format, nullptr);
    if (format != GST_FORMAT_TIME)
        return FALSE;
    gst_query_set_duration(query, format, static_cast<gint64>(ToNs(SongOf(source).Seconds())));
    return TRUE;
}

void Finalize(GObject* object)
{
    delete reinterpret_cast<MpegSource*>(object)->song;
    G_OBJECT_CLASS(g_parentClass)->finalize(object);
}

void InitClass(gpointer type, gpointer)
{
    g_parentClass = g_type_class_peek_parent(type);
    G_OBJECT_CLASS(type)->finalize = Finalize;
    gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "MPEG song", "Source/Audio",
                                          "Gives the frames of an MPEG audio file", "Cardsong");
    gst_element_class_add_pad_template(GST_ELEMENT_CLASS(type),
                                       gst_pad_template_new("src", GST_PAD_SRC, GST_PAD_ALWAYS, gst_caps_new_any()));
    GstBaseSrcClass* const source = GST_BASE_SRC_CLASS(type);
    source->negotiate = Negotiate;
    source->is_seekable = IsSeekable;
    source->do_seek = DoSeek;
    source->unlock = Unlock;
    source->unlock_stop = UnlockStop;
    source->create = Create;
    source->query = Query;
}

void InitInstance(GTypeInstance* instance, gpointer)
{
    gst_base_src_set_format(GST_BASE_SRC(instance), GST_FORMAT_TIME);
}

GType MpegSourceType()
{
    static const GType s_type =
        g_type_register_static_simple(GST_TYPE_BASE_SRC, "CardsongMpegSource", sizeof(GstBaseSrcClass), InitClass,
                                      sizeof(MpegSource), InitInstance, GTypeFlags{});
    return s_type;
}

} // namespace

sound::ElementPtr MakeMpegSource(std::unique_ptr<MpegSong> song)
{
    void* const source = g_object_new(MpegSourceType(), nullptr);
    static_cast<MpegSource*>(source)->song = song.release();
    return sound::ElementPtr(GST_ELEMENT(gst_object_ref_sink(source)));
}

} // namespace cardsong::playback
