#include "app/start_up.h"

#include "app/foreground.h"
#include "app/main_window.h"
#include "app/storage_card.h"
#include "tests/app/player_fixture.h"

#include <filesystem>

using namespace cardsong::test;

namespace {

class StartUp : public PlayerTest {
protected:
    // A plain window of the test's own, `owner` above it.
    static HWND MakeWindow(HWND owner, DWORD style, DWORD exStyle = 0)
    {
        return CreateWindowExW(exStyle, TEXT("static"), TEXT(""), style, 0, 0, 50, 50, owner, nullptr, nullptr,
                               nullptr);
    }
};

int g_seenAreYouMe;

} // namespace

TEST_F(StartUp, AnEmptyCardIsACard)
{
    EXPECT_EQ(IsStorageCardPresent(), 1);
}

TEST_F(StartUp, WithoutACardFolderThereIsNoCard)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    EXPECT_EQ(IsStorageCardPresent(), 0);
}

TEST_F(StartUp, WithoutACardTheUserIsToldAndNoWindowComes)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    Start();
    const std::string told = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_window, nullptr);
    EXPECT_NE(told.find("card"), std::string::npos) << told;
    EXPECT_EQ(FindWindowW(kMainWindowClass, nullptr), nullptr);
}

TEST_F(StartUp, WithoutACardTheProgramEndsWithZero)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    EXPECT_FALSE(::testing::internal::GetCapturedStderr().empty());
}

TEST_F(StartUp, ASecondStartAsksTheFirstToComeForwardAndEnds)
{
    Start();
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(g_hInstance, nullptr, none, SW_SHOW), 0);
    MSG message;
    g_seenAreYouMe = 0;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == g_msgAreYouMe && message.hwnd == m_window)
            ++g_seenAreYouMe;
        RunMessage(m_window, message);
    }
    EXPECT_EQ(g_seenAreYouMe, 1);
    EXPECT_EQ(GetForegroundWindow(), m_window);
}

TEST_F(StartUp, TheActivePopUpOfTheMainWindowIsTheTopmostOwnedVisibleOne)
{
    Start();
    EXPECT_EQ(FindOwnedActiveWindow(m_window), m_window);
    const HWND popUp = MakeWindow(m_window, WS_POPUP | WS_VISIBLE);
    EXPECT_EQ(FindOwnedActiveWindow(m_window), popUp);
    const HWND second = MakeWindow(popUp, WS_POPUP | WS_VISIBLE);
    EXPECT_EQ(FindOwnedActiveWindow(m_window), second);
    EnableWindow(second, FALSE);
    EXPECT_EQ(FindOwnedActiveWindow(m_window), popUp);
    ShowWindow(popUp, SW_HIDE);
    EXPECT_EQ(FindOwnedActiveWindow(m_window), m_window);
    DestroyWindow(popUp);
}

TEST_F(StartUp, PopUpsThatMayNotBeActivatedAreNotTheActiveOne)
{
    Start();
    const HWND popUp = MakeWindow(m_window, WS_POPUP | WS_VISIBLE, WS_EX_NOACTIVATE);
    const HWND stranger = MakeWindow(nullptr, WS_POPUP | WS_VISIBLE);
    EXPECT_EQ(FindOwnedActiveWindow(m_window), m_window);
    DestroyWindow(popUp);
    DestroyWindow(stranger);
}

TEST_F(StartUp, AreYouMeBringsTheOwnedPopUpForward)
{
    Start();
    const HWND popUp = MakeWindow(m_window, WS_POPUP | WS_VISIBLE);
    SetForegroundWindow(m_window);
    SendMessageW(m_window, g_msgAreYouMe, 0, 0);
    EXPECT_EQ(GetForegroundWindow(), popUp);
    DestroyWindow(popUp);
}

TEST_F(StartUp, AKeyThatTheDialogManagerTakesIsNeverTranslated)
{
    Start();
    cardsong::user::KeyDown(VK_RETURN);
    MSG message;
    bool sawCharacter = false;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        sawCharacter |= message.message == WM_CHAR;
        RunMessage(m_window, message);
    }
    EXPECT_FALSE(sawCharacter);
}
