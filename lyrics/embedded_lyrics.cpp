#include "lyrics/embedded_lyrics.h"

#include "common/file_stream.h"
#include "tags/file_source.h"

std::optional<EmbeddedLyrics> FindEmbeddedLyrics(const WCHAR* path)
{
    const UniqueFileStream file = OpenForReading(path);
    if (!file)
        return std::nullopt;
    FileSource song(file.Get());
    auto lyrics = ReadLyrics3Block(song);
    return lyrics ? std::move(lyrics) : ReadUsltFrame(song);
}
