#include "tests/platform/user/dialog_builder.h"
#include "tests/platform/user/pump.h"

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

} // namespace
