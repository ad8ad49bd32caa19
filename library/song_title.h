// What the player calls a song while it plays.
#pragma once

#include "platform/ce.h"

#include <cstdint>

// The title of a song under its number: "07.Yesterday", from its tag or else from its file name. Always 1.
int GetSongDisplayTitle(const WCHAR* path, WString& title, std::uint32_t number);
