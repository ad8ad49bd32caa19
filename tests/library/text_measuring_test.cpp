#include "library/text_measuring.h"

#include <gtest/gtest.h>

namespace {

class MeasuredText : public testing::Test {
protected:
    MeasuredText() : m_font(Font(20)) {}
    ~MeasuredText() override { DeleteObject(m_font); }

    static HFONT Font(LONG heightPx)
    {
        LOGFONTW description = {};
        description.lfHeight = heightPx;
        return CreateFontIndirectW(&description);
    }
    SIZE Size(const WCHAR* text) { return MeasureText(text, m_font); }

private:
    HFONT m_font;
};

TEST_F(MeasuredText, OfMoreTextIsWiderAndAsHigh)
{
    const SIZE one = Size(TEXT("M"));
    const SIZE three = Size(TEXT("MMM"));
    EXPECT_GT(one.cx, 0);
    EXPECT_GT(one.cy, 0);
    EXPECT_EQ(three.cx, 3 * one.cx);
    EXPECT_EQ(three.cy, one.cy);
}

TEST_F(MeasuredText, OfTheSameTextInALargerFontIsLarger)
{
    const HFONT font = Font(40);
    const SIZE small = Size(TEXT("M"));
    const SIZE large = MeasureText(TEXT("M"), font);
    DeleteObject(font);
    EXPECT_GT(large.cx, small.cx);
    EXPECT_GT(large.cy, small.cy);
}

TEST_F(MeasuredText, OfNothingIsNothing)
{
    EXPECT_EQ(Size(nullptr).cx, 0);
    EXPECT_EQ(Size(nullptr).cy, 0);
    EXPECT_EQ(Size(TEXT("")).cx, 0);
}

} // namespace
