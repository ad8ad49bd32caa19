#include "tags/file_source.h"

#include <limits>

FileHandle OpenForReading(const WCHAR* path)
{
    if (path == nullptr)
        return nullptr;
    FileHandle file(_wfopen(path, TEXT("rb")));
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0); // FileSource reads in blocks of its own
    return file;
}

FileSource::FileSource(std::FILE* file) : m_file(file)
{
    if (std::fseek(file, 0, SEEK_END) != 0)
        return;
    const long sizeBytes = std::ftell(file);
    if (sizeBytes <= 0)
        return;
    m_sizeBytes = static_cast<std::uint64_t>(sizeBytes);
    m_headBytes = ReadFromFile(0, m_head);
}

std::size_t FileSource::ReadAt(std::uint64_t offset, std::span<std::byte> target)
{
    if (offset >= m_sizeBytes)
        return 0;
    const auto sizeBytes = static_cast<std::size_t>(std::min<std::uint64_t>(target.size(), m_sizeBytes - offset));
    if (offset + sizeBytes > m_headBytes)
        return ReadFromFile(offset, target.first(sizeBytes));
    std::copy_n(m_head.begin() + static_cast<std::ptrdiff_t>(offset), sizeBytes, target.begin());
    return sizeBytes;
}

std::size_t FileSource::ReadFromFile(std::uint64_t offset, std::span<std::byte> target)
{
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<long>::max()))
        return 0;
    if (std::fseek(m_file, static_cast<long>(offset), SEEK_SET) != 0)
        return 0;
    return std::fread(target.data(), 1, target.size(), m_file);
}
