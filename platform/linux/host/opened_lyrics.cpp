#include "platform/linux/host/opened_lyrics.h"

#include <algorithm>
#include <string_view>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

constexpr int kMostEntries = 1000;
constexpr std::string_view kExtension = ".lrc";

bool HasLyricsExtension(const std::string& name)
{
    const auto isSame = [](char letter, char small) { return letter == small || letter == small - 'a' + 'A'; };
    return name.size() >= kExtension.size() &&
           std::equal(kExtension.begin(), kExtension.end(), name.end() - std::ssize(kExtension),
                      [&](char small, char letter) { return isSame(letter, small); });
}

bool Link(const Path& lyrics, const Path& link)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(lyrics, error))
        return false;
    const Path target = std::filesystem::canonical(lyrics, error); // not a link of the card that is replaced
    if (!error)
        std::filesystem::create_symlink(target, link, error);
    return !error;
}

void LinkAll(const Path& from, const Path& to)
{
    std::error_code error;
    std::filesystem::directory_iterator entries(from, error);
    for (int i = 0; i < kMostEntries && !error && entries != std::filesystem::directory_iterator(); ++i) {
        const Path lyrics = entries->path();
        if (HasLyricsExtension(lyrics.filename()))
            Link(lyrics, to / lyrics.filename());
        entries.increment(error);
    }
}

} // namespace

void LinkLyrics(const NamedSong& song, const Path& entry)
{
    for (const Path& place : { song.place, song.target }) {
        for (const char* const extension : { ".lrc", ".LRC" }) {
            if (Link(Path(place).replace_extension(extension), Path(entry).replace_extension(kExtension)))
                return;
        }
    }
    LinkAll(song.place.parent_path(), entry.parent_path());
    LinkAll(song.target.parent_path(), entry.parent_path());
}

} // namespace cardsong::host
