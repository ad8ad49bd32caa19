#include "app/player_keys.h"

#include "tests/app/player_fixture.h"

#include <map>

using namespace cardsong::test;

namespace {

WNDPROC g_procedure;
std::vector<WORD> g_commands; // that reached the main window

LRESULT CALLBACK NoteCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    constexpr WORD kLastOfDialogs = 15; // the dialog manager's own answers to Enter and Escape come below
    if (message == WM_COMMAND && LOWORD(wParam) > kLastOfDialogs)
        g_commands.push_back(LOWORD(wParam));
    return g_procedure(window, message, wParam, lParam);
}

class PlayerKeys : public PlayerTest {
protected:
    void StartNoting()
    {
        Start();
        g_procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_window, GWLP_WNDPROC));
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NoteCommands));
        g_commands.clear();
    }
    std::vector<WORD> CommandsOf(UINT key)
    {
        g_commands.clear();
        Press(key);
        return g_commands;
    }
};

const std::map<UINT, WORD> kActions = {
    { VK_LEFT, kCommandPrevious },    { VK_RIGHT, kCommandNext },         { VK_RETURN, kCommandPlay },
    { VK_UP, kCommandAudioSettings }, { VK_DOWN, kCommandAudioSettings },
};

} // namespace

TEST_F(PlayerKeys, AKeyActsOnce)
{
    StartNoting();
    for (UINT key = 1; key <= 255; ++key) {
        if (key == VK_F24)
            continue;
        const auto action = kActions.find(key);
        const auto expected = action == kActions.end() ? std::vector<WORD>{} : std::vector<WORD>{ action->second };
        EXPECT_EQ(CommandsOf(key), expected) << key;
    }
}

TEST_F(PlayerKeys, TheExitKeyActsOnce)
{
    StartNoting();
    EXPECT_EQ(CommandsOf(VK_F24), (std::vector<WORD>{ kCommandExit, kCommandStop })); // the window's end stops the song
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(PlayerKeys, AHeldKeyActsAgainButForEnter)
{
    StartNoting();
    for (const auto& [key, command] : kActions) {
        g_commands.clear();
        for (int i = 0; i < 3; ++i) {
            cardsong::user::KeyDown(key);
            Pump();
        }
        cardsong::user::KeyUp(key);
        Pump();
        EXPECT_EQ(g_commands.size(), key == VK_RETURN ? 1U : 3U) << key;
    }
}

TEST_F(PlayerKeys, AKeyThatIsPressedWhileTheWindowIsAskedForSomethingElseDoesNothing)
{
    StartNoting();
    MSG up{};
    up.hwnd = m_window;
    up.message = WM_KEYUP;
    up.wParam = VK_LEFT;
    SendMessageW(m_window, WM_GETDLGCODE, VK_LEFT, reinterpret_cast<LPARAM>(&up));
    SendMessageW(m_window, WM_GETDLGCODE, 0, 0);
    EXPECT_TRUE(g_commands.empty());
}
