#include "tags/xing_header.h"

#include "tags/byte_reader.h"
#include "tags/byte_text.h"
#include "tags/id3_tags.h"
#include "tags/tag_results.h"

#include <cstring>
#include <iterator>

namespace {

constexpr std::uint32_t kHasFrameCount = 1;
constexpr std::uint32_t kHasByteCount = 2;
constexpr std::uint32_t kHasTableOfContents = 4;
constexpr std::uint32_t kHasQuality = 8;
constexpr std::size_t kTagOffset = 36;

} // namespace

int ParseXingHeader(std::span<const std::byte, kXingReachBytes> frameBytes, XingInfo& out)
{
    out = {};
    std::memcpy(out.frameHeader, frameBytes.data(), sizeof out.frameHeader);
    ByteReader reader(frameBytes.subspan(kTagOffset));
    const auto tag = reader.Take(sizeof out.tag);
    std::memcpy(out.tag, tag.data(), tag.size());
    if (!StartsWithIgnoringCase(tag, "XING"))
        return kTagBadData;

    out.flags = reader.U32Be();
    const std::uint32_t frameCount = reader.U32Be();
    const std::uint32_t byteCount = reader.U32Be();
    const auto tableOfContents = reader.Take(sizeof out.tableOfContents);
    const auto quality = reader.Take(sizeof out.quality);
    if ((out.flags & kHasFrameCount) != 0)
        out.frameCount = frameCount;
    if ((out.flags & kHasByteCount) != 0)
        out.byteCount = byteCount;
    if ((out.flags & kHasTableOfContents) != 0)
        std::memcpy(out.tableOfContents, tableOfContents.data(), tableOfContents.size());
    if ((out.flags & kHasQuality) != 0)
        std::memcpy(out.quality, quality.data(), quality.size());
    return kTagOk;
}

void CompleteXingInfo(XingInfo& xing, std::uint32_t fileBytes, std::uint32_t id3v2TagBytes, std::uint32_t frameBytes)
{
    if ((xing.flags & kHasByteCount) == 0)
        xing.byteCount = fileBytes;
    if ((xing.flags & kHasFrameCount) == 0)
        xing.frameCount = AudioBytes(xing.byteCount, id3v2TagBytes) / frameBytes;
    if ((xing.flags & kHasTableOfContents) != 0 || xing.byteCount == 0)
        return;
    const std::uint64_t stepBytes = xing.byteCount / std::size(xing.tableOfContents);
    std::uint64_t reachedBytes = 0;
    for (std::uint8_t& entry : xing.tableOfContents) {
        entry = static_cast<std::uint8_t>(reachedBytes * 256 / xing.byteCount);
        reachedBytes += stepBytes;
    }
}

std::uint32_t AudioBytes(std::uint32_t wholeBytes, std::uint32_t id3v2TagBytes)
{
    const std::uint64_t tagBytes = std::uint64_t{ id3v2TagBytes } + sizeof(Id3v1Tag);
    return wholeBytes > tagBytes ? static_cast<std::uint32_t>(wholeBytes - tagBytes) : 0;
}
