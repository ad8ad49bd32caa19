// The title that a lyrics file states of itself in its "ti:" tag.
#pragma once

#include "lyrics/lyrics_text.h"

// Units of a title that count.
inline constexpr std::size_t kMostTitleUnits = 260;

// The text from the first "ti:" to the next "]", "ti:" included, in both scripts: once with GB2312 turned into Big5,
// once with Big5 turned into GB2312. Letters of "ti:" are compared without case. Both are empty where one of the two
// marks is missing.
class LyricsTitle {
public:
    // `bytes` is borrowed.
    explicit LyricsTitle(const LyricsBytes& bytes);

    WString Traditional() const;
    WString Simplified() const;

private:
    const LyricsBytes& m_bytes;
    std::int32_t m_codePage;
};
