// What counts as a card in its folder.
#include "platform/linux/host/card_folder.h"

#include "tests/platform/host/card_on_host.h"

#include <gtest/gtest.h>

using namespace cardsong::host;
using cardsong::test::CardOnHost;

namespace {

std::optional<CardIdentity> Look(const std::filesystem::path& folder,
                                 const std::optional<CardIdentity>& known = std::nullopt)
{
    return FindCard(folder.string(), known);
}

} // namespace

TEST(CardFolder, AFolderWithAFileIsACardAndStaysTheSame)
{
    const CardOnHost card;
    card.PutSong();
    const auto found = Look(card.Folder());
    ASSERT_TRUE(found);
    EXPECT_EQ(Look(card.Folder()), found);
    EXPECT_EQ(Look(card.Folder(), found), found);
}

TEST(CardFolder, AnEmptyFolderIsNoCard)
{
    const CardOnHost card;
    EXPECT_FALSE(Look(card.Folder()));
}

TEST(CardFolder, ACardWhoseFilesWereDeletedIsStillThere)
{
    const CardOnHost card;
    card.PutSong();
    const auto found = Look(card.Folder());
    std::filesystem::remove(card.Folder() / "a.mp3");
    EXPECT_EQ(Look(card.Folder(), found), found);
}

TEST(CardFolder, AnEmptyFileSystemMountedOnTheFolderIsACard)
{
    EXPECT_TRUE(Look("/proc"));
    EXPECT_TRUE(Look("/sys"));
}

TEST(CardFolder, WhereNothingIsThereIsNoCard)
{
    const CardOnHost card;
    card.PutSong();
    const auto found = Look(card.Folder());
    EXPECT_FALSE(Look(card.Above() / "nowhere"));
    card.TakeAway();
    EXPECT_FALSE(Look(card.Folder(), found));
}

TEST(CardFolder, AFileIsNoCard)
{
    const CardOnHost card;
    card.PutSong();
    EXPECT_FALSE(Look(card.Folder() / "a.mp3"));
}

TEST(CardFolder, AnotherFolderInItsPlaceIsAnotherCard)
{
    const CardOnHost card;
    card.PutSong();
    const auto found = Look(card.Folder());
    card.TakeAway();
    std::filesystem::create_directory(card.Folder());
    EXPECT_FALSE(Look(card.Folder(), found));
    card.PutSong();
    EXPECT_TRUE(Look(card.Folder(), found));
    EXPECT_NE(Look(card.Folder(), found), found);
}

TEST(CardFolder, ALinkToTheFolderShowsTheSameCard)
{
    const CardOnHost card;
    card.PutSong();
    std::filesystem::create_directory_symlink(card.Folder(), card.Beside("link"));
    EXPECT_EQ(Look(card.Beside("link")), Look(card.Folder()));
}
