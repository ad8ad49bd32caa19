#include "platform/linux/sound/sound_player.h"
#include "tests/platform/scratch_device.h"
#include "tests/platform/sound/loudspeaker.h"
#include "tests/platform/sound/waves.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace cardsong::test;
using namespace std::chrono_literals;
using cardsong::sound::EndSound;

constexpr DWORD kFileWithoutWaiting = SND_ASYNC | SND_FILENAME;

class PlaySound : public testing::Test {
protected:
    PlaySound()
    {
        UseLoudspeaker();
        Loudspeaker& speaker = TheLoudspeaker();
        const std::lock_guard lock(speaker.mutex);
        speaker.heard.clear();
        speaker.opened = speaker.closed = 0;
        speaker.answers = speaker.takes = true;
        speaker.refuses = false;
    }
    ~PlaySound() override
    {
        m_speaker.Set(&Loudspeaker::answers, true);
        EXPECT_TRUE(EndSound(10s));
        cardsong::kernel::SetAudioSink("");
    }

    BOOL Play(const std::string& file, const std::string& name = "a.wav") const
    {
        m_device.WriteFile("user/scratch/" + name, file);
        return PlaySoundW(m_device.Path(TEXT("a.wav")).c_str(), nullptr, kFileWithoutWaiting);
    }
    bool Hears(const std::string& samples) const
    {
        return m_speaker.Comes([&](const Loudspeaker& speaker) { return speaker.heard == samples; });
    }
    bool IsClosed(int times) const
    {
        return m_speaker.Comes([times](const Loudspeaker& speaker) { return speaker.closed == times; });
    }

    ScratchDevice m_device;
    Loudspeaker& m_speaker = TheLoudspeaker();
};

TEST_F(PlaySound, GivesEverySampleAndClosesBehindTheLast)
{
    const std::string samples(40'000, '\x7F'); // more than one piece
    EXPECT_TRUE(Play(Wave(samples)));
    EXPECT_TRUE(Hears(samples));
    EXPECT_TRUE(IsClosed(1));
    EXPECT_EQ(m_speaker.opened, 1);
}

TEST_F(PlaySound, TakesEveryFormOfSamples)
{
    int played = 0;
    for (const WaveOptions& options :
         { WaveOptions{ .bits = 8 }, WaveOptions{ .bits = 24 }, WaveOptions{ .bits = 32 },
           WaveOptions{ .tag = 3, .bits = 32 }, WaveOptions{ .tag = 3, .bits = 64 }, WaveOptions{ .channels = 2 } }) {
        m_speaker.heard.clear();
        const std::string samples(48, '\0');
        EXPECT_TRUE(Play(Wave(samples, options)));
        EXPECT_TRUE(Hears(samples)) << options.tag << ' ' << options.bits;
        EXPECT_TRUE(IsClosed(++played));
    }
}

TEST_F(PlaySound, FindsItsFileByANameInOtherLetters)
{
    EXPECT_TRUE(Play(Wave("ab"), "A.WAV"));
    EXPECT_TRUE(Hears("ab"));
}

TEST_F(PlaySound, WithoutANameIsSilence)
{
    m_speaker.takes = false;
    const std::string samples(40'000, 'a');
    EXPECT_TRUE(Play(Wave(samples)));
    EXPECT_TRUE(m_speaker.Comes([](const Loudspeaker& speaker) { return !speaker.heard.empty(); }));
    EXPECT_TRUE(PlaySoundW(nullptr, nullptr, 0));
    EXPECT_TRUE(IsClosed(1));
    EXPECT_LT(m_speaker.heard.size(), samples.size());
    EXPECT_TRUE(PlaySoundW(nullptr, nullptr, 0)) << "nothing is left to stop";
}

TEST_F(PlaySound, TakesThePlaceOfTheSoundBefore)
{
    m_speaker.takes = false;
    EXPECT_TRUE(Play(Wave("aaaa")));
    EXPECT_TRUE(Hears("aaaa"));
    EXPECT_TRUE(Play(Wave("bb")));
    EXPECT_TRUE(IsClosed(1));
    EXPECT_TRUE(Hears("aaaabb"));
    m_speaker.Set(&Loudspeaker::takes, true);
    EXPECT_TRUE(IsClosed(2));
}

TEST_F(PlaySound, ThatFailsEndsTheSoundBeforeAllTheSame)
{
    m_speaker.takes = false;
    EXPECT_TRUE(Play(Wave("aaaa")));
    EXPECT_TRUE(Hears("aaaa"));
    EXPECT_FALSE(Play("no sound at all"));
    EXPECT_TRUE(IsClosed(1));
}

TEST_F(PlaySound, RefusesWhatIsNoSound)
{
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(PlaySoundW(m_device.Path(TEXT("missing.wav")).c_str(), nullptr, kFileWithoutWaiting));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(Play(""));
    EXPECT_EQ(GetLastError(), ERROR_BAD_FORMAT);
    EXPECT_FALSE(Play(Wave("")));
    EXPECT_FALSE(Play(Wave("abcd").substr(0, 45)));
    EXPECT_FALSE(PlaySoundW(TEXT(""), nullptr, kFileWithoutWaiting));
    EXPECT_FALSE(PlaySoundW(TEXT("\\scratch"), nullptr, kFileWithoutWaiting));
    EXPECT_TRUE(EndSound(0s)) << "not even a thread was started";
    EXPECT_EQ(m_speaker.opened, 0);
}

TEST_F(PlaySound, RefusesAPipeAtOnce)
{
    ASSERT_EQ(mkfifo((m_device.UserDirectory() + "/scratch/a.wav").c_str(), 0600), 0);
    EXPECT_FALSE(PlaySoundW(m_device.Path(TEXT("a.wav")).c_str(), nullptr, kFileWithoutWaiting));
}

TEST_F(PlaySound, RefusesAFileTooLargeToBeKept)
{
    EXPECT_TRUE(Play(Wave("ab")));
    EXPECT_TRUE(IsClosed(1));
    const std::string file = m_device.UserDirectory() + "/scratch/a.wav";
    std::filesystem::resize_file(file, 16 * 1024 * 1024 + 1); // zeros that take no room on the disk
    EXPECT_FALSE(PlaySoundW(m_device.Path(TEXT("a.wav")).c_str(), nullptr, kFileWithoutWaiting));
    std::filesystem::resize_file(file, 16 * 1024 * 1024);
    EXPECT_TRUE(PlaySoundW(m_device.Path(TEXT("a.wav")).c_str(), nullptr, kFileWithoutWaiting));
}

TEST_F(PlaySound, PlaysFilesWithoutWaitingAndNothingElse)
{
    m_device.WriteFile("user/scratch/a.wav", Wave("ab"));
    const WString path = m_device.Path(TEXT("a.wav"));
    for (const DWORD flags : { DWORD{ 0 }, SND_ASYNC, SND_FILENAME, kFileWithoutWaiting | 8 }) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(PlaySoundW(path.c_str(), nullptr, flags)) << flags;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_TRUE(PlaySoundW(path.c_str(), nullptr, kFileWithoutWaiting | SND_NODEFAULT));
    EXPECT_TRUE(Hears("ab"));
}

TEST_F(PlaySound, ThatTheSinkRefusesEnds)
{
    m_speaker.refuses = true;
    EXPECT_TRUE(Play(Wave("ab")));
    EXPECT_TRUE(IsClosed(1));
    EXPECT_TRUE(EndSound(10s));
    m_speaker.refuses = false;
    EXPECT_TRUE(Play(Wave("cd")));
    EXPECT_TRUE(Hears("cd"));
}

// The longest of a hundred calls, in milliseconds.
double LongestCall(const std::function<void()>& call)
{
    std::chrono::duration<double, std::milli> longest{ 0 };
    for (int i = 0; i < 100; ++i) {
        const auto start = std::chrono::steady_clock::now();
        call();
        longest =
            std::max<std::chrono::duration<double, std::milli>>(longest, std::chrono::steady_clock::now() - start);
    }
    return longest.count();
}

TEST_F(PlaySound, NeverWaitsForAServerThatHangs)
{
    m_speaker.answers = false;
    EXPECT_TRUE(Play(Wave("aaaa")));
    EXPECT_TRUE(m_speaker.Comes([](const Loudspeaker& speaker) { return speaker.opened == 1; }));
    const WString path = m_device.Path(TEXT("a.wav"));
    m_device.WriteFile("user/scratch/a.wav", Wave("bb"));
    EXPECT_LT(LongestCall([&] { PlaySoundW(path.c_str(), nullptr, kFileWithoutWaiting); }), 1000);
    EXPECT_LT(LongestCall([] { PlaySoundW(nullptr, nullptr, 0); }), 1000);
    EXPECT_FALSE(EndSound(10ms)) << "the program's end does not wait longer";
    EXPECT_EQ(m_speaker.opened, 1) << "one thread waits, however many sounds there were";
}

TEST_F(PlaySound, PlaysWhatWasAskedLastWhenTheServerAnswers)
{
    m_speaker.answers = false;
    EXPECT_TRUE(Play(Wave("aaaa")));
    EXPECT_TRUE(m_speaker.Comes([](const Loudspeaker& speaker) { return speaker.opened == 1; }));
    EXPECT_TRUE(Play(Wave("bb")));
    EXPECT_TRUE(Play(Wave("cccc")));
    m_speaker.Set(&Loudspeaker::takes, false);
    m_speaker.Set(&Loudspeaker::answers, true);
    EXPECT_TRUE(m_speaker.Comes([](const Loudspeaker& speaker) { return speaker.heard.ends_with("cccc"); }));
    EXPECT_EQ(m_speaker.heard.find('b'), std::string::npos);
    EXPECT_EQ(m_speaker.opened, 2);
}

TEST_F(PlaySound, LeavesNoFileAndNoThreadBehind)
{
    const auto count = [](const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    };
    const auto playOnce = [&] {
        EXPECT_TRUE(Play(Wave("ab")));
        EXPECT_TRUE(Hears("ab"));
        EXPECT_TRUE(EndSound(10s));
        m_speaker.heard.clear();
    };
    playOnce(); // threads that the library keeps for all chains start with the first
    const auto files = count("/proc/self/fd");
    const auto threads = count("/proc/self/task");
    for (int i = 0; i < 10; ++i)
        playOnce();
    EXPECT_EQ(count("/proc/self/fd"), files);
    EXPECT_LT(count("/proc/self/task"), threads + 5) << "the library may keep another for the next chains";
}

TEST(DeviceSounds, AreSounds)
{
    const std::filesystem::path windows = CARDSONG_DEVICE_TREE "/Windows";
    int sounds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(windows)) {
        if (entry.path().extension() != ".wav" && entry.path().extension() != ".WAV")
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{ std::istreambuf_iterator<char>(file), {} };
        const auto wave = cardsong::sound::ReadWave(std::as_bytes(std::span(bytes)));
        ASSERT_TRUE(wave) << entry.path();
        EXPECT_GT(wave->samples.size() / wave->FrameBytes(), wave->samplesPerSecond / 4) << entry.path();
        ++sounds;
    }
    EXPECT_EQ(sounds, 2);
}

} // namespace
