// Builds GIF files byte by byte for tests, right ones and wrong ones, with an LZW encoder of its own. Knows no decoder.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace cardsong::test {

using Bytes = std::vector<std::uint8_t>;

struct GifColor {
    std::uint8_t red, green, blue;
};

constexpr GifColor kBlack{ 0, 0, 0 };
constexpr GifColor kWhite{ 255, 255, 255 };
constexpr GifColor kRed{ 255, 0, 0 };
constexpr GifColor kGreen{ 0, 255, 0 };
constexpr GifColor kBlue{ 0, 0, 255 };
constexpr GifColor kMagenta{ 255, 0, 255 };

constexpr std::uint16_t kBlack565 = 0x0000;
constexpr std::uint16_t kWhite565 = 0xFFFF;
constexpr std::uint16_t kRed565 = 0xF800;
constexpr std::uint16_t kGreen565 = 0x07E0;
constexpr std::uint16_t kBlue565 = 0x001F;
constexpr std::uint16_t kMagenta565 = 0xF81F;

// Packs codes least significant bit first. Code sizes are given, or follow the decoder's rule of growth.
class CodePacker {
public:
    explicit CodePacker(unsigned minimumBits)
        : m_minimumBits(minimumBits), m_clear(1U << minimumBits), m_codeBits(minimumBits + 1), m_nextFree(m_clear + 2)
    {
    }

    std::uint32_t Clear() const { return m_clear; }
    std::uint32_t End() const { return m_clear + 1; }
    std::uint32_t NextFree() const { return m_nextFree; }
    unsigned CodeBits() const { return m_codeBits; }

    CodePacker& Raw(std::uint32_t code, unsigned bits)
    {
        for (unsigned i = 0; i < bits; ++i) {
            if (m_bitCount % 8 == 0)
                m_bytes.push_back(0);
            if (i < 32 && ((code >> i) & 1U) != 0)
                m_bytes.back() = static_cast<std::uint8_t>(m_bytes.back() | 1U << (m_bitCount % 8));
            ++m_bitCount;
        }
        return *this;
    }

    // One code at the size in force; the table grows with every code but the first of a run.
    CodePacker& Code(std::uint32_t code)
    {
        Raw(code, m_codeBits);
        if (code == m_clear) {
            m_codeBits = m_minimumBits + 1;
            m_nextFree = m_clear + 2;
            m_isRunStart = true;
        } else if (m_isRunStart) {
            m_isRunStart = false;
        } else if (code != End()) {
            ++m_nextFree;
            if (m_nextFree == 1U << m_codeBits && m_codeBits != 12)
                ++m_codeBits;
        }
        return *this;
    }
    CodePacker& Codes(std::initializer_list<std::uint32_t> codes)
    {
        for (const std::uint32_t code : codes)
            Code(code);
        return *this;
    }

    const Bytes& Data() const { return m_bytes; }

private:
    unsigned m_minimumBits;
    std::uint32_t m_clear;
    unsigned m_codeBits;
    std::uint32_t m_nextFree;
    bool m_isRunStart = true;
    std::size_t m_bitCount = 0;
    Bytes m_bytes;
};

// Compresses indices; clears the table before it is full.
inline Bytes EncodeLzw(unsigned minimumBits, const Bytes& indices)
{
    CodePacker packer(minimumBits);
    packer.Code(packer.Clear());
    std::map<std::pair<std::uint32_t, std::uint8_t>, std::uint32_t> table;
    std::uint32_t next = packer.End() + 1;
    bool hasString = false;
    std::uint32_t string = 0;
    for (const std::uint8_t index : indices) {
        if (!hasString) {
            string = index;
            hasString = true;
            continue;
        }
        const auto found = table.find({ string, index });
        if (found != table.end()) {
            string = found->second;
            continue;
        }
        packer.Code(string);
        table[{ string, index }] = next++;
        string = index;
        if (next == 4095) {
            packer.Code(string).Code(packer.Clear());
            table.clear();
            next = packer.End() + 1;
            hasString = false;
        }
    }
    if (hasString)
        packer.Code(string);
    packer.Code(packer.End());
    return packer.Data();
}

inline Bytes SubBlocks(const Bytes& data, std::size_t blockBytes = 255)
{
    Bytes chain;
    for (std::size_t at = 0; at < data.size(); at += blockBytes) {
        const std::size_t count = std::min(blockBytes, data.size() - at);
        chain.push_back(static_cast<std::uint8_t>(count));
        chain.insert(chain.end(), data.begin() + static_cast<std::ptrdiff_t>(at),
                     data.begin() + static_cast<std::ptrdiff_t>(at + count));
    }
    chain.push_back(0);
    return chain;
}

constexpr unsigned kLocalTable = 0x80;
constexpr unsigned kInterlace = 0x40;
constexpr unsigned kSorted = 0x20;

struct GifImage {
    std::uint16_t left = 0, top = 0, width = 0, height = 0;
    Bytes indices = {};
    unsigned packed = 0; // flags without the table bits
    std::vector<GifColor> localTable = {};
    unsigned minimumBits = 2;
};

class GifBuilder {
public:
    // Signature and version in one text of 6 letters.
    explicit GifBuilder(const std::string& tag = "GIF89a") : m_bytes(tag.begin(), tag.end()) {}

    GifBuilder& Byte(unsigned value)
    {
        m_bytes.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    GifBuilder& Word(unsigned value) { return Byte(value & 0xFF).Byte(value >> 8); }
    GifBuilder& Append(const Bytes& bytes)
    {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }
    GifBuilder& Table(const std::vector<GifColor>& colors)
    {
        for (const GifColor color : colors)
            Byte(color.red).Byte(color.green).Byte(color.blue);
        return *this;
    }
    // A table has 2, 4, 8 ... 256 colours; an empty one stands for none.
    GifBuilder& Screen(unsigned width, unsigned height, const std::vector<GifColor>& table, unsigned background = 0,
                       unsigned otherFlags = 0, unsigned aspect = 0)
    {
        Word(width).Word(height).Byte(TableFlags(table) | otherFlags).Byte(background).Byte(aspect);
        return Table(table);
    }
    GifBuilder& GraphicControl(unsigned disposal, unsigned delay = 0, int transparentIndex = -1, bool userInput = false)
    {
        Byte(0x21).Byte(0xF9).Byte(4);
        Byte(disposal << 2 | (userInput ? 2U : 0U) | (transparentIndex >= 0 ? 1U : 0U));
        return Word(delay).Byte(transparentIndex >= 0 ? static_cast<unsigned>(transparentIndex) : 0).Byte(0);
    }
    GifBuilder& Descriptor(const GifImage& image)
    {
        Byte(0x2C).Word(image.left).Word(image.top).Word(image.width).Word(image.height);
        Byte(image.packed | TableFlags(image.localTable));
        return Table(image.localTable);
    }
    GifBuilder& Image(const GifImage& image)
    {
        return ImageOfCodes(image, EncodeLzw(image.minimumBits, image.indices));
    }
    GifBuilder& ImageOfCodes(const GifImage& image, const Bytes& data, std::size_t blockBytes = 255)
    {
        return Descriptor(image).Byte(image.minimumBits).Append(SubBlocks(data, blockBytes));
    }
    GifBuilder& Extension(unsigned label, const Bytes& data) { return Byte(0x21).Byte(label).Append(SubBlocks(data)); }
    GifBuilder& Trailer() { return Byte(0x3B); }

    const Bytes& Data() const { return m_bytes; }
    std::string Text() const { return { m_bytes.begin(), m_bytes.end() }; }

private:
    static unsigned TableFlags(const std::vector<GifColor>& table)
    {
        unsigned bits = 0;
        while ((std::size_t{ 2 } << bits) < table.size())
            ++bits;
        return table.empty() ? 0 : 0x80 | bits;
    }

    Bytes m_bytes;
};

// A file of one picture that is `color` all over.
inline std::string PlainGif(unsigned width, unsigned height, GifColor color)
{
    const GifImage image{ .width = static_cast<std::uint16_t>(width),
                          .height = static_cast<std::uint16_t>(height),
                          .indices = Bytes(std::size_t{ width } * height, 1) };
    return GifBuilder().Screen(width, height, { kBlack, color }).Image(image).Trailer().Text();
}

// A pattern that repeats rarely, below `colors`; the same on every machine.
inline Bytes NoiseIndices(std::size_t count, unsigned colors)
{
    Bytes indices(count);
    std::uint32_t state = 12345;
    for (auto& index : indices) {
        state = state * 1664525 + 1013904223;
        index = static_cast<std::uint8_t>((state >> 24) % colors);
    }
    return indices;
}

} // namespace cardsong::test
