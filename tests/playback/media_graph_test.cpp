// What is true of the real engine of every system, on small real files and hostile ones.
#include "tests/playback/engine_test.h"
#include "tests/playback/notice_window.h"

#include <algorithm>
#include <random>

using namespace cardsong::test;

namespace {

// ---- cueing ----

class EverySong : public SoundTest, public testing::WithParamInterface<const char*> {};

TEST_P(EverySong, IsCuedPausedAtItsBeginningWithItsLength)
{
    EXPECT_TRUE(Open(GetParam()));
    EXPECT_TRUE(m_graph.IsPaused());
    EXPECT_EQ(Position(), 0.0);
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06);
}

TEST_P(EverySong, PlaysInRealTimeToItsEnd)
{
    ASSERT_TRUE(Open(GetParam()));
    const auto before = Clock::now();
    ASSERT_TRUE(m_graph.Run());
    EXPECT_TRUE(m_graph.IsRunning());
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
    EXPECT_NEAR(SecondsSince(before), kShortToneSeconds, kTimingSeconds);
    EXPECT_NEAR(Position(), Duration(), 0.06);
}

TEST_P(EverySong, PlaysOnFromWhereASeekPutsIt)
{
    ASSERT_TRUE(Open(GetParam()));
    ASSERT_TRUE(m_graph.SetPosition(0.9));
    EXPECT_NEAR(Position(), 0.9, 0.001);
    const auto before = Clock::now();
    m_graph.Run();
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
    EXPECT_LT(SecondsSince(before), 0.3 + kTimingSeconds);
}

TEST_P(EverySong, PlaysAgainAfterStop)
{
    ASSERT_TRUE(Open(GetParam()));
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.1; }));
    m_graph.SetPosition(0.0);
    const auto atStart = Clock::now();
    EXPECT_TRUE(m_graph.Stop());
    const double playedOnSeconds = SecondsSince(atStart); // it sounds until it stops
    EXPECT_TRUE(m_graph.IsStopped());
    EXPECT_GE(Position(), 0.0);
    EXPECT_LE(Position(), playedOnSeconds + 0.01);
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06) << "the length is remembered";
    EXPECT_TRUE(m_graph.Run());
    EXPECT_LT(Position(), 0.1);
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

INSTANTIATE_TEST_SUITE_P(Engine, EverySong, testing::ValuesIn(kSongs), SongTestName);

TEST_F(SoundTest, FileIsKnownByItsBytesNotByItsName)
{
    Put("wma_inside.mp3", Sample("short_tone.wma"));
    Put("mp3_inside.wma", Sample("short_tone.mp3"));
    EXPECT_TRUE(Open("wma_inside.mp3"));
    EXPECT_TRUE(Open("mp3_inside.wma"));
}

TEST_F(SoundTest, TagBeforeTheSoundIsPassedOver)
{
    std::string tag = "ID3\x03";
    tag += std::string(3, '\0') + std::string("\x00\x02\x00\x00", 4) + std::string(32768, 'x');
    Put("tagged.mp3", tag + Sample("short_tone.mp3"));
    EXPECT_TRUE(Open("tagged.mp3"));
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06);
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

// ---- states ----

TEST_F(EngineTest, GraphIsMadeOnce)
{
    EXPECT_TRUE(m_graph.Init());
    EXPECT_FALSE(m_graph.Init());
    m_graph.ReleaseAll();
    EXPECT_TRUE(m_graph.Init());
}

TEST_F(EngineTest, CallsWithoutAGraphFail)
{
    double seconds = 7.0;
    EXPECT_FALSE(m_graph.RenderFile(DevicePath(kSongs[0]).c_str()));
    EXPECT_FALSE(m_graph.Run());
    EXPECT_FALSE(m_graph.Pause());
    EXPECT_FALSE(m_graph.Stop());
    EXPECT_FALSE(m_graph.IsRunning() || m_graph.IsPaused() || m_graph.IsStopped());
    EXPECT_FALSE(m_graph.SetNotifyWindow(nullptr));
    EXPECT_FALSE(m_graph.GetDuration(seconds) || m_graph.GetCurrentPosition(seconds) ||
                 m_graph.GetStopPosition(seconds));
    EXPECT_FALSE(m_graph.SetPosition(1.0) || m_graph.SetPositions(0.0, 1.0) || m_graph.SetRate(1.0));
    EXPECT_FALSE(m_graph.GetRate(seconds));
    EXPECT_FALSE(m_graph.SetVolume(-100) || m_graph.SetBalance(0));
    EXPECT_EQ(m_graph.GetVolume(), 0);
    EXPECT_EQ(m_graph.GetBalance(), 0);
    EXPECT_EQ(seconds, 7.0) << "outputs are untouched on failure";
}

TEST_F(SoundTest, AttachOfNullOnlyReleases)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_TRUE(m_graph.Attach(nullptr));
    EXPECT_FALSE(m_graph.Run());
    EXPECT_TRUE(m_graph.Init());
}

TEST_F(SoundTest, PauseHoldsThePositionAndRunGoesOn)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.2; }));
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_TRUE(m_graph.IsPaused());
    const double held = Position();
    const auto pauseEnd = Clock::now() + std::chrono::milliseconds(1500); // longer than the rest of the song
    while (Clock::now() < pauseEnd) {
        ASSERT_EQ(TakeEvent(), 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_NEAR(Position(), held, 0.03);
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

TEST_F(SoundTest, ReleasedSongHoldsNoFile)
{
    const std::filesystem::path file = m_device.CardDirectory() + "/short_tone.mp3";
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    m_graph.ReleaseAll();
    std::error_code failed;
    EXPECT_TRUE(std::filesystem::remove(file, failed)) << "the card could not be taken out: " << failed.message();
}

// ---- notices ----

TEST_F(SoundTest, EndIsAnnouncedToTheWindowAndReportedOnce)
{
    const NoticeWindow window;
    ASSERT_TRUE(Open("short_tone.wma"));
    ASSERT_TRUE(m_graph.SetNotifyWindow(window.Handle()));
    m_graph.SetPosition(1.0);
    m_graph.Run();
    EXPECT_TRUE(Await([&] { return window.Notices() > 0 && TakeEvent() == kGraphComplete; }));
    EXPECT_EQ(TakeEvent(), 0);
}

TEST_F(SoundTest, EndThatWaitsIsAnnouncedToANewWindow)
{
    const NoticeWindow window;
    ASSERT_TRUE(Open("short_tone.wma"));
    m_graph.SetPosition(1.0);
    m_graph.Run();
    std::this_thread::sleep_for(std::chrono::milliseconds(700)); // nothing else shows that it waits
    EXPECT_EQ(window.Notices(), 0);
    m_graph.SetNotifyWindow(window.Handle());
    EXPECT_GE(window.Notices(), 1);
    EXPECT_EQ(TakeEvent(), kGraphComplete);
}

TEST_F(SoundTest, NothingIsAnnouncedWithoutAWindow)
{
    const NoticeWindow window;
    ASSERT_TRUE(Open("short_tone.wma"));
    m_graph.SetNotifyWindow(window.Handle());
    m_graph.SetNotifyWindow(nullptr);
    const int before = window.Notices();
    m_graph.SetPosition(1.0);
    m_graph.Run();
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
    EXPECT_EQ(window.Notices(), before);
}

TEST_F(SoundTest, DrainedEventsAreGone)
{
    ASSERT_TRUE(Open("short_tone.wma"));
    m_graph.SetPosition(1.0);
    m_graph.Run();
    std::this_thread::sleep_for(std::chrono::milliseconds(700)); // the end would be taken by looking for it
    m_graph.DrainEvents();
    EXPECT_EQ(TakeEvent(), 0);
}

// ---- places, speeds, loudness ----

TEST_F(SoundTest, SeekPastTheEndEndsTheSong)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    EXPECT_TRUE(m_graph.SetPosition(1e18));
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

TEST_F(SoundTest, StopPositionEndsTheSongEarly)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    double stop = 0.0;
    ASSERT_TRUE(m_graph.GetStopPosition(stop));
    EXPECT_NEAR(stop, kShortToneSeconds, 0.06);
    EXPECT_TRUE(m_graph.SetPositions(0.2, 0.5));
    ASSERT_TRUE(m_graph.GetStopPosition(stop));
    EXPECT_EQ(stop, 0.5);
    const auto before = Clock::now();
    m_graph.Run();
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
    EXPECT_LT(SecondsSince(before), 0.3 + kTimingSeconds);
}

TEST_F(SoundTest, DoubleRateHalvesTheTime)
{
    if (!KeepsRate())
        GTEST_SKIP() << "Wine 8 takes every speed and plays on with the song's own";
    for (const char* name : { "short_tone.mp3", "short_tone.wma" }) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(Open(name));
        double rate = 0.0;
        EXPECT_TRUE(m_graph.GetRate(rate));
        EXPECT_EQ(rate, 1.0);
        EXPECT_TRUE(m_graph.SetRate(2.0));
        EXPECT_TRUE(m_graph.GetRate(rate));
        EXPECT_EQ(rate, 2.0);
        const auto before = Clock::now();
        m_graph.Run();
        EXPECT_EQ(AwaitEvent(), kGraphComplete);
        EXPECT_NEAR(SecondsSince(before), kShortToneSeconds / 2, kTimingSeconds);
    }
}

TEST_F(SoundTest, VolumeAndBalanceAreKeptWithinTheirScales)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_EQ(m_graph.GetVolume(), -784);
    EXPECT_TRUE(m_graph.SetVolume(-10000));
    EXPECT_FALSE(m_graph.SetVolume(1));
    EXPECT_FALSE(m_graph.SetVolume(-10001));
    EXPECT_EQ(m_graph.GetVolume(), -10000);
    EXPECT_FALSE(m_graph.SetBalance(10001));
    EXPECT_FALSE(m_graph.SetBalance(-10001));
    EXPECT_EQ(m_graph.GetBalance(), 0);
}

TEST_F(SoundTest, BalanceOfAPlayingSongLeavesItPlayingWhereItIs)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.2; }));
    EXPECT_TRUE(m_graph.SetBalance(-2000));
    EXPECT_EQ(m_graph.GetBalance(), -2000);
    EXPECT_TRUE(m_graph.IsRunning());
    EXPECT_GT(Position(), 0.19);
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

// ---- hostile files ----

std::string Noise(std::size_t bytes)
{
    std::mt19937 random(20050928);
    std::string noise(bytes, 0);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    return noise;
}

TEST_F(EngineTest, FilesWithoutASongGiveNothingToPlayAtOnce)
{
    Put("zero.mp3", "");
    Put("zero.wma", "");
    Put("one_byte.mp3", "I");
    Put("text.mp3", std::string(200000, 't'));
    Put("zeroes.mp3", std::string(2000000, '\0'));
    Put("all_ones.mp3", std::string(3000000, '\xFF'));
    Put("noise.mp3", Noise(16000));
    Put("noise.wma", Noise(16000));
    Put("text.wma", std::string(200000, 't'));
    Put("picture.mp3", "\x89PNG\r\n\x1A\n" + std::string(3000, 'p'));
    Put("asf_name_only.wma", Sample("short_tone.wma").substr(0, 16));
    Put("asf_then_junk.wma", Sample("short_tone.wma").substr(0, 16) + std::string(5000, 'j'));
    m_device.MakeFolder("card/folder.mp3");
    for (const char* name :
         { "zero.mp3", "zero.wma", "one_byte.mp3", "text.mp3", "noise.mp3", "noise.wma", "text.wma", "zeroes.mp3",
           "all_ones.mp3", "picture.mp3", "asf_name_only.wma", "asf_then_junk.wma", "folder.mp3", "missing.mp3" })
        ExpectNothingToPlay(name);
}

// A cut song either cannot be played, or plays to an end that comes no later than the whole one's.
TEST_F(SoundTest, EveryCutSongFailsOrEnds)
{
    for (const char* name : { "short_tone.mp3", "short_tone.wma" }) {
        const std::string whole = Sample(name);
        for (std::size_t length = 0; length < whole.size(); length += whole.size() / 60) {
            SCOPED_TRACE(std::string(name) + " cut to " + std::to_string(length));
            Put("cut", whole.substr(0, length));
            const auto before = Clock::now();
            const bool rendered = Open("cut");
            EXPECT_LT(Clock::now() - before, kAtOnce);
            m_graph.SetPosition(1.1); // what is left there ends soon
            m_graph.Run();
            if (rendered) {
                EXPECT_EQ(AwaitEvent(), kGraphComplete);
            }
        }
    }
}

TEST_F(SoundTest, JunkInTheMiddleIsPlayedOver)
{
    const std::string whole = Sample("short_tone.mp3");
    const std::size_t middle = whole.size() / 2;
    Put("holed.mp3", whole.substr(0, middle) + std::string(3000, '\x55') + whole.substr(middle));
    ASSERT_TRUE(Open("holed.mp3"));
    m_graph.Run();
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

// ---- what is left behind ----

TEST_F(SoundTest, UnknownSinkFallsBackToOneThatWorks)
{
    cardsong::kernel::SetAudioSink("nosuchsink");
    EXPECT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    EXPECT_TRUE(Await([&] { return Position() > 0.05; }));
}

TEST_F(SoundTest, WarmUpMayBeAskedForAtAnyTime)
{
    MediaGraph::WarmUp();
    EXPECT_TRUE(Open("short_tone.mp3"));
    MediaGraph::WarmUp();
}

} // namespace
