// A byte source in memory that counts what it is asked for.
#pragma once

#include "tags/byte_source.h"

namespace cardsong::test {

class CountingSource final : public ByteSource {
public:
    // `bytes` is borrowed.
    explicit CountingSource(std::span<const std::byte> bytes) : m_source(bytes) {}

    std::uint64_t SizeBytes() override
    {
        ++sizeQuestions;
        return m_source.SizeBytes();
    }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        ++reads;
        askedBytes += target.size();
        return m_source.ReadAt(offset, target);
    }

    int reads = 0;
    int sizeQuestions = 0;
    std::size_t askedBytes = 0;

private:
    MemorySource m_source;
};

} // namespace cardsong::test
