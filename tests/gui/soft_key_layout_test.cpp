#include "common/rect.h"
#include "gui/soft_key_layout.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Plans = std::vector<SoftKeyPlan>;

Plans Plan(int count, const std::vector<int>& ids)
{
    const auto plan = PlanSoftKeys(count, ids);
    return plan ? *plan : Plans{};
}

void ExpectPlace(const SoftKeyPlan& plan, int x, int y, int widthPx, int heightPx)
{
    EXPECT_EQ(plan.place.left, x);
    EXPECT_EQ(plan.place.top, y);
    EXPECT_EQ(WidthOf(plan.place), widthPx);
    EXPECT_EQ(HeightOf(plan.place), heightPx);
}

void ExpectSkin(const SoftKeyPlan& plan, const WString& normal, const WString& pressed, const WString& disabled)
{
    const auto path = [](const WString& name) { return TEXT("\\Windows\\gui_") + name + TEXT(".gif"); };
    EXPECT_EQ(WString(plan.skin.normal), path(normal));
    EXPECT_EQ(WString(plan.skin.pressed), path(pressed));
    EXPECT_EQ(plan.skin.focus, nullptr);
    EXPECT_EQ(WString(plan.skin.disabled), path(disabled));
}

} // namespace

TEST(SoftKeyLayout, CountsBelowTwoAndAboveSevenAreInvalid)
{
    for (const int count : { -1, 0, 1, 8, 1000 })
        EXPECT_FALSE(PlanSoftKeys(count, std::vector<int>(9, 5))) << count;
    for (const int count : { 2, 7 })
        EXPECT_TRUE(PlanSoftKeys(count, std::vector<int>(9, 5))) << count;
}

TEST(SoftKeyLayout, SlotsShareTheScreensWidthAtTheBottom)
{
    const int widths[] = { 160, 106, 80, 64, 53, 53 };
    for (int count = 2; count <= 7; ++count) {
        const Plans plan = Plan(count, std::vector<int>(9, 5));
        ASSERT_EQ(plan.size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            ExpectPlace(plan[static_cast<std::size_t>(i)], widths[count - 2] * i, 208, widths[count - 2], 32);
            EXPECT_EQ(plan[static_cast<std::size_t>(i)].id, 5U);
            EXPECT_TRUE(plan[static_cast<std::size_t>(i)].takesCallersLook);
        }
    }
}

TEST(SoftKeyLayout, WithAPairTheSlotsAreThoseOfOneLess)
{
    const int widths[] = { 160, 106, 106, 80, 64, 53 };
    for (const int pair : { 21, 37 }) {
        for (int count = 2; count <= 7; ++count) {
            std::vector<int> ids(9, 5);
            ids[static_cast<std::size_t>(count - 1)] = pair;
            const Plans plan = Plan(count, ids);
            ASSERT_EQ(plan.size(), static_cast<std::size_t>(count) + 1);
            ExpectPlace(plan[0], 0, 208, widths[count - 2], 32);
        }
    }
}

TEST(SoftKeyLayout, FourIdsOneOfThemAPairUseSlotsOf106PixelsAndFiveButtons)
{
    const Plans plan = Plan(4, { 18, 21, 0, 24, 0 });
    ASSERT_EQ(plan.size(), 5U);
    ExpectPlace(plan[0], 0, 208, 106, 32);
    EXPECT_EQ(plan[1].id, 40U);
    ExpectPlace(plan[1], 106, 208, 53, 32);
    EXPECT_EQ(plan[2].id, 41U);
    ExpectPlace(plan[2], 106 + 53, 208, 53, 32);
    EXPECT_EQ(plan[3].id, 24U);
    ExpectPlace(plan[3], 318, 208, 106, 32);
    EXPECT_EQ(plan[4].id, 0U);
}

TEST(SoftKeyLayout, ThePairInTheBarHasItsOwnSkins)
{
    const Plans plan = Plan(5, { 1, 2, 3, 4, 21, 99 });
    ASSERT_EQ(plan.size(), 6U);
    ExpectPlace(plan[4], 320, 208, 40, 32);
    ExpectPlace(plan[5], 360, 208, 40, 32);
    ExpectSkin(plan[4], TEXT("4but_up_normal"), TEXT("4but_up_down"), TEXT("4but_up_disable"));
    ExpectSkin(plan[5], TEXT("4but_down_normal"), TEXT("4but_down_down"), TEXT("4but_down_disable"));
    EXPECT_FALSE(plan[4].takesCallersLook);
    EXPECT_FALSE(plan[5].takesCallersLook);
}

TEST(SoftKeyLayout, TheListsScrollButtonsStandOnTheRightEdge)
{
    const Plans plan = Plan(4, { 18, 24, 22, 37, 99 });
    ASSERT_EQ(plan.size(), 5U);
    EXPECT_EQ(plan[3].id, 40U);
    ExpectPlace(plan[3], 258, 26, 62, 91);
    ExpectSkin(plan[3], TEXT("listscrollup_normal"), TEXT("listscrollup_down"), TEXT("listscrollup_disable"));
    EXPECT_EQ(plan[4].id, 41U);
    ExpectPlace(plan[4], 258, 117, 62, 91);
    ExpectSkin(plan[4], TEXT("listscrolldown_normal"), TEXT("listscrolldown_down"), TEXT("listscrolldown_disable"));
    EXPECT_FALSE(plan[3].takesCallersLook);
}

TEST(SoftKeyLayout, EachNumberOfSlotsHasItsSkin)
{
    EXPECT_EQ(Plan(2, { 1, 2 })[0].skin.normal, nullptr);
    EXPECT_EQ(Plan(2, { 1, 2 })[0].skin.pressed, nullptr);
    EXPECT_EQ(Plan(2, { 1, 2 })[0].skin.disabled, nullptr);
    ExpectSkin(Plan(3, { 1, 2, 3 })[2], TEXT("3but_normal"), TEXT("3but_down"), TEXT("3but_disable"));
    ExpectSkin(Plan(4, { 1, 2, 3, 4 })[2], TEXT("4but_normal"), TEXT("4but_down"), TEXT("4but_disable"));
    ExpectSkin(Plan(5, { 1, 2, 3, 4, 5 })[2], TEXT("5but_normal"), TEXT("5but_down"), TEXT("5but_disable"));
    ExpectSkin(Plan(6, { 1, 2, 3, 4, 5, 6 })[2], TEXT("6but_normal"), TEXT("6but_down"), TEXT("6but_disable"));
    ExpectSkin(Plan(7, { 1, 2, 3, 4, 5, 6, 7 })[6], TEXT("6but_normal"), TEXT("6but_down"), TEXT("6but_disable"));
}

TEST(SoftKeyLayout, TheVolumeSlotHasItsSkinWithoutADisabledImage)
{
    const Plans plan = Plan(3, { 1, 22, 3 });
    EXPECT_EQ(WString(plan[1].skin.normal), TEXT("\\Windows\\gui_3but_volume_ctrl_normal.gif"));
    EXPECT_EQ(WString(plan[1].skin.pressed), TEXT("\\Windows\\gui_3but_volume_ctrl_down.gif"));
    EXPECT_EQ(plan[1].skin.disabled, nullptr);
    EXPECT_TRUE(plan[1].takesCallersLook);
    ExpectPlace(plan[1], 106, 208, 106, 32);
}

TEST(SoftKeyLayout, AnIdOfZeroLeavesItsSlotEmpty)
{
    const Plans plan = Plan(3, { 1, 0, 3 });
    EXPECT_EQ(plan[1].id, 0U);
    EXPECT_EQ(plan[1].skin.normal, nullptr);
    ExpectPlace(plan[2], 212, 208, 106, 32);
}

TEST(SoftKeyLayout, MissingIdsAreEmptySlots)
{
    const Plans plan = Plan(3, { 1 });
    ASSERT_EQ(plan.size(), 3U);
    EXPECT_EQ(plan[0].id, 1U);
    EXPECT_EQ(plan[1].id, 0U);
    EXPECT_EQ(plan[2].id, 0U);
}

TEST(SoftKeyLayout, APairBehindTheCountDoesNotCount)
{
    EXPECT_EQ(Plan(3, { 1, 2, 3, 21 }).size(), 3U);
}

TEST(SoftKeyLayout, ASecondPairWithoutAButtonLeftIsLeftOut)
{
    const Plans plan = Plan(3, { 21, 0, 5, 37 });
    ASSERT_EQ(plan.size(), 4U);
    EXPECT_EQ(plan[0].id, 40U);
    EXPECT_EQ(plan[1].id, 41U);
    EXPECT_EQ(plan[2].id, 5U);
    EXPECT_EQ(plan[3].id, 0U);
}
