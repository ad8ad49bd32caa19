#include "gif/gif_lzw.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace {

constexpr std::uint32_t kTableEntries = 4096;
constexpr unsigned kMaxCodeBits = 12;

// Codes out of the chain of sub-blocks, least significant bit first.
class CodeReader {
public:
    explicit CodeReader(GifReader& reader) : m_reader(reader) {}

    // The next code of `bits` bits; nothing when fewer are left. Of a code longer than 32 bits, the low 32.
    std::optional<std::uint32_t> Next(unsigned bits)
    {
        Refill();
        if ((m_end - m_begin) * 8 < m_bitOffset + bits)
            return std::nullopt;
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < 4; ++i)
            word |= std::uint32_t{ m_staged[m_begin + i] } << (8 * i);
        const std::uint32_t mask = bits < 32 ? (1U << bits) - 1U : ~0U;
        const std::uint32_t code = (word >> m_bitOffset) & mask;
        m_begin += (m_bitOffset + bits) / 8;
        m_bitOffset = (m_bitOffset + bits) % 8;
        return code;
    }

    // Goes behind the chain, whether or not all of it was taken.
    void Finish()
    {
        if (!m_hasEnded)
            m_reader.SkipSubBlocks();
    }

private:
    static constexpr std::size_t kLowWater = 5;   // the widest code, 13 bits, at any bit offset, needs less
    static constexpr std::size_t kSpareBytes = 4; // a word is assembled from the last staged byte on

    void Refill()
    {
        while (!m_hasEnded && m_end - m_begin < kLowWater) {
            std::copy(m_staged.begin() + m_begin, m_staged.begin() + m_end, m_staged.begin());
            m_end -= m_begin;
            m_begin = 0;
            const auto block = m_reader.SubBlock();
            m_hasEnded = block.empty();
            for (const std::byte b : block)
                m_staged[m_end++] = std::to_integer<std::uint8_t>(b);
        }
    }

    GifReader& m_reader;
    std::array<std::uint8_t, kLowWater - 1 + 255 + kSpareBytes> m_staged{};
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::size_t m_bitOffset = 0;
    bool m_hasEnded = false;
};

// The string table. A string is always a part of what was already written: the string of the code before and the byte
// that followed it. So an entry keeps its place in the output instead of its bytes.
class LzwDecoder {
public:
    LzwDecoder(CodeReader& codes, unsigned minimumBits, std::span<std::uint8_t> pixels)
        : m_codes(codes), m_pixels(pixels), m_minimumBits(minimumBits),
          m_clear(minimumBits < 32 ? 1U << minimumBits : 0U)
    {
        StartTable();
    }

    bool Decode()
    {
        if (m_clear > kTableEntries)
            return false;
        std::optional<std::uint32_t> code;
        while ((code = m_codes.Next(m_codeBits))) {
            if (*code == m_clear) {
                StartTable();
                continue;
            }
            if (!m_isRunStart && *code == EndCode())
                return true;
            if (!(m_isRunStart ? StartRun(*code) : ContinueRun(*code)))
                return false;
        }
        return true;
    }

private:
    struct String {
        std::uint32_t start = 0; // in the output
        std::uint32_t sizeBytes = 0;
    };

    std::uint32_t EndCode() const { return m_clear + 1; }

    void StartTable()
    {
        m_codeBits = m_minimumBits + 1;
        m_nextFree = m_clear + 2;
        m_isRunStart = true;
    }

    bool StartRun(std::uint32_t code)
    {
        if (code >= EndCode() || RoomBytes() == 0)
            return false;
        m_isRunStart = false;
        m_previous = { m_written, 1 };
        Write(code);
        return true;
    }

    bool ContinueRun(std::uint32_t code)
    {
        // A code without an entry yet stands for the very string that is added now.
        const bool isNew = code >= m_nextFree;
        if (isNew && m_previous.sizeBytes == 0)
            return false;
        const String added{ m_previous.start, m_previous.sizeBytes + 1 };
        const String string = isNew ? added : StringOf(code);
        if (string.sizeBytes > RoomBytes() || m_nextFree >= kTableEntries)
            return false;
        const String written{ m_written, string.sizeBytes };
        // A code beyond the next free entry gets none: for the next code, the string before is empty.
        const bool isEntryEmpty = code > m_nextFree;
        if (code < m_clear)
            Write(code);
        else
            Repeat(string);
        AddEntry(added);
        m_previous = isEntryEmpty ? String{ m_written, 0 } : written;
        return true;
    }

    String StringOf(std::uint32_t code) const { return code < m_clear ? String{ 0, 1 } : m_strings[code]; }

    void AddEntry(String string)
    {
        m_strings[m_nextFree] = string;
        ++m_nextFree;
        if (m_nextFree == 1U << m_codeBits && m_codeBits != kMaxCodeBits)
            ++m_codeBits;
    }

    std::size_t RoomBytes() const { return m_pixels.size() - m_written; }
    void Write(std::uint32_t value) { m_pixels[m_written++] = static_cast<std::uint8_t>(value); }
    void Repeat(String string)
    {
        // From the front, byte by byte: the last byte of a string that is added now is the first that this loop writes.
        const std::uint8_t* source = m_pixels.data() + string.start;
        std::uint8_t* target = m_pixels.data() + m_written;
        for (std::uint32_t i = 0; i < string.sizeBytes; ++i)
            target[i] = source[i];
        m_written += string.sizeBytes;
    }

    CodeReader& m_codes;
    std::span<std::uint8_t> m_pixels;
    unsigned m_minimumBits;
    std::uint32_t m_clear;
    unsigned m_codeBits = 0;
    std::uint32_t m_nextFree = 0;
    std::uint32_t m_written = 0;
    bool m_isRunStart = true;
    String m_previous; // of the code before in this run; the next string is written right behind it
    std::array<String, kTableEntries> m_strings{};
};

} // namespace

bool DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels)
{
    const unsigned minimumBits = reader.U8();
    CodeReader codes(reader);
    const bool isDecoded = LzwDecoder(codes, minimumBits, pixels).Decode();
    codes.Finish();
    return isDecoded;
}
