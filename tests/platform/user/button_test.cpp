#include "tests/platform/user/pump.h"
#include "tests/platform/wine.h"

#include <gtest/gtest.h>

namespace {

struct DrawRequest {
    UINT action;
    UINT state;
    bool operator==(const DrawRequest&) const = default;
};

// A parent that remembers what its buttons ask of it.
class ButtonTest : public testing::Test {
protected:
    ButtonTest() : m_parent(ParentOptions()) { SetFocus(m_parent); }

    HWND MakeButton(DWORD style, int id = 7)
    {
        const auto handle = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id));
        const HWND button = CreateWindowExW(0, TEXT("button"), nullptr, WS_CHILD | WS_VISIBLE | style, 10, 10, 40, 20,
                                            m_parent, handle, nullptr, nullptr);
        PumpMessages();
        m_draws.clear();
        m_events.clear();
        return button;
    }

    void Tap(HWND button, int x = 1, int y = 1)
    {
        SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }

    std::vector<DrawRequest> m_draws;
    std::vector<WPARAM> m_events; // the wParam of each WM_COMMAND
    std::function<void(const DRAWITEMSTRUCT&)> m_onDraw;
    TestWindow m_parent;

private:
    WindowOptions ParentOptions()
    {
        WindowOptions options;
        options.style = WS_POPUP | WS_VISIBLE;
        options.handler = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            if (message == WM_COMMAND)
                m_events.push_back(wParam);
            if (message == WM_DRAWITEM) {
                const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
                m_draws.push_back({ request.itemAction, request.itemState });
                if (m_onDraw)
                    m_onDraw(request);
                return TRUE;
            }
            return JustValidate(window, message, wParam, lParam);
        };
        return options;
    }
};

TEST_F(ButtonTest, GainingTheFocusAsksTheOwnerToDrawItAndNotifies)
{
    const HWND button = MakeButton(BS_OWNERDRAW | BS_NOTIFY);
    m_parent.Forget();
    SetFocus(button);
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_FOCUS, ODS_FOCUS } }));
    EXPECT_EQ(m_parent.Order({ WM_CTLCOLORBTN, WM_DRAWITEM, WM_COMMAND }),
              (std::vector<UINT>{ WM_CTLCOLORBTN, WM_DRAWITEM, WM_COMMAND }));
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_SETFOCUS) }));
}

TEST_F(ButtonTest, LosingTheFocusAsksTheOwnerWithNoState)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SetFocus(button);
    m_draws.clear();
    SetFocus(m_parent);
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_FOCUS, 0 } }));
    EXPECT_TRUE(m_events.empty());
}

TEST_F(ButtonTest, SettingTheStateDrawsAtOnce)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_SELECT, ODS_SELECTED } }));
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, BM_SETSTATE, FALSE, 0);
    EXPECT_EQ(m_draws.back(), (DrawRequest{ ODA_SELECT, 0 }));
}

TEST_F(ButtonTest, PaintingAsksForTheWholeButton)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    InvalidateRect(button, nullptr, FALSE);
    UpdateWindow(button);
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_DRAWENTIRE, 0 } }));
}

TEST_F(ButtonTest, ADisabledButtonIsDrawnDisabled)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    EnableWindow(button, FALSE);
    UpdateWindow(button);
    ASSERT_FALSE(m_draws.empty());
    EXPECT_EQ(m_draws.back(), (DrawRequest{ ODA_DRAWENTIRE, ODS_DISABLED }));
}

TEST_F(ButtonTest, CheckMarksAreIgnored)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, BM_SETCHECK, 1, 0);
    EXPECT_EQ(SendMessageW(button, BM_GETCHECK, 0, 0), 0);
    EXPECT_TRUE(m_draws.empty());
}

TEST_F(ButtonTest, APressTakesCaptureThenFocusThenDrawsPushed)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    bool hadCapture = false;
    m_onDraw = [&](const DRAWITEMSTRUCT& request) {
        if (request.itemAction == ODA_FOCUS)
            hadCapture = GetCapture() == button;
    };
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_TRUE(hadCapture);
    EXPECT_EQ(m_draws,
              (std::vector<DrawRequest>{ { ODA_FOCUS, ODS_FOCUS }, { ODA_SELECT, ODS_SELECTED | ODS_FOCUS } }));
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
}

TEST_F(ButtonTest, AReleaseInsideDrawsReleasedFreesTheCaptureAndClicks)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    bool wasFree = false;
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    m_draws.clear();
    m_parent.Handle([&](HWND, UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_COMMAND) {
            wasFree = GetCapture() == nullptr;
            m_events.push_back(wParam);
            EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(button));
        }
        return std::nullopt;
    });
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(39, 19));
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) }));
    EXPECT_TRUE(wasFree);
}

TEST_F(ButtonTest, AReleaseOutsideIsNoClick)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(40, 1));
    EXPECT_TRUE(m_events.empty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ButtonTest, DraggingOutAndInChangesTheLook)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(button, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-5, 1));
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 1));
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 1));
    EXPECT_EQ(m_events.size(), 1U);
}

// Skinned buttons never keep the focus: their owner takes it back while they draw.
TEST_F(ButtonTest, AnOwnerThatTakesTheFocusBackWhileDrawingStillGetsTheClick)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    const HWND owner = m_parent;
    for (const UINT action : { ODA_FOCUS, ODA_SELECT }) {
        m_events.clear();
        m_onDraw = [&](const DRAWITEMSTRUCT& request) {
            const bool isFocused = (request.itemState & (ODS_FOCUS | ODS_SELECTED)) == ODS_FOCUS;
            if (request.itemAction == action && isFocused)
                SetFocus(owner);
        };
        Tap(button);
        EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) })) << action;
        EXPECT_EQ(GetFocus(), owner) << action;
        EXPECT_EQ(GetCapture(), nullptr) << action;
    }
}

TEST_F(ButtonTest, AClickMessageClicks)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) }));
}

TEST_F(ButtonTest, ADisabledButtonStillAnswersSentMouseMessages)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    EnableWindow(button, FALSE);
    Tap(button);
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(ButtonTest, AnInvisibleButtonDrawsNothing)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    ShowWindow(button, SW_HIDE);
    m_draws.clear();
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    InvalidateRect(button, nullptr, TRUE);
    PumpMessages();
    EXPECT_TRUE(m_draws.empty());
}

TEST_F(ButtonTest, TheSecondOfTwoQuickTapsIsADoubleClickOfAnOwnerDrawnButton)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_DOUBLECLICKED) }));
}

TEST_F(ButtonTest, TheSpaceBarPressesAndClicks)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SetFocus(button);
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 0);
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) }));
}

TEST_F(ButtonTest, LosingTheCaptureEndsThePressWithoutAClick)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    ReleaseCapture();
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_TRUE(m_events.empty());
}

TEST_F(ButtonTest, APressThatLostTheCaptureLeavesTheSpaceBarFree)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    ReleaseCapture();
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 0);
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) }));
}

TEST_F(ButtonTest, ItsTypeAnswersTheDialog)
{
    EXPECT_EQ(SendMessageW(MakeButton(BS_PUSHBUTTON), WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    EXPECT_EQ(SendMessageW(MakeButton(BS_DEFPUSHBUTTON), WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    EXPECT_EQ(SendMessageW(MakeButton(BS_OWNERDRAW), WM_GETDLGCODE, 0, 0), DLGC_BUTTON);
}

TEST_F(ButtonTest, AStaticLetsTapsThroughUnlessItNotifies)
{
    const HWND plain = CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD | WS_VISIBLE | SS_SIMPLE, 0, 0, 10, 10,
                                       m_parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(SendMessageW(plain, WM_NCHITTEST, 0, MAKELPARAM(1, 1)), HTTRANSPARENT);
    const HWND notifying = CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD | WS_VISIBLE | SS_NOTIFY, 0, 0, 10, 10,
                                           m_parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(SendMessageW(notifying, WM_NCHITTEST, 0, MAKELPARAM(1, 1)), HTCLIENT);
    EXPECT_EQ(SendMessageW(plain, WM_GETDLGCODE, 0, 0), DLGC_STATIC);
}

TEST_F(ButtonTest, AStaticAsksItsParentForItsColours)
{
    const HWND label = CreateWindowExW(0, TEXT("static"), TEXT("a"), WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_parent,
                                       nullptr, nullptr, nullptr);
    m_parent.Forget();
    UpdateWindow(label);
    EXPECT_EQ(m_parent.Count(WM_CTLCOLORSTATIC), 1);
    EXPECT_EQ(m_parent.Last(WM_CTLCOLORSTATIC)->lParam, reinterpret_cast<LPARAM>(label));
}

TEST_F(ButtonTest, ItsOwnerLearnsWhichButtonToDrawWhereAndOnWhat)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    DRAWITEMSTRUCT request{};
    m_onDraw = [&](const DRAWITEMSTRUCT& asked) { request = asked; };
    m_parent.Forget();
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(request.CtlType, static_cast<UINT>(ODT_BUTTON));
    EXPECT_EQ(request.CtlID, 7U);
    EXPECT_EQ(request.hwndItem, button);
    EXPECT_EQ(request.rcItem, (RECT{ 0, 0, 40, 20 }));
    EXPECT_NE(request.hDC, nullptr);
    ASSERT_EQ(m_parent.Count(WM_CTLCOLORBTN), 1);
    EXPECT_EQ(m_parent.Last(WM_CTLCOLORBTN)->wParam, reinterpret_cast<WPARAM>(request.hDC));
    EXPECT_EQ(m_parent.Last(WM_CTLCOLORBTN)->lParam, reinterpret_cast<LPARAM>(button));
    EXPECT_EQ(m_parent.Last(WM_DRAWITEM)->wParam, 7U);
}

TEST_F(ButtonTest, OnlyAnOwnerDrawnButtonAsksItsOwnerToDraw)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    InvalidateRect(button, nullptr, FALSE);
    UpdateWindow(button);
    EXPECT_TRUE(m_draws.empty());
}

TEST_F(ButtonTest, SettingTheStateThatItHasDrawsNothing)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine draws all the same";
    const HWND button = MakeButton(BS_OWNERDRAW);
    SendMessageW(button, BM_SETSTATE, FALSE, 0);
    EXPECT_TRUE(m_draws.empty());
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(m_draws.size(), 1U);
}

TEST_F(ButtonTest, ItsStateTellsPushedAndFocusedAndNothingElse)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine tells a state of its own with them";
    const HWND button = MakeButton(BS_PUSHBUTTON);
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0), 0);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0), BST_PUSHED | BST_FOCUS);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0), BST_FOCUS);
}

TEST_F(ButtonTest, ItAnswersNothingToPointerKeysAndFocus)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    for (const UINT message : { WM_ENABLE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                                WM_CAPTURECHANGED, WM_SETFOCUS, WM_KILLFOCUS, WM_KEYDOWN, WM_KEYUP })
        EXPECT_EQ(SendMessageW(button, message, 0, 0), 0) << message;
}

TEST_F(ButtonTest, ANewTypeShowsAtOnceOnlyIfItIsAskedTo)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
    EXPECT_FALSE(GetUpdateRect(button, nullptr, FALSE));
    EXPECT_EQ(SendMessageW(button, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    EXPECT_NE(static_cast<DWORD>(GetWindowLongPtrW(button, GWL_STYLE)) & WS_CHILD, 0U);
    SendMessageW(button, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    RECT update{};
    EXPECT_TRUE(GetUpdateRect(button, &update, FALSE));
    EXPECT_EQ(update, (RECT{ 0, 0, 40, 20 }));
}

TEST_F(ButtonTest, ItRemembersItsFontAndShowsItIfItIsAskedTo)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    const HFONT font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    EXPECT_FALSE(GetUpdateRect(button, nullptr, FALSE));
    EXPECT_EQ(SendMessageW(button, WM_GETFONT, 0, 0), reinterpret_cast<LRESULT>(font));
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0), 0);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_TRUE(GetUpdateRect(button, nullptr, FALSE));
}

TEST_F(ButtonTest, NothingIsErasedBeneathIt)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    const HDC context = GetDC(button);
    EXPECT_EQ(SendMessageW(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(button, context);
}

TEST_F(ButtonTest, EnablingItAgainPaintsItWhole)
{
    const HWND button = MakeButton(BS_OWNERDRAW);
    EnableWindow(button, FALSE);
    PumpMessages();
    m_draws.clear();
    EnableWindow(button, TRUE);
    PumpMessages();
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_DRAWENTIRE, 0 } }));
}

TEST_F(ButtonTest, ItTellsOfLosingTheFocusIfItNotifies)
{
    const HWND button = MakeButton(BS_PUSHBUTTON | BS_NOTIFY);
    SetFocus(button);
    m_events.clear();
    SetFocus(m_parent);
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_KILLFOCUS) }));
}

TEST_F(ButtonTest, LosingTheFocusAmidAPressEndsThePress)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SetFocus(m_parent);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0), 0);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_TRUE(m_events.empty());
}

TEST_F(ButtonTest, GainingTheFocusAmidAPressKeepsTheCapture)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(button, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetCapture(), button);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(ButtonTest, TheSecondOfTwoQuickTapsPressesAPushButtonAgainUnlessItNotifies)
{
    const HWND plain = MakeButton(BS_PUSHBUTTON);
    SendMessageW(plain, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_NE(SendMessageW(plain, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(plain, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_CLICKED) }));
    const HWND notifying = MakeButton(BS_PUSHBUTTON | BS_NOTIFY);
    SendMessageW(notifying, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(7, BN_DOUBLECLICKED) }));
    EXPECT_EQ(SendMessageW(notifying, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
}

TEST_F(ButtonTest, AReleaseWithoutAPressIsNoClick)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_TRUE(m_events.empty());
}

TEST_F(ButtonTest, AReleaseInsideAfterThePointerWasDraggedOutIsNoClick)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(button, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(1, -1));
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    EXPECT_TRUE(m_events.empty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ButtonTest, ItsEdgesAreItsFirstAndLastPixels)
{
    struct Case {
        int x;
        int y;
        bool isInside;
    };
    for (const auto& [x, y, isInside] : { Case{ 0, 0, true }, Case{ 39, 19, true }, Case{ 40, 19, false },
                                          Case{ 39, 20, false }, Case{ -1, 0, false }, Case{ 0, -1, false } }) {
        const HWND button = MakeButton(BS_PUSHBUTTON);
        SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
        SendMessageW(button, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y));
        EXPECT_EQ((SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0, isInside) << x << ", " << y;
        SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        EXPECT_EQ(m_events.size(), isInside ? 1U : 0U) << x << ", " << y;
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, APointerThatMovesWithoutBeingDownOrCapturedChangesNothing)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(1, 1)); // without the capture
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(button, WM_MOUSEMOVE, 0, MAKELPARAM(-5, 1)); // not down
    EXPECT_NE(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
}

TEST_F(ButtonTest, AClickMessageAmidAClickMessageIsIgnored)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine clicks again";
    const HWND button = MakeButton(BS_PUSHBUTTON);
    m_parent.Handle([&](HWND, UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND) {
            m_events.push_back(wParam);
            if (m_events.size() < 5)
                SendMessageW(button, BM_CLICK, 0, 0);
        }
        return std::nullopt;
    });
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_EQ(m_events.size(), 1U);
    m_events.clear();
    m_parent.Handle({});
    m_parent.Forget();
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_EQ(m_parent.Count(WM_COMMAND), 1) << "the click before has ended";
}

TEST_F(ButtonTest, TheSpaceBarTakesTheCaptureWhileItIsDown)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SetFocus(button);
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_EQ(GetCapture(), button);
    SendMessageW(button, WM_KEYUP, VK_LEFT, 0);
    EXPECT_EQ(GetCapture(), button);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(ButtonTest, OtherKeysThanTheSpaceBarPressNothing)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SetFocus(button);
    SendMessageW(button, WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ButtonTest, ItAnswersOtherMessagesAsAWindowDoes)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    SendMessageW(button, WM_SETREDRAW, FALSE, 0);
    EXPECT_FALSE(IsWindowVisible(button));
    SendMessageW(button, WM_SETREDRAW, TRUE, 0);
    EXPECT_TRUE(IsWindowVisible(button));
    const HWND label = CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_parent,
                                       nullptr, nullptr, nullptr);
    SendMessageW(label, WM_SETREDRAW, FALSE, 0);
    EXPECT_FALSE(IsWindowVisible(label));
    EXPECT_EQ(SendMessageW(label, WM_USER, 0, 0), 0);
    EXPECT_EQ(SendMessageW(button, WM_USER, 0, 0), 0);
}

TEST_F(ButtonTest, AStaticTellsOfTapsOnlyIfItNotifies)
{
    const auto id = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(9));
    const HWND plain = CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_parent, id,
                                       nullptr, nullptr);
    SendMessageW(plain, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    SendMessageW(plain, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    EXPECT_TRUE(m_events.empty());
    const HWND notifying = CreateWindowExW(0, TEXT("static"), nullptr, WS_CHILD | WS_VISIBLE | SS_NOTIFY, 0, 0, 10, 10,
                                           m_parent, id, nullptr, nullptr);
    SendMessageW(notifying, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    SendMessageW(notifying, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    EXPECT_EQ(m_events, (std::vector<WPARAM>{ MAKEWPARAM(9, STN_CLICKED), MAKEWPARAM(9, STN_DBLCLK) }));
    EXPECT_EQ(m_parent.Last(WM_COMMAND)->lParam, reinterpret_cast<LPARAM>(notifying));
}

TEST_F(ButtonTest, AStaticRemembersItsFontAndShowsItIfItIsAskedTo)
{
    const HWND label = CreateWindowExW(0, TEXT("static"), TEXT("a"), WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_parent,
                                       nullptr, nullptr, nullptr);
    PumpMessages();
    const HFONT font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(SendMessageW(label, WM_GETFONT, 0, 0), 0);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    EXPECT_FALSE(GetUpdateRect(label, nullptr, FALSE));
    EXPECT_EQ(SendMessageW(label, WM_GETFONT, 0, 0), reinterpret_cast<LRESULT>(font));
}

TEST_F(ButtonTest, ASpaceBarThatIsHeldDownIsOnePress)
{
    if (cardsong::test::IsWine())
        GTEST_SKIP() << "Wine draws it at each stroke";
    const HWND button = MakeButton(BS_OWNERDRAW);
    for (int i = 0; i < 3; ++i)
        SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_EQ(GetCapture(), button);
    EXPECT_EQ(m_draws, (std::vector<DrawRequest>{ { ODA_SELECT, ODS_SELECTED } }));
    SendMessageW(button, WM_KEYUP, VK_SPACE, 0);
    EXPECT_EQ(m_events.size(), 1U);
}

TEST_F(ButtonTest, LosingTheFocusWithoutAPressLeavesTheCaptureAlone)
{
    const HWND button = MakeButton(0);
    SetFocus(button);
    SetCapture(button);
    SetFocus(m_parent);
    EXPECT_EQ(GetCapture(), button);
    ReleaseCapture();
}

TEST_F(ButtonTest, ANewTypeChangesNoOtherStyle)
{
    const HWND button = MakeButton(BS_PUSHBUTTON);
    const LONG_PTR before = GetWindowLongPtrW(button, GWL_STYLE);
    SendMessageW(button, BM_SETSTYLE, BS_DEFPUSHBUTTON | BS_NOTIFY, FALSE);
    EXPECT_EQ(GetWindowLongPtrW(button, GWL_STYLE), before | BS_DEFPUSHBUTTON);
}

} // namespace
