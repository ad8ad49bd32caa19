// The device's installed files - skin, texts, sounds -, which lie at a place that the program's own place tells.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace cardsong::host {

// `program`: its file. The tree in the share folder beside an installed program's folder, or the one beside a program
// that was just built; nothing when there is neither.
[[nodiscard]] std::optional<std::filesystem::path> FindInstalledTree(const std::filesystem::path& program);

// One line in the user's words, without its end: what is missing, and where it was looked for. UTF-8 on Windows, the
// system's own bytes elsewhere.
[[nodiscard]] std::string ExplainMissingTree(const std::filesystem::path& program);

} // namespace cardsong::host
