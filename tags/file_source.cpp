#include "tags/file_source.h"

#include <limits>

std::uint64_t FileSource::Stream::SizeBytes()
{
    constexpr long kEndTagBytes = 128;
    for (const long behindBytes : { kEndTagBytes, 0L }) { // the first goes to the tag that is read next
        const bool isThere = std::fseek(m_file, -behindBytes, SEEK_END) == 0;
        const long position = isThere ? std::ftell(m_file) : -1;
        if (position >= 0) {
            m_position = static_cast<std::uint64_t>(position);
            return m_position + static_cast<std::uint64_t>(behindBytes);
        }
    }
    m_position = kUnknown;
    return 0;
}

std::size_t FileSource::Stream::ReadAt(std::uint64_t offset, std::span<std::byte> target)
{
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<long>::max()))
        return 0;
    if (offset != m_position && std::fseek(m_file, static_cast<long>(offset), SEEK_SET) != 0) {
        m_position = kUnknown;
        return 0;
    }
    const std::size_t readBytes = std::fread(target.data(), 1, target.size(), m_file);
    m_position = offset + readBytes;
    return readBytes;
}
