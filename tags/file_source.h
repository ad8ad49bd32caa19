// An open file as a byte source. It keeps the first block in memory, because headers are read there in many small
// steps.
#pragma once

#include "tags/byte_source.h"

#include "platform/ce.h"

#include <array>
#include <cstdio>
#include <memory>

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// Opens a file of the device for reading bytes; null when it cannot be opened or `path` is null.
FileHandle OpenForReading(const WCHAR* path);

class FileSource final : public ByteSource {
public:
    // `file` is borrowed, and its position is left anywhere.
    explicit FileSource(std::FILE* file);

    std::uint64_t SizeBytes() const override { return m_sizeBytes; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override;

private:
    std::size_t ReadFromFile(std::uint64_t offset, std::span<std::byte> target);

    std::FILE* m_file;
    std::uint64_t m_sizeBytes = 0;
    std::array<std::byte, 8192> m_head; // holds the header of nearly every song
    std::size_t m_headBytes = 0;
};
