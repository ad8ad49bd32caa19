#include "platform/linux/host/opened_lyrics.h"

#include <algorithm>
#include <optional>
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

// The file itself: a link may lie on the card that is replaced.
std::optional<Path> FindFile(const Path& lyrics)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(lyrics, error))
        return std::nullopt;
    Path file = std::filesystem::canonical(lyrics, error);
    return error ? std::nullopt : std::optional(std::move(file));
}

// The places of lyrics files among the first entries of the folder.
std::vector<Path> LyricsIn(const Path& folder)
{
    std::vector<Path> lyrics;
    std::error_code error;
    std::filesystem::directory_iterator entries(folder, error);
    for (int i = 0; i < kMostEntries && !error && entries != std::filesystem::directory_iterator(); ++i) {
        if (HasLyricsExtension(entries->path().filename()))
            lyrics.push_back(entries->path());
        entries.increment(error);
    }
    return lyrics;
}

bool Link(const Path& lyrics, const Path& link)
{
    const auto file = FindFile(lyrics);
    std::error_code error;
    if (file)
        std::filesystem::create_symlink(*file, link, error);
    return file && !error;
}

} // namespace

void LyricsLinks::Make(const NamedSong& song, const Path& entry)
{
    for (const Path& place : { song.place, song.target }) {
        for (const char* const extension : { ".lrc", ".LRC" }) {
            if (Link(Path(place).replace_extension(extension), Path(entry).replace_extension(kExtension)))
                return;
        }
    }
    LinkAll(song.place.parent_path(), entry.parent_path());
    if (song.target.parent_path() != song.place.parent_path())
        LinkAll(song.target.parent_path(), entry.parent_path());
}

void LyricsLinks::LinkAll(const Path& from, const Path& to)
{
    if (m_linksLeft == 0)
        return;
    if (from != m_folder)
        m_lyrics = LyricsIn(m_folder = from);
    for (const Path& lyrics : m_lyrics) {
        if (m_linksLeft > 0 && Link(lyrics, to / lyrics.filename()))
            --m_linksLeft;
    }
}

} // namespace cardsong::host
