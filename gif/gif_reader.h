// Bounds-checked reading of the bytes of a GIF, and of its data sub-blocks. Knows no file and no block's meaning.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

class GifReader {
public:
    GifReader() = default;
    // `data` is borrowed.
    explicit GifReader(std::span<const std::byte> data) : m_data(data) {}

    // False once a read has passed the end; such a read gives zeros and leaves the reader at the end.
    bool Ok() const { return m_isOk; }
    bool AtEnd() const { return m_offset == m_data.size(); }
    std::size_t Offset() const { return m_offset; }
    // Goes to an offset inside the data and forgets an earlier failure.
    void MoveTo(std::size_t offset);

    std::uint8_t U8();
    std::uint16_t U16Le();
    // Exactly `count` bytes, or an empty span and a failure.
    std::span<const std::byte> Take(std::size_t count);
    void Skip(std::size_t count) { Take(count); }

    // The next data sub-block without its length byte: 1 to 255 bytes, or what there is of one that the data cut short.
    // Empty at the end of a chain: at its terminator or where the data end.
    std::span<const std::byte> SubBlock();
    // Goes behind the terminator of the chain of sub-blocks.
    void SkipSubBlocks();

private:
    std::span<const std::byte> m_data;
    std::size_t m_offset = 0;
    bool m_isOk = true;
};
