// Reads the length, the first frame and the tags of an MP3 song without decoding it.
#pragma once

#include "tags/id3_tags.h"
#include "tags/mpeg_frame.h"
#include "tags/xing_header.h"

#include "platform/ce.h"

#include <cstdint>
#include <memory>

// Owns its ID3v2 frames.
struct Mp3FileInfo {
    Mp3FileInfo() = default;
    Mp3FileInfo(const Mp3FileInfo&) = delete;
    Mp3FileInfo& operator=(const Mp3FileInfo&) = delete;
    ~Mp3FileInfo() { FreeId3Frames(id3v2Frames); }

    WCHAR path[260] = {};
    std::uint32_t fileBytes = 0;
    std::uint32_t id3v2TagBytes = 0; // without the 10 header bytes; 0 without a tag
    std::uint32_t durationMs = 0;
    std::uint32_t isConstantBitRate = 1; // 0 when a Xing header was found
    MpegFrameHeader frame = {};
    XingInfo xing = {};
    Id3v2Header id3v2Header = {};
    CPtrListCtrl id3v2Frames; // of Id3Frame*
    Id3v1Tag id3v1 = {};
};

// kTagOk; kTagNothingOpen for a null source; kTagBadData when no Layer III frame stands at the first sync word, since
// later ones are not tried. What was read before a failure stays in `info`. Skipped tag frames change nothing but the
// frame list, and spare a read of the whole tag, pictures and all.
int ReadMp3Info(ByteSource* source, Mp3FileInfo& info, TagFrames frames);

// The offset of the first frame sync word. The search starts at the ID3v2 tag size, and so 10 bytes before the tag's
// end. -1 when there is none.
std::int64_t FindFirstFrameSync(ByteSource& source, const Mp3FileInfo& info);

// Reads one song; keeps nothing between two.
class Mp3Reader {
public:
    // Null when the file cannot be opened or ReadMp3Info fails.
    std::unique_ptr<Mp3FileInfo> OpenMp3Info(const WCHAR* path, TagFrames frames = TagFrames::Read) const;
};
