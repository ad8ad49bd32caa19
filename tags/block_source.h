// A byte source over another that is dear to ask: few large reads stand in for many small ones. Headers of songs lie
// at their start and tags at their end, so the first block is kept, and the last one that was read elsewhere.
#pragma once

#include "tags/byte_source.h"

#include <array>
#include <optional>

class BlockSource final : public ByteSource {
public:
    // `below` is borrowed. Its first block is read at once. Its size is asked for only when that block is not all of
    // it.
    explicit BlockSource(ByteSource& below);

    std::uint64_t SizeBytes() override;
    // More than a block can hold is read past the blocks.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override;

private:
    // Neighbouring bytes of the source below.
    template <std::size_t kMostBytes>
    struct Block {
        std::array<std::byte, kMostBytes> bytes;
        std::uint64_t offset = 0;
        std::size_t sizeBytes = 0;

        void Fill(ByteSource& source, std::uint64_t from, std::size_t mostBytes)
        {
            offset = from;
            sizeBytes = source.ReadAt(from, std::span(bytes).first(mostBytes));
        }
        bool Holds(std::uint64_t from, std::size_t wantedBytes) const
        {
            return from >= offset && from - offset <= sizeBytes && wantedBytes <= sizeBytes - (from - offset);
        }
        // As many as there are; `from` lies in the block or at its end.
        std::size_t Copy(std::uint64_t from, std::span<std::byte> target) const
        {
            const auto start = static_cast<std::size_t>(from - offset);
            const std::size_t copiedBytes = std::min(target.size(), sizeBytes - start);
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(start), copiedBytes, target.begin());
            return copiedBytes;
        }
    };

    ByteSource& m_below;
    std::optional<std::uint64_t> m_sizeBytes;
    Block<4096> m_head; // holds the headers of most songs
    Block<4096> m_last;
};
