#include "gif/gif_wide_codes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t kLowWaterBytes = 5; // fewer than these are joined with the next sub-block
constexpr std::size_t kWordBytes = 4;

// Bytes that wait, from the chain of sub-blocks.
class StagedBytes {
public:
    explicit StagedBytes(GifReader& reader) : m_reader(reader) {}

    void Refill()
    {
        while (!m_hasEnded && Count() < kLowWaterBytes) {
            std::copy(m_bytes.begin() + m_begin, m_bytes.begin() + m_end, m_bytes.begin());
            m_end -= m_begin;
            m_begin = 0;
            const auto block = m_reader.SubBlock();
            m_hasEnded = block.empty();
            for (const std::byte b : block)
                m_bytes[m_end++] = std::to_integer<std::uint8_t>(b);
        }
    }
    std::size_t Count() const { return m_end - m_begin; }
    std::uint32_t Word() const
    {
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < kWordBytes; ++i)
            word |= std::uint32_t{ m_bytes[m_begin + i] } << (8 * i);
        return word;
    }
    void Drop(std::size_t count) { m_begin += count; }
    // Goes behind the chain.
    void Finish()
    {
        if (!m_hasEnded)
            m_reader.SkipSubBlocks();
    }

private:
    GifReader& m_reader;
    std::array<std::uint8_t, kLowWaterBytes - 1 + 255 + kWordBytes> m_bytes{};
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_hasEnded = false;
};

} // namespace

bool AreWideCodesClear(GifReader& reader, unsigned codeBits)
{
    StagedBytes bytes(reader);
    std::size_t bitOffset = 0;
    bool areClear = true;
    for (bytes.Refill(); areClear && bytes.Count() * 8 >= bitOffset + codeBits; bytes.Refill()) {
        areClear = bytes.Word() >> bitOffset == 0;
        bytes.Drop((bitOffset + codeBits) / 8);
        bitOffset = (bitOffset + codeBits) % 8;
    }
    bytes.Finish();
    return areClear;
}
