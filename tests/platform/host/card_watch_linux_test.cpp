// A card that goes and comes while it is watched.
#include "platform/linux/host/card_watch.h"

#include "tests/platform/host/card_on_host.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <vector>

using namespace cardsong::host;

namespace {

class Watched : public ::testing::Test {
protected:
    void WatchCardThatIsThere()
    {
        m_card.PutSong();
        Watch(m_card.Folder());
    }
    void Watch(const std::filesystem::path& folder)
    {
        m_watch.Start(folder.string(), [this](CardChange change) {
            const std::lock_guard lock(m_mutex);
            m_changes.push_back(change);
            m_told.notify_all();
        });
    }
    // Whether just these changes were told by now, or are within a time that no machine needs.
    bool Saw(const std::vector<CardChange>& expected)
    {
        std::unique_lock lock(m_mutex);
        m_told.wait_for(lock, std::chrono::seconds(10), [&] { return m_changes.size() >= expected.size(); });
        return m_changes == expected;
    }

    cardsong::test::CardOnHost m_card;
    std::mutex m_mutex;
    std::condition_variable m_told;
    std::vector<CardChange> m_changes;
    CardWatch m_watch;
};

} // namespace

TEST_F(Watched, ACardRenamedAwayIsToldAndOneThatIsBackToo)
{
    WatchCardThatIsThere();
    m_card.TakeAway();
    EXPECT_TRUE(Saw({ CardChange::Gone }));
    m_card.PutBack();
    EXPECT_TRUE(Saw({ CardChange::Gone, CardChange::Come }));
}

TEST_F(Watched, ADeletedCardIsTold)
{
    WatchCardThatIsThere();
    std::filesystem::remove_all(m_card.Folder());
    EXPECT_TRUE(Saw({ CardChange::Gone }));
}

TEST_F(Watched, AFolderAboveRenamedAwayTakesTheCardAlong)
{
    WatchCardThatIsThere();
    std::filesystem::rename(m_card.Above(), m_card.Beside("elsewhere"));
    EXPECT_TRUE(Saw({ CardChange::Gone }));
}

TEST_F(Watched, AnEmptyFolderInTheCardsPlaceIsNoCardUntilSomethingLiesInIt)
{
    WatchCardThatIsThere();
    m_card.TakeAway();
    ASSERT_TRUE(Saw({ CardChange::Gone }));
    std::filesystem::create_directory(m_card.Folder());
    m_card.PutSong();
    EXPECT_TRUE(Saw({ CardChange::Gone, CardChange::Come }));
}

TEST_F(Watched, AnotherCardInItsPlaceIsTheOneGoneAndTheOtherCome)
{
    const auto slot = m_card.Beside("slot");
    m_card.PutSong();
    std::filesystem::create_directory_symlink(m_card.Folder(), slot);
    Watch(slot);
    std::filesystem::create_directory(m_card.Beside("other"));
    std::ofstream(m_card.Beside("other") / "x.mp3") << "x";
    std::filesystem::create_directory_symlink(m_card.Beside("other"), m_card.Beside("next"));
    std::filesystem::rename(m_card.Beside("next"), slot);
    EXPECT_TRUE(Saw({ CardChange::Gone, CardChange::Come }));
}

TEST_F(Watched, FilesDeletedFromACardAreNoCardGone)
{
    WatchCardThatIsThere();
    std::filesystem::remove(m_card.Folder() / "a.mp3");
    m_card.TakeAway(); // has an order behind the deletion
    EXPECT_TRUE(Saw({ CardChange::Gone }));
}

TEST_F(Watched, ACardThatComesAfterTheStartIsTold)
{
    std::filesystem::remove_all(m_card.Above());
    Watch(m_card.Folder());
    std::filesystem::create_directories(m_card.Folder());
    m_card.PutSong();
    EXPECT_TRUE(Saw({ CardChange::Come }));
}

TEST_F(Watched, AWatchThatWaitsStopsAtOnceAndTellsNothing)
{
    WatchCardThatIsThere();
    m_watch.Stop();
    m_card.TakeAway();
    EXPECT_TRUE(m_changes.empty());
    m_watch.Stop();
}

TEST_F(Watched, WithoutAFolderNothingIsWatched)
{
    Watch("");
    m_watch.Stop();
    EXPECT_TRUE(m_changes.empty());
}
