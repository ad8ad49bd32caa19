// How a program of the console meets its system.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace cardsong::host {

// Opens what the parent closed of standard input, output and error, so that no other file gets their numbers: reading
// and writing there fail as before. The first call of main.
void OpenStandardStreams();

// What main got, without the program's name: UTF-8 on Windows, whose console is then told so; elsewhere as it is.
[[nodiscard]] std::vector<std::string> ConsoleArguments(int count, char** arguments);

[[nodiscard]] bool IsTerminal(std::FILE* stream);

} // namespace cardsong::host
