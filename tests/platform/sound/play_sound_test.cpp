// What a program may count on wherever it plays a sound. Whether it is heard is tested elsewhere.
#include "platform/ce.h"
#include "tests/platform/scratch_device.h"
#include "tests/platform/sound/waves.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

constexpr DWORD kFileWithoutWaiting = SND_ASYNC | SND_FILENAME;

class PlaySoundCall : public testing::Test {
protected:
    ~PlaySoundCall() override { PlaySoundW(nullptr, nullptr, 0); }
    BOOL Play(const std::string& file) const
    {
        m_device.WriteFile("user/scratch/Beep.wav", file);
        return PlaySoundW(m_device.Path(TEXT("beep.WAV")).c_str(), nullptr, kFileWithoutWaiting);
    }
    ScratchDevice m_device;
};

TEST_F(PlaySoundCall, TakesAFileOfTheDevice)
{
    EXPECT_TRUE(Play(Tone(440, 0.1)));
}

TEST_F(PlaySoundCall, WithoutANameSucceedsWhetherOrNotSomethingPlays)
{
    EXPECT_TRUE(PlaySoundW(nullptr, nullptr, 0));
    Play(Tone(440, 5));
    EXPECT_TRUE(PlaySoundW(nullptr, nullptr, 0));
}

TEST_F(PlaySoundCall, OfAMissingFileFails)
{
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(PlaySoundW(m_device.Path(TEXT("missing.wav")).c_str(), nullptr, kFileWithoutWaiting));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(PlaySoundCall, OfAFileThatIsNoSoundFails)
{
    if (IsWine())
        GTEST_SKIP() << "Wine looks into the file later, on another thread";
    EXPECT_FALSE(Play("no sound at all, and longer than the head of one would have to be"));
}

} // namespace
