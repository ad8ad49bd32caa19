// The device's installed files: skin, texts, sounds. The place of the program tells where they lie.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace cardsong::host {

// `program`: the program's file. Returns the tree in the data folder that an installed program has beside its own
// folder, else the one beside a program that was just built; nothing when there is neither.
[[nodiscard]] std::optional<std::filesystem::path> FindInstalledTree(const std::filesystem::path& program);

// One line in the user's words, without its end: what is missing, and where it was looked for. UTF-8 on Windows, the
// system's own bytes elsewhere.
[[nodiscard]] std::string ExplainMissingTree(const std::filesystem::path& program);

} // namespace cardsong::host
