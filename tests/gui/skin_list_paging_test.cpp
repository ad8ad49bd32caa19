// Pages, counts and titles of a skinned list: which buttons work, and what is repainted.
#include "tests/gui/skin_list_fixture.h"

using namespace cardsong::test;

namespace {

class SkinListPaging : public SkinListTest {
protected:
    HWND CreateForOwnersRepaint(std::int32_t count)
    {
        Prepare(m_list);
        m_list.SetItemCount(count);
        const HWND window = m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::ByOwner, kListId);
        ParentWindow::Pump();
        return window;
    }
    bool IsTitleRepainted() const
    {
        const RECT update = TakeUpdate();
        return update.left == 0 && update.top == 0 && update.right >= 300 && update.bottom >= 26;
    }
};

} // namespace

TEST_F(SkinListPaging, FourItemsAreOnePageWithoutScrolling)
{
    Create(4);
    EXPECT_EQ(m_list.PageCount(), 1);
    EXPECT_FALSE(IsEnabled(40));
    EXPECT_FALSE(IsEnabled(41));
}

TEST_F(SkinListPaging, FiveItemsAreTwoPages)
{
    Create(5);
    EXPECT_EQ(m_list.PageCount(), 2);
    EXPECT_FALSE(IsEnabled(40));
    EXPECT_TRUE(IsEnabled(41));
}

TEST_F(SkinListPaging, TheOwnerTurnsToAnItemAndSelectsIt)
{
    Create(9);
    m_list.ShowItem(8);
    EXPECT_EQ(m_list.CurrentPage(), 3);
    EXPECT_TRUE(IsEnabled(40));
    EXPECT_FALSE(IsEnabled(41));
    TakeUpdate();
    m_list.SelectItem(8);
    EXPECT_EQ(m_list.SelectedIndex(), 8);
    EXPECT_EQ(TakeUpdate().bottom, kSkinListRowRects[0].bottom);
    m_list.SelectItem(0); // on another page: the row of the old one is plain again
    EXPECT_EQ(m_list.SelectedIndex(), 0);
    EXPECT_EQ(TakeUpdate().bottom, kSkinListRowRects[0].bottom);
    m_list.SelectItem(kNoSelection);
    EXPECT_EQ(m_list.SelectedIndex(), kNoSelection);
    EXPECT_EQ(TakeUpdate().bottom, 0);
    m_list.ShowItem(9);
    EXPECT_EQ(m_list.CurrentPage(), 3);
}

TEST_F(SkinListPaging, TheScrollButtonsWorkWhereThereIsAPage)
{
    Create(9);
    Command(kPageDown);
    EXPECT_EQ(m_list.CurrentPage(), 2);
    EXPECT_TRUE(IsEnabled(40));
    EXPECT_TRUE(IsEnabled(41));
    Command(kPageDown);
    EXPECT_EQ(m_list.CurrentPage(), 3);
    EXPECT_TRUE(IsEnabled(40));
    EXPECT_FALSE(IsEnabled(41));
    Command(kPageUp);
    Command(kPageUp);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_FALSE(IsEnabled(40));
    EXPECT_TRUE(IsEnabled(41));
}

TEST_F(SkinListPaging, ACommandToADisabledScrollButtonTurnsNoPage)
{
    Create(4);
    ParentWindow::Pump();
    Command(kPageUp);
    Command(kPageDown);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_EQ(TakeUpdate().right, 0);
}

TEST_F(SkinListPaging, AFastSecondTapTurnsThePageToo)
{
    Create(9);
    Command(MAKEWPARAM(41, BN_CLICKED));
    Command(MAKEWPARAM(41, BN_DOUBLECLICKED));
    EXPECT_EQ(m_list.CurrentPage(), 3);
}

TEST_F(SkinListPaging, TurningThePageClearsTheRowButNotTheSelectedItem)
{
    Create(9);
    TapRow(1);
    ParentWindow::Pump();
    EXPECT_EQ(At(200, 80), Highlight());
    Command(kPageDown);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.SelectedIndex(), 1);
    EXPECT_EQ(At(200, 80), m_ground);
    Command(kPageUp);
    ParentWindow::Pump();
    EXPECT_EQ(At(200, 80), m_ground);
}

TEST_F(SkinListPaging, FewerItemsMoveBackToTheLastPage)
{
    Create(20);
    for (int i = 0; i < 4; ++i)
        Command(kPageDown);
    EXPECT_EQ(m_list.CurrentPage(), 5);
    m_list.SetItemCount(9);
    EXPECT_EQ(m_list.CurrentPage(), 3);
    EXPECT_TRUE(IsEnabled(40));
    EXPECT_FALSE(IsEnabled(41));
    m_list.SetItemCount(0);
    EXPECT_EQ(m_list.CurrentPage(), 1);
    EXPECT_EQ(m_list.PageCount(), 1);
    EXPECT_FALSE(IsEnabled(40));
    EXPECT_FALSE(IsEnabled(41));
}

TEST_F(SkinListPaging, MoreItemsLetTheListScroll)
{
    Create(4);
    m_list.SetItemCount(5);
    EXPECT_FALSE(IsEnabled(40));
    EXPECT_TRUE(IsEnabled(41));
}

TEST_F(SkinListPaging, ACountWithoutTheSelectedItemSelectsNothing)
{
    Create(6);
    TapRow(3);
    m_list.SetItemCount(3);
    EXPECT_EQ(m_list.SelectedIndex(), -1);
}

TEST_F(SkinListPaging, CountsBelowZeroAndBeyondTheArrayShowWhatThereIs)
{
    Create(2);
    m_list.SetItemCount(-7);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.PageCount(), 1);
    EXPECT_EQ(At(2, 30), m_ground); // no check box
    m_list.SetItemCount(2'147'483'647);
    ParentWindow::Pump();
    EXPECT_EQ(m_list.PageCount(), 536'870'912);
    EXPECT_EQ(At(2, 76), m_unchecked);
    EXPECT_EQ(At(2, 122), m_ground);
    Command(kPageDown);
    ParentWindow::Pump();
    EXPECT_EQ(At(2, 30), m_ground);
}

// ---- repainting ----

TEST_F(SkinListPaging, AListThatPaintsItselfDoesSoAfterATurnAndANewCount)
{
    Create(9);
    Command(kPageDown);
    EXPECT_TRUE(IsTitleRepainted());
    m_list.SetItemCount(7);
    EXPECT_TRUE(IsTitleRepainted());
}

TEST_F(SkinListPaging, AListThatItsOwnerRepaintsDoesNot)
{
    CreateForOwnersRepaint(9);
    Command(kPageDown);
    m_list.SetItemCount(7);
    EXPECT_EQ(m_list.CurrentPage(), 2);
    EXPECT_EQ(TakeUpdate().right, 0);
    m_list.RepaintAll();
    const RECT update = TakeUpdate();
    EXPECT_EQ(update.right, 320);
    EXPECT_EQ(update.bottom, 240);
}

TEST_F(SkinListPaging, AnItemIsRepaintedWhereItIsShown)
{
    CreateForOwnersRepaint(9);
    for (const std::int32_t index : { -1, 4, 9, 2'147'483'647 })
        m_list.RepaintItem(index);
    EXPECT_EQ(TakeUpdate().right, 0);
    m_list.RepaintItem(2);
    const RECT update = TakeUpdate();
    EXPECT_EQ(update.top, 119);
    EXPECT_EQ(update.bottom, 163);
    EXPECT_EQ(update.right, 258);
    Command(kPageDown);
    m_list.RepaintItem(2);
    EXPECT_EQ(TakeUpdate().right, 0);
    m_list.RepaintItem(4);
    EXPECT_EQ(TakeUpdate().top, 27);
}

// ---- title ----

TEST_F(SkinListPaging, ANewTitleRepaintsTheTitleAlone)
{
    CreateForOwnersRepaint(9);
    m_list.SetTitle(TEXT("Others"));
    const RECT update = TakeUpdate();
    EXPECT_EQ(update.left, 0);
    EXPECT_EQ(update.top, 0);
    EXPECT_EQ(update.right, 300);
    EXPECT_EQ(update.bottom, 26);
}

TEST_F(SkinListPaging, ReloadingATitleThatIsNoStringKeepsIt)
{
    Create(9);
    ParentWindow::Pump();
    m_list.ReloadTitle();
    EXPECT_EQ(TakeUpdate().right, 0);
}
