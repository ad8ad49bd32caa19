#include "platform/imaging/gif_animation.h"

#include "tests/gif/gif_builder.h"
#include "tests/platform/gdi/canvas.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;
using cardsong::imaging::GifAnimation;
using Words = std::vector<std::uint16_t>;

constexpr COLORREF kKey = RGB(255, 0, 255);
constexpr std::uint16_t kKey565 = kMagenta565;
const std::vector<GifColor> kColors = { kBlack, kRed, kGreen, kBlue };
enum : std::uint8_t { Black, Red, Green, Blue };

// A row of pixels from `left` on.
GifImage Row(std::uint16_t left, const Bytes& indices)
{
    return { .left = left, .width = static_cast<std::uint16_t>(indices.size()), .height = 1, .indices = indices };
}

class GifFrames : public testing::Test {
protected:
    std::unique_ptr<GifAnimation> Open(const GifBuilder& gif)
    {
        m_device.WriteFile("user/scratch/a.gif", gif.Text());
        auto animation = std::make_unique<GifAnimation>(kKey);
        return animation->Open(m_device.Path(TEXT("a.gif")).c_str()) ? std::move(animation) : nullptr;
    }
    // The first row after each of `count` frames.
    std::vector<Words> Rows(const GifBuilder& gif, int count)
    {
        std::vector<Words> rows;
        const auto animation = Open(gif);
        EXPECT_NE(animation, nullptr);
        for (int i = 0; animation && i < count; ++i) {
            EXPECT_TRUE(animation->ShowNextFrame());
            BITMAP record{};
            GetObjectW(animation->Picture(), sizeof record, &record);
            const auto* row = static_cast<const std::uint16_t*>(record.bmBits);
            rows.emplace_back(row, row + record.bmWidth);
        }
        return rows;
    }

    ScratchDevice m_device;
};

TEST_F(GifFrames, TheFirstStandsOnTheKeyColour)
{
    const auto gif = GifBuilder().Screen(4, 1, kColors).Image(Row(1, { Red, Blue })).Trailer();
    EXPECT_EQ(Rows(gif, 1), (std::vector<Words>{ { kKey565, kRed565, kBlue565, kKey565 } }));
}

TEST_F(GifFrames, AreLaidOnWhatWasThereAndLeaveWhatIsSeeThrough)
{
    for (const unsigned disposal : { 0U, 1U }) {
        const auto gif = GifBuilder()
                             .Screen(3, 1, kColors)
                             .GraphicControl(disposal)
                             .Image(Row(0, { Red, Red, Red }))
                             .GraphicControl(disposal, 0, Green)
                             .Image(Row(1, { Green, Blue }))
                             .Trailer();
        EXPECT_EQ(Rows(gif, 2)[1], (Words{ kRed565, kRed565, kBlue565 })) << disposal;
    }
}

TEST_F(GifFrames, DisposedToTheBackgroundLeaveTheKeyColour)
{
    const auto gif = GifBuilder()
                         .Screen(3, 1, kColors)
                         .Image(Row(0, { Red, Red, Red }))
                         .GraphicControl(2)
                         .Image(Row(1, { Green }))
                         .Image(Row(2, { Blue }))
                         .Trailer();
    EXPECT_EQ(Rows(gif, 3),
              (std::vector<Words>{
                  { kRed565, kRed565, kRed565 }, { kRed565, kGreen565, kRed565 }, { kRed565, kKey565, kBlue565 } }));
}

TEST_F(GifFrames, DisposedToThePreviousLeaveWhatWasBeforeThem)
{
    const auto gif = GifBuilder()
                         .Screen(3, 1, kColors)
                         .Image(Row(0, { Red, Red, Red }))
                         .GraphicControl(3)
                         .Image(Row(0, { Green, Green }))
                         .Image(Row(2, { Blue }))
                         .Trailer();
    EXPECT_EQ(Rows(gif, 3),
              (std::vector<Words>{
                  { kRed565, kRed565, kRed565 }, { kGreen565, kGreen565, kRed565 }, { kRed565, kRed565, kBlue565 } }));
}

TEST_F(GifFrames, StartAnewOnAnEmptyPictureAfterTheLast)
{
    const auto gif = GifBuilder().Screen(2, 1, kColors).Image(Row(0, { Red })).Image(Row(1, { Green })).Trailer();
    EXPECT_EQ(Rows(gif, 3), (std::vector<Words>{ { kRed565, kKey565 }, { kRed565, kGreen565 }, { kRed565, kKey565 } }));
}

TEST_F(GifFrames, AreCutToThePicture)
{
    const auto gif = GifBuilder()
                         .Screen(2, 1, kColors)
                         .GraphicControl(2)
                         .Image(Row(1, { Red, Green, Blue }))
                         .Image(Row(9, { Blue }))
                         .Trailer();
    EXPECT_EQ(Rows(gif, 2), (std::vector<Words>{ { kKey565, kRed565 }, { kKey565, kKey565 } }));
}

TEST_F(GifFrames, StayForTheirDelayThoseOfNearlyNoneForATenthOfASecond)
{
    const auto gif = GifBuilder()
                         .Screen(1, 1, kColors)
                         .GraphicControl(0, 25)
                         .Image(Row(0, { Red }))
                         .GraphicControl(0, 6)
                         .Image(Row(0, { Red }))
                         .GraphicControl(0, 5)
                         .Image(Row(0, { Green }))
                         .Image(Row(0, { Blue }))
                         .Trailer();
    const auto animation = Open(gif);
    ASSERT_NE(animation, nullptr);
    for (const UINT delayMs : { 250U, 60U, 100U, 100U }) {
        ASSERT_TRUE(animation->ShowNextFrame());
        EXPECT_EQ(animation->DelayMs(), delayMs);
    }
    EXPECT_TRUE(animation->IsLastFrame());
}

TEST_F(GifFrames, OfAPictureTooLargeAreNotRead)
{
    const auto sized = [](unsigned width, unsigned height) {
        return GifBuilder().Screen(width, height, kColors).Image(Row(0, { Red })).Trailer();
    };
    EXPECT_NE(Open(sized(4096, 256)), nullptr);
    EXPECT_EQ(Open(sized(4096, 257)), nullptr);
    EXPECT_EQ(Open(sized(4097, 1)), nullptr);
    EXPECT_EQ(Open(sized(0, 1)), nullptr);
    EXPECT_EQ(Open(sized(1, 0)), nullptr);
}

TEST_F(GifFrames, TooLargeThemselvesEndTheAnimation)
{
    const auto gif =
        GifBuilder().Screen(1, 1, kColors).Image(Row(0, { Red })).Image(Row(0, Bytes(4097, Green))).Trailer();
    const auto animation = Open(gif);
    ASSERT_NE(animation, nullptr);
    EXPECT_TRUE(animation->ShowNextFrame());
    EXPECT_FALSE(animation->ShowNextFrame());
}

TEST_F(GifFrames, OfEveryTruncationEndWell)
{
    const std::string whole = GifBuilder()
                                  .Screen(2, 1, kColors)
                                  .GraphicControl(3, 2, Blue)
                                  .Image(Row(0, { Red, Blue }))
                                  .GraphicControl(2)
                                  .Image(Row(1, { Green }))
                                  .Trailer()
                                  .Text();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto animation = Open(GifBuilder(whole.substr(0, size)));
        if (!animation)
            continue;
        EXPECT_GE(animation->FrameCount(), 1u) << size;
        EXPECT_LE(animation->FrameCount(), 2u) << size;
        for (int i = 0; i < 4 && animation->ShowNextFrame(); ++i)
            EXPECT_GE(animation->DelayMs(), 60u) << size;
    }
}

class GifPlay : public testing::Test {
protected:
    GifPlay() { m_target.Fill(kWhite565); }
    ~GifPlay() override { StopGifAnim(); }

    // The name keeps a file that is still playing from being written over.
    BOOL Play(const std::string& gif, int loops = -1, const std::string& name = "a.gif")
    {
        m_device.WriteFile("user/scratch/" + name, gif);
        const auto path = m_device.Path(WString(name.begin(), name.end()));
        return PlayGifAnim(path.c_str(), m_target.Dc(), &kPlace, nullptr, 0xFFFFFFFF, loops, kKey);
    }
    // Waits for another thread to draw this colour, for five seconds at most.
    bool Comes(COLORREF color) const
    {
        const DWORD start = GetTickCount();
        while (GetPixel(m_target.Dc(), 1, 1) != color) {
            if (GetTickCount() - start > 5000)
                return false;
            Sleep(1);
        }
        return true;
    }
    static std::string RedThenGreen()
    {
        return GifBuilder()
            .Screen(2, 1, kColors)
            .GraphicControl(0, 2)
            .Image(Row(0, { Red }))
            .GraphicControl(0, 2)
            .Image(Row(0, { Green }))
            .Trailer()
            .Text();
    }

    static constexpr RECT kPlace = { 1, 1, 3, 2 };
    ScratchDevice m_device;
    Canvas m_target{ 4, 2 };
};

TEST_F(GifPlay, DrawsTheFirstFrameAtOnceAndLeavesTheKeyOut)
{
    EXPECT_TRUE(Play(RedThenGreen()));
    StopGifAnim();
    const std::uint16_t first = m_target.At(1, 1);
    EXPECT_TRUE(first == kRed565 || first == kGreen565) << first;
    m_target.At(1, 1) = kWhite565;
    EXPECT_EQ(m_target.Pixels(), Words(8, kWhite565));
}

TEST_F(GifPlay, GoesOnForEver)
{
    EXPECT_TRUE(Play(RedThenGreen()));
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(Comes(RGB(0, 255, 0)));
        EXPECT_TRUE(Comes(RGB(255, 0, 0)));
    }
}

TEST_F(GifPlay, EndsWithTheLastFrameOfTheLastLoop)
{
    EXPECT_TRUE(Play(RedThenGreen(), 1));
    EXPECT_TRUE(Comes(RGB(0, 255, 0)));
    EXPECT_TRUE(StopGifAnim());
    EXPECT_EQ(m_target.At(1, 1), kGreen565);
}

TEST_F(GifPlay, DrawsNothingAfterTheStop)
{
    EXPECT_TRUE(Play(RedThenGreen()));
    EXPECT_TRUE(StopGifAnim());
    EXPECT_FALSE(StopGifAnim());
}

TEST_F(GifPlay, TakesThePlaceOfTheOneBefore)
{
    EXPECT_TRUE(Play(RedThenGreen()));
    EXPECT_TRUE(Play(PlainGif(1, 1, kBlue), -1, "B.GIF"));
    EXPECT_EQ(m_target.At(1, 1), kBlue565);
    EXPECT_TRUE(StopGifAnim());
    EXPECT_EQ(m_target.At(1, 1), kBlue565);
    EXPECT_FALSE(StopGifAnim());
}

TEST_F(GifPlay, RefusesWhatItCannotRead)
{
    EXPECT_FALSE(Play(""));
    EXPECT_FALSE(Play("no picture at all"));
    EXPECT_FALSE(Play(GifBuilder().Screen(2, 1, kColors).Trailer().Text()));
    const auto missing = m_device.Path(TEXT("missing.gif"));
    EXPECT_FALSE(PlayGifAnim(missing.c_str(), m_target.Dc(), &kPlace, nullptr, 0, -1, kKey));
    EXPECT_FALSE(PlayGifAnim(nullptr, m_target.Dc(), &kPlace, nullptr, 0, -1, kKey));
    EXPECT_FALSE(StopGifAnim());
    EXPECT_EQ(m_target.Pixels(), Words(8, kWhite565));
}

TEST_F(GifPlay, RefusesToDrawNowhere)
{
    EXPECT_TRUE(Play(PlainGif(1, 1, kBlue)));
    const auto path = m_device.Path(TEXT("a.gif"));
    EXPECT_FALSE(PlayGifAnim(path.c_str(), nullptr, &kPlace, nullptr, 0, -1, kKey));
    EXPECT_FALSE(PlayGifAnim(path.c_str(), m_target.Dc(), nullptr, nullptr, 0, -1, kKey));
    EXPECT_FALSE(StopGifAnim());
}

} // namespace
