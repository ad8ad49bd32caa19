#include "app/start_up.h"

#include "app/foreground.h"
#include "app/main_window.h"
#include "app/storage_card.h"
#include "common/trace_log.h"
#include "gui/alert_message_window.h"
#include "tests/app/alerts_user.h"
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

TEST_F(StartUp, TheProgramBringsTheIconOfItsWindow)
{
    EXPECT_NE(LoadIconW(cardsong::kernel::ProgramInstance(), kMainWindowClass), nullptr);
    EXPECT_EQ(LoadIconW(cardsong::kernel::ProgramInstance(), TEXT("NO_SUCH_ICON")), nullptr);
}

TEST_F(StartUp, WithoutACardTheUserIsToldAndNoWindowComes)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    Start();
    const std::string told = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_window, nullptr);
    EXPECT_EQ(told, "Storage card: No storage card was found.\nPlease insert the card and start again.\n");
    EXPECT_EQ(FindWindowW(kMainWindowClass, nullptr), nullptr);
}

TEST_F(StartUp, WithoutACardAnAlertIsShownUntilItIsAnswered)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    HWND alert = nullptr;
    Frame shown;
    const AlertsUser user(m_clock, [&] {
        alert = FindWindowW(kAlertClass, nullptr);
        shown = Screen();
        m_clock.Advance(4900); // 100 short of its end
        SendMessageW(alert, WM_NULL, 0, 0);
        EXPECT_TRUE(IsWindow(alert));
        AlertsUser::TapOk();
    });
    Start();
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_window, nullptr);
    EXPECT_FALSE(IsWindow(alert));
    EXPECT_NE(std::count(shown.begin(), shown.end(), 0xFFFF), 0); // the title
}

TEST_F(StartUp, TheAlertOfAMissingCardHasItsTitleAboveItsMessage)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    Frame shown;
    {
        const AlertsUser user(m_clock, [&shown] {
            shown = Screen();
            AlertsUser::TapOk();
        });
        Start();
    }
    ::testing::internal::GetCapturedStderr();
    const int threads = WindowThreads();
    CAlertMessageWin alert;
    alert.Prepare(nullptr, TEXT("Storage card"),
                  TEXT("No storage card was found.\nPlease insert the card and start again."), kAlertError,
                  kAlertInfoSound, 0, 0);
    SendMessageW(alert.Show(), WM_NULL, 0, 0);
    EXPECT_EQ(Differences(shown, Screen(), { 0, 0, kScreenWidthPx, kScreenHeightPx }), 0);
    alert.Close();
    while (WindowThreads() > threads)
        std::this_thread::yield(); // the alert's thread uses the clock
}

TEST_F(StartUp, TheAlertOfAMissingCardThatNobodyAnswersCloses)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, [] {});
    Start();
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_window, nullptr);
    EXPECT_GE(user.WaitedMs(), 5000 - 100); // this count is behind the clock
}

TEST_F(StartUp, TheAlertOfAMissingCardGoesWhenThePlayerIsToEnd)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    bool isGone = false;
    {
        const AlertsUser user(m_clock, [&isGone] {
            cardsong::user::PressExitKey();
            isGone = AlertsUser::IsAlertGoneWhileTimeStands();
        });
        Start();
    }
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(m_window, nullptr);
    EXPECT_TRUE(isGone);
}

TEST_F(StartUp, TheNoticeOfAMissingCardIsInTheUsersLanguage)
{
    UseLanguage(0x0804);
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    Start();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "存储卡: 没有找到存储卡。\n请插入存储卡后重新启动。\n");
}

TEST_F(StartUp, WithoutACardTheProgramEndsWithZero)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    EXPECT_FALSE(::testing::internal::GetCapturedStderr().empty());
}

TEST_F(StartUp, TheWindowIsPaintedBeforeTheFirstMessageIsTaken)
{
    g_hInstance = cardsong::kernel::ProgramInstance();
    RegisterStartMessages();
    g_hStringModule = LoadStringModule();
    m_window = InitInstance(g_hInstance, SW_SHOW);
    const Frame first = Screen();
    EXPECT_FALSE(GetUpdateRect(m_window, nullptr, FALSE));
    Pump();
    EXPECT_EQ(Differences(first, Screen(), { 0, 0, 320, 138 }), 0);
}

TEST_F(StartUp, AMessageThatIsNotRegisteredMeansNothing)
{
    Start();
    const UINT registered = g_msgMassStorage;
    g_msgMassStorage = 0;
    SendMessageW(m_window, WM_NULL, 0, 0);
    Pump();
    EXPECT_FALSE(m_hasQuit);
    g_msgMassStorage = registered;
}

TEST_F(StartUp, ARunIsTheFirstLineOfTheDebugLog)
{
    auto tree = cardsong::kernel::CurrentDeviceTree();
    tree.debugOutput = true;
    cardsong::kernel::InstallDeviceTree(tree);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEXT("\\TAVO\\TAVO_BACKDOOR"), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                    nullptr);
    const DWORD on = 1;
    RegSetValueExW(key, TEXT("Activate"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&on), 4);
    RegCloseKey(key);
    g_logChecked = 0;
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr().rfind("[AP][Music][FunName]Run!\r\n", 0), 0U);
    g_logChecked = 0;
    g_logEnabled = 0;
}

TEST_F(StartUp, TheProgramRunsUntilItsWindowIsClosed)
{
    cardsong::user::PressExitKey(); // waits for the first window
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    g_hStringModule = nullptr; // freed by the program's end
    EXPECT_EQ(FindWindowW(kMainWindowClass, nullptr), nullptr);
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)); // the loop took everything, the last word too
}

TEST_F(StartUp, TheProgramKnowsItsOwnModule)
{
    g_hInstance = nullptr;
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    WCHAR none[] = TEXT("");
    EXPECT_EQ(WinMain(cardsong::kernel::ProgramInstance(), nullptr, none, SW_SHOW), 0);
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(g_hInstance, cardsong::kernel::ProgramInstance());
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

TEST_F(StartUp, AKeyForAnotherWindowOfThePlayerIsTranslated)
{
    Start();
    const HWND popUp = MakeWindow(m_window, WS_POPUP | WS_VISIBLE);
    SetFocus(popUp);
    cardsong::user::KeyDown('A');
    MSG message;
    std::vector<WPARAM> characters;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_CHAR && message.hwnd == popUp)
            characters.push_back(message.wParam);
        RunMessage(m_window, message);
    }
    EXPECT_EQ(characters, std::vector<WPARAM>{ 'a' });
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
