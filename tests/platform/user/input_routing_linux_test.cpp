// Which thread and which window gets a tap or a key when several threads have windows, and when a thread ends.
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

using namespace cardsong;

namespace {

class InputRouting : public testing::Test {
protected:
    InputRouting()
    {
        user::ResetWindows();
        kernel::InstallClock(&m_clock);
    }
    ~InputRouting() override
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

    kernel::VirtualClock m_clock;
};

TEST_F(InputRouting, AnEventHandedOnComesBeforeThoseThatHappenedLater)
{
    std::promise<void> shown;
    std::promise<void> look;
    std::vector<LPARAM> places;
    std::thread thread([&] {
        TestWindow below(Shown({ 0, 0, 200, 100 }));
        shown.set_value();
        look.get_future().wait();
        PumpMessages();
        for (const auto& seen : below.Seen())
            if (seen.message == WM_MOUSEMOVE)
                places.push_back(seen.lParam);
    });
    shown.get_future().wait();
    TestWindow above(Shown());
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTTRANSPARENT;
        return JustValidate(window, message, wParam, lParam);
    });
    PumpMessages();
    user::PointerMove({ 5, 5 });   // for this thread, which hands it on
    user::PointerMove({ 150, 5 }); // for the other one at once
    PumpMessages();
    look.set_value();
    thread.join();
    EXPECT_EQ(places, (std::vector<LPARAM>{ MAKELPARAM(5, 5), MAKELPARAM(150, 5) }));
}

TEST_F(InputRouting, AKeyThatReachesNoWindowIsDownAllTheSame)
{
    TestWindow window(Shown());
    PumpMessages();
    SetActiveWindow(nullptr);
    user::KeyDown(static_cast<UINT>(VK_SHIFT));
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN) + window.Count(WM_SYSKEYDOWN), 0);
    EXPECT_LT(GetKeyState(static_cast<int>(VK_SHIFT)), 0);
}

TEST_F(InputRouting, AThreadThatEndsAmidAGestureLeavesThePointerToTheOthers)
{
    std::thread([] {
        TestWindow other(Shown());
        PumpMessages();
        user::PointerDown({ 5, 5 });
        PumpMessages();
    }).join();
    TestWindow mine(Shown());
    PumpMessages();
    user::PointerDown({ 5, 5 });
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(InputRouting, AResetForgetsInputThatNobodyTook)
{
    {
        TestWindow before(Shown());
        PumpMessages();
        user::KeyDown(static_cast<UINT>(VK_LEFT));
        user::PointerDown({ 5, 5 });
        user::ResetWindows();
    }
    TestWindow window(Shown());
    PumpMessages();
    EXPECT_EQ(window.Count(WM_KEYDOWN), 0);
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputRouting, ATapThatIsCapturedInsideADisabledWindowActivatesNothing)
{
    TestWindow disabled(Shown({ 0, 0, 50, 50 }));
    auto options = Shown({ 0, 0, 50, 50 });
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = disabled;
    TestWindow child(options);
    TestWindow active(Shown({ 100, 0, 50, 50 }));
    PumpMessages();
    SetCapture(child);
    EnableWindow(disabled, FALSE);
    ASSERT_EQ(GetCapture(), static_cast<HWND>(child));
    user::PointerDown({ 5, 5 });
    PumpMessages();
    EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(active));
    ReleaseCapture();
}

TEST_F(InputRouting, AFilterForKeysAsksNoWindowWhetherItIsHit)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    user::PointerDown({ 5, 5 });
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_EQ(window.Count(WM_NCHITTEST), 0);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(InputRouting, TwoTapsOnAStaticThatNotifiesAreADoubleClick)
{
    TestWindow parent(Shown());
    const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(9));
    CreateWindowExW(0, u"static", nullptr, WS_CHILD | WS_VISIBLE | SS_NOTIFY, 10, 10, 20, 20, parent, id, nullptr,
                    nullptr);
    for (int i = 0; i < 2; ++i) {
        user::PointerDown({ 15, 15 });
        user::PointerUp({ 15, 15 });
        PumpMessages();
    }
    ASSERT_EQ(parent.Count(WM_COMMAND), 2);
    EXPECT_EQ(parent.Last(WM_COMMAND)->wParam, MAKEWPARAM(9, STN_DBLCLK));
}

TEST_F(InputRouting, TwoTapsOnADialogAreADoubleClick)
{
    const HWND dialog =
        CreateWindowExW(0, u"#32770", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    std::vector<UINT> told;
    for (int i = 0; i < 2; ++i) {
        user::PointerDown({ 15, 15 });
        user::PointerUp({ 15, 15 });
        MSG message{};
        while (PeekMessageW(&message, dialog, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE))
            told.push_back(message.message);
    }
    EXPECT_EQ(told, (std::vector<UINT>{ WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP }));
    DestroyWindow(dialog);
}

// The other thread does not look for messages: what its queue gets, nobody else gets meanwhile.
TEST_F(InputRouting, ABusyThreadHoldsBackNothingBesideItsWindow)
{
    auto whole = Shown({ 0, 0, 320, 240 });
    whole.style = WS_POPUP;
    whole.exStyle = WS_EX_NOACTIVATE; // a tap does not raise it
    TestWindow mine(whole);
    ShowWindow(mine, SW_SHOWNA);
    PumpMessages();
    std::promise<void> shown;
    std::promise<void> leave;
    std::thread thread([&] {
        auto options = Shown({ 100, 20, 50, 40 });
        options.style = WS_POPUP;
        options.exStyle = WS_EX_NOACTIVATE;
        TestWindow other(options);
        ShowWindow(other, SW_SHOWNA);
        options.rect = { 0, 0, 320, 240 };
        TestWindow hidden(options);
        shown.set_value();
        leave.get_future().wait();
    });
    shown.get_future().wait();
    int presses = 0;
    for (const POINT at : { POINT{ 99, 30 }, POINT{ 150, 30 }, POINT{ 120, 19 }, POINT{ 120, 60 } }) {
        user::PointerDown(at);
        user::PointerUp(at);
        PumpMessages();
        EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), ++presses) << at.x << ", " << at.y;
    }
    for (const POINT at : { POINT{ 100, 20 }, POINT{ 149, 59 } }) {
        user::PointerDown(at);
        user::PointerUp(at);
        PumpMessages();
        EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), presses) << at.x << ", " << at.y;
    }
    leave.set_value();
    thread.join();
}

TEST_F(InputRouting, AMoveHandedOnLeavesThePointerFree)
{
    std::promise<void> shown;
    std::promise<void> leave;
    std::thread thread([&] {
        TestWindow below(Shown());
        shown.set_value();
        leave.get_future().wait();
    });
    shown.get_future().wait();
    TestWindow above(Shown());
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTTRANSPARENT;
        return JustValidate(window, message, wParam, lParam);
    });
    TestWindow mine(Shown({ 200, 0, 50, 50 }));
    PumpMessages();
    user::PointerMove({ 5, 5 });
    PumpMessages();
    user::PointerDown({ 210, 5 });
    PumpMessages();
    EXPECT_EQ(mine.Count(WM_LBUTTONDOWN), 1);
    leave.set_value();
    thread.join();
}

TEST_F(InputRouting, AnEventHandedOnWakesItsThread)
{
    constexpr UINT kStop = WM_USER + 1;
    std::promise<HWND> shown;
    std::promise<void> moved;
    std::thread thread([&] {
        TestWindow below(Shown());
        shown.set_value(below);
        MSG message{};
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != kStop) {
            DispatchMessageW(&message);
            if (message.message == WM_MOUSEMOVE)
                moved.set_value();
        }
    });
    const HWND below = shown.get_future().get();
    TestWindow above(Shown());
    above.Handle([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NCHITTEST)
            return HTTRANSPARENT;
        return JustValidate(window, message, wParam, lParam);
    });
    PumpMessages();
    for (LONG i = 0; i < 20; ++i) {
        moved = std::promise<void>();
        auto isMoved = moved.get_future();
        SendMessageW(below, WM_USER, 0, 0); // then it is back at its wait, or about to be
        user::PointerMove({ 5 + i, 5 });
        PumpMessages();
        EXPECT_EQ(isMoved.wait_for(std::chrono::seconds(10)), std::future_status::ready) << i;
        if (HasFailure())
            break;
    }
    PostMessageW(below, kStop, 0, 0);
    thread.join();
}

TEST_F(InputRouting, AThreadThatEndsTakesItsForegroundWindowAlongAndUncoversTheOthers)
{
    TestWindow mine(Shown());
    PumpMessages();
    std::thread([] {
        CreateWindowExW(0, u"static", nullptr, WS_POPUP | WS_VISIBLE, 10, 10, 20, 20, nullptr, nullptr, nullptr,
                        nullptr);
    }).join();
    EXPECT_EQ(GetForegroundWindow(), nullptr);
    RECT update{};
    GetUpdateRect(mine, &update, FALSE);
    EXPECT_EQ(update, (RECT{ 10, 10, 30, 30 }));
}

TEST_F(InputRouting, AfterItsOwnerHasEndedTheForegroundIsTakenWithTheFocus)
{
    TestWindow mine(Shown());
    PumpMessages();
    std::thread([] {
        CreateWindowExW(0, u"static", nullptr, WS_POPUP | WS_VISIBLE, 10, 10, 20, 20, nullptr, nullptr, nullptr,
                        nullptr);
    }).join();
    PumpMessages();
    ASSERT_EQ(GetForegroundWindow(), nullptr);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    SetFocus(mine);
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(mine));
}

TEST_F(InputRouting, AWindowHiddenWhileTheDisplayIsInactiveLeavesTheForegroundToTheNext)
{
    TestWindow next(Shown());
    TestWindow window(Shown());
    PumpMessages();
    user::SetDisplayActive(false);
    PumpMessages();
    ASSERT_EQ(GetActiveWindow(), nullptr);
    ShowWindow(window, SW_HIDE);
    user::SetDisplayActive(true);
    PumpMessages();
    EXPECT_EQ(GetForegroundWindow(), static_cast<HWND>(next));
    EXPECT_EQ(GetActiveWindow(), static_cast<HWND>(next));
}

} // namespace
