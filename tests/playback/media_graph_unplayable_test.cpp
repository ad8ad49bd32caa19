// Music that this machine cannot play, on the real engine: it keeps its place in the list as one silent second.
#include "playback/media_player.h"

#include "tests/playback/engine_test.h"
#include "tests/playback/notice_window.h"

#include <limits>
#include <string_view>

using namespace cardsong::test;

namespace {

// The WMA sample with an audio format that nobody decodes: the format tag is the first field of the type-specific data
// of the audio stream's properties.
std::string SongOfUnknownFormat()
{
    // ASF_Audio_Media {F8699E40-5B4D-11CF-A8FD-00805F5C442B}
    constexpr std::string_view kAudioMedia("\x40\x9E\x69\xF8\x4D\x5B\xCF\x11\xA8\xFD\x00\x80\x5F\x5C\x44\x2B", 16);
    // Both type identifiers, time offset, two sizes, flags and a reserved field come before the data.
    constexpr std::size_t kFormatTag = 16 + 16 + 8 + 4 + 4 + 2 + 4;
    std::string song = Sample("short_tone.wma");
    const std::size_t stream = song.find(kAudioMedia);
    EXPECT_NE(stream, std::string::npos);
    EXPECT_EQ(song.substr(stream + kFormatTag, 2), "\x61\x01"); // Windows Media Audio 2
    return song.replace(stream + kFormatTag, 2, "\x34\x12");
}

class UnplayableSong : public EngineTest {
protected:
    UnplayableSong() { Put("unknown.wma", SongOfUnknownFormat()); }
};

TEST_F(UnplayableSong, IsCuedAtOnceWithALengthThatIsNotKnown)
{
    const auto before = Clock::now();
    EXPECT_FALSE(Open("unknown.wma"));
    EXPECT_LT(Clock::now() - before, kAtOnce);
    EXPECT_TRUE(m_graph.IsPaused());
    EXPECT_EQ(Position(), 0.0);
    double seconds = 7.0;
    EXPECT_FALSE(m_graph.GetDuration(seconds));
    EXPECT_EQ(seconds, 7.0);
}

TEST_F(UnplayableSong, RunsThroughOneSecondToItsEndWhichIsAnnouncedAndReportedOnce)
{
    const NoticeWindow window;
    EXPECT_FALSE(Open("unknown.wma"));
    ASSERT_TRUE(m_graph.SetNotifyWindow(window.Handle()));
    const auto before = Clock::now();
    EXPECT_TRUE(m_graph.Run());
    EXPECT_TRUE(m_graph.IsRunning());
    EXPECT_TRUE(Await([&] { return window.Notices() > 0; }));
    EXPECT_GE(SecondsSince(before), 1.0);
    EXPECT_EQ(TakeEvent(), kGraphComplete);
    EXPECT_EQ(TakeEvent(), 0);
    EXPECT_EQ(Position(), 1.0);
}

TEST_F(UnplayableSong, EndThatWaitsIsAnnouncedToANewWindow)
{
    const NoticeWindow window;
    EXPECT_FALSE(Open("unknown.wma"));
    EXPECT_TRUE(m_graph.SetPosition(1.0));
    EXPECT_TRUE(m_graph.Run());
    EXPECT_TRUE(Await([&] {
        m_graph.SetNotifyWindow(window.Handle());
        return window.Notices() > 0;
    }));
    EXPECT_EQ(TakeEvent(), kGraphComplete);
}

TEST_F(UnplayableSong, PlacesOutsideItsSecondAreItsBeginningAndItsEnd)
{
    EXPECT_FALSE(Open("unknown.wma"));
    EXPECT_TRUE(m_graph.SetPosition(-3.0));
    EXPECT_EQ(Position(), 0.0);
    EXPECT_TRUE(m_graph.SetPosition(7.0));
    EXPECT_EQ(Position(), 1.0);
    EXPECT_FALSE(m_graph.SetPosition(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(Position(), 1.0);
}

TEST_F(UnplayableSong, PauseHoldsItAndStopAndSeekBeginAgain)
{
    EXPECT_FALSE(Open("unknown.wma"));
    EXPECT_TRUE(m_graph.Run());
    ASSERT_TRUE(Await([&] { return Position() > 0.05; }));
    EXPECT_TRUE(m_graph.Pause());
    const double held = Position();
    EXPECT_LT(held, 1.0);
    EXPECT_EQ(Position(), held);
    EXPECT_TRUE(m_graph.SetPosition(0.0));
    EXPECT_TRUE(m_graph.Stop());
    EXPECT_TRUE(m_graph.IsStopped());
    EXPECT_EQ(Position(), 0.0);
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

TEST_F(UnplayableSong, ReleasedInTheMiddleAnnouncesNothing)
{
    const NoticeWindow window;
    const int before = window.Notices();
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(Open("unknown.wma"));
        m_graph.SetNotifyWindow(window.Handle());
        m_graph.Run();
        m_graph.ReleaseAll();
        EXPECT_FALSE(m_graph.IsRunning());
    }
    EXPECT_EQ(window.Notices(), before);
}

TEST_F(UnplayableSong, FollowedByAGoodOneLeavesNoTrace)
{
    if (!HasSoundOutput())
        GTEST_SKIP() << "this engine plays nothing where no device takes sound";
    EXPECT_FALSE(Open("unknown.wma"));
    m_graph.SetPosition(1.0);
    m_graph.Run();
    EXPECT_TRUE(Open("short_tone.mp3"));
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06);
    EXPECT_EQ(TakeEvent(), 0);
}

TEST_F(UnplayableSong, CountsAsOneSecondThatThePlayerDoesNotTakeForItsLength)
{
    const NoticeWindow window;
    MediaPlayer player(nullptr, nullptr);
    ASSERT_EQ(player.OpenAndPlay(DevicePath("unknown.wma").c_str(), window.Handle()), 0);
    EXPECT_EQ(player.GetDuration(), 1.0);
    EXPECT_FALSE(player.KnowsDuration());
    EXPECT_TRUE(Await([&] { return window.Notices() > 0 && player.CheckEndOfStream() == 1; }));
    EXPECT_EQ(player.Stop(), 0);
    EXPECT_NEAR(player.GetPosition(), 0.0, 0.06); // it goes to its start running, and stops there
}

} // namespace
