// With which status the program ends: whoever starts it may ask to be told that the user pressed exit.
#include "app/player_end.h"

#include "tests/app/alerts_user.h"
#include "tests/app/player_fixture.h"

#include <cstring>

using namespace cardsong::test;

namespace {

constexpr int kEnded = 0;
constexpr int kUserPressedExit = 10;

class PlayerEnd : public PlayerTest {
protected:
    void StartTellingExit()
    {
        g_launchOptions.tellExit = true;
        Start();
    }
    void PullCard()
    {
        const AlertsUser user(m_clock, AlertsUser::TapOk);
        constexpr WCHAR name[] = TEXT("DSK3:");
        alignas(DWORD) std::array<std::byte, 3 * sizeof(DWORD) + sizeof name> port{};
        const DWORD header[] = { sizeof port, DBT_DEVTYP_PORT, 0 };
        std::memcpy(port.data(), header, sizeof header);
        std::memcpy(port.data() + sizeof header, name, sizeof name);
        SendMessageW(m_window, WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE, reinterpret_cast<LPARAM>(port.data()));
        Pump();
    }
};

} // namespace

TEST_F(PlayerEnd, TellsThatTheExitKeyOnTheScreenWasPressed)
{
    StartTellingExit();
    Tap(kExitKey);
    EXPECT_EQ(m_exitStatus, kUserPressedExit);
}

TEST_F(PlayerEnd, TellsThatTheExitKeyWasStruck)
{
    StartTellingExit();
    Press(VK_F24);
    EXPECT_EQ(m_exitStatus, kUserPressedExit);
}

TEST_F(PlayerEnd, TellsNothingUnasked)
{
    Start();
    Tap(kExitKey);
    EXPECT_EQ(m_exitStatus, kEnded);
    m_exitStatus = -1;
    StartAgain();
    Press(VK_F24);
    EXPECT_EQ(m_exitStatus, kEnded);
}

TEST_F(PlayerEnd, IsNoExitOfTheUsersWhenTheSystemAsksForIt)
{
    StartTellingExit();
    cardsong::user::PressExitKey();
    Pump();
    EXPECT_EQ(m_exitStatus, kEnded);
}

TEST_F(PlayerEnd, IsNoExitOfTheUsersWhenAnotherProgramGivesTheCommand)
{
    StartTellingExit();
    PostMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    Pump();
    EXPECT_EQ(m_exitStatus, kEnded);
}

TEST_F(PlayerEnd, IsNoExitOfTheUsersWhenTheCardGoesToAComputer)
{
    StartTellingExit();
    PostMessageW(HWND_BROADCAST, g_msgMassStorage, 0, 0);
    Pump();
    EXPECT_EQ(m_exitStatus, kEnded);
}

TEST_F(PlayerEnd, IsNoExitOfTheUsersWhenTheCardIsPulledOut)
{
    StartTellingExit();
    PullCard();
    EXPECT_TRUE(m_hasQuit);
    EXPECT_EQ(m_exitStatus, kEnded);
}

TEST_F(PlayerEnd, ForgetsThePressForTheNextPlayer)
{
    StartTellingExit();
    Tap(kExitKey);
    ASSERT_EQ(m_exitStatus, kUserPressedExit);
    StartAgain();
    cardsong::user::PressExitKey();
    Pump();
    EXPECT_EQ(m_exitStatus, kEnded);
}
