// The facade above the real engine of every system, with a window that serves its messages as the player's does.
#include "playback/media_player.h"

#include "tests/playback/engine_test.h"
#include "tests/playback/notice_window.h"

using namespace cardsong::test;

namespace {

class RealPlayerTest : public SoundTest {
protected:
    int Play(const std::string& name) { return m_player.OpenAndPlay(DevicePath(name).c_str(), m_window.Handle()); }

    // Answers notices as the main window does, and nothing else.
    bool AwaitEnd()
    {
        int answered = m_window.Notices();
        return Await([&] {
            if (m_window.Notices() == answered)
                return false;
            answered = m_window.Notices();
            return m_player.CheckEndOfStream() == 1;
        });
    }

    NoticeWindow m_window;
    MediaPlayer m_player{ nullptr, nullptr };
};

TEST_F(RealPlayerTest, EverySongPlaysToAnEndThatIsAnnouncedOnce)
{
    for (const char* name : kSongs) {
        SCOPED_TRACE(name);
        const auto before = Clock::now();
        ASSERT_EQ(Play(name), 0);
        EXPECT_EQ(m_player.GetState(), PLAYER_PLAYING);
        EXPECT_NEAR(m_player.GetDuration(), kShortToneSeconds, 0.06);
        EXPECT_EQ(m_player.GetVolume(), -784);
        EXPECT_TRUE(AwaitEnd());
        EXPECT_GT(SecondsSince(before), kShortToneSeconds - kTimingSeconds);
        EXPECT_NEAR(m_player.GetPosition(), m_player.GetDuration(), 0.06);
        EXPECT_EQ(m_player.CheckEndOfStream(), 0);
        EXPECT_EQ(m_player.Stop(), 0);
        EXPECT_NEAR(m_player.GetPosition(), 0.0, 0.06); // it goes to its start running, and stops there
    }
}

TEST_F(RealPlayerTest, ProgressTimerTicksUntilStop)
{
    ASSERT_EQ(Play("short_tone.mp3"), 0);
    EXPECT_TRUE(Await([&] { return m_window.Ticks() >= 3; }));
    m_player.Stop();
    const int ticks = m_window.Ticks();
    std::this_thread::sleep_for(std::chrono::milliseconds(350));
    EXPECT_EQ(m_window.Ticks(), ticks);
}

TEST_F(RealPlayerTest, PausedSongGoesOnWhereItWas)
{
    ASSERT_EQ(Play("short_tone.wma"), 0);
    ASSERT_TRUE(Await([&] { return m_player.GetPosition() > 0.3; }));
    EXPECT_EQ(m_player.Pause(), 0);
    const double held = m_player.GetPosition();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_NEAR(m_player.GetPosition(), held, 0.03);
    EXPECT_EQ(m_player.Play(), 0);
    EXPECT_GE(m_player.GetPosition(), held - 0.03);
    EXPECT_TRUE(AwaitEnd());
}

TEST_F(RealPlayerTest, SeekWhilePlayingGoesOnFromThere)
{
    ASSERT_EQ(Play("short_tone.wma"), 0);
    ASSERT_TRUE(Await([&] { return m_player.GetPosition() > 0.1; }));
    EXPECT_EQ(m_player.Seek(0.8), 0);
    const auto before = Clock::now();
    EXPECT_GE(m_player.GetPosition(), 0.8 - 0.001);
    EXPECT_TRUE(AwaitEnd());
    EXPECT_LT(SecondsSince(before), 0.4 + kTimingSeconds);
}

TEST_F(RealPlayerTest, StepBackBeforeTheBeginningPlaysFromTheBeginning)
{
    for (const char* name : kSongs) {
        SCOPED_TRACE(name);
        ASSERT_EQ(Play(name), 0);
        ASSERT_TRUE(Await([&] { return m_player.GetPosition() > 0.1; }));
        EXPECT_EQ(m_player.Seek(m_player.GetPosition() - 5.0), 0);
        EXPECT_GE(m_player.GetPosition(), 0.0);
        EXPECT_LT(m_player.GetPosition(), 0.1);
        const auto before = Clock::now();
        EXPECT_TRUE(AwaitEnd());
        EXPECT_NEAR(SecondsSince(before), kShortToneSeconds, kTimingSeconds);
    }
}

TEST_F(RealPlayerTest, SongAfterAStopPlaysFromItsBeginning)
{
    ASSERT_EQ(Play("short_tone.mp3"), 0);
    ASSERT_TRUE(Await([&] { return m_player.GetPosition() > 0.3; }));
    m_player.Stop();
    EXPECT_EQ(m_player.Play(), 0);
    EXPECT_LT(m_player.GetPosition(), 0.1);
    EXPECT_TRUE(AwaitEnd());
}

TEST_F(RealPlayerTest, FileWithoutASongLastsNoTimeAndHasNoEnd)
{
    Put("text.mp3", "no song");
    EXPECT_EQ(Play("text.mp3"), 0);
    EXPECT_EQ(m_player.GetDuration(), 0.0);
    EXPECT_EQ(m_player.CheckEndOfStream(), 0);
    m_player.Stop();
}

TEST_F(RealPlayerTest, MissingFileLeavesTheSongPlaying)
{
    ASSERT_EQ(Play("short_tone.wma"), 0);
    EXPECT_EQ(Play("missing.wma"), PLAYER_ERR_OPEN);
    EXPECT_TRUE(AwaitEnd());
}

} // namespace
