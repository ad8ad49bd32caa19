// An open file as a byte source that asks the system as seldom as a reader of headers and tags allows.
#pragma once

#include "tags/block_source.h"

#include <cstdio>

class FileSource final : public ByteSource {
public:
    // `file` is borrowed, stands at its start and is left anywhere.
    explicit FileSource(std::FILE* file) : m_stream(file), m_blocks(m_stream) {}

    std::uint64_t SizeBytes() override { return m_blocks.SizeBytes(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        return m_blocks.ReadAt(offset, target);
    }

private:
    // The file itself. Each read is a call of the system, and a second one where it does not follow the read before.
    class Stream final : public ByteSource {
    public:
        explicit Stream(std::FILE* file) : m_file(file) {}
        // 0 for a file whose size cannot be told.
        std::uint64_t SizeBytes() override;
        std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override;

    private:
        static constexpr std::uint64_t kUnknown = ~std::uint64_t{ 0 };

        std::FILE* m_file;
        std::uint64_t m_position = 0;
    };

    Stream m_stream;
    BlockSource m_blocks;
};
