// Takes the header of an MPEG-1/2/2.5 Layer III frame apart (ISO/IEC 11172-3, 13818-3). It knows no file.
#pragma once

#include <cstdint>

enum MpegVersion : std::uint32_t { kMpeg25 = 0, kMpeg2 = 2, kMpeg1 = 3 };
enum MpegChannelMode : std::uint32_t { kStereo = 0, kJointStereo = 1, kDualChannel = 2, kMono = 3 };
inline constexpr std::uint32_t kLayer3 = 1;

// Fields hold the header's bits as they stand unless the name says a unit.
struct MpegFrameHeader {
    std::uint32_t version; // MpegVersion
    std::uint32_t layer;   // kLayer3
    std::uint32_t protection;
    std::uint32_t bitRateKbps;
    std::uint32_t sampleRateHz;
    std::uint32_t padding;
    std::uint32_t channelMode;   // MpegChannelMode
    std::uint32_t modeExtension; // joint stereo only: 1 with middle/side stereo
    std::uint32_t isProtectedMaterial;
    std::uint32_t isOriginal;
    std::uint32_t emphasis;
    std::uint32_t frameBytes; // never 0 after success
    double frameMs;           // that of 1152 samples, whatever the version
};

// Whether the top 11 bits are a frame's sync word.
constexpr bool HasFrameSync(std::uint32_t header)
{
    return header >> 21 == 0x7FF;
}

// kTagOk, or kTagBadData for anything but a Layer III header with known rates; `out` is all zero then.
// The bit rates of MPEG-2 and 2.5 are the device's own and differ from the standard.
int ParseFrameHeader(std::uint32_t header, MpegFrameHeader& out);
