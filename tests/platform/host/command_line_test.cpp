#include "platform/host/command_line.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::host;

struct Answer {
    std::optional<int> status;
    std::string out;
    std::string errors;
    bool operator==(const Answer&) const = default;
};

Answer AnswerTo(const std::vector<std::string>& arguments)
{
    Options options;
    options.language = 0x0409;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto status = AnswerCommandLine(arguments, "1.2.3", options);
    const std::string out = testing::internal::GetCapturedStdout();
    return { status, out, testing::internal::GetCapturedStderr() };
}

TEST(CommandLine, IsSilentWhenThePlayerIsToRun)
{
    EXPECT_EQ(AnswerTo({ "--headless" }), (Answer{ std::nullopt, "", "" }));
}

TEST(CommandLine, PrintsTheHelp)
{
    EXPECT_EQ(AnswerTo({ "--help" }), (Answer{ 0, HelpText(), "" }));
}

TEST(CommandLine, PrintsTheVersion)
{
    EXPECT_EQ(AnswerTo({ "--version" }), (Answer{ 0, "cardsong 1.2.3\n", "" }));
}

TEST(CommandLine, ThatIsWrongGetsOneLineOfErrors)
{
    EXPECT_EQ(AnswerTo({ "--help", "--scale=0" }),
              (Answer{ 2, "", "cardsong: --scale: not a whole number from 1 to 16\n" }));
}

} // namespace
