#include "gui/skin_list_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace {

SkinListItem Item(WStringView text)
{
    SkinListItem item = {};
    std::ranges::copy(text.substr(0, kSkinListTextUnits), item.mainText);
    return item;
}

// Makes items on demand, and counts how often it is asked.
class CountingSource : public SkinListSource {
public:
    explicit CountingSource(std::int32_t count) { itemCount = count; }
    const SkinListItem* ItemAt(std::int32_t index) override
    {
        asked.push_back(index);
        m_item = Item(TEXT("made"));
        return &m_item;
    }
    std::vector<std::int32_t> asked;

private:
    SkinListItem m_item = {};
};

SkinListModel OnPage(std::int32_t count, std::int32_t page)
{
    SkinListModel model;
    model.SetMode(SkinListMode::CheckedText);
    model.SetItemCount(count);
    for (std::int32_t i = 0; i < page; ++i)
        model.PageDown();
    return model;
}

int TenPixelsAUnit(WStringView text)
{
    return static_cast<int>(text.size()) * 10;
}

} // namespace

// ---- pages ----

TEST(SkinListModel, HasFourItemsAPage)
{
    const std::pair<std::int32_t, std::int32_t> pages[] = {
        { 0, 1 }, { 1, 1 }, { 4, 1 }, { 5, 2 }, { 8, 2 }, { 9, 3 }, { 50'000, 12'500 },
    };
    for (const auto& [count, expected] : pages)
        EXPECT_EQ(OnPage(count, 0).PageCount(), expected) << count;
}

TEST(SkinListModel, ANegativeCountIsNone)
{
    for (const std::int32_t count : { -1, INT_MIN }) {
        const SkinListModel model = OnPage(count, 0);
        EXPECT_EQ(model.ItemCount(), 0);
        EXPECT_EQ(model.PageCount(), 1);
        EXPECT_TRUE(model.IsLastPage());
    }
}

TEST(SkinListModel, TheLargestCountHasPagesToTheLastItem)
{
    SkinListModel model = OnPage(INT_MAX, 0);
    EXPECT_EQ(model.PageCount(), 536'870'912);
    EXPECT_EQ(model.RecordOfRow(0), nullptr);
    EXPECT_TRUE(model.Select(3));
    EXPECT_EQ(model.SelectedItem(), 3);
    EXPECT_TRUE(model.PageDown());
}

TEST(SkinListModel, PagesEndAtTheFirstAndTheLast)
{
    SkinListModel model = OnPage(5, 0);
    EXPECT_TRUE(model.IsFirstPage());
    EXPECT_FALSE(model.PageUp());
    EXPECT_TRUE(model.PageDown());
    EXPECT_TRUE(model.IsLastPage());
    EXPECT_FALSE(model.PageDown());
    EXPECT_EQ(model.PageIndex(), 1);
    EXPECT_TRUE(model.PageUp());
    EXPECT_EQ(model.PageIndex(), 0);
}

TEST(SkinListModel, FewerItemsStepBackToTheLastPageThereIs)
{
    SkinListModel model = OnPage(20, 4);
    model.SetItemCount(9);
    EXPECT_EQ(model.PageIndex(), 2);
    model.SetItemCount(8);
    EXPECT_EQ(model.PageIndex(), 1);
    model.SetItemCount(0);
    EXPECT_EQ(model.PageIndex(), 0);
}

TEST(SkinListModel, ItemsBehindThePageComeAndGoWithoutATurn)
{
    SkinListModel model = OnPage(20, 1);
    model.SetItemCount(8);
    EXPECT_EQ(model.PageIndex(), 1);
    model.SetItemCount(100);
    EXPECT_EQ(model.PageIndex(), 1);
}

TEST(SkinListModel, ARowStandsForAnItemUpToTheLast)
{
    const SkinListModel model = OnPage(6, 1);
    EXPECT_EQ(model.ItemOfRow(0), 4);
    EXPECT_EQ(model.ItemOfRow(1), 5);
    EXPECT_EQ(model.ItemOfRow(2), std::nullopt);
}

// ---- selection ----

TEST(SkinListModel, NothingIsSelectedAtFirst)
{
    const SkinListModel model = OnPage(6, 0);
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), -1);
}

TEST(SkinListModel, SelectsARowAndItsItem)
{
    SkinListModel model = OnPage(6, 1);
    EXPECT_TRUE(model.Select(1));
    EXPECT_EQ(model.SelectedRow(), 1);
    EXPECT_EQ(model.SelectedItem(), 5);
}

TEST(SkinListModel, ARowBehindTheLastItemChangesNothing)
{
    SkinListModel model = OnPage(6, 1);
    model.Select(0);
    EXPECT_FALSE(model.Select(2));
    EXPECT_EQ(model.SelectedRow(), 0);
    EXPECT_EQ(model.SelectedItem(), 4);
    EXPECT_FALSE(OnPage(0, 0).Select(0));
}

TEST(SkinListModel, TurningThePageClearsTheRowButKeepsTheItem)
{
    SkinListModel model = OnPage(12, 1);
    model.Select(2);
    model.PageDown();
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), 6);
    model.PageUp();
    EXPECT_EQ(model.SelectedRow(), -1); // its page is back, the row is not
    EXPECT_EQ(model.SelectedItem(), 6);
    model.Select(0);
    model.PageUp();
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), 4);
}

TEST(SkinListModel, APageThatDoesNotTurnKeepsTheRow)
{
    SkinListModel model = OnPage(4, 0);
    model.Select(2);
    model.PageDown();
    model.PageUp();
    EXPECT_EQ(model.SelectedRow(), 2);
}

TEST(SkinListModel, ACountWithoutTheSelectedItemClearsTheSelection)
{
    SkinListModel model = OnPage(4, 0);
    model.Select(3);
    model.SetItemCount(3);
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), -1);
}

TEST(SkinListModel, ACountThatStillHoldsTheSelectedItemKeepsTheSelection)
{
    SkinListModel model = OnPage(4, 0);
    model.Select(2);
    model.SetItemCount(3);
    EXPECT_EQ(model.SelectedRow(), 2);
    EXPECT_EQ(model.SelectedItem(), 2);
}

TEST(SkinListModel, SteppingBackAPageClearsTheRowButKeepsAnItemThatIsLeft)
{
    SkinListModel model = OnPage(12, 0);
    model.Select(1);
    model.PageDown();
    model.PageDown();
    model.SetItemCount(4);
    EXPECT_EQ(model.PageIndex(), 0);
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), 1);
}

TEST(SkinListModel, RewindsToTheFirstPageWithNothingSelected)
{
    SkinListModel model = OnPage(12, 2);
    model.Select(1);
    model.Rewind();
    EXPECT_EQ(model.PageIndex(), 0);
    EXPECT_EQ(model.SelectedRow(), -1);
    EXPECT_EQ(model.SelectedItem(), -1);
    EXPECT_EQ(model.ItemCount(), 12);
}

TEST(SkinListModel, SelectsAnItemForTheOwnerAndItsRowOnThePageOnly)
{
    SkinListModel model = OnPage(9, 1);
    model.SelectItem(6);
    EXPECT_EQ(model.SelectedItem(), 6);
    EXPECT_EQ(model.SelectedRow(), 2);
    model.SelectItem(8);
    EXPECT_EQ(model.SelectedItem(), 8);
    EXPECT_EQ(model.SelectedRow(), kNoSelection);
    EXPECT_EQ(model.PageIndex(), 1);
    for (const std::int32_t none : { kNoSelection, 9, INT_MAX, INT_MIN }) {
        model.SelectItem(5);
        model.SelectItem(none);
        EXPECT_EQ(model.SelectedItem(), kNoSelection) << none;
        EXPECT_EQ(model.SelectedRow(), kNoSelection) << none;
    }
}

TEST(SkinListModel, TurnsToThePageOfAnItem)
{
    SkinListModel model = OnPage(9, 0);
    const std::pair<std::int32_t, std::int32_t> turns[] = {
        { 8, 2 }, { 4, 1 }, { 7, 1 }, { 3, 0 }, { 9, 0 }, { -1, 0 }, { INT_MIN, 0 },
    };
    for (const auto& [item, page] : turns) {
        model.TurnToPageOf(item);
        EXPECT_EQ(model.PageIndex(), page) << item;
    }
    model.Select(1);
    model.TurnToPageOf(2); // it is there already
    EXPECT_EQ(model.SelectedRow(), 1);
    model.TurnToPageOf(4);
    EXPECT_EQ(model.SelectedRow(), kNoSelection);
    EXPECT_EQ(model.SelectedItem(), 1);
}

// Whatever is done to a list: its page exists, what is selected exists, and a selected row is that of the selected
// item.
TEST(SkinListModel, HoldsTogetherUnderAnySequenceOfChanges)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    SkinListModel model = OnPage(10, 0);
    for (int step = 0; step < 20'000; ++step) {
        const std::int32_t pageBefore = model.PageIndex();
        const std::int32_t itemBefore = model.SelectedItem();
        bool isCountNew = false;
        switch (random() % 5) {
        case 0:
            model.SetItemCount(static_cast<std::int32_t>(random() % 40) - 3);
            isCountNew = true;
            break;
        case 1: model.PageUp(); break;
        case 2: model.PageDown(); break;
        default: model.Select(static_cast<int>(random() % 4)); break;
        }
        ASSERT_GE(model.PageIndex(), 0);
        ASSERT_LT(model.PageIndex(), model.PageCount());
        ASSERT_EQ(model.PageCount(), std::max(1, (model.ItemCount() + 3) / 4));
        ASSERT_LT(model.SelectedItem(), model.ItemCount() == 0 ? 0 : model.ItemCount());
        if (model.SelectedRow() != kNoSelection) {
            ASSERT_EQ(model.ItemOfRow(model.SelectedRow()), model.SelectedItem());
        }
        if (model.PageIndex() != pageBefore) {
            ASSERT_EQ(model.SelectedRow(), kNoSelection);
            ASSERT_TRUE(isCountNew || model.SelectedItem() == itemBefore);
        }
    }
}

// ---- where items come from ----

TEST(SkinListModel, TakesItemsFromTheArrayRatherThanFromTheSource)
{
    const std::vector<SkinListItem> items(6, Item(TEXT("own")));
    CountingSource source(6);
    SkinListModel model = OnPage(6, 1);
    model.SetSource(&source);
    model.SetItems(items);
    EXPECT_EQ(model.RecordOfRow(1), &items[5]);
    EXPECT_TRUE(source.asked.empty());
}

TEST(SkinListModel, TakesItemsFromTheSourceWithoutAnArray)
{
    CountingSource source(6);
    SkinListModel model = OnPage(6, 1);
    model.SetSource(&source);
    ASSERT_NE(model.RecordOfRow(1), nullptr);
    EXPECT_EQ(SkinListTextOf(model.RecordOfRow(1)->mainText), TEXT("made"));
    EXPECT_EQ(source.asked, (std::vector<std::int32_t>{ 5, 5 }));
}

TEST(SkinListModel, NeitherArrayNorSourceIsAskedBeyondItsEnd)
{
    const std::vector<SkinListItem> items(5);
    CountingSource source(5);
    SkinListModel model = OnPage(INT_MAX, 1);
    EXPECT_EQ(model.RecordOfRow(0), nullptr); // there is neither
    model.SetSource(&source);
    EXPECT_EQ(model.RecordOfRow(1), nullptr);
    EXPECT_TRUE(source.asked.empty());
    EXPECT_NE(model.RecordOfRow(0), nullptr);
    model.SetItems(items);
    EXPECT_EQ(model.RecordOfRow(0), &items[4]);
    EXPECT_EQ(model.RecordOfRow(1), nullptr);
}

TEST(SkinListModel, ARowBehindTheCountHasNoRecordThoughTheArrayGoesOn)
{
    const std::vector<SkinListItem> items(8);
    SkinListModel model = OnPage(2, 0);
    model.SetItems(items);
    EXPECT_EQ(model.RecordOfRow(1), &items[1]);
    EXPECT_EQ(model.RecordOfRow(2), nullptr);
}

TEST(SkinListModel, PagesAndCountsOfALargeListAskForNoItem)
{
    CountingSource source(50'000);
    SkinListModel model = OnPage(50'000, 0);
    model.SetSource(&source);
    while (model.PageDown())
        model.Select(3);
    model.SetItemCount(49'999);
    EXPECT_TRUE(source.asked.empty());
}

TEST(SkinListModel, ATextThatFillsItsFieldNeedsNoZero)
{
    SkinListItem item = Item(WString(kSkinListTextUnits, TEXT('x')));
    EXPECT_EQ(SkinListTextOf(item.mainText).size(), 100U);
    item.mainText[99] = 0;
    EXPECT_EQ(SkinListTextOf(item.mainText).size(), 99U);
    item.mainText[0] = 0;
    EXPECT_TRUE(SkinListTextOf(item.mainText).empty());
}

// ---- long texts ----

class SwingingModel : public testing::Test {
protected:
    SwingingModel() : m_model(OnPage(6, 0)) { m_model.SetItems(m_items); }
    WString Shown(int row) { return WString(m_model.ShownText(row, *m_model.RecordOfRow(row))); }

    std::vector<SkinListItem> m_items = std::vector<SkinListItem>(6, Item(TEXT("0123456789abcdefgh"))); // 180 pixels
    SkinListModel m_model;
};

TEST_F(SwingingModel, WithoutASelectedRowNothingMoves)
{
    EXPECT_FALSE(m_model.SwingText(TenPixelsAUnit));
    m_model.Select(1);
    m_model.PageDown();
    EXPECT_EQ(m_model.SelectedItem(), 1);
    EXPECT_FALSE(m_model.SwingText(TenPixelsAUnit));
}

TEST_F(SwingingModel, OnlyTheSelectedRowMoves)
{
    m_model.Select(1);
    EXPECT_TRUE(m_model.SwingText(TenPixelsAUnit));
    EXPECT_EQ(Shown(1), TEXT("123456789abcdefgh"));
    EXPECT_EQ(Shown(0), TEXT("0123456789abcdefgh"));
}

TEST_F(SwingingModel, SelectingARowAgainBeginsAnew)
{
    m_model.Select(1);
    m_model.SwingText(TenPixelsAUnit);
    m_model.Select(1);
    EXPECT_EQ(Shown(1), TEXT("0123456789abcdefgh"));
    m_model.SwingText(TenPixelsAUnit);
    m_model.Select(2);
    EXPECT_EQ(Shown(2), TEXT("0123456789abcdefgh"));
}

TEST_F(SwingingModel, SelectingTheItemAgainForTheOwnerLetsItSwingOn)
{
    m_model.Select(0);
    ASSERT_TRUE(m_model.SwingText(TenPixelsAUnit));
    m_model.SelectItem(0);
    EXPECT_EQ(Shown(0), TEXT("123456789abcdefgh"));
    m_model.SelectItem(1);
    m_model.SelectItem(0);
    EXPECT_EQ(Shown(0), TEXT("0123456789abcdefgh"));
}

TEST_F(SwingingModel, ATextThatTheOwnerShortenedIsShownWhole)
{
    m_model.Select(1);
    for (int i = 0; i < 4; ++i)
        m_model.SwingText(TenPixelsAUnit);
    m_items[1] = Item(TEXT("ab"));
    EXPECT_EQ(Shown(1), TEXT("ab"));
    EXPECT_TRUE(m_model.SwingText(TenPixelsAUnit));
    EXPECT_EQ(Shown(1), TEXT("ab"));
    EXPECT_FALSE(m_model.SwingText(TenPixelsAUnit));
}

TEST_F(SwingingModel, ATextWithoutACheckBoxHasTheRoomOfTheRowAndDoesNotMove)
{
    m_model.SetMode(SkinListMode::Text);
    m_model.Select(1);
    EXPECT_FALSE(m_model.SwingText(TenPixelsAUnit));
    m_model.SetMode(SkinListMode::TwoChecks);
    EXPECT_TRUE(m_model.SwingText(TenPixelsAUnit));
}

TEST_F(SwingingModel, ARowWithoutARecordDoesNotMove)
{
    m_model.Select(1);
    m_model.SetItems(std::span<const SkinListItem>(m_items).first(1));
    EXPECT_FALSE(m_model.SwingText(TenPixelsAUnit));
}
