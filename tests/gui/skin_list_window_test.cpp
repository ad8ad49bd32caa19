#include "gui/skin_list_window.h"

#include "tests/gui/skin_list_fixture.h"

using namespace cardsong::test;

namespace {

WString ClassOf(HWND window)
{
    WCHAR name[256] = {};
    GetClassNameW(window, name, 256);
    return name;
}

bool Same(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

} // namespace

// ---- making and closing ----

TEST_F(SkinListTest, IsAFullScreenPopUpOfTheOwnerWithItsControlId)
{
    const HWND window = Create(5);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(m_list.Window(), window);
    RECT rect = {};
    GetWindowRect(window, &rect);
    EXPECT_TRUE(Same(rect, { 0, 0, 320, 240 }));
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)) & (WS_POPUP | WS_CHILD), WS_POPUP);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(GetWindow(window, GW_OWNER), m_owner.Get());
    EXPECT_EQ(GetDlgCtrlID(window), static_cast<int>(kListId));
    EXPECT_EQ(GetFocus(), window);
}

TEST_F(SkinListTest, WithoutAModeThereIsNoList)
{
    m_list.SetSoftKeys(4, kListKeys);
    EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
    EXPECT_EQ(m_list.Window(), nullptr);
}

TEST_F(SkinListTest, WithoutCountOrIdsOfSoftKeysThereIsNoList)
{
    m_list.SetDisplayMode(SkinListMode::Text);
    EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
    m_list.SetSoftKeys(0, kListKeys);
    EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
    m_list.SetSoftKeys(4, {});
    EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
    m_list.SetSoftKeys(4, kListKeys);
    EXPECT_NE(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
}

TEST_F(SkinListTest, ACountThatMakesNoBarMakesNoList)
{
    m_list.SetDisplayMode(SkinListMode::Text);
    for (const int count : { -1, 1, 8 }) {
        m_list.SetSoftKeys(count, kListKeys);
        EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr) << count;
    }
}

TEST_F(SkinListTest, AListThatHasAWindowGetsNoSecondOne)
{
    const HWND window = Create(5);
    EXPECT_EQ(m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId), nullptr);
    EXPECT_EQ(m_list.Window(), window);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(SkinListTest, ClosingDestroysTheWindowAndTellsTheOwnerNothing)
{
    const HWND window = Create(5);
    m_list.Close();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(m_list.Window(), nullptr);
    EXPECT_TRUE(m_owner.seen.empty());
    m_list.Close(); // nothing is left to close
}

TEST_F(SkinListTest, OpensAgainAfterItWasClosedOnItsFirstPageWithNothingSelected)
{
    Create(9);
    TapRow(1);
    Command(kPageDown);
    m_list.Close();
    EXPECT_EQ(m_list.SelectedIndex(), 1);
    ASSERT_NE(Create(9), nullptr);
    EXPECT_EQ(m_list.SelectedIndex(), -1);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_FALSE(IsEnabled(40));
}

TEST_F(SkinListTest, TheEndOfTheObjectIsTheEndOfItsWindow)
{
    auto list = std::make_unique<SkinListWnd>();
    Prepare(*list);
    const HWND window = list->Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId);
    ASSERT_NE(window, nullptr);
    list.reset();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(SkinListTest, AListWhoseWindowOthersDestroyedIsClosed)
{
    DestroyWindow(Create(5));
    EXPECT_EQ(m_list.Window(), nullptr);
    m_list.SetItemCount(7);
    m_list.SetTitle(TEXT("x"));
    m_list.RepaintAll();
    m_list.RepaintItem(0);
    m_list.LanguageChanged();
    EXPECT_EQ(m_list.PageCount(), 2);
    RECT update = {};
    EXPECT_FALSE(GetUpdateRect(m_owner.Get(), &update, FALSE) && update.right == 0); // no stray message to all windows
    EXPECT_NE(Create(5), nullptr);
}

TEST_F(SkinListTest, TheListConstructedLastIsTheCurrentOneUntilItGoes)
{
    EXPECT_EQ(SkinListWnd::Current(), &m_list);
    {
        auto first = std::make_unique<SkinListWnd>();
        const SkinListWnd second;
        EXPECT_EQ(SkinListWnd::Current(), &second);
        first.reset();
        EXPECT_EQ(SkinListWnd::Current(), &second);
    }
    EXPECT_EQ(SkinListWnd::Current(), nullptr);
}

// ---- window classes ----

TEST_F(SkinListTest, TheClassIsNamedAfterTheTitle)
{
    EXPECT_EQ(ClassOf(Create(1, SkinListMode::Text, TEXT("Play list"))), TEXT("Play list"));
}

TEST_F(SkinListTest, AnEmptyOrARepeatedTitleGetsAClassOfItsOwn)
{
    SkinListWnd second;
    SkinListWnd nameless;
    SkinListWnd alsoNameless;
    for (SkinListWnd* list : { &second, &nameless, &alsoNameless })
        Prepare(*list);
    const HWND first = Create(1, SkinListMode::Text, TEXT("Songs"));
    const HWND same = second.Create(m_owner.Get(), TEXT("songs"), SkinListRedraw::AtOnce, 51);
    const HWND empty = nameless.Create(m_owner.Get(), TEXT(""), SkinListRedraw::AtOnce, 52);
    const HWND null = alsoNameless.Create(m_owner.Get(), nullptr, SkinListRedraw::AtOnce, 53);
    EXPECT_EQ(ClassOf(first), TEXT("Songs"));
    EXPECT_EQ(ClassOf(same), TEXT("songs#2"));
    EXPECT_EQ(ClassOf(empty), TEXT("#2"));
    EXPECT_EQ(ClassOf(null), TEXT("#3"));
}

TEST_F(SkinListTest, WithoutAnyNameForItsClassThereIsNoList)
{
    WNDCLASSW description = {};
    description.lpfnWndProc = DefWindowProcW;
    std::vector<WString> taken = { TEXT("Songs") };
    for (int number = 2; number <= 1000; ++number) {
        WCHAR name[32] = {};
        wsprintfW(name, TEXT("Songs#%d"), number);
        taken.emplace_back(name);
    }
    for (const WString& name : taken) {
        description.lpszClassName = name.c_str();
        ASSERT_NE(RegisterClassW(&description), 0);
    }
    EXPECT_EQ(Create(1), nullptr);
    EXPECT_EQ(m_list.Window(), nullptr);
    UnregisterClassW(taken.back().c_str(), nullptr);
    EXPECT_EQ(ClassOf(Create(1)), TEXT("Songs#1000"));
    for (const WString& name : taken)
        UnregisterClassW(name.c_str(), nullptr);
}

TEST_F(SkinListTest, TheClassGoesWithItsList)
{
    for (int i = 0; i < 3; ++i) {
        SkinListWnd list;
        Prepare(list);
        EXPECT_EQ(ClassOf(list.Create(m_owner.Get(), TEXT("Again"), SkinListRedraw::AtOnce, kListId)), TEXT("Again"));
    }
    EXPECT_FALSE(UnregisterClassW(TEXT("Again"), nullptr));
}

TEST_F(SkinListTest, AListThatOpensAgainHasItsNameAgain)
{
    Create(1);
    m_list.Close();
    EXPECT_EQ(ClassOf(Create(1)), TEXT("Songs"));
}

// ---- several lists ----

TEST_F(SkinListTest, EachOfTwoOpenListsHasMessagesOfItsOwn)
{
    const HWND below = Create(9);
    SkinListWnd above;
    Prepare(above);
    above.SetItemCount(3);
    const HWND window = above.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, 51);
    TapOn(below, 100, 80);
    TapOn(window, 100, 130);
    EXPECT_EQ(m_list.SelectedIndex(), 1);
    EXPECT_EQ(above.SelectedIndex(), 2);
    above.Close();
    Command(kPageDown);
    EXPECT_EQ(m_list.CurrentPage(), 2);
    EXPECT_TRUE(IsWindow(below));
}

// ---- taps ----

TEST_F(SkinListTest, ATapOnARowSelectsItAndTellsTheOwner)
{
    Create(6);
    TapRow(2);
    EXPECT_EQ(m_list.SelectedIndex(), 2);
    ASSERT_EQ(m_owner.seen.size(), 1U);
    EXPECT_EQ(m_owner.seen[0].message, static_cast<UINT>(WM_NOTIFY));
    EXPECT_EQ(m_owner.seen[0].wParam, kListId);
    EXPECT_EQ(m_owner.seen[0].lParam, 2);
}

TEST_F(SkinListTest, ATapOnTheSecondPageTellsOfTheItemInTheWholeList)
{
    Create(6);
    Command(kPageDown);
    TapRow(1);
    ASSERT_EQ(m_owner.seen.size(), 1U);
    EXPECT_EQ(m_owner.seen[0].lParam, 5);
}

TEST_F(SkinListTest, ASecondTapOnTheSameRowIsToldAgain)
{
    Create(6);
    TapRow(2);
    TapRow(2);
    EXPECT_EQ(m_owner.seen.size(), 2U);
}

TEST_F(SkinListTest, ATapThatMeetsNoRowIsNotToldThoughAnItemIsSelected)
{
    Create(6);
    TapRow(2);
    m_owner.seen.clear();
    Tap(100, 10);  // the title
    Tap(100, 72);  // a gap
    Tap(257, 26);  // just above the first row
    Tap(-1, 30);   // outside
    Tap(100, -30); // outside
    Tap(258, 30);  // where the scroll buttons are
    EXPECT_TRUE(m_owner.seen.empty());
    EXPECT_EQ(m_list.SelectedIndex(), 2);
}

TEST_F(SkinListTest, ATapBehindTheLastItemChangesNothing)
{
    Create(6);
    Command(kPageDown);
    TapRow(1);
    m_owner.seen.clear();
    ParentWindow::Pump();
    TapRow(2);
    TapRow(3);
    EXPECT_EQ(m_list.SelectedIndex(), 5);
    EXPECT_TRUE(m_owner.seen.empty());
    EXPECT_TRUE(Same(TakeUpdate(), {}));
}

TEST_F(SkinListTest, ATapOnAnEmptyListSelectsNothing)
{
    Create(0);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_EQ(m_list.PageCount(), 1);
    for (int row = 0; row < 4; ++row)
        TapRow(row);
    EXPECT_EQ(m_list.SelectedIndex(), -1);
    EXPECT_TRUE(m_owner.seen.empty());
}

TEST_F(SkinListTest, ATapRepaintsTheOldRowAndTheNewOne)
{
    Create(6);
    TapRow(0);
    EXPECT_TRUE(Same(TakeUpdate(), { 0, 27, 258, 71 }));
    TapRow(2);
    EXPECT_TRUE(Same(TakeUpdate(), { 0, 27, 258, 163 })); // the box around both
    TapRow(2);
    EXPECT_TRUE(Same(TakeUpdate(), { 0, 119, 258, 163 }));
}

// ---- soft keys and keys ----

TEST_F(SkinListTest, ASoftKeyIsToldToTheOwnerWithTheSelectedItem)
{
    Create(6);
    Command(29);
    TapRow(3);
    m_owner.seen.erase(m_owner.seen.begin() + 1);
    SendMessageW(GetDlgItem(m_list.Window(), 33), BM_CLICK, 0, 0);
    ASSERT_EQ(m_owner.seen.size(), 2U);
    EXPECT_EQ(m_owner.seen[0].message, static_cast<UINT>(WM_COMMAND));
    EXPECT_EQ(m_owner.seen[0].wParam, 29U);
    EXPECT_EQ(m_owner.seen[0].lParam, -1);
    EXPECT_EQ(m_owner.seen[1].wParam, 33U);
    EXPECT_EQ(m_owner.seen[1].lParam, 3);
}

TEST_F(SkinListTest, TheOwnerHearsTheIdAlone)
{
    Create(6);
    Command(MAKEWPARAM(29, BN_DOUBLECLICKED));
    ASSERT_EQ(m_owner.seen.size(), 1U);
    EXPECT_EQ(m_owner.seen[0].wParam, 29U);
}

TEST_F(SkinListTest, TheScrollButtonsAreNotToldToTheOwner)
{
    Create(6);
    Command(kPageDown);
    Command(kPageUp);
    EXPECT_TRUE(m_owner.seen.empty());
}

TEST_F(SkinListTest, ArrowKeysClickTheScrollButtons)
{
    Create(9);
    SendMessageW(m_list.Window(), WM_KEYDOWN, VK_DOWN, 0);
    SendMessageW(m_list.Window(), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(m_list.CurrentPage(), 3);
    SendMessageW(m_list.Window(), WM_KEYDOWN, VK_UP, 0);
    EXPECT_EQ(m_list.CurrentPage(), 2);
}

TEST_F(SkinListTest, TheExitKeyClosesTheList)
{
    const HWND window = Create(9);
    SendMessageW(window, WM_KEYDOWN, VK_F24, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(VK_F24, 135U);
}

// A soft key that closes the list is a command of the owner's; these two only take the list away.
TEST_F(SkinListTest, TheOwnerIsToldNeitherOfTheExitKeyNorOfClose)
{
    SendMessageW(Create(9), WM_KEYDOWN, VK_F24, 0);
    EXPECT_EQ(m_list.Window(), nullptr);
    Create(9);
    m_list.Close();
    EXPECT_EQ(m_list.Window(), nullptr);
    EXPECT_TRUE(m_owner.seen.empty());
}

TEST_F(SkinListTest, OtherKeysDoNothing)
{
    Create(9);
    for (const WPARAM key : { VK_RETURN, VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_TAB })
        SendMessageW(m_list.Window(), WM_KEYDOWN, key, 0);
    EXPECT_NE(m_list.Window(), nullptr);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_TRUE(m_owner.seen.empty());
}

// ---- answers ----

TEST_F(SkinListTest, ErasesNothing)
{
    Create(5);
    const Picture picture;
    EXPECT_EQ(SendMessageW(m_list.Window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(picture.Context()), 0), 1);
    EXPECT_EQ(picture.Count(kBlue565, { 0, 0, 320, 240 }), 320 * 240);
}

TEST_F(SkinListTest, StaticsGetTheHollowBrush)
{
    Create(5);
    EXPECT_EQ(SendMessageW(m_list.Window(), WM_CTLCOLORSTATIC, 0, 0),
              reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
}

TEST_F(SkinListTest, DrawsItsSoftKeysWhenTheyAsk)
{
    Create(5);
    const Picture picture;
    const RECT item = { 0, 0, 106, 32 };
    const DRAWITEMSTRUCT request = DrawRequest(29, ODA_DRAWENTIRE, 0, picture.Context(), item);
    EXPECT_NE(SendMessageW(m_list.Window(), WM_DRAWITEM, 29, reinterpret_cast<LPARAM>(&request)), 0);
    EXPECT_EQ(picture.At(3, 3), m_key);
}

// ---- the owner acts at once ----

TEST_F(SkinListTest, TheOwnerMayDestroyTheListFromItsCommand)
{
    auto list = std::make_unique<SkinListWnd>();
    Prepare(*list);
    const HWND window = list->Create(m_owner.Get(), TEXT("Short-lived"), SkinListRedraw::AtOnce, kListId);
    m_owner.onSeen = [&](const SeenMessage&) { list.reset(); };
    SendMessageW(GetDlgItem(window, 29), BM_CLICK, 0, 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_FALSE(IsWindow(window));
    ParentWindow::Pump();
}

TEST_F(SkinListTest, TheOwnerMayDestroyTheListFromItsNotice)
{
    auto list = std::make_unique<SkinListWnd>();
    Prepare(*list);
    list->SetItemCount(1);
    const HWND window = list->Create(m_owner.Get(), TEXT("Short-lived"), SkinListRedraw::AtOnce, kListId);
    m_owner.onSeen = [&](const SeenMessage&) { list.reset(); };
    TapOn(window, 100, 50);
    EXPECT_EQ(list, nullptr);
    EXPECT_FALSE(IsWindow(window));
    ParentWindow::Pump();
}

TEST_F(SkinListTest, ManyListsThatGoInTheirCommandsLeaveNoClass)
{
    for (int i = 0; i < 20; ++i) {
        auto list = std::make_unique<SkinListWnd>();
        Prepare(*list);
        const HWND window = list->Create(m_owner.Get(), TEXT("Short-lived"), SkinListRedraw::AtOnce, kListId);
        ASSERT_EQ(ClassOf(window), TEXT("Short-lived")) << i;
        m_owner.onSeen = [&](const SeenMessage&) { list.reset(); };
        SendMessageW(GetDlgItem(window, 29), BM_CLICK, 0, 0);
        m_owner.onSeen = nullptr;
        ASSERT_EQ(list, nullptr);
    }
}

TEST_F(SkinListTest, TheOwnerMayOpenAnotherListFromACommand)
{
    Create(6);
    SkinListWnd above;
    Prepare(above);
    m_owner.onSeen = [&](const SeenMessage& message) {
        if (message.wParam == 29)
            above.Create(m_owner.Get(), TEXT("Above"), SkinListRedraw::AtOnce, 51);
    };
    SendMessageW(GetDlgItem(m_list.Window(), 29), BM_CLICK, 0, 0);
    EXPECT_TRUE(IsWindow(above.Window()));
    EXPECT_TRUE(IsWindow(m_list.Window()));
}

TEST_F(SkinListTest, TheOwnerMayChangeTheCountFromANotice)
{
    Create(6);
    Command(kPageDown);
    m_owner.onSeen = [&](const SeenMessage&) { m_list.SetItemCount(2); };
    TapRow(1);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_EQ(m_list.SelectedIndex(), -1);
}

TEST(SkinListOwner, AnOwnerThatGoesTakesTheListsWindowAlong)
{
    SkinDevice skin;
    SkinListWnd list;
    HWND window = nullptr;
    {
        const ParentWindow owner;
        list.SetDisplayMode(SkinListMode::Text);
        list.SetSoftKeys(4, kListKeys);
        window = list.Create(owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId);
        ASSERT_NE(window, nullptr);
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(list.Window(), nullptr);
}

TEST_F(SkinListTest, AboveAnotherWindowGivesItTheKeysBackAndTellsTheOwner)
{
    SkinListWnd above;
    Create(1);
    Prepare(above);
    above.SetWindowBelow(m_list.Window());
    const HWND window = above.Create(m_owner.Get(), TEXT("Above"), SkinListRedraw::AtOnce, 51);
    EXPECT_EQ(GetWindow(window, GW_OWNER), m_list.Window());
    EXPECT_EQ(GetActiveWindow(), window);
    SendMessageW(window, WM_COMMAND, 29, 0);
    ASSERT_EQ(m_owner.seen.size(), 1U);
    EXPECT_EQ(m_owner.seen[0].wParam, 29U);
    above.Close();
    EXPECT_EQ(GetActiveWindow(), m_list.Window());
}

TEST(SkinListOwner, AListWithoutAnOwnerTellsNobody)
{
    SkinDevice skin;
    SkinListWnd list;
    list.SetDisplayMode(SkinListMode::Text);
    list.SetSoftKeys(4, kListKeys);
    list.SetItemCount(1);
    const HWND window = list.Create(nullptr, TEXT("Songs"), SkinListRedraw::AtOnce, kListId);
    ASSERT_NE(window, nullptr);
    SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(100, 50));
    SendMessageW(window, WM_COMMAND, 29, 0);
    EXPECT_EQ(list.SelectedIndex(), 0);
}
