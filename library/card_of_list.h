// Whether the card that the songs of a list lie on is there. Reads folders, no song.
#pragma once

#include "library/song_list.h"

// Whether the entry's path names something that is there.
[[nodiscard]] bool IsSongThere(const MediaFileEntry& entry);

// Whether the card of one list is there: anything lies on the card, and one of the list's songs is there. It lives for
// one command, is asked often, and looks first for the song that it found last.
class CardOfList {
public:
    // `list`: borrowed; of MediaFileEntry*.
    explicit CardOfList(const CPtrListCtrl& list) : m_list(list) {}

    // `first`: the index of the song to look for first.
    [[nodiscard]] bool IsThere(std::int32_t first);

private:
    const ConstSongList m_list;
    MediaFileEntry m_found; // without a name: none was found yet
};
