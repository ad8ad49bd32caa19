// The command line of the program as a record, the same on every system. Reads text; opens and starts nothing.
#pragma once

#include "platform/ce.h"
#include "platform/host/viewport.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cardsong::host {

// Texts are as the system gives them: any bytes on Linux, UTF-8 on Windows.
struct Options {
    std::string deviceDirectory; // the user's writable tree
    std::string cardDirectory;
    std::vector<std::string> songs; // files and folders to play instead of the card; empty: the card
    std::uint16_t language = 0;
    std::string skin; // its name; empty: the installed one
    int scale = 0;    // 0: as large as fits the desktop comfortably
    bool fullScreen = false;
    std::optional<Turn> turn; // nothing: as the screen needs
    bool headless = false;
    double runForSeconds = 0; // 0: until the user ends it
    std::string keyScript;
    std::string screenshotFile;
    std::string audioSink; // empty: the first that works
    bool verbose = false;
    bool examine = false; // say what playing lacks instead of playing
    bool showVersion = false;
    bool showHelp = false;
    WString playerCommandLine; // what WinMain gets: words, each with a blank after it

    bool operator==(const Options&) const = default;
};

struct OptionError {
    std::string message; // one line without its end, in the user's words
};

// Fills `options` from the arguments (without the program's name); what they do not name stays as the caller set it.
// Returns the error when an option is unknown, lacks its value, or has a value that means nothing. Not for two threads
// at once.
[[nodiscard]] std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options);

// What --help prints.
[[nodiscard]] std::string HelpText();

// One option of the command line. Texts are static; what a row leaves out, its option does not have.
struct OptionRow {
    const char* name = nullptr;                                   // without its dashes
    char letter = 0;                                              // its short form
    const char* argument = nullptr;                               // what the help calls its value
    const char* help = nullptr;                                   // one line
    void (*store)(const char* value, Options& options) = nullptr; // into its field
    bool (*hasMeaning)(const Options& options) = nullptr;         // asked of the field when all options are stored
    const char* complaint = nullptr;                              // about a value without a meaning
    const WCHAR* playerWord = nullptr;                            // what WinMain is told when the option is given
};
// Every option, in the order of the help.
[[nodiscard]] std::span<const OptionRow> OptionTable();

} // namespace cardsong::host
