// The display on Wayland, and what keeps it from opening.
#pragma once

#include "platform/linux/display/display.h"

#include <string>

namespace cardsong::display {

constexpr int kWaylandAnswerLimitMs = 5000;

// `name` is that of the compositor's socket in XDG_RUNTIME_DIR, or its whole path. Start gives a compositor
// `answerLimitMs` to take the connection, and as much for each of its two answers.
std::unique_ptr<Display> MakeWaylandDisplay(const DisplayOptions& options, const std::string& name,
                                            int answerLimitMs = kWaylandAnswerLimitMs);

// Reaches the compositor as Start does, and opens no window. An empty text, or why the display cannot be opened.
[[nodiscard]] std::string ProbeWaylandDisplay(const std::string& name);

} // namespace cardsong::display
