// The fast decoder of image data beside a plain one, over streams that are right, damaged, cut, or any codes at all.
#include "gif/gif_lzw.h"

#include "tests/gif/plain_lzw.h"

#include <gtest/gtest.h>

#include <random>

using namespace cardsong::test;

namespace {

class Chance {
public:
    explicit Chance(unsigned seed) : m_random(seed) {}
    // Of 0 to `limit` - 1.
    std::uint32_t Below(std::size_t limit) { return static_cast<std::uint32_t>(m_random() % limit); }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }

private:
    std::mt19937 m_random;
};

// Runs, noise and repeated pieces: strings of every length, and codes that are used as soon as they are added.
Bytes PictureLike(Chance& chance, std::size_t count, unsigned colors)
{
    Bytes indices;
    while (indices.size() < count) {
        const std::size_t length = 1 + chance.Below(chance.OneIn(4) ? 400 : 12);
        const std::uint32_t kind = chance.Below(3);
        const auto color = static_cast<std::uint8_t>(chance.Below(colors));
        for (std::size_t i = 0; i < length; ++i) {
            if (kind == 2 && indices.size() > 40)
                indices.push_back(indices[indices.size() - 37]);
            else
                indices.push_back(kind == 0 ? color : static_cast<std::uint8_t>(chance.Below(colors)));
        }
    }
    indices.resize(count);
    return indices;
}

Bytes Chain(Chance& chance, unsigned minimumBits, const Bytes& data)
{
    Bytes chain{ static_cast<std::uint8_t>(minimumBits) };
    const Bytes blocks = SubBlocks(data, chance.OneIn(2) ? 255 : 1 + chance.Below(255));
    chain.insert(chain.end(), blocks.begin(), blocks.end());
    return chain;
}

// Codes of the sizes in force, mostly ones that a table may hold.
Bytes AnyCodes(Chance& chance, unsigned minimumBits)
{
    CodePacker packer(minimumBits);
    const std::uint32_t foreignOneIn = 1 + chance.Below(2000);
    const std::uint32_t clearOneIn = 1 + chance.Below(8000);
    for (auto count = chance.Below(chance.OneIn(20) ? 5000 : 200); count != 0; --count) {
        const std::uint32_t limit = chance.OneIn(foreignOneIn) ? 1U << packer.CodeBits() : packer.NextFree() + 1;
        std::uint32_t code = chance.Below(std::min(limit, 1U << packer.CodeBits()));
        if (code == packer.End() || (code == packer.Clear() && !chance.OneIn(clearOneIn)))
            code = 0;
        packer.Code(code);
    }
    if (chance.OneIn(2))
        packer.Code(packer.End());
    return packer.Data();
}

void Damage(Chance& chance, Bytes& chain)
{
    for (auto count = chance.Below(5); count != 0; --count)
        chain[1 + chance.Below(chain.size() - 1)] ^= static_cast<std::uint8_t>(1U << chance.Below(8));
    if (chance.OneIn(4))
        chain.resize(1 + chance.Below(chain.size()));
}

// Decodes from memory and into memory of their exact sizes, and compares. Whether the data were valid.
bool CompareDecoders(const Bytes& chain, std::size_t room)
{
    const PlainLzwResult expected = PlainLzw(chain, room).Decode();
    const std::vector<std::byte> exact(reinterpret_cast<const std::byte*>(chain.data()),
                                       reinterpret_cast<const std::byte*>(chain.data() + chain.size()));
    GifReader reader(exact);
    Bytes pixels(room, 0xCC);
    const GifPixelData data = DecodeGifPixels(reader, pixels);
    EXPECT_EQ(data.isValid, expected.isValid);
    EXPECT_EQ(reader.Offset(), expected.endOffset);
    pixels.resize(data.count);
    EXPECT_EQ(pixels, expected.pixels);
    return data.isValid;
}

} // namespace

TEST(GifLzwProperty, PicturesDecodeAsThePlainDecoderDoes)
{
    Chance chance(77);
    for (int round = 0; round < 60 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const unsigned minimumBits = 2 + chance.Below(7);
        const Bytes indices = PictureLike(chance, 1 + chance.Below(6000), 1U << minimumBits);
        EXPECT_TRUE(CompareDecoders(Chain(chance, minimumBits, EncodeLzw(minimumBits, indices)), indices.size()));
    }
}

TEST(GifLzwProperty, DamagedPicturesDecodeAsThePlainDecoderDoes)
{
    Chance chance(78);
    int valid = 0;
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const unsigned minimumBits = 2 + chance.Below(7);
        const Bytes indices = PictureLike(chance, 1 + chance.Below(1200), 1U << minimumBits);
        Bytes chain = Chain(chance, minimumBits, EncodeLzw(minimumBits, indices));
        Damage(chance, chain);
        valid += CompareDecoders(chain, indices.size() + (chance.OneIn(2) ? chance.Below(200) : 0)) ? 1 : 0;
    }
    EXPECT_GT(valid, 80); // both results are met often
    EXPECT_LT(valid, 360);
}

TEST(GifLzwProperty, AnyCodesOfEveryMinimumSizeDecodeAsThePlainDecoderDoes)
{
    Chance chance(79);
    int valid = 0;
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const unsigned minimumBits = chance.Below(14);
        const Bytes chain = Chain(chance, minimumBits, AnyCodes(chance, minimumBits));
        valid += CompareDecoders(chain, chance.OneIn(2) ? 50'000 : chance.Below(3000)) ? 1 : 0;
    }
    EXPECT_GT(valid, 80);
    EXPECT_LT(valid, 360);
}

TEST(GifLzwProperty, AnyBytesDecodeAsThePlainDecoderDoes)
{
    Chance chance(80);
    for (int round = 0; round < 400 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        Bytes bytes{ static_cast<std::uint8_t>(chance.Below(14)) };
        for (auto count = chance.Below(700); count != 0; --count)
            bytes.push_back(static_cast<std::uint8_t>(chance.Below(256)));
        CompareDecoders(bytes, chance.Below(4000));
    }
}
