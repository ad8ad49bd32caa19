// How a program of the console meets its system.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace cardsong::host {

// What main got, without the program's name: UTF-8 on Windows, whose console is then told so; elsewhere as it is.
[[nodiscard]] std::vector<std::string> ConsoleArguments(int count, char** arguments);

[[nodiscard]] bool IsTerminal(std::FILE* stream);

} // namespace cardsong::host
