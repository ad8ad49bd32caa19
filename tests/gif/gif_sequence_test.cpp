#include "gif/gif_sequence.h"

#include "tests/gif/gif_builder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace cardsong::test;

namespace {

constexpr std::uint16_t kPlain565 = 0x1234;
const std::vector<GifColor> kFourColors{ kBlack, kRed, kGreen, kBlue };

using Canvas = std::vector<std::uint16_t>;

// A sequence over a copy of the bytes of exactly their size, so that a read too far is found.
class OpenedGif {
public:
    explicit OpenedGif(const Bytes& bytes) : m_size(bytes.size()), m_bytes(new std::byte[bytes.size()])
    {
        std::ranges::transform(bytes, m_bytes.get(), [](std::uint8_t b) { return std::byte{ b }; });
        m_isOpen = sequence.Open({ m_bytes.get(), m_size }, kPlain565);
    }
    explicit OpenedGif(const GifBuilder& builder) : OpenedGif(builder.Data()) {}

    bool IsOpen() const { return m_isOpen; }
    // The canvas of the next frame; empty when there is no frame.
    Canvas Next()
    {
        const GifFrame* frame = sequence.DecodeNextFrame();
        if (frame == nullptr)
            return {};
        return { frame->canvas.begin(), frame->canvas.end() };
    }

    GifSequence sequence;

private:
    std::size_t m_size;
    std::unique_ptr<std::byte[]> m_bytes;
    bool m_isOpen = false;
};

GifImage Rectangle(std::uint16_t left, std::uint16_t top, std::uint16_t width, std::uint16_t height, std::uint8_t index)
{
    return { .left = left,
             .top = top,
             .width = width,
             .height = height,
             .indices = Bytes(std::size_t{ width } * height, index) };
}

bool Opens(const GifBuilder& builder)
{
    return OpenedGif(builder).IsOpen();
}

GifBuilder OnePixel(const std::string& tag = "GIF89a")
{
    return GifBuilder(tag).Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).Trailer();
}

} // namespace

// ---- header and screen ----

TEST(GifHeader, Versions87aAnd89aOpen)
{
    EXPECT_TRUE(Opens(OnePixel("GIF87a")));
    EXPECT_TRUE(Opens(OnePixel("GIF89a")));
}

TEST(GifHeader, VersionsAbove89aAreRefused)
{
    EXPECT_FALSE(Opens(OnePixel("GIF90a")));
    EXPECT_FALSE(Opens(OnePixel("GIF89b")));
    EXPECT_FALSE(Opens(OnePixel("GIF89\xE4")));
}

TEST(GifHeader, VersionsBelow89aOpen)
{
    EXPECT_TRUE(Opens(OnePixel("GIF00z")));
    EXPECT_TRUE(Opens(OnePixel("GIF89A")));
}

TEST(GifHeader, AForeignSignatureIsRefused)
{
    EXPECT_FALSE(Opens(OnePixel("gif89a")));
    EXPECT_FALSE(Opens(OnePixel("GIX89a")));
    EXPECT_FALSE(Opens(OnePixel(std::string("GI\0"
                                            "89a",
                                            6))));
}

TEST(GifHeader, SignatureAndVersionAreKept)
{
    OpenedGif gif(OnePixel("GIF87a"));
    EXPECT_STREQ(gif.sequence.Screen().signature.data(), "GIF");
    EXPECT_STREQ(gif.sequence.Screen().version.data(), "87a");
}

TEST(GifHeader, SizeAndFlagsOfTheScreenAreRead)
{
    OpenedGif gif(GifBuilder().Screen(0x0123, 0x0204, kFourColors, 2, 0x30 | 0x08, 49).Image(Rectangle(0, 0, 1, 1, 0)));
    const GifScreen& screen = gif.sequence.Screen();
    EXPECT_EQ(screen.widthPx, 0x0123);
    EXPECT_EQ(screen.heightPx, 0x0204);
    EXPECT_EQ(screen.colorResolution, 4U);
    EXPECT_TRUE(screen.isSorted);
    EXPECT_EQ(screen.backgroundIndex, 2U);
    EXPECT_EQ(screen.pixelAspect, 49);
    EXPECT_EQ(screen.globalTable.size, 4U);
}

TEST(GifHeader, FlagsThatAreNotSetReadAsNotSet)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors, 0, 0x70).Image(Rectangle(0, 0, 1, 1, 0)));
    EXPECT_EQ(gif.sequence.Screen().colorResolution, 8U);
    EXPECT_FALSE(gif.sequence.Screen().isSorted);
}

TEST(GifHeader, ABackgroundIndexBeyondTheTableBecomesZero)
{
    OpenedGif last(GifBuilder().Screen(1, 1, kFourColors, 3).Image(Rectangle(0, 0, 1, 1, 0)));
    EXPECT_EQ(last.sequence.Screen().backgroundIndex, 3U);
    OpenedGif beyond(GifBuilder().Screen(1, 1, kFourColors, 4).Image(Rectangle(0, 0, 1, 1, 0)));
    EXPECT_EQ(beyond.sequence.Screen().backgroundIndex, 0U);
}

TEST(GifHeader, WithoutAGlobalTableThereIsNoBackgroundIndex)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, {}, 3, 0x07).Image(Rectangle(0, 0, 1, 1, 0)));
    ASSERT_TRUE(gif.IsOpen());
    EXPECT_EQ(gif.sequence.Screen().backgroundIndex, 266U);
    EXPECT_EQ(gif.sequence.Screen().globalTable.size, 0U);
}

TEST(GifHeader, ColorsBecomeRgb565)
{
    OpenedGif gif(GifBuilder()
                      .Screen(4, 1, { { 255, 0, 0 }, { 7, 4, 9 }, { 8, 3, 7 }, { 0x12, 0x34, 0x56 } })
                      .Image({ .width = 4, .height = 1, .indices = { 0, 1, 2, 3 } }));
    EXPECT_EQ(gif.Next(), (Canvas{ 0xF800, 0x0021, 0x0800, 2 << 11 | 13 << 5 | 10 }));
}

TEST(GifHeader, ATableOf256ColorsIsReadWhole)
{
    std::vector<GifColor> table(256, kBlack);
    table[255] = kGreen;
    GifImage image = Rectangle(0, 0, 1, 1, 255);
    image.minimumBits = 8;
    OpenedGif gif(GifBuilder().Screen(1, 1, table).Image(image));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
}

TEST(GifHeader, OpeningAgainForgetsTheFirstFile)
{
    OpenedGif gif(
        GifBuilder().Screen(1, 1, { kBlack, kWhite }).GraphicControl(3, 20, 1).Image(Rectangle(0, 0, 1, 1, 0)));
    gif.Next();
    OpenedGif bad(GifBuilder("GIF99a").Screen(1, 1, {}));
    EXPECT_FALSE(gif.sequence.Open({}, kPlain565));
    EXPECT_EQ(gif.sequence.FrameCount(), 0U);
    EXPECT_EQ(gif.sequence.Screen().widthPx, 0);
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
}

TEST(GifHeader, ASequenceThatWasNeverOpenedHasNoFrame)
{
    GifSequence sequence;
    EXPECT_EQ(sequence.DecodeNextFrame(), nullptr);
}

// ---- counting ----

TEST(GifCount, AFileWithoutAnImageIsRefused)
{
    EXPECT_FALSE(Opens(GifBuilder().Screen(1, 1, kFourColors).Trailer()));
    EXPECT_FALSE(Opens(GifBuilder().Screen(1, 1, kFourColors)));
    EXPECT_FALSE(Opens(GifBuilder().Screen(1, 1, kFourColors).GraphicControl(0)));
}

TEST(GifCount, ImagesAreCountedOverKnownExtensions)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors)
                      .Extension(0xFE, { 0x2C, 0x3B, 0x2C })
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Extension(0x01, Bytes(300, 0x2C))
                      .GraphicControl(0)
                      .Image({ .width = 1, .height = 1, .indices = { 1 }, .localTable = { kBlack, kBlue } })
                      .Extension(0xFF, {})
                      .Image(Rectangle(1, 0, 1, 1, 2))
                      .Trailer());
    EXPECT_EQ(gif.sequence.FrameCount(), 3U);
}

TEST(GifCount, ImagesBehindTheTrailerDoNotCount)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Trailer()
                      .Image(Rectangle(0, 0, 1, 1, 2))
                      .Byte(0x77));
    EXPECT_EQ(gif.sequence.FrameCount(), 1U);
}

TEST(GifCount, AForeignExtensionLabelRefusesTheFile)
{
    EXPECT_FALSE(
        Opens(GifBuilder().Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).Extension(0xFD, { 1 }).Trailer()));
    EXPECT_FALSE(
        Opens(GifBuilder().Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).Extension(0x00, {}).Trailer()));
}

TEST(GifCount, AnUnknownBlockByteRefusesTheFile)
{
    EXPECT_FALSE(Opens(GifBuilder().Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).Byte(0x2D).Trailer()));
}

TEST(GifCount, StrayTerminatorsAreIgnored)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .Byte(0)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Byte(0)
                      .Byte(0)
                      .Image(Rectangle(0, 0, 1, 1, 2)));
    EXPECT_EQ(gif.sequence.FrameCount(), 2U);
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
}

// ---- order of frames ----

TEST(GifFrames, ComeInFileOrderAndWithoutEnd)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Image(Rectangle(0, 0, 1, 1, 2))
                      .Trailer());
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
}

TEST(GifFrames, BehindTheTrailerTheScreenStartsFromTheBackground)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Image(Rectangle(1, 0, 1, 1, 2))
                      .Trailer());
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kBlue565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kGreen565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kBlue565 }));
}

TEST(GifFrames, WithoutATrailerTheNextRoundGoesOnFromThePicture)
{
    OpenedGif gif(
        GifBuilder().Screen(2, 1, kFourColors, 3).Image(Rectangle(0, 0, 1, 1, 1)).Image(Rectangle(1, 0, 1, 1, 2)));
    gif.Next();
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kGreen565 }));
}

TEST(GifFrames, WhenTheDataEndBeforeAnImageAnEmptyFrameComes)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).GraphicControl(2, 30));
    gif.Next();
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(frame->canvas.empty());
    EXPECT_EQ(frame->image.widthPx, 0);
    EXPECT_FALSE(frame->control.isPresent);
    frame = gif.sequence.DecodeNextFrame(); // the first again, with the control that waited
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->control.delayHundredths, 30U);
}

TEST(GifFrames, AnImageThatCannotBeDecodedGivesNoFrameAndTheNextCallTheNextImage)
{
    CodePacker endFirst(2);
    endFirst.Code(5);
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .ImageOfCodes(Rectangle(0, 0, 1, 1, 0), endFirst.Data())
                      .Image(Rectangle(0, 0, 1, 1, 2))
                      .Trailer());
    EXPECT_EQ(gif.sequence.FrameCount(), 2U);
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
}

TEST(GifFrames, DescriptorFieldsAreKept)
{
    GifImage image = Rectangle(1, 2, 3, 4, 1);
    image.packed = kSorted;
    image.localTable = std::vector<GifColor>(4, kBlue);
    OpenedGif gif(GifBuilder().Screen(9, 9, kFourColors).Image(image));
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->image.leftPx, 1);
    EXPECT_EQ(frame->image.topPx, 2);
    EXPECT_EQ(frame->image.widthPx, 3);
    EXPECT_EQ(frame->image.heightPx, 4);
    EXPECT_TRUE(frame->image.isSorted);
    EXPECT_FALSE(frame->image.isInterlaced);
    EXPECT_EQ(frame->image.localTable.size, 4U);
    EXPECT_EQ(frame->IndexPixels().size(), 12U);
    EXPECT_EQ(frame->canvas.size(), 81U);
}

// ---- graphic control ----

TEST(GifControl, ItsFieldsReachTheNextImage)
{
    OpenedGif gif(
        GifBuilder().Screen(1, 1, kFourColors).GraphicControl(5, 0x0123, 3, true).Image(Rectangle(0, 0, 1, 1, 1)));
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(frame->control.isPresent);
    EXPECT_EQ(frame->control.disposal, 5U);
    EXPECT_TRUE(frame->control.waitsForUser);
    EXPECT_TRUE(frame->control.hasTransparency);
    EXPECT_EQ(frame->control.delayHundredths, 0x0123U);
    EXPECT_EQ(frame->control.transparentIndex, 3U);
}

TEST(GifControl, FlagsThatAreNotSetReadAsNotSet)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors).GraphicControl(7, 6).Image(Rectangle(0, 0, 1, 1, 1)));
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->control.disposal, 7U);
    EXPECT_FALSE(frame->control.waitsForUser);
    EXPECT_FALSE(frame->control.hasTransparency);
}

TEST(GifControl, ADelayOfZeroToFiveIsReadAsTen)
{
    for (unsigned delay = 0; delay <= 7; ++delay) {
        OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors).GraphicControl(0, delay).Image(Rectangle(0, 0, 1, 1, 1)));
        const GifFrame* frame = gif.sequence.DecodeNextFrame();
        ASSERT_NE(frame, nullptr);
        EXPECT_EQ(frame->control.delayHundredths, delay <= 5 ? 10U : delay);
    }
}

TEST(GifControl, ItCountsForOneImageOnly)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .GraphicControl(2, 50, 1)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Image(Rectangle(0, 0, 1, 1, 1)));
    gif.Next();
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_FALSE(frame->control.isPresent);
    EXPECT_EQ(frame->control.delayHundredths, 0U);
    EXPECT_EQ(frame->control.disposal, 0U);
    EXPECT_FALSE(frame->control.hasTransparency);
}

TEST(GifControl, SubBlocksOfAnotherLengthAreSkipped)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .Append({ 0x21, 0xF9, 3, 0xFF, 0xFF, 0xFF, 4, 4 << 2, 9, 0, 0, 5, 0xFF, 1, 1, 1, 1, 0 })
                      .Image(Rectangle(0, 0, 1, 1, 1)));
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->control.disposal, 4U);
    EXPECT_EQ(frame->control.delayHundredths, 9U);
}

TEST(GifControl, AControlWithoutASubBlockOfFourBytesIsNone)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .Append({ 0x21, 0xF9, 5, 1, 9, 9, 9, 9, 0 })
                      .Image(Rectangle(0, 0, 1, 1, 1)));
    const GifFrame* frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_FALSE(frame->control.isPresent);
}

// ---- composition ----

TEST(GifComposition, OutsideTheFrameTheBackgroundColorShows)
{
    OpenedGif gif(GifBuilder().Screen(3, 3, kFourColors, 3).Image(Rectangle(1, 1, 1, 1, 1)));
    constexpr std::uint16_t b = kBlue565;
    EXPECT_EQ(gif.Next(), (Canvas{ b, b, b, b, kRed565, b, b, b, b }));
}

TEST(GifComposition, WithoutAGlobalTableThePlainBackgroundShows)
{
    GifImage image = Rectangle(0, 0, 1, 1, 1);
    image.localTable = kFourColors;
    OpenedGif gif(GifBuilder().Screen(2, 1, {}, 1).Image(image));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kPlain565 }));
}

TEST(GifComposition, AGivenBackgroundWinsOverTheFilesOwn)
{
    const std::string file = GifBuilder()
                                 .Screen(3, 1, kFourColors, 3)
                                 .GraphicControl(2)
                                 .Image(Rectangle(0, 0, 1, 1, 1))
                                 .Image(Rectangle(1, 0, 1, 1, 2))
                                 .Text();
    GifSequence sequence;
    ASSERT_TRUE(sequence.Open(std::as_bytes(std::span(file)), kPlain565, GifBackground::Given));
    const auto next = [&] {
        const auto canvas = sequence.DecodeNextFrame()->canvas;
        return Canvas(canvas.begin(), canvas.end());
    };
    EXPECT_EQ(next(), (Canvas{ kRed565, kPlain565, kPlain565 }));
    EXPECT_EQ(next(), (Canvas{ kPlain565, kGreen565, kPlain565 })) << "what is disposed of, too";
}

TEST(GifComposition, ALocalTableWinsOverTheGlobalOne)
{
    GifImage image = Rectangle(0, 0, 1, 1, 1);
    image.localTable = { kBlack, kWhite };
    OpenedGif gif(GifBuilder().Screen(2, 1, kFourColors, 2).Image(image).Image(Rectangle(1, 0, 1, 1, 1)));
    EXPECT_EQ(gif.Next(), (Canvas{ kWhite565, kGreen565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kWhite565, kRed565 }));
}

TEST(GifComposition, AFrameWithoutAnyTableIsBlack)
{
    OpenedGif gif(GifBuilder().Screen(2, 1, {}).Image(Rectangle(0, 0, 1, 1, 1)));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlack565, kPlain565 }));
}

TEST(GifComposition, AnIndexBeyondTheTableIsBlack)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, { kWhite, kWhite }).Image(Rectangle(0, 0, 1, 1, 3)));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlack565 }));
}

TEST(GifComposition, ATransparentPixelOfTheFirstFrameShowsTheBackground)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .GraphicControl(0, 0, 2)
                      .Image({ .width = 2, .height = 1, .indices = { 2, 1 } }));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlue565, kRed565 }));
}

TEST(GifComposition, WithoutTheTransparencyFlagEveryIndexIsDrawn)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .Append({ 0x21, 0xF9, 4, 0, 0, 0, 2, 0 })
                      .Image({ .width = 2, .height = 1, .indices = { 2, 1 } }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kRed565 }));
}

TEST(GifComposition, ATransparentPixelOfALaterFrameShowsTheFrameBefore)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 2, 1, 1))
                      .GraphicControl(0, 0, 0)
                      .Image({ .width = 2, .height = 1, .indices = { 0, 2 } }));
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kGreen565 }));
}

TEST(GifComposition, AFramePartlyOutsideTheScreenIsClipped)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 2, kFourColors)
                      .Image({ .left = 1, .top = 1, .width = 2, .height = 2, .indices = { 1, 2, 3, 3 } }));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlack565, kBlack565, kBlack565, kRed565 }));
}

TEST(GifComposition, AFrameWhollyOutsideTheScreenDrawsNothing)
{
    for (const unsigned packed : { 0U, kInterlace }) {
        for (const auto& [left, top] : { std::pair{ 2, 0 }, { 0, 2 }, { 7, 9 }, { 65535, 65535 } }) {
            GifImage image = Rectangle(static_cast<std::uint16_t>(left), static_cast<std::uint16_t>(top), 3, 3, 1);
            image.packed = packed;
            OpenedGif gif(GifBuilder().Screen(2, 2, kFourColors, 2).Image(image).GraphicControl(2).Image(image));
            EXPECT_EQ(gif.Next(), Canvas(4, kGreen565));
            EXPECT_EQ(gif.Next(), Canvas(4, kGreen565));
        }
    }
}

TEST(GifComposition, PixelsThatTheDataDoNotReachOnTheFirstFrameShowTheBackground)
{
    CodePacker two(2);
    two.Codes({ 4, 1, 2, 5 });
    OpenedGif gif(GifBuilder().Screen(4, 1, kFourColors, 3).ImageOfCodes({ .width = 4, .height = 1 }, two.Data()));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kGreen565, kBlue565, kBlue565 }));
}

TEST(GifComposition, PixelsThatTheDataDoNotReachOnALaterFrameShowTheFrameBefore)
{
    CodePacker three(2);
    three.Codes({ 4, 2, 2, 2, 5 });
    OpenedGif gif(GifBuilder()
                      .Screen(2, 3, kFourColors, 3)
                      .Image(Rectangle(0, 0, 2, 3, 1))
                      .ImageOfCodes({ .width = 2, .height = 3 }, three.Data()));
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kGreen565, kGreen565, kRed565, kRed565, kRed565 }));
}

TEST(GifComposition, PixelsThatTheDataOfAnInterlacedFrameDoNotReachShowTheFrameBefore)
{
    CodePacker three(2);
    three.Codes({ 4, 2, 2, 2, 5 }); // row 0, and the first pixel of row 2
    OpenedGif gif(GifBuilder()
                      .Screen(2, 3, kFourColors, 3)
                      .Image(Rectangle(0, 0, 2, 3, 1))
                      .ImageOfCodes({ .width = 2, .height = 3, .packed = kInterlace }, three.Data()));
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kGreen565, kRed565, kRed565, kGreen565, kRed565 }));
}

TEST(GifComposition, OfARowThatIsHalfBesideTheScreenTheMissingPixelsShowWhatWasThere)
{
    CodePacker three(2);
    three.Codes({ 4, 2, 2, 2, 2, 5 }); // row 0, and the first pixel of row 1
    OpenedGif gif(
        GifBuilder().Screen(3, 2, kFourColors, 3).ImageOfCodes({ .left = 1, .width = 3, .height = 2 }, three.Data()));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlue565, kGreen565, kGreen565, kBlue565, kGreen565, kBlue565 }));
}

TEST(GifComposition, AFrameWithoutAnyDataShowsTheFrameBefore)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .ImageOfCodes({ .width = 1, .height = 1 }, {}));
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
}

TEST(GifComposition, AFileWithoutATrailerKeepsItsLastCanvas)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .GraphicControl(0, 10, 0)
                      .ImageOfCodes({ .left = 1, .width = 1, .height = 1 }, {}));
    const Canvas picture{ kRed565, kBlue565 };
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(gif.Next(), picture);
}

TEST(GifComposition, NoTextThatWasNeverThereIsDrawnBehindACodeBeyondTheTable)
{
    OpenedGif gif(Bytes{ 0x47, 0x49, 0x46, 0x38, 0x39, 0x61,                                     // GIF89a
                         0x07, 0x00, 0x01, 0x00, 0xF1, 0x00, 0x00,                               // 7 x 1, four colours
                         0xFF, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, // red, green, ...
                         0x2C, 0x00, 0x00, 0x00, 0x00, 0x07, 0x00, 0x01, 0x00, 0x00,             // the whole screen
                         0x02, 0x03, 0xC4, 0x73, 0x05, 0x00, // clear, 0, 7 (beyond 6), 1, 7, end
                         0x3B });
    ASSERT_TRUE(gif.IsOpen());
    const GifFrame* const frame = gif.sequence.DecodeNextFrame();
    ASSERT_NE(frame, nullptr);
    const auto indices = frame->IndexPixels();
    EXPECT_EQ(Bytes(indices.begin(), indices.end()), (Bytes{ 0, 0, 0, 1, 1 }));
    EXPECT_EQ(Canvas(frame->canvas.begin(), frame->canvas.end()),
              (Canvas{ kRed565, kRed565, kRed565, kGreen565, kGreen565, kRed565, kRed565 }));
}

// ---- interlace ----

namespace {

// One column of `height` rows at `top`; the data number the rows in the order in which they are delivered.
Canvas InterlacedColumn(std::uint16_t height, std::uint16_t screenHeight, std::uint16_t top)
{
    std::vector<GifColor> table(32);
    for (std::uint8_t i = 0; i < 32; ++i)
        table[i] = { 0, 0, static_cast<std::uint8_t>(i << 3) };
    GifImage image{ .top = top, .width = 1, .height = height, .packed = kInterlace, .minimumBits = 5 };
    for (std::uint8_t i = 0; i < height; ++i)
        image.indices.push_back(static_cast<std::uint8_t>(i + 1));
    OpenedGif gif(GifBuilder().Screen(1, screenHeight, table).Image(image));
    return gif.Next();
}

} // namespace

TEST(GifInterlace, RowsComeInFourPasses)
{
    // Rows 0 8 16, then 4 12, then 2 6 10 14, then the odd ones.
    EXPECT_EQ(InterlacedColumn(18, 18, 0), (Canvas{ 1, 10, 6, 11, 4, 12, 7, 13, 2, 14, 8, 15, 5, 16, 9, 17, 3, 18 }));
}

TEST(GifInterlace, AShortFrameSkipsThePassesThatItDoesNotReach)
{
    EXPECT_EQ(InterlacedColumn(1, 1, 0), (Canvas{ 1 }));
    EXPECT_EQ(InterlacedColumn(2, 2, 0), (Canvas{ 1, 2 }));
    EXPECT_EQ(InterlacedColumn(3, 3, 0), (Canvas{ 1, 3, 2 }));
    EXPECT_EQ(InterlacedColumn(5, 5, 0), (Canvas{ 1, 4, 3, 5, 2 }));
}

TEST(GifInterlace, PassesStartAtTheTopOfTheFrame)
{
    EXPECT_EQ(InterlacedColumn(3, 6, 2), (Canvas{ 0, 0, 1, 3, 2, 0 }));
}

TEST(GifInterlace, RowsBelowTheScreenAreClipped)
{
    EXPECT_EQ(InterlacedColumn(10, 4, 1), (Canvas{ 0, 1, 6, 4 }));
}

TEST(GifInterlace, ColumnsBesideTheScreenAreClipped)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 2, kFourColors)
                      .Image({ .left = 1, .width = 2, .height = 2, .indices = { 1, 3, 2, 3 }, .packed = kInterlace }));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlack565, kRed565, kBlack565, kGreen565 }));
}

TEST(GifInterlace, TransparentPixelsKeepWhatWasThere)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 2, kFourColors, 3)
                      .GraphicControl(0, 0, 1)
                      .Image({ .width = 1, .height = 2, .indices = { 1, 2 }, .packed = kInterlace }));
    EXPECT_EQ(gif.Next(), (Canvas{ kBlue565, kGreen565 }));
}

// ---- disposal ----

namespace {

// A red frame at column 0 to 1 with a disposal, then a green pixel at column 2: the second picture.
Canvas SecondPicture(unsigned disposal, const std::vector<GifColor>& globalTable)
{
    GifImage first = Rectangle(0, 0, 2, 1, 1);
    GifImage second = Rectangle(2, 0, 1, 1, 2);
    first.localTable = kFourColors;
    second.localTable = kFourColors;
    OpenedGif gif(GifBuilder()
                      .Screen(4, 1, globalTable, 3)
                      .Image(Rectangle(3, 0, 1, 1, 0))
                      .GraphicControl(disposal)
                      .Image(first)
                      .Image(second));
    gif.Next();
    gif.Next();
    return gif.Next();
}

} // namespace

TEST(GifDisposal, ZeroAndOneLeaveTheFrame)
{
    const Canvas expected{ kRed565, kRed565, kGreen565, kBlack565 };
    EXPECT_EQ(SecondPicture(0, kFourColors), expected);
    EXPECT_EQ(SecondPicture(1, kFourColors), expected);
}

TEST(GifDisposal, TwoFillsTheRectangleWithTheBackground)
{
    EXPECT_EQ(SecondPicture(2, kFourColors), (Canvas{ kBlue565, kBlue565, kGreen565, kBlack565 }));
}

TEST(GifDisposal, TwoWithoutAGlobalTableFillsTheWholeScreen)
{
    EXPECT_EQ(SecondPicture(2, {}), (Canvas{ kPlain565, kPlain565, kGreen565, kPlain565 }));
}

TEST(GifDisposal, ThreeAndAboveBringBackWhatWasBefore)
{
    const Canvas expected{ kBlue565, kBlue565, kGreen565, kBlack565 };
    EXPECT_EQ(SecondPicture(3, kFourColors), expected);
    EXPECT_EQ(SecondPicture(7, kFourColors), expected);
    EXPECT_EQ(SecondPicture(3, {}), (Canvas{ kPlain565, kPlain565, kGreen565, kBlack565 }));
}

TEST(GifDisposal, TheFrameItselfIsShownWhateverItsDisposal)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors).GraphicControl(2).Image(Rectangle(0, 0, 1, 1, 1)));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
}

TEST(GifDisposal, RectanglesAreClippedToTheScreen)
{
    for (const unsigned disposal : { 1U, 2U }) {
        OpenedGif gif(GifBuilder()
                          .Screen(2, 2, kFourColors, 3)
                          .Image(Rectangle(0, 0, 2, 2, 2))
                          .GraphicControl(disposal)
                          .Image(Rectangle(1, 1, 5, 5, 1))
                          .GraphicControl(0, 0, 0)
                          .Image(Rectangle(0, 0, 1, 1, 0)));
        gif.Next();
        gif.Next();
        EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kGreen565, kGreen565, disposal == 1 ? kRed565 : kBlue565 }));
    }
}

TEST(GifDisposal, OfTheFirstFrameLeavesTheBackgroundWhateverAboveOne)
{
    for (unsigned disposal = 0; disposal <= 7; ++disposal) {
        OpenedGif gif(GifBuilder()
                          .Screen(3, 1, kFourColors, 3)
                          .GraphicControl(disposal)
                          .Image(Rectangle(0, 0, 2, 1, 1))
                          .Image(Rectangle(2, 0, 1, 1, 2)));
        EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kRed565, kBlue565 }));
        const std::uint16_t left = disposal <= 1 ? kRed565 : kBlue565;
        EXPECT_EQ(gif.Next(), (Canvas{ left, left, kGreen565 })) << disposal;
    }
}

TEST(GifDisposal, OfAFrameIsDoneThoughTheNextImageCannotBeDecoded)
{
    for (const unsigned disposal : { 1U, 2U, 3U }) {
        OpenedGif gif(GifBuilder()
                          .Screen(2, 1, kFourColors, 3)
                          .Image(Rectangle(0, 0, 2, 1, 2))
                          .GraphicControl(disposal)
                          .Image(Rectangle(0, 0, 1, 1, 1))
                          .ImageOfCodes(Rectangle(0, 0, 1, 1, 0), Bytes{ 5 })
                          .Image(Rectangle(1, 0, 1, 1, 1)));
        gif.Next();
        EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kGreen565 }));
        EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
        const std::uint16_t left = disposal == 1 ? kRed565 : disposal == 2 ? kBlue565 : kGreen565;
        EXPECT_EQ(gif.Next(), (Canvas{ left, kRed565 })) << disposal;
    }
}

TEST(GifDisposal, SeveralFramesInARowThatAreTakenAwayLeaveWhatWasBeforeThemAll)
{
    OpenedGif gif(GifBuilder()
                      .Screen(3, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 3, 1, 2))
                      .GraphicControl(3)
                      .Image(Rectangle(0, 0, 2, 1, 1))
                      .GraphicControl(3)
                      .Image(Rectangle(1, 0, 2, 1, 0))
                      .GraphicControl(3, 0, 0)
                      .Image(Rectangle(0, 0, 3, 1, 0)));
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kRed565, kGreen565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kBlack565, kBlack565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kGreen565, kGreen565 }));
}

TEST(GifDisposal, ARoundBehindTheTrailerDoesNotBringBackWhatTheLastFrameHid)
{
    OpenedGif gif(GifBuilder()
                      .Screen(2, 1, kFourColors, 3)
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .GraphicControl(3)
                      .Image(Rectangle(0, 0, 2, 1, 2))
                      .Trailer());
    gif.Next();
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565, kGreen565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565, kBlue565 }));
}

// ---- hostile files ----

TEST(GifHostile, AScreenOf65535SquaredOpensButGivesNoFrame)
{
    OpenedGif gif(GifBuilder().Screen(65535, 65535, kFourColors).Image(Rectangle(0, 0, 1, 1, 1)).Trailer());
    ASSERT_TRUE(gif.IsOpen());
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
}

TEST(GifHostile, AFrameOf65535SquaredIsRefusedAndTheNextIsDecoded)
{
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .ImageOfCodes({ .width = 65535, .height = 65535 }, {})
                      .Image(Rectangle(0, 0, 1, 1, 1))
                      .Trailer());
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
}

TEST(GifHostile, TheGateLetsSixteenMillionPixelsPassAndNotOneRowMore)
{
    EXPECT_TRUE(IsPixelCountAllowed(4096, 4096));
    EXPECT_TRUE(IsPixelCountAllowed(65535, 256));
    EXPECT_FALSE(IsPixelCountAllowed(4096, 4097));
    EXPECT_FALSE(IsPixelCountAllowed(65535, 65535));
    PixelBuffer<std::uint8_t> buffer;
    EXPECT_TRUE(buffer.Allocate(2, 1));
    EXPECT_FALSE(buffer.Allocate(4096, 4097));
    EXPECT_FALSE(buffer.IsAllocated());
    EXPECT_EQ(buffer.Pixels().size(), 0U);
}

TEST(GifHostile, AFrameWithoutPixelsDrawsNothing)
{
    OpenedGif gif(GifBuilder().Screen(1, 1, kFourColors, 1).ImageOfCodes({ .width = 0, .height = 9 }, {}));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
}

TEST(GifHostile, AScreenWithoutPixelsIsRefused)
{
    EXPECT_FALSE(Opens(GifBuilder().Screen(0, 5, kFourColors).Image(Rectangle(0, 0, 1, 1, 1))));
    EXPECT_FALSE(Opens(GifBuilder().Screen(5, 0, kFourColors).Image(Rectangle(0, 0, 1, 1, 1))));
    EXPECT_TRUE(Opens(GifBuilder().Screen(1, 1, kFourColors).Image(Rectangle(0, 0, 1, 1, 1))));
}

TEST(GifHostile, MorePixelDataThanTheFrameHoldsGiveNoFrame)
{
    OpenedGif gif(
        GifBuilder().Screen(2, 2, kFourColors).ImageOfCodes({ .width = 2, .height = 1 }, EncodeLzw(2, { 1, 2, 3 })));
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
}

TEST(GifHostile, AStreamThatReaches4096EntriesWithoutAClearCodeGivesNoFrame)
{
    CodePacker packer(2);
    packer.Codes({ 4, 0 });
    while (packer.NextFree() < 4096)
        packer.Code(1);
    packer.Codes({ 1, 5 });
    OpenedGif gif(
        GifBuilder().Screen(100, 100, kFourColors).ImageOfCodes({ .width = 100, .height = 100 }, packer.Data()));
    EXPECT_EQ(gif.sequence.DecodeNextFrame(), nullptr);
}

TEST(GifHostile, DataLeftBehindTheEndCodeDoNotDisturbTheNextFrame)
{
    Bytes data = EncodeLzw(2, { 1 });
    data.resize(64, 0x2C);
    OpenedGif gif(GifBuilder()
                      .Screen(1, 1, kFourColors)
                      .ImageOfCodes(Rectangle(0, 0, 1, 1, 0), data, 8)
                      .Image(Rectangle(0, 0, 1, 1, 2)));
    EXPECT_EQ(gif.Next(), (Canvas{ kRed565 }));
    EXPECT_EQ(gif.Next(), (Canvas{ kGreen565 }));
}

namespace {

// A file with everything in it: tables, extensions, transparency, interlace, disposal, several sub-blocks.
Bytes RichSample()
{
    GifImage interlaced{ .left = 1, .top = 1, .width = 6, .height = 6, .indices = NoiseIndices(36, 4) };
    interlaced.packed = kInterlace;
    interlaced.localTable = kFourColors;
    return GifBuilder()
        .Screen(8, 8, kFourColors, 1)
        .Extension(0xFE, { 'h', 'i' })
        .Image({ .width = 8, .height = 8, .indices = NoiseIndices(64, 4) })
        .GraphicControl(2, 7, 0)
        .ImageOfCodes(interlaced, EncodeLzw(2, interlaced.indices), 5)
        .Extension(0xFF, Bytes(11, 'x'))
        .GraphicControl(3, 7, 0)
        .Image(Rectangle(2, 2, 3, 3, 2))
        .Trailer()
        .Data();
}

} // namespace

TEST(GifHostile, EveryTruncationHasADefinedResult)
{
    const Bytes whole = RichSample();
    OpenedGif complete(whole);
    const Canvas first = complete.Next();
    unsigned opened = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        OpenedGif gif(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        if (!gif.IsOpen()) {
            EXPECT_LT(size, 32U); // header, screen, table and comment: no image yet
            continue;
        }
        ++opened;
        EXPECT_LE(gif.sequence.FrameCount(), 3U);
        for (int i = 0; i < 8; ++i) {
            const GifFrame* frame = gif.sequence.DecodeNextFrame();
            if (frame != nullptr && !frame->canvas.empty()) {
                EXPECT_EQ(frame->canvas.size(), 64U);
            }
        }
    }
    EXPECT_EQ(opened, whole.size() - 32);
    EXPECT_EQ(first.size(), 64U);
}

TEST(GifHostile, AFileCutInsideItsFirstImageShowsTheRowsThatAreThere)
{
    const GifImage image = Rectangle(0, 0, 4, 4, 1);
    Bytes bytes =
        GifBuilder().Screen(4, 4, kFourColors, 3).ImageOfCodes(image, EncodeLzw(2, NoiseIndices(16, 4))).Data();
    const Canvas whole = OpenedGif(bytes).Next();
    bytes.resize(bytes.size() - 4);
    const Canvas cut = OpenedGif(bytes).Next();
    ASSERT_EQ(cut.size(), 16U);
    EXPECT_TRUE(std::equal(cut.begin(), cut.begin() + 8, whole.begin()));
    EXPECT_EQ(cut[15], kBlue565); // the background
}

TEST(GifHostile, EveryChangedByteHasADefinedResult)
{
    const Bytes whole = RichSample();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const unsigned value : { 0x00U, 0x01U, 0x2CU, 0x3BU, 0x7FU, 0x80U, 0xFFU }) {
            Bytes changed = whole;
            changed[at] = static_cast<std::uint8_t>(value);
            OpenedGif gif(changed);
            const std::size_t pixels = std::size_t{ gif.sequence.Screen().widthPx } * gif.sequence.Screen().heightPx;
            for (int i = 0; gif.IsOpen() && i < 5; ++i) {
                const GifFrame* frame = gif.sequence.DecodeNextFrame();
                if (frame != nullptr && !frame->canvas.empty()) {
                    EXPECT_EQ(frame->canvas.size(), pixels);
                }
            }
        }
    }
}
