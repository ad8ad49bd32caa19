// A look at a file before an engine gets it: what kind of song it is, if any. An engine that is left to find out by
// itself searches the whole file for a first frame, and needs minutes for one full of half-valid sync words. Knows no
// engine.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace cardsong::playback {

enum class SongKind { None, Mpeg, Asf };

// None also when the file is missing, empty or no ordinary file. MPEG audio is known by its first frame, which has to
// lie within a megabyte after the ID3v2 tags; ASF by a whole header and a whole first packet. The name is not looked
// at.
SongKind LookAtSong(const std::filesystem::path& hostPath);

// Whether an MPEG audio frame (ISO/IEC 11172-3, 13818-3, any layer) that another one follows begins in `bytes`.
// `isWhole`: nothing comes after them, so the last frame needs no follower, but has to be whole itself.
bool HoldsMpegFrame(std::span<const unsigned char> bytes, bool isWhole);

} // namespace cardsong::playback
