// A decoder of GIF image data that is plain instead of fast: bit by bit, with a table of whole strings. What the real
// one gives is compared with it.
#pragma once

#include "tests/gif/gif_builder.h"

#include <optional>

namespace cardsong::test {

struct PlainLzwResult {
    bool isValid = false;
    Bytes pixels = {};
    std::size_t endOffset = 0; // behind the chain of sub-blocks
};

class PlainLzw {
public:
    // `data` starts at the minimum code size, 0 to 31.
    PlainLzw(const Bytes& data, std::size_t room) : m_room(room)
    {
        m_minimumBits = data.at(0);
        m_clear = 1U << m_minimumBits;
        std::size_t at = 1;
        for (std::size_t size = 1; size != 0 && at < data.size();) {
            size = std::min<std::size_t>(data[at], data.size() - at - 1);
            for (std::size_t i = 1; i <= size; ++i) {
                for (unsigned bit = 0; bit < 8; ++bit)
                    m_bits.push_back((data[at + i] >> bit & 1U) != 0);
            }
            at += 1 + size;
        }
        m_result.endOffset = at;
    }

    PlainLzwResult Decode()
    {
        m_result.isValid = m_minimumBits <= 12 && DecodeCodes();
        return m_result;
    }

private:
    bool DecodeCodes()
    {
        StartTable();
        while (const auto code = NextCode()) {
            if (*code == m_clear)
                StartTable();
            else if (m_hasPrevious && *code == m_clear + 1)
                return true;
            else if (!(m_hasPrevious ? Follow(*code) : Start(*code)))
                return false;
        }
        return true;
    }

    std::optional<std::uint32_t> NextCode()
    {
        if (m_bits.size() - m_bit < m_codeBits)
            return std::nullopt;
        std::uint32_t code = 0;
        for (unsigned i = 0; i < m_codeBits; ++i)
            code |= (m_bits[m_bit++] ? 1U : 0U) << i;
        return code;
    }

    void StartTable()
    {
        m_table.assign(m_clear + 2, {});
        for (std::uint32_t i = 0; i < m_clear; ++i)
            m_table[i] = { static_cast<std::uint8_t>(i) };
        m_codeBits = m_minimumBits + 1;
        m_hasPrevious = false;
    }

    bool Start(std::uint32_t code)
    {
        m_hasPrevious = true;
        m_previous = code;
        return code < m_clear && Write(m_table[code]);
    }

    // Empty where nothing was added yet.
    Bytes StringOf(std::uint32_t code) const { return code < m_table.size() ? m_table[code] : Bytes{}; }

    bool Follow(std::uint32_t code)
    {
        Bytes added = StringOf(m_previous);
        Bytes string = StringOf(code);
        if (string.empty() && added.empty())
            return false;
        added.push_back(string.empty() ? added[0] : string[0]);
        if (string.empty())
            string = added;
        if (m_table.size() >= 4096 || !Write(string))
            return false;
        m_table.push_back(added);
        if (m_table.size() == 1U << m_codeBits && m_codeBits != 12)
            ++m_codeBits;
        m_previous = code;
        return true;
    }

    bool Write(const Bytes& string)
    {
        if (m_result.pixels.size() + string.size() > m_room)
            return false;
        m_result.pixels.insert(m_result.pixels.end(), string.begin(), string.end());
        return true;
    }

    std::size_t m_room;
    std::vector<bool> m_bits;
    std::size_t m_bit = 0;
    unsigned m_minimumBits = 0;
    std::uint32_t m_clear = 0;
    unsigned m_codeBits = 0;
    bool m_hasPrevious = false;
    std::uint32_t m_previous = 0;
    std::vector<Bytes> m_table;
    PlainLzwResult m_result;
};

} // namespace cardsong::test
