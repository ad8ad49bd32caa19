// The lyrics files beside a song that was named.
#pragma once

#include "platform/linux/host/opened_card.h"

namespace cardsong::host {

// Links them into the folder of `entry`, the song on its card: the one of the song's own name, beside the place where
// it was named or beside the song itself; else all of both folders, among which the player chooses. Of a folder 1,000
// entries are looked at. What cannot be linked is left out.
void LinkLyrics(const NamedSong& song, const std::filesystem::path& entry);

} // namespace cardsong::host
