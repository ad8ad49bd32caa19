// UTF-8 and letter case at the level of single characters. Knows no file and no code page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cardsong::kernel {

struct Utf8Character {
    char32_t value;    // nothing of a surrogate, nothing above U+10FFFF
    std::size_t bytes; // how many bytes it took; of an invalid sequence, how many belong to it (at least 1)
    bool isValid;
};

// The character at the start of `text`, which is not empty. Over-long forms, surrogates and cut sequences are invalid.
Utf8Character DecodeUtf8(std::string_view text);
void AppendUtf8(std::string& text, char32_t character);
void AppendUtf16(std::u16string& text, char32_t character);

// The character that begins at `position`; nothing for a surrogate without its partner. `units` says how long it is.
std::optional<char32_t> DecodeUtf16(std::u16string_view text, std::size_t position, std::size_t& units);

// For messages to the terminal: surrogates without partner become U+FFFD.
std::string ToUtf8(std::u16string_view text);

// Lower case by the simple mapping: one unit stays one unit.
char16_t ToLowerUnit(char16_t unit);
std::u16string ToLower(std::u16string_view text);
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);

} // namespace cardsong::kernel
