// Lyrics in the song's own file: a Lyrics3 v2 block at its end, or the USLT frame of an ID3v2 tag at its start. It
// knows neither LRC nor what the bytes mean.
#pragma once

#include "lyrics/lyrics_text.h"
#include "tags/byte_source.h"

// A larger text is none: a whole book has less.
inline constexpr std::size_t kMostLyricsBytes = 4U << 20;

struct EmbeddedLyrics {
    LyricsBytes bytes;
    std::int32_t codePage = kDetectCodePage; // or kAlreadyUtf16
};

// The block before the ID3v1 tag (Lyrics3 v2.00), its header and the headers of its fields included: nothing in them
// looks like a time tag. Magic words are compared without case.
std::optional<EmbeddedLyrics> ReadLyrics3Block(ByteSource& song);

// The text of the first USLT frame (id3.org: ID3v2.3.0, 4.8), whose content descriptor is taken for empty. "ID3" and
// "USLT" are found in any case. Sizes of frames have eight bits a byte, whatever the tag's version. A frame that runs
// past the tag ends with it; one too short for its text is passed over. Nothing where the tag is longer than the file.
std::optional<EmbeddedLyrics> ReadUsltFrame(ByteSource& song);

// Of the song at `path`: the block, else the frame. Nothing when there is neither or the file cannot be opened.
std::optional<EmbeddedLyrics> FindEmbeddedLyrics(const WCHAR* path);
