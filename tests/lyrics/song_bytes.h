// Songs with lyrics in them, byte by byte.
#pragma once

#include "tests/tags/bytes.h"

#include <cstdio>

namespace cardsong::test {

// An ID3v1 tag.
inline std::string Id3v1Block()
{
    return "TAG" + std::string(125, ' ');
}

inline std::string SixDigits(std::size_t number)
{
    char digits[16] = {};
    std::snprintf(digits, sizeof digits, "%06u", static_cast<unsigned>(number));
    return digits;
}

// A block of Lyrics3 v2 around fields such as "LYR00010[00:01]Line", from "LYRICSBEGIN" to "LYRICS200".
inline std::string Lyrics3Block(const std::string& fields)
{
    const std::string block = "LYRICSBEGIN" + fields;
    return block + SixDigits(block.size()) + "LYRICS200";
}

inline std::string SongWithBlock(const std::string& fields)
{
    return std::string(300, 'x') + Lyrics3Block(fields) + Id3v1Block();
}

inline std::string BigEndian4(std::uint32_t number)
{
    return { static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
             static_cast<char>(number) };
}

inline std::string Synchsafe(std::uint32_t number)
{
    return { static_cast<char>(number >> 21 & 0x7F), static_cast<char>(number >> 14 & 0x7F),
             static_cast<char>(number >> 7 & 0x7F), static_cast<char>(number & 0x7F) };
}

inline std::string Frame(const std::string& identifier, const std::string& data)
{
    return identifier + BigEndian4(static_cast<std::uint32_t>(data.size())) + std::string(2, '\0') + data;
}

// Encoding, language and an empty descriptor in front of the text.
inline std::string UsltData(int encoding, const std::string& text)
{
    const std::string descriptor = encoding == 1 ? std::string("\xFF\xFE\0\0", 4) : std::string(1, '\0');
    return std::string(1, static_cast<char>(encoding)) + "eng" + descriptor + text;
}

inline std::string SongWithFrames(const std::string& frames)
{
    return std::string("ID3\x03\0\0", 6) + Synchsafe(static_cast<std::uint32_t>(frames.size())) + frames +
           std::string(300, 'x');
}

} // namespace cardsong::test
