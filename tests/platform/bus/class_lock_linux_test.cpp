#include "platform/linux/bus/class_lock.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace cardsong::bus {
namespace {

class ClassLocks : public ::testing::Test {
protected:
    std::string Folder() const { return m_device.UserDirectory(); }
    bool IsTaken() const { return ClassLock::IsTaken(Folder(), u"AudioPlayer"); }

    test::ScratchDevice m_device;
};

TEST_F(ClassLocks, OneHolderAtATime)
{
    ClassLock first(Folder(), u"AUDIOPLAYER");
    ClassLock second(Folder(), u"AudioPlayer");
    EXPECT_EQ(first.Claim(), ClaimResult::Ours);
    EXPECT_EQ(first.Claim(), ClaimResult::Ours);
    EXPECT_EQ(second.Claim(), ClaimResult::Others);
    first.Release();
    EXPECT_EQ(second.Claim(), ClaimResult::Ours);
}

TEST_F(ClassLocks, AskingTakesNothing)
{
    EXPECT_FALSE(IsTaken());
    EXPECT_FALSE(std::filesystem::exists(Folder() + "/audioplayer.lock"));
    ClassLock lock(Folder(), u"AUDIOPLAYER");
    ASSERT_EQ(lock.Claim(), ClaimResult::Ours);
    EXPECT_TRUE(IsTaken());
    EXPECT_FALSE(ClassLock::IsTaken(Folder(), u"Audio"));
    lock.Release();
    EXPECT_FALSE(IsTaken());
}

TEST_F(ClassLocks, ACrashedHolderLeavesNoLock)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        ClassLock lock(Folder(), u"AUDIOPLAYER");
        const char result = lock.Claim() == ClaimResult::Ours ? 'y' : 'n';
        static_cast<void>(!write(ready[1], &result, 1));
        for (;;)
            pause();
    }
    char result = 0;
    ASSERT_EQ(read(ready[0], &result, 1), 1);
    EXPECT_EQ(result, 'y');
    EXPECT_TRUE(IsTaken());
    ClassLock lock(Folder(), u"AUDIOPLAYER");
    EXPECT_EQ(lock.Claim(), ClaimResult::Others);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_FALSE(IsTaken());
    EXPECT_EQ(lock.Claim(), ClaimResult::Ours);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(ClassLocks, AFolderThatIsMissingIsMade)
{
    ClassLock lock(Folder() + "/a/b", u"AUDIOPLAYER");
    EXPECT_EQ(lock.Claim(), ClaimResult::Ours);
    EXPECT_TRUE(std::filesystem::exists(Folder() + "/a/b/audioplayer.lock"));
}

TEST_F(ClassLocks, FoldersDoNotShareALock)
{
    ClassLock here(Folder(), u"AUDIOPLAYER");
    ClassLock there(m_device.CardDirectory(), u"AUDIOPLAYER");
    EXPECT_EQ(here.Claim(), ClaimResult::Ours);
    EXPECT_EQ(there.Claim(), ClaimResult::Ours);
}

TEST_F(ClassLocks, APathThroughALinkIsTheSameFolder)
{
    std::filesystem::create_directory_symlink(Folder(), m_device.CardDirectory() + "/link");
    ClassLock lock(Folder(), u"AUDIOPLAYER");
    ASSERT_EQ(lock.Claim(), ClaimResult::Ours);
    EXPECT_TRUE(ClassLock::IsTaken(m_device.CardDirectory() + "/link", u"AUDIOPLAYER"));
}

TEST_F(ClassLocks, WithoutAFolderNobodyCanTell)
{
    m_device.WriteFile("user/file");
    ClassLock lock(Folder() + "/file", u"AUDIOPLAYER");
    EXPECT_EQ(lock.Claim(), ClaimResult::Unlocked);
}

TEST_F(ClassLocks, ALinkInPlaceOfTheFileIsNotFollowed)
{
    std::filesystem::create_symlink(m_device.CardDirectory() + "/target", Folder() + "/audioplayer.lock");
    ClassLock lock(Folder(), u"AUDIOPLAYER");
    EXPECT_EQ(lock.Claim(), ClaimResult::Unlocked);
    EXPECT_FALSE(std::filesystem::exists(m_device.CardDirectory() + "/target"));
}

TEST_F(ClassLocks, ANameThatIsNoFileNameIsNeverLocked)
{
    for (const std::u16string_view name : { u"", u"../x", u"a b", u"#32770", u"Sp\u00E4t" }) {
        ClassLock lock(Folder(), name);
        EXPECT_EQ(lock.Claim(), ClaimResult::Unlocked);
        EXPECT_FALSE(ClassLock::IsTaken(Folder(), name));
    }
}

} // namespace
} // namespace cardsong::bus
