// Commands and taps that keys of the machine's keyboard give to the window a user works with.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

using namespace cardsong;

namespace {

constexpr WORD kCommand = 260;

class ActiveWindow : public testing::Test {
protected:
    ActiveWindow()
    {
        user::ResetWindows();
        kernel::InstallClock(&m_clock);
    }
    ~ActiveWindow() override
    {
        user::ResetWindows();
        kernel::InstallClock(nullptr);
    }

    static WindowOptions WholeScreen()
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE;
        options.rect = { 0, 0, 320, 240 };
        options.handler = JustValidate;
        return options;
    }
    static HWND AddButton(HWND parent, int id, POINT corner, DWORD style = WS_VISIBLE)
    {
        return CreateWindowExW(0, TEXT("button"), TEXT(""), WS_CHILD | style, corner.x, corner.y, 50, 32, parent,
                               reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
    }
    static void Activate(HWND window)
    {
        SetForegroundWindow(window);
        PumpMessages();
    }
    // The ids of the buttons that were clicked.
    static std::vector<WPARAM> Clicked(const TestWindow& window)
    {
        std::vector<WPARAM> ids;
        for (const auto& seen : window.Seen())
            if (seen.message == WM_COMMAND && seen.lParam != 0)
                ids.push_back(seen.wParam);
        return ids;
    }

    kernel::VirtualClock m_clock;
};

TEST_F(ActiveWindow, OfTheNamedClassTakesACommand)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    ASSERT_EQ(window.Count(WM_COMMAND), 1);
    EXPECT_EQ(window.Last(WM_COMMAND)->wParam, kCommand);
    EXPECT_EQ(window.Last(WM_COMMAND)->lParam, 0);
}

TEST_F(ActiveWindow, OfAnotherClassKeepsACommandFromTheOneBehind)
{
    const TestWindow window(WholeScreen());
    const TestWindow inFront(WholeScreen());
    Activate(inFront);
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    Activate(window);
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
    EXPECT_EQ(inFront.Count(WM_COMMAND), 0);
}

TEST_F(ActiveWindow, OfAnotherThreadKeepsACommandFromTheProgram)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    std::promise<void> isUp;
    std::promise<void> mayGo;
    std::thread other([&] {
        const TestWindow alert(WholeScreen());
        Activate(alert);
        isUp.set_value();
        mayGo.get_future().wait();
    });
    isUp.get_future().wait();
    PumpMessages();
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    mayGo.set_value();
    other.join();
    PumpMessages();
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
}

TEST_F(ActiveWindow, TakesNoCommandWhileItIsDisabled)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    EnableWindow(window, FALSE);
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    EnableWindow(window, TRUE);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
}

TEST_F(ActiveWindow, TakesTheCommandOfAButtonUnlessTheButtonIsDisabled)
{
    const TestWindow window(WholeScreen());
    const HWND button = AddButton(window, kCommand, { 0, 0 });
    Activate(window);
    EnableWindow(button, FALSE);
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
    EnableWindow(button, TRUE);
    user::GiveCommand(window.ClassName(), kCommand);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_COMMAND), 1);
}

TEST_F(ActiveWindow, TakesCommandsInTheirTurnAmongKeys)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    SetFocus(window);
    user::KeyDown(VK_LEFT);
    user::GiveCommand(window.ClassName(), kCommand);
    user::KeyDown(VK_RIGHT);
    PumpMessages();
    EXPECT_EQ(window.Order({ WM_KEYDOWN, WM_COMMAND }), (std::vector<UINT>{ WM_KEYDOWN, WM_COMMAND, WM_KEYDOWN }));
}

TEST_F(ActiveWindow, TakesACommandThatWasGivenBeforeItWasThere)
{
    user::GiveCommand(TEXT("CardsongEarly"), kCommand);
    WNDCLASSW description{};
    static int s_count = 0;
    description.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        s_count += message == WM_COMMAND && wParam == kCommand ? 1 : 0;
        return DefWindowProcW(window, message, wParam, lParam);
    };
    description.lpszClassName = TEXT("CardsongEarly");
    RegisterClassW(&description);
    const HWND window = CreateWindowExW(0, TEXT("CardsongEarly"), nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 320, 240,
                                        nullptr, nullptr, nullptr, nullptr);
    Activate(window);
    EXPECT_EQ(s_count, 1);
    DestroyWindow(window);
    UnregisterClassW(TEXT("CardsongEarly"), nullptr);
}

TEST_F(ActiveWindow, HearsNoCommandWhileTheDisplayIsInactive)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    user::SetDisplayActive(false);
    user::GiveCommand(window.ClassName(), kCommand);
    user::SetDisplayActive(true);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_COMMAND), 0);
}

TEST_F(ActiveWindow, IsTappedWhereAListLiesUnlessItIsTheMainOne)
{
    const TestWindow window(WholeScreen());
    Activate(window);
    user::TapInFrontOf(window.ClassName(), { 129, 49 });
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
    const TestWindow list(WholeScreen());
    Activate(list);
    user::TapInFrontOf(window.ClassName(), { 129, 49 });
    PumpMessages();
    ASSERT_EQ(list.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(list.Last(WM_LBUTTONDOWN)->lParam, MAKELPARAM(129, 49));
    EXPECT_EQ(list.Count(WM_LBUTTONUP), 1);
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(ActiveWindow, CountsItsBottomButtonsFromLeftToRight)
{
    const TestWindow window(WholeScreen());
    AddButton(window, 3, { 200, 201 }); // as high as those of an alert
    AddButton(window, 1, { 0, 208 });
    AddButton(window, 2, { 100, 208 }, WS_VISIBLE | WS_DISABLED);
    AddButton(window, 4, { 150, 208 }, 0);
    AddButton(window, 5, { 50, 160 });
    Activate(window);
    for (int number = 0; number <= 5; ++number)
        user::TapBottomButton(number);
    PumpMessages();
    EXPECT_EQ(Clicked(window), (std::vector<WPARAM>{ 1, 3 }));
}

TEST_F(ActiveWindow, WithoutOneNothingIsTapped)
{
    user::TapBottomButton(1);
    user::TapInFrontOf(TEXT("Main"), { 1, 1 });
    const TestWindow window(WholeScreen());
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
}

} // namespace
