// One line for each song of a folder. It knows no command line and no terminal.
#pragma once

#include <cstdio>
#include <functional>

enum class SongLines {
    Tabs, // path, length in milliseconds and title, parted by tabs; "\t", "\n", "\r" and "\\" stand for what they name
    Json, // one object a line: path, length_ms, title
};

// Writes a line for each song of the card in force, UTF-8, in the order of the scan; a song without a title is called
// like its file, less the extension. Tells `progress` the number of songs so far after each. Memory does not grow with
// the number of songs. False when `out` did not take everything.
bool WriteSongs(std::FILE* out, SongLines form, const std::function<void(unsigned long)>& progress);
