#include "playback/tags_around_sound.h"

#include <algorithm>
#include <string_view>

namespace cardsong::playback {

namespace {

constexpr int kMostTags = 16; // at each end

constexpr std::size_t kId3HeaderBytes = 10;
constexpr unsigned kId3HasFooter = 0x10;
constexpr std::size_t kId3v1Bytes = 128;
constexpr std::size_t kEnhancedBytes = 227; // in front of ID3v1
constexpr std::size_t kApeHeaderBytes = 32; // and its footer's
constexpr unsigned kApeHasHeader = 0x80;    // in the top byte of the flags
constexpr std::size_t kLyricsEndBytes = 9;
constexpr std::size_t kLyricsSizeDigits = 6;
constexpr std::size_t kMostOldLyricsBytes = 5100 + 20; // with both its words
constexpr std::string_view kLyricsBegin = "LYRICSBEGIN";

bool StartsWith(Bytes bytes, std::string_view word)
{
    return bytes.size() >= word.size() && std::equal(word.begin(), word.end(), bytes.begin());
}

// Four groups of seven bits, the highest first.
std::uint64_t SynchsafeAt(Bytes bytes, std::size_t at)
{
    std::uint64_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        value = value << 7 | (bytes[i] & 0x7FU);
    return value;
}

std::uint64_t LittleEndianAt(Bytes bytes, std::size_t at)
{
    std::uint64_t value = 0;
    for (std::size_t i = 4; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

// Of the tag that begins the range; 0 without one.
std::uint64_t TagBytesInFront(SongFile& file, const ByteRange& range)
{
    const Bytes id3 = file.At(range.begin, kId3HeaderBytes);
    if (id3.size() == kId3HeaderBytes && StartsWith(id3, "ID3"))
        return kId3HeaderBytes + SynchsafeAt(id3, 6) + ((id3[5] & kId3HasFooter) != 0 ? kId3HeaderBytes : 0);
    const Bytes ape = file.At(range.begin, kApeHeaderBytes);
    if (ape.size() == kApeHeaderBytes && StartsWith(ape, "APETAGEX"))
        return kApeHeaderBytes + LittleEndianAt(ape, 12);
    return 0;
}

// `count` bytes in front of the range's end; fewer only where the range is shorter.
Bytes LastBytes(SongFile& file, const ByteRange& range, std::size_t count)
{
    return range.Bytes() < count ? Bytes() : file.At(range.end - count, count);
}

std::uint64_t Id3v1Bytes(SongFile& file, const ByteRange& range)
{
    if (!StartsWith(LastBytes(file, range, kId3v1Bytes), "TAG"))
        return 0;
    const bool isEnhanced = StartsWith(LastBytes(file, range, kId3v1Bytes + kEnhancedBytes), "TAG+");
    return kId3v1Bytes + (isEnhanced ? kEnhancedBytes : 0);
}

std::uint64_t ApeBytes(SongFile& file, const ByteRange& range)
{
    const Bytes footer = LastBytes(file, range, kApeHeaderBytes);
    if (!StartsWith(footer, "APETAGEX"))
        return 0;
    const std::uint64_t itemsAndFooter = LittleEndianAt(footer, 12);
    return itemsAndFooter < kApeHeaderBytes
               ? 0
               : itemsAndFooter + ((footer[23] & kApeHasHeader) != 0 ? kApeHeaderBytes : 0);
}

std::uint64_t AppendedId3Bytes(SongFile& file, const ByteRange& range)
{
    const Bytes footer = LastBytes(file, range, kId3HeaderBytes);
    return StartsWith(footer, "3DI") ? SynchsafeAt(footer, 6) + 2 * kId3HeaderBytes : 0;
}

std::uint64_t LyricsBytes(SongFile& file, const ByteRange& range)
{
    constexpr std::size_t kTailBytes = kLyricsSizeDigits + kLyricsEndBytes;
    const Bytes tail = LastBytes(file, range, kTailBytes);
    if (!StartsWith(tail.empty() ? tail : tail.subspan(kLyricsSizeDigits), "LYRICS200"))
        return 0;
    std::uint64_t size = 0;
    for (const unsigned char digit : tail.first(kLyricsSizeDigits)) {
        if (digit < '0' || digit > '9')
            return 0;
        size = size * 10 + (digit - '0');
    }
    const std::uint64_t whole = size + kTailBytes;
    return whole <= range.Bytes() && StartsWith(file.At(range.end - whole, kLyricsBegin.size()), kLyricsBegin) ? whole
                                                                                                               : 0;
}

std::uint64_t OldLyricsBytes(SongFile& file, const ByteRange& range)
{
    if (!StartsWith(LastBytes(file, range, kLyricsEndBytes), "LYRICSEND"))
        return 0;
    const auto reach = static_cast<std::size_t>(std::min<std::uint64_t>(range.Bytes(), kMostOldLyricsBytes));
    const Bytes block = file.At(range.end - reach, reach);
    const std::string_view text(reinterpret_cast<const char*>(block.data()), block.size());
    const std::size_t begin = text.rfind(kLyricsBegin);
    return begin == std::string_view::npos ? 0 : text.size() - begin;
}

std::uint64_t TagBytesBehind(SongFile& file, const ByteRange& range)
{
    for (const auto measure : { Id3v1Bytes, ApeBytes, LyricsBytes, OldLyricsBytes, AppendedId3Bytes }) {
        if (const std::uint64_t bytes = measure(file, range); bytes != 0)
            return bytes;
    }
    return 0;
}

} // namespace

ByteRange FindSound(SongFile& file)
{
    ByteRange sound{ 0, file.SizeBytes() };
    for (int tag = 0; tag < kMostTags; ++tag) {
        const std::uint64_t bytes = TagBytesInFront(file, sound);
        if (bytes == 0 || bytes > sound.Bytes())
            break;
        sound.begin += bytes;
    }
    for (int tag = 0; tag < kMostTags; ++tag) {
        const std::uint64_t bytes = TagBytesBehind(file, sound);
        if (bytes == 0 || bytes > sound.Bytes())
            break;
        sound.end -= bytes;
    }
    return sound;
}

} // namespace cardsong::playback
