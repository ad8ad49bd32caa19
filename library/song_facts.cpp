#include "library/song_facts.h"

#include "common/file_stream.h"
#include "encoding/code_page.h"
#include "tags/file_source.h"
#include "tags/id3_frame_search.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>

namespace {

constexpr std::size_t kMostTitleBytes = 1024;
constexpr std::uint32_t kMsPerSecond = 1000;
constexpr std::uint64_t kWmaUnitsPerMs = 10'000;
constexpr std::uint32_t kWmaUnitsPerSecond = 10'000'000;

// The text encodings that the first byte of an ID3v2 text frame names.
enum : unsigned { kTextOfOldTags = 0, kUtf16WithMark = 1, kUtf16BigEndian = 2, kUtf8 = 3 };

enum class ByteOrder { LittleEndian, BigEndian };

using Bytes = std::span<const std::byte>;

WString Decode(UINT codePage, const std::string& text)
{
    WString wide(text.size(), 0); // no code page makes more units than it has bytes
    const int units = MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                          static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

// 8-bit text whose code page nobody noted: Chinese, else Latin-1, whose bytes are the first characters of UTF-16.
WString DecodeGuessed(const std::string& text)
{
    const std::int32_t codePage = GetCodePage(text.c_str());
    if (codePage != kNoCodePage)
        return Decode(static_cast<UINT>(codePage), text);
    WString wide;
    for (const char c : text)
        wide += static_cast<unsigned char>(c);
    return wide;
}

std::string TextUpToZero(Bytes bytes)
{
    std::string text;
    for (const std::byte byte : bytes) {
        if (byte == std::byte{ 0 })
            break;
        text += static_cast<char>(byte);
    }
    return text;
}

WString DecodeUtf16(Bytes bytes, ByteOrder order)
{
    WString text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = std::to_integer<unsigned>(bytes[i]);
        const auto second = std::to_integer<unsigned>(bytes[i + 1]);
        const auto unit = static_cast<WCHAR>(order == ByteOrder::BigEndian ? first << 8 | second : second << 8 | first);
        if (unit == 0)
            break;
        if (unit != 0xFEFF || !text.empty())
            text += unit;
    }
    return text;
}

// Text without a mark counts as little-endian.
ByteOrder ByteOrderOfMark(Bytes text)
{
    return !text.empty() && text[0] == std::byte{ 0xFE } ? ByteOrder::BigEndian : ByteOrder::LittleEndian;
}

WString DecodeTextFrame(Bytes frame)
{
    if (frame.empty())
        return {};
    const Bytes text = frame.subspan(1);
    switch (std::to_integer<unsigned>(frame[0])) {
    case kTextOfOldTags: return DecodeGuessed(TextUpToZero(text));
    case kUtf16WithMark: return DecodeUtf16(text, ByteOrderOfMark(text));
    case kUtf16BigEndian: return DecodeUtf16(text, ByteOrder::BigEndian);
    case kUtf8: return Decode(CP_UTF8, TextUpToZero(text));
    default: return {};
    }
}

WString WithoutBlanksAtTheEnd(WString text)
{
    text.resize(text.find_last_not_of(TEXT(" \t\r\n")) + 1);
    return text;
}

WString Mp3Title(ByteSource& source, const Mp3FileInfo& info)
{
    WString title;
    if (info.id3v2TagBytes > 0)
        title = DecodeTextFrame(
            FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", kMostTitleBytes));
    title = WithoutBlanksAtTheEnd(std::move(title));
    if (title.empty() && HasId3v1(info.id3v1))
        title = WithoutBlanksAtTheEnd(DecodeGuessed(TextUpToZero(std::as_bytes(std::span(info.id3v1.title)))));
    return title;
}

SongFacts ReadMp3Facts(const WCHAR* path)
{
    const UniqueFileStream file = OpenForReading(path);
    if (!file)
        return {};
    FileSource source(file.Get());
    Mp3FileInfo info;
    const bool hasLength = ReadMp3Info(&source, info, TagFrames::Skip) == kTagOk;
    return { hasLength ? info.durationMs : 0, Mp3Title(source, info) };
}

// What was read before a failure counts.
std::unique_ptr<WmaInfo> ReadWmaAsFarAsPossible(const WCHAR* path)
{
    auto info = std::make_unique<WmaInfo>();
    static_cast<void>(ReadWmaInfo(path, info.get()));
    return info;
}

SongFacts ReadWmaFacts(const WCHAR* path)
{
    const auto info = ReadWmaAsFarAsPossible(path);
    const auto length = static_cast<std::uint64_t>(std::max<std::int64_t>(info->duration, 0));
    return { length / kWmaUnitsPerMs, WithoutBlanksAtTheEnd(info->title) };
}

} // namespace

std::uint32_t ReadSongDurationSeconds(const WCHAR* path, bool isMp3)
{
    if (!isMp3)
        return static_cast<std::uint32_t>(ReadWmaAsFarAsPossible(path)->duration) / kWmaUnitsPerSecond;
    const auto info = Mp3Reader().OpenMp3Info(path, TagFrames::Skip);
    return info ? info->durationMs / kMsPerSecond : 0;
}

SongFacts ReadSongFacts(const WCHAR* path, SongFormat format)
{
    return format == SongFormat::Mp3 ? ReadMp3Facts(path) : ReadWmaFacts(path);
}
