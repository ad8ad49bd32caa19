// Reads numbers and runs of bytes from memory, never past its end. It knows no file and no format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// The error is sticky: from the first read past the end on, every number is 0, every run is empty and Ok() is false. So
// a record is read whole and tested once.
class ByteReader {
public:
    // `bytes` is borrowed.
    explicit ByteReader(std::span<const std::byte> bytes) : m_rest(bytes) {}

    bool Ok() const { return m_ok; }
    std::size_t RestBytes() const { return m_rest.size(); }

    std::span<const std::byte> Take(std::size_t sizeBytes)
    {
        if (sizeBytes > m_rest.size()) {
            m_ok = false;
            m_rest = {};
            return {};
        }
        const auto taken = m_rest.first(sizeBytes);
        m_rest = m_rest.subspan(sizeBytes);
        return taken;
    }
    void Skip(std::size_t sizeBytes) { Take(sizeBytes); }

    std::uint16_t U16Le() { return static_cast<std::uint16_t>(Little(2)); }
    std::uint32_t U32Le() { return static_cast<std::uint32_t>(Little(4)); }
    std::uint64_t U64Le() { return Little(8); }
    std::uint16_t U16Be() { return static_cast<std::uint16_t>(Big(2)); }
    std::uint32_t U32Be() { return static_cast<std::uint32_t>(Big(4)); }

private:
    std::uint64_t Little(std::size_t sizeBytes)
    {
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (const std::byte digit : Take(sizeBytes)) {
            value |= std::to_integer<std::uint64_t>(digit) << shift;
            shift += 8;
        }
        return value;
    }
    std::uint64_t Big(std::size_t sizeBytes)
    {
        std::uint64_t value = 0;
        for (const std::byte digit : Take(sizeBytes))
            value = value << 8 | std::to_integer<std::uint64_t>(digit);
        return value;
    }

    std::span<const std::byte> m_rest;
    bool m_ok = true;
};
