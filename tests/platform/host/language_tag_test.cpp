#include "platform/host/language_tag.h"

#include <gtest/gtest.h>

using namespace cardsong::host;

TEST(LanguageTag, IsKnownInEveryUsualForm)
{
    for (const char* tag : { "zh-TW", "zh_TW.UTF-8", "zh-Hant", "zh_HK", "0404", "ZH-tw" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0404) << tag;
    for (const char* tag : { "zh-CN", "zh_CN.GB18030", "zh", "zh-Hans-CN", "zh_SG", "0804" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0804) << tag;
    for (const char* tag : { "en", "en_GB.UTF-8", "en-US@euro", "0409" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0409) << tag;
    for (const char* tag : { "C", "POSIX", "", "de_DE", "e" })
        EXPECT_EQ(LanguageFromTag(tag), 0) << tag;
}
