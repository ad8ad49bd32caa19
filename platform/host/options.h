// The command line of the program as a record, the same on every system. Reads text; opens and starts nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cardsong::host {

// Texts are as the system gives them: any bytes on Linux, UTF-8 on Windows.
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
};

struct OptionError {
    std::string message; // one line without its end, in the user's words
};

// Fills `options` from the arguments (without the program's name); what they are silent about stays as it is, so that
// the caller sets it first. Returns the error when an option is unknown, lacks its value, or has a value that means
// nothing. Not for two threads at once.
[[nodiscard]] std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options);

// What --help prints.
extern const char* const kHelpText;

} // namespace cardsong::host
