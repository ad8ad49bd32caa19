#include "tags/id3_frame_search.h"

#include "tags/id3_frame_table.h"

#include <array>

namespace {

constexpr std::uint64_t kTagHeaderBytes = 10;
constexpr std::size_t kFrameHeaderBytes = 10;
constexpr std::uint8_t kFirstWithShortBytes = 4;

struct FrameHeader {
    std::array<std::byte, kFrameHeaderBytes> bytes{};

    bool Has(std::string_view identifier) const
    {
        for (std::size_t i = 0; i < identifier.size(); ++i) {
            if (bytes[i] != static_cast<std::byte>(identifier[i]))
                return false;
        }
        return true;
    }
    std::uint64_t DataBytes(std::uint8_t version) const
    {
        const unsigned bitsOfByte = version >= kFirstWithShortBytes ? 7 : 8;
        std::uint64_t size = 0;
        for (std::size_t i = 4; i < 8; ++i)
            size = size << bitsOfByte | std::to_integer<std::uint64_t>(bytes[i]);
        return size;
    }
};

} // namespace

std::vector<std::byte> FindId3v2Frame(ByteSource& source, std::uint32_t tagBytes, std::uint8_t version,
                                      std::string_view identifier, std::size_t mostBytes)
{
    const std::uint64_t end = std::min(kTagHeaderBytes + tagBytes, source.SizeBytes());
    std::uint64_t at = kTagHeaderBytes;
    for (int i = 0; i < kMostTagFrames && at + kFrameHeaderBytes <= end; ++i) {
        FrameHeader header;
        if (source.ReadAt(at, header.bytes) < header.bytes.size() || header.bytes[0] == std::byte{ 0 })
            return {};
        at += kFrameHeaderBytes;
        const std::uint64_t dataBytes = std::min(header.DataBytes(version), end - at);
        if (header.Has(identifier)) {
            std::vector<std::byte> data(static_cast<std::size_t>(std::min<std::uint64_t>(dataBytes, mostBytes)));
            data.resize(source.ReadAt(at, data));
            return data;
        }
        at += dataBytes;
    }
    return {};
}
