// Registered messages by name and by number.
#pragma once

#include "platform/linux/user/desktop.h"

#include <optional>
#include <string>
#include <string_view>

namespace cardsong::user {

// As it was first registered; nothing for any other number.
std::optional<std::u16string> NameOfMessage(const Desktop& desktop, UINT number);
// 0 when nobody has registered it; letters are compared without case.
UINT NumberOfMessage(const Desktop& desktop, std::u16string_view name);

} // namespace cardsong::user
