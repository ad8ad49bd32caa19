// Stands in for the windows in the display's tests: keeps what the display would tell them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cardsong::test {

// Forgets everything, presenter and raiser included.
void ResetRecordedInput();
// "down 1,2", "move 3,4", "up 5,6", "cancel", "key+ 13", "key- 13", "command 7 to Main", "tap 1,2 in front of
// Main", "bottom button 1", "exit key", "active", "inactive" in order.
std::vector<std::string> RecordedInput();
// The same, once `count` of them have come; fewer only if they do not come at all.
std::vector<std::string> WaitForInput(std::size_t count);
// As a drawing thread does when it is about to wait; false when no presenter is installed.
bool PresentFrame();
// As the program does that asks for the foreground; false when no raiser is installed.
bool AskToRaise();

} // namespace cardsong::test
