#include "tags/byte_text.h"

#include <algorithm>

namespace {

constexpr unsigned char LowerCase(unsigned char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<unsigned char>(letter + ('a' - 'A')) : letter;
}

bool EqualIgnoringCase(std::byte byte, char letter)
{
    return LowerCase(std::to_integer<unsigned char>(byte)) == LowerCase(static_cast<unsigned char>(letter));
}

} // namespace

bool StartsWithIgnoringCase(std::span<const std::byte> bytes, std::string_view word)
{
    return bytes.size() >= word.size() &&
           std::equal(word.begin(), word.end(), bytes.begin(),
                      [](char letter, std::byte found) { return EqualIgnoringCase(found, letter); });
}

std::optional<std::size_t> FindIgnoringCase(std::span<const std::byte> bytes, std::string_view word)
{
    if (word.empty())
        return std::nullopt;
    const auto found = std::search(bytes.begin(), bytes.end(), word.begin(), word.end(), EqualIgnoringCase);
    if (found == bytes.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - bytes.begin());
}
