#include "platform/linux/host/user_defaults.h"

#include "platform/host/options.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace cardsong::host;

namespace {

struct Environment {
    const char* all;
    const char* messages;
    const char* lang;
};

std::uint16_t LanguageIn(const Environment& environment)
{
    setenv("LC_ALL", environment.all, 1);
    setenv("LC_MESSAGES", environment.messages, 1);
    setenv("LANG", environment.lang, 1);
    const std::uint16_t language = UserDefaults().language;
    for (const char* name : { "LC_ALL", "LC_MESSAGES", "LANG" })
        unsetenv(name);
    return language;
}

} // namespace

TEST(UserDefaults, TakeTheFirstLanguageOfTheEnvironmentThatThePlayerKnows)
{
    EXPECT_EQ(LanguageIn({ "zh_TW.UTF-8", "zh_CN.UTF-8", "en_GB" }), 0x0404);
    EXPECT_EQ(LanguageIn({ "", "zh_CN.UTF-8", "zh_TW.UTF-8" }), 0x0804);
    EXPECT_EQ(LanguageIn({ "C", "it_IT", "zh_TW" }), 0x0404);
    EXPECT_EQ(LanguageIn({ "", "", "de_DE.UTF-8" }), 0x0407);
}

TEST(UserDefaults, AreEnglishWhereThePlayerKnowsNoLanguageOfTheEnvironment)
{
    EXPECT_EQ(LanguageIn({ "", "", "" }), 0x0409);
    EXPECT_EQ(LanguageIn({ "C", "C", "it_IT.UTF-8" }), 0x0409);
}

TEST(UserDefaults, GiveWayToTheLanguageOption)
{
    setenv("LANG", "de_DE.UTF-8", 1);
    Options options = UserDefaults();
    unsetenv("LANG");
    ASSERT_EQ(options.language, 0x0407);
    EXPECT_FALSE(ReadOptions({ "--language=zh-CN" }, options));
    EXPECT_EQ(options.language, 0x0804);
}

TEST(UserDefaults, AreTheUsersOwnFoldersAndALanguageThatThePlayerKnows)
{
    const Options options = UserDefaults();
    EXPECT_TRUE(options.deviceDirectory.ends_with("/cardsong")) << options.deviceDirectory;
    EXPECT_FALSE(options.cardDirectory.empty());
    EXPECT_NE(options.language, 0);
}
