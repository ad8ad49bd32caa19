// Pictures of the device's screen.
#pragma once

#include <string>

namespace cardsong::screen {

// Writes what the screen shows, or showed last, as a PNG of 320 x 240 pixels. `path` is UTF-8. Any thread; false when
// nothing was shown yet or the file cannot be written.
bool SaveScreenshot(const std::string& path);

// Keeps what the screen shows, for a picture that is asked for when its window is gone.
void KeepLastPicture();

} // namespace cardsong::screen
