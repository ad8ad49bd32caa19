// The lyrics files beside songs that were named.
#pragma once

#include "platform/linux/host/opened_card.h"

namespace cardsong::host {

class LyricsLinks {
public:
    // Links them into the folder of `entry`, the song on its card: the one of the song's own name, beside the place
    // where it was named or beside the song itself; else all of both folders, among which the player chooses. Of a
    // folder 1,000 entries are looked at, and 2,000 such links are made. What cannot be linked is left out.
    void Make(const NamedSong& song, const std::filesystem::path& entry);

private:
    void LinkAll(const std::filesystem::path& from, const std::filesystem::path& to);

    std::filesystem::path m_folder;              // of the last song
    std::vector<std::filesystem::path> m_lyrics; // in it
    int m_linksLeft = 2'000;
};

} // namespace cardsong::host
