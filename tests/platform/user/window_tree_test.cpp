#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

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

HWND Put(HWND window, HWND after)
{
    SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return window;
}

TEST(WindowTree, AChildGoesToTheTopToTheBottomAndBelowASibling)
{
    TestWindow parent;
    TestWindow first(ChildOf(parent));
    TestWindow second(ChildOf(parent));
    TestWindow third(ChildOf(parent));
    const auto order = [&] {
        std::vector<HWND> children;
        for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
            children.push_back(child);
        return children;
    };
    Put(first, HWND_BOTTOM);
    EXPECT_EQ(order(), (std::vector<HWND>{ second, third, first }));
    Put(third, HWND_TOP);
    EXPECT_EQ(order(), (std::vector<HWND>{ third, second, first }));
    Put(third, first);
    EXPECT_EQ(order(), (std::vector<HWND>{ second, first, third }));
    Put(third, second);
    EXPECT_EQ(order(), (std::vector<HWND>{ second, third, first }));
}

TEST(WindowTree, PuttingAWindowWhereItIsTellsNobody)
{
    TestWindow parent;
    TestWindow first(ChildOf(parent));
    TestWindow second(ChildOf(parent));
    first.Forget();
    second.Forget();
    Put(first, HWND_TOP);
    Put(second, HWND_BOTTOM);
    Put(second, first);
    EXPECT_EQ(first.Count(WM_WINDOWPOSCHANGED), 0);
    EXPECT_EQ(second.Count(WM_WINDOWPOSCHANGED), 0);
    Put(first, HWND_BOTTOM);
    EXPECT_EQ(first.Count(WM_WINDOWPOSCHANGED), 1);
}

TEST(WindowTree, ATopLevelWindowGoesToTheBottomAndBelowAnother)
{
    TestWindow first;
    TestWindow second;
    TestWindow third;
    Put(third, HWND_BOTTOM);
    EXPECT_EQ(OrderOf({ first, second, third }), (std::vector<HWND>{ second, first, third }));
    Put(second, first);
    EXPECT_EQ(OrderOf({ first, second, third }), (std::vector<HWND>{ first, second, third }));
}

TEST(WindowTree, TheBandsHoldWhateverAWindowIsToStandAfter)
{
    TestWindow ordinary;
    TestWindow other;
    TestWindow topmost;
    TestWindow higher;
    Put(topmost, HWND_TOPMOST);
    Put(higher, HWND_TOPMOST);
    const std::vector<HWND> all{ ordinary, other, topmost, higher };
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ higher, topmost, other, ordinary }));
    Put(ordinary, HWND_TOP);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ higher, topmost, ordinary, other }));
    Put(topmost, HWND_TOP);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ topmost, higher, ordinary, other }));
    Put(topmost, HWND_BOTTOM);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ higher, ordinary, other, topmost }));
    EXPECT_EQ(GetWindowLongPtrW(topmost, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, OwnedWindowsChangeTheBandWithTheirOwner)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine leaves the owned window topmost";
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    TestWindow other;
    Put(owner, HWND_TOPMOST);
    EXPECT_NE(GetWindowLongPtrW(owned, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_EQ(OrderOf({ owner, owned, other }), (std::vector<HWND>{ owned, owner, other }));
    EXPECT_EQ(GetWindowLongPtrW(other, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    Put(owner, HWND_NOTOPMOST);
    EXPECT_EQ(GetWindowLongPtrW(owned, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, ANewWindowGoesToTheTopOfItsBand)
{
    WindowOptions options;
    options.exStyle = WS_EX_TOPMOST;
    TestWindow topmost(options);
    TestWindow ordinary;
    TestWindow newer;
    TestWindow higher(options);
    EXPECT_EQ(OrderOf({ topmost, ordinary, newer, higher }), (std::vector<HWND>{ higher, topmost, newer, ordinary }));
}

TEST(WindowTree, SeveralOwnedWindowsKeepTheirOrderAboveTheirOwner)
{
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow first(options);
    TestWindow second(options);
    TestWindow other;
    const std::vector<HWND> all{ owner, first, second, other };
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ other, second, first, owner }));
    Put(owner, HWND_TOP);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ second, first, owner, other }));
}

TEST(WindowTree, AnOwnedWindowGoesNoLowerThanItsOwner)
{
    TestWindow lowest;
    TestWindow owner;
    TestWindow between;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    const std::vector<HWND> all{ lowest, owner, between, owned };
    ASSERT_EQ(OrderOf(all), (std::vector<HWND>{ owned, between, owner, lowest }));
    Put(owned, HWND_BOTTOM);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ between, owned, owner, lowest }));
    Put(owned, lowest);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ between, owned, owner, lowest }));
    Put(owned, between);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ between, owned, owner, lowest }));
}

TEST(WindowTree, ANewOwnedWindowStandsAboveAllOthersNotJustAboveItsOwner)
{
    TestWindow owner;
    TestWindow other;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    EXPECT_EQ(OrderOf({ owner, other, owned }), (std::vector<HWND>{ owned, other, owner }));
}

TEST(WindowTree, AnOwnedWindowThatLeavesTheTopmostBandStandsBelowItsTopmostOwner)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine keeps it above its owner";
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    TestWindow other;
    const std::vector<HWND> all{ owner, owned, other };
    Put(owner, HWND_TOPMOST);
    Put(owned, HWND_NOTOPMOST);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ owner, owned, other }));
    Put(owned, HWND_BOTTOM);
    EXPECT_EQ(OrderOf(all), (std::vector<HWND>{ owner, owned, other }));
}

TEST(WindowTree, ATopmostWindowWithAnOrdinaryOwnerStaysInItsBand)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine lets it leave its band";
    TestWindow owner;
    TestWindow other;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    Put(owned, HWND_TOPMOST);
    Put(owned, other);
    EXPECT_EQ(OrderOf({ owner, other, owned }), (std::vector<HWND>{ owned, other, owner }));
}

TEST(WindowTree, AWindowThatLeavesTheTopmostBandIsTheFirstOfTheOthers)
{
    TestWindow first;
    TestWindow second;
    TestWindow window;
    Put(window, HWND_TOPMOST);
    Put(window, HWND_NOTOPMOST);
    EXPECT_EQ(OrderOf({ first, second, window }), (std::vector<HWND>{ window, second, first }));
}

TEST(WindowTree, AnOrdinaryWindowPutBelowATopmostOneGoesBelowThemAll)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine lets it join the band";
    TestWindow low;
    TestWindow high;
    TestWindow ordinary;
    Put(low, HWND_TOPMOST);
    Put(high, HWND_TOPMOST);
    Put(ordinary, high);
    EXPECT_EQ(OrderOf({ low, high, ordinary }), (std::vector<HWND>{ high, low, ordinary }));
}

TEST(WindowTree, ABandThatAWindowIsInAlreadyTellsNobody)
{
    TestWindow window;
    Put(window, HWND_TOPMOST);
    window.Forget();
    Put(window, HWND_TOPMOST);
    EXPECT_EQ(window.Count(WM_WINDOWPOSCHANGED), 0);
    Put(window, HWND_NOTOPMOST);
    window.Forget();
    Put(window, HWND_NOTOPMOST);
    EXPECT_EQ(window.Count(WM_WINDOWPOSCHANGED), 0);
}

TEST(WindowTree, AChildIsNeverTopmost)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine calls it so";
    TestWindow parent;
    TestWindow child(ChildOf(parent));
    Put(child, HWND_TOPMOST);
    EXPECT_EQ(GetWindowLongPtrW(child, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, TheOnlyTopmostWindowGoesToTheBottomToo)
{
    TestWindow low;
    TestWindow high;
    TestWindow window;
    Put(window, HWND_TOPMOST);
    Put(window, HWND_BOTTOM);
    EXPECT_EQ(OrderOf({ low, high, window }), (std::vector<HWND>{ high, low, window }));
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, ATopmostOwnedWindowStaysTopmostWhenItsOwnerGoesToTheBottom)
{
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    Put(owner, HWND_TOPMOST);
    Put(owned, HWND_TOPMOST);
    Put(owner, HWND_BOTTOM);
    EXPECT_EQ(GetWindowLongPtrW(owner, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_NE(GetWindowLongPtrW(owned, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, RaisingAnOwnedWindowRaisesItsOwner)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine leaves the owner where it is";
    TestWindow owner;
    WindowOptions options;
    options.parent = owner;
    TestWindow owned(options);
    TestWindow other;
    Put(owned, HWND_TOP);
    EXPECT_EQ(OrderOf({ owner, owned, other }), (std::vector<HWND>{ owned, owner, other }));
}

} // namespace
