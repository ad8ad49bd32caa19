// Finds the lyrics file of a song in a folder: the one whose name or stated title is the most like the song's name.
#pragma once

#include "platform/ce.h"

#include <optional>

// The folder of a file: its path up to the last backslash, which is part of it; "\" for a path without one.
WString FolderOfPath(WStringView path);
// The file's name without folder and extension.
WString NameOfSong(const WCHAR* songPath);
// `folder` with exactly what is needed of a backslash between, and `name`.
WString PathInFolder(WStringView folder, WStringView name);

// Whether a found entry is one that is compared: its extension is "lrc" in any case, and it has the archive attribute.
bool IsLyricsFile(const WIN32_FIND_DATAW& found);

// The name of the best lyrics file in `folder`; nothing when none is like enough. Each file
// is compared by its own name and by its title in both scripts (lyrics/lyrics_title.h). The distance of two texts is
// the length of the longer less their similarity (lyrics/text_similarity.h), both without spaces. The first file is
// chosen whose similarity is above a third of that length; then whatever has a smaller distance. The search ends at
// distance 0, and no file is read twice.
std::optional<WString> FindLyricsFile(WStringView folder, const WCHAR* songPath);
