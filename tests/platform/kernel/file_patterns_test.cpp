#include "platform/file_patterns.h"

#include <gtest/gtest.h>

namespace cardsong::kernel {
namespace {

struct Case {
    const char* name;
    WString file;
    WString pattern;
    bool fits;
};

class FilePatterns : public ::testing::TestWithParam<Case> {};

TEST_P(FilePatterns, FitAsTheFileSystemSays)
{
    const auto& param = GetParam();
    EXPECT_EQ(MatchesPattern(param.file, PreparePattern(param.pattern)), param.fits);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, FilePatterns,
    ::testing::Values(Case{ "StarDotStarFitsEverything", TEXT("plain"), TEXT("*.*"), true },
                      Case{ "StarDotFitsANameWithoutExtension", TEXT("plain"), TEXT("*."), true },
                      Case{ "StarDotRefusesAnExtension", TEXT("a.txt"), TEXT("*."), false },
                      Case{ "QuestionMarkMayBeNothingBeforeADot", TEXT("a.txt"), TEXT("a??.txt"), true },
                      Case{ "QuestionMarkMayBeNothingAtTheEnd", TEXT("a"), TEXT("a??"), true },
                      Case{ "QuestionMarkIsNoMoreThanOneUnit", TEXT("abcd"), TEXT("a??"), false },
                      Case{ "QuestionMarkIsNoDot", TEXT("a.b"), TEXT("a?b"), false },
                      Case{ "StarCrossesDots", TEXT("a.b.mp3"), TEXT("*.mp3"), true },
                      Case{ "SuffixIsAtTheEnd", TEXT("a.mp3.txt"), TEXT("*.mp3"), false },
                      Case{ "CaseIsIgnored", TEXT("\u00C9.MP3"), TEXT("\u00E9.mp3"), true },
                      Case{ "DotBeforeAWildcardMayEndTheName", TEXT("plain"), TEXT("plain.*"), true },
                      Case{ "EmptyPatternFitsNothing", TEXT("a"), TEXT(""), false }),
    [](const auto& testCase) { return testCase.param.name; });

TEST(FilePatternsTime, AHostilePatternTakesNoLongerThanNameTimesPattern)
{
    WString pattern;
    for (int i = 0; i < 127; ++i)
        pattern += TEXT("*a");
    EXPECT_FALSE(MatchesPattern(WString(255, TEXT('a')), PreparePattern(pattern + TEXT("b"))));
}

} // namespace
} // namespace cardsong::kernel
