#include "tags/mp3_info.h"

#include "common/file_stream.h"
#include "tags/byte_reader.h"
#include "tags/file_source.h"
#include "tags/tag_results.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint32_t kMostU32 = std::numeric_limits<std::uint32_t>::max();

// A hostile header can ask for more milliseconds than the field holds.
std::uint32_t Truncated(double milliseconds)
{
    return milliseconds < static_cast<double>(kMostU32) ? static_cast<std::uint32_t>(milliseconds) : kMostU32;
}

std::uint32_t DurationMs(const Mp3FileInfo& info)
{
    if (info.isConstantBitRate == 0)
        return Truncated(info.xing.frameCount * info.frame.frameMs);
    return Truncated(AudioBytes(info.fileBytes, info.id3v2TagBytes) * info.frame.frameMs / info.frame.frameBytes);
}

} // namespace

int ReadMp3Info(ByteSource* source, Mp3FileInfo& info, TagFrames frames)
{
    if (source == nullptr)
        return kTagNothingOpen;
    info.fileBytes = static_cast<std::uint32_t>(std::min<std::uint64_t>(source->SizeBytes(), kMostU32));
    ReadId3v2(source, info, frames);
    ReadId3v1(source, info);

    const std::int64_t sync = FindFirstFrameSync(*source, info);
    if (sync < 0)
        return kTagBadData;
    std::array<std::byte, kXingReachBytes> first;
    if (source->ReadAt(static_cast<std::uint64_t>(sync), first) < first.size())
        return kTagBadData;
    info.isConstantBitRate = ParseXingHeader(first, info.xing) == kTagOk ? 0 : 1;
    if (ParseFrameHeader(ByteReader(first).U32Be(), info.frame) != kTagOk)
        return kTagBadData;
    if (info.isConstantBitRate == 0)
        CompleteXingInfo(info.xing, info.fileBytes, info.id3v2TagBytes, info.frame.frameBytes);
    info.durationMs = DurationMs(info);
    return kTagOk;
}

std::int64_t FindFirstFrameSync(ByteSource& source, const Mp3FileInfo& info)
{
    constexpr std::size_t kCarriedBytes = 3;     // a header may lie across two blocks
    constexpr std::size_t kFirstLookBytes = 256; // most songs start here, and in what was read of them already
    std::array<std::byte, 4096> block;
    std::size_t wantedBytes = kFirstLookBytes;
    std::uint64_t offset = info.id3v2TagBytes;
    for (;; wantedBytes = block.size()) {
        const std::size_t sizeBytes = source.ReadAt(offset, std::span(block).first(wantedBytes));
        if (sizeBytes <= kCarriedBytes)
            return -1;
        std::uint32_t window = 0;
        for (std::size_t i = 0; i < sizeBytes; ++i) {
            window = window << 8 | std::to_integer<std::uint32_t>(block[i]);
            if (i >= kCarriedBytes && HasFrameSync(window))
                return static_cast<std::int64_t>(offset + i - kCarriedBytes);
        }
        offset += sizeBytes - kCarriedBytes;
    }
}

std::unique_ptr<Mp3FileInfo> Mp3Reader::OpenMp3Info(const WCHAR* path, TagFrames frames) const
{
    const UniqueFileStream file = OpenForReading(path);
    if (!file)
        return nullptr;
    auto info = std::make_unique<Mp3FileInfo>();
    std::copy_n(path, std::min(WStringView(path).size(), std::size(info->path) - 1), info->path);
    FileSource source(file.Get());
    if (ReadMp3Info(&source, *info, frames) != kTagOk)
        return nullptr;
    return info;
}
