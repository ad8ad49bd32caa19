// An ordinary file of the card, read a block at a time wherever it is asked. Knows no format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <vector>

namespace cardsong::playback {

using Bytes = std::span<const unsigned char>;

// One thread reads it.
class SongFile {
public:
    // Null when there is no such file, when it is no ordinary one (opening a pipe or a device could wait for ever), or
    // when it may not be read.
    static std::unique_ptr<SongFile> Open(const std::filesystem::path& hostPath);

    std::uint64_t SizeBytes() const { return m_sizeBytes; }
    // The bytes from `offset` on: `count` of them, fewer where the file ends or cannot be read. They last until the
    // next call. `count` is at most kMostAtOnce.
    Bytes At(std::uint64_t offset, std::size_t count);
    // Whether a byte could not be read that the file had when it was opened.
    bool HasFailed() const { return m_hasFailed; }

    static constexpr std::size_t kMostAtOnce = 32 * 1024;

private:
    SongFile() = default;
    void LoadBlock(std::uint64_t offset);

    std::ifstream m_file;
    std::uint64_t m_sizeBytes = 0;
    std::vector<unsigned char> m_block;
    std::uint64_t m_blockOffset = 0;
    bool m_hasFailed = false;
};

} // namespace cardsong::playback
