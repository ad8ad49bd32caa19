// The skins to choose from. A skin is a folder of files that are laid over those of the device's Windows folder; it
// lies in the folder Skins of the user's own tree or of the installed one.
#pragma once

#include <filesystem>
#include <string>
#include <variant>

namespace cardsong::host {

struct SkinError {
    std::string message; // one line without its end, in the user's words
};

// The folder of the skin called `name`, UTF-8 on Windows and the system's own bytes elsewhere; of two skins of one name
// the user's own. An empty name means no skin, and the folder is empty too. A name that there is none of is an error,
// which lists those that there are.
[[nodiscard]] std::variant<std::filesystem::path, SkinError>
ChooseSkin(const std::string& name, const std::filesystem::path& userTree, const std::filesystem::path& installedTree);

} // namespace cardsong::host
