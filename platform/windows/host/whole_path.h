// Paths of the command line, which mean something only in the current folder.
#pragma once

#include <string>

namespace cardsong::host {

// The path from the root, with the system's own separators: it means the same after a change of the current folder. The
// path itself when the system knows no whole one. UTF-8.
[[nodiscard]] std::string WholePath(const std::string& path);

} // namespace cardsong::host
