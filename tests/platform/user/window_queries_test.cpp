// Questions about windows: places, relations, names.
#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

HWND NamedWindow(LPCWSTR text, DWORD style = WS_POPUP, HWND parent = nullptr)
{
    return CreateWindowExW(0, TEXT("static"), text, style, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
}

WindowOptions At(RECT rect, HWND parent = nullptr)
{
    WindowOptions options;
    options.rect = rect;
    if (parent != nullptr)
        options.style = WS_CHILD;
    options.parent = parent;
    return options;
}

TEST(WindowQueries, PlacesAreOfTheScreenAndSizesOfTheWindow)
{
    TestWindow parent(At({ 30, 40, 100, 90 }));
    TestWindow child(At({ 5, 6, 20, 10 }, parent));
    RECT rect{};
    EXPECT_TRUE(GetWindowRect(child, &rect));
    EXPECT_EQ(rect, (RECT{ 35, 46, 55, 56 }));
    EXPECT_TRUE(GetClientRect(child, &rect));
    EXPECT_EQ(rect, (RECT{ 0, 0, 20, 10 }));
    POINT point{ 1, 2 };
    EXPECT_TRUE(ClientToScreen(child, &point));
    EXPECT_TRUE(ScreenToClient(child, &point));
    EXPECT_EQ(point.x, 1);
    EXPECT_EQ(point.y, 2);
}

TEST(WindowQueries, ADeadWindowAnswersNothing)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    RECT rect{ 1, 2, 3, 4 };
    POINT point{ 1, 2 };
    WCHAR name[8];
    SetLastError(0);
    EXPECT_FALSE(GetWindowRect(dead, &rect));
    EXPECT_FALSE(GetClientRect(dead, &rect));
    EXPECT_EQ(rect, (RECT{ 1, 2, 3, 4 }));
    EXPECT_FALSE(ClientToScreen(dead, &point));
    EXPECT_FALSE(ScreenToClient(dead, &point));
    EXPECT_EQ(point.x, 1);
    EXPECT_EQ(GetParent(dead), nullptr);
    EXPECT_EQ(GetWindow(dead, GW_CHILD), nullptr);
    EXPECT_EQ(GetWindow(dead, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetDlgItem(dead, 0), nullptr);
    EXPECT_EQ(GetDlgCtrlID(dead), 0);
    EXPECT_EQ(GetClassNameW(dead, name, 8), 0);
    EXPECT_FALSE(IsWindowVisible(dead));
    EXPECT_FALSE(IsWindowEnabled(dead));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
}

TEST(WindowQueries, OnlyAChildAndAnOwnedPopUpHaveAParent)
{
    TestWindow owner;
    const HWND popUp = NamedWindow(nullptr, WS_POPUP, owner);
    const HWND overlapped = NamedWindow(nullptr, WS_OVERLAPPED, owner);
    const HWND child = NamedWindow(nullptr, WS_CHILD, owner);
    EXPECT_EQ(GetParent(popUp), static_cast<HWND>(owner));
    EXPECT_EQ(GetParent(overlapped), nullptr);
    EXPECT_EQ(GetWindow(overlapped, GW_OWNER), static_cast<HWND>(owner));
    EXPECT_EQ(GetParent(child), static_cast<HWND>(owner));
    EXPECT_EQ(GetWindow(child, GW_OWNER), nullptr);
    EXPECT_EQ(GetParent(owner), nullptr);
    EXPECT_EQ(GetParent(GetDesktopWindow()), nullptr);
}

TEST(WindowQueries, AWindowOwnedThroughAChildBelongsToTheTopLevelWindow)
{
    TestWindow top;
    TestWindow child(At({ 0, 0, 10, 10 }, top));
    const HWND owned = NamedWindow(nullptr, WS_POPUP, child);
    EXPECT_EQ(GetWindow(owned, GW_OWNER), static_cast<HWND>(top));
}

TEST(WindowQueries, SiblingsEndWithNobody)
{
    TestWindow parent;
    TestWindow only(At({ 0, 0, 10, 10 }, parent));
    EXPECT_EQ(GetWindow(only, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(only, GW_HWNDPREV), nullptr);
    EXPECT_EQ(GetWindow(only, GW_HWNDFIRST), static_cast<HWND>(only));
    EXPECT_EQ(GetWindow(only, GW_HWNDLAST), static_cast<HWND>(only));
    EXPECT_EQ(GetWindow(only, GW_CHILD), nullptr);
    EXPECT_EQ(GetWindow(only, 99), nullptr);
    EXPECT_EQ(GetWindow(GetDesktopWindow(), GW_HWNDNEXT), nullptr);
}

TEST(WindowQueries, AWindowIsFoundByItsTextWithoutCase)
{
    const HWND window = NamedWindow(TEXT("Cardsong finds This"));
    EXPECT_EQ(FindWindowW(nullptr, TEXT("cardsong FINDS this")), window);
    EXPECT_EQ(FindWindowW(TEXT("static"), TEXT("Cardsong finds This")), window);
    EXPECT_EQ(FindWindowW(TEXT("button"), TEXT("Cardsong finds This")), nullptr);
    EXPECT_EQ(FindWindowW(nullptr, TEXT("Cardsong finds")), nullptr);
    DestroyWindow(window);
    EXPECT_EQ(FindWindowW(nullptr, TEXT("Cardsong finds This")), nullptr);
}

TEST(WindowQueries, TheTopmostOfTheWindowsOfAClassIsFound)
{
    const HWND below = NamedWindow(TEXT("below"));
    const HWND above = NamedWindow(TEXT("above"));
    EXPECT_EQ(FindWindowW(TEXT("static"), nullptr), above);
    const HWND child = NamedWindow(TEXT("Cardsong child"), WS_CHILD, above);
    EXPECT_NE(child, nullptr);
    EXPECT_EQ(FindWindowW(TEXT("static"), TEXT("Cardsong child")), nullptr) << "children are not looked at";
    DestroyWindow(below);
    DestroyWindow(above);
}

TEST(WindowQueries, AnEnumerationThatNobodyStopsSucceeds)
{
    TestWindow window;
    const WNDENUMPROC goOn = [](HWND, LPARAM parameter) -> BOOL {
        ++*reinterpret_cast<int*>(parameter);
        return TRUE;
    };
    int calls = 0;
    EXPECT_TRUE(EnumWindows(goOn, reinterpret_cast<LPARAM>(&calls)));
    EXPECT_GE(calls, 1);
}

struct Doomed {
    HWND window;
    int calls;
};

TEST(WindowQueries, AWindowThatGoesAmidAnEnumerationIsNotMetAnyMore)
{
    TestWindow below;
    TestWindow above;
    Doomed doomed{ below, 0 };
    const WNDENUMPROC destroyIt = [](HWND window, LPARAM parameter) -> BOOL {
        auto& state = *reinterpret_cast<Doomed*>(parameter);
        state.calls += window == state.window ? 1 : 0;
        if (IsWindow(state.window))
            DestroyWindow(state.window);
        return TRUE;
    };
    EnumWindows(destroyIt, reinterpret_cast<LPARAM>(&doomed));
    EXPECT_EQ(doomed.calls, 0);
}

TEST(WindowQueries, AClassNameNeedsRoom)
{
    TestWindow window;
    WCHAR name[4] = { 'x', 'y', 'z', 0 };
    EXPECT_EQ(GetClassNameW(window, name, 0), 0);
    EXPECT_EQ(name[0], 'x');
    EXPECT_EQ(GetClassNameW(window, name, 2), 1);
    EXPECT_EQ(name[0], 'C');
    EXPECT_EQ(name[1], 0);
    EXPECT_EQ(name[2], 'z');
    EXPECT_EQ(GetClassNameW(GetDesktopWindow(), name, 3), 2);
    EXPECT_EQ(name[0], '#');
}

TEST(WindowQueries, AnswersOfYesAreTrueItself)
{
    TestWindow window;
    const WNDENUMPROC goOn = [](HWND, LPARAM) -> BOOL { return TRUE; };
    RECT rect{};
    POINT point{};
    EXPECT_EQ(EnumWindows(goOn, 0), TRUE);
    EXPECT_EQ(GetWindowRect(window, &rect), TRUE);
    EXPECT_EQ(GetClientRect(window, &rect), TRUE);
    EXPECT_EQ(ClientToScreen(window, &point), TRUE);
    EXPECT_EQ(ScreenToClient(window, &point), TRUE);
    EXPECT_EQ(SendMessageW(window, WM_SETREDRAW, TRUE, 0), 0);
}

TEST(WindowQueries, AnOperandThatIsMissingIsAnError)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine reads through it";
    TestWindow window;
    EXPECT_FALSE(GetWindowRect(window, nullptr));
    EXPECT_FALSE(GetClientRect(window, nullptr));
    EXPECT_FALSE(ClientToScreen(window, nullptr));
    EXPECT_FALSE(ScreenToClient(window, nullptr));
    EXPECT_EQ(GetClassNameW(window, nullptr, 8), 0);
}

TEST(WindowQueries, AHandleThatWasNeverGivenOutIsNoWindow)
{
    TestWindow window;
    for (const ULONG_PTR value : { 0x1'0000, 0x1'0001, 0x1'FFFE, 0x7FFF'0002, 0x7FFF'DFFE })
        EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(value))) << value;
}

} // namespace
