// What of the saved play list is kept while its card is away. It knows which songs are there; the form of the file is
// library/play_list_file's business.
//
// The file holds one list for each card that had one, each numbered from 1; a record whose number does not exceed the
// one before it begins the next list. The songs of all lists that are there make up the play list. A list belongs to
// this card when most of its songs are there: what it misses is gone. Otherwise its other songs lie on another card,
// and are kept.
#pragma once

#include "library/song_list.h"

#include <memory>
#include <vector>

class SavedPlayList {
public:
    // Reads the file anew: appends to `list`, whose owner frees them, the songs that are there.
    void Load(CPtrListCtrl& list);
    // Appends the kept songs that are there by now, in their order. Called when a card has come back.
    void TakeBack(CPtrListCtrl& list);
    // Writes `list`, and behind it what is kept of other cards. A list that is as it was loaded is not written: the
    // file stays the same to the byte.
    void Save(const CPtrListCtrl& list) const;

private:
    struct SongsAway {
        SongsAway() = default;
        ~SongsAway() { SongList(songs).FreeAll(); }
        SongsAway(const SongsAway&) = delete;
        SongsAway& operator=(const SongsAway&) = delete;
        CPtrListCtrl songs;
    };
    class Loading;

    std::vector<std::unique_ptr<SongsAway>> m_away; // a list each
    WString m_loaded;                               // the records of the list as it was loaded
    bool m_hasFile = false;
};
