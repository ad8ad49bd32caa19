// Whether a file name fits a search pattern with "*" and "?". Knows no folder.
#pragma once

#include <string>
#include <string_view>

namespace cardsong::kernel {

bool HasWildcard(std::u16string_view name);

// A pattern in the form that MatchesPattern takes, by the API's rules: blanks at the end are dropped, "*.*" and "*"
// match everything, a dot at the end asks for a name without an extension, "?" before a dot or at the end may stand for
// nothing.
std::u16string PreparePattern(std::u16string_view pattern);

// Ignores case. Takes time in proportion to name times pattern, whatever stars the pattern has.
bool MatchesPattern(std::u16string_view name, std::u16string_view preparedPattern);

} // namespace cardsong::kernel
