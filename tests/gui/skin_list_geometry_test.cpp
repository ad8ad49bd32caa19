#include "gui/skin_list_geometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<LONG> Edges(const RECT& rect)
{
    return { rect.left, rect.top, rect.right, rect.bottom };
}

} // namespace

TEST(SkinListGeometry, TitleAndRowsLieWhereTheSkinHasThem)
{
    EXPECT_EQ(Edges(kSkinListTitleRect), (std::vector<LONG>{ 0, 0, 300, 26 }));
    EXPECT_EQ(Edges(kSkinListRowRects[0]), (std::vector<LONG>{ 0, 27, 258, 71 }));
    EXPECT_EQ(Edges(kSkinListRowRects[1]), (std::vector<LONG>{ 0, 73, 258, 117 }));
    EXPECT_EQ(Edges(kSkinListRowRects[2]), (std::vector<LONG>{ 0, 119, 258, 163 }));
    EXPECT_EQ(Edges(kSkinListRowRects[3]), (std::vector<LONG>{ 0, 165, 258, 209 }));
}

TEST(SkinListGeometry, SeparatorsAreOnePixelHighInTheGaps)
{
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(Edges(kSkinListSeparators[static_cast<std::size_t>(i - 1)]),
                  (std::vector<LONG>{ 5, 26 + 46 * i, 258, 27 + 46 * i }));
}

TEST(SkinListGeometry, APointBelongsToTheRowThatHoldsIt)
{
    for (int row = 0; row < kSkinListRows; ++row) {
        const RECT& rect = kSkinListRowRects[static_cast<std::size_t>(row)];
        EXPECT_EQ(SkinListRowAt({ rect.left, rect.top }), row);
        EXPECT_EQ(SkinListRowAt({ rect.right - 1, rect.bottom - 1 }), row);
        EXPECT_EQ(SkinListRowAt({ rect.right, rect.top }), std::nullopt);
        EXPECT_EQ(SkinListRowAt({ rect.left - 1, rect.top }), std::nullopt);
        EXPECT_EQ(SkinListRowAt({ rect.left, rect.top - 1 }), std::nullopt);
        EXPECT_EQ(SkinListRowAt({ rect.left, rect.bottom }), std::nullopt); // a gap
    }
}

TEST(SkinListGeometry, ATextAloneStandsTenPixelsIntoTheRow)
{
    const SkinListBoxes boxes = SkinListBoxesOf(1, SkinListMode::Text);
    EXPECT_EQ(Edges(boxes.mainText), (std::vector<LONG>{ 10, 73, 258, 117 }));
    EXPECT_EQ(Edges(boxes.firstCheck), (std::vector<LONG>{ 0, 0, 0, 0 }));
    EXPECT_EQ(Edges(boxes.secondCheck), (std::vector<LONG>{ 0, 0, 0, 0 }));
    EXPECT_EQ(Edges(boxes.secondaryText), (std::vector<LONG>{ 0, 0, 0, 0 }));
}

TEST(SkinListGeometry, ACheckBoxLeaves145PixelsToTheTextAnd50ToTheSecondOne)
{
    const SkinListBoxes boxes = SkinListBoxesOf(0, SkinListMode::CheckedText);
    EXPECT_EQ(Edges(boxes.firstCheck), (std::vector<LONG>{ 0, 27, 45, 71 }));
    EXPECT_EQ(Edges(boxes.mainText), (std::vector<LONG>{ 45, 27, 190, 71 }));
    EXPECT_EQ(Edges(boxes.secondaryText), (std::vector<LONG>{ 190, 27, 240, 71 }));
    EXPECT_EQ(Edges(boxes.secondCheck), (std::vector<LONG>{ 0, 0, 0, 0 }));
}

TEST(SkinListGeometry, ASecondCheckBoxEnds45PixelsBeforeTheRow)
{
    const SkinListBoxes boxes = SkinListBoxesOf(3, SkinListMode::TwoChecks);
    EXPECT_EQ(Edges(boxes.firstCheck), (std::vector<LONG>{ 0, 165, 45, 209 }));
    EXPECT_EQ(Edges(boxes.mainText), (std::vector<LONG>{ 45, 165, 190, 209 }));
    EXPECT_EQ(Edges(boxes.secondCheck), (std::vector<LONG>{ 190, 165, 213, 209 }));
    EXPECT_EQ(Edges(boxes.secondaryText), (std::vector<LONG>{ 0, 0, 0, 0 }));
}
