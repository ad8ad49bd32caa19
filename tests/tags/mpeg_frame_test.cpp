#include "tags/mpeg_frame.h"

#include "tags/tag_results.h"

#include <gtest/gtest.h>

namespace {

// MPEG-1 Layer III, no protection, 128 kbit/s, 44100 Hz, no padding, stereo, original.
constexpr std::uint32_t kPlain = 0xFFFB9004;
constexpr std::uint32_t kMpeg2Bits = 2u << 19;
constexpr std::uint32_t kMpeg25Bits = 0u << 19;
constexpr std::uint32_t kVersionMask = 3u << 19;

constexpr std::uint32_t With(std::uint32_t header, std::uint32_t mask, std::uint32_t bits)
{
    return (header & ~mask) | bits;
}

MpegFrameHeader Parsed(std::uint32_t header)
{
    MpegFrameHeader frame = {};
    EXPECT_EQ(ParseFrameHeader(header, frame), kTagOk) << std::hex << header;
    return frame;
}

int Result(std::uint32_t header)
{
    MpegFrameHeader frame;
    return ParseFrameHeader(header, frame);
}

TEST(MpegFrame, APlainHeaderIsTakenApart)
{
    const MpegFrameHeader frame = Parsed(kPlain);
    EXPECT_EQ(frame.version, 3u);
    EXPECT_EQ(frame.layer, 1u);
    EXPECT_EQ(frame.protection, 1u);
    EXPECT_EQ(frame.bitRateKbps, 128u);
    EXPECT_EQ(frame.sampleRateHz, 44100u);
    EXPECT_EQ(frame.padding, 0u);
    EXPECT_EQ(frame.channelMode, 0u);
    EXPECT_EQ(frame.modeExtension, 0u);
    EXPECT_EQ(frame.isProtectedMaterial, 0u);
    EXPECT_EQ(frame.isOriginal, 1u);
    EXPECT_EQ(frame.emphasis, 0u);
    EXPECT_EQ(frame.frameBytes, 417u);
    EXPECT_DOUBLE_EQ(frame.frameMs, 26.12244987487793);
}

TEST(MpegFrame, EachFieldHasItsOwnBits)
{
    EXPECT_EQ(Parsed(kPlain & ~(1u << 16)).protection, 0u);
    EXPECT_EQ(Parsed(kPlain | 1u << 9).padding, 1u);
    EXPECT_EQ(Parsed(kPlain | 1u << 9).frameBytes, 418u);
    EXPECT_EQ(Parsed(kPlain | 1u << 8).padding, 0u);
    EXPECT_EQ(Parsed(kPlain | 1u << 3).isProtectedMaterial, 1u);
    EXPECT_EQ(Parsed(kPlain & ~(1u << 2)).isOriginal, 0u);
    EXPECT_EQ(Parsed(kPlain | 2u).emphasis, 2u);
    EXPECT_EQ(Parsed(kPlain | 1u).emphasis, 1u);
    EXPECT_EQ(Parsed(kPlain | 3u << 6).channelMode, 3u);
    EXPECT_EQ(Parsed(kPlain | 2u << 6).channelMode, 2u);
    EXPECT_EQ(Parsed(kPlain | 1u << 6).channelMode, 1u);
}

TEST(MpegFrame, NoFieldReachesIntoTheNext)
{
    EXPECT_EQ(Parsed(kPlain | 1u << 4).isProtectedMaterial, 0u);
    EXPECT_EQ(Parsed(kPlain | 1u << 3).isOriginal, 1u);
    EXPECT_EQ(Parsed(kPlain | 1u << 2).emphasis, 0u);
    EXPECT_EQ(Parsed(kPlain | 1u << 10).padding, 0u);
    EXPECT_EQ(Parsed(kPlain | 1u << 8).channelMode, 0u);
    EXPECT_EQ(Parsed(kPlain).protection, 1u);
}

TEST(MpegFrame, TheModeExtensionCountsInJointStereoOnly)
{
    const std::uint32_t expected[4] = { 0, 0, 1, 1 };
    for (std::uint32_t extension = 0; extension < 4; ++extension) {
        EXPECT_EQ(Parsed(kPlain | 1u << 6 | extension << 4).modeExtension, expected[extension]) << extension;
        EXPECT_EQ(Parsed(kPlain | extension << 4).modeExtension, 0u) << extension;
        EXPECT_EQ(Parsed(kPlain | 3u << 6 | extension << 4).modeExtension, 0u) << extension;
    }
}

TEST(MpegFrame, BitRatesOfMpeg1AreTheStandardOnes)
{
    const std::uint32_t rates[15] = { 0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320 };
    for (std::uint32_t index = 1; index < 15; ++index) {
        const MpegFrameHeader frame = Parsed(With(kPlain, 15u << 12, index << 12));
        EXPECT_EQ(frame.bitRateKbps, rates[index]) << index;
        EXPECT_EQ(frame.frameBytes, 144 * rates[index] * 1000 / 44100) << index;
    }
}

TEST(MpegFrame, BitRatesOfMpeg2And25AreTheDevicesOwn)
{
    const std::uint32_t rates[16] = { 0, 8, 16, 24, 32, 64, 80, 56, 64, 128, 160, 112, 128, 256, 320, 1 };
    for (std::uint32_t index = 1; index < 16; ++index) {
        for (const std::uint32_t version : { kMpeg2Bits, kMpeg25Bits }) {
            const MpegFrameHeader frame = Parsed(With(With(kPlain, kVersionMask, version), 15u << 12, index << 12));
            EXPECT_EQ(frame.bitRateKbps, rates[index]) << index;
            const std::uint32_t rateHz = version == kMpeg2Bits ? 22050 : 11025;
            EXPECT_EQ(frame.frameBytes, 72 * rates[index] * 1000 / rateHz) << index;
        }
    }
}

TEST(MpegFrame, TheLastBitRateIndexIsOneKilobit)
{
    EXPECT_EQ(Parsed(With(kPlain, 15u << 12, 15u << 12)).bitRateKbps, 1u);
    EXPECT_EQ(Parsed(With(kPlain, 15u << 12, 15u << 12)).frameBytes, 3u);
}

TEST(MpegFrame, SampleRatesGoByVersionAndIndex)
{
    const struct {
        std::uint32_t version;
        std::uint32_t ratesHz[3];
    } versions[] = { { 3, { 44100, 48000, 32000 } }, { 2, { 22050, 24000, 16000 } }, { 0, { 11025, 12000, 8000 } } };
    const double frameMs[3] = { 26.12244987487793, 24.0, 36.0 };
    for (const auto& row : versions) {
        for (std::uint32_t index = 0; index < 3; ++index) {
            const MpegFrameHeader frame =
                Parsed(With(kPlain, kVersionMask | 3u << 10, row.version << 19 | index << 10));
            EXPECT_EQ(frame.version, row.version);
            EXPECT_EQ(frame.sampleRateHz, row.ratesHz[index]);
            EXPECT_DOUBLE_EQ(frame.frameMs, frameMs[index]);
        }
    }
}

TEST(MpegFrame, ReservedRatesAndVersionsAreRefused)
{
    for (std::uint32_t version = 0; version < 4; ++version) {
        for (std::uint32_t index = 0; index < 4; ++index) {
            const std::uint32_t header = With(kPlain, kVersionMask | 3u << 10, version << 19 | index << 10);
            EXPECT_EQ(Result(header), version == 1 || index == 3 ? -20 : 0) << version << ' ' << index;
        }
    }
}

TEST(MpegFrame, OtherLayersAreRefused)
{
    for (const std::uint32_t layer : { 0u, 2u, 3u })
        EXPECT_EQ(Result(With(kPlain, 3u << 17, layer << 17)), -20) << layer;
}

TEST(MpegFrame, AMissingSyncBitIsRefused)
{
    for (unsigned bit = 21; bit < 32; ++bit)
        EXPECT_EQ(Result(kPlain & ~(1u << bit)), -20) << bit;
}

TEST(MpegFrame, AFrameOfNoBytesIsRefusedAndOneOfPaddingAloneTaken)
{
    const std::uint32_t free = With(kPlain, 15u << 12, 0);
    EXPECT_EQ(Result(free), -20);
    EXPECT_EQ(Parsed(free | 1u << 9).frameBytes, 1u);
}

TEST(MpegFrame, ARefusedHeaderLeavesZeros)
{
    MpegFrameHeader frame = Parsed(kPlain);
    ParseFrameHeader(0, frame);
    EXPECT_EQ(frame.bitRateKbps, 0u);
    EXPECT_EQ(frame.frameBytes, 0u);
}

TEST(MpegFrame, TheSyncWordHasElevenBits)
{
    EXPECT_TRUE(HasFrameSync(0xFFE00000));
    EXPECT_TRUE(HasFrameSync(0xFFFFFFFF));
    EXPECT_FALSE(HasFrameSync(0xFFC00000));
    EXPECT_FALSE(HasFrameSync(0x7FE00000));
}

} // namespace
