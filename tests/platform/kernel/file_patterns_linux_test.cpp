#include "platform/linux/kernel/file_patterns.h"

#include <gtest/gtest.h>

namespace cardsong::kernel {
namespace {

struct Case {
    const char* name;
    std::u16string file;
    std::u16string pattern;
    bool fits;
};

class FilePatterns : public ::testing::TestWithParam<Case> {};

TEST_P(FilePatterns, FitAsTheFileSystemSays)
{
    const auto& param = GetParam();
    EXPECT_EQ(MatchesPattern(param.file, PreparePattern(param.pattern)), param.fits);
}

INSTANTIATE_TEST_SUITE_P(Rules, FilePatterns,
                         ::testing::Values(Case{ "StarDotStarFitsEverything", u"plain", u"*.*", true },
                                           Case{ "StarDotFitsANameWithoutExtension", u"plain", u"*.", true },
                                           Case{ "StarDotRefusesAnExtension", u"a.txt", u"*.", false },
                                           Case{ "QuestionMarkMayBeNothingBeforeADot", u"a.txt", u"a??.txt", true },
                                           Case{ "QuestionMarkMayBeNothingAtTheEnd", u"a", u"a??", true },
                                           Case{ "QuestionMarkIsNoMoreThanOneUnit", u"abcd", u"a??", false },
                                           Case{ "QuestionMarkIsNoDot", u"a.b", u"a?b", false },
                                           Case{ "StarCrossesDots", u"a.b.mp3", u"*.mp3", true },
                                           Case{ "SuffixIsAtTheEnd", u"a.mp3.txt", u"*.mp3", false },
                                           Case{ "CaseIsIgnored", u"\u00C9.MP3", u"\u00E9.mp3", true },
                                           Case{ "DotBeforeAWildcardMayEndTheName", u"plain", u"plain.*", true },
                                           Case{ "EmptyPatternFitsNothing", u"a", u"", false }),
                         [](const auto& testCase) { return testCase.param.name; });

TEST(FilePatternsTime, AHostilePatternTakesNoLongerThanNameTimesPattern)
{
    std::u16string pattern;
    for (int i = 0; i < 127; ++i)
        pattern += u"*a";
    EXPECT_FALSE(MatchesPattern(std::u16string(255, u'a'), PreparePattern(pattern + u"b")));
}

} // namespace
} // namespace cardsong::kernel
