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

// What one option does: all of it, the rest stays at its default.
struct Sample {
    const char* name;
    const char* value; // null: it takes none
    void (*change)(Options& options);
    std::vector<const char*> wrongValues;
    const char* complaint; // about each of them
};

const Sample kSamples[] = {
    { "device", "/d", [](Options& options) { options.deviceDirectory = "/d"; }, {}, "" },
    { "card", "/c", [](Options& options) { options.cardDirectory = "/c"; }, {}, "" },
    { "language",
      "zh-TW",
      [](Options& options) { options.language = 0x0404; },
      { "klingon", "", "0" },
      "--language: not one of zh-TW, zh-CN, en, de, fr, ja, es" },
    { "skin", "amber", [](Options& options) { options.skin = "amber"; }, {}, "" },
    { "scale",
      "16",
      [](Options& options) { options.scale = 16; },
      { "0", "17", "-3", "2x", "x", "", "+2", "99999999999" },
      "--scale: not a whole number from 1 to 16" },
    { "fullscreen", nullptr, [](Options& options) { options.fullScreen = true; }, {}, "" },
    { "rotate",
      "270",
      [](Options& options) { options.turn = Turn::ThreeQuarters; },
      { "1", "45", "-90", "360", "90x", "left", "", "+90", "99999999999" },
      "--rotate: not one of 0, 90, 180, 270" },
    { "headless", nullptr, [](Options& options) { options.headless = true; }, {}, "" },
    { "run-for",
      "2.5",
      [](Options& options) { options.runForSeconds = 2.5; },
      { "-1", "soon", "nan", "inf", "", "5s", "604801" },
      "--run-for: not a number of seconds" },
    { "keys", "Enter wait:5", [](Options& options) { options.keyScript = "Enter wait:5"; }, {}, "" },
    { "screenshot", "s.png", [](Options& options) { options.screenshotFile = "s.png"; }, {}, "" },
    { "audio-sink", "null", [](Options& options) { options.audioSink = "null"; }, {}, "" },
    { "fill", nullptr, [](Options& options) { options.playerCommandLine = TEXT("--fill "); }, {}, "" },
    { "play", nullptr, [](Options& options) { options.playerCommandLine = TEXT("--play "); }, {}, "" },
    { "tell-exit", nullptr, [](Options& options) { options.playerCommandLine = TEXT("--tell-exit "); }, {}, "" },
    { "lyrics-utf8", nullptr, [](Options& options) { options.playerCommandLine = TEXT("--lyrics-utf8 "); }, {}, "" },
    { "verbose",
      nullptr,
      [](Options& options) {
          options.verbose = true;
          options.playerCommandLine = TEXT("--report ");
      },
      {},
      "" },
    { "doctor", nullptr, [](Options& options) { options.examine = true; }, {}, "" },
    { "version", nullptr, [](Options& options) { options.showVersion = true; }, {}, "" },
    { "help", nullptr, [](Options& options) { options.showHelp = true; }, {}, "" },
};

std::string Dashed(const char* name)
{
    return std::string("--") + name;
}

} // namespace

TEST(Options, EachRowOfTheTableHasItsSample)
{
    std::vector<std::string> names;
    for (const OptionRow& row : OptionTable())
        names.emplace_back(row.name);
    std::vector<std::string> sampled;
    for (const Sample& sample : kSamples)
        sampled.emplace_back(sample.name);
    EXPECT_EQ(names, sampled);
}

TEST(Options, EveryOptionReachesItsFieldAndNoOther)
{
    for (const Sample& sample : kSamples) {
        Options expected = Defaults();
        sample.change(expected);
        const std::string name = Dashed(sample.name);
        if (sample.value == nullptr) {
            EXPECT_EQ(Read({ name }), expected) << name;
        } else {
            EXPECT_EQ(Read({ name, sample.value }), expected) << name;
            EXPECT_EQ(Read({ name + "=" + sample.value }), expected) << name;
        }
    }
}

TEST(Options, ValuesWithoutAMeaningGetTheLineOfTheirOption)
{
    for (const Sample& sample : kSamples) {
        for (const char* value : sample.wrongValues)
            EXPECT_EQ(ErrorOf({ Dashed(sample.name), value }), sample.complaint) << value;
    }
}

TEST(Options, AValueIsNeededWhereTheTableNamesOneAndRefusedElsewhere)
{
    for (const OptionRow& row : OptionTable()) {
        const std::string name = Dashed(row.name);
        if (row.argument != nullptr)
            EXPECT_EQ(ErrorOf({ name }), name + ": needs a value");
        else
            EXPECT_EQ(ErrorOf({ name + "=yes" }), name + "=yes: not an option");
    }
}

TEST(Options, ThePlayerIsToldEachWordOnceInTheOrderGiven)
{
    EXPECT_EQ(Read({ "--verbose", "--fill", "--verbose" }).playerCommandLine, TEXT("--report --fill "));
}

TEST(Options, TheLastValueOfAnOptionCounts)
{
    EXPECT_EQ(Read({ "--scale", "0", "--scale", "3" }).scale, 3);
}

TEST(Options, NoTurnAtAllIsAWishToo)
{
    EXPECT_EQ(Read({ "--rotate", "0" }).turn, Turn::None);
    EXPECT_EQ(Read({ "--rotate", "90" }).turn, Turn::Quarter);
    EXPECT_EQ(Read({ "--rotate", "180" }).turn, Turn::Half);
    EXPECT_EQ(Read({}).turn, std::nullopt);
}

TEST(Options, WhatIsNotSaidStaysAsItWas)
{
    EXPECT_EQ(Read({}), Defaults());
}

TEST(Options, ErrorsNameTheWordThatIsWrong)
{
    EXPECT_EQ(ErrorOf({ "--nonsense" }), "--nonsense: not an option");
    EXPECT_EQ(ErrorOf({ "--card", "/c", "-x" }), "-x: not an option");
    EXPECT_EQ(ErrorOf({ "--card" }), "--card: needs a value");
    EXPECT_EQ(ErrorOf({ "--fill=yes" }), "--fill=yes: not an option");
}

TEST(Options, AScaleAndTheFullScreenExcludeEachOther)
{
    EXPECT_EQ(ErrorOf({ "--fullscreen", "--scale", "2" }), "--scale and --fullscreen exclude each other");
}

TEST(Options, AnUnknownOptionIsToldBeforeAValueWithoutAMeaning)
{
    EXPECT_EQ(ErrorOf({ "--scale", "0", "--nonsense" }), "--nonsense: not an option");
    EXPECT_EQ(ErrorOf({ "--run-for", "soon", "--scale", "0" }), "--scale: not a whole number from 1 to 16");
}

TEST(Options, WhatIsNoOptionIsASongInTheOrderGiven)
{
    const Options options = Read({ "b.mp3", "--fill", "a b.wma", "--", "--play" });
    EXPECT_EQ(options.songs, (std::vector<std::string>{ "b.mp3", "a b.wma", "--play" }));
    EXPECT_EQ(options.playerCommandLine, TEXT("--fill "));
}

TEST(Options, AWeekIsTheLongestRun)
{
    EXPECT_EQ(Read({ "--run-for", "604800" }).runForSeconds, 604800);
}

TEST(Options, ALetterMeansTheSameAsItsOption)
{
    EXPECT_TRUE(Read({ "-h" }).showHelp);
}

TEST(Options, HelpNamesEveryOption)
{
    const std::string help = HelpText();
    for (const OptionRow& row : OptionTable()) {
        const std::string value = row.argument != nullptr ? std::string("=") + row.argument : "";
        EXPECT_NE(help.find(Dashed(row.name) + value + " "), std::string::npos) << row.name;
        EXPECT_NE(help.find(std::string("  ") + row.help + "\n"), std::string::npos) << row.name;
    }
}

TEST(Options, HelpIsReadInThisForm)
{
    EXPECT_EQ(HelpText(), R"(Usage: cardsong [OPTION...] [SONG|FOLDER...]

Plays the songs of a memory card, or those that are named.

  --device=DIR         The folder that keeps the device's own files
  --card=DIR           The folder that is the memory card
  --language=TAG       zh-TW, zh-CN, en, de, fr, ja or es
  --skin=NAME          Wear another skin, for instance amber
  --scale=N            Show each pixel N times as large
  --fullscreen         Fill the screen
  --rotate=DEGREES     Turn picture and touch clockwise by 90, 180 or 270 degrees, for a panel that stands so
  --headless           Run without any display
  --run-for=SECONDS    Exit after so many seconds
  --keys=SCRIPT        Press keys and tap: "Enter wait:500 tap:60,180 Right"
  --screenshot=FILE    Write the last picture as PNG
  --audio-sink=NAME    Where the sound goes: null (nowhere, in real time) or an output of the system
  --fill               Fill an empty play list from the card at the first play
  --play               Play at once
  --tell-exit          End with status 10, and not 0, when exit is pressed
  --lyrics-utf8        Take lyrics that are valid UTF-8 for UTF-8
  --verbose            Say what plays and what the debug log says
  --doctor             Say what this machine lacks for playing, and exit
  --version            Print the version
  -h, --help           Print this help

Exit status: 0 the player was ended; 1 it could not start, or a picture could not be written; 2 an option means
nothing; 3 the display went away, after which the play list was saved; 10 exit was pressed, with --tell-exit; 130 it
did not answer and was given up.
--doctor: 0 it can play; 1 something is bad.
)");
}
