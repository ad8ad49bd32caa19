#include "tags/block_source.h"

BlockSource::BlockSource(ByteSource& below) : m_below(below)
{
    m_head.Fill(below, 0, m_head.bytes.size());
    if (m_head.sizeBytes < m_head.bytes.size())
        m_sizeBytes = m_head.sizeBytes;
}

std::uint64_t BlockSource::SizeBytes()
{
    if (!m_sizeBytes)
        m_sizeBytes = m_below.SizeBytes();
    return *m_sizeBytes;
}

std::size_t BlockSource::ReadAt(std::uint64_t offset, std::span<std::byte> target)
{
    if (m_head.Holds(offset, target.size()))
        return m_head.Copy(offset, target);
    if (offset >= SizeBytes())
        return 0;
    const std::uint64_t restBytes = SizeBytes() - offset;
    target = target.first(static_cast<std::size_t>(std::min<std::uint64_t>(target.size(), restBytes)));
    if (m_head.Holds(offset, target.size()))
        return m_head.Copy(offset, target);
    if (target.size() > m_last.bytes.size())
        return m_below.ReadAt(offset, target);
    if (!m_last.Holds(offset, target.size()))
        m_last.Fill(m_below, offset, static_cast<std::size_t>(std::min<std::uint64_t>(m_last.bytes.size(), restBytes)));
    return m_last.Copy(offset, target);
}
