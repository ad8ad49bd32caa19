#include "tests/platform/user/dialog_builder.h"
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

struct Command {
    WPARAM wParam;
    HWND control;
    bool operator==(const Command&) const = default;
};
std::vector<Command> g_commands; // by CommandProcedure

INT_PTR CALLBACK CommandProcedure(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        g_commands.push_back({ wParam, reinterpret_cast<HWND>(lParam) });
    return FALSE;
}

class DialogKeys : public testing::Test {
protected:
    ~DialogKeys() override
    {
        if (IsWindow(m_dialog))
            DestroyWindow(m_dialog);
    }

    void Make(DialogBuilder& builder)
    {
        m_dialog = builder.Create(nullptr, CommandProcedure);
        g_commands.clear();
    }
    HWND Item(int id) const { return GetDlgItem(m_dialog, id); }
    BOOL Press(HWND window, WPARAM key) const
    {
        MSG message{};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        message.lParam = 1;
        return IsDialogMessageW(m_dialog, &message);
    }

    HWND m_dialog = nullptr;
};

TEST_F(DialogKeys, EnterSendsTheFocusedPushButtonWhateverWindowTheKeyNames)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK).Button(WS_TABSTOP, 9);
    Make(builder);
    SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(9)), 1);
    EXPECT_TRUE(Press(Item(IDOK), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(9, BN_CLICKED), Item(9) } }));
}

TEST_F(DialogKeys, EnterElsewhereSendsTheDefaultButton)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_OWNERDRAW, 4).Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5);
    Make(builder);
    SetFocus(Item(4));
    EXPECT_TRUE(Press(Item(4), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(5, BN_CLICKED), Item(5) } }));
}

TEST_F(DialogKeys, EnterWithTheDefaultButtonDisabledSendsNothing)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_OWNERDRAW, 4).Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5);
    Make(builder);
    SetFocus(Item(4));
    EnableWindow(Item(5), FALSE);
    EXPECT_TRUE(Press(Item(4), VK_RETURN));
    EXPECT_TRUE(g_commands.empty());
}

TEST_F(DialogKeys, EnterWithoutADefaultButtonSendsOk)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_OWNERDRAW, 4);
    Make(builder);
    EXPECT_TRUE(Press(m_dialog, VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { IDOK, nullptr } }));
}

TEST_F(DialogKeys, EscapeSendsCancel)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, IDCANCEL);
    Make(builder);
    EXPECT_TRUE(Press(m_dialog, VK_ESCAPE));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { IDCANCEL, Item(IDCANCEL) } }));
}

TEST_F(DialogKeys, TabGoesRoundTheUsableTabStops)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(WS_TABSTOP | WS_DISABLED, 2).Button(0, 3).Button(WS_TABSTOP, 4);
    Make(builder);
    SetFocus(Item(1));
    EXPECT_TRUE(Press(Item(1), VK_TAB));
    EXPECT_EQ(GetFocus(), Item(4));
    EXPECT_TRUE(Press(Item(4), VK_TAB));
    EXPECT_EQ(GetFocus(), Item(1));
}

TEST_F(DialogKeys, ArrowsGoRoundTheGroup)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_GROUP, 1).Button(0, 2).Button(WS_GROUP, 3);
    Make(builder);
    SetFocus(Item(1));
    EXPECT_TRUE(Press(Item(1), VK_RIGHT));
    EXPECT_EQ(GetFocus(), Item(2));
    EXPECT_TRUE(Press(Item(2), VK_DOWN));
    EXPECT_EQ(GetFocus(), Item(1));
    EXPECT_TRUE(Press(Item(1), VK_LEFT));
    EXPECT_EQ(GetFocus(), Item(2));
}

TEST_F(DialogKeys, OtherMessagesOfTheDialogAreDispatched)
{
    DialogBuilder builder({ WS_POPUP });
    Make(builder);
    MSG message{};
    message.hwnd = m_dialog;
    message.message = WM_COMMAND;
    message.wParam = 321;
    EXPECT_TRUE(IsDialogMessageW(m_dialog, &message));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { 321, nullptr } }));
}

TEST_F(DialogKeys, NoDialogOrAnotherWindowsMessageIsDeclined)
{
    DialogBuilder builder({ WS_POPUP });
    Make(builder);
    TestWindow other;
    MSG message{};
    message.hwnd = other;
    message.message = WM_USER;
    EXPECT_FALSE(IsDialogMessageW(m_dialog, &message));
    EXPECT_EQ(other.Count(WM_USER), 0);
    EXPECT_FALSE(IsDialogMessageW(nullptr, &message));
    DestroyWindow(m_dialog);
    message.hwnd = m_dialog;
    EXPECT_FALSE(IsDialogMessageW(m_dialog, &message));
}

TEST_F(DialogKeys, AControlWithAnIdAboveSixteenBitsIsTheDefault)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_OWNERDRAW, 4);
    Make(builder);
    const HWND button =
        CreateWindowExW(0, TEXT("button"), nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 9, 9, m_dialog,
                        reinterpret_cast<HMENU>(static_cast<LONG_PTR>(0x12345)), nullptr, nullptr);
    SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), 1);
    EXPECT_TRUE(Press(Item(4), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(0x2345, BN_CLICKED), button } }));
}

// A window that asks to see the message in WM_GETDLGCODE may handle it there.
TEST_F(DialogKeys, TheWindowIsAskedWithTheKeyAndTheMessageItself)
{
    TestWindow window;
    MSG message{};
    message.hwnd = window;
    message.message = WM_KEYDOWN;
    message.wParam = VK_LEFT;
    message.lParam = 1;
    window.Handle([&](HWND own, UINT seen, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (seen != WM_GETDLGCODE || lParam == 0)
            return std::nullopt;
        EXPECT_EQ(wParam, static_cast<WPARAM>(VK_LEFT));
        EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(&message));
        return SendMessageW(own, reinterpret_cast<const MSG*>(lParam)->message, wParam, 1);
    });
    EXPECT_TRUE(IsDialogMessageW(window, &message));
    EXPECT_EQ(window.Count(WM_GETDLGCODE), 1);
    EXPECT_EQ(window.Count(WM_KEYDOWN), 1);
}

TEST_F(DialogKeys, AWindowThatWantsTheKeyGetsItDispatched)
{
    TestWindow window;
    window.Handle([](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_GETDLGCODE)
            return DLGC_WANTALLKEYS;
        return std::nullopt;
    });
    MSG message{};
    message.hwnd = window;
    message.message = WM_KEYDOWN;
    message.wParam = VK_ESCAPE;
    message.lParam = 1;
    EXPECT_TRUE(IsDialogMessageW(window, &message));
    EXPECT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
}

TEST_F(DialogKeys, EnterOfAPushButtonWithTheFocusNamesItEvenIfItIsTheDefault)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 9).Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5);
    Make(builder);
    SetFocus(Item(5));
    EXPECT_TRUE(Press(Item(9), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(5, BN_CLICKED), Item(5) } }));
}

TEST_F(DialogKeys, EscapeWithoutACancelButtonSendsCancelAllTheSame)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    Make(builder);
    EXPECT_TRUE(Press(m_dialog, VK_ESCAPE));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { IDCANCEL, nullptr } }));
}

TEST_F(DialogKeys, ArrowsGoForwardsAndBackwards)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_GROUP, 1).Button(0, 2).Button(0, 3);
    Make(builder);
    struct Case {
        WPARAM key;
        int to;
    };
    for (const auto& [key, to] : { Case{ VK_RIGHT, 3 }, Case{ VK_DOWN, 3 }, Case{ VK_LEFT, 1 }, Case{ VK_UP, 1 } }) {
        SetFocus(Item(2));
        EXPECT_TRUE(Press(Item(2), key));
        EXPECT_EQ(GetFocus(), Item(to)) << key;
    }
}

TEST_F(DialogKeys, ArrowsStayInTheirGroupAndPassOverWhatCannotHaveTheFocus)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine takes the first control that it meets";
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(0, 1)
        .Button(WS_GROUP, 2)
        .Button(WS_DISABLED, 3)
        .Control(0x80, 0, 4)
        .Button(0, 5)
        .Button(WS_GROUP, 6);
    Make(builder);
    SetFocus(Item(2));
    Press(Item(2), VK_RIGHT);
    EXPECT_EQ(GetFocus(), Item(5));
    Press(Item(5), VK_RIGHT);
    EXPECT_EQ(GetFocus(), Item(2));
    Press(Item(2), VK_LEFT);
    EXPECT_EQ(GetFocus(), Item(5));
    SetFocus(Item(6));
    Press(Item(6), VK_RIGHT);
    EXPECT_EQ(GetFocus(), Item(6));
    SetFocus(Item(1));
    Press(Item(1), VK_RIGHT);
    EXPECT_EQ(GetFocus(), Item(1)) << "the controls before the first group are one of their own";
}

TEST_F(DialogKeys, AnArrowAtTheDialogItselfGoesNowhere)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine goes to the first control";
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(0, 1).Button(0, 2);
    Make(builder);
    SetFocus(Item(2));
    EXPECT_TRUE(Press(m_dialog, VK_RIGHT));
    EXPECT_EQ(GetFocus(), Item(2));
}

TEST_F(DialogKeys, TabGoesIntoAWindowThatIsAParentOfControls)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1);
    Make(builder);
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    options.exStyle = WS_EX_CONTROLPARENT;
    options.parent = m_dialog;
    TestWindow page(options);
    options.exStyle = 0;
    options.parent = page;
    TestWindow inner(options);
    SetFocus(Item(1));
    Press(Item(1), VK_TAB);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(inner));
    Press(inner, VK_TAB);
    EXPECT_EQ(GetFocus(), Item(1));
    EnableWindow(page, FALSE);
    Press(Item(1), VK_TAB);
    EXPECT_EQ(GetFocus(), Item(1)) << "nothing in a disabled page can be reached";
}

TEST_F(DialogKeys, AWindowThatWantsTabsOrArrowsGetsThem)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine declines some of the keys";
    struct Case {
        LRESULT code;
        WPARAM key;
        int received;
    };
    for (const auto& [code, key, received] :
         { Case{ DLGC_WANTTAB, VK_TAB, 1 }, Case{ DLGC_WANTTAB, VK_LEFT, 0 }, Case{ DLGC_WANTARROWS, VK_LEFT, 1 },
           Case{ DLGC_WANTARROWS, VK_UP, 1 }, Case{ DLGC_WANTARROWS, VK_TAB, 0 }, Case{ DLGC_WANTTAB, 'A', 1 } }) {
        TestWindow window;
        const LRESULT answer = code;
        window.Handle([answer](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_GETDLGCODE)
                return answer;
            return std::nullopt;
        });
        MSG message{};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        message.lParam = 1;
        EXPECT_TRUE(IsDialogMessageW(window, &message));
        EXPECT_EQ(window.Count(WM_KEYDOWN), received) << code << ", " << key;
    }
}

TEST_F(DialogKeys, OnlyAKeyThatGoesDownIsTheDialogs)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(WS_TABSTOP, 2);
    Make(builder);
    SetFocus(Item(1));
    MSG message{};
    message.hwnd = Item(1);
    message.message = WM_KEYUP;
    message.wParam = VK_TAB;
    EXPECT_TRUE(IsDialogMessageW(m_dialog, &message));
    EXPECT_EQ(GetFocus(), Item(1));
}

TEST_F(DialogKeys, AKeyThatTheDialogLeavesAloneBecomesACharacter)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1);
    Make(builder);
    PumpMessages();
    EXPECT_TRUE(Press(Item(1), VK_SPACE));
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, Item(1), WM_CHAR, WM_CHAR, PM_REMOVE));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(' '));
    EXPECT_TRUE(Press(Item(1), VK_RETURN));
    EXPECT_FALSE(PeekMessageW(&message, Item(1), WM_CHAR, WM_CHAR, PM_REMOVE));
    SendMessageW(Item(1), WM_KEYUP, VK_SPACE, 0);
}

TEST_F(DialogKeys, TheDesktopIsNoDialog)
{
    MSG message{};
    message.hwnd = GetDesktopWindow();
    message.message = WM_USER;
    EXPECT_FALSE(IsDialogMessageW(GetDesktopWindow(), &message));
}

TEST_F(DialogKeys, EnterWithoutADefaultButtonSendsOkThoughItsButtonIsDisabled)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine sends nothing";
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(BS_OWNERDRAW | WS_DISABLED, IDOK).Button(BS_OWNERDRAW | WS_TABSTOP, 9);
    Make(builder);
    EXPECT_TRUE(Press(Item(9), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(IDOK, BN_CLICKED), Item(IDOK) } }));
}

INT_PTR CALLBACK ProcedureWithAnIdOnly(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != DM_GETDEFID)
        return CommandProcedure(dialog, message, wParam, lParam);
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, MAKELONG(9, 0)); // not said to be the default
    return TRUE;
}

TEST_F(DialogKeys, AnIdThatIsNotSaidToBeTheDefaultIsNone)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(BS_OWNERDRAW | WS_TABSTOP, 9).Button(BS_OWNERDRAW, IDOK);
    m_dialog = builder.Create(nullptr, ProcedureWithAnIdOnly);
    g_commands.clear();
    EXPECT_TRUE(Press(Item(9), VK_RETURN));
    EXPECT_EQ(g_commands, (std::vector<Command>{ { MAKEWPARAM(IDOK, BN_CLICKED), Item(IDOK) } }));
}

} // namespace
