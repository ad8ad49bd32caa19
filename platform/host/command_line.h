// What the program answers to its command line without running. Opens and starts nothing.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// Fills `options`, as ReadOptions does. Prints the answer to a command line that is wrong, or asks for a text only, and
// returns the program's exit status: 2, or 0. Nothing: the player is to run.
[[nodiscard]] std::optional<int> AnswerCommandLine(const std::vector<std::string>& arguments, const char* version,
                                                   Options& options);

} // namespace cardsong::host
