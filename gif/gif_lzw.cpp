#include "gif/gif_lzw.h"

#include "gif/gif_code_reader.h"
#include "gif/gif_wide_codes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

namespace {

constexpr std::uint32_t kTableEntries = 4096;
constexpr unsigned kMaxCodeBits = 12;
constexpr unsigned kMaxMinimumBits = 12; // the clear code of a larger one lies beyond the table
constexpr unsigned kMinimumOfWideCodes = 32;
constexpr std::uint32_t kWordBytes = 8;
constexpr std::uint32_t kAlwaysWrittenBytes =
    2 * kWordBytes;                  // most strings are no longer, and no branch is lost on them
constexpr unsigned kCodesAtOnce = 4; // so many are always among 56 bits: only every fourth code asks for more
constexpr unsigned kLongestCodeBits = kMaxMinimumBits + 1;

// A string is always a part of what was already written: the string of the code before and the byte that followed it.
// So it keeps its place in the output instead of its bytes; the first eight lie beside it, since those behind them may
// have been written a moment ago and are slow to read.
struct String {
    std::uint64_t head = 0; // the first byte is the lowest; zeros where the string is shorter
    std::uint32_t start = 0;
    std::uint32_t sizeBytes = 0;

    std::uint8_t FirstByte() const { return static_cast<std::uint8_t>(head); }
    String WithByte(std::uint8_t last) const
    {
        const std::uint64_t inHead = sizeBytes < kWordBytes ? std::uint64_t{ last } << (8 * sizeBytes) : 0;
        return { head | inHead, start, sizeBytes + 1 };
    }
};

class StringTable {
public:
    // Codes below `clear` stand for their own index.
    void SetSinglePixels(std::uint32_t clear)
    {
        for (std::uint32_t i = 0; i < std::min(clear, kTableEntries); ++i)
            Set(i, { static_cast<std::uint8_t>(i), 0, 1 });
    }
    std::uint8_t FirstByte(std::uint32_t code) const { return static_cast<std::uint8_t>(m_heads[code]); }
    std::uint64_t Head(std::uint32_t code) const { return m_heads[code]; }
    std::uint32_t SizeBytes(std::uint32_t code) const { return m_sizes[code]; }
    std::uint32_t Start(std::uint32_t code) const { return m_starts[code]; }
    void Set(std::uint32_t code, const String& string)
    {
        m_heads[code] = string.head;
        m_starts[code] = string.start;
        m_sizes[code] = static_cast<std::uint16_t>(string.sizeBytes);
    }

private:
    // Apart: the heads are what the next string waits for. Set before they are read.
    std::array<std::uint64_t, kTableEntries> m_heads;
    std::array<std::uint16_t, kTableEntries> m_sizes;
    std::array<std::uint32_t, kTableEntries> m_starts;
};

enum class RunEnd { None, Clear, Data, Refusal };

// A run of codes: from where the table is empty to where it is emptied again. All of it by value, so that it stays in
// registers: pixels are bytes, and in memory those might lie over anything.
struct Run {
    StringTable& table;
    std::span<std::uint8_t> pixels;
    std::uint32_t clear;
    unsigned codeBits;
    std::size_t written;
    std::uint32_t codeMask = (1U << codeBits) - 1;
    std::uint32_t nextFree = clear + 2;
    String previous = {}; // of the code before; the next string is written right behind it

    RunEnd Start(std::uint32_t code);
    RunEnd Follow(std::uint32_t code);
    bool Write(std::uint32_t code);
    void WriteBytes(std::uint32_t code);
    void WriteWords(std::uint32_t code);
    void CountEntry();
};

RunEnd Run::Start(std::uint32_t code)
{
    if (code > clear || written == pixels.size())
        return RunEnd::Refusal;
    const auto pixel = static_cast<std::uint8_t>(code);
    previous = { pixel, static_cast<std::uint32_t>(written), 1 };
    pixels[written++] = pixel;
    return RunEnd::None;
}

inline RunEnd Run::Follow(std::uint32_t code)
{
    if (code - clear <= 1U)
        return code == clear ? RunEnd::Clear : RunEnd::Data;
    if (nextFree >= kTableEntries)
        return RunEnd::Refusal;
    const bool isNew = code >= nextFree;
    if (isNew && previous.sizeBytes == 0)
        return RunEnd::Refusal;
    table.Set(nextFree, previous.WithByte(isNew ? previous.FirstByte() : table.FirstByte(code)));
    // A code without an entry yet stands for the very string that was added now.
    if (!Write(isNew ? nextFree : code))
        return RunEnd::Refusal;
    if (code > nextFree) // it gets no entry: for the next code, the string before is empty
        previous = { 0, static_cast<std::uint32_t>(written), 0 };
    CountEntry();
    return RunEnd::None;
}

// False when there is no room for the string of the code.
inline bool Run::Write(std::uint32_t code)
{
    const std::uint32_t sizeBytes = table.SizeBytes(code);
    const std::size_t roomBytes = pixels.size() - written;
    if (roomBytes >= sizeBytes + (kAlwaysWrittenBytes - 1))
        WriteWords(code);
    else if (roomBytes >= sizeBytes)
        WriteBytes(code);
    else
        return false;
    previous = { table.Head(code), static_cast<std::uint32_t>(written), sizeBytes };
    written += sizeBytes;
    return true;
}

// Where there may be no room for whole words.
void Run::WriteBytes(std::uint32_t code)
{
    const std::uint64_t head = table.Head(code);
    for (std::uint32_t i = 0; i < table.SizeBytes(code); ++i)
        pixels[written + i] =
            i < kWordBytes ? static_cast<std::uint8_t>(head >> (8 * i)) : pixels[table.Start(code) + i];
}

// Up to fifteen bytes behind the string become anything.
inline void Run::WriteWords(std::uint32_t code)
{
    std::uint8_t* const target = pixels.data() + written;
    const std::uint64_t head = table.Head(code);
    const std::uint32_t sizeBytes = table.SizeBytes(code);
    // From the front: the last byte of a string that was added now is the first that was written here.
    const std::uint8_t* const source = pixels.data() + table.Start(code);
    std::memcpy(target, &head, kWordBytes);
    std::memcpy(target + kWordBytes, source + kWordBytes, kWordBytes);
    for (std::uint32_t i = kAlwaysWrittenBytes; i < sizeBytes; i += kWordBytes)
        std::memcpy(target + i, source + i, kWordBytes);
}

inline void Run::CountEntry()
{
    ++nextFree;
    if (nextFree == codeMask + 1 && codeBits != kMaxCodeBits) {
        ++codeBits;
        codeMask = 2 * codeMask + 1;
    }
}

class LzwDecoder {
public:
    LzwDecoder(GifCodeReader& codes, StringTable& table, unsigned minimumBits, std::span<std::uint8_t> pixels)
        : m_codes(codes), m_table(table), m_pixels(pixels), m_minimumBits(minimumBits), m_clear(1U << minimumBits)
    {
        m_table.SetSinglePixels(m_clear);
    }

    GifPixelData Decode()
    {
        RunEnd end = RunEnd::Clear;
        while (end == RunEnd::Clear)
            end = DecodeRun();
        return { end == RunEnd::Data, m_written };
    }

private:
    std::optional<std::uint32_t> FirstCode();
    RunEnd DecodeRun();

    GifCodeReader& m_codes;
    StringTable& m_table;
    std::span<std::uint8_t> m_pixels;
    unsigned m_minimumBits;
    std::uint32_t m_clear;
    GifCodeBits m_bits;
    std::size_t m_written = 0;
};

// The next code but clear codes; nothing at the end of the data.
std::optional<std::uint32_t> LzwDecoder::FirstCode()
{
    const unsigned codeBits = m_minimumBits + 1;
    for (;;) {
        m_codes.Refill(m_bits);
        if (m_bits.count < codeBits)
            return std::nullopt;
        const std::uint32_t code = m_bits.Take(codeBits, (1U << codeBits) - 1);
        if (code != m_clear)
            return code;
    }
}

RunEnd LzwDecoder::DecodeRun()
{
    const auto first = FirstCode();
    if (!first)
        return RunEnd::Data;
    Run run{
        .table = m_table, .pixels = m_pixels, .clear = m_clear, .codeBits = m_minimumBits + 1, .written = m_written
    };
    GifCodeBits bits = m_bits;
    RunEnd end = run.Start(*first);
    while (end == RunEnd::None) {
        m_codes.Refill(bits);
        unsigned count = bits.count >= kCodesAtOnce * kLongestCodeBits ? kCodesAtOnce : 1;
        if (bits.count < run.codeBits)
            end = RunEnd::Data;
        for (; count != 0 && end == RunEnd::None; --count)
            end = run.Follow(bits.Take(run.codeBits, run.codeMask));
    }
    m_bits = bits;
    m_written = run.written;
    return end;
}

} // namespace

GifPixelData DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels)
{
    const unsigned minimumBits = reader.U8();
    if (minimumBits >= kMinimumOfWideCodes)
        return { AreWideCodesClear(reader, minimumBits + 1), 0 };
    GifCodeReader codes(reader);
    GifPixelData data;
    const std::unique_ptr<StringTable> table(new (std::nothrow) StringTable);
    if (table && minimumBits <= kMaxMinimumBits)
        data = LzwDecoder(codes, *table, minimumBits, pixels).Decode();
    codes.Finish();
    return data;
}
