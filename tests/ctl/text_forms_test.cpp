#include "ctl/text_forms.h"

#include <gtest/gtest.h>

namespace {

TEST(TextForms, Utf8ComesFromUtf16AndBack)
{
    EXPECT_EQ(Utf8(TEXT("\u6B4C\u66F2")), "\xE6\xAD\x8C\xE6\x9B\xB2");
    EXPECT_TRUE(Utf16("\xE6\xAD\x8C\xE6\x9B\xB2") == TEXT("\u6B4C\u66F2"));
    EXPECT_TRUE(Utf16("").empty());
    EXPECT_EQ(ValidUtf8("a\xB8z"), "a\xEF\xBF\xBDz");
}

TEST(TextForms, AFieldOfALineHasNoTabsAndNoLineEnds)
{
    EXPECT_EQ(WithEscapes("a\tb\nc\rd\\e"), "a\\tb\\nc\\rd\\\\e");
}

TEST(TextForms, JsonStringsEscapeWhatTheyMust)
{
    EXPECT_EQ(JsonString("a\"b\\c\n\x01"), "\"a\\\"b\\\\c\\u000a\\u0001\"");
    EXPECT_EQ(JsonString("\xE6\xAD\x8C"), "\"\xE6\xAD\x8C\"");
}

TEST(TextForms, NumbersAreDecimalOrHexadecimalAndWhole)
{
    DWORD number = 0;
    EXPECT_TRUE(ReadNumber("31", number));
    EXPECT_EQ(number, 31U);
    EXPECT_TRUE(ReadNumber("0x1F", number));
    EXPECT_EQ(number, 31U);
    EXPECT_TRUE(ReadNumber("4294967295", number));
    EXPECT_EQ(number, 4294967295U);
    for (const char* text : { "", "0x", "4294967296", "-1", "3a", " 3", "3 ", "0x1g" })
        EXPECT_FALSE(ReadNumber(text, number)) << text;
}

} // namespace
