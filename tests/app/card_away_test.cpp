// The card comes and goes: the list outlives it.
#include "app/main_window.h"
#include "app/title_ticker.h"
#include "tests/app/alerts_user.h"
#include "tests/app/player_fixture.h"

#include <filesystem>

using namespace cardsong::test;

namespace {

std::string Record(int number, const std::string& name, int seconds)
{
    std::string bytes;
    for (const char letter : std::to_string(number) + "$" + name + "$\\SDMMC$" + std::to_string(seconds)) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes + "\r\n";
}

class CardAway : public PlayerTest {
protected:
    CardAway()
    {
        PutList(m_savedList);
        PutSongs();
    }

    void PutList(const std::string& bytes) { m_device.WriteFile("user/Windows/play_list.txt", bytes); }
    std::string SavedList() { return m_device.ReadFile("user/Windows/play_list.txt"); }
    void PutSongs()
    {
        for (const char* name : { "a.mp3", "b.mp3", "c.mp3" })
            m_device.WriteFile(std::string("card/") + name, "x");
    }
    void RenameCardAway() { std::filesystem::rename(m_device.CardDirectory(), m_device.CardDirectory() + ".away"); }
    void RenameCardBack() { std::filesystem::rename(m_device.CardDirectory() + ".away", m_device.CardDirectory()); }
    void EmptyCard()
    {
        std::filesystem::remove_all(m_device.CardDirectory());
        m_device.MakeFolder("card");
    }
    void PutAnotherCard()
    {
        EmptyCard();
        m_device.WriteFile("card/x.mp3", "x");
    }
    void Exit()
    {
        Press(VK_F24);
        EXPECT_TRUE(m_hasQuit);
    }
    void ExpectStoppedWithTheWholeList()
    {
        EXPECT_EQ(g_isPlaying, 0);
        EXPECT_EQ(g_songLoaded, 0);
        EXPECT_TRUE(IsShown(kCommandPlay));
        EXPECT_EQ(PlayList.GetCount(), 3);
    }

    const std::string m_savedList = Record(1, "a.mp3", 30) + Record(2, "b.mp3", 20) + Record(3, "c.mp3", 10);
};

} // namespace

// ---- while it plays ----

TEST_F(CardAway, NextWithTheFolderRenamedAwayStopsAndKeepsTheList)
{
    Start();
    Press(VK_RETURN);
    ASSERT_EQ(g_isPlaying, 1);
    RenameCardAway();
    Press(VK_RIGHT);
    ExpectStoppedWithTheWholeList();
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, NextWithTheFolderEmptiedStopsAndKeepsTheList)
{
    Start();
    Press(VK_RETURN);
    EmptyCard();
    Press(VK_RIGHT);
    ExpectStoppedWithTheWholeList();
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, NextWithAnotherCardInItsPlaceStopsAndKeepsTheList)
{
    Start();
    Press(VK_RETURN);
    PutAnotherCard();
    Press(VK_RIGHT);
    ExpectStoppedWithTheWholeList();
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, NextOfAPausedSongStopsAndKeepsTheList)
{
    Start();
    Press(VK_RETURN);
    Press(VK_RETURN);
    RenameCardAway();
    Press(VK_RIGHT);
    ExpectStoppedWithTheWholeList();
}

TEST_F(CardAway, KeysPressedAgainAndAgainKeepTheList)
{
    Start();
    Press(VK_RETURN);
    RenameCardAway();
    for (int i = 0; i < 5; ++i) {
        Press(VK_RIGHT);
        Press(VK_RETURN);
        Press(VK_LEFT);
        Tap(kPlayKey);
        Tap(kNextKey);
    }
    ExpectStoppedWithTheWholeList();
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, ExitWhileTheSongStillSoundsKeepsTheList)
{
    Start();
    Press(VK_RETURN);
    RenameCardAway();
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, TheSongThatWasToComePlaysWhenTheCardIsBack)
{
    Start();
    Press(VK_RETURN);
    RenameCardAway();
    Press(VK_RIGHT);
    Press(VK_RETURN);
    ExpectStoppedWithTheWholeList();
    RenameCardBack();
    Press(VK_RETURN);
    EXPECT_EQ(g_isPlaying, 1);
    EXPECT_EQ(Narrow(g_titleText), "02.b");
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, ALengthLearnedBeforeIsSavedWithEverySong)
{
    PutList(Record(1, "a.mp3", 0) + Record(2, "b.mp3", 20) + Record(3, "c.mp3", 10));
    SetSimulatedSong(TEXT("\\SDMMC\\a.mp3"), { 45, true, true });
    Start();
    Press(VK_RETURN);
    RenameCardAway();
    Press(VK_RIGHT);
    Exit();
    EXPECT_EQ(SavedList(), Record(1, "a.mp3", 45) + Record(2, "b.mp3", 20) + Record(3, "c.mp3", 10));
}

TEST_F(CardAway, ASongDeletedFromTheCardThatIsThereLeavesTheListAndTheFile)
{
    Start();
    Press(VK_RETURN);
    std::filesystem::remove(m_device.CardDirectory() + "/b.mp3");
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(Narrow(g_titleText), "02.c");
    Exit();
    EXPECT_EQ(SavedList(), Record(1, "a.mp3", 30) + Record(2, "c.mp3", 10));
}

TEST_F(CardAway, ThousandsOfSongsDeletedInARowAreNoTrouble)
{
    Start();
    SongList(PlayList).FreeAll();
    AddSong("first.mp3", 10);
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "gone" + std::to_string(i) + ".mp3";
        AddSong(name, 10);
        std::filesystem::remove(m_device.CardDirectory() + "/" + name);
    }
    AddSong("z.mp3", 20);
    Press(VK_RETURN);
    Press(VK_RIGHT);
    EXPECT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(Narrow(g_titleText), "02.z");
}

// ---- from the start on ----

TEST_F(CardAway, StartWithAnEmptyFolderAndExitLeavesTheFileAsItIs)
{
    EmptyCard();
    Start();
    EXPECT_EQ(PlayList.GetCount(), 0);
    Press(VK_RETURN);
    EXPECT_EQ(g_songLoaded, 0);
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, StartWithAnotherCardAndExitLeavesTheFileAsItIs)
{
    PutAnotherCard();
    Start();
    EXPECT_EQ(PlayList.GetCount(), 0);
    Press(VK_RETURN);
    Exit();
    EXPECT_EQ(SavedList(), m_savedList);
}

TEST_F(CardAway, StartWithAnotherCardThatIsPlayedSavesItsListBesideTheOldOne)
{
    g_launchOptions.fillFromCard = true;
    PutAnotherCard();
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(Narrow(g_titleText), "01.x");
    Exit();
    const std::string saved = SavedList();
    EXPECT_EQ(saved.substr(0, Record(1, "x.mp3", 180).size()), Record(1, "x.mp3", 180));
    EXPECT_EQ(saved.substr(Record(1, "x.mp3", 180).size()), m_savedList);
}

TEST_F(CardAway, StartWithAnEmptyFolderPlaysTheSavedListOnceTheCardIsThere)
{
    g_launchOptions.fillFromCard = true; // the saved order comes before the card's
    PutList(Record(1, "c.mp3", 10) + Record(2, "a.mp3", 30));
    EmptyCard();
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 0);
    PutSongs();
    Press(VK_RETURN);
    EXPECT_EQ(PlayList.GetCount(), 2);
    EXPECT_EQ(Narrow(g_titleText), "01.c");
    Exit();
    EXPECT_EQ(SavedList(), Record(1, "c.mp3", 10) + Record(2, "a.mp3", 30));
}

TEST_F(CardAway, WithoutACardFolderTheProgramEndsAndLeavesTheFileAsItIs)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    EXPECT_FALSE(::testing::internal::GetCapturedStderr().empty());
    EXPECT_EQ(SavedList(), m_savedList);
}
