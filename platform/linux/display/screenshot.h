// Writes the screen as a PNG picture (ISO/IEC 15948), one of its pixels a pixel.
#pragma once

#include <string>

namespace cardsong::display {

// Writes the screen as it stands to the host file `path`, which is replaced. False when it cannot be written.
[[nodiscard]] bool SaveScreenshot(const std::string& path);

} // namespace cardsong::display
