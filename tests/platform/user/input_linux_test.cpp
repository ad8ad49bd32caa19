// Taps, keys and the display's activation, injected as the display injects them.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <atomic>
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

TEST_F(InputTest, TheDisplayRisesWhenTheProgramAsksForTheForegroundAndAtNoOtherTime)
{
    int risen = 0;
    user::InstallRaiser([&risen] { ++risen; });
    TestWindow first(Shown());
    TestWindow second(Shown());
    user::PointerDown({ 5, 5 });
    PumpMessages();
    EXPECT_EQ(risen, 0);
    user::SetDisplayActive(false);
    EXPECT_TRUE(SetForegroundWindow(first));
    EXPECT_EQ(risen, 1);
    EXPECT_FALSE(SetForegroundWindow(nullptr));
    EXPECT_EQ(risen, 1);
    user::InstallRaiser({});
    EXPECT_TRUE(SetForegroundWindow(second));
    EXPECT_EQ(risen, 1);
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

TEST_F(InputTest, APressThatIsTakenBackClicksNoButton)
{
    TestWindow parent(Shown());
    const HWND button = CreateWindowExW(0, u"button", nullptr, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 10, 10, 20, 20,
                                        parent, nullptr, nullptr, nullptr);
    user::PointerDown({ 15, 15 });
    PumpMessages();
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    user::CancelPointer();
    PumpMessages();
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(parent.Count(WM_COMMAND), 0);
    m_clock.Advance(1000);
    Tap({ 15, 15 });
    EXPECT_EQ(parent.Count(WM_COMMAND), 1);
}

TEST_F(InputTest, APressThatIsTakenBackBeforeItIsHeardClicksNoButton)
{
    TestWindow parent(Shown());
    CreateWindowExW(0, u"button", nullptr, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 10, 10, 20, 20, parent, nullptr,
                    nullptr, nullptr);
    user::PointerDown({ 15, 15 });
    user::CancelPointer();
    PumpMessages();
    EXPECT_EQ(parent.Count(WM_COMMAND), 0);
}

TEST_F(InputTest, APressThatIsTakenBackEndsOutsideEveryWindow)
{
    TestWindow window(Shown({ -500, -500, 1000, 1000 }));
    TestWindow corner(Shown({ 300, 200, 20, 40 }));
    PumpMessages();
    user::PointerDown({ 5, 5 });
    user::CancelPointer();
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(window.Count(WM_LBUTTONUP), 0) << "nobody has captured the pointer";
    SetCapture(corner);
    user::PointerDown({ 310, 210 });
    user::CancelPointer();
    PumpMessages();
    EXPECT_EQ(corner.Last(WM_LBUTTONUP)->lParam, MAKELPARAM(-10300, -10200));
    ReleaseCapture();
    Tap({ 6, 6 });
    EXPECT_EQ(window.Last(WM_LBUTTONUP)->lParam, MAKELPARAM(506, 506));
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

TEST_F(InputTest, ATapOnTheLastPixelOfAWindowIsInsideAndOneBeyondIsNot)
{
    TestWindow window(Shown({ 10, 20, 30, 40 }));
    Tap({ 10, 20 });
    Tap({ 39, 59 });
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 2);
    Tap({ 9, 20 });
    Tap({ 10, 19 });
    Tap({ 40, 59 });
    Tap({ 39, 60 });
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 2);
}

TEST_F(InputTest, ATapOnTheEdgeOfAChildIsTheChilds)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 20, 30, 40, 50 }));
    for (const POINT at : { POINT{ 20, 30 }, POINT{ 59, 79 } })
        Tap(at);
    EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 2);
    for (const POINT at : { POINT{ 19, 30 }, POINT{ 20, 29 }, POINT{ 60, 79 }, POINT{ 59, 80 } })
        Tap(at);
    EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 2);
    EXPECT_EQ(parent.Count(WM_LBUTTONDOWN), 4);
}

TEST_F(InputTest, AHiddenWindowIsNotHit)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    TestWindow child(ShownChild(below, { 0, 0, 50, 50 }));
    ShowWindow(above, SW_HIDE);
    ShowWindow(child, SW_HIDE);
    Tap({ 5, 5 });
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, TheTopmostOfTwoChildrenIsHit)
{
    TestWindow parent(Shown());
    TestWindow above(ShownChild(parent, { 0, 0, 50, 50 }));
    TestWindow below(ShownChild(parent, { 0, 0, 50, 50 }));
    Tap({ 5, 5 });
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, TheHitTestNamesThePointOnTheScreen)
{
    TestWindow window(Shown({ 10, 20, 30, 40 }));
    Tap({ 15, 27 });
    ASSERT_GE(window.Count(WM_NCHITTEST), 1);
    EXPECT_EQ(window.Last(WM_NCHITTEST)->lParam, MAKELPARAM(15, 27));
}

TEST_F(InputTest, AWindowThatIsTransparentHereLetsTheTapThroughToTheOneBelow)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTTRANSPARENT;
        return JustValidate(window, message, wParam, lParam);
    });
    Tap({ 5, 5 });
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, AWindowThatSaysTheTapIsNowhereSwallowsIt)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTNOWHERE;
        return JustValidate(window, message, wParam, lParam);
    });
    Tap({ 5, 5 });
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, AWindowThatGoesWhileItIsAskedIsPassedOver)
{
    TestWindow below(Shown());
    TestWindow middle(Shown());
    TestWindow above(Shown());
    const HWND doomed = middle;
    above.Handle([doomed](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NCHITTEST)
            return JustValidate(window, message, wParam, lParam);
        if (IsWindow(doomed))
            DestroyWindow(doomed);
        return HTTRANSPARENT;
    });
    Tap({ 5, 5 });
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(InputTest, ADisabledTopLevelWindowSwallowsTheTapOnItsChildToo)
{
    TestWindow below(Shown());
    TestWindow above(Shown());
    TestWindow child(ShownChild(above, { 0, 0, 50, 50 }));
    EnableWindow(above, FALSE);
    Tap({ 5, 5 });
    EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(below.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, ATapOnADisabledWindowsChildActivatesNothing)
{
    TestWindow other(Shown({ 100, 0, 50, 50 }));
    TestWindow window(Shown());
    SetForegroundWindow(other);
    EnableWindow(window, FALSE);
    Tap({ 5, 5 });
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(other));
}

TEST_F(InputTest, InputComesInTheOrderInWhichItHappened)
{
    TestWindow window(Shown());
    PumpMessages();
    user::PointerDown({ 5, 5 });
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    user::PointerMove({ 6, 6 });
    user::KeyUp(static_cast<UINT>(VK_LEFT));
    user::PointerUp({ 6, 6 });
    PumpMessages();
    EXPECT_EQ(window.Order({ WM_LBUTTONDOWN, WM_KEYDOWN, WM_MOUSEMOVE, WM_KEYUP, WM_LBUTTONUP }),
              (std::vector<UINT>{ WM_LBUTTONDOWN, WM_KEYDOWN, WM_MOUSEMOVE, WM_KEYUP, WM_LBUTTONUP }));
}

TEST_F(InputTest, MovesThatFollowOneAnotherAreOneMoveToTheLastPlace)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    user::PointerMove({ 5, 5 });
    user::PointerMove({ 6, 7 });
    user::PointerMove({ 8, 9 });
    PumpMessages();
    ASSERT_EQ(window.Count(WM_MOUSEMOVE), 1);
    EXPECT_EQ(window.Last(WM_MOUSEMOVE)->lParam, MAKELPARAM(8, 9));
    EXPECT_EQ(window.Last(WM_MOUSEMOVE)->wParam, 0U);
    user::PointerMove({ 5, 5 });
    user::PointerDown({ 5, 5 });
    user::PointerMove({ 6, 6 });
    PumpMessages();
    EXPECT_EQ(window.Count(WM_MOUSEMOVE), 3) << "a press stands between the two";
    EXPECT_EQ(window.Last(WM_MOUSEMOVE)->wParam, MK_LBUTTON);
}

TEST_F(InputTest, AMessageOfInputTellsWhenAndWhereItHappened)
{
    TestWindow window(Shown({ 10, 20, 100, 100 }));
    PumpMessages();
    const auto thenMs = static_cast<DWORD>(m_clock.NowMs());
    user::PointerDown({ 15, 27 });
    m_clock.Advance(40);
    user::PointerUp({ 16, 28 });
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    m_clock.Advance(7);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    EXPECT_EQ(message.time, thenMs);
    EXPECT_EQ(message.pt.x, 15);
    EXPECT_EQ(message.pt.y, 27);
    ASSERT_TRUE(PeekMessageW(&message, window, WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE));
    EXPECT_EQ(message.time, thenMs + 40);
    ASSERT_TRUE(PeekMessageW(&message, window, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
    EXPECT_EQ(message.time, thenMs + 40);
    EXPECT_EQ(message.pt.x, 16);
    PostMessageW(window, WM_USER, 0, 0);
    ASSERT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_EQ(message.time, thenMs + 47);
    EXPECT_EQ(message.pt.x, 16);
    EXPECT_EQ(message.pt.y, 28);
}

TEST_F(InputTest, AThreadThatNeverLooksKeepsTwoHundredAndFiftySixStrokes)
{
    TestWindow window(Shown());
    PumpMessages();
    for (int i = 0; i < 300; ++i)
        user::KeyDown(static_cast<UINT>(VK_LEFT));
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 256);
}

TEST_F(InputTest, BeforeTheFirstWindowTwoHundredAndFiftySixStrokesAreKept)
{
    for (int i = 0; i < 300; ++i)
        user::KeyDown(static_cast<UINT>(VK_LEFT));
    TestWindow window(Shown());
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 256);
}

TEST_F(InputTest, OnlyKeysWithACodeOfOneToTwoHundredAndFiftyFiveAreHeard)
{
    TestWindow window(Shown());
    PumpMessages();
    for (const UINT key : { 0U, 256U, 1000U, 1U, 255U })
        user::KeyDown(key);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 2);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, 255U);
    EXPECT_LT(GetKeyState(255), 0);
    EXPECT_LT(GetKeyState(1), 0);
    EXPECT_EQ(GetKeyState(0), 0);
    EXPECT_EQ(GetKeyState(-1), 0);
    EXPECT_EQ(GetKeyState(256), 0);
}

TEST_F(InputTest, AKeyIsToggledByEverySecondStroke)
{
    TestWindow window(Shown());
    const auto strike = [](bool down) {
        (down ? user::KeyDown : user::KeyUp)(static_cast<UINT>(VK_LEFT));
        PumpMessages();
        return static_cast<USHORT>(GetKeyState(static_cast<int>(VK_LEFT)));
    };
    EXPECT_EQ(strike(true), 0xFF81);
    EXPECT_EQ(strike(true), 0xFF81) << "repeated";
    EXPECT_EQ(strike(false), 0x0001);
    EXPECT_EQ(strike(true), 0xFF80);
    EXPECT_EQ(strike(false), 0x0000);
}

TEST_F(InputTest, KeysAreNotHeardWhileTheDisplayIsInactive)
{
    TestWindow window(Shown());
    PumpMessages();
    user::SetDisplayActive(false);
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    user::SetDisplayActive(true);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN) + window.Count(WM_SYSKEYDOWN), 0);
}

TEST_F(InputTest, TheExitKeyIsHeardWhileTheDisplayIsInactive)
{
    TestWindow window(Shown());
    PumpMessages();
    user::SetDisplayActive(false);
    PumpMessages();
    user::PressExitKey();
    PumpMessages();
    ASSERT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, VK_F24);
    EXPECT_EQ(window.Count(WM_KEYUP), 1);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(window));
}

TEST_F(InputTest, TheExitKeyCountsNoStrokeUnlessAHandStrikesIt)
{
    TestWindow window(Shown());
    PumpMessages();
    user::PressExitKey();
    PumpMessages();
    EXPECT_EQ(static_cast<DWORD>(window.Last(WM_KEYDOWN)->lParam), 0x00000000U);
    user::KeyDown(VK_F24);
    PumpMessages();
    EXPECT_EQ(static_cast<DWORD>(window.Last(WM_KEYDOWN)->lParam), 0x00000001U);
}

TEST_F(InputTest, TheExitKeyClosesWhatOtherThreadsShowAndReachesTheProgram)
{
    TestWindow window(Shown());
    PumpMessages();
    std::atomic<bool> isShown = false;
    int keys = 0;
    std::thread other([&] {
        TestWindow above(Shown());
        above.Handle([](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_DESTROY)
                PostQuitMessage(0);
            return std::nullopt;
        });
        isShown = true;
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0))
            DispatchMessageW(&message);
        keys = above.Count(WM_KEYDOWN) + above.Count(WM_SYSKEYDOWN);
    });
    while (!isShown)
        std::this_thread::yield();
    user::PressExitKey();
    other.join();
    PumpMessages();
    EXPECT_EQ(keys, 0);
    ASSERT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, VK_F24);
    EXPECT_EQ(window.Count(WM_KEYUP), 1);
}

TEST_F(InputTest, TheExitKeyClosesWhatThePlayersWindowOwnsAndReachesThatWindow)
{
    TestWindow window(Shown());
    WindowOptions options = Shown();
    options.parent = window;
    TestWindow list(options);
    options.parent = list;
    TestWindow listAbove(options);
    PumpMessages();
    user::PressExitKey();
    PumpMessages();
    EXPECT_FALSE(IsWindow(list));
    EXPECT_FALSE(IsWindow(listAbove));
    EXPECT_EQ(list.Count(WM_KEYDOWN) + listAbove.Count(WM_KEYDOWN), 0);
    ASSERT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, VK_F24);
}

TEST_F(InputTest, TheExitKeyReachesThePlayersWindowAlsoWhenAListOpensBeforeItIsRead)
{
    TestWindow window(Shown());
    PumpMessages();
    user::PressExitKey(); // while the program is busy
    WindowOptions options = Shown();
    options.parent = window;
    TestWindow list(options);
    TestWindow child(ShownChild(list, { 0, 0, 10, 10 }));
    SetFocus(child);
    PumpMessages();
    EXPECT_EQ(list.Count(WM_KEYDOWN) + child.Count(WM_KEYDOWN), 0);
    EXPECT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Count(WM_KEYUP), 1);
}

TEST_F(InputTest, TheExitKeyWaitsForTheProgramsFirstWindowWhereOnlyAnotherThreadShowsOne)
{
    std::atomic<bool> isShown = false;
    std::thread other([&] {
        TestWindow alone(Shown());
        isShown = true;
        MSG message{};
        while (IsWindow(alone) != FALSE && GetMessageW(&message, nullptr, 0, 0))
            DispatchMessageW(&message);
    });
    while (!isShown)
        std::this_thread::yield();
    user::PressExitKey();
    other.join();
    TestWindow window(Shown());
    PumpMessages();
    ASSERT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(window.Last(WM_KEYDOWN)->wParam, VK_F24);
}

TEST_F(InputTest, ASystemKeyGoesUpAsASystemKey)
{
    TestWindow window(Shown());
    SetFocus(nullptr);
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    user::KeyUp(static_cast<UINT>(VK_LEFT));
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_SYSKEYDOWN, WM_SYSKEYDOWN, PM_REMOVE));
    EXPECT_EQ(message.hwnd, static_cast<HWND>(window));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_SYSKEYUP, WM_SYSKEYUP, PM_REMOVE));
}

TEST_F(InputTest, ASystemKeyBecomesASystemCharacter)
{
    TestWindow window(Shown());
    PumpMessages();
    SetFocus(nullptr);
    user::KeyDown('A');
    PumpMessages();
    ASSERT_EQ(window.Count(WM_SYSCHAR), 1);
    EXPECT_EQ(window.Last(WM_SYSCHAR)->wParam, static_cast<WPARAM>('a'));
    EXPECT_EQ(window.Count(WM_CHAR), 0);
}

TEST_F(InputTest, ALetterWithShiftIsACapitalOne)
{
    TestWindow window(Shown());
    user::KeyDown(static_cast<UINT>(VK_SHIFT));
    user::KeyDown('A');
    PumpMessages();
    ASSERT_EQ(window.Count(WM_CHAR), 1);
    EXPECT_EQ(window.Last(WM_CHAR)->wParam, static_cast<WPARAM>('A'));
    EXPECT_EQ(static_cast<DWORD>(window.Last(WM_CHAR)->lParam), 0x00000001U);
}

TEST_F(InputTest, InputThatIsOnlyLookedAtStaysAndHasNoEffect)
{
    TestWindow first(Shown({ 0, 0, 50, 50 }));
    TestWindow second(Shown({ 60, 0, 50, 50 }));
    PumpMessages();
    user::PointerDown({ 5, 5 });
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE));
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(second));
    EXPECT_GE(GetKeyState(static_cast<int>(VK_LEFT)), 0);
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(first));
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    user::PointerUp({ 5, 5 });
}

TEST_F(InputTest, AFilterTakesOnlyTheInputThatItNames)
{
    TestWindow window(Shown());
    PumpMessages();
    user::PointerMove({ 4, 4 });
    user::PointerDown({ 5, 5 });
    user::PointerUp({ 5, 5 });
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    user::KeyUp(static_cast<UINT>(VK_LEFT));
    MSG message{};
    for (const UINT wanted : { WM_KEYUP, WM_KEYDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_MOUSEMOVE }) {
        ASSERT_TRUE(PeekMessageW(&message, nullptr, wanted, wanted, PM_REMOVE)) << wanted;
        EXPECT_EQ(message.message, wanted);
        EXPECT_FALSE(PeekMessageW(&message, nullptr, wanted, wanted, PM_REMOVE)) << wanted;
    }
}

TEST_F(InputTest, AFilterForAnotherWindowLeavesTheInput)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    TestWindow other(Shown({ 60, 0, 50, 50 }));
    PumpMessages();
    user::PointerDown({ 5, 5 });
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, other, 0, 0, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, window, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    user::PointerUp({ 5, 5 });
}

TEST_F(InputTest, AFilterForPressesTakesNoDoubleClickAndTheOtherWayRound)
{
    auto options = Shown();
    options.classStyle = CS_DBLCLKS;
    TestWindow window(options);
    PumpMessages();
    Tap({ 5, 5 });
    user::PointerDown({ 5, 5 });
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_LBUTTONDBLCLK, WM_LBUTTONDBLCLK, PM_REMOVE));
    user::PointerUp({ 5, 5 });
    PumpMessages();
    m_clock.Advance(1000);
    user::PointerDown({ 5, 5 });
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_LBUTTONDBLCLK, WM_LBUTTONDBLCLK, PM_REMOVE));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
    user::PointerUp({ 5, 5 });
}

TEST_F(InputTest, ADoubleClickIsFourPixelsAndHalfASecondWide)
{
    auto options = Shown();
    options.classStyle = CS_DBLCLKS;
    struct Case {
        POINT second;
        std::uint64_t laterMs;
        int doubleClicks;
    };
    for (const auto& [second, laterMs, doubleClicks] :
         { Case{ { 50, 50 }, 500, 1 }, Case{ { 50, 50 }, 501, 0 }, Case{ { 54, 50 }, 0, 1 }, Case{ { 55, 50 }, 0, 0 },
           Case{ { 46, 50 }, 0, 1 }, Case{ { 45, 50 }, 0, 0 }, Case{ { 50, 54 }, 0, 1 }, Case{ { 50, 55 }, 0, 0 },
           Case{ { 50, 46 }, 0, 1 }, Case{ { 50, 45 }, 0, 0 } }) {
        TestWindow window(options);
        Tap({ 50, 50 });
        m_clock.Advance(laterMs);
        Tap(second);
        EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), doubleClicks) << second.x << ", " << second.y << ", " << laterMs;
        m_clock.Advance(1000);
    }
}

TEST_F(InputTest, TheSecondOfThreeTapsFarApartStartsADoubleClick)
{
    auto options = Shown();
    options.classStyle = CS_DBLCLKS;
    TestWindow window(options);
    Tap({ 10, 10 });
    Tap({ 50, 50 });
    Tap({ 50, 50 });
    EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 1);
}

TEST_F(InputTest, APressOutsideAllWindowsReachesNobody)
{
    TestWindow window(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    user::PointerDown({ 200, 200 });
    user::PointerMove({ 5, 5 });
    user::PointerUp({ 5, 5 });
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, AWindowWithTheCaptureGetsTapsOutsideAllWindows)
{
    TestWindow window(Shown({ 50, 50, 20, 20 }));
    PumpMessages();
    SetCapture(window);
    user::PointerDown({ 200, 200 });
    user::PointerUp({ 10, 10 });
    PumpMessages();
    EXPECT_EQ(window.Last(WM_LBUTTONDOWN)->lParam, MAKELPARAM(150, 150));
    EXPECT_EQ(window.Last(WM_LBUTTONUP)->lParam, MAKELPARAM(-40, -40));
    ReleaseCapture();
    user::PointerDown({ 200, 200 });
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 1);
    user::PointerUp({ 200, 200 });
}

TEST_F(InputTest, APressHoldsThePointerAtItsThreadUntilTheRelease)
{
    TestWindow mine(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    std::promise<HWND> shown;
    std::promise<void> look;
    auto looking = look.get_future();
    int moves = 0;
    std::thread thread([&] {
        auto options = Shown({ 100, 0, 50, 50 });
        options.style = WS_POPUP;
        options.exStyle = WS_EX_NOACTIVATE;
        TestWindow other(options);
        ShowWindow(other, SW_SHOWNA);
        shown.set_value(other);
        looking.wait();
        PumpMessages();
        moves = other.Count(WM_MOUSEMOVE);
    });
    shown.get_future().wait();
    mine.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_LBUTTONDOWN)
            SetCapture(window);
        if (message == WM_LBUTTONUP)
            ReleaseCapture();
        return JustValidate(window, message, wParam, lParam);
    });
    user::PointerDown({ 5, 5 });
    PumpMessages();
    user::PointerMove({ 110, 10 });
    PumpMessages();
    EXPECT_EQ(mine.Last(WM_MOUSEMOVE)->lParam, MAKELPARAM(110, 10));
    user::PointerUp({ 110, 10 });
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_LBUTTONUP), 1);
    user::PointerMove({ 111, 10 });
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_MOUSEMOVE), 1);
    look.set_value();
    thread.join();
    EXPECT_EQ(moves, 1);
}

TEST_F(InputTest, ATapOnAnotherThreadsWindowBehindATransparentOneIsHandedToThatThread)
{
    std::promise<HWND> shown;
    std::vector<UINT> told;
    std::thread thread([&] {
        TestWindow below(Shown());
        shown.set_value(below);
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            DispatchMessageW(&message);
            if (message.message == WM_LBUTTONUP)
                break;
        }
        told = below.Order({ WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP });
    });
    shown.get_future().wait();
    TestWindow above(Shown());
    PumpMessages();
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTTRANSPARENT;
        return JustValidate(window, message, wParam, lParam);
    });
    user::PointerDown({ 5, 5 });
    PumpMessages();
    user::PointerMove({ 6, 6 });
    user::PointerUp({ 6, 6 });
    thread.join();
    EXPECT_EQ(above.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(told, (std::vector<UINT>{ WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP }));
}

TEST_F(InputTest, DisablingAnotherThreadsWindowTakesItsFocusAndCaptureThere)
{
    constexpr UINT kEnd = WM_USER + 1;
    std::promise<HWND> shown;
    HWND focus = nullptr;
    HWND capture = nullptr;
    std::thread thread([&] {
        TestWindow window(Shown());
        TestWindow child(ShownChild(window, { 0, 0, 10, 10 }));
        SetFocus(child);
        SetCapture(child);
        shown.set_value(child);
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != kEnd)
            DispatchMessageW(&message);
        focus = GetFocus();
        capture = GetCapture();
    });
    const HWND child = shown.get_future().get();
    EXPECT_FALSE(EnableWindow(child, FALSE));
    EXPECT_FALSE(IsWindowEnabled(child));
    PostMessageW(child, kEnd, 0, 0);
    thread.join();
    EXPECT_EQ(focus, nullptr);
    EXPECT_EQ(capture, nullptr);
}

TEST_F(InputTest, AWindowOwnedByAnotherThreadsWindowGoesWithItsOwner)
{
    auto owner = std::make_unique<TestWindow>(Shown());
    std::promise<HWND> made;
    bool wasDestroyed = false;
    const HWND handle = *owner;
    std::thread thread([&] {
        auto options = Shown();
        options.parent = handle;
        options.handler = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            if (message == WM_DESTROY)
                PostQuitMessage(0);
            return JustValidate(window, message, wParam, lParam);
        };
        TestWindow owned(options);
        made.set_value(owned);
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        wasDestroyed = owned.Count(WM_DESTROY) == 1;
    });
    const HWND owned = made.get_future().get();
    owner.reset();
    thread.join();
    EXPECT_TRUE(wasDestroyed);
    EXPECT_FALSE(IsWindow(owned));
}

TEST_F(InputTest, TheWindowsOfAThreadThatEndsAreForgottenWithTheirChildren)
{
    TestWindow mine(Shown());
    HWND top = nullptr;
    HWND child = nullptr;
    HWND adopted = nullptr;
    const HWND parent = mine;
    std::thread thread([&] {
        const auto make = [](DWORD style, HWND in) {
            return CreateWindowExW(0, u"static", nullptr, style, 0, 0, 9, 9, in, nullptr, nullptr, nullptr);
        };
        top = make(WS_POPUP | WS_VISIBLE, nullptr);
        child = make(WS_CHILD | WS_VISIBLE, top);
        adopted = make(WS_CHILD | WS_VISIBLE, parent);
        user::PointerDown({ 1, 1 });
    });
    thread.join();
    for (HWND gone : { top, child, adopted })
        EXPECT_FALSE(IsWindow(gone));
    EXPECT_EQ(GetWindow(mine, GW_CHILD), nullptr);
    PumpMessages();
    user::PointerUp({ 1, 1 });
    Tap({ 5, 5 });
    EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(InputTest, AResetLeavesNothingOfTheDesktopBefore)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = u"BeforeTheReset";
    RegisterClassW(&windowClass);
    const HWND before = CreateWindowExW(0, u"BeforeTheReset", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                        nullptr, nullptr, nullptr);
    const HWND child = CreateWindowExW(0, u"static", nullptr, WS_CHILD, 0, 0, 5, 5, before, nullptr, nullptr, nullptr);
    SetTimer(nullptr, 0, 10, nullptr);
    SetCapture(before);
    const HDC context = GetDC(before);
    PumpMessages();
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    PumpMessages();
    PostMessageW(nullptr, WM_USER, 0, 0);
    PostQuitMessage(1);
    user::PointerDown({ 5, 5 });
    user::KeyDown(static_cast<UINT>(VK_RIGHT));
    user::SetDisplayActive(false);
    user::ResetWindows();
    m_clock.Advance(100);

    EXPECT_FALSE(IsWindow(before));
    EXPECT_FALSE(IsWindow(child));
    EXPECT_EQ(ReleaseDC(before, context), 0);
    EXPECT_NE(RegisterClassW(&windowClass), 0);
    EXPECT_EQ(GetForegroundWindow(), nullptr);
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_GE(GetKeyState(static_cast<int>(VK_LEFT)), 0);
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    TestWindow window(Shown());
    PumpMessages();
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(window));
    user::PointerMove({ 5, 5 });
    PumpMessages();
    EXPECT_EQ(window.Last(WM_MOUSEMOVE)->wParam, 0U) << "the pointer is up";
    user::KeyDown(static_cast<UINT>(VK_LEFT));
    PumpMessages();
    EXPECT_EQ(KeyBits(window, WM_KEYDOWN), 0x00000001U);
}

TEST_F(InputTest, AResetForgetsKeysStruckBeforeTheFirstWindow)
{
    user::KeyDown(static_cast<UINT>(VK_RETURN));
    user::ResetWindows();
    TestWindow window(Shown());
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 0);
    PostMessageW(window, WM_USER, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_EQ(message.pt.x, 0);
}

TEST_F(InputTest, AResetForgetsWhereThePointerIs)
{
    user::PointerMove({ 33, 44 });
    user::ResetWindows();
    TestWindow window(Shown());
    PostMessageW(window, WM_USER, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_USER, WM_USER, PM_REMOVE));
    EXPECT_EQ(message.pt.x, 0);
    EXPECT_EQ(message.pt.y, 0);
}

TEST_F(InputTest, ATapOnAnotherThreadsWindowLeavesNoFocusHere)
{
    TestWindow mine(Shown({ 0, 0, 50, 50 }));
    PumpMessages();
    std::promise<void> ready;
    HWND activeThere = nullptr;
    std::thread thread([&] {
        auto options = Shown({ 100, 0, 50, 50 });
        options.style = WS_POPUP;
        TestWindow other(options);
        ShowWindow(other, SW_SHOWNA);
        ready.set_value();
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_LBUTTONDOWN)
            DispatchMessageW(&message);
        activeThere = GetActiveWindow();
        EXPECT_EQ(activeThere, static_cast<HWND>(other));
        EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(other));
    });
    ready.get_future().wait();
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(mine));
    user::PointerDown({ 110, 10 });
    thread.join();
    PumpMessages();
    EXPECT_NE(activeThere, nullptr);
    user::PointerUp({ 110, 10 });
}

TEST_F(InputTest, AThreadInTheBackgroundMovesItsFocusWithoutTakingTheForeground)
{
    std::promise<void> taken;
    auto takenByMe = taken.get_future();
    std::promise<void> ready;
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND foreground = nullptr;
    std::vector<HWND> expected;
    std::thread thread([&] {
        TestWindow first(Shown());
        TestWindow second(Shown());
        expected = { first, second };
        ready.set_value();
        takenByMe.wait();
        PumpMessages();
        SetFocus(first);
        focus = GetFocus();
        SetActiveWindow(second);
        active = GetActiveWindow();
        foreground = GetForegroundWindow();
    });
    ready.get_future().wait();
    TestWindow mine(Shown());
    taken.set_value();
    thread.join();
    ASSERT_EQ(expected.size(), 2U);
    EXPECT_EQ(focus, expected[0]);
    EXPECT_EQ(active, expected[1]);
    EXPECT_EQ(foreground, static_cast<HWND>(mine));
}

TEST_F(InputTest, AThreadInTheBackgroundGivesUpItsActiveWindowWithoutTheForeground)
{
    std::promise<void> ready;
    std::promise<void> taken;
    auto takenByMe = taken.get_future();
    HWND given = nullptr;
    HWND activeAfterHiding = nullptr;
    HWND activeAfterGivingUp = nullptr;
    HWND foreground = nullptr;
    std::thread thread([&] {
        TestWindow first(Shown());
        TestWindow second(Shown());
        ready.set_value();
        takenByMe.wait();
        PumpMessages();
        SetActiveWindow(second);
        ShowWindow(first, SW_HIDE); // neither active nor in the foreground
        given = GetActiveWindow() == static_cast<HWND>(second) ? SetActiveWindow(nullptr) : nullptr;
        activeAfterGivingUp = GetActiveWindow();
        SetActiveWindow(second);
        ShowWindow(second, SW_HIDE);
        activeAfterHiding = GetActiveWindow();
        foreground = GetForegroundWindow();
    });
    ready.get_future().wait();
    TestWindow mine(Shown());
    taken.set_value();
    thread.join();
    EXPECT_NE(given, nullptr);
    EXPECT_EQ(activeAfterGivingUp, nullptr);
    EXPECT_EQ(activeAfterHiding, nullptr);
    EXPECT_EQ(foreground, static_cast<HWND>(mine));
}

TEST_F(InputTest, GivingUpTheActiveWindowGivesUpTheForeground)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    EXPECT_EQ(SetActiveWindow(nullptr), static_cast<HWND>(window));
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetForegroundWindow(), nullptr);
    ASSERT_EQ(window.Count(WM_ACTIVATE), 1);
    EXPECT_EQ(LOWORD(window.Last(WM_ACTIVATE)->wParam), WA_INACTIVE);
}

} // namespace
