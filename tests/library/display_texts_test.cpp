#include "library/display_texts.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatPlayTime, HasTheseTexts)
{
    const struct {
        std::uint32_t seconds;
        const WCHAR* text;
    } rows[] = { { 0, TEXT("--:--") },
                 { 1, TEXT("0:01") },
                 { 59, TEXT("0:59") },
                 { 60, TEXT("1:00") },
                 { 215, TEXT("3:35") },
                 { 3599, TEXT("59:59") },
                 { 3600, TEXT("1:00:00") },
                 { 3661, TEXT("1:01:01") },
                 { 36000, TEXT("10:00:00") },
                 { 35999, TEXT("9:59:59") },
                 { 4294967295, TEXT("1193046:28:15") } };
    for (const auto& row : rows)
        EXPECT_EQ(WString(FormatPlayTime(row.seconds)), row.text) << row.seconds;
}

TEST(FormatPlayTime, OverwritesOneText)
{
    const WCHAR* first = FormatPlayTime(59);
    EXPECT_EQ(FormatPlayTime(60), first);
    EXPECT_EQ(WString(first), TEXT("1:00"));
}

TEST(DecimalText, HasASignAndNoLeadingZeros)
{
    EXPECT_EQ(DecimalText(0), TEXT("0"));
    EXPECT_EQ(DecimalText(107), TEXT("107"));
    EXPECT_EQ(DecimalText(-7), TEXT("-7"));
    EXPECT_EQ(DecimalText(4294967295), TEXT("4294967295"));
}

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
