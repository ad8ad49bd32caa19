// A device with small real songs, and a graph on whichever engine the test program is linked with. Waits end with what
// they wait for; their limits only bound a failure.
#pragma once

#include "playback/media_graph.h"

#include "platform/audio_sink.h"
#include "tests/platform/scratch_device.h"
#include "tests/playback/engine_under_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <thread>

namespace cardsong::test {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{ 5000 };
constexpr std::chrono::milliseconds kAtOnce{ 5000 }; // without waiting; a busy machine under a sanitizer counts as well
constexpr double kShortToneSeconds = 1.2;
constexpr double kTimingSeconds = 0.25; // how far real time may be off

constexpr const char* kSongs[] = { "short_tone.mp3", "short_tone_without_length.mp3", "short_tone.wma",
                                   "short_tone_version_1.wma" };

// What a test is called that runs with one of kSongs.
inline std::string SongTestName(const testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

inline std::string Sample(const std::string& name)
{
    std::ifstream file(std::filesystem::path(CARDSONG_TEST_SONGS) / name, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

inline WString DevicePath(const std::string& name)
{
    return TEXT("\\SDMMC\\") + WString(name.begin(), name.end());
}

inline bool Await(const std::function<bool()>& condition)
{
    const auto limit = Clock::now() + kPatience;
    while (!condition()) {
        if (Clock::now() > limit)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

inline double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Components may be asked for while it lives.
class Apartment {
public:
    Apartment() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

class EngineTest : public testing::Test {
protected:
    EngineTest()
    {
        kernel::SetAudioSink(SinkForTests());
        for (const char* name : kSongs)
            Put(name, Sample(name));
    }
    ~EngineTest() override { kernel::SetAudioSink(""); }

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

    // The oldest event that every engine reports, or 0; an engine may have more of its own.
    long TakeEvent()
    {
        for (long code = 0; m_graph.TakeEvent(code);) {
            if (code == kGraphComplete || code == kGraphUserAbort || code == kGraphErrorAbort)
                return code;
        }
        return 0;
    }

    long AwaitEvent()
    {
        long code = 0;
        Await([&] { return (code = TakeEvent()) != 0; });
        return code;
    }

    // What every file that holds no song has to give, and how soon.
    void ExpectNothingToPlay(const std::string& name)
    {
        SCOPED_TRACE(name);
        const auto before = Clock::now();
        EXPECT_FALSE(Open(name));
        EXPECT_TRUE(m_graph.Run());
        EXPECT_LT(Clock::now() - before, kAtOnce);
        EXPECT_EQ(TakeEvent(), 0);
        EXPECT_EQ(Duration(), 0.0);
    }

    Apartment m_apartment;
    ScratchDevice m_device;
    MediaGraph m_graph;
};

// For what only a song that can be heard shows.
class SoundTest : public EngineTest {
protected:
    void SetUp() override
    {
        if (!HasSoundOutput())
            GTEST_SKIP() << "this engine plays nothing where no device takes sound";
    }
};

} // namespace cardsong::test
