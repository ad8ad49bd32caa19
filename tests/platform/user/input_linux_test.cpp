// Taps, keys and the display's activation, injected as the display injects them.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

using namespace cardsong;

namespace {

class InputTest : public testing::Test {
protected:
    InputTest()
    {
        user::ResetWindows();
        kernel::InstallClock(&m_clock);
    }
    ~InputTest() override
    {
        user::ResetWindows();
        kernel::InstallClock(nullptr);
    }

    static WindowOptions Shown(RECT rect = { 0, 0, 100, 100 })
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE;
        options.rect = rect;
        options.handler = JustValidate;
        return options;
    }
    static WindowOptions ShownChild(HWND parent, RECT rect)
    {
        WindowOptions options = Shown(rect);
        options.style = WS_CHILD | WS_VISIBLE;
        options.parent = parent;
        return options;
    }
    static void Tap(POINT at)
    {
        user::PointerDown(at);
        user::PointerUp(at);
        PumpMessages();
    }

    // What the last message of that kind tells of its key.
    static DWORD KeyBits(const TestWindow& window, UINT message)
    {
        const auto seen = window.Last(message);
        return seen.has_value() ? static_cast<DWORD>(seen->lParam) : 0;
    }

    kernel::VirtualClock m_clock;
};

TEST_F(InputTest, ATapReachesTheInnermostWindowInItsOwnCoordinates)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 20, 30, 40, 40 }));
    Tap({ 25, 37 });
    ASSERT_EQ(child.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(child.Last(WM_LBUTTONDOWN)->lParam, MAKELPARAM(5, 7));
    EXPECT_EQ(child.Last(WM_LBUTTONDOWN)->wParam, MK_LBUTTON);
    EXPECT_EQ(child.Last(WM_LBUTTONUP)->wParam, 0U);
    EXPECT_EQ(parent.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, ADisabledOrTransparentChildLetsTheTapThrough)
{
    TestWindow parent(Shown());
    TestWindow disabled(ShownChild(parent, { 0, 0, 20, 20 }));
    EnableWindow(disabled, FALSE);
    CreateWindowExW(0, u"static", nullptr, WS_CHILD | WS_VISIBLE | SS_SIMPLE, 20, 0, 20, 20, parent, nullptr, nullptr,
                    nullptr);
    Tap({ 5, 5 });
    Tap({ 25, 5 });
    EXPECT_EQ(disabled.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(parent.Count(WM_LBUTTONDOWN), 2);
}

TEST_F(InputTest, ADisabledTopLevelWindowSwallowsTheTap)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    EnableWindow(above, FALSE);
    Tap({ 5, 5 });
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, TheCaptureGetsTheWholeGesture)
{
    TestWindow window(Shown({ 50, 50, 20, 20 }));
    TestWindow other(Shown({ 100, 100, 20, 20 }));
    SetCapture(window);
    user::PointerMove({ 110, 110 });
    PumpMessages();
    ASSERT_EQ(window.Count(WM_MOUSEMOVE), 1);
    EXPECT_EQ(window.Last(WM_MOUSEMOVE)->lParam, MAKELPARAM(60, 60));
    EXPECT_EQ(other.Count(WM_MOUSEMOVE), 0);
    ReleaseCapture();
}

TEST_F(InputTest, ATapActivatesTheTopLevelWindowBeforeItIsDelivered)
{
    TestWindow first(Shown({ 0, 0, 50, 50 }));
    TestWindow second(Shown({ 50, 0, 50, 50 }));
    first.Forget();
    Tap({ 5, 5 });
    EXPECT_EQ(first.Order({ WM_ACTIVATE, WM_LBUTTONDOWN }), (std::vector<UINT>{ WM_ACTIVATE, WM_LBUTTONDOWN }));
    EXPECT_EQ(LOWORD(first.Last(WM_ACTIVATE)->wParam), WA_CLICKACTIVE);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(first));
    EXPECT_EQ(LOWORD(second.Last(WM_ACTIVATE)->wParam), WA_INACTIVE);
}

TEST_F(InputTest, AWindowThatDeclinesActivationStaysInTheBackground)
{
    TestWindow first(Shown({ 0, 0, 50, 50 }));
    auto options = Shown({ 50, 0, 50, 50 });
    options.style = WS_POPUP;
    options.exStyle = WS_EX_NOACTIVATE;
    TestWindow second(options);
    ShowWindow(second, SW_SHOWNA);
    Tap({ 60, 5 });
    EXPECT_EQ(second.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(first));
}

TEST_F(InputTest, TwoQuickTapsAreADoubleClickOnlyForClassesThatAskAndInOneWindow)
{
    auto options = Shown({ 0, 0, 50, 50 });
    options.classStyle = CS_DBLCLKS;
    TestWindow asking(options);
    options.rect = { 52, 0, 50, 50 };
    TestWindow neighbour(options);
    TestWindow plain(Shown({ 110, 0, 50, 50 }));
    Tap({ 5, 5 });
    Tap({ 5, 5 });
    EXPECT_EQ(asking.Count(WM_LBUTTONDBLCLK), 1);
    Tap({ 5, 5 });
    EXPECT_EQ(asking.Count(WM_LBUTTONDBLCLK), 1);
    EXPECT_EQ(asking.Count(WM_LBUTTONDOWN), 2);
    m_clock.Advance(1000);
    Tap({ 49, 5 });
    Tap({ 52, 5 });
    EXPECT_EQ(neighbour.Count(WM_LBUTTONDBLCLK), 0);
    Tap({ 115, 5 });
    Tap({ 115, 5 });
    EXPECT_EQ(plain.Count(WM_LBUTTONDBLCLK), 0);
    EXPECT_EQ(plain.Count(WM_LBUTTONDOWN), 2);
}

TEST_F(InputTest, TapsMoreThanHalfASecondApartAreNoDoubleClick)
{
    auto options = Shown();
    options.classStyle = CS_DBLCLKS;
    TestWindow window(options);
    Tap({ 5, 5 });
    m_clock.Advance(501);
    Tap({ 5, 5 });
    EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 0);
}

TEST_F(InputTest, KeysGoToTheFocusWindow)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 0, 0, 10, 10 }));
    SetFocus(child);
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    user::KeyUp(static_cast<UINT>(VK_LEFT));
    PumpMessages();
    ASSERT_EQ(child.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(child.Last(WM_KEYDOWN)->wParam, VK_LEFT);
    EXPECT_EQ(child.Count(WM_KEYUP), 1);
    EXPECT_EQ(parent.Count(WM_KEYDOWN), 0);
}

TEST_F(InputTest, AKeyTellsARepeatCountOfOneWhetherItWasDownBeforeAndWhetherItGoesUp)
{
    TestWindow window(Shown());
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x00000001U);
    user::KeyDown(static_cast<UINT>(VK_RETURN)); // repeated
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x40000001U);
    user::KeyDown(static_cast<UINT>(VK_LEFT)); // another key was not down
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x00000001U);
    user::KeyUp(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYUP), 0xC0000001U);
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x00000001U);
    EXPECT_EQ(window.Count(WM_KEYDOWN), 4);
}

TEST_F(InputTest, AKeyIsRepeatedFromItsSecondStrokeOnHoweverLateTheWindowLooks)
{
    TestWindow window(Shown());
    PumpMessages();
    for (int i = 0; i < 3; ++i)
        user::KeyDown(static_cast<UINT>(VK_RETURN));
    user::KeyUp(static_cast<UINT>(VK_RETURN));
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    std::vector<DWORD> bits;
    for (const auto& seen : window.Seen())
        if (seen.message == WM_KEYDOWN || seen.message == WM_KEYUP)
            bits.push_back(static_cast<DWORD>(seen.lParam));
    EXPECT_EQ(bits, (std::vector<DWORD>{ 1, 0x40000001, 0x40000001, 0xC0000001, 1 }));
}

TEST_F(InputTest, AKeyLetGoAtAnotherThreadsWindowIsNotRepeatedWhenItIsStruckAgain)
{
    TestWindow mine(Shown());
    PumpMessages();
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    std::thread thread([] {
        TestWindow other(Shown()); // takes the foreground
        user::KeyUp(static_cast<UINT>(VK_RETURN));
        PumpMessages();
        EXPECT_EQ(KeyBits(other, WM_KEYUP), 0xC0000001U);
    });
    thread.join();
    PumpMessages();
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    EXPECT_EQ(KeyBits(mine, WM_KEYDOWN), 0x00000001U);
}

TEST_F(InputTest, AKeyLetGoWhileTheDisplayIsInactiveIsNotRepeatedWhenItIsStruckAgain)
{
    TestWindow window(Shown());
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    user::SetDisplayActive(false);
    user::SetDisplayActive(true);
    PumpMessages();
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x00000001U);
}

TEST_F(InputTest, KeysStruckBeforeTheFirstWindowWaitForIt)
{
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    user::KeyUp(static_cast<UINT>(VK_RETURN));
    TestWindow window(Shown());
    SetForegroundWindow(window);
    PumpMessages();
    ASSERT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, VK_RETURN);
    EXPECT_EQ(window.Count(WM_KEYUP), 1);
}

TEST_F(InputTest, KeysStruckBeforeTheFirstWindowReachNoSecondOne)
{
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    TestWindow first(Shown());
    SetForegroundWindow(first);
    PumpMessages();
    TestWindow second(Shown());
    SetForegroundWindow(second);
    PumpMessages();
    EXPECT_EQ(first.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(second.Count(WM_KEYDOWN), 0);
}

TEST_F(InputTest, AKeyWithoutAFocusWindowReachesTheActiveOneAsASystemKey)
{
    TestWindow window(Shown());
    SetFocus(nullptr);
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 0);
    EXPECT_EQ(window.Count(WM_SYSKEYDOWN), 1);
}

TEST_F(InputTest, KeyStatesFollowTheMessagesRetrieved)
{
    TestWindow window(Shown());
    user::KeyDown(static_cast<UINT>(VK_SHIFT));
    EXPECT_GE(GetKeyState(static_cast<int>(VK_SHIFT)), 0);
    PumpMessages();
    EXPECT_LT(GetKeyState(static_cast<int>(VK_SHIFT)), 0);
    user::KeyUp(static_cast<UINT>(VK_SHIFT));
    PumpMessages();
    EXPECT_GE(GetKeyState(static_cast<int>(VK_SHIFT)), 0);
}

TEST_F(InputTest, TheDisplayLosingAndRegainingTheForegroundIsTold)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    user::SetDisplayActive(false);
    PumpMessages();
    ASSERT_EQ(window.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(LOWORD(window.Last(WM_ACTIVATE)->wParam), WA_INACTIVE);
    EXPECT_EQ(GetForegroundWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    user::SetDisplayActive(false);
    user::SetDisplayActive(true);
    PumpMessages();
    ASSERT_EQ(window.Count(WM_ACTIVATE), 2);
    EXPECT_EQ(LOWORD(window.Last(WM_ACTIVATE)->wParam), WA_ACTIVE);
    EXPECT_EQ(GetFocus(), static_cast<HWND>(window));
}

TEST_F(InputTest, TheForegroundCanBeSetWithTheLowestBitOfTheHandleSet)
{
    TestWindow first(Shown());
    TestWindow second(Shown());
    const auto marked = reinterpret_cast<ULONG_PTR>(static_cast<HWND>(first)) | 1;
    EXPECT_TRUE(SetForegroundWindow(reinterpret_cast<HWND>(marked)));
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(first));
    EXPECT_FALSE(SetForegroundWindow(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(1))));
}

TEST_F(InputTest, AnotherThreadsWindowTakesTheForegroundWhileThisThreadOnlyWaits)
{
    TestWindow mine(Shown());
    PumpMessages();
    mine.Forget();
    std::promise<HWND> shown;
    std::promise<void> close;
    auto closing = close.get_future();
    std::thread thread([&] {
        TestWindow other(Shown());
        shown.set_value(other);
        closing.wait();
    });
    const HWND other = shown.get_future().get(); // this thread looks for no message meanwhile
    EXPECT_EQ(GetForegroundWindow(), other);
    EXPECT_EQ(mine.Count(WM_ACTIVATE), 0);
    PumpMessages();
    ASSERT_EQ(mine.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(LOWORD(mine.Last(WM_ACTIVATE)->wParam), WA_INACTIVE);
    close.set_value();
    thread.join();
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_ACTIVATE), 2);
    EXPECT_EQ(LOWORD(mine.Last(WM_ACTIVATE)->wParam), WA_ACTIVE);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(mine));
}

TEST_F(InputTest, AGestureStaysWithTheThreadThatGotThePress)
{
    TestWindow mine(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    user::PointerDown({ 5, 5 });
    user::PointerUp({ 300, 200 }); // over no window
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(mine.Count(WM_LBUTTONUP), 0);
}

TEST_F(InputTest, AButtonIsClickedByATap)
{
    TestWindow parent(Shown());
    const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(262));
    CreateWindowExW(0, u"button", nullptr, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 10, 10, 20, 20, parent, id, nullptr,
                    nullptr);
    Tap({ 15, 15 });
    EXPECT_EQ(parent.Count(WM_COMMAND), 1);
    EXPECT_EQ(parent.Last(WM_COMMAND)->wParam, 262U);
    user::PointerDown({ 15, 15 });
    user::PointerMove({ 60, 60 });
    user::PointerUp({ 60, 60 });
    PumpMessages();
    EXPECT_EQ(parent.Count(WM_COMMAND), 2) << "the second tap came quickly, so it is told as a double click at once";
}

TEST_F(InputTest, ThePresenterIsCalledWhenNothingWaits)
{
    int calls = 0;
    user::InstallPresenter([&calls] { ++calls; });
    TestWindow window(Shown());
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        EXPECT_EQ(calls, 0);
        DispatchMessageW(&message);
    }
    EXPECT_EQ(calls, 1);
    user::InstallPresenter({});
    PumpMessages();
    EXPECT_EQ(calls, 1);
}

} // namespace
