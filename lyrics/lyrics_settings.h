// The settings of the lyrics, in the registry under HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\LyricsSetting, where another
// program changes them. It knows no window.
#pragma once

#include "platform/ce.h"

struct LyricsSettings {
    WString folder;           // with lyrics files for songs that have none beside them
    COLORREF playColor;       // of the line that is sung; kNoColor when its text is no colour
    COLORREF nextColor;       // of the others
    COLORREF backgroundColor; // of the strip
    DWORD isTransparent;      // 0 or 1; 1 shows the skin behind the strip
    bool detectsUtf8;         // "Lyrics UTF-8" is there and not 0; never written
};

// Reads the settings. A value that is missing, or longer than it can be, is written with its default; one that is there
// and means nothing stays as it is. Without a key the defaults are read.
LyricsSettings LoadLyricsSettings();

// The rectangle of the strip as it was saved. Missing, it is written as "RECT(30, 3, 210, 23)". The player's start does
// not ask for it: the strip has the place that the skin gives it.
RECT LoadLyricsRect();

// Writers, each through a key of its own. Failures are not reported.
void SaveLyricsSettings(const LyricsSettings& settings, const RECT& strip);
void SaveLyricsColors(COLORREF playColor, COLORREF nextColor, COLORREF backgroundColor, DWORD isTransparent);
void SaveLyricsRect(const RECT& strip);
void SaveLyricsFolder(const WString& folder);
