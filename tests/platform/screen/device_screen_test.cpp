// The device's screen on a desktop, two of its pixels to each of the device's.
#include "platform/windows/screen/device_screen.h"

#include "platform/ce.h"
#include "platform/windows/screen/desktop_keyboard.h"
#include "platform/windows/screen/screenshot.h"
#include "platform/windows/screen/window_procedures.h"
#include "tests/platform/scratch_device.h"
#include "tests/platform/screen/desktop_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace screen = cardsong::screen;
using namespace cardsong::test;

constexpr COLORREF kGround = RGB(0, 0, 0);
constexpr COLORREF kMark = RGB(255, 0, 0);
constexpr RECT kMarkPlace{ 10, 20, 11, 22 };
constexpr WORD kButton = 7;

struct Seen {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
std::vector<Seen> g_seen;
RECT g_itemRect;
SIZE g_size;
WNDPROC g_replaced;

void Paint(HWND window)
{
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    const RECT whole{ 0, 0, 320, 240 };
    FillRect(context, &whole, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    const HBRUSH red = CreateSolidBrush(kMark);
    FillRect(context, &kMarkPlace, red);
    DeleteObject(red);
    EndPaint(window, &paint);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: MoveWindow(window, 0, 0, 320, 240, TRUE); return 0;
    case WM_PAINT: Paint(window); return 0;
    case WM_SIZE: g_size = { LOWORD(lParam), HIWORD(lParam) }; return 0;
    case WM_DRAWITEM: g_itemRect = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->rcItem; return TRUE;
    case WM_LBUTTONDOWN:
    case WM_KEYDOWN:
    case WM_COMMAND: g_seen.push_back({ message, wParam, lParam }); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

class DeviceScreen : public testing::Test {
protected:
    DeviceScreen()
    {
        static const bool s_isSetUp = [] {
            screen::SetUpScreen({ screen::Frame::Window, 2 });
            WNDCLASSW description{};
            description.lpfnWndProc = Procedure;
            description.lpszClassName = TEXT("SCREENTEST");
            return RegisterClassW(&description) != 0;
        }();
        EXPECT_TRUE(s_isSetUp);
#pragma pack(push, 2)
        struct {
            DLGTEMPLATE head{ WS_POPUP, 0, 0, 0, 0, 50, 50 };
            WORD menu = 0;
            WCHAR windowClass[11] = TEXT("SCREENTEST");
            WORD title = 0;
        } dialog;
#pragma pack(pop)
        m_window = CreateDialogIndirectParamW(nullptr, &dialog.head, nullptr, nullptr, 0);
        ShowWindow(m_window, SW_SHOW);
        UpdateWindow(m_window);
        Pump();
        g_seen.clear();
    }
    ~DeviceScreen() override
    {
        DestroyWindow(m_window);
        Pump();
    }

    static void Pump()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    HWND AddButton() const
    {
        return CreateWindowExW(0, TEXT("button"), TEXT(""), WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 100, 50, 30, 20,
                               m_window, reinterpret_cast<HMENU>(ULONG_PTR{ kButton }), nullptr, nullptr);
    }

    HWND m_window = nullptr;
};

TEST_F(DeviceScreen, ItsWindowHasTheFrameOfADesktopWindowAroundEnlargedPixels)
{
    EXPECT_EQ(screen::ScreenWindow(), m_window);
    EXPECT_EQ(DesktopClientSize(m_window).cx, 640);
    EXPECT_EQ(DesktopClientSize(m_window).cy, 480);
    EXPECT_NE(GetWindowLongPtrW(m_window, GWL_STYLE) & WS_CAPTION, 0);
    WCHAR title[20] = {};
    GetWindowTextW(m_window, title, 20);
    EXPECT_EQ(WString(title), TEXT("Cardsong"));
    EXPECT_TRUE(IsOnDesktop(m_window));
}

TEST_F(DeviceScreen, ThePlayerSeesAScreenOfTheDevicesSizeAtItsOrigin)
{
    RECT rect{};
    EXPECT_TRUE(GetClientRect(m_window, &rect));
    EXPECT_EQ(rect.right, 320);
    EXPECT_EQ(rect.bottom, 240);
    EXPECT_TRUE(GetWindowRect(m_window, &rect));
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 320);
    EXPECT_EQ(rect.bottom, 240);
    POINT point{ 3, 4 };
    EXPECT_TRUE(ClientToScreen(m_window, &point));
    EXPECT_EQ(point.x, 3);
    EXPECT_EQ(point.y, 4);
    EXPECT_EQ(g_size.cx, 320);
    EXPECT_EQ(g_size.cy, 240);
}

TEST_F(DeviceScreen, EachPixelIsRepeated)
{
    const int left = 2 * kMarkPlace.left, top = 2 * kMarkPlace.top;
    for (int x = left - 1; x <= left + 2; ++x) {
        for (int y = top - 1; y <= top + 4; ++y) {
            const bool isMarked = x >= left && x < left + 2 && y >= top && y < top + 4;
            EXPECT_EQ(DesktopPixel(m_window, x, y), isMarked ? kMark : kGround) << x << ", " << y;
        }
    }
}

TEST_F(DeviceScreen, AControlLiesWhereThePlayerPutIt)
{
    const HWND button = AddButton();
    EXPECT_EQ(DesktopClientSize(button).cx, 60);
    const POINT screenCorner = DesktopCorner(m_window);
    EXPECT_EQ(DesktopCorner(button).x - screenCorner.x, 200);
    EXPECT_EQ(DesktopCorner(button).y - screenCorner.y, 100);
    RECT rect{};
    EXPECT_TRUE(GetWindowRect(button, &rect));
    EXPECT_EQ(rect.left, 100);
    EXPECT_EQ(rect.bottom, 70);
    MoveWindow(button, 5, 6, 7, 8, FALSE);
    EXPECT_EQ(DesktopClientSize(button).cy, 16);
}

TEST_F(DeviceScreen, AnOwnedWindowLiesOnTheScreenToo)
{
    const HWND popup = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP | WS_VISIBLE, 20, 30, 40, 50, m_window,
                                       nullptr, nullptr, nullptr);
    const POINT screenCorner = DesktopCorner(m_window);
    EXPECT_EQ(DesktopCorner(popup).x - screenCorner.x, 40);
    EXPECT_EQ(DesktopCorner(popup).y - screenCorner.y, 60);
    POINT point{ 20, 30 };
    EXPECT_TRUE(ScreenToClient(popup, &point));
    EXPECT_EQ(point.x, 0);
    EXPECT_EQ(point.y, 0);
    DestroyWindow(popup);
}

TEST_F(DeviceScreen, AnOwnerDrawnButtonAsksForTheDevicesPixels)
{
    UpdateWindow(AddButton());
    Pump();
    EXPECT_EQ(g_itemRect.right, 30);
    EXPECT_EQ(g_itemRect.bottom, 20);
}

TEST_F(DeviceScreen, TheMouseArrivesInTheDevicesPixels)
{
    PostMessageW(m_window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(65, 41));
    Pump();
    ASSERT_EQ(g_seen.size(), 1U);
    EXPECT_EQ(g_seen[0].lParam, MAKELPARAM(32, 20));
}

TEST_F(DeviceScreen, AButtonIsTappedWhereItIsSeen)
{
    const HWND button = AddButton();
    PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(59, 39)); // its last pixel
    PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(59, 39));
    Pump();
    ASSERT_FALSE(g_seen.empty());
    EXPECT_EQ(g_seen.back().message, static_cast<UINT>(WM_COMMAND));
    EXPECT_EQ(LOWORD(g_seen.back().wParam), kButton);
}

TEST_F(DeviceScreen, ClosingTheWindowPressesTheExitKey)
{
    SetFocus(m_window);
    SendMessageW(m_window, WM_CLOSE, 0, 0);
    Pump();
    EXPECT_TRUE(IsWindow(m_window));
    ASSERT_FALSE(g_seen.empty());
    EXPECT_EQ(g_seen[0].message, static_cast<UINT>(WM_KEYDOWN));
    EXPECT_EQ(g_seen[0].wParam, static_cast<WPARAM>(VK_F24));
    EXPECT_EQ(LOWORD(g_seen[0].lParam), 0) << "no hand strikes the key";
}

TEST_F(DeviceScreen, ClosingTheWindowClosesWhatItOwnsAndPressesTheExitKeyForItself)
{
    const HWND list = CreateWindowExW(0, TEXT("SCREENTEST"), TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, m_window,
                                      nullptr, nullptr, nullptr);
    ASSERT_NE(list, nullptr);
    SetFocus(list);
    Pump();
    g_seen.clear();
    SendMessageW(m_window, WM_CLOSE, 0, 0);
    Pump();
    EXPECT_FALSE(IsWindow(list));
    ASSERT_EQ(g_seen.size(), 1U);
    EXPECT_EQ(g_seen[0].wParam, static_cast<WPARAM>(VK_F24));
}

TEST_F(DeviceScreen, EscapeIsTheExitKey)
{
    PostMessageW(m_window, WM_KEYDOWN, VK_ESCAPE, 1);
    Pump();
    ASSERT_EQ(g_seen.size(), 1U);
    EXPECT_EQ(g_seen[0].wParam, static_cast<WPARAM>(VK_F24));
    EXPECT_EQ(LOWORD(g_seen[0].lParam), 1) << "a hand strikes the key";
}

TEST_F(DeviceScreen, HasNinetySixDotsToTheInch)
{
    const HDC context = GetDC(m_window);
    EXPECT_EQ(GetDeviceCaps(context, LOGPIXELSY), 96);
    EXPECT_EQ(GetDeviceCaps(context, HORZRES), 320);
    ReleaseDC(m_window, context);
}

TEST_F(DeviceScreen, ItsPictureOutlivesItsWindow)
{
    const ScratchDevice device;
    const std::string path = device.UserDirectory() + "/shot.png";
    EXPECT_TRUE(screen::SaveScreenshot(path));
    const std::string shown = device.ReadFile("user/shot.png");
    EXPECT_EQ(shown.substr(0, 4), "\x89PNG");
    DestroyWindow(m_window);
    EXPECT_EQ(screen::ScreenWindow(), nullptr);
    EXPECT_TRUE(screen::SaveScreenshot(path));
    EXPECT_EQ(device.ReadFile("user/shot.png"), shown);
    EXPECT_FALSE(screen::SaveScreenshot("Z:\\no\\such\\folder\\shot.png"));
}

LRESULT CALLBACK OtherProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_seen.push_back({ message, wParam, lParam });
    return CallWindowProcW(g_replaced, window, message, wParam, lParam);
}

TEST_F(DeviceScreen, AProcedureThatIsReplacedTwiceIsReachedOnce)
{
    const HWND button = AddButton();
    const auto other = reinterpret_cast<LONG_PTR>(OtherProcedure);
    const LONG_PTR systems = SetWindowLongPtrW(button, GWLP_WNDPROC, other);
    EXPECT_EQ(SetWindowLongPtrW(button, GWLP_WNDPROC, systems), other);
    EXPECT_EQ(SetWindowLongPtrW(button, GWLP_WNDPROC, other), systems);
    g_replaced = reinterpret_cast<WNDPROC>(systems);
    g_seen.clear();
    SendMessageW(button, BM_GETCHECK, 0, 0);
    EXPECT_EQ(g_seen.size(), 1U);

    g_replaced = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(m_window, GWLP_WNDPROC, other));
    EXPECT_EQ(g_replaced, &Procedure);
    g_seen.clear();
    SendMessageW(m_window, WM_COMMAND, 1, 0);
    EXPECT_EQ(g_seen.size(), 2U); // the other one, then the class's own
}

TEST_F(DeviceScreen, NoWindowDrawsOverItsChildren)
{
    const HWND button = AddButton();
    for (const HWND window : { m_window, button })
        EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & LONG_PTR{ screen::kDeviceStyle },
                  LONG_PTR{ screen::kDeviceStyle });
}

TEST_F(DeviceScreen, AnEndOfTheSessionIsAllowedAndPressesTheExitKeyWhenItComes)
{
    EXPECT_TRUE(SendMessageW(m_window, WM_QUERYENDSESSION, 0, 0));
    SendMessageW(m_window, WM_ENDSESSION, FALSE, 0); // another program refused
    Pump();
    EXPECT_TRUE(g_seen.empty());
    SendMessageW(m_window, WM_ENDSESSION, TRUE, 0);
    ASSERT_EQ(g_seen.size(), 1U); // without a message loop
    EXPECT_EQ(g_seen[0].wParam, static_cast<WPARAM>(VK_F24));
    EXPECT_EQ(LOWORD(g_seen[0].lParam), 0) << "no hand strikes the key";
}

TEST_F(DeviceScreen, OnAMonitorWithSmallerDotsOnlyTheFrameChanges)
{
    const RECT wished{ 50, 60, 1500, 1200 };
    SendMessageW(m_window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&wished));
    EXPECT_EQ(DesktopPlace(m_window).left, 50);
    EXPECT_EQ(DesktopPlace(m_window).top, 60);
    EXPECT_EQ(DesktopPlace(m_window).right - 50, DesktopFrameWidth(640, 192));
    SendMessageW(m_window, WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&wished));
    EXPECT_EQ(DesktopClientSize(m_window).cx, 640);
}

TEST_F(DeviceScreen, ThePlayersWindowsGoWithTheirScreen)
{
    const HWND popup = CreateWindowExW(0, TEXT("SCREENTEST"), TEXT(""), WS_POPUP | WS_VISIBLE, 20, 30, 40, 50, m_window,
                                       nullptr, nullptr, nullptr);
    MoveWindow(popup, 20, 30, 40, 50, FALSE); // its procedure has put it elsewhere
    DragWindow(m_window, 17, 9);
    Pump();
    EXPECT_EQ(DesktopCorner(popup).x - DesktopCorner(m_window).x, 40);
    EXPECT_EQ(DesktopCorner(popup).y - DesktopCorner(m_window).y, 60);
    DestroyWindow(popup);
}

TEST_F(DeviceScreen, AHandleThatAsksForTheLastPopUpIsUnderstood)
{
    SetForegroundWindow(reinterpret_cast<HWND>(reinterpret_cast<ULONG_PTR>(m_window) | 1));
    EXPECT_EQ(GetForegroundWindow(), m_window);
}

TEST_F(DeviceScreen, ANamelessFontWritesChinese)
{
    LOGFONTW description{};
    description.lfHeight = -16;
    const HFONT font = CreateFontIndirectW(&description);
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, font);
    WORD glyphs[2] = {};
    GetGlyphIndicesW(context, TEXT("a\u6B4C"), 2, glyphs, GGI_MARK_NONEXISTING_GLYPHS);
    EXPECT_NE(glyphs[0], 0xFFFF);
    EXPECT_NE(glyphs[1], 0xFFFF);
    SelectObject(context, before);
    DeleteDC(context);
    DeleteObject(font);
}

std::atomic<int> g_begun; // windows whose procedure heard of their beginning

LRESULT CALLBACK CountingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_begun += message == WM_NCCREATE ? 1 : 0;
    return DefWindowProcW(window, message, wParam, lParam);
}

// The class is registered by whoever of two threads comes first, and both make a window of it at once.
void MakeWindowOfNewClass(const WString& name, std::barrier<>& together)
{
    WNDCLASSW description{};
    description.lpfnWndProc = CountingProcedure;
    description.lpszClassName = name.c_str();
    together.arrive_and_wait();
    RegisterClassW(&description);
    const HWND window =
        CreateWindowExW(0, name.c_str(), TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(window, nullptr);
    DestroyWindow(window);
}

TEST_F(DeviceScreen, WindowsThatTwoThreadsMakeOfANewClassAtTheSameInstantBothHaveItsProcedure)
{
    constexpr int kRounds = 50;
    std::barrier together(2);
    std::atomic<int> ended = 0;
    const auto makeAll = [&] {
        for (int round = 0; round < kRounds; ++round) {
            const std::wstring number = std::to_wstring(round);
            MakeWindowOfNewClass(TEXT("RACE") + WString(number.begin(), number.end()), together);
        }
        ++ended;
    };
    g_begun = 0;
    std::thread first(makeAll);
    std::thread second(makeAll);
    while (ended < 2) { // the screen's window goes on answering
        Pump();
        std::this_thread::yield();
    }
    first.join();
    second.join();
    EXPECT_EQ(g_begun, 2 * kRounds);
}

TEST_F(DeviceScreen, KeysOfADesktopBecomeTheDevicesKeysCommandsAndTaps)
{
    constexpr cardsong::CommandKey commands[] = {
        { 260, "Stop", { { "S" }, { 'S' } } },
        { kButton, "Button", { { "B" }, { 'B' } } },
    };
    constexpr cardsong::TapKey taps[] = { { { 30, 40 }, { { "1" }, { '1' } } } };
    screen::SetDesktopKeys({ TEXT("SCREENTEST"), commands, taps });
    const HWND button = AddButton();
    EnableWindow(button, FALSE);
    SetFocus(m_window);
    g_seen.clear();
    for (const WPARAM key : { WPARAM{ VK_SPACE }, WPARAM{ 'Q' }, WPARAM{ 'S' }, WPARAM{ 'B' }, WPARAM{ '1' } })
        PostMessageW(m_window, WM_KEYDOWN, key, 1);
    PostMessageW(m_window, WM_KEYDOWN, 'S', LPARAM{ 1 } | LPARAM{ KF_REPEAT } << 16);
    Pump();
    ASSERT_GE(g_seen.size(), 3U);
    EXPECT_EQ(g_seen[0].wParam, static_cast<WPARAM>(VK_RETURN));
    EXPECT_EQ(g_seen[1].wParam, static_cast<WPARAM>(VK_F24));
    EXPECT_EQ(g_seen[2].message, static_cast<UINT>(WM_COMMAND));
    EXPECT_EQ(g_seen[2].wParam, 260U);
    for (std::size_t i = 3; i < g_seen.size(); ++i) // a disabled button, a tap in front of nothing, a key that is held
        EXPECT_EQ(g_seen[i].message, static_cast<UINT>(WM_KEYDOWN)) << g_seen[i].wParam;
    screen::SetDesktopKeys({});
}

TEST_F(DeviceScreen, AWindowInFrontOfTheMainOneIsTappedWhereKeysSay)
{
    constexpr cardsong::CommandKey commands[] = { { 260, "Stop", { { "S" }, { 'S' } } } };
    constexpr cardsong::TapKey taps[] = { { { 30, 40 }, { { "1" }, { '1' } } } };
    screen::SetDesktopKeys({ TEXT("OTHER"), commands, taps });
    SetActiveWindow(m_window);
    g_seen.clear();
    PostMessageW(m_window, WM_KEYDOWN, '1', 1);
    PostMessageW(m_window, WM_KEYDOWN, 'S', 1);
    Pump();
    const auto isTap = [](const Seen& seen) { return seen.message == WM_LBUTTONDOWN; };
    const auto tap = std::ranges::find_if(g_seen, isTap);
    ASSERT_NE(tap, g_seen.end());
    EXPECT_EQ(tap->lParam, MAKELPARAM(30, 40));
    EXPECT_EQ(std::ranges::count(g_seen, static_cast<UINT>(WM_COMMAND), &Seen::message), 0);
    screen::SetDesktopKeys({});
}

TEST_F(DeviceScreen, AFunctionKeyTapsTheButtonOfItsNumberAlongTheBottomEdge)
{
    const auto add = [this](int id, int x, int y) {
        CreateWindowExW(0, TEXT("button"), TEXT(""), WS_CHILD | WS_VISIBLE, x, y, 50, 32, m_window,
                        reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
    };
    add(12, 100, 208);
    add(11, 0, 201);
    add(13, 50, 150);
    SetActiveWindow(m_window);
    g_seen.clear();
    for (const WPARAM key : { WPARAM{ VK_F1 }, WPARAM{ VK_F2 }, WPARAM{ VK_F3 } })
        PostMessageW(m_window, WM_KEYDOWN, key, 1);
    Pump();
    std::vector<WORD> clicked;
    for (const Seen& seen : g_seen)
        if (seen.message == WM_COMMAND)
            clicked.push_back(LOWORD(seen.wParam));
    EXPECT_EQ(clicked, (std::vector<WORD>{ 11, 12 }));
}

TEST(HiddenScreen, IsSeenByNobodyAndTakesNoKeyboard)
{
    const HWND before = GetForegroundWindow();
    screen::SetUpScreen({ screen::Frame::Hidden, 1 });
    WNDCLASSW description{};
    description.lpfnWndProc = Procedure;
    description.lpszClassName = TEXT("HIDDENTEST");
    RegisterClassW(&description);
    const HWND window =
        CreateWindowExW(0, TEXT("HIDDENTEST"), TEXT(""), WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_FALSE(IsOnDesktop(window));
    EXPECT_EQ(GetForegroundWindow(), before);
    DestroyWindow(window);
    screen::SetUpScreen({ screen::Frame::Window, 2 });
}

} // namespace
