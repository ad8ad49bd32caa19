// What a command of the control program is, and how it speaks. It knows no command.
#pragma once

#include <cstdio>
#include <span>
#include <string>
#include <string_view>

struct Console {
    std::FILE* out;
    std::FILE* errors;
    bool showsProgress; // on `errors`: a terminal that `out` does not go to
};

struct Command {
    std::string_view name;
    std::string (*synopsis)();    // the name, then what follows it
    std::string_view description; // lines, in the user's words
    std::string (*optionLines)(); // a line for each of its own options, see OptionLine
    // `arguments`: what follows the name. Returns the program's exit status.
    int (*run)(std::span<const std::string_view> arguments, const Console& console);
};

constexpr int kFailed = 1;
constexpr int kBadUsage = 2;

// Says what is wrong in one line, and returns `status`.
int Complain(const Console& console, const std::string& what, int status);

// Writes `text` on `console.out` and returns the exit status. Says so when it cannot be written, unless nobody reads it
// any more.
[[nodiscard]] int Print(const Console& console, const std::string& text);

// A line of the help, with its end: the option, then what it does.
[[nodiscard]] std::string OptionLine(std::string_view option, std::string_view what);
