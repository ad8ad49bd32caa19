#include "playback/mpeg_info_frame.h"

#include <algorithm>
#include <string_view>

namespace cardsong::playback {

namespace {

constexpr std::size_t kCheckBytes = 2; // an optional checksum behind the header
constexpr std::size_t kVbriAt = kMpegHeaderBytes + 32;
constexpr std::uint32_t kHasFrames = 1;
constexpr std::uint32_t kHasBytes = 2;

std::size_t SideInformationBytes(const MpegHeader& header)
{
    if (header.isFirstVersion)
        return header.channels == 1 ? 17 : 32;
    return header.channels == 1 ? 9 : 17;
}

bool IsAt(Bytes frame, std::size_t at, std::string_view word)
{
    return frame.size() >= at + word.size() &&
           std::equal(word.begin(), word.end(), frame.begin() + static_cast<std::ptrdiff_t>(at));
}

// 0 past the frame's end.
std::uint32_t NumberAt(Bytes frame, std::size_t at)
{
    if (frame.size() < at + 4)
        return 0;
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        value = value << 8 | frame[i];
    return value;
}

MpegInfo XingAt(Bytes frame, std::size_t at)
{
    MpegInfo info;
    const std::uint32_t flags = NumberAt(frame, at + 4);
    std::size_t field = at + 8;
    if ((flags & kHasFrames) != 0) {
        info.frames = NumberAt(frame, field);
        field += 4;
    }
    if ((flags & kHasBytes) != 0)
        info.bytes = NumberAt(frame, field);
    return info;
}

} // namespace

std::optional<MpegInfo> ReadMpegInfo(Bytes frame, const MpegHeader& header)
{
    if (header.layer != 3)
        return std::nullopt;
    const std::size_t behindSide = kMpegHeaderBytes + SideInformationBytes(header);
    for (const std::size_t at : { behindSide, behindSide + kCheckBytes }) {
        if (IsAt(frame, at, "Xing") || IsAt(frame, at, "Info"))
            return XingAt(frame, at);
    }
    // Behind the word: version, delay and quality in two bytes each.
    if (IsAt(frame, kVbriAt, "VBRI"))
        return MpegInfo{ NumberAt(frame, kVbriAt + 14), NumberAt(frame, kVbriAt + 10) };
    return std::nullopt;
}

} // namespace cardsong::playback
