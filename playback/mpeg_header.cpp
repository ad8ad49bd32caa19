#include "playback/mpeg_header.h"

namespace cardsong::playback {

namespace {

// Kilobits a second by index 1 to 14: layers I, II and III of MPEG-1, then layer I and layers II and III of MPEG-2.
constexpr unsigned kBitRates[5][14] = {
    { 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448 },
    { 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384 },
    { 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320 },
    { 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256 },
    { 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160 },
};
constexpr unsigned kSampleRates[3] = { 44100, 48000, 32000 }; // of MPEG-1

constexpr unsigned kReservedVersion = 1;
constexpr unsigned kReservedEmphasis = 2;
constexpr unsigned kMono = 3;

unsigned SamplesOf(unsigned layer, bool isFirstVersion)
{
    if (layer == 1)
        return 384;
    return layer == 3 && !isFirstVersion ? 576 : 1152;
}

} // namespace

std::optional<MpegHeader> ParseMpegHeader(std::uint32_t word)
{
    const unsigned version = word >> 19 & 3; // 3: MPEG-1, 2: MPEG-2, 0: MPEG-2.5
    const unsigned layer = 4 - (word >> 17 & 3);
    const unsigned bitRateIndex = word >> 12 & 15;
    const unsigned sampleRateIndex = word >> 10 & 3;
    if (word >> 21 != 0x7FF || version == kReservedVersion || layer == 4 || bitRateIndex == 15 ||
        sampleRateIndex == 3 || (word & 3) == kReservedEmphasis)
        return std::nullopt;

    MpegHeader header;
    header.layer = layer;
    header.isFirstVersion = version == 3;
    header.samplesPerSecond = kSampleRates[sampleRateIndex] >> (version == 3 ? 0 : version == 2 ? 1 : 2);
    header.samples = SamplesOf(layer, header.isFirstVersion);
    header.channels = (word >> 6 & 3) == kMono ? 1 : 2;
    const unsigned slotBytes = layer == 1 ? 4 : 1;
    header.paddingBytes = (word >> 9 & 1) * slotBytes;
    if (bitRateIndex == 0)
        return header;
    const unsigned row = header.isFirstVersion ? layer - 1 : layer == 1 ? 3 : 4;
    header.bitsPerSecond = kBitRates[row][bitRateIndex - 1] * 1000;
    const unsigned slots = header.samples / 8 / slotBytes * header.bitsPerSecond / header.samplesPerSecond;
    header.frameBytes = slots * slotBytes + header.paddingBytes;
    return header;
}

bool IsOfOneKind(std::uint32_t word, std::uint32_t other)
{
    constexpr std::uint32_t kLasting = 0xFFFE0C00;
    constexpr std::uint32_t kBitRate = 0x0000F000;
    return (word & kLasting) == (other & kLasting) && ((word & kBitRate) == 0) == ((other & kBitRate) == 0);
}

} // namespace cardsong::playback
