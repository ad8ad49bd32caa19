#include "gui/skin_list_title.h"

#include <gtest/gtest.h>

TEST(SkinListTitle, IsEmptyAtFirst)
{
    const SkinListTitle title;
    EXPECT_EQ(title.Text(), TEXT(""));
    EXPECT_EQ(title.OnPage(1, 1), TEXT(""));
}

TEST(SkinListTitle, OfALongTextTakes39Units)
{
    SkinListTitle title;
    title.Set(TEXT("0123456789012345678901234567890123456789"));
    EXPECT_EQ(title.Text(), TEXT("012345678901234567890123456789012345678"));
}

TEST(SkinListTitle, NoTextIsNoTitle)
{
    SkinListTitle title;
    title.Set(TEXT("Songs"));
    title.Set(nullptr);
    EXPECT_EQ(title.Text(), TEXT(""));
}

TEST(SkinListTitle, ThePageStandsBehindItWhereAsked)
{
    SkinListTitle title;
    title.Set(TEXT("Songs"));
    EXPECT_EQ(title.OnPage(2, 3), TEXT("Songs"));
    title.SetPageIndicator(SkinListPageIndicator::Shown);
    EXPECT_EQ(title.OnPage(2, 3), TEXT("Songs  2/3"));
    EXPECT_EQ(title.Text(), TEXT("Songs"));
}

TEST(SkinListTitle, ATextOfItsOwnIsNoStringAndStays)
{
    SkinListTitle title;
    title.SetString(17010);
    EXPECT_TRUE(title.IsString());
    title.Set(TEXT("Mine"));
    EXPECT_FALSE(title.IsString());
    title.Reload(nullptr);
    EXPECT_EQ(title.Text(), TEXT("Mine"));
}
