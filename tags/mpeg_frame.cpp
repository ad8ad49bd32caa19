#include "tags/mpeg_frame.h"

#include "tags/tag_results.h"

namespace {

struct BitRates {
    std::uint16_t mpeg1;
    std::uint16_t mpeg2; // and 2.5
};
constexpr BitRates kBitRatesKbps[16] = {
    { 0, 0 },    { 32, 8 },    { 40, 16 },   { 48, 24 },   { 56, 32 },   { 64, 64 },   { 80, 80 },   { 96, 56 },
    { 112, 64 }, { 128, 128 }, { 160, 160 }, { 192, 112 }, { 224, 128 }, { 256, 256 }, { 320, 320 }, { 1, 1 },
};
constexpr std::uint32_t kSampleRatesHz[4][4] = {
    // by version, then by index; 0 where either is reserved
    { 11025, 12000, 8000, 0 },
    { 0, 0, 0, 0 },
    { 22050, 24000, 16000, 0 },
    { 44100, 48000, 32000, 0 },
};
constexpr double kFrameMs[3] = { 26.12244987487793, 24.0, 36.0 }; // 1152 samples at the MPEG-1 rates

} // namespace

int ParseFrameHeader(std::uint32_t header, MpegFrameHeader& out)
{
    out = {};
    const auto bits = [header](unsigned lowest, unsigned count) { return header >> lowest & ((1u << count) - 1); };
    const std::uint32_t version = bits(19, 2);
    const std::uint32_t sampleRateIndex = bits(10, 2);
    const std::uint32_t sampleRateHz = kSampleRatesHz[version][sampleRateIndex];
    if (!HasFrameSync(header) || bits(17, 2) != kLayer3 || sampleRateHz == 0)
        return kTagBadData;
    const BitRates rates = kBitRatesKbps[bits(12, 4)];
    const std::uint32_t bitRateKbps = version == kMpeg1 ? rates.mpeg1 : rates.mpeg2;
    const std::uint32_t padding = bits(9, 1);
    const std::uint32_t frameBytes = (version == kMpeg1 ? 144 : 72) * bitRateKbps * 1000 / sampleRateHz + padding;
    if (frameBytes == 0)
        return kTagBadData;

    out.version = version;
    out.layer = kLayer3;
    out.protection = bits(16, 1);
    out.bitRateKbps = bitRateKbps;
    out.sampleRateHz = sampleRateHz;
    out.padding = padding;
    out.channelMode = bits(6, 2);
    out.modeExtension = out.channelMode == kJointStereo ? bits(5, 1) : 0;
    out.isProtectedMaterial = bits(3, 1);
    out.isOriginal = bits(2, 1);
    out.emphasis = bits(0, 2);
    out.frameBytes = frameBytes;
    out.frameMs = kFrameMs[sampleRateIndex];
    return kTagOk;
}
