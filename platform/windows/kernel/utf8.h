// Text of the command line and of host folders, which are UTF-8 in the program's own records.
#pragma once

#include <string>
#include <string_view>

namespace cardsong::kernel {

std::wstring Utf16FromUtf8(std::string_view text);
std::string Utf8FromUtf16(std::wstring_view text);

} // namespace cardsong::kernel
