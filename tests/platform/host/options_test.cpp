#include "platform/host/options.h"

#include <gtest/gtest.h>

using namespace cardsong::host;

namespace {

Options Defaults()
{
    Options options;
    options.deviceDirectory = "device";
    options.cardDirectory = "card";
    options.language = 0x0409;
    return options;
}

Options Read(const std::vector<std::string>& arguments)
{
    Options options = Defaults();
    const auto error = ReadOptions(arguments, options);
    EXPECT_FALSE(error.has_value()) << error->message;
    return options;
}

std::string ErrorOf(const std::vector<std::string>& arguments)
{
    Options options = Defaults();
    const auto error = ReadOptions(arguments, options);
    return error ? error->message : "";
}

} // namespace

TEST(Options, EveryOptionReachesItsField)
{
    const Options options =
        Read({ "--device", "/d", "--card=/c", "--language", "zh-TW", "--scale", "3", "--headless", "--run-for", "2.5",
               "--keys", "Enter", "--screenshot", "s.png", "--audio-sink", "null", "--fill", "--verbose" });
    EXPECT_EQ(options.deviceDirectory, "/d");
    EXPECT_EQ(options.cardDirectory, "/c");
    EXPECT_EQ(options.language, 0x0404);
    EXPECT_EQ(options.scale, 3);
    EXPECT_TRUE(options.headless);
    EXPECT_DOUBLE_EQ(options.runForSeconds, 2.5);
    EXPECT_EQ(options.keyScript, "Enter");
    EXPECT_EQ(options.screenshotFile, "s.png");
    EXPECT_EQ(options.audioSink, "null");
    EXPECT_TRUE(options.fill);
    EXPECT_TRUE(options.verbose);
    EXPECT_FALSE(options.fullScreen);
    EXPECT_FALSE(options.showHelp);
    EXPECT_FALSE(options.showVersion);
}

TEST(Options, WhatIsNotSaidStaysAsItWas)
{
    const Options options = Read({});
    EXPECT_EQ(options.deviceDirectory, "device");
    EXPECT_EQ(options.cardDirectory, "card");
    EXPECT_EQ(options.language, 0x0409);
    EXPECT_EQ(options.scale, 0);
    EXPECT_EQ(options.runForSeconds, 0);
}

TEST(Options, ErrorsNameTheWordThatIsWrong)
{
    EXPECT_EQ(ErrorOf({ "--nonsense" }), "--nonsense: not an option");
    EXPECT_EQ(ErrorOf({ "--card", "/c", "-x" }), "-x: not an option");
    EXPECT_EQ(ErrorOf({ "stray" }), "stray: not an option");
    EXPECT_EQ(ErrorOf({ "--card" }), "--card: needs a value");
    EXPECT_EQ(ErrorOf({ "--fill=yes" }), "--fill=yes: not an option");
}

TEST(Options, BadOptionsGetOneLineThatSaysWhatIsWrong)
{
    const std::vector<std::vector<std::string>> bad{ { "--nonsense" },       { "--scale", "0" },
                                                     { "--scale", "2x" },    { "--scale", "17" },
                                                     { "--scale" },          { "--language", "klingon" },
                                                     { "--run-for", "-1" },  { "--run-for", "soon" },
                                                     { "--run-for", "nan" }, { "stray" },
                                                     { "--scale", "-3" },    { "--fullscreen", "--scale", "2" } };
    for (const auto& arguments : bad) {
        const std::string message = ErrorOf(arguments);
        EXPECT_FALSE(message.empty()) << arguments[0];
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
}

TEST(Options, HelpNamesEveryOption)
{
    EXPECT_TRUE(Read({ "--help" }).showHelp);
    EXPECT_TRUE(Read({ "-h" }).showHelp);
    for (const char* name : { "--device", "--card", "--language", "--scale", "--fullscreen", "--headless", "--run-for",
                              "--keys", "--screenshot", "--audio-sink", "--fill", "--verbose", "--version", "--help" })
        EXPECT_NE(std::string(kHelpText).find(name), std::string::npos) << name;
}
