// Codes of 1 to 13 bits out of the chain of data sub-blocks, least significant bit first. Knows no table.
#pragma once

#include "gif/gif_reader.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Bits that wait to be taken, and what is left of their sub-block. A plain value: the decoder keeps it in registers.
struct GifCodeBits {
    std::uint64_t held = 0; // the next bit is the lowest; above `count` stand bits of `next`, or zeros
    unsigned count = 0;
    const std::byte* next = nullptr;
    const std::byte* end = nullptr;

    // Adds what fits of the next eight bytes, 56 bits or more in all. False when the sub-block has no eight left.
    bool AddWord()
    {
        static_assert(std::endian::native == std::endian::little, "a word is loaded as it lies in the file");
        if (end - next < static_cast<std::ptrdiff_t>(sizeof(held)))
            return false;
        std::uint64_t word = 0;
        std::memcpy(&word, next, sizeof(word));
        held |= word << count;
        next += (63U - count) / 8;
        count |= 56U;
        return true;
    }
    // The next code of `bits` bits, no more than `count`; `mask` has as many ones.
    std::uint32_t Take(unsigned bits, std::uint32_t mask)
    {
        const std::uint32_t code = static_cast<std::uint32_t>(held) & mask;
        held >>= bits;
        count -= bits;
        return code;
    }
};

class GifCodeReader {
public:
    // `reader` is borrowed; it stands at the length byte of the first sub-block.
    explicit GifCodeReader(GifReader& reader) : m_reader(reader) {}

    // Fills `bits` up to 56 or more, or to all that are left.
    void Refill(GifCodeBits& bits)
    {
        if (!bits.AddWord())
            bits = RefilledByBytes(bits);
    }

    // Goes behind the chain, whether or not all of it was taken.
    void Finish()
    {
        if (!m_hasEnded)
            m_reader.SkipSubBlocks();
    }

private:
    GifCodeBits RefilledByBytes(GifCodeBits bits);

    GifReader& m_reader;
    bool m_hasEnded = false;
};
