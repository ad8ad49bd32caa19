// The USLT frame of an ID3v2 tag: unsynchronised lyrics.
#include "lyrics/embedded_lyrics.h"

#include "tags/byte_text.h"
#include "tags/id3_frame_table.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr std::size_t kHeaderBytes = 10; // of the tag, and of each frame

using Header = std::array<std::byte, kHeaderBytes>;

std::uint64_t BigEndian(std::span<const std::byte> bytes, unsigned bitsOfByte)
{
    std::uint64_t value = 0;
    for (const std::byte byte : bytes)
        value = value << bitsOfByte | (std::to_integer<std::uint64_t>(byte) & ((1U << bitsOfByte) - 1));
    return value;
}

// Where the text of a frame begins, behind encoding, language and the end of an empty descriptor.
struct TextPlace {
    std::size_t offset;
    std::int32_t codePage;
};
TextPlace PlaceOfText(std::byte encoding)
{
    switch (std::to_integer<int>(encoding)) {
    case 1: return { 8, kAlreadyUtf16 }; // with a byte-order mark, and an end of two bytes
    case 3: return { 5, CP_UTF8 };
    default: return { 5, kDetectCodePage };
    }
}

// The text of a frame's data; nothing when the data is too short for it or the text too long for us.
std::optional<EmbeddedLyrics> ReadText(ByteSource& song, std::uint64_t offset, std::uint64_t dataBytes)
{
    std::array<std::byte, 1> encoding = {};
    if (dataBytes == 0 || song.ReadAt(offset, encoding) < encoding.size())
        return std::nullopt;
    const TextPlace place = PlaceOfText(encoding[0]);
    if (dataBytes < place.offset || dataBytes - place.offset > kMostLyricsBytes)
        return std::nullopt;
    const auto textBytes = static_cast<std::size_t>(dataBytes - place.offset);
    EmbeddedLyrics lyrics{ LyricsBytes(textBytes + 1), place.codePage };
    if (song.ReadAt(offset + place.offset, std::as_writable_bytes(std::span(lyrics.bytes)).first(textBytes)) <
        textBytes)
        return std::nullopt;
    return lyrics;
}

} // namespace

std::optional<EmbeddedLyrics> ReadUsltFrame(ByteSource& song)
{
    Header tag = {};
    if (song.ReadAt(0, tag) < tag.size() || !StartsWithIgnoringCase(tag, "ID3"))
        return std::nullopt;
    const std::uint64_t end = kHeaderBytes + BigEndian(std::span(tag).subspan(6, 4), 7);
    if (end > song.SizeBytes())
        return std::nullopt;
    std::uint64_t at = kHeaderBytes;
    for (int i = 0; i < kMostTagFrames && at + kHeaderBytes < end; ++i) {
        Header frame = {};
        if (song.ReadAt(at, frame) < frame.size())
            return std::nullopt;
        const std::uint64_t frameBytes = BigEndian(std::span(frame).subspan(4, 4), 8);
        if (frameBytes == 0)
            return std::nullopt;
        at += kHeaderBytes;
        if (StartsWithIgnoringCase(frame, "USLT")) {
            if (auto lyrics = ReadText(song, at, std::min(frameBytes, end - at)))
                return lyrics;
        }
        at += frameBytes;
    }
    return std::nullopt;
}
