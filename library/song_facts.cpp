#include "library/song_facts.h"

#include "common/file_stream.h"
#include "library/tag_title.h"
#include "tags/file_source.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <memory>

namespace {

constexpr std::uint32_t kMsPerSecond = 1000;
constexpr std::uint64_t kWmaUnitsPerMs = 10'000;
constexpr std::uint32_t kWmaUnitsPerSecond = 10'000'000;

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
    return { length / kWmaUnitsPerMs, WmaTitle(*info) };
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
