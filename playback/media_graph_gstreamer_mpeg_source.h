// The element at the head of an MPEG song's chain: it gives the song's frames, each with its time. So tags never reach
// a decoder, and places are those of the song itself. Knows no chain.
#pragma once

#include "platform/linux/sound/gstreamer_library.h"
#include "playback/mpeg_song.h"

namespace cardsong::playback {

// Owned by the caller; the song is the element's.
sound::ElementPtr MakeMpegSource(std::unique_ptr<MpegSong> song);

} // namespace cardsong::playback
