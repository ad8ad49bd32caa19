#include "playback/mpeg_frame_check.h"

#include <algorithm>

namespace cardsong::playback {

namespace {

constexpr std::size_t kChecksumBytes = 2;
constexpr unsigned kSubbands = 32;

// Reads bits, the highest of a byte first; past the end they are 0.
class BitReader {
public:
    explicit BitReader(Bytes bytes) : m_bytes(bytes) {}

    unsigned Take(unsigned count)
    {
        unsigned value = 0;
        for (; count > 0; --count, ++m_at)
            value = value << 1 | BitAt(m_at);
        return value;
    }
    void Skip(unsigned count) { m_at += count; }

private:
    unsigned BitAt(std::size_t at) const { return at / 8 < m_bytes.size() ? m_bytes[at / 8] >> (7 - at % 8) & 1U : 0U; }

    Bytes m_bytes;
    std::size_t m_at = 0;
};

enum class Mode : unsigned { Stereo, JointStereo, DualChannel, Mono };

Mode ModeOf(std::uint32_t word)
{
    return static_cast<Mode>(word >> 6 & 3);
}

// Four bits for each subband and channel; above a bound the channels of a joint stereo frame share them. 15 is
// forbidden.
bool HasLayer1Allocation(std::uint32_t word, const MpegHeader& header, BitReader bits)
{
    const unsigned bound = ModeOf(word) == Mode::JointStereo ? 4 * ((word >> 4 & 3) + 1) : kSubbands;
    const unsigned fields = header.channels == 1 ? kSubbands : kSubbands + bound;
    if (header.frameBytes < kMpegHeaderBytes + fields / 2)
        return false;
    for (unsigned field = 0; field < fields; ++field) {
        if (bits.Take(4) == 15)
            return false;
    }
    return true;
}

// MPEG-1 keeps its lowest rates for one channel and its highest for two.
bool MayPairLayer2(const MpegHeader& header)
{
    const unsigned kbps = header.bitsPerSecond / 1000;
    if (!header.isFirstVersion || kbps == 0)
        return true;
    const bool isForOne = kbps == 32 || kbps == 48 || kbps == 56 || kbps == 80;
    return header.channels == 1 ? kbps < 224 : !isForOne;
}

// One channel of one granule; nothing when no encoder writes it, else the bits of its main data.
std::optional<unsigned> TakeGranule(BitReader& bits, bool isFirstVersion)
{
    constexpr unsigned kMostBigValues = 288;
    const unsigned mainBits = bits.Take(12);
    if (bits.Take(9) > kMostBigValues)
        return std::nullopt;
    bits.Skip(8 + (isFirstVersion ? 4U : 9U)); // gain and the scale factors' compression
    const bool switches = bits.Take(1) != 0;
    if (switches && bits.Take(2) == 0)
        return std::nullopt;
    if (switches)
        bits.Skip(1);
    for (int table = 0; table < (switches ? 2 : 3); ++table) {
        const unsigned number = bits.Take(5);
        if (number == 4 || number == 14) // tables that the standard leaves out
            return std::nullopt;
    }
    bits.Skip(switches ? 9 : 7);         // subblock gains, or the regions' lengths
    bits.Skip(isFirstVersion ? 3U : 2U); // what is left of the granule
    return mainBits;
}

bool HasLayer3SideInformation(const MpegHeader& header, BitReader bits, std::size_t checksumBytes)
{
    const bool isFirst = header.isFirstVersion, isMono = header.channels == 1;
    const std::size_t sideBytes = isFirst ? (isMono ? 17 : 32) : (isMono ? 9 : 17);
    const std::size_t headBytes = kMpegHeaderBytes + checksumBytes + sideBytes;
    if (header.frameBytes < headBytes)
        return false;
    const std::size_t borrowedBytes = bits.Take(isFirst ? 9 : 8);
    bits.Skip(isFirst ? (isMono ? 5U + 4U : 3U + 8U) : (isMono ? 1U : 2U)); // private bits and shared scale factors
    std::size_t mainBits = 0;
    const unsigned granules = (isFirst ? 2 : 1) * header.channels;
    for (unsigned granule = 0; granule < granules; ++granule) {
        const auto taken = TakeGranule(bits, isFirst);
        if (!taken)
            return false;
        mainBits += *taken;
    }
    return mainBits <= 8 * (borrowedBytes + header.frameBytes - headBytes);
}

} // namespace

bool CouldBeEncoded(std::uint32_t word, const MpegHeader& header, Bytes start)
{
    const std::size_t checksumBytes = (word >> 16 & 1) == 0 ? kChecksumBytes : 0;
    const std::size_t skipped = std::min(start.size(), kMpegHeaderBytes + checksumBytes);
    const BitReader bits(start.subspan(skipped));
    switch (header.layer) {
    case 1: return HasLayer1Allocation(word, header, bits);
    case 2: return MayPairLayer2(header);
    default: return HasLayer3SideInformation(header, bits, checksumBytes);
    }
}

} // namespace cardsong::playback
