// Song after song on the real engine, one player object: what each leaves behind adds up.
#include "playback/media_player.h"
#include "tests/long_form.h"
#include "tests/playback/engine_test.h"
#include "tests/playback/notice_window.h"
#include "tests/process_use.h"

#include <iostream>

using namespace cardsong::test;

namespace {

constexpr int kFirstSongs = 20; // the engine has loaded what it loads, and its threads are in their pools
constexpr int kSongsOfTheShortForm = 32;
constexpr int kSongsOfTheLongForm = 200;
constexpr double kNearTheEndSeconds = 1.0;
constexpr double kHeapMayGrow = 0.03;
constexpr double kResidentMayGrow = 0.03;

class MediaPlayerSoak : public SoundTest {
protected:
    // One that sounds to its end, one that is left while it sounds, and files that are none.
    void PlaySong(int number)
    {
        const char* const name = kSongs[number % std::size(kSongs)];
        SCOPED_TRACE(name);
        ASSERT_EQ(m_player.OpenAndPlay(DevicePath(name).c_str(), m_window.Handle()), 0);
        if (number % 5 != 4) {
            m_player.Seek(kNearTheEndSeconds);
            EXPECT_TRUE(Await([this] { return m_window.Notices() > 0 && m_player.CheckEndOfStream() == 1; }));
        }
        m_player.Stop();
        if (number % 10 == 9) {
            EXPECT_EQ(m_player.OpenAndPlay(DevicePath("text.mp3").c_str(), m_window.Handle()), 0);
        }
    }
    void PlayFrom(int first, int end)
    {
        for (int number = first; number < end && !HasFatalFailure(); ++number)
            PlaySong(number);
        m_player.Close();
    }

    NoticeWindow m_window;
    MediaPlayer m_player{ nullptr, nullptr };
};

} // namespace

TEST_F(MediaPlayerSoak, SongAfterSongLeavesNothingBehind)
{
    Put("text.mp3", "no music");
    PlayFrom(0, kFirstSongs);
    const ProcessUse first = MeasureProcess();
    std::cout << kFirstSongs << " songs: " << first << std::endl;
    const int end = IsLongForm() ? kSongsOfTheLongForm : kSongsOfTheShortForm;
    PlayFrom(kFirstSongs, end);
    const ProcessUse last = MeasureProcess();
    std::cout << end << " songs: " << last << std::endl;
    EXPECT_EQ(last.descriptors, first.descriptors);
    if (!kIsMemoryMeasured)
        return;
    EXPECT_LE(static_cast<double>(last.heapBytes), static_cast<double>(first.heapBytes) * (1 + kHeapMayGrow));
    EXPECT_LE(static_cast<double>(last.residentBytes),
              static_cast<double>(first.residentBytes) * (1 + kResidentMayGrow));
}
