// Magic words and other ASCII text in bytes, compared without regard to the case of ASCII letters.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

// Whether `bytes` begins with `word`.
bool StartsWithIgnoringCase(std::span<const std::byte> bytes, std::string_view word);

// Where `word` first stands in `bytes`; an empty word stands nowhere.
std::optional<std::size_t> FindIgnoringCase(std::span<const std::byte> bytes, std::string_view word);
