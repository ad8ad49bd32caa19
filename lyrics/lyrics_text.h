// Lyrics as bytes: which code page they have, and their UTF-16 text. It knows no LRC and no file.
#pragma once

#include "platform/ce.h"

#include <optional>
#include <vector>

// Bytes that end in a zero.
using LyricsBytes = std::vector<char>;

// In place of a code page.
inline constexpr std::int32_t kDetectCodePage = -1;
inline constexpr std::int32_t kAlreadyUtf16 = -18; // the bytes are UTF-16, little-endian

inline constexpr LANGID kLanguageTaiwan = 1028;
inline constexpr LANGID kLanguagePrc = 2052;

// What is looked for in bytes besides GB2312 and Big5.
enum class Utf8Detection { Off, On };

// The code page to convert with: 950 and 936 for a user interface in Chinese of Taiwan and of the PRC, whatever
// `codePage` says; else `codePage`, or what is detected. 0 means the system's default. With detection on, valid UTF-8
// beyond ASCII is 65001 before all else; a byte-order mark is beyond ASCII. `bytes`: not empty.
std::int32_t LyricsCodePage(const LyricsBytes& bytes, std::int32_t codePage, LANGID uiLanguage, Utf8Detection utf8);

// The text of `bytes` up to their first zero; empty when it cannot be converted. `codePage`: a code page or one of the
// two values above. With detection on a UTF-8 byte-order mark is left out.
WString DecodeLyrics(const LyricsBytes& bytes, std::int32_t codePage, LANGID uiLanguage, Utf8Detection utf8);

// Copies zero-terminated text; GB2312 becomes Big5 for the language of Taiwan, and Big5 GB2312 for that of the PRC.
// `destination` has room for as many bytes as `source` with its zero, and may be it. Nothing happens with a null.
void ConvertToUiScript(char* destination, const char* source, LANGID uiLanguage);
