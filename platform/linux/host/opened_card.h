// A card of links to songs that were named, with what the player finds beside a song.
#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace cardsong::host {

struct NamedSong {
    std::filesystem::path place;  // as it was named, from the root; perhaps a link
    std::filesystem::path target; // the file or folder itself
};

// Fills the folder `card` with the songs in their order, each in a folder of its own with its lyrics. Returns why not.
[[nodiscard]] std::error_code LinkSongs(const std::vector<NamedSong>& songs, const std::filesystem::path& card);

} // namespace cardsong::host
