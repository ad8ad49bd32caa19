#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

namespace {

WindowOptions ChildOf(HWND parent, int id = 0)
{
    WindowOptions options;
    options.style = WS_CHILD;
    options.parent = parent;
    options.id = id;
    return options;
}

struct FoundWindows {
    std::vector<HWND> wanted;
    std::vector<HWND> found;
};

BOOL CALLBACK CollectWanted(HWND window, LPARAM parameter)
{
    auto& windows = *reinterpret_cast<FoundWindows*>(parameter);
    if (std::find(windows.wanted.begin(), windows.wanted.end(), window) != windows.wanted.end())
        windows.found.push_back(window);
    return TRUE;
}

// The given top-level windows, topmost first.
std::vector<HWND> OrderOf(std::vector<HWND> windows)
{
    FoundWindows search{ std::move(windows), {} };
    EnumWindows(CollectWanted, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

TEST(WindowTree, ANewChildGoesToTheBottomOfItsSiblings)
{
    TestWindow parent;
    TestWindow first(ChildOf(parent));
    TestWindow second(ChildOf(parent));
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(first));
    EXPECT_EQ(GetWindow(first, GW_HWNDNEXT), static_cast<HWND>(second));
    EXPECT_EQ(GetWindow(second, GW_HWNDPREV), static_cast<HWND>(first));
    EXPECT_EQ(GetWindow(second, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(second, GW_HWNDFIRST), static_cast<HWND>(first));
    EXPECT_EQ(GetWindow(first, GW_HWNDLAST), static_cast<HWND>(second));
}

TEST(WindowTree, ANewTopLevelWindowGoesToTheTop)
{
    TestWindow first;
    TestWindow second;
    EXPECT_EQ(OrderOf({ first, second }), (std::vector<HWND>{ second, first }));
}

TEST(WindowTree, OwnedWindowsStayAboveTheirOwner)
{
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    TestWindow other;
    SetWindowPos(owner, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(OrderOf({ owner, owned, other }), (std::vector<HWND>{ owned, owner, other }));
}

TEST(WindowTree, TopmostWindowsStayAboveTheOthers)
{
    TestWindow ordinary;
    TestWindow topmost;
    SetWindowPos(topmost, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowPos(ordinary, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(OrderOf({ ordinary, topmost }), (std::vector<HWND>{ topmost, ordinary }));
    EXPECT_NE(GetWindowLongPtrW(topmost, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    SetWindowPos(topmost, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowPos(ordinary, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(OrderOf({ ordinary, topmost }), (std::vector<HWND>{ ordinary, topmost }));
}

TEST(WindowTree, AChildCanBePutBelowANamedSibling)
{
    TestWindow parent;
    TestWindow first(ChildOf(parent));
    TestWindow second(ChildOf(parent));
    TestWindow third(ChildOf(parent));
    SetWindowPos(first, second, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(second));
    EXPECT_EQ(GetWindow(second, GW_HWNDNEXT), static_cast<HWND>(first));
    SetWindowPos(third, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(GetWindow(parent, GW_CHILD), static_cast<HWND>(third));
}

TEST(WindowTree, AWindowIsFoundByItsClassWithoutCase)
{
    TestWindow window;
    WString upper(window.ClassName());
    for (WCHAR& unit : upper)
        if (unit >= 'a' && unit <= 'z')
            unit = static_cast<WCHAR>(unit - 'a' + 'A');
    EXPECT_EQ(FindWindowW(upper.c_str(), nullptr), static_cast<HWND>(window));
    EXPECT_EQ(FindWindowW(TEXT("NoSuchClassAtAll"), nullptr), nullptr);
}

TEST(WindowTree, EnumerationStopsWhenTheCallbackSaysSo)
{
    TestWindow window;
    int calls = 0;
    const WNDENUMPROC stopAtOnce = [](HWND, LPARAM parameter) -> BOOL {
        ++*reinterpret_cast<int*>(parameter);
        return FALSE;
    };
    EXPECT_FALSE(EnumWindows(stopAtOnce, reinterpret_cast<LPARAM>(&calls)));
    EXPECT_EQ(calls, 1);
}

// Fact: only direct children count, and with equal ids the topmost.
TEST(WindowTree, AnItemIsADirectChildAndTheTopmostOfEqualIdsWins)
{
    TestWindow parent;
    auto outerOptions = ChildOf(parent, 1);
    outerOptions.exStyle = WS_EX_CONTROLPARENT;
    TestWindow outer(outerOptions);
    TestWindow inner(ChildOf(outer, 2));
    TestWindow first(ChildOf(parent, 3));
    TestWindow second(ChildOf(parent, 3));
    EXPECT_EQ(GetDlgItem(parent, 2), nullptr);
    EXPECT_EQ(GetDlgItem(parent, 3), static_cast<HWND>(first));
    SetWindowPos(second, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(GetDlgItem(parent, 3), static_cast<HWND>(second));
    EXPECT_EQ(GetDlgCtrlID(inner), 2);
}

} // namespace
