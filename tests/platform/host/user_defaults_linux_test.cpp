#include "platform/linux/host/user_defaults.h"

#include <gtest/gtest.h>

using namespace cardsong::host;

TEST(UserDefaults, AreTheUsersOwnFoldersAndALanguageThatThePlayerKnows)
{
    const Options options = UserDefaults();
    EXPECT_TRUE(options.deviceDirectory.ends_with("/cardsong")) << options.deviceDirectory;
    EXPECT_FALSE(options.cardDirectory.empty());
    EXPECT_NE(options.language, 0);
}
