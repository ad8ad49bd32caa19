// The bytes of a play list file.
#pragma once

#include <string>

namespace cardsong::test {

// ASCII text as UTF-16, little-endian.
inline std::string Utf16(const std::string& text)
{
    std::string bytes;
    for (const char letter : text) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes;
}

// "1$song.mp3$\\SDMMC$215" as a record with its end.
inline std::string PlayListRecord(const std::string& text)
{
    return Utf16(text) + "\r\n";
}

} // namespace cardsong::test
