// What the program answers to its command line without running. Opens and starts nothing.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// Fills `options`, as ReadOptions does. When the command line asks for a text only, or is wrong, the answer is printed
// and the program's exit status returned: 0, or 2 for a wrong one. Otherwise the player is to run.
[[nodiscard]] std::optional<int> AnswerCommandLine(const std::vector<std::string>& arguments, const char* version,
                                                   Options& options);

} // namespace cardsong::host
