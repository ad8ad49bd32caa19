// Text between 8-bit code pages and UTF-16, by the system's own tables. Knows no buffer size and no error code.
#pragma once

#include "platform/linux/ce/types.h"

#include <string>
#include <string_view>

namespace cardsong::kernel {

constexpr UINT kChinesePrc = 936;
constexpr UINT kChineseTaiwan = 950;

// The page that CP_ACP stands for: that of the device's language.
UINT AnsiCodePage();

// Whether the page is one that these functions convert.
bool IsKnownCodePage(UINT codePage);

// What a code page cannot hold becomes "?" (UTF-8: U+FFFD); `isClean` then turns false. It does for the byte 0xFF of
// pages 936 and 950 too, which becomes U+F8F5 and U+F8F8.
std::u16string DecodeText(UINT codePage, std::string_view bytes, bool& isClean);

// `replacement` stands for what the page lacks; `isClean` then turns false.
std::string EncodeText(UINT codePage, std::u16string_view text, std::string_view replacement, bool& isClean);

} // namespace cardsong::kernel
