// Birth and death of windows: what they are told, and what is left of them.
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

WindowOptions ChildOf(HWND parent)
{
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = parent;
    return options;
}

struct Birth {
    CREATESTRUCTW create{};
    CREATESTRUCTW ncCreate{};
};

LRESULT CALLBACK RememberBirth(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE || message == WM_CREATE) {
        const auto& description = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto& birth = *static_cast<Birth*>(description.lpCreateParams);
        (message == WM_CREATE ? birth.create : birth.ncCreate) = description;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST(WindowLifetime, TheWindowLearnsHowItWasMade)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = RememberBirth;
    windowClass.lpszClassName = TEXT("RememberBirth");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    TestWindow parent;
    Birth birth;
    const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(44));
    const HWND window = CreateWindowExW(WS_EX_NOACTIVATE, TEXT("RememberBirth"), TEXT("its text"), WS_CHILD, 1, 2, 3, 4,
                                        parent, id, nullptr, &birth);
    ASSERT_NE(window, nullptr);
    for (const CREATESTRUCTW& told : { birth.ncCreate, birth.create }) {
        EXPECT_EQ(told.x, 1);
        EXPECT_EQ(told.y, 2);
        EXPECT_EQ(told.cx, 3);
        EXPECT_EQ(told.cy, 4);
        EXPECT_EQ(told.hMenu, id);
        EXPECT_EQ(told.hwndParent, static_cast<HWND>(parent));
        EXPECT_EQ(static_cast<DWORD>(told.style), WS_CHILD);
        EXPECT_EQ(told.dwExStyle, WS_EX_NOACTIVATE);
    }
    DestroyWindow(window);
    UnregisterClassW(TEXT("RememberBirth"), nullptr);
}

TEST(WindowLifetime, ANewWindowHearsOfItsSizeAndPlace)
{
    WindowOptions options;
    options.rect = { 7, 8, 30, 20 };
    TestWindow window(options);
    ASSERT_EQ(window.Count(WM_SIZE), 1);
    EXPECT_EQ(window.Last(WM_SIZE)->wParam, static_cast<WPARAM>(SIZE_RESTORED));
    EXPECT_EQ(window.Last(WM_SIZE)->lParam, MAKELPARAM(30, 20));
    ASSERT_EQ(window.Count(WM_MOVE), 1);
    EXPECT_EQ(window.Last(WM_MOVE)->wParam, 0U);
    EXPECT_EQ(window.Last(WM_MOVE)->lParam, MAKELPARAM(7, 8));
}

TEST(WindowLifetime, ANegativeSizeIsNone)
{
    WindowOptions options;
    options.rect = { 7, 8, -30, -20 };
    TestWindow window(options);
    RECT rect{};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect, (RECT{ 7, 8, 7, 8 }));
}

TEST(WindowLifetime, AWindowThatDeclinesItsFirstMessageIsNotMade)
{
    HWND refused = nullptr;
    WindowOptions options;
    options.handler = [&refused](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_NCCREATE)
            return std::nullopt;
        refused = window;
        return FALSE;
    };
    TestWindow window(options);
    EXPECT_EQ(static_cast<HWND>(window), nullptr);
    EXPECT_NE(refused, nullptr);
    EXPECT_FALSE(IsWindow(refused));
    EXPECT_EQ(window.Count(WM_CREATE), 0);
}

TEST(WindowLifetime, AWindowThatGoesAmidItsBirthIsNotMade)
{
    for (const UINT last : { WM_CREATE, WM_SIZE, WM_MOVE }) {
        WindowOptions options;
        options.handler = [last](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == last)
                DestroyWindow(window);
            return std::nullopt;
        };
        TestWindow window(options);
        EXPECT_EQ(static_cast<HWND>(window), nullptr) << last;
        EXPECT_EQ(window.Count(WM_NCDESTROY), 1) << last;
    }
}

TEST(WindowLifetime, AWindowThatGoesWhileItIsShownIsNotMade)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine returns the dead handle";
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    options.handler = [](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_SHOWWINDOW)
            DestroyWindow(window);
        return std::nullopt;
    };
    TestWindow window(options);
    EXPECT_EQ(static_cast<HWND>(window), nullptr);
}

TEST(WindowLifetime, AFailedBirthLeavesTheClassFree)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = TEXT("FreeAgain");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    SetLastError(0);
    EXPECT_EQ(CreateWindowExW(0, TEXT("FreeAgain"), nullptr, WS_CHILD, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
              nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TLW_WITH_WSCHILD));
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    for (const DWORD style : { DWORD{ WS_CHILD }, DWORD{ WS_POPUP } }) {
        SetLastError(0);
        EXPECT_EQ(CreateWindowExW(0, TEXT("FreeAgain"), nullptr, style, 0, 0, 1, 1, dead, nullptr, nullptr, nullptr),
                  nullptr);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    }
    const HWND window =
        CreateWindowExW(0, TEXT("FreeAgain"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(UnregisterClassW(TEXT("FreeAgain"), nullptr));
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClassW(TEXT("FreeAgain"), nullptr));
}

TEST(WindowLifetime, AWindowOwnedByATopmostOneIsTopmost)
{
    WindowOptions options;
    options.exStyle = WS_EX_TOPMOST;
    TestWindow owner(options);
    options.exStyle = 0;
    options.parent = owner;
    TestWindow owned(options);
    EXPECT_NE(static_cast<DWORD>(GetWindowLongPtrW(owned, GWL_EXSTYLE)) & WS_EX_TOPMOST, 0U);
    TestWindow plainOwner;
    options.parent = plainOwner;
    TestWindow plain(options);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(plain, GWL_EXSTYLE)) & WS_EX_TOPMOST, 0U);
}

TEST(WindowLifetime, AWindowMadeVisibleIsShownAsIfLater)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow visible(options);
    EXPECT_EQ(visible.Count(WM_SHOWWINDOW), 1);
    EXPECT_TRUE(IsWindowVisible(visible));
    options.style = WS_POPUP;
    TestWindow hidden(options);
    EXPECT_EQ(hidden.Count(WM_SHOWWINDOW), 0);
    EXPECT_FALSE(IsWindowVisible(hidden));
}

TEST(WindowLifetime, AWindowIsHiddenBeforeItGoes)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow parent(options);
    TestWindow child(ChildOf(parent));
    child.Forget();
    DestroyWindow(child);
    EXPECT_EQ(child.Order({ WM_SHOWWINDOW, WM_WINDOWPOSCHANGED, WM_DESTROY, WM_NCDESTROY }),
              (std::vector<UINT>{ WM_SHOWWINDOW, WM_WINDOWPOSCHANGED, WM_DESTROY, WM_NCDESTROY }));
    EXPECT_EQ(child.Last(WM_SHOWWINDOW)->wParam, static_cast<WPARAM>(FALSE));
    parent.Forget();
    DestroyWindow(parent);
    EXPECT_EQ(parent.Order({ WM_SHOWWINDOW, WM_WINDOWPOSCHANGED, WM_DESTROY, WM_NCDESTROY }),
              (std::vector<UINT>{ WM_WINDOWPOSCHANGED, WM_DESTROY, WM_NCDESTROY }));
}

TEST(WindowLifetime, AWindowGoesOnlyOnce)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine begins anew";
    std::vector<BOOL> answers;
    WindowOptions options;
    options.handler = [&answers](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_DESTROY)
            answers.push_back(DestroyWindow(window));
        return std::nullopt;
    };
    TestWindow window(options);
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(answers, (std::vector<BOOL>{ FALSE }));
    EXPECT_EQ(window.Count(WM_NCDESTROY), 1);
    EXPECT_FALSE(DestroyWindow(window));
}

TEST(WindowLifetime, OnlyTheWindowsOfAnOwnerGoWithIt)
{
    TestWindow owner;
    TestWindow other;
    WindowOptions options;
    options.parent = owner;
    TestWindow first(options);
    TestWindow second(options);
    options.parent = first;
    TestWindow nested(options);
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_FALSE(IsWindow(second));
    EXPECT_FALSE(IsWindow(nested));
    EXPECT_TRUE(IsWindow(other));
    EXPECT_EQ(nested.Count(WM_DESTROY), 1);
}

TEST(WindowLifetime, ChildrenOfChildrenGoWithTheirGrandparent)
{
    TestWindow parent;
    TestWindow child(ChildOf(parent));
    TestWindow grandchild(ChildOf(child));
    DestroyWindow(parent);
    EXPECT_FALSE(IsWindow(grandchild));
    EXPECT_EQ(grandchild.Order({ WM_DESTROY, WM_NCDESTROY }), (std::vector<UINT>{ WM_DESTROY, WM_NCDESTROY }));
}

TEST(WindowLifetime, FocusCaptureAndPostsOfAWindowThatGoesAreGone)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE;
    TestWindow parent(options);
    TestWindow child(ChildOf(parent));
    SetFocus(child);
    SetCapture(child);
    DestroyWindow(child);
    EXPECT_NE(GetFocus(), static_cast<HWND>(child));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(WindowLifetime, WhyAWindowWasNotMadeIsTold)
{
    const auto make = [](LPCWSTR className, DWORD style, HWND parent) {
        SetLastError(0);
        return CreateWindowExW(0, className, nullptr, style, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
    };
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    EXPECT_EQ(make(TEXT("NoSuchClassAtAll"), WS_POPUP, nullptr), nullptr);
    if (!cardsong::test::IsWine()) { // Wine says that the class does not exist
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CANNOT_FIND_WND_CLASS));
    }
    for (const auto style : { DWORD{ WS_POPUP }, DWORD{ WS_CHILD } }) {
        EXPECT_EQ(make(TEXT("static"), style, dead), nullptr);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE)) << style;
    }
}

} // namespace
