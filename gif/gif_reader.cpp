#include "gif/gif_reader.h"

#include <algorithm>

void GifReader::MoveTo(std::size_t offset)
{
    m_offset = std::min(offset, m_data.size());
    m_isOk = true;
}

std::span<const std::byte> GifReader::Take(std::size_t count)
{
    if (count > m_data.size() - m_offset) {
        m_offset = m_data.size();
        m_isOk = false;
        return {};
    }
    const auto taken = m_data.subspan(m_offset, count);
    m_offset += count;
    return taken;
}

std::uint8_t GifReader::U8()
{
    const auto bytes = Take(1);
    return bytes.empty() ? std::uint8_t{ 0 } : std::to_integer<std::uint8_t>(bytes[0]);
}

std::uint16_t GifReader::U16Le()
{
    const auto bytes = Take(2);
    if (bytes.empty())
        return 0;
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes[0]) | std::to_integer<unsigned>(bytes[1]) << 8);
}

std::span<const std::byte> GifReader::SubBlock()
{
    const std::size_t sizeBytes = U8();
    return Take(std::min(sizeBytes, m_data.size() - m_offset));
}

void GifReader::SkipSubBlocks()
{
    while (!SubBlock().empty()) {
    }
}
