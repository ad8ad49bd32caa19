// The real engine on small real files and hostile ones, with the silent sink that keeps real time. Waits end with what
// they wait for; their limits only bound a failure.
#include "playback/media_graph.h"
#include "playback/media_player.h"

#include "platform/audio_sink.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{ 5000 };
constexpr std::chrono::milliseconds kAtOnce{ 1000 }; // a slow machine under a sanitizer counts as well
constexpr double kShortToneSeconds = 1.2;

const char* const kSongs[] = { "short_tone.mp3", "short_tone_without_length.mp3", "short_tone.wma",
                               "short_tone_version_1.wma" };

std::string Sample(const std::string& name)
{
    std::ifstream file(std::filesystem::path(CARDSONG_TEST_SONGS) / name, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

WString DevicePath(const std::string& name)
{
    return TEXT("\\SDMMC\\") + WString(name.begin(), name.end());
}

bool Await(const std::function<bool()>& condition)
{
    const auto limit = Clock::now() + kPatience;
    while (!condition()) {
        if (Clock::now() > limit)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

class EngineTest : public testing::Test {
protected:
    EngineTest()
    {
        cardsong::kernel::SetAudioSink("null");
        for (const char* name : kSongs)
            Put(name, Sample(name));
    }

    void Put(const std::string& name, std::string_view bytes) { m_device.WriteFile("card/" + name, bytes); }

    // Opened as the facade does it.
    bool Open(const std::string& name)
    {
        m_graph.ReleaseAll();
        EXPECT_TRUE(m_graph.Init());
        const bool rendered = m_graph.RenderFile(DevicePath(name).c_str());
        m_graph.SetVolume(-784);
        m_graph.Pause();
        m_graph.SetPosition(0.0);
        return rendered;
    }

    double Position()
    {
        double seconds = -1.0;
        EXPECT_TRUE(m_graph.GetCurrentPosition(seconds));
        return seconds;
    }

    double Duration()
    {
        double seconds = -1.0;
        EXPECT_TRUE(m_graph.GetDuration(seconds));
        return seconds;
    }

    long AwaitEvent()
    {
        long code = 0;
        return Await([&] { return m_graph.TakeEvent(code); }) ? code : 0;
    }

    // What every file that holds no song has to give, and how soon.
    void ExpectNothingToPlay(const std::string& name)
    {
        SCOPED_TRACE(name);
        const auto before = Clock::now();
        EXPECT_FALSE(Open(name));
        EXPECT_TRUE(m_graph.Run());
        EXPECT_LT(Clock::now() - before, kAtOnce);
        long code = 0;
        EXPECT_FALSE(m_graph.TakeEvent(code));
        EXPECT_EQ(Duration(), 0.0);
        EXPECT_EQ(Position(), 0.0);
    }

    cardsong::test::ScratchDevice m_device;
    MediaGraph m_graph;
};

// ---- cueing ----

class EverySong : public EngineTest, public testing::WithParamInterface<const char*> {};

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
    const std::chrono::duration<double> played = Clock::now() - before;
    EXPECT_NEAR(played.count(), kShortToneSeconds, 0.25);
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
    const std::chrono::duration<double> played = Clock::now() - before;
    EXPECT_LT(played.count(), 0.6);
}

TEST_P(EverySong, PlaysAgainAfterStop)
{
    ASSERT_TRUE(Open(GetParam()));
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.1; }));
    m_graph.SetPosition(0.0);
    const auto atStart = Clock::now();
    EXPECT_TRUE(m_graph.Stop());
    const std::chrono::duration<double> playedOn = Clock::now() - atStart; // it sounds until it stops
    EXPECT_TRUE(m_graph.IsStopped());
    EXPECT_GE(Position(), 0.0);
    EXPECT_LE(Position(), playedOn.count() + 0.01);
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06) << "the length is remembered";
    EXPECT_TRUE(m_graph.Run());
    EXPECT_LT(Position(), 0.1);
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

std::string SongTestName(const testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Engine, EverySong, testing::ValuesIn(kSongs), SongTestName);

TEST_F(EngineTest, FileIsKnownByItsBytesNotByItsName)
{
    Put("wma_inside.mp3", Sample("short_tone.wma"));
    Put("mp3_inside.wma", Sample("short_tone.mp3"));
    EXPECT_TRUE(Open("wma_inside.mp3"));
    EXPECT_TRUE(Open("mp3_inside.wma"));
}

TEST_F(EngineTest, TagBeforeTheSoundIsPassedOver)
{
    std::string tag = "ID3\x03";
    tag += std::string(3, '\0') + std::string("\x00\x02\x00\x00", 4) + std::string(32768, 'x');
    Put("tagged.mp3", tag + Sample("short_tone.mp3"));
    EXPECT_TRUE(Open("tagged.mp3"));
    EXPECT_NEAR(Duration(), kShortToneSeconds, 0.06);
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

TEST_F(EngineTest, AttachOfNullOnlyReleases)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_TRUE(m_graph.Attach(nullptr));
    EXPECT_FALSE(m_graph.Run());
    EXPECT_TRUE(m_graph.Init());
}

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

TEST_F(EngineTest, PauseHoldsThePositionAndRunGoesOn)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    ASSERT_TRUE(Await([&] { return Position() > 0.2; }));
    EXPECT_TRUE(m_graph.Pause());
    EXPECT_TRUE(m_graph.IsPaused());
    const double held = Position();
    long code = 0;
    const auto pauseEnd = Clock::now() + std::chrono::milliseconds(1500); // longer than the rest of the song
    while (Clock::now() < pauseEnd) {
        ASSERT_FALSE(m_graph.TakeEvent(code));
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_NEAR(Position(), held, 0.03);
    EXPECT_TRUE(m_graph.Run());
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
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

// ---- places, speeds, loudness ----

TEST_F(EngineTest, PlacesThatAreNoneAreRefusedOrBounded)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    EXPECT_FALSE(m_graph.SetPosition(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(m_graph.SetPosition(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(m_graph.SetPositions(1.0, 0.5));
    EXPECT_TRUE(m_graph.SetPosition(-3.0));
    EXPECT_EQ(Position(), 0.0);
}

TEST_F(EngineTest, SeekPastTheEndEndsTheSong)
{
    ASSERT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    EXPECT_TRUE(m_graph.SetPosition(1e18));
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
}

TEST_F(EngineTest, StopPositionEndsTheSongEarly)
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
    const std::chrono::duration<double> played = Clock::now() - before;
    EXPECT_LT(played.count(), 0.7);
}

TEST_F(EngineTest, DoubleRateHalvesTheTime)
{
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
        const std::chrono::duration<double> played = Clock::now() - before;
        EXPECT_NEAR(played.count(), kShortToneSeconds / 2, 0.25);
    }
    EXPECT_FALSE(m_graph.SetRate(0.0));
    EXPECT_FALSE(m_graph.SetRate(-1.0));
}

TEST_F(EngineTest, VolumeAndBalanceAreKeptWithinTheirScales)
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

TEST_F(EngineTest, BalanceOfAPlayingSongLeavesItPlayingWhereItIs)
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

TEST_F(EngineTest, FilesWithoutASongGiveNothingToPlayAtOnce)
{
    Put("zero.mp3", "");
    Put("zero.wma", "");
    Put("one_byte.mp3", "I");
    Put("text.mp3", std::string(200000, 't'));
    Put("zeroes.mp3", std::string(2000000, '\0'));
    Put("all_ones.mp3", std::string(3000000, '\xFF'));
    Put("picture.mp3", "\x89PNG\r\n\x1A\n" + std::string(3000, 'p'));
    Put("asf_name_only.wma", Sample("short_tone.wma").substr(0, 16));
    Put("asf_then_junk.wma", Sample("short_tone.wma").substr(0, 16) + std::string(5000, 'j'));
    m_device.MakeFolder("card/folder.mp3");
    for (const char* name : { "zero.mp3", "zero.wma", "one_byte.mp3", "text.mp3", "zeroes.mp3", "all_ones.mp3",
                              "picture.mp3", "asf_name_only.wma", "asf_then_junk.wma", "folder.mp3", "missing.mp3" })
        ExpectNothingToPlay(name);
}

TEST_F(EngineTest, PipeInPlaceOfASongIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo((m_device.CardDirectory() + "/pipe.mp3").c_str(), 0600), 0);
    ExpectNothingToPlay("pipe.mp3");
}

// A cut song either cannot be played, or plays to an end that comes no later than the whole one's.
TEST_F(EngineTest, EveryCutSongFailsOrEnds)
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

TEST_F(EngineTest, JunkInTheMiddleIsPlayedOver)
{
    const std::string whole = Sample("short_tone.mp3");
    const std::size_t middle = whole.size() / 2;
    Put("holed.mp3", whole.substr(0, middle) + std::string(3000, '\x55') + whole.substr(middle));
    ASSERT_TRUE(Open("holed.mp3"));
    m_graph.Run();
    EXPECT_EQ(AwaitEvent(), kGraphComplete);
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

// ---- the facade above it, and what is left behind ----

TEST_F(EngineTest, FacadePlaysARealSongToItsEnd)
{
    MediaPlayer player(nullptr, nullptr);
    ASSERT_EQ(player.OpenAndPlay(DevicePath("short_tone.mp3").c_str(), nullptr), 0);
    EXPECT_NEAR(player.GetDuration(), kShortToneSeconds, 0.06);
    EXPECT_EQ(player.GetVolume(), -784);
    EXPECT_TRUE(Await([&] { return player.CheckEndOfStream() == 1; }));
    EXPECT_EQ(player.Stop(), 0);
}

TEST_F(EngineTest, FacadeOpensAFileWithoutASongWithLengthZero)
{
    Put("text.mp3", "no song");
    MediaPlayer player(nullptr, nullptr);
    EXPECT_EQ(player.OpenAndPlay(DevicePath("text.mp3").c_str(), nullptr), 0);
    EXPECT_EQ(player.GetDuration(), 0.0);
    EXPECT_EQ(player.CheckEndOfStream(), 0);
    player.Stop();
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

TEST_F(EngineTest, UnknownSinkFallsBackToOneThatWorks)
{
    cardsong::kernel::SetAudioSink("nosuchsink");
    EXPECT_TRUE(Open("short_tone.mp3"));
    m_graph.Run();
    EXPECT_TRUE(Await([&] { return Position() > 0.05; }));
}

TEST_F(EngineTest, WarmUpMayBeAskedForAtAnyTime)
{
    MediaGraph::WarmUp();
    EXPECT_TRUE(Open("short_tone.mp3"));
    MediaGraph::WarmUp();
}

} // namespace
