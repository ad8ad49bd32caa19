// The Lyrics3 v2 block: "LYRICSBEGIN", fields, the size of both in six digits, "LYRICS200", and the ID3v1 tag behind.
#include "lyrics/embedded_lyrics.h"

#include "tags/byte_text.h"

#include <array>
#include <string_view>

namespace {

constexpr std::string_view kTag = "TAG";
constexpr std::string_view kBegin = "LYRICSBEGIN";
constexpr std::string_view kEnd = "LYRICS200";
constexpr std::size_t kTagBytes = 128;
constexpr std::size_t kSizeDigits = 6;
constexpr std::size_t kFootBytes = kSizeDigits + kEnd.size();

// What stands between the block and the last byte of the file.
using Foot = std::array<std::byte, kFootBytes + kTag.size()>;

std::uint64_t DecimalNumber(std::span<const std::byte> digits)
{
    std::uint64_t value = 0;
    for (const std::byte byte : digits) {
        const int digit = std::to_integer<int>(byte) - '0';
        if (digit < 0 || digit > 9)
            break;
        value = value * 10 + static_cast<std::uint64_t>(digit);
    }
    return value;
}

} // namespace

std::optional<EmbeddedLyrics> ReadLyrics3Block(ByteSource& song)
{
    const std::uint64_t songBytes = song.SizeBytes();
    if (songBytes < kTagBytes + kFootBytes)
        return std::nullopt;
    const std::uint64_t footOffset = songBytes - kTagBytes - kFootBytes;
    Foot foot = {};
    if (song.ReadAt(footOffset, foot) < foot.size())
        return std::nullopt;
    const std::span<const std::byte> bytes(foot);
    if (!StartsWithIgnoringCase(bytes.subspan(kSizeDigits), kEnd) ||
        !StartsWithIgnoringCase(bytes.subspan(kFootBytes), kTag))
        return std::nullopt;
    const std::uint64_t blockBytes = DecimalNumber(bytes.first(kSizeDigits)); // at most 999,999
    if (blockBytes < kBegin.size() || blockBytes > footOffset)
        return std::nullopt;
    EmbeddedLyrics lyrics;
    lyrics.bytes.resize(static_cast<std::size_t>(blockBytes) + 1);
    const auto block = std::as_writable_bytes(std::span(lyrics.bytes)).first(static_cast<std::size_t>(blockBytes));
    if (song.ReadAt(footOffset - blockBytes, block) < block.size() || !StartsWithIgnoringCase(block, kBegin))
        return std::nullopt;
    return lyrics;
}
