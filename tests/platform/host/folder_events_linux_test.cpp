// Which changes are worth a look at a folder. The alarm rings from the start, so that no wait is longer than it must
// be.
#include "platform/linux/host/folder_events.h"

#include "tests/platform/host/card_on_host.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>

#include <memory>

using namespace cardsong::host;

namespace {

class Events : public ::testing::Test {
protected:
    ~Events() override { close(m_alarm); }
    void Listen(const std::filesystem::path& folder, AwaitedEvent awaited)
    {
        m_events = std::make_unique<FolderEvents>(folder.string(), awaited, m_alarm);
    }
    bool IsWorthALook() const { return m_events->Wait(); }

    cardsong::test::CardOnHost m_card;
    const int m_alarm = eventfd(1, EFD_CLOEXEC);
    std::unique_ptr<FolderEvents> m_events;
};

} // namespace

TEST_F(Events, WithoutAnyChangeOnlyTheAlarmEndsTheWait)
{
    Listen(m_card.Folder(), AwaitedEvent::Going);
    EXPECT_FALSE(IsWorthALook());
    Listen(m_card.Folder(), AwaitedEvent::Coming);
    EXPECT_FALSE(IsWorthALook());
}

TEST_F(Events, WhatHappensToFilesOfACardThatIsThereWakesNobody)
{
    m_card.PutSong();
    Listen(m_card.Folder(), AwaitedEvent::Going);
    m_card.PutSong("b.mp3");
    std::filesystem::rename(m_card.Folder() / "b.mp3", m_card.Folder() / "c.mp3");
    std::filesystem::remove(m_card.Folder() / "c.mp3");
    std::ifstream(m_card.Folder() / "a.mp3").get();
    std::ofstream(m_card.Above() / "beside") << "x";
    std::filesystem::remove(m_card.Above() / "beside");
    EXPECT_FALSE(IsWorthALook());
}

TEST_F(Events, TheFolderRenamedAwayIsWorthALook)
{
    Listen(m_card.Folder(), AwaitedEvent::Going);
    m_card.TakeAway();
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, TheFolderDeletedIsWorthALook)
{
    m_card.PutSong();
    Listen(m_card.Folder(), AwaitedEvent::Going);
    std::filesystem::remove_all(m_card.Folder());
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, AFolderAboveRenamedIsWorthALook)
{
    Listen(m_card.Folder(), AwaitedEvent::Going);
    std::filesystem::rename(m_card.Above(), m_card.Beside("elsewhere"));
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, ALinkOnTheWayReplacedIsWorthALook)
{
    const auto link = m_card.Beside("link");
    std::filesystem::create_directory_symlink(m_card.Above(), link);
    Listen(link / "card", AwaitedEvent::Going);
    EXPECT_FALSE(IsWorthALook());
    std::filesystem::remove(link);
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, TheFirstFileInAnEmptyFolderIsWorthALook)
{
    Listen(m_card.Folder(), AwaitedEvent::Coming);
    m_card.PutSong();
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, AMissingFolderThatIsMadeIsWorthALook)
{
    m_card.TakeAway();
    Listen(m_card.Folder(), AwaitedEvent::Coming);
    EXPECT_FALSE(IsWorthALook());
    m_card.PutBack();
    EXPECT_TRUE(IsWorthALook());
}

TEST_F(Events, AFolderAboveTheMissingOneThatIsMadeIsWorthALook)
{
    std::filesystem::remove_all(m_card.Above());
    Listen(m_card.Folder(), AwaitedEvent::Coming);
    EXPECT_FALSE(IsWorthALook());
    std::filesystem::create_directory(m_card.Above());
    EXPECT_TRUE(IsWorthALook());
}
