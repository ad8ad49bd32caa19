// What the start of the program asks of it: words of its command line. Knows no window.
#pragma once

#include "platform/ce.h"

struct LaunchOptions {
    bool fillFromCard = false; // "--fill": an empty play list is filled from the card at the first play
    bool playAtOnce = false;   // "--play": as if the user had pressed play when the window came
    bool tellExit = false;     // "--tell-exit": the program's status tells that the user pressed exit
    bool lyricsUtf8 = false;   // "--lyrics-utf8": lyrics that are valid UTF-8 are taken for it
    bool report = false;       // "--report": the debug output tells each second what plays

    bool operator==(const LaunchOptions&) const = default;
};

extern LaunchOptions g_launchOptions;

// Reads the words of `commandLine` (null: none); unknown words mean nothing.
[[nodiscard]] LaunchOptions ReadLaunchOptions(const WCHAR* commandLine);
