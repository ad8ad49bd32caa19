#include "playback/song_file.h"

#include <algorithm>

namespace cardsong::playback {

std::unique_ptr<SongFile> SongFile::Open(const std::filesystem::path& hostPath)
{
    std::error_code failed;
    if (!std::filesystem::is_regular_file(hostPath, failed))
        return nullptr;
    const std::uint64_t sizeBytes = std::filesystem::file_size(hostPath, failed);
    if (failed)
        return nullptr;
    std::unique_ptr<SongFile> song(new SongFile);
    song->m_file.rdbuf()->pubsetbuf(nullptr, 0); // blocks are kept here
    song->m_file.open(hostPath, std::ios::binary);
    if (!song->m_file)
        return nullptr;
    song->m_sizeBytes = sizeBytes;
    return song;
}

Bytes SongFile::At(std::uint64_t offset, std::size_t count)
{
    if (offset >= m_sizeBytes)
        return {};
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_sizeBytes - offset));
    const auto holds = [&] { return offset >= m_blockOffset && offset - m_blockOffset + wanted <= m_block.size(); };
    if (!holds())
        LoadBlock(offset);
    if (holds())
        return Bytes(m_block).subspan(static_cast<std::size_t>(offset - m_blockOffset), wanted);
    m_hasFailed = true;
    return m_block;
}

void SongFile::LoadBlock(std::uint64_t offset)
{
    m_block.resize(kMostAtOnce);
    m_blockOffset = offset;
    m_file.clear();
    m_file.seekg(static_cast<std::streamoff>(offset));
    m_file.read(reinterpret_cast<char*>(m_block.data()), static_cast<std::streamsize>(m_block.size()));
    m_block.resize(static_cast<std::size_t>(std::max<std::streamsize>(m_file.gcount(), 0)));
}

} // namespace cardsong::playback
