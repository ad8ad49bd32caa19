#include "platform/linux/host/opened_card.h"

#include "platform/linux/host/opened_lyrics.h"

#include <cstdio>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

// Each song has a folder of its own, so that songs of one name stand beside each other. A card is listed in the order
// of the names.
Path FolderOfSong(const Path& card, std::size_t index)
{
    char name[24];
    std::snprintf(name, sizeof(name), "%06zu", index + 1);
    return card / name;
}

// What the song is called where it was named. A link may do without the extension, a song on a card may not.
Path EntryName(const NamedSong& song, bool isFolder)
{
    Path place = song.place;
    while (!place.has_filename() && place.has_relative_path())
        place = place.parent_path(); // separators at the end
    Path name = place.filename();
    if (name.empty() || name == "." || name == "..")
        name = song.target.filename();
    if (name.empty())
        return "root";
    if (!isFolder && !name.has_extension())
        name += song.target.extension();
    return name;
}

} // namespace

std::error_code LinkSongs(const std::vector<NamedSong>& songs, const Path& card)
{
    LyricsLinks lyrics;
    std::error_code error;
    for (std::size_t i = 0; i < songs.size(); ++i) {
        const Path folder = FolderOfSong(card, i);
        if (std::filesystem::create_directory(folder, error); error)
            return error;
        std::error_code unknown;
        const bool isFolder = std::filesystem::is_directory(songs[i].target, unknown);
        const Path entry = folder / EntryName(songs[i], isFolder);
        if (std::filesystem::create_symlink(songs[i].target, entry, error); error)
            return error;
        if (!isFolder)
            lyrics.Make(songs[i], entry);
    }
    return {};
}

} // namespace cardsong::host
