#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

WindowOptions Shown(DWORD style = 0)
{
    WindowOptions options;
    options.style = WS_POPUP | WS_VISIBLE | style;
    options.handler = JustValidate;
    return options;
}

WindowOptions ShownChild(HWND parent, RECT rect)
{
    WindowOptions options;
    options.style = WS_CHILD | WS_VISIBLE;
    options.parent = parent;
    options.rect = rect;
    options.handler = JustValidate;
    return options;
}

RECT UpdateOf(HWND window)
{
    RECT rect{};
    GetUpdateRect(window, &rect, FALSE);
    return rect;
}

TEST(Paint, ShowingSendsNoPaintUntilTheWindowIsUpdatedAndThenExactlyOne)
{
    WindowOptions options;
    options.handler = JustValidate;
    TestWindow window(options);
    ShowWindow(window, SW_SHOW);
    EXPECT_EQ(window.Count(WM_PAINT), 0);
    UpdateWindow(window);
    EXPECT_EQ(window.Count(WM_PAINT), 1);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_PAINT), 1);
}

TEST(Paint, AnEmptyRectAddsNothingAndSwappedEdgesAreNormalised)
{
    TestWindow window(Shown());
    PumpMessages();
    const RECT empty{ 10, 10, 10, 20 };
    InvalidateRect(window, &empty, FALSE);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    const RECT swapped{ 30, 40, 10, 20 };
    InvalidateRect(window, &swapped, FALSE);
    EXPECT_EQ(UpdateOf(window), (RECT{ 10, 20, 30, 40 }));
}

TEST(Paint, InvalidatingNoWindowRepaintsAll)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    EXPECT_TRUE(InvalidateRect(nullptr, nullptr, FALSE));
    PumpMessages();
    EXPECT_EQ(window.Count(WM_PAINT), 1);
}

TEST(Paint, InvalidatingNoWindowErasesAllAskedOrNot)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    InvalidateRect(nullptr, nullptr, FALSE);
    GetUpdateRect(window, nullptr, TRUE);
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 1);
}

TEST(Paint, InvalidatingAHiddenWindowAddsNothing)
{
    TestWindow window;
    EXPECT_TRUE(InvalidateRect(window, nullptr, TRUE));
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST(Paint, InvalidationReachesChildrenUnlessTheParentClipsThem)
{
    TestWindow plain(Shown());
    TestWindow child(ShownChild(plain, { 10, 10, 20, 20 }));
    PumpMessages();
    InvalidateRect(plain, nullptr, FALSE);
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 0, 20, 20 }));
    PumpMessages();

    TestWindow clipping(Shown(WS_CLIPCHILDREN));
    TestWindow kept(ShownChild(clipping, { 10, 10, 20, 20 }));
    PumpMessages();
    InvalidateRect(clipping, nullptr, FALSE);
    EXPECT_FALSE(GetUpdateRect(kept, nullptr, FALSE));
}

TEST(Paint, ValidatingTheParentValidatesTheChildren)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    PumpMessages();
    InvalidateRect(parent, nullptr, FALSE);
    ValidateRect(parent, nullptr);
    EXPECT_FALSE(GetUpdateRect(parent, nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(child, nullptr, FALSE));
}

TEST(Paint, HidingAChildInvalidatesItsRectangleInTheParentOnly)
{
    TestWindow grandparent(Shown());
    TestWindow parent(ShownChild(grandparent, { 10, 10, 60, 60 }));
    TestWindow child(ShownChild(parent, { 5, 6, 20, 20 }));
    PumpMessages();
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(UpdateOf(parent), (RECT{ 5, 6, 25, 26 }));
    EXPECT_FALSE(GetUpdateRect(grandparent, nullptr, FALSE));
}

// Fact: the message is made again and again as long as the region is not validated.
TEST(Paint, AnUnhandledPaintComesBack)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Handle([](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_PAINT)
            return 0;
        return std::nullopt;
    });
    window.Forget();
    InvalidateRect(window, nullptr, FALSE);
    MSG message{};
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(PeekMessageW(&message, window, WM_PAINT, WM_PAINT, PM_REMOVE));
        DispatchMessageW(&message);
    }
    EXPECT_EQ(window.Count(WM_PAINT), 5);
    ValidateRect(window, nullptr);
    EXPECT_FALSE(PeekMessageW(&message, window, WM_PAINT, WM_PAINT, PM_REMOVE));
}

TEST(Paint, BeginPaintWithoutARecordFailsYetValidates)
{
    TestWindow window(Shown());
    PumpMessages();
    InvalidateRect(window, nullptr, FALSE);
    EXPECT_EQ(BeginPaint(window, nullptr), nullptr);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST(Paint, BeginPaintErasesFirstAndNamesTheUpdateRegion)
{
    WindowOptions options = Shown();
    PAINTSTRUCT paint{};
    options.handler = [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ERASEBKGND)
            return 1;
        if (message != WM_PAINT)
            return std::nullopt;
        BeginPaint(window, &paint);
        EndPaint(window, &paint);
        return 0;
    };
    TestWindow window(options);
    PumpMessages();
    window.Forget();
    const RECT part{ 10, 20, 30, 40 };
    InvalidateRect(window, &part, TRUE);
    UpdateWindow(window);
    EXPECT_EQ(window.Order({ WM_ERASEBKGND, WM_PAINT }), (std::vector<UINT>{ WM_PAINT, WM_ERASEBKGND }));
    EXPECT_EQ(paint.rcPaint, part);
    EXPECT_FALSE(paint.fErase);
    window.Forget();
    InvalidateRect(window, &part, FALSE);
    UpdateWindow(window);
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 0);
    EXPECT_EQ(window.Count(WM_PAINT), 1);
}

TEST(Paint, ParentsPaintBeforeTheirChildren)
{
    std::vector<int> order;
    const auto record = [&order](int who) -> MessageHandler {
        return [&order, who](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_PAINT)
                return std::nullopt;
            order.push_back(who);
            PAINTSTRUCT paint{};
            BeginPaint(window, &paint);
            EndPaint(window, &paint);
            return 0;
        };
    };
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    PumpMessages();
    parent.Handle(record(1));
    child.Handle(record(2));
    InvalidateRect(child, nullptr, FALSE);
    InvalidateRect(parent, nullptr, FALSE);
    PumpMessages();
    EXPECT_EQ(order, (std::vector<int>{ 1, 2 }));
}

TEST(Paint, UpdatingAValidWindowSendsNothing)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    UpdateWindow(window);
    EXPECT_EQ(window.Count(WM_PAINT), 0);
}

TEST(Paint, PaintRanksBelowPostedMessages)
{
    TestWindow window(Shown());
    PumpMessages();
    InvalidateRect(window, nullptr, FALSE);
    PostMessageW(window, WM_USER, 0, 0);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, window, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER));
    ASSERT_TRUE(PeekMessageW(&message, window, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_PAINT));
}

TEST(Paint, ADeadWindowHasNoContext)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    PAINTSTRUCT paint{};
    EXPECT_EQ(BeginPaint(dead, &paint), nullptr);
    EXPECT_EQ(GetDC(dead), nullptr);
    EXPECT_FALSE(InvalidateRect(dead, nullptr, FALSE));
}

TEST(Paint, InvalidPartsAddUp)
{
    TestWindow window(Shown());
    PumpMessages();
    const RECT first{ 10, 20, 20, 30 };
    const RECT second{ 40, 50, 60, 70 };
    InvalidateRect(window, &first, FALSE);
    InvalidateRect(window, &second, FALSE);
    EXPECT_EQ(UpdateOf(window), (RECT{ 10, 20, 60, 70 }));
    ValidateRect(window, &first);
    EXPECT_EQ(UpdateOf(window), second);
    const RECT swapped{ 60, 70, 50, 50 };
    ValidateRect(window, &swapped);
    EXPECT_EQ(UpdateOf(window), (RECT{ 40, 50, 50, 70 }));
    EXPECT_TRUE(ValidateRect(window, &second));
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST(Paint, OnlyWhatLiesInTheWindowIsInvalid)
{
    TestWindow window(Shown());
    PumpMessages();
    const RECT beyond{ 90, 95, 200, 300 };
    InvalidateRect(window, &beyond, FALSE);
    EXPECT_EQ(UpdateOf(window), (RECT{ 90, 95, 100, 100 }));
    const RECT outside{ 200, 200, 210, 210 };
    ValidateRect(window, nullptr);
    InvalidateRect(window, &outside, FALSE);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST(Paint, AnInvalidPartOfTheParentIsInvalidInTheChildrenItMeets)
{
    TestWindow parent(Shown());
    TestWindow met(ShownChild(parent, { 10, 20, 30, 40 }));
    TestWindow missed(ShownChild(parent, { 60, 60, 20, 20 }));
    WindowOptions hiddenOptions = ShownChild(parent, { 0, 0, 50, 50 });
    hiddenOptions.style = WS_CHILD;
    TestWindow hidden(hiddenOptions);
    PumpMessages();
    const RECT part{ 5, 25, 15, 30 };
    InvalidateRect(parent, &part, FALSE);
    EXPECT_EQ(UpdateOf(met), (RECT{ 0, 5, 5, 10 }));
    EXPECT_FALSE(GetUpdateRect(missed, nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(hidden, nullptr, FALSE));
}

TEST(Paint, ValidatingAPartOfTheParentValidatesThatPartOfItsChildren)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 10, 20, 30, 40 }));
    PumpMessages();
    InvalidateRect(parent, nullptr, FALSE);
    const RECT upper{ 0, 0, 100, 30 };
    ValidateRect(parent, &upper);
    EXPECT_EQ(UpdateOf(parent), (RECT{ 0, 30, 100, 100 }));
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 10, 30, 40 }));
}

TEST(Paint, ValidatingAParentThatClipsItsChildrenLeavesThemAlone)
{
    TestWindow parent(Shown(WS_CLIPCHILDREN));
    TestWindow child(ShownChild(parent, { 10, 20, 30, 40 }));
    PumpMessages();
    InvalidateRect(child, nullptr, FALSE);
    ValidateRect(parent, nullptr);
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 0, 30, 40 }));
}

TEST(Paint, ValidatingNoWindowPaintsAllAnew)
{
    TestWindow window(Shown());
    PumpMessages();
    EXPECT_TRUE(ValidateRect(nullptr, nullptr));
    EXPECT_EQ(UpdateOf(window), (RECT{ 0, 0, 100, 100 }));
}

TEST(Paint, AskingForTheUpdateRectangleErasesItIfItIsAskedTo)
{
    TestWindow window(Shown());
    PumpMessages();
    InvalidateRect(window, nullptr, TRUE);
    window.Forget();
    EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 0);
    EXPECT_TRUE(GetUpdateRect(window, nullptr, TRUE));
    ASSERT_EQ(window.Count(WM_ERASEBKGND), 1);
    EXPECT_NE(window.Last(WM_ERASEBKGND)->wParam, 0U);
    ValidateRect(window, nullptr);
    InvalidateRect(window, nullptr, FALSE);
    window.Forget();
    EXPECT_TRUE(GetUpdateRect(window, nullptr, TRUE));
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 0) << "nobody asked for its background to be erased";
}

TEST(Paint, AValidWindowHasAnEmptyUpdateRectangle)
{
    TestWindow window(Shown());
    PumpMessages();
    RECT rect{ 1, 2, 3, 4 };
    EXPECT_FALSE(GetUpdateRect(window, &rect, FALSE));
    EXPECT_EQ(rect, (RECT{}));
}

TEST(Paint, APartThatIsToBeErasedHasTheWholeErased)
{
    WindowOptions options = Shown();
    PAINTSTRUCT paint{};
    bool handles = false;
    options.handler = [&](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ERASEBKGND)
            return handles ? 1 : 0;
        if (message != WM_PAINT)
            return std::nullopt;
        BeginPaint(window, &paint);
        EndPaint(window, &paint);
        return 0;
    };
    TestWindow window(options);
    PumpMessages();
    for (const bool erases : { false, true }) {
        handles = erases;
        window.Forget();
        const RECT part{ 10, 20, 30, 40 };
        const RECT other{ 50, 60, 70, 80 };
        InvalidateRect(window, &part, TRUE);
        InvalidateRect(window, &other, FALSE);
        UpdateWindow(window);
        EXPECT_EQ(window.Count(WM_ERASEBKGND), 1);
        EXPECT_EQ(window.Last(WM_ERASEBKGND)->wParam, reinterpret_cast<WPARAM>(paint.hdc));
        EXPECT_EQ(paint.fErase, erases ? FALSE : TRUE);
        EXPECT_EQ(paint.rcPaint, (RECT{ 10, 20, 70, 80 }));
    }
}

TEST(Paint, AWindowThatWasValidatedIsNotErasedLater)
{
    TestWindow window(Shown());
    PumpMessages();
    InvalidateRect(window, nullptr, TRUE);
    ValidateRect(window, nullptr);
    InvalidateRect(window, nullptr, FALSE);
    window.Handle({});
    window.Forget();
    UpdateWindow(window);
    EXPECT_EQ(window.Count(WM_PAINT), 1);
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 0);
}

TEST(Paint, UpdatingAWindowPaintsTheWindowsInsideItAndNoOther)
{
    TestWindow other(Shown());
    TestWindow parent(Shown(WS_CLIPCHILDREN));
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    TestWindow grandchild(ShownChild(child, { 0, 0, 5, 5 }));
    PumpMessages();
    for (HWND window : { static_cast<HWND>(other), static_cast<HWND>(parent), static_cast<HWND>(child),
                         static_cast<HWND>(grandchild) })
        InvalidateRect(window, nullptr, FALSE);
    SetWindowPos(other, HWND_TOP, 200, 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    for (TestWindow* window : { &other, &parent, &child, &grandchild })
        window->Forget();
    grandchild.Handle([](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        PAINTSTRUCT paint{};
        BeginPaint(window, &paint);
        EndPaint(window, &paint);
        return 0;
    });
    child.Handle([](HWND window, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        PAINTSTRUCT paint{};
        BeginPaint(window, &paint);
        EndPaint(window, &paint);
        return 0;
    });
    EXPECT_TRUE(UpdateWindow(parent));
    EXPECT_EQ(parent.Count(WM_PAINT), 1);
    EXPECT_EQ(child.Count(WM_PAINT), 1);
    EXPECT_EQ(grandchild.Count(WM_PAINT), 1);
    EXPECT_EQ(other.Count(WM_PAINT), 0);
}

TEST(Paint, AContextIsReleasedOnce)
{
    TestWindow window(Shown());
    const HDC context = GetDC(window);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(ReleaseDC(window, context), 1);
    EXPECT_EQ(ReleaseDC(window, context), 0);
    const HDC screen = GetDC(nullptr);
    EXPECT_NE(screen, nullptr);
    EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
}

TEST(Paint, TheEndOfAPaintGivesItsContextBack)
{
    TestWindow window(Shown());
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(window, &paint);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(paint.hdc, context);
    EXPECT_TRUE(EndPaint(window, &paint));
    EXPECT_EQ(ReleaseDC(window, context), 0);
}

TEST(Paint, ADeadWindowIsNeitherValidatedNorAsked)
{
    HWND dead = nullptr;
    {
        TestWindow window;
        dead = window;
    }
    RECT rect{ 1, 2, 3, 4 };
    EXPECT_FALSE(ValidateRect(dead, nullptr));
    EXPECT_FALSE(GetUpdateRect(dead, &rect, FALSE));
}

TEST(Paint, AChildOfAHiddenWindowOwesNothing)
{
    WindowOptions options = Shown();
    options.style = WS_POPUP;
    TestWindow parent(options);
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    InvalidateRect(child, nullptr, TRUE);
    EXPECT_FALSE(GetUpdateRect(child, nullptr, FALSE));
}

TEST(Paint, HitTestsOfAWindowTakeItWhole)
{
    WindowOptions options = Shown();
    options.rect = { 10, 20, 30, 40 };
    TestWindow window(options);
    struct Case {
        int x;
        int y;
        LRESULT part;
    };
    for (const auto& [x, y, part] : { Case{ 10, 20, HTCLIENT }, Case{ 39, 59, HTCLIENT }, Case{ 9, 20, HTNOWHERE },
                                      Case{ 10, 19, HTNOWHERE }, Case{ 40, 59, HTNOWHERE }, Case{ 39, 60, HTNOWHERE } })
        EXPECT_EQ(SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)), part) << x << ", " << y;
}

TEST(Paint, APaintLeftToTheDefaultIsDone)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine sends no WM_ERASEBKGND here";
    WindowOptions options = Shown();
    options.handler = nullptr;
    TestWindow window(options);
    window.Forget();
    UpdateWindow(window);
    EXPECT_EQ(window.Order({ WM_PAINT, WM_ERASEBKGND }), (std::vector<UINT>{ WM_PAINT, WM_ERASEBKGND }));
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
}

TEST(Paint, InvalidatingNoWindowReachesTheChildrenOfAParentThatClipsThem)
{
    TestWindow parent(Shown(WS_CLIPCHILDREN));
    TestWindow child(ShownChild(parent, { 10, 10, 20, 20 }));
    PumpMessages();
    InvalidateRect(nullptr, nullptr, FALSE);
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 0, 20, 20 }));
}

TEST(Paint, InvalidationStopsAtAChildThatClipsItsChildren)
{
    TestWindow window(Shown());
    auto options = ShownChild(window, { 10, 10, 60, 60 });
    options.style |= WS_CLIPCHILDREN;
    TestWindow child(options);
    TestWindow grandchild(ShownChild(child, { 5, 5, 20, 20 }));
    PumpMessages();
    InvalidateRect(window, nullptr, FALSE);
    EXPECT_EQ(UpdateOf(child), (RECT{ 0, 0, 60, 60 }));
    EXPECT_EQ(UpdateOf(grandchild), (RECT{}));
}

TEST(Paint, AWindowThatIsShownOwesTheChildrenOfItsChildrenToo)
{
    WindowOptions options = Shown(WS_CLIPCHILDREN);
    options.style &= ~WS_VISIBLE;
    TestWindow window(options);
    options = ShownChild(window, { 10, 10, 60, 60 });
    options.style |= WS_CLIPCHILDREN;
    TestWindow child(options);
    TestWindow grandchild(ShownChild(child, { 5, 5, 20, 20 }));
    ShowWindow(window, SW_SHOW);
    EXPECT_EQ(UpdateOf(grandchild), (RECT{ 0, 0, 20, 20 }));
}

TEST(Paint, WhatAHiddenChildUncoversIsErasedByItsParent)
{
    TestWindow parent(Shown());
    TestWindow child(ShownChild(parent, { 5, 6, 20, 20 }));
    PumpMessages();
    parent.Forget();
    ShowWindow(child, SW_HIDE);
    GetUpdateRect(parent, nullptr, TRUE);
    EXPECT_EQ(parent.Count(WM_ERASEBKGND), 1);
}

TEST(Paint, InvalidatingAndValidatingSucceed)
{
    TestWindow window(Shown());
    EXPECT_EQ(InvalidateRect(window, nullptr, FALSE), TRUE);
    EXPECT_EQ(ValidateRect(window, nullptr), TRUE);
    EXPECT_EQ(InvalidateRect(nullptr, nullptr, FALSE), TRUE);
    EXPECT_EQ(ValidateRect(nullptr, nullptr), TRUE);
}

TEST(Paint, AskingForTheUpdateRectangleErasesItOnce)
{
    TestWindow window(Shown());
    PumpMessages();
    window.Forget();
    InvalidateRect(window, nullptr, TRUE);
    GetUpdateRect(window, nullptr, TRUE);
    GetUpdateRect(window, nullptr, TRUE);
    EXPECT_EQ(window.Count(WM_ERASEBKGND), 1);
}

TEST(Paint, ASinglePixelIsInvalid)
{
    TestWindow window(Shown());
    PumpMessages();
    const RECT pixel{ 10, 20, 11, 21 };
    InvalidateRect(window, &pixel, FALSE);
    RECT update{};
    EXPECT_EQ(GetUpdateRect(window, &update, FALSE), TRUE);
    EXPECT_EQ(update, pixel);
}

TEST(Paint, APartIsNamedFromTheCornerOfItsWindow)
{
    auto options = Shown();
    options.rect = { 30, 20, 100, 100 };
    TestWindow window(options);
    TestWindow child(ShownChild(window, { 7, 8, 50, 50 }));
    PumpMessages();
    const RECT part{ 1, 2, 11, 13 };
    InvalidateRect(child, &part, FALSE);
    EXPECT_EQ(UpdateOf(child), part);
    InvalidateRect(window, &part, FALSE);
    EXPECT_EQ(UpdateOf(window), part);
}

TEST(Paint, APaintTellsWhetherTheBackgroundIsStillToBeErased)
{
    std::vector<BOOL> told;
    LRESULT erased = 0;
    TestWindow window(Shown());
    window.Handle([&](HWND own, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ERASEBKGND)
            return erased;
        if (message != WM_PAINT)
            return std::nullopt;
        PAINTSTRUCT paint;
        std::memset(&paint, 0xFF, sizeof paint); // what stands there before does not count
        BeginPaint(own, &paint);
        told.push_back(paint.fErase);
        EndPaint(own, &paint);
        return 0;
    });
    PumpMessages();
    told.clear();
    for (const LRESULT answer : { 0, 1 }) {
        erased = answer;
        InvalidateRect(window, nullptr, TRUE);
        UpdateWindow(window);
    }
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
    EXPECT_EQ(told, (std::vector<BOOL>{ TRUE, FALSE, FALSE }));
}

TEST(Paint, WithoutARecordNothingIsBegunOrEnded)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine tells no error";
    TestWindow window(Shown());
    SetLastError(0);
    EXPECT_EQ(BeginPaint(window, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(EndPaint(window, nullptr), FALSE);
}

} // namespace
