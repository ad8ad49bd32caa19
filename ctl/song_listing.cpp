#include "ctl/song_listing.h"

#include "ctl/text_forms.h"
#include "library/file_names.h"
#include "library/song_facts.h"
#include "library/song_walk.h"
#include "platform/device_tree.h"

#include <string>
#include <type_traits>

namespace {

// A host path as a script takes it: the system's own bytes, or UTF-8 where the system has no bytes.
template <typename Path>
std::string Written(const Path& path)
{
    if constexpr (std::is_same_v<Path, std::string>)
        return path;
    else
        return Utf8(path);
}

// The file's own path on this machine, so that a script can open it, whatever bytes its name has.
std::string HostPathOf(const WString& devicePath)
{
    const auto path = cardsong::kernel::FindHostPath(devicePath);
    return path ? Written(*path) : Written(devicePath);
}

// Path, length in milliseconds and title, parted by tabs.
std::string TabbedLine(const ListedSong& song)
{
    return WithEscapes(song.path) + '\t' + song.lengthMs + '\t' + WithEscapes(song.title) + '\n';
}

std::string JsonLine(const ListedSong& song)
{
    return "{\"path\":" + JsonString(ValidUtf8(song.path)) + ",\"length_ms\":" + song.lengthMs +
           ",\"title\":" + JsonString(song.title) + "}\n";
}

constexpr ListingForm kForms[] = {
    { "", "", TabbedLine },
    { "--json", "one JSON object a line instead: path, length_ms, title", JsonLine },
};

ListedSong Describe(const FoundSong& song)
{
    const WString path = WString(song.folder) + TEXT('\\') + WString(song.name);
    const SongFacts facts = ReadSongFacts(path.c_str(), song.format);
    PathBuffer stem = {};
    StripExtension(WString(song.name).c_str(), stem);
    const WStringView title = facts.title.empty() ? WStringView(stem) : facts.title;
    return { HostPathOf(path), std::to_string(facts.lengthMs), Utf8(title) };
}

} // namespace

std::span<const ListingForm> ListingForms()
{
    return kForms;
}

bool WriteSongs(std::FILE* out, const ListingForm& form, const std::function<void(unsigned long)>& progress)
{
    unsigned long count = 0;
    bool isWritten = true;
    WalkSongs(kCardFolder, Subfolders::Walk, [&](const FoundSong& song) {
        if (!isWritten)
            return;
        const std::string line = form.line(Describe(song));
        isWritten = std::fwrite(line.data(), 1, line.size(), out) == line.size();
        progress(++count);
    });
    return isWritten && std::fflush(out) == 0;
}
