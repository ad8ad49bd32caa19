// Where the sound of an MPEG audio file lies between its tags. Reads no tag.
#pragma once

#include "playback/mpeg_sync.h"

namespace cardsong::playback {

// Taken off are, in front: ID3v2 (id3.org, 2.4 with a footer too) and APE tags; behind: ID3v1 with its enhanced form,
// APE, Lyrics3 v1 and v2, and ID3v2 tags that were appended; any number of each up to a bound. A tag that claims to
// reach past the other end is no tag. Empty when nothing is left.
ByteRange FindSound(SongFile& file);

} // namespace cardsong::playback
