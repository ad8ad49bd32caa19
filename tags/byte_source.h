// Where the tag readers take their bytes from: memory or a file, read at any offset.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

class ByteSource {
public:
    virtual ~ByteSource() = default;
    // May have to look; 0 when it cannot be told.
    virtual std::uint64_t SizeBytes() = 0;
    // Fills `target` from `offset` on and returns how many bytes there were: fewer only at the end or when reading
    // fails.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) = 0;
};

// `bytes` is borrowed.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    std::uint64_t SizeBytes() override { return m_bytes.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) override
    {
        if (offset >= m_bytes.size())
            return 0;
        const auto rest = m_bytes.subspan(static_cast<std::size_t>(offset));
        const std::size_t sizeBytes = std::min(rest.size(), target.size());
        std::copy_n(rest.begin(), sizeBytes, target.begin());
        return sizeBytes;
    }

private:
    std::span<const std::byte> m_bytes;
};
