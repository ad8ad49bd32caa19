#include "gif/gif_lzw.h"

#include "tests/gif/gif_builder.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>

using namespace cardsong::test;

namespace {

constexpr std::uint8_t kMissing = 0xEE; // stands for what the data did not reach

struct Outcome {
    bool isDecoded = false;
    Bytes pixels;
    std::size_t offset = 0;
};

// Decodes the minimum code size and the chain that follow it out of exact-size memory.
Outcome DecodeBytes(const Bytes& bytes, std::size_t pixelCount)
{
    const auto* first = reinterpret_cast<const std::byte*>(bytes.data());
    const std::vector<std::byte> exact(first, first + bytes.size());
    Outcome outcome;
    outcome.pixels.assign(pixelCount, 0xCC);
    GifReader reader(exact);
    const GifPixelData data = DecodeGifPixels(reader, outcome.pixels);
    outcome.isDecoded = data.isValid;
    std::ranges::fill(std::span(outcome.pixels).subspan(data.count), kMissing);
    outcome.offset = reader.Offset();
    return outcome;
}

Outcome Decode(unsigned minimumBits, const Bytes& data, std::size_t pixelCount, std::size_t blockBytes = 255)
{
    Bytes bytes{ static_cast<std::uint8_t>(minimumBits) };
    const Bytes chain = SubBlocks(data, blockBytes);
    bytes.insert(bytes.end(), chain.begin(), chain.end());
    return DecodeBytes(bytes, pixelCount);
}

// All codes up to a table that holds `entries` entries, without a clear code behind the first.
CodePacker FullTable(std::uint32_t entries)
{
    CodePacker packer(2);
    packer.Codes({ packer.Clear(), 0 });
    while (packer.NextFree() < entries)
        packer.Code(1);
    return packer;
}

struct ModelOutcome {
    bool isDecoded = false;
    Bytes written;
};

// The decoder's rules as they are told: a table whose entries hold their bytes, one code after the other.
ModelOutcome DecodeWithWholeStrings(unsigned minimumBits, const std::vector<std::uint32_t>& codes, std::size_t room)
{
    const std::uint32_t clear = 1U << minimumBits;
    std::map<std::uint32_t, Bytes> table;
    ModelOutcome outcome;
    std::uint32_t nextFree = 0;
    std::optional<std::uint32_t> previous;
    for (const std::uint32_t code : codes) {
        if (code == clear) {
            table.clear();
            for (std::uint32_t i = 0; i < clear; ++i)
                table[i] = { static_cast<std::uint8_t>(i) };
            nextFree = clear + 2;
            previous.reset();
            continue;
        }
        if (previous && code == clear + 1) {
            outcome.isDecoded = true;
            return outcome;
        }
        if (!previous && code > clear)
            return outcome;
        Bytes string = table[code]; // empty where nothing was added yet
        Bytes added = previous ? table[*previous] : Bytes{};
        if (string.empty()) {
            if (added.empty())
                return outcome;
            string = added;
            string.push_back(added.front());
        }
        if (outcome.written.size() + string.size() > room || nextFree >= 4096)
            return outcome;
        outcome.written.insert(outcome.written.end(), string.begin(), string.end());
        added.push_back(string.front());
        if (previous)
            table[nextFree++] = added;
        previous = code;
    }
    outcome.isDecoded = true;
    return outcome;
}

} // namespace

TEST(GifLzw, SingleCodesBecomeTheirOwnIndex)
{
    CodePacker packer(2);
    packer.Codes({ 4, 0, 1, 2, 3, 5 });
    const Outcome outcome = Decode(2, packer.Data(), 4);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 0, 1, 2, 3 }));
}

TEST(GifLzw, AnEntryStandsForThePreviousStringAndTheFirstByteOfTheNext)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 2, 6, 7, 3, 5 }); // 6 = 1 2, 7 = 2 1, 8 = 1 2 2
    const Outcome outcome = Decode(2, packer.Data(), 7);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 1, 2, 2, 1, 3 }));
}

TEST(GifLzw, ACodeThatIsBeingAddedRepeatsThePreviousStringAndItsFirstByte)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 6, 7, 5 }); // 1, then 6 = 1 1, then 7 = 1 1 1
    const Outcome outcome = Decode(2, packer.Data(), 6);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 1, 1, 1, 1, 1 }));
}

TEST(GifLzw, ACodeFarBeyondTheTableIsReadAsTheOneBeingAdded)
{
    CodePacker packer(3);
    packer.Codes({ 8, 1, 2, 15, 10, 9 }); // 10 = 1 2; 15 is not in the table: 2 2, which becomes entry 11
    const Outcome outcome = Decode(3, packer.Data(), 6);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 2, 2, 1, 2 }));
}

TEST(GifLzw, TheEntryThatAForeignCodeAddsCanBeUsed)
{
    CodePacker packer(3);
    packer.Codes({ 8, 1, 2, 15, 11, 9 });
    EXPECT_EQ(Decode(3, packer.Data(), 6).pixels, (Bytes{ 1, 2, 2, 2, 2, 2 }));
}

TEST(GifLzw, BehindACodeFarBeyondTheTableThePreviousStringIsEmpty)
{
    // Codes of 3 bits: clear 4, 0, 7 (0 0; 6 is added); then of 3 bits 1 (7 is added, the 1 alone), then of 4: 7, end.
    const Outcome outcome = Decode(2, { 0xC4, 0x73, 0x05 }, 7);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 0, 0, 0, 1, 1, kMissing, kMissing }));
}

TEST(GifLzw, BehindACodeFarBeyondTheTableAKnownStringAddsItsFirstByteOnly)
{
    CodePacker packer(3);
    packer.Codes({ 8, 1, 2, 15, 10, 12, 9 }); // 10 = 1 2, 11 = 2 2, 12 = 1
    const Outcome outcome = Decode(3, packer.Data(), 7);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 2, 2, 1, 2, 1 }));
}

TEST(GifLzw, ASecondCodeBeyondTheTableRightAfterOneFarBeyondIsRefused)
{
    for (const std::uint32_t second : { 12U, 13U, 15U }) { // the next free entry, one behind it, the same again
        CodePacker packer(3);
        packer.Codes({ 8, 1, 2, 15, second, 9 }); // 11 is added by the 15
        const Outcome outcome = Decode(3, packer.Data(), 9);
        EXPECT_FALSE(outcome.isDecoded) << second;
        EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 2, 2, kMissing, kMissing, kMissing, kMissing, kMissing }));
    }
}

TEST(GifLzw, OneKnownCodeMakesACodeBeyondTheTableRightAgain)
{
    CodePacker packer(3);
    packer.Codes({ 8, 1, 2, 15, 1, 13, 9 }); // 12 = 1, 13 = 1 1
    const Outcome outcome = Decode(3, packer.Data(), 7);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 2, 2, 1, 1, 1 }));
}

TEST(GifLzw, ACodeFarBeyondTheTableMayBeFollowedByAClearOrAnEndCode)
{
    CodePacker clear(3);
    clear.Codes({ 8, 1, 15, 8, 2, 10, 9 });
    EXPECT_EQ(Decode(3, clear.Data(), 6).pixels, (Bytes{ 1, 1, 1, 2, 2, 2 }));
    CodePacker end(3);
    end.Codes({ 8, 1, 15, 9, 2 });
    const Outcome outcome = Decode(3, end.Data(), 6);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 1, 1, kMissing, kMissing, kMissing }));
}

TEST(GifLzw, AnyCodesGiveWhatATableOfWholeStringsGives)
{
    constexpr unsigned kMinimumBits = 3;
    constexpr std::size_t kPixels = 400;
    std::mt19937 random(20240517);
    int decoded = 0;
    for (int round = 0; round < 5000; ++round) {
        CodePacker packer(kMinimumBits);
        packer.Code(packer.Clear());
        std::vector<std::uint32_t> codes{ packer.Clear() };
        for (auto count = random() % 60; count != 0; --count) {
            // Mostly codes that a table may hold, sometimes any that fit in the size in force.
            const std::uint32_t limit = random() % 4 != 0 ? packer.NextFree() + 1 : 1U << packer.CodeBits();
            codes.push_back(static_cast<std::uint32_t>(random()) % std::min(limit, 1U << packer.CodeBits()));
            packer.Code(codes.back());
        }
        packer.Code(packer.End());
        codes.push_back(packer.End());
        const ModelOutcome expected = DecodeWithWholeStrings(kMinimumBits, codes, kPixels);
        const Outcome outcome = Decode(kMinimumBits, packer.Data(), kPixels);
        ASSERT_EQ(outcome.isDecoded, expected.isDecoded) << "round " << round;
        ASSERT_TRUE(std::equal(expected.written.begin(), expected.written.end(), outcome.pixels.begin()));
        ASSERT_EQ(std::count(outcome.pixels.begin(), outcome.pixels.end(), kMissing),
                  static_cast<std::ptrdiff_t>(kPixels - expected.written.size()));
        decoded += expected.isDecoded ? 1 : 0;
    }
    EXPECT_GT(decoded, 500); // both results are met often
    EXPECT_LT(decoded, 4500);
}

TEST(GifLzw, AStreamMayStartWithoutAClearCode)
{
    CodePacker packer(2);
    packer.Codes({ 3, 1, 5 });
    const Outcome outcome = Decode(2, packer.Data(), 2);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 3, 1 }));
}

TEST(GifLzw, SeveralClearCodesInARowAreSkipped)
{
    CodePacker packer(2);
    packer.Codes({ 4, 4, 4, 2, 5 });
    EXPECT_EQ(Decode(2, packer.Data(), 1).pixels, (Bytes{ 2 }));
}

TEST(GifLzw, AnEndCodeAsFirstCodeIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 5 });
    EXPECT_FALSE(Decode(2, packer.Data(), 1).isDecoded);
}

TEST(GifLzw, AnEndCodeAsFirstCodeAfterALaterClearIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 4, 5 });
    EXPECT_FALSE(Decode(2, packer.Data(), 1).isDecoded);
}

TEST(GifLzw, ACodeAboveTheEndCodeAsFirstCodeIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 6 });
    EXPECT_FALSE(Decode(2, packer.Data(), 9).isDecoded);
}

TEST(GifLzw, AClearCodeForgetsTheEntriesAndTheCodeSize)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 2, 1, 2, 4, 3, 6, 5 }); // before the clear code the size had grown; 6 is now 3 3
    const Outcome outcome = Decode(2, packer.Data(), 7);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 1, 2, 3, 3, 3 }));
}

TEST(GifLzw, NothingIsReadBehindTheEndCode)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 5, 2, 3 });
    const Outcome outcome = Decode(2, packer.Data(), 3);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, kMissing, kMissing }));
}

TEST(GifLzw, TheReaderStandsBehindTheChainAlsoWhenTheEndCodeCameEarly)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 5 });
    Bytes data = packer.Data();
    data.resize(300, 0xFF); // two more sub-blocks' worth of rubbish
    const Outcome outcome = Decode(2, data, 1, 20);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.offset, 1 + 300 + 15 + 1U); // minimum size, data, length bytes, terminator
}

TEST(GifLzw, TheReaderStandsBehindTheChainAfterARefusal)
{
    CodePacker packer(2);
    packer.Codes({ 5 });
    Bytes data = packer.Data();
    data.resize(300, 0xFF);
    const Outcome outcome = Decode(2, data, 1, 20);
    EXPECT_FALSE(outcome.isDecoded);
    EXPECT_EQ(outcome.offset, 1 + 300 + 15 + 1U);
}

TEST(GifLzw, DataThatEndWithoutAnEndCodeAreAccepted)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 2 }); // 9 bits; 7 left over, more than a code of 3 bits: zeros
    const Outcome outcome = Decode(2, packer.Data(), 8);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, 2, 0, 0, kMissing, kMissing, kMissing, kMissing }));
}

TEST(GifLzw, BitsFewerThanACodeAreLeftAlone)
{
    // 3 bits a code: 4, 1 and two bits that are no code.
    const Outcome outcome = Decode(2, { 0b11'001'100 }, 3);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 1, kMissing, kMissing }));
}

TEST(GifLzw, AnEmptyChainGivesNoPixels)
{
    const Outcome outcome = Decode(2, {}, 2);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ kMissing, kMissing }));
    EXPECT_EQ(outcome.offset, 2U);
}

TEST(GifLzw, CodesMayCrossSubBlocksOfOneByte)
{
    const Bytes indices = NoiseIndices(700, 4);
    const Outcome outcome = Decode(2, EncodeLzw(2, indices), indices.size(), 1);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, indices);
}

TEST(GifLzw, EverySizeOfSubBlockGivesTheSamePixels)
{
    const Bytes indices = NoiseIndices(3000, 16);
    const Bytes data = EncodeLzw(4, indices);
    for (const std::size_t blockBytes : { 2U, 3U, 4U, 5U, 6U, 7U, 100U, 254U, 255U }) {
        const Outcome outcome = Decode(4, data, indices.size(), blockBytes);
        EXPECT_TRUE(outcome.isDecoded) << blockBytes;
        EXPECT_EQ(outcome.pixels, indices) << blockBytes;
    }
}

TEST(GifLzw, EveryMinimumCodeSizeFromTwoToEightGoesThereAndBack)
{
    for (unsigned minimumBits = 2; minimumBits <= 8; ++minimumBits) {
        const Bytes indices = NoiseIndices(20000, 1U << minimumBits);
        const Outcome outcome = Decode(minimumBits, EncodeLzw(minimumBits, indices), indices.size());
        EXPECT_TRUE(outcome.isDecoded) << minimumBits;
        EXPECT_EQ(outcome.pixels, indices) << minimumBits;
    }
}

TEST(GifLzw, LongRunsOfOneColorGoThereAndBack)
{
    const Bytes indices(76800, 3);
    const Outcome outcome = Decode(2, EncodeLzw(2, indices), indices.size());
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, indices);
}

TEST(GifLzw, MorePixelsThanRoomAreRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 2, 3, 5 });
    EXPECT_TRUE(Decode(2, packer.Data(), 3).isDecoded);
    EXPECT_FALSE(Decode(2, packer.Data(), 2).isDecoded);
}

TEST(GifLzw, AKnownStringLongerThanTheRoomIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 2, 6, 5 }); // 1, 2, 1 2
    EXPECT_TRUE(Decode(2, packer.Data(), 4).isDecoded);
    EXPECT_FALSE(Decode(2, packer.Data(), 3).isDecoded);
}

TEST(GifLzw, AStringBeingAddedLongerThanTheRoomIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 6, 5 }); // 1, 1 1
    EXPECT_TRUE(Decode(2, packer.Data(), 3).isDecoded);
    EXPECT_FALSE(Decode(2, packer.Data(), 2).isDecoded);
}

TEST(GifLzw, AFirstCodeWithoutRoomIsRefused)
{
    CodePacker packer(2);
    packer.Codes({ 4, 1, 4, 1, 5 });
    EXPECT_TRUE(Decode(2, packer.Data(), 2).isDecoded);
    EXPECT_FALSE(Decode(2, packer.Data(), 1).isDecoded);
    EXPECT_FALSE(Decode(2, packer.Data(), 0).isDecoded);
}

TEST(GifLzw, ATableOf4096EntriesIsAcceptedWhenAnEndCodeFollows)
{
    CodePacker packer = FullTable(4096);
    packer.Code(packer.End());
    const Outcome outcome = Decode(2, packer.Data(), 5000);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(std::count(outcome.pixels.begin(), outcome.pixels.end(), 1), 4090);
}

TEST(GifLzw, ATableOf4096EntriesIsAcceptedWhenAClearCodeFollows)
{
    CodePacker packer = FullTable(4096);
    packer.Codes({ packer.Clear(), 3, packer.End() });
    const Outcome outcome = Decode(2, packer.Data(), 5000);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels[4091], 3);
}

TEST(GifLzw, AStreamThatCodesOnWithAFullTableIsRefused)
{
    CodePacker packer = FullTable(4096);
    packer.Codes({ 1, packer.End() });
    EXPECT_FALSE(Decode(2, packer.Data(), 5000).isDecoded);
}

TEST(GifLzw, TheLastEntryOfTheTableMayBeTheStringBeingAdded)
{
    CodePacker packer = FullTable(4095);
    packer.Code(4095).Code(packer.End()); // 1 1, which is then entry 4095
    const Outcome outcome = Decode(2, packer.Data(), 4092);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels.back(), 1);
}

TEST(GifLzw, CodesOfSixteenBitsHaveNoTable)
{
    EXPECT_FALSE(Decode(15, { 0, 0, 0, 0, 0, 0 }, 4).isDecoded);
    EXPECT_FALSE(Decode(13, {}, 4).isDecoded);
    EXPECT_FALSE(Decode(31, {}, 4).isDecoded);
}

TEST(GifLzw, AMinimumCodeSizeOfTwelveHoldsSinglePixelsOnly)
{
    CodePacker one(12);
    one.Raw(4096, 13).Raw(0x123, 13).Raw(4097, 13);
    const Outcome outcome = Decode(12, one.Data(), 1);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 0x23 })); // an index is a byte
    CodePacker two(12);
    two.Raw(4096, 13).Raw(1, 13).Raw(2, 13).Raw(4097, 13);
    EXPECT_FALSE(Decode(12, two.Data(), 2).isDecoded); // the second code would need entry 4098
}

TEST(GifLzw, AMinimumCodeSizeOf32OrMoreKnowsOnlyTheClearCodeZero)
{
    EXPECT_TRUE(Decode(32, Bytes(10, 0), 4).isDecoded);
    EXPECT_TRUE(Decode(255, Bytes(254, 0), 4).isDecoded);
    EXPECT_FALSE(Decode(32, Bytes{ 1, 0, 0, 0, 0 }, 4).isDecoded); // the end code first
    EXPECT_FALSE(Decode(32, Bytes{ 0, 0, 0, 0x80, 0 }, 4).isDecoded);
    EXPECT_EQ(Decode(40, Bytes(20, 0), 1).pixels, (Bytes{ kMissing }));
}

TEST(GifLzw, FewerThanFiveBytesAreJoinedWithTheNextSubBlock)
{
    // A code of 33 bits in sub-blocks of 4 bytes is found and refused; one of 41 bits in sub-blocks of 5 is never
    // whole.
    EXPECT_FALSE(Decode(32, { 1, 0, 0, 0, 0 }, 4, 4).isDecoded);
    EXPECT_TRUE(Decode(40, { 1, 0, 0, 0, 0, 0, 0 }, 4, 5).isDecoded);
}

TEST(GifLzw, AMinimumCodeSizeOfZeroHasTheSingleColorZero)
{
    CodePacker packer(0);
    packer.Raw(1, 1).Raw(0, 1).Raw(1, 1).Raw(0, 1); // clear, 0, clear, 0, then four zeros that make the table grow
    const Outcome outcome = Decode(0, packer.Data(), 16);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels[5], 0);
    EXPECT_EQ(outcome.pixels[6], kMissing);
}

TEST(GifLzw, WithAMinimumCodeSizeOfOneCodesStayAtTwoBits)
{
    CodePacker packer(1); // clear 2, end 3; the table starts past the size's limit of 4 and never meets it
    packer.Raw(2, 2).Raw(0, 2).Raw(1, 2).Raw(0, 2).Raw(1, 2).Raw(1, 2).Raw(0, 2).Raw(3, 2);
    const Outcome outcome = Decode(1, packer.Data(), 6);
    EXPECT_TRUE(outcome.isDecoded);
    EXPECT_EQ(outcome.pixels, (Bytes{ 0, 1, 0, 1, 1, 0 }));
}

TEST(GifLzw, EveryTruncationEndsWithADefinedResult)
{
    const Bytes indices = NoiseIndices(900, 8);
    Bytes bytes{ 3 };
    const Bytes chain = SubBlocks(EncodeLzw(3, indices), 50);
    bytes.insert(bytes.end(), chain.begin(), chain.end());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const Outcome outcome =
            DecodeBytes(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)), 900);
        EXPECT_TRUE(outcome.isDecoded) << size;
        EXPECT_EQ(outcome.offset, size);
        const auto written = std::find(outcome.pixels.begin(), outcome.pixels.end(), kMissing);
        EXPECT_TRUE(std::equal(outcome.pixels.begin(), written, indices.begin())) << size;
    }
}
