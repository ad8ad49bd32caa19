// The command line of the Linux program as a record. Reads the text and the environment; opens and starts nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cardsong::host {

struct Options {
    std::string deviceDirectory; // the user's writable tree
    std::string cardDirectory;
    std::uint16_t language = 0;
    int scale = 0; // 0: as large as fits the desktop comfortably
    bool fullScreen = false;
    bool headless = false;
    double runForSeconds = 0; // 0: until the user ends it
    std::string keyScript;
    std::string screenshotFile;
    std::string audioSink; // empty: the first that works
    bool fill = false;
    bool verbose = false;
    bool showVersion = false;
    bool showHelp = false;
    std::string helpText;
};

struct OptionError {
    std::string message; // one line without its end, in the user's words
};

// Fills `options` from the arguments (without the program's name) and, where they are silent, from the environment.
// Returns the error when an option is unknown, lacks its value, or has a value that means nothing.
[[nodiscard]] std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options);

// The language identifier of a tag such as "zh-TW", "zh_CN.UTF-8", "en" or "0404"; 0 when it means none that the player
// knows.
[[nodiscard]] std::uint16_t LanguageFromTag(const std::string& tag);

} // namespace cardsong::host
