#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

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

} // namespace
