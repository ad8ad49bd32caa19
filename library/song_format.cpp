#include "library/song_format.h"

#include "library/file_names.h"

std::optional<SongFormat> SongFormatOf(const WCHAR* name)
{
    if (HasExtension(name, TEXT(".mp3")) != 0)
        return SongFormat::Mp3;
    if (HasExtension(name, TEXT(".wma")) != 0)
        return SongFormat::Wma;
    return std::nullopt;
}
