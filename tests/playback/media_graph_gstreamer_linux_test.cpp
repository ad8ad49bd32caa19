// What the engine on GStreamer promises beyond what is true of every engine.
#include "tests/playback/engine_test.h"

#include <gst/base/gstbasesink.h>
#include <sys/stat.h>

using namespace cardsong::test;

namespace {

TEST_F(EngineTest, PictureAndPinsAreMissing)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_FALSE(m_graph.SetVideoOwner(nullptr) || m_graph.SetVideoRect(0, 0, 1, 1));
    EXPECT_FALSE(m_graph.SetFullScreen(true) || m_graph.IsFullScreen());
    EXPECT_FALSE(m_graph.ConnectDirect(nullptr, nullptr, nullptr) || m_graph.Disconnect(nullptr));
}

TEST_F(EngineTest, SecondFileIsRefused)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_FALSE(m_graph.RenderFile(DevicePath("short_tone.wma").c_str()));
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06);
}

TEST_F(EngineTest, SpeedsAndStretchesThatAreNoneAreRefused)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_FALSE(m_graph.SetRate(0.0));
    EXPECT_FALSE(m_graph.SetRate(-1.0));
    EXPECT_FALSE(m_graph.SetPositions(1.0, 0.5));
}

TEST_F(EngineTest, EmptyGraphStandsAtItsBeginning)
{
    Put("text.mp3", "no song");
    ASSERT_FALSE(Open("text.mp3"));
    m_graph.Run();
    EXPECT_EQ(Position(), 0.0);
}

TEST_F(EngineTest, StopKeepsThePositionForTheNextRun)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.SetPosition(0.8);
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.85; }));
    m_graph.Stop();
    const double stoppedAt = Position();
    EXPECT_GT(stoppedAt, 0.85);
    m_graph.Run();
    EXPECT_GE(Position(), stoppedAt - 0.001);
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

TEST_F(EngineTest, StoppedSongHoldsNoFile)
{
    const auto openFiles = [] {
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code ignored;
            files += std::filesystem::read_symlink(entry, ignored).filename() == "short_tone.mp3" ? 1 : 0;
        }
        return files;
    };
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    EXPECT_EQ(openFiles(), 1);
    m_graph.Stop();
    EXPECT_EQ(openFiles(), 0) << "the card could not be taken out";
}

TEST_F(EngineTest, PipeInPlaceOfASongIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo((m_device.CardDirectory() + "/pipe.mp3").c_str(), 0600), 0);
    ExpectNothingToPlay("pipe.mp3");
}

TEST_F(EngineTest, SongThatVanishedWhileStoppedBreaksOffWhenRun)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Stop();
    std::filesystem::remove(m_device.CardDirectory() + "/short_tone.mp3");
    EXPECT_FALSE(m_graph.Run());
    EXPECT_EQ(AwaitEvent(), kGraphErrorAbort);
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

// Opens, and refuses the first sound: a sound server that dies in between.
void RegisterDyingSink()
{
    const auto preroll = +[](GstBaseSink* sink, GstBuffer*) {
        GST_ELEMENT_ERROR(sink, RESOURCE, WRITE, (nullptr), (nullptr));
        return GST_FLOW_ERROR;
    };
    static GstFlowReturn (*const s_preroll)(GstBaseSink*, GstBuffer*) = preroll;
    const auto initClass = +[](gpointer type, gpointer) {
        gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "Dying sink", "Sink", "Refuses", "Cardsong");
        gst_element_class_add_pad_template(
            GST_ELEMENT_CLASS(type), gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS, gst_caps_new_any()));
        GST_BASE_SINK_CLASS(type)->preroll = s_preroll;
    };
    const GType type = g_type_register_static_simple(GST_TYPE_BASE_SINK, "DyingSink", sizeof(GstBaseSinkClass),
                                                     initClass, sizeof(GstBaseSink), nullptr, GTypeFlags{});
    gst_element_register(nullptr, "dyingsink", GST_RANK_NONE, type);
}

TEST_F(EngineTest, SinkThatFailsSaysNothingOfTheSong)
{
    ASSERT_TRUE(Open("short_tone.mp3")); // the library has started
    RegisterDyingSink();
    cardsong::kernel::SetAudioSink("dyingsink");
    for (const char* name : { "short_tone.mp3", "short_tone.wma" }) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(Open(name));
        double seconds = 7.0;
        EXPECT_FALSE(m_graph.GetDuration(seconds)) << "a song of no length would leave the list";
    }
}

TEST_F(EngineTest, GraphsLeaveNoFileAndNoThreadBehind)
{
    const auto count = [](const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    };
    const auto playBriefly = [this] {
        ASSERT_TRUE(Open("short_tone.mp3"));
        m_graph.Run();
        m_graph.ReleaseAll();
    };
    playBriefly(); // threads that the engine keeps for all graphs start with the first
    const auto files = count("/proc/self/fd");
    const auto threads = count("/proc/self/task");
    for (int i = 0; i < 10; ++i)
        playBriefly();
    EXPECT_EQ(count("/proc/self/fd"), files);
    EXPECT_TRUE(Await([&] { return count("/proc/self/task") <= threads; }));
}

} // namespace
