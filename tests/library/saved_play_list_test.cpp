// What becomes of the saved list when its card, or another one, is there or away.
#include "library/saved_play_list.h"

#include "library/card_of_list.h"
#include "library/inserted_card.h"
#include "tests/library/lists.h"
#include "tests/library/play_list_bytes.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::EmptyLists;
using cardsong::test::Paths;
using cardsong::test::ScratchDevice;

using Names = std::vector<std::string>;

std::string Record(int number, const std::string& name, int seconds)
{
    return cardsong::test::PlayListRecord(std::to_string(number) + "$" + name + "$\\SDMMC$" + std::to_string(seconds));
}

class SavedList : public testing::Test {
protected:
    // What the file holds after it was loaded with these songs on the card.
    void PutList(const std::string& bytes) { device.WriteFile("user/Windows/play_list.txt", bytes); }
    void PutOnCard(const Names& names)
    {
        std::filesystem::remove_all(device.CardDirectory());
        device.MakeFolder("card");
        for (const std::string& name : names)
            device.WriteFile("card/" + name, "x");
    }
    Names Load()
    {
        EmptyLists::Clear();
        saved.Load(PlayList);
        return Paths(PlayList);
    }
    std::string Saved()
    {
        saved.Save(PlayList);
        return device.ReadFile("user/Windows/play_list.txt");
    }
    static void Remove(std::int32_t index) { EXPECT_NE(SongList(PlayList).Take(index), nullptr); }

    ScratchDevice device;
    EmptyLists lists;
    SavedPlayList saved;
    const std::string twoSongs = Record(1, "a.mp3", 10) + Record(2, "b.mp3", 20);
};

// ---- nothing changed: the file stays to the byte ----

TEST_F(SavedList, StaysAsItIsWhenTheCardFolderIsEmpty)
{
    PutList(twoSongs);
    EXPECT_EQ(Load(), Names{});
    EXPECT_EQ(Saved(), twoSongs);
}

TEST_F(SavedList, StaysAsItIsWhenTheCardFolderIsMissing)
{
    PutList(twoSongs);
    std::filesystem::remove_all(device.CardDirectory());
    EXPECT_EQ(Load(), Names{});
    EXPECT_EQ(Saved(), twoSongs);
}

TEST_F(SavedList, StaysAsItIsOnAnotherCard)
{
    PutList(twoSongs);
    PutOnCard({ "x.mp3", "y.mp3" });
    EXPECT_EQ(Load(), Names{});
    EXPECT_EQ(Saved(), twoSongs);
}

TEST_F(SavedList, StaysAsItIsOnAnotherCardThatSharesAName)
{
    PutList(twoSongs);
    PutOnCard({ "a.mp3", "x.mp3" });
    EXPECT_EQ(Load(), Names{ "\\SDMMC\\a.mp3" });
    EXPECT_EQ(Saved(), twoSongs);
}

TEST_F(SavedList, StaysAsItIsOnItsOwnCardEvenWhereAWriterOfOursWouldWriteItOtherwise)
{
    const std::string odd = Record(7, "a.mp3", 10) + "\r\n" + Record(9, "b.mp3", 20).substr(0, 30);
    PutList(odd);
    PutOnCard({ "a.mp3", "b.mp3" });
    EXPECT_EQ(Load(), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\b.mp3" }));
    EXPECT_EQ(Saved(), odd);
}

TEST_F(SavedList, StaysAsItIsWhenItCannotBeRead)
{
    device.MakeFolder("user/Windows/play_list.txt"); // as good as a file that nobody may read
    EXPECT_EQ(Load(), Names{});
    saved.Save(PlayList);
    EXPECT_TRUE(std::filesystem::is_directory(device.UserDirectory() + "/Windows/play_list.txt"));
}

TEST_F(SavedList, IsWrittenWhereThereWasNone)
{
    EXPECT_EQ(Load(), Names{});
    EXPECT_EQ(Saved(), "");
    EXPECT_TRUE(std::filesystem::exists(device.UserDirectory() + "/Windows/play_list.txt"));
}

// ---- changed ----

TEST_F(SavedList, ChangedOnItsOwnCardIsTheNewOne)
{
    PutList(twoSongs);
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3" });
    Load();
    Remove(0);
    AddEntry(PlayList, TEXT("c.mp3"), TEXT("\\SDMMC"), 30);
    EXPECT_EQ(Saved(), Record(1, "b.mp3", 20) + Record(2, "c.mp3", 30));
}

TEST_F(SavedList, EmptiedByTheUserIsEmpty)
{
    PutList(twoSongs);
    PutOnCard({ "a.mp3", "b.mp3" });
    Load();
    EmptyLists::Clear();
    EXPECT_EQ(Saved(), "");
}

TEST_F(SavedList, OfWhichMostSongsAreThereLosesTheOthersWhenItChanges)
{
    PutList(twoSongs + Record(3, "deleted.mp3", 5));
    PutOnCard({ "a.mp3", "b.mp3" });
    Load();
    Remove(1);
    EXPECT_EQ(Saved(), Record(1, "a.mp3", 10));
}

TEST_F(SavedList, ChangedWhileItsCardIsAwayKeepsItsSongs)
{
    PutList(twoSongs);
    PutOnCard({ "a.mp3", "b.mp3" });
    Load();
    PutOnCard({});
    Remove(0);
    EXPECT_EQ(Saved(), Record(1, "b.mp3", 20));
}

TEST_F(SavedList, OfAnotherCardIsKeptBehindTheListOfThisOne)
{
    PutList(twoSongs);
    PutOnCard({ "x.mp3" });
    Load();
    AddEntry(PlayList, TEXT("x.mp3"), TEXT("\\SDMMC"), 7);
    const std::string both = Record(1, "x.mp3", 7) + twoSongs;
    EXPECT_EQ(Saved(), both);

    PutOnCard({ "a.mp3", "b.mp3" });
    EXPECT_EQ(Load(), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\b.mp3" }));
    EXPECT_EQ(Saved(), both);
    Remove(0);
    EXPECT_EQ(Saved(), Record(1, "b.mp3", 20) + Record(1, "x.mp3", 7));

    PutOnCard({ "x.mp3" });
    EXPECT_EQ(Load(), Names{ "\\SDMMC\\x.mp3" });
}

TEST_F(SavedList, OfAnotherCardThatSharesAFewNamesIsKept)
{
    const std::string other = Record(1, "01.mp3", 1) + Record(2, "02.mp3", 2) + Record(3, "03.mp3", 3);
    PutList(other);
    PutOnCard({ "01.mp3", "new.mp3" });
    EXPECT_EQ(Load(), Names{ "\\SDMMC\\01.mp3" });
    AddEntry(PlayList, TEXT("new.mp3"), TEXT("\\SDMMC"), 9);
    EXPECT_EQ(Saved(),
              Record(1, "01.mp3", 1) + Record(2, "new.mp3", 9) + Record(1, "02.mp3", 2) + Record(2, "03.mp3", 3));
    PutOnCard({ "01.mp3", "02.mp3", "03.mp3" });
    EXPECT_EQ(Load(), (Names{ "\\SDMMC\\01.mp3", "\\SDMMC\\02.mp3", "\\SDMMC\\03.mp3" }));
}

TEST_F(SavedList, HoldsASongThatTheListsOfTwoCardsNameOnce)
{
    PutList(Record(1, "a.mp3", 10) + Record(2, "b.mp3", 20) + Record(1, "a.mp3", 10) + Record(2, "z.mp3", 30));
    PutOnCard({ "a.mp3", "b.mp3" });
    EXPECT_EQ(Load(), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\b.mp3" }));
}

TEST_F(SavedList, ThatNamesASongTwiceHoldsItTwice)
{
    PutList(Record(1, "a.mp3", 10) + Record(2, "a.mp3", 10));
    PutOnCard({ "a.mp3" });
    EXPECT_EQ(Load().size(), 2U);
}

TEST_F(SavedList, WithNumbersOfNoOrderIsReadInTheOrderOfTheFile)
{
    PutList(Record(5, "a.mp3", 10) + Record(5, "c.mp3", 10) + Record(2, "b.mp3", 20));
    PutOnCard({ "a.mp3", "b.mp3", "c.mp3" });
    EXPECT_EQ(Load(), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\c.mp3", "\\SDMMC\\b.mp3" }));
}

// ---- a card that comes back ----

TEST_F(SavedList, IsTakenBackInItsOrderWhenTheCardComesBack)
{
    PutList(twoSongs);
    EXPECT_EQ(Load(), Names{});
    saved.TakeBack(PlayList);
    EXPECT_EQ(PlayList.GetCount(), 0);
    PutOnCard({ "b.mp3", "a.mp3" });
    saved.TakeBack(PlayList);
    EXPECT_EQ(Paths(PlayList), (Names{ "\\SDMMC\\a.mp3", "\\SDMMC\\b.mp3" }));
    EXPECT_EQ(Saved(), twoSongs);
    Remove(0);
    EXPECT_EQ(Saved(), Record(1, "b.mp3", 20));
}

TEST_F(SavedList, EmptiedByTheUserDoesNotComeBack)
{
    PutList(twoSongs);
    PutOnCard({ "a.mp3", "b.mp3" });
    Load();
    EmptyLists::Clear();
    saved.TakeBack(PlayList);
    EXPECT_EQ(PlayList.GetCount(), 0);
    EXPECT_EQ(Saved(), "");
}

// ---- the card ----

class Card : public SavedList {};

TEST_F(Card, IsInsertedWhenAnythingLiesOnIt)
{
    EXPECT_FALSE(IsCardInserted());
    device.WriteFile("card/cover.jpg", "x");
    EXPECT_TRUE(IsCardInserted());
    PutOnCard({});
    device.MakeFolder("card/Music");
    EXPECT_TRUE(IsCardInserted());
    std::filesystem::remove_all(device.CardDirectory());
    EXPECT_FALSE(IsCardInserted());
}

TEST_F(Card, OfAListIsThereWhenOneOfItsSongsIs)
{
    AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\SDMMC"));
    AddEntry(PlayList, TEXT("b.mp3"), TEXT("\\SDMMC"));
    CardOfList card(PlayList);
    EXPECT_FALSE(card.IsThere(0));
    PutOnCard({ "x.mp3" });
    EXPECT_FALSE(card.IsThere(0)) << "another card";
    PutOnCard({ "b.mp3" });
    EXPECT_TRUE(card.IsThere(0));
    PutOnCard({ "a.mp3" });
    EXPECT_TRUE(card.IsThere(1)) << "what was found last is gone, another song is there";
    PutOnCard({});
    EXPECT_FALSE(card.IsThere(0));
}

TEST_F(Card, OfAnEmptyListIsNotThere)
{
    PutOnCard({ "a.mp3" });
    EXPECT_FALSE(CardOfList(PlayList).IsThere(0));
}

TEST_F(Card, OfAListWithSongsElsewhereIsNotThereWhileNothingLiesOnTheCard)
{
    device.WriteFile("user/Music/a.mp3", "x");
    AddEntry(PlayList, TEXT("a.mp3"), TEXT("\\Music"));
    EXPECT_FALSE(CardOfList(PlayList).IsThere(0));
    PutOnCard({ "x.mp3" });
    EXPECT_TRUE(CardOfList(PlayList).IsThere(0));
}

} // namespace
