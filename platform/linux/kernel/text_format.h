// The formatter behind wsprintfW, _vsnwprintf and the debug output. Knows no buffer.
#pragma once

#include "platform/linux/ce/types.h"

#include <cstdarg>
#include <string>

namespace cardsong::kernel {

// The 16-bit dialect: "%s" and "%c" take 16-bit text, "%S", "%hs" and "%hc" 8-bit text of the device's code page; "l"
// is the API's 32-bit long, "ll" and "I64" are 64 bits. Null text is "(null)". Of an unknown conversion the letter
// stands alone and no argument is taken.
std::u16string FormatText(const WCHAR* format, va_list arguments);

} // namespace cardsong::kernel
