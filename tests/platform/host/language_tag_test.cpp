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
    for (const char* tag : { "de", "de_DE.UTF-8", "de-AT", "DE-ch", "0407" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0407) << tag;
    for (const char* tag : { "fr", "fr_FR@euro", "fr-CA", "040c", "040C" })
        EXPECT_EQ(LanguageFromTag(tag), 0x040C) << tag;
    for (const char* tag : { "ja", "ja_JP.eucJP", "0411" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0411) << tag;
    for (const char* tag : { "es", "es_ES.UTF-8", "es-MX", "0C0A", "040a" })
        EXPECT_EQ(LanguageFromTag(tag), 0x0C0A) << tag;
}

TEST(LanguageTag, MeansNothingWhenItIsNoneOfThePlayers)
{
    for (const char* tag : { "C", "POSIX", "", "e", "it_IT", "den", "zhx", "eng", "z", "-", "0412", "040", "04040" })
        EXPECT_EQ(LanguageFromTag(tag), 0) << tag;
}
