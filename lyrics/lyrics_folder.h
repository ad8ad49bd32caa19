// The folder that keeps lyrics files: where it is by default, and that it is there.
#pragma once

#include "platform/ce.h"

// "Lyrics" in the user's documents.
WString DefaultLyricsFolder();

// Makes the folder `path` and the folders above it where they are missing. Of a file's path its folder is meant; one
// backslash at the end does not count. Failures are not reported.
void EnsureFolder(WStringView path);
