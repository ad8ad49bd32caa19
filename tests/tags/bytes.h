// Bytes for the tests of the readers: spelt out, put together, or from a sample file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace cardsong::test {

class Bytes : public std::vector<std::byte> {
public:
    Bytes() = default;
    explicit Bytes(std::string_view text) { Text(text); }

    Bytes& Text(std::string_view text)
    {
        for (const char letter : text)
            push_back(static_cast<std::byte>(letter));
        return *this;
    }
    Bytes& Fill(std::size_t count, int value = 0)
    {
        insert(end(), count, static_cast<std::byte>(value));
        return *this;
    }
    Bytes& Little(std::uint64_t value, int sizeBytes)
    {
        for (int i = 0; i < sizeBytes; ++i)
            push_back(static_cast<std::byte>(value >> 8 * i));
        return *this;
    }
    Bytes& Big(std::uint64_t value, int sizeBytes)
    {
        for (int i = sizeBytes - 1; i >= 0; --i)
            push_back(static_cast<std::byte>(value >> 8 * i));
        return *this;
    }
    Bytes& Append(const std::vector<std::byte>& bytes)
    {
        insert(end(), bytes.begin(), bytes.end());
        return *this;
    }
};

// The first `sizeBytes` of `bytes` in a buffer of just that size, so that a sanitizer sees one byte too far.
inline std::vector<std::byte> Prefix(const std::vector<std::byte>& bytes, std::size_t sizeBytes)
{
    return { bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(sizeBytes) };
}

// "mp3/cbr_info.mp3" of tests/data.
inline std::string SampleText(const std::string& name)
{
    std::ifstream file(std::filesystem::path(CARDSONG_TEST_DATA) / name, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

inline Bytes Sample(const std::string& name)
{
    return Bytes(SampleText(name));
}

} // namespace cardsong::test
