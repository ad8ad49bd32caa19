// Names of languages as users and systems write them. Reads text only.
#pragma once

#include <cstdint>
#include <string>

namespace cardsong::host {

// The language identifier of a tag such as "zh-TW", "zh_CN.UTF-8", "de" or "0404"; 0 when it means none that the player
// knows.
[[nodiscard]] std::uint16_t LanguageFromTag(const std::string& tag);

} // namespace cardsong::host
