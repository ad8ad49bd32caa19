#include "tests/platform/user/dialog_builder.h"
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

std::vector<SeenMessage> g_seen; // by RememberingProcedure
INT_PTR g_initAnswer = TRUE;     // what it answers to WM_INITDIALOG
bool g_childHadFont = false;     // at WM_INITDIALOG
bool g_wasVisibleAtInit = false;

INT_PTR CALLBACK RememberingProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_seen.push_back({ dialog, message, wParam, lParam });
    if (message != WM_INITDIALOG)
        return FALSE;
    const HWND child = GetWindow(dialog, GW_CHILD);
    g_childHadFont = child != nullptr && SendMessageW(child, WM_GETFONT, 0, 0) != 0;
    g_wasVisibleAtInit = IsWindowVisible(dialog) != FALSE;
    return g_initAnswer;
}

int CountSeen(UINT message)
{
    return static_cast<int>(
        std::count_if(g_seen.begin(), g_seen.end(), [&](const auto& seen) { return seen.message == message; }));
}

class DialogTest : public testing::Test {
protected:
    DialogTest()
    {
        g_seen.clear();
        g_initAnswer = TRUE;
        g_childHadFont = false;
        g_wasVisibleAtInit = false;
    }
    ~DialogTest() override
    {
        if (IsWindow(m_dialog))
            DestroyWindow(m_dialog);
    }

    HWND m_dialog = nullptr;
};

TEST_F(DialogTest, ControlsExistWithTheirFontBeforeInitAndTheDialogIsShownAfterIt)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE | DS_SETFONT });
    builder.Button(WS_TABSTOP, 5);
    m_dialog = builder.Create(nullptr, RememberingProcedure, 77);
    ASSERT_NE(m_dialog, nullptr);
    EXPECT_TRUE(g_childHadFont);
    EXPECT_FALSE(g_wasVisibleAtInit);
    EXPECT_TRUE(IsWindowVisible(m_dialog));
    ASSERT_EQ(CountSeen(WM_INITDIALOG), 1);
    for (const auto& seen : g_seen) {
        if (seen.message == WM_INITDIALOG) {
            EXPECT_EQ(seen.lParam, 77);
            EXPECT_EQ(seen.wParam, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, 5)));
        }
    }
}

TEST_F(DialogTest, InitAnsweringTrueFocusesTheFirstUsableTabStop)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(0, 1).Button(WS_TABSTOP | WS_DISABLED, 2).Control(0x80, WS_TABSTOP, 3).Button(WS_TABSTOP, 4);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 4));
}

TEST_F(DialogTest, InitAnsweringTrueWithoutATabStopFocusesTheFirstControl)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(0, 1).Button(0, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 1));
}

TEST_F(DialogTest, WithoutATabStopTheFirstControlIsProposed)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(0, 1).Button(0, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const auto init =
        std::find_if(g_seen.begin(), g_seen.end(), [](const auto& seen) { return seen.message == WM_INITDIALOG; });
    ASSERT_NE(init, g_seen.end());
    EXPECT_EQ(init->wParam, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, 1)));
}

TEST_F(DialogTest, InitAnsweringFalseLeavesTheFocusAlone)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow other(options);
    SetFocus(other);
    g_initAnswer = FALSE;
    DialogBuilder builder({ WS_POPUP });
    builder.Button(WS_TABSTOP, 4);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(other));
}

TEST_F(DialogTest, AnInvisibleControlDialogTakesNoFocus)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow other(options);
    SetFocus(other);
    DialogBuilder builder({ WS_CHILD | DS_CONTROL });
    builder.Button(WS_TABSTOP, 4);
    m_dialog = builder.Create(other, RememberingProcedure);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(other));
}

TEST_F(DialogTest, ComingBackToADialogReturnsTheFocusToItsControl)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(WS_TABSTOP, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    SetFocus(GetDlgItem(m_dialog, 2));
    {
        TestWindow other(options);
        ASSERT_EQ(GetActiveWindow(), static_cast<HWND>(other));
        SetActiveWindow(m_dialog);
        EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 2));
        SetActiveWindow(other);
        EnableWindow(GetDlgItem(m_dialog, 2), FALSE);
        SetActiveWindow(m_dialog);
        EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 1)) << "its own control is disabled: the first that can have it";
    }
}

TEST_F(DialogTest, TheTabKeyMovesTheLookOfTheDefaultButtonButNotItsId)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 1).Button(WS_TABSTOP, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const auto look = [&](int id) {
        return static_cast<DWORD>(GetWindowLongPtrW(GetDlgItem(m_dialog, id), GWL_STYLE)) & 0xF;
    };
    EXPECT_EQ(SendMessageW(m_dialog, DM_GETDEFID, 0, 0), MAKELONG(1, DC_HASDEFID));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 0, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 2));
    EXPECT_EQ(look(1), static_cast<DWORD>(BS_PUSHBUTTON));
    EXPECT_EQ(look(2), static_cast<DWORD>(BS_DEFPUSHBUTTON));
    EXPECT_EQ(SendMessageW(m_dialog, DM_GETDEFID, 0, 0), MAKELONG(1, DC_HASDEFID));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 1, 0);
    EXPECT_EQ(look(1), static_cast<DWORD>(BS_DEFPUSHBUTTON));
    EXPECT_EQ(look(2), static_cast<DWORD>(BS_PUSHBUTTON));
}

TEST_F(DialogTest, TheDefaultIdCanBeSet)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(WS_TABSTOP, 5);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SendMessageW(m_dialog, DM_SETDEFID, 5, 0);
    EXPECT_EQ(SendMessageW(m_dialog, DM_GETDEFID, 0, 0), MAKELONG(5, DC_HASDEFID));
}

TEST_F(DialogTest, ClosingAsksForCancel)
{
    DialogBuilder builder({ WS_POPUP });
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SendMessageW(m_dialog, WM_CLOSE, 0, 0);
    PumpMessages();
    EXPECT_TRUE(IsWindow(m_dialog));
    ASSERT_EQ(CountSeen(WM_COMMAND), 1);
}

std::vector<UINT> g_classSaw;

LRESULT CALLBACK OwnClassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_classSaw.push_back(message);
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(DialogTest, AClassNamedInTheTemplateGetsAllMessagesWithoutADialogProcedure)
{
    WNDCLASSW windowClass{};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = OwnClassProcedure;
    windowClass.cbWndExtra = 32;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    windowClass.lpszClassName = TEXT("TemplateClass");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    DialogBuilder builder({ WS_POPUP | WS_SYSMENU | DS_SETFONT, 0, 0, 241, 119, TEXT("TEMPLATECLASS") });
    m_dialog = builder.Create(nullptr, nullptr);
    ASSERT_NE(m_dialog, nullptr);
    EXPECT_EQ(FindWindowW(TEXT("TemplateClass"), nullptr), m_dialog);
    EXPECT_FALSE(IsWindowVisible(m_dialog));
    EXPECT_NE(std::find(g_classSaw.begin(), g_classSaw.end(), static_cast<UINT>(WM_CREATE)), g_classSaw.end());
    DestroyWindow(m_dialog);
    EXPECT_EQ(g_classSaw.back(), static_cast<UINT>(WM_NCDESTROY));
    UnregisterClassW(TEXT("TemplateClass"), nullptr);
}

TEST_F(DialogTest, AnUnknownClassMakesNoDialog)
{
    DialogBuilder builder({ WS_POPUP, 0, 0, 10, 10, TEXT("NoSuchClassAtAll") });
    EXPECT_EQ(builder.Create(nullptr, nullptr), nullptr);
}

TEST_F(DialogTest, TheTemplateNamesTextStyleAndTheIdsOfTheControls)
{
    DialogBuilder builder({ WS_POPUP, 0, 0, 100, 50, TEXT(""), TEXT("Cardsong dialog"), WS_EX_NOACTIVATE });
    builder.Control(TEXT("button"), TEXT("Cardsong button"), WS_TABSTOP, WS_EX_TRANSPARENT, 21)
        .Control(0x82, 0, 0xFFFE)
        .Control(0x80, WS_GROUP, 23);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    ASSERT_NE(m_dialog, nullptr);
    EXPECT_EQ(FindWindowW(nullptr, TEXT("Cardsong dialog")), m_dialog);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(m_dialog, GWL_EXSTYLE)) & WS_EX_NOACTIVATE, WS_EX_NOACTIVATE);
    const HWND first = GetWindow(m_dialog, GW_CHILD);
    EXPECT_EQ(GetDlgCtrlID(first), 21);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(first, GWL_STYLE)), WS_CHILD | WS_TABSTOP);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(first, GWL_EXSTYLE)) & WS_EX_TRANSPARENT, WS_EX_TRANSPARENT);
    const HWND second = GetWindow(first, GW_HWNDNEXT);
    EXPECT_EQ(GetDlgCtrlID(second), 0xFFFE);
    EXPECT_EQ(SendMessageW(second, WM_GETDLGCODE, 0, 0), DLGC_STATIC);
    const HWND third = GetWindow(second, GW_HWNDNEXT);
    EXPECT_EQ(GetDlgCtrlID(third), 23);
    EXPECT_EQ(SendMessageW(third, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    EXPECT_EQ(GetWindow(third, GW_HWNDNEXT), nullptr);
}

TEST_F(DialogTest, ItsInstanceAndThatOfItsControlsIsTheOneGiven)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(0, 5);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetWindowLongPtrW(m_dialog, DWLP_DLGPROC), reinterpret_cast<LONG_PTR>(RememberingProcedure));
    EXPECT_EQ(GetWindowLongPtrW(GetDlgItem(m_dialog, 5), GWLP_HINSTANCE), 0);
}

std::vector<int> g_creationData;

LRESULT CALLBACK RememberData(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CREATE) {
        g_creationData.clear();
        const auto& description = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
        const auto* const data = static_cast<const BYTE*>(description.lpCreateParams);
        if (data != nullptr)
            g_creationData.assign(data, data + 4);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(DialogTest, AControlGetsItsCreationDataWithTheirSizeInFront)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = RememberData;
    windowClass.lpszClassName = TEXT("RememberData");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    DialogBuilder with({ WS_POPUP });
    with.Control(TEXT("RememberData"), TEXT(""), 0, 0, 1, { 0x3412 }).Control(0x80, 0, 2);
    m_dialog = with.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(g_creationData, (std::vector<int>{ 2, 0, 0x12, 0x34 }));
    EXPECT_NE(GetDlgItem(m_dialog, 2), nullptr);
    DestroyWindow(m_dialog);
    DialogBuilder without({ WS_POPUP });
    without.Control(TEXT("RememberData"), TEXT(""), 0, 0, 1);
    m_dialog = without.Create(nullptr, RememberingProcedure);
    EXPECT_TRUE(g_creationData.empty());
    DestroyWindow(m_dialog);
    UnregisterClassW(TEXT("RememberData"), nullptr);
}

TEST_F(DialogTest, AnUnknownControlMakesNoDialog)
{
    const HWND before = GetWindow(GetDesktopWindow(), GW_CHILD);
    DialogBuilder builder({ WS_POPUP });
    builder.Control(TEXT("NoSuchClassAtAll"), TEXT(""), 0, 0, 1);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(m_dialog, nullptr);
    EXPECT_EQ(CountSeen(WM_INITDIALOG), 0);
    EXPECT_EQ(GetWindow(GetDesktopWindow(), GW_CHILD), before);
}

TEST_F(DialogTest, WithoutATemplateThereIsNoDialog)
{
    EXPECT_EQ(CreateDialogIndirectParamW(nullptr, nullptr, nullptr, RememberingProcedure, 0), nullptr);
}

INT_PTR CALLBACK DestroyAtInit(HWND dialog, UINT message, WPARAM, LPARAM)
{
    if (message == WM_INITDIALOG)
        DestroyWindow(dialog);
    return TRUE;
}

TEST_F(DialogTest, ADialogThatGoesAtInitIsNotMade)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine returns the dead handle";
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1);
    EXPECT_EQ(builder.Create(nullptr, DestroyAtInit), nullptr);
}

TEST_F(DialogTest, TheFirstControlIsProposedEvenIfItIsTheLastTabStop)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(0, 1).Button(WS_TABSTOP, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure, -5);
    for (const auto& seen : g_seen)
        if (seen.message == WM_INITDIALOG) {
            EXPECT_EQ(seen.wParam, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, 2)));
            EXPECT_EQ(seen.lParam, -5);
        }
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 2));
}

TEST_F(DialogTest, ADialogWithoutControlsTakesTheFocusItself)
{
    DialogBuilder builder({ WS_POPUP });
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetFocus(), m_dialog);
}

TEST_F(DialogTest, AVisibleControlDialogGivesTheFocusToItsControl)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow other(options);
    DialogBuilder builder({ WS_CHILD | WS_VISIBLE | DS_CONTROL });
    builder.Button(WS_TABSTOP, 4);
    m_dialog = builder.Create(other, RememberingProcedure);
    EXPECT_EQ(GetParent(m_dialog), static_cast<HWND>(other));
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 4));
}

TEST_F(DialogTest, TheDefaultButtonOfTheTemplateIsTheDefault)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine names OK where no button is the default";
    DialogBuilder builder({ WS_POPUP });
    builder.Button(WS_TABSTOP, 5).Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 6).Button(WS_TABSTOP, 7);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(SendMessageW(m_dialog, DM_GETDEFID, 0, 0), MAKELONG(6, DC_HASDEFID));
    DialogBuilder none({ WS_POPUP });
    none.Button(WS_TABSTOP, 5);
    const HWND plain = none.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(SendMessageW(plain, DM_GETDEFID, 0, 0), 0);
    DestroyWindow(plain);
}

TEST_F(DialogTest, ANewDefaultButtonTakesTheLookFromTheOldOne)
{
    DialogBuilder builder({ WS_POPUP });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5).Button(WS_TABSTOP, 6).Control(0x80, BS_OWNERDRAW, 7);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const auto type = [&](int id) {
        return static_cast<DWORD>(GetWindowLongPtrW(GetDlgItem(m_dialog, id), GWL_STYLE)) & 0xF;
    };
    EXPECT_EQ(SendMessageW(m_dialog, DM_SETDEFID, 6, 0), 1);
    EXPECT_EQ(type(5), static_cast<DWORD>(BS_PUSHBUTTON));
    EXPECT_EQ(type(6), static_cast<DWORD>(BS_DEFPUSHBUTTON));
    SendMessageW(m_dialog, DM_SETDEFID, 7, 0);
    EXPECT_EQ(type(6), static_cast<DWORD>(BS_PUSHBUTTON));
    EXPECT_EQ(type(7), static_cast<DWORD>(BS_OWNERDRAW)) << "its owner draws it";
    EXPECT_EQ(SendMessageW(m_dialog, DM_GETDEFID, 0, 0), MAKELONG(7, DC_HASDEFID));
    SendMessageW(m_dialog, DM_SETDEFID, 5, 0);
    SendMessageW(m_dialog, DM_SETDEFID, 5, 0);
    EXPECT_EQ(type(5), static_cast<DWORD>(BS_DEFPUSHBUTTON));
}

TEST_F(DialogTest, GoingToAControlThatIsNoButtonBringsTheLookBackToTheDefault)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 1).Button(WS_TABSTOP, 2).Button(WS_TABSTOP | BS_OWNERDRAW, 3);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const auto type = [&](int id) {
        return static_cast<DWORD>(GetWindowLongPtrW(GetDlgItem(m_dialog, id), GWL_STYLE)) & 0xF;
    };
    SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, 2)), TRUE);
    EXPECT_EQ(type(2), static_cast<DWORD>(BS_DEFPUSHBUTTON));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, 3)), TRUE);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 3));
    EXPECT_EQ(type(1), static_cast<DWORD>(BS_DEFPUSHBUTTON));
    EXPECT_EQ(type(2), static_cast<DWORD>(BS_PUSHBUTTON));
    EXPECT_EQ(type(3), static_cast<DWORD>(BS_OWNERDRAW));
}

TEST_F(DialogTest, TheNextAndTheLastControlAreOnesThatCanBeReached)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(0, 2).Button(WS_TABSTOP, 3);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(SendMessageW(m_dialog, WM_NEXTDLGCTL, 0, 0), 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 3));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 0, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 1));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 1, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 3));
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 1, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 1));
}

TEST_F(DialogTest, TheFocusOfADialogGoesToItsControl)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(0, 1).Button(WS_TABSTOP, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(GetDlgItem(m_dialog, 1));
    SetFocus(m_dialog);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 2));
}

TEST_F(DialogTest, ADialogThatIsHiddenAndShownReturnsTheFocusToItsControl)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 1).Button(WS_TABSTOP, 2);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(GetDlgItem(m_dialog, 2));
    ShowWindow(m_dialog, SW_HIDE);
    EXPECT_EQ(GetFocus(), nullptr);
    ShowWindow(m_dialog, SW_SHOW);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 2));
}

INT_PTR g_answer = 0;
LRESULT g_result = 0;

INT_PTR CALLBACK AnsweringProcedure(HWND dialog, UINT message, WPARAM, LPARAM)
{
    if (message != WM_USER && message != WM_CTLCOLORBTN && message != WM_CTLCOLORSTATIC && message != WM_ERASEBKGND)
        return FALSE;
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, g_result);
    return g_answer;
}

TEST_F(DialogTest, WhatTheProgramPutIntoTheDialogIsTheAnswerOfAMessageThatItHandled)
{
    DialogBuilder builder({ WS_POPUP });
    m_dialog = builder.Create(nullptr, AnsweringProcedure);
    g_result = 0x12345;
    g_answer = TRUE;
    EXPECT_EQ(SendMessageW(m_dialog, WM_USER, 0, 0), 0x12345);
    g_answer = FALSE;
    EXPECT_EQ(SendMessageW(m_dialog, WM_USER + 7, 0, 0), 0);
    EXPECT_EQ(GetWindowLongPtrW(m_dialog, DWLP_MSGRESULT), 0) << "cleared before each message";
}

TEST_F(DialogTest, AColourIsAnsweredByTheProcedureItself)
{
    DialogBuilder builder({ WS_POPUP });
    m_dialog = builder.Create(nullptr, AnsweringProcedure);
    g_result = 0;
    g_answer = 0x777;
    EXPECT_EQ(SendMessageW(m_dialog, WM_CTLCOLORBTN, 0, 0), 0x777);
    EXPECT_EQ(SendMessageW(m_dialog, WM_CTLCOLORSTATIC, 0, 0), 0x777);
}

INT_PTR CALLBACK DestroyAtUser(HWND dialog, UINT message, WPARAM, LPARAM)
{
    if (message == WM_USER)
        DestroyWindow(dialog);
    return FALSE;
}

TEST_F(DialogTest, ADialogThatGoesAmidAMessageAnswersNothing)
{
    DialogBuilder builder({ WS_POPUP });
    m_dialog = builder.Create(nullptr, DestroyAtUser);
    EXPECT_EQ(SendMessageW(m_dialog, WM_USER, 0, 0), 0);
    EXPECT_FALSE(IsWindow(m_dialog));
}

TEST_F(DialogTest, ClosingNamesTheCancelButtonUnlessThatIsDisabled)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine asks a disabled button too";
    DialogBuilder builder({ WS_POPUP });
    builder.Button(WS_TABSTOP, 5).Button(WS_TABSTOP, IDCANCEL);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SendMessageW(m_dialog, WM_CLOSE, 0, 0);
    EXPECT_EQ(CountSeen(WM_COMMAND), 0) << "it is posted";
    PumpMessages();
    ASSERT_EQ(CountSeen(WM_COMMAND), 1);
    for (const auto& seen : g_seen)
        if (seen.message == WM_COMMAND) {
            EXPECT_EQ(seen.wParam, static_cast<WPARAM>(MAKEWPARAM(IDCANCEL, BN_CLICKED)));
            EXPECT_EQ(seen.lParam, reinterpret_cast<LPARAM>(GetDlgItem(m_dialog, IDCANCEL)));
        }
    EnableWindow(GetDlgItem(m_dialog, IDCANCEL), FALSE);
    SendMessageW(m_dialog, WM_CLOSE, 0, 0);
    PumpMessages();
    EXPECT_EQ(CountSeen(WM_COMMAND), 1);
}

TEST_F(DialogTest, CreationDataOfAnySizeIsCounted)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = RememberData;
    windowClass.lpszClassName = TEXT("RememberData");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    DialogBuilder builder({ WS_POPUP });
    builder.Control(TEXT("RememberData"), TEXT(""), 0, 0, 1, std::vector<WORD>(0xF9, 0x0707));
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    ASSERT_GE(g_creationData.size(), 2U);
    EXPECT_EQ(g_creationData[0], 0xF2);
    EXPECT_EQ(g_creationData[1], 0x01);
    DestroyWindow(m_dialog);
    UnregisterClassW(TEXT("RememberData"), nullptr);
}

TEST_F(DialogTest, AVisibleDialogBecomesActive)
{
    TestWindow before({ .style = WS_POPUP | WS_VISIBLE, .handler = JustValidate });
    g_initAnswer = FALSE;
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 5);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    EXPECT_EQ(GetActiveWindow(), m_dialog);
}

TEST_F(DialogTest, AnOwnerDrawnDefaultButtonKeepsItsType)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(BS_OWNERDRAW | WS_TABSTOP, 5).Button(WS_TABSTOP, 6).Button(BS_OWNERDRAW | WS_TABSTOP, 7);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const auto typeOf = [this](int id) { return GetWindowLongPtrW(GetDlgItem(m_dialog, id), GWL_STYLE) & 0xF; };
    const auto goTo = [this](int id) {
        SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(m_dialog, id)), TRUE);
    };
    SendMessageW(m_dialog, DM_SETDEFID, 5, 0);
    goTo(6);
    EXPECT_EQ(typeOf(6), static_cast<LONG_PTR>(BS_DEFPUSHBUTTON));
    goTo(7);
    EXPECT_EQ(typeOf(6), static_cast<LONG_PTR>(BS_PUSHBUTTON));
    EXPECT_EQ(typeOf(5), static_cast<LONG_PTR>(BS_OWNERDRAW));
    SendMessageW(m_dialog, DM_SETDEFID, 6, 0);
    EXPECT_EQ(typeOf(5), static_cast<LONG_PTR>(BS_OWNERDRAW));
}

TEST_F(DialogTest, AButtonThatLooksTheDefaultKeepsTheLookWhenTheFocusComesAgain)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5).Button(WS_TABSTOP, 6);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    const HWND second = GetDlgItem(m_dialog, 6);
    for (int i = 0; i < 2; ++i) {
        SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(second), TRUE);
        EXPECT_EQ(GetWindowLongPtrW(second, GWL_STYLE) & 0xF, static_cast<LONG_PTR>(BS_DEFPUSHBUTTON)) << i;
    }
}

TEST_F(DialogTest, TheLookOfTheDefaultIsPaintedWhenItMoves)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP | BS_DEFPUSHBUTTON, 5).Button(WS_TABSTOP, 6);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    PumpMessages();
    SendMessageW(m_dialog, DM_SETDEFID, 6, 0);
    EXPECT_TRUE(GetUpdateRect(GetDlgItem(m_dialog, 5), nullptr, FALSE));
    EXPECT_TRUE(GetUpdateRect(GetDlgItem(m_dialog, 6), nullptr, FALSE));
}

TEST_F(DialogTest, TheFocusThatAControlHadGoesToTheNextTabStopWhenTheControlIsGone)
{
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 5).Button(WS_TABSTOP, 6);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(GetDlgItem(m_dialog, 6));
    SendMessageW(m_dialog, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr);
    DestroyWindow(GetDlgItem(m_dialog, 6));
    SendMessageW(m_dialog, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 5));
}

TEST_F(DialogTest, AFocusElsewhereIsNotRemembered)
{
    TestWindow first({ .style = WS_POPUP | WS_VISIBLE, .handler = JustValidate });
    TestWindow second({ .style = WS_POPUP | WS_VISIBLE, .handler = JustValidate });
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 5);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(nullptr);
    SetActiveWindow(first);
    SendMessageW(m_dialog, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(second);
    SendMessageW(m_dialog, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(second));
}

TEST_F(DialogTest, WithoutATabStopTheFocusOfTheDialogGoesToItsFirstControl)
{
    g_initAnswer = FALSE;
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(0, 5).Button(0, 6);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(nullptr);
    SendMessageW(m_dialog, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 5));
}

TEST_F(DialogTest, FromTheDialogItselfTheControlBeforeIsTheLastTabStop)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine goes nowhere without a focus";
    DialogBuilder builder({ WS_POPUP | WS_VISIBLE });
    builder.Button(WS_TABSTOP, 5).Button(WS_TABSTOP, 6).Button(WS_TABSTOP, 7);
    m_dialog = builder.Create(nullptr, RememberingProcedure);
    SetFocus(nullptr);
    SendMessageW(m_dialog, WM_NEXTDLGCTL, 1, FALSE);
    EXPECT_EQ(GetFocus(), GetDlgItem(m_dialog, 7));
}

} // namespace
