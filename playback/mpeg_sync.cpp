#include "playback/mpeg_sync.h"

#include "playback/mpeg_frame_check.h"

#include <algorithm>
#include <vector>

namespace cardsong::playback {

namespace {

constexpr int kProof = 3; // frames in a row
// Frames of Layers I and II hold less that can be wrong, so they prove less.
constexpr int kLongProof = 8;

// Frames of a free bit rate are as long as the encoder likes. 640 kb/s, twice the highest of the table, at 32 kHz make
// 2880 bytes.
constexpr std::size_t kMostFreeBytes = 4096;
// Each free header that is tried costs a look at many places. A file full of them must not cost minutes.
constexpr int kMostFreeTries = 200;

// With a free bit rate all headers of an encoder are alike except for padding and the mode's extension. Headers that
// agree in less may be chance.
bool IsProofFor(std::uint32_t word, std::uint32_t other)
{
    constexpr std::uint32_t kAlikeWhenFree = 0xFFFFFDCF;
    constexpr std::uint32_t kBitRate = 0x0000F000;
    return IsOfOneKind(word, other) && ((word & kBitRate) != 0 || ((word ^ other) & kAlikeWhenFree) == 0);
}

std::uint32_t BigEndianAt(Bytes bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 24 | static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

// What stands at a place of a run that is to be proved.
struct Link {
    bool isOver = false;        // the range ends before another frame does
    std::size_t frameBytes = 0; // 0: no frame of this run
};

Link LinkAt(SongFile& file, const MpegRun& run, std::uint64_t offset, std::uint64_t end)
{
    const auto word = WordAt(file, offset, end);
    if (!word)
        return { true, 0 };
    auto header = IsProofFor(*word, run.word) ? ParseMpegHeader(*word) : std::nullopt;
    if (!header)
        return {};
    if (header->frameBytes == 0)
        header->frameBytes = run.freeBytes + header->paddingBytes;
    if (header->frameBytes > end - offset)
        return { true, 0 };
    if (!CouldBeEncoded(*word, *header, file.At(offset, std::min(kCheckedFrameBytes, header->frameBytes))))
        return {};
    return { false, header->frameBytes };
}

// Follows the run as far as its proof. What counts as proved at the end of the range depends on where it began.
bool IsProved(SongFile& file, const MpegRun& run, const ByteRange& range)
{
    const int proof = ParseMpegHeader(run.word)->layer == 3 ? kProof : kLongProof;
    std::uint64_t offset = run.offset;
    for (int frames = 0; frames < proof; ++frames) {
        const Link link = LinkAt(file, run, offset, range.end);
        if (link.isOver)
            return frames > 0 && run.offset == range.begin;
        if (link.frameBytes == 0)
            return false;
        offset += link.frameBytes;
    }
    return true;
}

// A frame of a free bit rate reaches to the next header of its kind. Each distance to such a header is tried until one
// is proved.
bool FindFreeLength(SongFile& file, MpegRun& run, const ByteRange& range)
{
    const unsigned padding = ParseMpegHeader(run.word)->paddingBytes;
    for (std::size_t distance = kMpegHeaderBytes + 1; distance <= kMostFreeBytes; ++distance) {
        const auto next = WordAt(file, run.offset + distance, range.end);
        if (!next)
            return false;
        if (!IsProofFor(*next, run.word) || distance <= padding)
            continue;
        run.freeBytes = distance - padding;
        if (IsProved(file, run, range))
            return true;
    }
    return false;
}

bool BeginsRun(SongFile& file, MpegRun& run, const ByteRange& range, int& freeTries)
{
    const auto header = ParseMpegHeader(run.word);
    if (!header)
        return false;
    if (header->bitsPerSecond != 0)
        return IsProved(file, run, range);
    // Nobody writes the other layers with a free bit rate. Many a table of numbers looks like their headers.
    return header->layer == 3 && freeTries-- > 0 && FindFreeLength(file, run, range);
}

} // namespace

std::optional<std::uint32_t> WordAt(SongFile& file, std::uint64_t offset, std::uint64_t end)
{
    if (offset > end || end - offset < kMpegHeaderBytes)
        return std::nullopt;
    const Bytes bytes = file.At(offset, kMpegHeaderBytes);
    if (bytes.size() < kMpegHeaderBytes)
        return std::nullopt;
    return BigEndianAt(bytes, 0);
}

std::optional<MpegHeader> FrameAt(SongFile& file, const MpegRun& run, std::uint64_t offset, std::uint64_t end)
{
    const auto word = WordAt(file, offset, end);
    if (!word || !IsOfOneKind(*word, run.word))
        return std::nullopt;
    auto header = ParseMpegHeader(*word);
    if (header && header->frameBytes == 0)
        header->frameBytes = run.freeBytes + header->paddingBytes;
    if (!header || header->frameBytes > end - offset)
        return std::nullopt;
    return header;
}

std::optional<MpegRun> FindMpegRun(SongFile& file, const ByteRange& range, std::uint64_t from, std::uint64_t reach,
                                   const std::atomic<bool>* isCancelled)
{
    // A run is followed inside the block that its first frame was found in.
    constexpr std::size_t kStepBytes = SongFile::kMostAtOnce - (kProof + 1) * kMostFreeBytes;
    const std::uint64_t limit = std::min(reach, range.end);
    std::vector<unsigned char> step;
    int freeTries = kMostFreeTries;
    for (std::uint64_t offset = from; offset < limit; offset += kStepBytes) {
        if (isCancelled != nullptr && *isCancelled)
            return std::nullopt;
        const Bytes bytes = file.At(offset, SongFile::kMostAtOnce);
        const Bytes first = bytes.first(
            static_cast<std::size_t>(std::min<std::uint64_t>({ kStepBytes, limit - offset, bytes.size() })));
        step.assign(first.begin(), first.end());
        for (auto at = step.begin(); (at = std::find(at, step.end(), 0xFF)) != step.end(); ++at) {
            MpegRun run;
            run.offset = offset + static_cast<std::uint64_t>(at - step.begin());
            run.word = WordAt(file, run.offset, range.end).value_or(0);
            if (BeginsRun(file, run, range, freeTries))
                return run;
        }
    }
    return std::nullopt;
}

} // namespace cardsong::playback
