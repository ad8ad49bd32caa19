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
constexpr unsigned kCodesAtOnce = 4; // of bits that are surely there, so that only each fourth code asks
constexpr unsigned kLongestCodeBits = kMaxMinimumBits + 1;

// A string is always a part of what was already written: the string of the code before and the byte that followed it.
// So it keeps its place in the output instead of its bytes; the first eight lie beside it, and most strings are no
// longer.
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
    String Get(std::uint32_t code) const { return { m_heads[code], m_starts[code], m_sizes[code] }; }
    void Set(std::uint32_t code, const String& string)
    {
        m_heads[code] = string.head;
        m_starts[code] = string.start;
        m_sizes[code] = static_cast<std::uint16_t>(string.sizeBytes);
    }

private:
    // Apart, since a short string needs no start: less of the cache is used. Set before they are read.
    std::array<std::uint64_t, kTableEntries> m_heads;
    std::array<std::uint16_t, kTableEntries> m_sizes;
    std::array<std::uint32_t, kTableEntries> m_starts;
};

// Writes `string` where there may be no room for whole words.
void WriteBytes(std::uint8_t* pixels, std::size_t target, const String& string)
{
    for (std::uint32_t i = 0; i < string.sizeBytes; ++i)
        pixels[target + i] =
            i < kWordBytes ? static_cast<std::uint8_t>(string.head >> (8 * i)) : pixels[string.start + i];
}

// Writes `string` in whole words: up to seven bytes behind it become anything.
inline void WriteWords(std::uint8_t* pixels, std::size_t target, const String& string)
{
    std::memcpy(pixels + target, &string.head, kWordBytes);
    // From the front: the last byte of a string that is added now is the first that was written here.
    for (std::uint32_t i = kWordBytes; i < string.sizeBytes; i += kWordBytes)
        std::memcpy(pixels + target + i, pixels + string.start + i, kWordBytes);
}

enum class RunEnd { None, Clear, Data, Refusal };

// A run of codes: from where the table is empty to where it is emptied again. All of it by value, so that it stays in
// registers: pixels are bytes, and in memory those might lie over anything.
struct Run {
    StringTable& table;
    std::span<std::uint8_t> pixels;
    std::uint32_t clear;
    unsigned codeBits;
    std::size_t written;
    std::uint32_t nextFree = clear + 2;
    // An entry that makes codes longer; where the table starts above it they stay as they are.
    std::uint32_t lastOfSize = (1U << codeBits) > nextFree ? 1U << codeBits : kTableEntries;
    String previous = {}; // of the code before; the next string is written right behind it

    RunEnd Start(std::uint32_t code);
    RunEnd Follow(std::uint32_t code);
    bool Write(const String& string);
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
    String string;
    if (code < nextFree) {
        string = table.Get(code);
        table.Set(nextFree, previous.WithByte(string.FirstByte()));
    } else { // a code without an entry yet stands for the very string that is added now
        if (previous.sizeBytes == 0)
            return RunEnd::Refusal;
        string = previous.WithByte(previous.FirstByte());
        table.Set(nextFree, string);
    }
    if (!Write(string))
        return RunEnd::Refusal;
    if (code > nextFree) // it gets no entry: for the next code, the string before is empty
        previous = { 0, static_cast<std::uint32_t>(written), 0 };
    CountEntry();
    return RunEnd::None;
}

// False when there is no room.
inline bool Run::Write(const String& string)
{
    const std::size_t roomBytes = pixels.size() - written;
    if (roomBytes >= string.sizeBytes + (kWordBytes - 1))
        WriteWords(pixels.data(), written, string);
    else if (roomBytes >= string.sizeBytes)
        WriteBytes(pixels.data(), written, string);
    else
        return false;
    previous = { string.head, static_cast<std::uint32_t>(written), string.sizeBytes };
    written += string.sizeBytes;
    return true;
}

inline void Run::CountEntry()
{
    ++nextFree;
    if (nextFree == lastOfSize && codeBits < kMaxCodeBits && nextFree < kTableEntries) {
        ++codeBits;
        lastOfSize *= 2;
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
        const std::uint32_t code = m_bits.Take(codeBits);
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
            end = run.Follow(bits.Take(run.codeBits));
    }
    m_bits = bits;
    m_written = run.written;
    return end;
}

GifPixelData DecodeChain(GifReader& reader, unsigned minimumBits, std::span<std::uint8_t> pixels)
{
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

} // namespace

GifPixelData DecodeGifPixels(GifReader& reader, std::span<std::uint8_t> pixels)
{
    const unsigned minimumBits = reader.U8();
    const GifPixelData data = DecodeChain(reader, minimumBits, pixels);
    std::ranges::fill(pixels.subspan(data.count), std::uint8_t{ 0 });
    return data;
}
