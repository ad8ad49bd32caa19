// Texts as a console and a script take them.
#pragma once

#include "platform/ce.h"

#include <string>
#include <string_view>

// UTF-8; whatever is no text becomes U+FFFD.
[[nodiscard]] std::string Utf8(WStringView text);
// The other way round, with U+FFFD for each byte that is no UTF-8.
[[nodiscard]] WString Utf16(std::string_view bytes);
// The same text with U+FFFD for each byte that is no UTF-8.
[[nodiscard]] std::string ValidUtf8(std::string_view bytes);
// A JSON string (RFC 8259, section 7), with its quotes.
[[nodiscard]] std::string JsonString(std::string_view utf8);
// A text that stays one field of a line: "\t", "\n", "\r" and "\\" stand for what they name.
[[nodiscard]] std::string WithEscapes(std::string_view utf8);
// The whole of a decimal number, or of a hexadecimal one that begins with 0x. False for anything else.
[[nodiscard]] bool ReadNumber(std::string_view text, DWORD& number);
