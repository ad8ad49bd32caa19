#include "platform/linux/sound/wave_file.h"

#include "tests/platform/sound/waves.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;
using cardsong::sound::ReadWave;
using cardsong::sound::SampleKind;
using cardsong::sound::WaveSound;

std::optional<WaveSound> Read(const std::string& file)
{
    return ReadWave(std::as_bytes(std::span(file)));
}

// The samples as they stand in the file; "none" when it is no sound.
std::string Samples(const std::string& file)
{
    const auto wave = Read(file);
    return wave ? std::string(reinterpret_cast<const char*>(wave->samples.data()), wave->samples.size()) : "none";
}

TEST(WaveFile, TellsItsFormatAndItsSamples)
{
    const std::string file = Wave("abcdefgh", { .channels = 2, .rate = 44100, .bits = 16 });
    const auto wave = Read(file);
    ASSERT_TRUE(wave);
    EXPECT_EQ(wave->kind, SampleKind::Integer);
    EXPECT_EQ(wave->channels, 2u);
    EXPECT_EQ(wave->samplesPerSecond, 44100u);
    EXPECT_EQ(wave->bitsPerSample, 16u);
    EXPECT_EQ(wave->FrameBytes(), 4u);
    EXPECT_EQ(Samples(file), "abcdefgh");
}

TEST(WaveFile, HoldsIntegersOfFourSizesAndFloatsOfTwo)
{
    struct Case {
        unsigned tag;
        unsigned bits;
        bool isSound;
    };
    for (const Case& given :
         { Case{ 1, 8, true }, Case{ 1, 16, true }, Case{ 1, 24, true }, Case{ 1, 32, true }, Case{ 3, 32, true },
           Case{ 3, 64, true }, Case{ 1, 64, false }, Case{ 1, 4, false }, Case{ 1, 0, false }, Case{ 3, 16, false },
           Case{ 2, 16, false }, Case{ 0x55, 16, false }, Case{ 0, 16, false } }) {
        const auto wave = Read(Wave(std::string(32, 'x'), { .tag = given.tag, .bits = given.bits }));
        ASSERT_EQ(wave.has_value(), given.isSound) << given.tag << ' ' << given.bits;
        if (wave) {
            EXPECT_EQ(wave->kind, given.tag == 3 ? SampleKind::Float : SampleKind::Integer);
            EXPECT_EQ(wave->bitsPerSample, given.bits);
        }
    }
}

TEST(WaveFile, HasOneChannelOrTwoAtASpeedThatSoundsHave)
{
    EXPECT_FALSE(Read(Wave("abcdefgh", { .channels = 0 })));
    EXPECT_FALSE(Read(Wave("abcdefgh", { .channels = 3 })));
    EXPECT_FALSE(Read(Wave("abcdefgh", { .rate = 0 })));
    EXPECT_FALSE(Read(Wave("abcdefgh", { .rate = 999 })));
    EXPECT_TRUE(Read(Wave("abcdefgh", { .rate = 1000 })));
    EXPECT_TRUE(Read(Wave("abcdefgh", { .rate = 192000 })));
    EXPECT_FALSE(Read(Wave("abcdefgh", { .rate = 192001 })));
    EXPECT_FALSE(Read(Wave("abcdefgh", { .rate = 0xFFFFFFFF })));
}

TEST(WaveFile, WhoseFramesAreOfAnotherSizeThanTheirSamplesIsNone)
{
    std::string file = Wave("abcdefgh");
    file[32] = 3; // bytes of a frame, where one channel of 16 bits has 2
    EXPECT_EQ(Samples(file), "none");
    file[32] = 0;
    EXPECT_EQ(Samples(file), "none");
}

TEST(WaveFile, TellsItsFormatInTheLongFormToo)
{
    const std::string plain = FormatChunk({ .tag = 0xFFFE }).substr(8);
    const auto extended = [&](unsigned subFormat) {
        return Riff(Chunk("fmt ", plain + LittleEndian(22, 2) + LittleEndian(16, 2) + LittleEndian(4, 4) +
                                      LittleEndian(subFormat, 2) + std::string(14, '\0')) +
                    Chunk("data", "ab"));
    };
    EXPECT_EQ(Samples(extended(1)), "ab");
    EXPECT_EQ(Samples(extended(2)), "none");
    EXPECT_EQ(Samples(Riff(Chunk("fmt ", plain) + Chunk("data", "ab"))), "none") << "no sub-format";
}

TEST(WaveFile, IsReadPastChunksThatAreNeitherFormatNorData)
{
    EXPECT_EQ(Samples(Riff(Chunk("LIST", "odd") + FormatChunk() + Chunk("fact", "1234") + Chunk("data", "abcd"))),
              "abcd");
}

TEST(WaveFile, WithoutAFormatBeforeTheDataIsNone)
{
    EXPECT_EQ(Samples(Riff(Chunk("data", "abcd") + FormatChunk())), "none");
    EXPECT_EQ(Samples(Riff(Chunk("fmt ", FormatChunk().substr(8, 15)) + Chunk("data", "abcd"))), "none");
    EXPECT_EQ(Samples(Riff(FormatChunk() + FormatChunk({ .tag = 2 }) + Chunk("data", "abcd"))), "none");
}

TEST(WaveFile, KeepsWholeFramesOnly)
{
    EXPECT_EQ(Samples(Wave("abcde")), "abcd");
    EXPECT_EQ(Samples(Wave("abcdefg", { .channels = 2 })), "abcd");
    EXPECT_EQ(Samples(Wave("a")), "none");
    EXPECT_EQ(Samples(Wave("")), "none");
}

TEST(WaveFile, WhoseSizesLieEndsWithTheFile)
{
    for (const std::uint32_t size : { 0xFFFFFFFFU, 0xFFFFFFFEU, 0x80000000U, 0x7FFFFFFFU, 5U }) {
        EXPECT_EQ(Samples(Riff(FormatChunk() + "data" + LittleEndian(size, 4) + "abcd")), "abcd") << size;
        EXPECT_EQ(Samples(Riff(FormatChunk() + "LIST" + LittleEndian(size, 4) + "abcd")), "none") << size;
        EXPECT_EQ(Samples(Riff("fmt " + LittleEndian(size, 4) + FormatChunk().substr(8))), "none") << size;
    }
    std::string file = Wave("abcd");
    file.replace(4, 4, LittleEndian(0xFFFFFFFF, 4)); // of the whole
    EXPECT_EQ(Samples(file), "abcd");
    file.replace(4, 4, LittleEndian(0, 4));
    EXPECT_EQ(Samples(file), "abcd");
}

TEST(WaveFile, OfAnotherKindIsNone)
{
    EXPECT_EQ(Samples(""), "none");
    EXPECT_EQ(Samples("ID3 and so on, longer than a header and a chunk of it"), "none");
    std::string file = Wave("abcd");
    file[3] = 'X'; // RIFX: numbers the other way round
    EXPECT_EQ(Samples(file), "none");
    file = Wave("abcd");
    file[8] = 'A'; // another form
    EXPECT_EQ(Samples(file), "none");
}

TEST(WaveFile, CutAnywhereGivesNoMoreThanItHolds)
{
    const std::string whole = Riff(Chunk("LIST", "odd") + FormatChunk() + Chunk("data", "abcdefgh"));
    const std::size_t dataAt = whole.size() - 8;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::string cut = whole.substr(0, size); // of exactly that size, so that a byte too far is seen
        const std::size_t left = size > dataAt ? (size - dataAt) / 2 * 2 : 0;
        EXPECT_EQ(Samples(cut), left == 0 ? "none" : whole.substr(dataAt, left)) << size;
    }
}

} // namespace
