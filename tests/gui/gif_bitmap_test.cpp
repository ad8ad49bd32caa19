#include "gui/gif_bitmap.h"

#include "common/gdi_handles.h"
#include "gui/gif_decoder.h"
#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <array>

using namespace cardsong::test;

namespace {

const std::vector<GifColor> kFourColors{ kBlack, kRed, kGreen, kBlue };

class GifBitmap : public testing::Test {
protected:
    WString Write(const std::string& bytes)
    {
        m_device.WriteFile("user/scratch/picture.gif", bytes);
        return m_device.Path(TEXT("picture.gif"));
    }
    UniqueBitmap Load(const std::string& bytes) { return UniqueBitmap(LoadGifBitmap(Write(bytes).c_str())); }
    UniqueBitmap Load(const GifBuilder& builder) { return Load(builder.Text()); }

    static std::vector<std::uint16_t> Pixels(HBITMAP bitmap, int widthPx, int heightPx)
    {
        const UniqueMemoryContext context(CreateCompatibleDC(nullptr));
        const SelectedObject selected(context.Get(), bitmap);
        std::vector<std::uint16_t> pixels;
        for (int y = 0; y < heightPx; ++y) {
            for (int x = 0; x < widthPx; ++x)
                pixels.push_back(Pixel565(context.Get(), x, y));
        }
        return pixels;
    }

    ScratchDevice m_device;
};

GifImage Whole(std::uint16_t width, std::uint16_t height, Bytes indices)
{
    return { .width = width, .height = height, .indices = std::move(indices) };
}

} // namespace

TEST_F(GifBitmap, Versions87aAnd89aLoadAnd90aDoesNot)
{
    const auto file = [](const char* tag) {
        return GifBuilder(tag).Screen(1, 1, kFourColors).Image(Whole(1, 1, { 1 })).Trailer();
    };
    EXPECT_TRUE(Load(file("GIF87a")));
    EXPECT_TRUE(Load(file("GIF89a")));
    EXPECT_FALSE(Load(file("GIF90a")));
}

TEST_F(GifBitmap, IsATopDownSectionOfSixteenBits)
{
    const UniqueBitmap bitmap = Load(GifBuilder().Screen(2, 3, kFourColors).Image(Whole(2, 3, { 1, 1, 2, 2, 3, 3 })));
    ASSERT_TRUE(bitmap);
    BITMAP description = {};
    ASSERT_NE(GetObjectW(bitmap.Get(), sizeof(description), &description), 0);
    EXPECT_EQ(description.bmWidth, 2);
    EXPECT_EQ(description.bmHeight, 3);
    EXPECT_EQ(description.bmBitsPixel, 16);
    EXPECT_EQ(description.bmWidthBytes, 4);
    EXPECT_EQ(Pixels(bitmap.Get(), 2, 3),
              (std::vector<std::uint16_t>{ kRed565, kRed565, kGreen565, kGreen565, kBlue565, kBlue565 }));
}

TEST_F(GifBitmap, AnOddWidthHasOneSparePixelARowAndIsNotSheared)
{
    const UniqueBitmap bitmap = Load(GifBuilder().Screen(3, 2, kFourColors).Image(Whole(3, 2, { 1, 2, 3, 3, 2, 1 })));
    ASSERT_TRUE(bitmap);
    BITMAP description = {};
    GetObjectW(bitmap.Get(), sizeof(description), &description);
    EXPECT_EQ(description.bmWidthBytes, 8);
    EXPECT_EQ(Pixels(bitmap.Get(), 3, 2),
              (std::vector<std::uint16_t>{ kRed565, kGreen565, kBlue565, kBlue565, kGreen565, kRed565 }));
}

TEST_F(GifBitmap, OfAnAnimationTheFirstFrameIsShown)
{
    const UniqueBitmap bitmap =
        Load(GifBuilder().Screen(1, 1, kFourColors).Image(Whole(1, 1, { 2 })).Image(Whole(1, 1, { 3 })).Trailer());
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(Pixels(bitmap.Get(), 1, 1), (std::vector<std::uint16_t>{ kGreen565 }));
}

TEST_F(GifBitmap, WithoutAGlobalTableTheBackgroundIsWhite)
{
    GifImage image = Whole(1, 1, { 1 });
    image.localTable = kFourColors;
    const UniqueBitmap bitmap = Load(GifBuilder().Screen(2, 1, {}).Image(image));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(Pixels(bitmap.Get(), 2, 1), (std::vector<std::uint16_t>{ kRed565, kWhite565 }));
}

TEST_F(GifBitmap, ATransparentPixelOfAFileWithoutAGlobalTableIsWhite)
{
    GifImage image = Whole(2, 1, { 1, 2 });
    image.localTable = kFourColors;
    const UniqueBitmap bitmap = Load(GifBuilder().Screen(2, 1, {}).GraphicControl(0, 0, 1).Image(image));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(Pixels(bitmap.Get(), 2, 1), (std::vector<std::uint16_t>{ kWhite565, kGreen565 }));
}

TEST_F(GifBitmap, ANullPathAndAMissingFileGiveNothing)
{
    EXPECT_EQ(LoadGifBitmap(nullptr), nullptr);
    EXPECT_EQ(LoadGifBitmap(m_device.Path(TEXT("missing.gif")).c_str()), nullptr);
    EXPECT_EQ(LoadGifBitmap(TEXT("")), nullptr);
}

TEST_F(GifBitmap, AnEmptyFileAndAFolderGiveNothing)
{
    EXPECT_FALSE(Load(""));
    m_device.MakeFolder("user/scratch/folder.gif");
    EXPECT_EQ(LoadGifBitmap(m_device.Path(TEXT("folder.gif")).c_str()), nullptr);
}

TEST_F(GifBitmap, AScreenWithoutPixelsOrBeyondTheLimitGivesNothing)
{
    EXPECT_FALSE(Load(GifBuilder().Screen(0, 1, kFourColors).Image(Whole(1, 1, { 1 }))));
    EXPECT_FALSE(Load(GifBuilder().Screen(1, 0, kFourColors).Image(Whole(1, 1, { 1 }))));
    EXPECT_FALSE(Load(GifBuilder().Screen(65535, 65535, kFourColors).Image(Whole(1, 1, { 1 }))));
}

TEST_F(GifBitmap, AFirstFrameThatCannotBeDecodedGivesNothing)
{
    EXPECT_FALSE(Load(GifBuilder()
                          .Screen(1, 1, kFourColors)
                          .ImageOfCodes(Whole(1, 1, {}), { 0xFF })
                          .Image(Whole(1, 1, { 1 }))
                          .Trailer()));
}

TEST_F(GifBitmap, EveryTruncationGivesABitmapOrNothing)
{
    const std::string whole = GifBuilder().Screen(3, 2, kFourColors).Image(Whole(3, 2, { 1, 2, 3, 3, 2, 1 })).Text();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const UniqueBitmap bitmap = Load(whole.substr(0, size));
        // Header 13, table 12, descriptor 10: from there on the data may be missing.
        EXPECT_EQ(static_cast<bool>(bitmap), size >= 13 + 12 + 10) << size;
    }
}

TEST(Rgb565Dib, RefusesSizesThatAreNotAboveZeroOrAreTooLarge)
{
    std::array<std::pair<int, int>, 6> sizes = {
        { { 0, 1 }, { 1, 0 }, { -1, 1 }, { 1, -1 }, { 65535, 65535 }, { 4096, 4097 } }
    };
    for (const auto& [widthPx, heightPx] : sizes) {
        std::uint16_t unchanged = 0;
        std::uint16_t* bits = &unchanged;
        EXPECT_EQ(CreateRgb565Dib(widthPx, heightPx, &bits), nullptr) << widthPx << " x " << heightPx;
        EXPECT_EQ(bits, nullptr);
    }
}

TEST(Rgb565Dib, ItsBitsAreThePixelsFromTheTop)
{
    std::uint16_t* bits = nullptr;
    const UniqueBitmap bitmap(CreateRgb565Dib(1, 2, &bits));
    ASSERT_TRUE(bitmap);
    ASSERT_NE(bits, nullptr);
    bits[0] = kRed565;
    bits[2] = kGreen565; // behind the spare pixel of the first row
    const UniqueMemoryContext context(CreateCompatibleDC(nullptr));
    const SelectedObject selected(context.Get(), bitmap.Get());
    EXPECT_EQ(Pixel565(context.Get(), 0, 0), kRed565);
    EXPECT_EQ(Pixel565(context.Get(), 0, 1), kGreen565);
}

TEST(FramePixels, OfAnEvenWidthAreCopiedInOne)
{
    const std::array<std::uint16_t, 4> canvas = { 1, 2, 3, 4 };
    std::array<std::uint16_t, 5> bits = { 9, 9, 9, 9, 9 };
    CopyFramePixels(canvas, bits.data(), 2, 2);
    EXPECT_EQ(bits, (std::array<std::uint16_t, 5>{ 1, 2, 3, 4, 9 }));
}

TEST(FramePixels, OfAnOddWidthLeaveTheSparePixelAlone)
{
    const std::array<std::uint16_t, 6> canvas = { 1, 2, 3, 4, 5, 6 };
    std::array<std::uint16_t, 9> bits = { 9, 9, 9, 9, 9, 9, 9, 9, 9 };
    CopyFramePixels(canvas, bits.data(), 3, 2);
    EXPECT_EQ(bits, (std::array<std::uint16_t, 9>{ 1, 2, 3, 9, 4, 5, 6, 9, 9 }));
}

TEST(FramePixels, OfACanvasOfAnotherSizeAreNotCopied)
{
    const std::array<std::uint16_t, 3> canvas = { 1, 2, 3 };
    std::array<std::uint16_t, 4> bits = { 9, 9, 9, 9 };
    CopyFramePixels(canvas, bits.data(), 2, 2);
    EXPECT_EQ(bits, (std::array<std::uint16_t, 4>{ 9, 9, 9, 9 }));
}

namespace {

class Decoder : public GifBitmap {};

} // namespace

TEST_F(Decoder, ReadsNothingBeforeItIsOpened)
{
    GifDecoder decoder(TEXT("x"), 0);
    std::uint16_t widthPx = 1;
    std::uint16_t heightPx = 1;
    std::uint32_t frames = 1;
    decoder.GetSize(widthPx, heightPx, frames);
    EXPECT_EQ(widthPx, 0);
    EXPECT_EQ(heightPx, 0);
    EXPECT_EQ(frames, 0U);
    EXPECT_EQ(decoder.DecodeNextFrame(), nullptr);
}

TEST_F(Decoder, KnowsSizeAndNumberOfFramesOnceOpened)
{
    const WString path =
        Write(GifBuilder().Screen(7, 5, kFourColors).Image(Whole(1, 1, { 1 })).Image(Whole(1, 1, { 1 })).Text());
    GifDecoder decoder(path.c_str(), 0);
    ASSERT_TRUE(decoder.Open());
    std::uint16_t widthPx = 0;
    std::uint16_t heightPx = 0;
    std::uint32_t frames = 0;
    decoder.GetSize(widthPx, heightPx, frames);
    EXPECT_EQ(widthPx, 7);
    EXPECT_EQ(heightPx, 5);
    EXPECT_EQ(frames, 2U);
}

TEST_F(Decoder, ItsBackgroundColorIsRedInTheLowByte)
{
    GifImage image = Whole(1, 1, { 0 });
    image.localTable = kFourColors;
    const WString path = Write(GifBuilder().Screen(2, 1, {}).Image(image).Text());
    GifDecoder decoder(path.c_str(), 0x00FF4008); // blue 0xFF, green 0x40, red 0x08
    ASSERT_TRUE(decoder.Open());
    const GifFrame* frame = decoder.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->canvas[1], 1 << 11 | 16 << 5 | 31);
}

TEST_F(Decoder, OpenedAgainItReadsTheFileAnew)
{
    const WString path = Write(PlainGif(1, 1, kRed));
    GifDecoder decoder(path.c_str(), 0);
    ASSERT_TRUE(decoder.Open());
    Write(PlainGif(2, 2, kGreen));
    ASSERT_TRUE(decoder.Open());
    EXPECT_EQ(decoder.Screen().widthPx, 2);
    const GifFrame* frame = decoder.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->canvas[3], kGreen565);
    Write("no longer a picture");
    EXPECT_FALSE(decoder.Open());
    EXPECT_EQ(decoder.Screen().widthPx, 0);
    EXPECT_EQ(decoder.DecodeNextFrame(), nullptr);
}
