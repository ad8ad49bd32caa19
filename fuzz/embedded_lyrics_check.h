// What is promised of lyrics found in any file, whichever way they are read.
#pragma once

#include "lyrics/embedded_lyrics.h"
#include "lyrics/lyrics_parser.h"
#include "tags/block_source.h"

#include <cstdlib>

namespace cardsong::fuzz {

inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

// `read`: a reader of embedded lyrics. In blocks it finds the same; the text lies within the file, ends in a zero and
// can be parsed.
template <typename Reader>
void CheckReader(const unsigned char* data, std::size_t size, Reader read)
{
    MemorySource source(std::as_bytes(std::span(data, size)));
    const std::optional<EmbeddedLyrics> lyrics = read(source);
    BlockSource blocks(source);
    const std::optional<EmbeddedLyrics> inBlocks = read(blocks);
    Require(lyrics.has_value() == inBlocks.has_value());
    if (!lyrics)
        return;
    Require(lyrics->bytes == inBlocks->bytes && lyrics->codePage == inBlocks->codePage);
    Require(lyrics->bytes.back() == 0 && lyrics->bytes.size() <= size);
    CPtrListCtrl list;
    ParseLrcText(DecodeLyrics(lyrics->bytes, lyrics->codePage, 1033, Utf8Detection::Off), LyricList(list));
    LyricList(list).FreeAll();
}

} // namespace cardsong::fuzz
