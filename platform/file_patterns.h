// Whether a file name fits a search pattern with "*" and "?". Knows no folder.
#pragma once

#include "platform/ce.h"

namespace cardsong::kernel {

bool HasWildcard(WStringView name);

// A pattern in the form that MatchesPattern takes, by the API's rules: blanks at the end are dropped, "*.*" and "*"
// match everything, a dot at the end asks for a name without an extension, "?" before a dot or at the end may stand for
// nothing.
WString PreparePattern(WStringView pattern);

// Ignores case. Takes time in proportion to name times pattern, whatever stars the pattern has.
bool MatchesPattern(WStringView name, WStringView preparedPattern);

} // namespace cardsong::kernel
