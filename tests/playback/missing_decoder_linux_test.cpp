// What becomes of songs where decoders are not installed: this program looks for GStreamer's plugins in a folder that
// holds all but those.
#include "tests/playback/engine_test.h"
#include "tests/playback/notice_window.h"

#include "platform/console_notice.h"

#include <cstdio>

using namespace cardsong::test;

namespace {

constexpr const char* kMissing[] = { "libgstmpg123.so", "libgstlibav.so" };

void LayOutPlugins()
{
    const std::filesystem::path folder = CARDSONG_GSTREAMER_PLUGINS;
    std::filesystem::create_directories(folder);
    for (const auto& plugin : std::filesystem::directory_iterator(CARDSONG_ALL_GSTREAMER_PLUGINS)) {
        const auto name = plugin.path().filename();
        if (std::find(std::begin(kMissing), std::end(kMissing), name) != std::end(kMissing))
            continue;
        std::error_code isThere;
        std::filesystem::create_symlink(plugin.path(), folder / name, isThere);
    }
}

class MissingDecoder : public EngineTest {
protected:
    static void SetUpTestSuite() { LayOutPlugins(); }

    MissingDecoder() { cardsong::kernel::TellNoticesTo(m_console); }
    ~MissingDecoder() override
    {
        cardsong::kernel::TellNoticesTo(nullptr);
        std::fclose(m_console);
    }

    std::string Told()
    {
        std::fflush(m_console);
        std::rewind(m_console);
        std::string told(1000, '\0');
        told.resize(std::fread(told.data(), 1, told.size(), m_console));
        return told;
    }

    std::FILE* const m_console = std::tmpfile();
};

TEST_F(MissingDecoder, SongIsMusicThatThisMachineCannotPlay)
{
    for (const char* name : kSongs) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(Open(name));
        double seconds = 7.0;
        EXPECT_FALSE(m_graph.GetDuration(seconds)) << "nobody knows how long it would last";
        EXPECT_EQ(seconds, 7.0);
        EXPECT_EQ(Position(), 0.0);
        EXPECT_TRUE(m_graph.IsPaused());
    }
}

TEST_F(MissingDecoder, ConsoleIsToldOnceWhichPackagesAreMissing)
{
    for (int i = 0; i < 2; ++i) {
        for (const char* name : kSongs)
            Open(name);
    }
    EXPECT_EQ(Told(), "cardsong: MP3 songs need the package gstreamer1.0-plugins-good, which is not installed\n"
                      "cardsong: WMA songs need the package gstreamer1.0-libav, which is not installed\n");
}

TEST_F(MissingDecoder, SongEndsAfterOneSecondInRealTimeAndAgainWhenRunAgain)
{
    const NoticeWindow window;
    ASSERT_FALSE(Open("short_tone.mp3"));
    m_graph.SetNotifyWindow(window.Handle());
    for (int round = 1; round <= 2; ++round) {
        const auto before = Clock::now();
        EXPECT_TRUE(m_graph.Run());
        EXPECT_EQ(AwaitEvent(), kGraphComplete);
        EXPECT_NEAR(SecondsSince(before), 1.0, kTimingSeconds);
        EXPECT_EQ(TakeEvent(), 0);
        EXPECT_EQ(window.Notices(), round);
        EXPECT_EQ(Position(), 1.0);
        m_graph.SetPosition(0.0);
        m_graph.Stop();
    }
}

TEST_F(MissingDecoder, SilenceIsPausedSoughtAndStoppedLikeASong)
{
    ASSERT_FALSE(Open("short_tone.wma"));
    EXPECT_TRUE(m_graph.SetPosition(0.5));
    EXPECT_EQ(Position(), 0.5);
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.6; }));
    EXPECT_TRUE(m_graph.Pause());
    const double held = Position();
    std::this_thread::sleep_for(std::chrono::milliseconds(600)); // longer than what is left
    EXPECT_EQ(Position(), held);
    EXPECT_EQ(TakeEvent(), 0);
    EXPECT_TRUE(m_graph.Stop());
    EXPECT_TRUE(m_graph.IsStopped());
}

TEST_F(MissingDecoder, FileWithoutMusicLastsNoTime)
{
    Put("text.mp3", std::string(5000, 't'));
    ExpectNothingToPlay("text.mp3");
}

// The identifier of the Content Encryption Object, put in front of the header's other objects.
TEST_F(MissingDecoder, ProtectedSongIsMusicThatThisMachineCannotPlay)
{
    std::string bytes = Sample("short_tone.wma");
    bytes.insert(30, std::string("\xFB\xB3\x11\x22\x23\xBD\xD2\x11\xB4\xB7\x00\xA0\xC9\x55\xFC\x6E", 16) +
                         std::string("\x18\0\0\0\0\0\0\0", 8));
    bytes.replace(16, 2, std::string("\x06\x02", 2)); // the header's size: 0x1EE and 24
    Put("protected.wma", bytes);
    EXPECT_FALSE(Open("protected.wma"));
    double seconds = 7.0;
    EXPECT_FALSE(m_graph.GetDuration(seconds));
    EXPECT_EQ(Told(), "cardsong: a protected song plays on no machine without its licence\n");
}

} // namespace
