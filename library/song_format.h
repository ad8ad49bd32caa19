// The formats of songs that the player knows, told by a file's name alone.
#pragma once

#include "platform/ce.h"

#include <optional>

enum class SongFormat { Mp3, Wma };

// By the end of `name`, ".mp3" or ".wma", letters compared without case; nothing for any other name and for null.
std::optional<SongFormat> SongFormatOf(const WCHAR* name);
