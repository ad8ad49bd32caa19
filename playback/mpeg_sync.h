// Finds where MPEG audio frames begin among bytes that may be anything. Knows no tag and no length.
#pragma once

#include "playback/mpeg_header.h"
#include "playback/song_file.h"

#include <atomic>

namespace cardsong::playback {

// From `begin` up to `end`, in bytes of a file.
struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    std::uint64_t Bytes() const { return end - begin; }
};

// A run of frames of one kind.
struct MpegRun {
    std::uint64_t offset = 0;  // of the first frame
    std::uint32_t word = 0;    // its header
    std::size_t freeBytes = 0; // of each frame without its padding, when the bit rate is free
};

// The header word at a place of the range; nothing where fewer than four bytes are left.
std::optional<std::uint32_t> WordAt(SongFile& file, std::uint64_t offset, std::uint64_t end);

// The frame at `offset`, when it is of the run's kind and whole; its length is known then, with a free bit rate too.
std::optional<MpegHeader> FrameAt(SongFile& file, const MpegRun& run, std::uint64_t offset, std::uint64_t end);

// The first place from `from` on, and before `reach`, where three frames of one kind follow each other; of Layers I and
// II eight. One header is no proof: every few thousand bytes something looks like one. Fewer frames are enough where
// they fill the range from `range.begin` to its end. Nothing when there is no such place, or when `isCancelled` became
// true meanwhile.
std::optional<MpegRun> FindMpegRun(SongFile& file, const ByteRange& range, std::uint64_t from, std::uint64_t reach,
                                   const std::atomic<bool>* isCancelled = nullptr);

} // namespace cardsong::playback
