#include "gui/caption_text.h"

#include "tests/gui/window_fixture.h"

#include <gtest/gtest.h>

using namespace cardsong::test;

TEST(CaptionFontChoice, ChineseTakesTheSizeOfTheButtonAtNormalWeight)
{
    for (const LANGID language : { LANGID{ 2052 }, LANGID{ 1028 } }) {
        const LOGFONTW font = ChooseCaptionFont(language, 18, 96);
        EXPECT_EQ(font.lfHeight, -24);
        EXPECT_EQ(font.lfWeight, 400);
    }
}

TEST(CaptionFontChoice, EveryOtherLanguageTakes11PointsBold)
{
    for (const LANGID language : { LANGID{ 1033 }, LANGID{ 1041 }, LANGID{ 3076 }, LANGID{ 0 } }) {
        const LOGFONTW font = ChooseCaptionFont(language, 18, 96);
        EXPECT_EQ(font.lfHeight, -14); // 11 x 96 / 72 = 14.67
        EXPECT_EQ(font.lfWeight, 700);
    }
}

TEST(CaptionFontChoice, TheHeightIsCutToWholePixels)
{
    EXPECT_EQ(ChooseCaptionFont(1028, 11, 96).lfHeight, -14);
    EXPECT_EQ(ChooseCaptionFont(1028, 12, 131).lfHeight, -21); // 21.83
    EXPECT_EQ(ChooseCaptionFont(1028, 0, 96).lfHeight, 0);
}

TEST(CaptionFontChoice, AllElseIsLeftToTheSystem)
{
    const LOGFONTW font = ChooseCaptionFont(1033, 12, 96);
    EXPECT_EQ(font.lfWidth, 0);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(font.lfCharSet, 0);
    EXPECT_EQ(font.lfFaceName[0], 0);
}

TEST(CaptionFontCache, GivesTheSameFontUntilTheSizeChanges)
{
    const Picture picture;
    CaptionFont font;
    const HFONT first = font.Get(picture.Context(), 20);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(font.Get(picture.Context(), 20), first);
}

TEST(TextMeasure, SetsLeftTopAndBottomAndAddsTheWidthToTheRightEdge)
{
    const Picture picture;
    const UniqueFont font = CreateCaptionFont(picture.Context(), 20);
    const SelectedObject selected(picture.Context(), font.Get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(picture.Context(), &metrics);
    SIZE size = {};
    int fit = 0;
    GetTextExtentExPointW(picture.Context(), TEXT("Cardsong"), 8, 10000, &fit, nullptr, &size);
    ASSERT_GT(size.cx, 0);
    RECT rect = { 5, 6, 100, 8 };
    MeasureText(picture.Context(), TEXT("Cardsong"), rect);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.bottom, metrics.tmHeight + metrics.tmExternalLeading);
    EXPECT_EQ(rect.right, 100 + size.cx);
}

TEST(TextMeasure, AnEmptyTextAddsNothing)
{
    const Picture picture;
    RECT rect = { 5, 6, 100, 8 };
    MeasureText(picture.Context(), TEXT(""), rect);
    EXPECT_EQ(rect.right, 100);
    EXPECT_EQ(rect.left, 0);
}

TEST(TextMeasure, ANullTextIsAsWideAsTheScreen)
{
    const Picture picture;
    RECT rect = { 5, 6, 100, 0 };
    MeasureText(picture.Context(), nullptr, rect);
    EXPECT_EQ(rect.right, 320);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_GT(rect.bottom, 0);
}
