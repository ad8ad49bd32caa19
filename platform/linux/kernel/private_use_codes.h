// The codes of pages 936 and 950 that a user may give characters to, as Windows numbers them. They stand for the
// private-use characters of Unicode; the C library's tables hold none of them but the rows 0xC6 to 0xC8 of page 950.
#pragma once

#include "platform/linux/ce/types.h"

#include <optional>
#include <string>

namespace cardsong::kernel {

// The character of a pair that the C library's tables lack; nothing when it has none.
std::optional<char16_t> PrivateUseUnit(UINT codePage, unsigned char lead, unsigned char trail);

// The pair of such a character; empty when the page has none for it.
std::string PrivateUsePair(UINT codePage, char16_t unit);

} // namespace cardsong::kernel
