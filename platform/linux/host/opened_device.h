// The device of a player of named songs: the user's own in looks and settings, with nothing of what is saved.
#pragma once

#include <filesystem>
#include <system_error>

namespace cardsong::host {

// Fills the folder `device` from the user's: a copy of the registry, links to the user's own pictures and texts, and to
// the lyrics folder. Nothing that the player writes goes through a link. Returns why not.
[[nodiscard]] std::error_code BorrowFromUser(const std::filesystem::path& usersDevice,
                                             const std::filesystem::path& device);

} // namespace cardsong::host
