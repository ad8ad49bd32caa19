#include "app/launch_options.h"

#include "platform/host/options.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

LaunchOptions FillOnly()
{
    LaunchOptions options;
    options.fillFromCard = true;
    return options;
}

LaunchOptions ReportOnly()
{
    LaunchOptions options;
    options.report = true;
    return options;
}

TEST(LaunchOptions, AreUnsetWithoutACommandLine)
{
    EXPECT_EQ(ReadLaunchOptions(nullptr), LaunchOptions{});
    EXPECT_EQ(ReadLaunchOptions(TEXT("")), LaunchOptions{});
}

TEST(LaunchOptions, EachWordSetsItsOwn)
{
    EXPECT_EQ(ReadLaunchOptions(TEXT("--fill")), FillOnly());
    EXPECT_EQ(ReadLaunchOptions(TEXT("--report")), ReportOnly());
    LaunchOptions playOnly;
    playOnly.playAtOnce = true;
    EXPECT_EQ(ReadLaunchOptions(TEXT("--play")), playOnly);
    LaunchOptions tellOnly;
    tellOnly.tellExit = true;
    EXPECT_EQ(ReadLaunchOptions(TEXT("--tell-exit")), tellOnly);
    LaunchOptions utf8Only;
    utf8Only.lyricsUtf8 = true;
    EXPECT_EQ(ReadLaunchOptions(TEXT("--lyrics-utf8")), utf8Only);
}

TEST(LaunchOptions, WordsAreWholeAndPartedByBlanks)
{
    EXPECT_EQ(ReadLaunchOptions(TEXT("--filled --reports fill")), LaunchOptions{});
    EXPECT_EQ(ReadLaunchOptions(TEXT("x  --report ")), ReportOnly());
    const LaunchOptions both = ReadLaunchOptions(TEXT("--fill --report"));
    EXPECT_TRUE(both.fillFromCard);
    EXPECT_TRUE(both.report);
}

// A word that only one side knows would do nothing, and nobody would hear of it.
TEST(LaunchOptions, EveryWordThatAHostSaysMeansSomethingOfItsOwn)
{
    std::vector<LaunchOptions> meant{ LaunchOptions{} };
    for (const auto& row : cardsong::host::OptionTable()) {
        if (row.playerWord == nullptr)
            continue;
        const LaunchOptions options = ReadLaunchOptions(row.playerWord);
        for (const LaunchOptions& other : meant)
            EXPECT_NE(options, other) << row.name;
        meant.push_back(options);
    }
}

} // namespace
