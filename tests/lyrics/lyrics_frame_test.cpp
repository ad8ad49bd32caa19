#include "lyrics/lyrics_frame.h"

#include "tests/gui/skin_fixture.h"
#include "tests/lyrics/lyric_lines.h"

#include <vector>

namespace {

using namespace cardsong::test;

constexpr RECT kArea = { 0, 0, 250, 70 };
constexpr RECT kAll = { 0, 0, 320, 240 };
constexpr COLORREF kAround = RGB(0, 0, 255);
constexpr std::uint16_t kAround565 = 0x001F;
constexpr std::uint16_t kTextWhite = 0xFFFF;
constexpr std::uint16_t kBlack = 0;

class LyricsFrameTest : public ::testing::Test {
protected:
    LyricsFrameTest()
    {
        skinColor = skin.Add("gui_musicplayer_background", 320, 240);
        background.Load();
    }
    void Draw(const RECT& area, const std::optional<PlacedText>& centred, const std::vector<PlacedText>& others)
    {
        LOGFONTW description{};
        description.lfHeight = -24;
        const UniqueFont font(CreateFontIndirectW(&description));
        const Picture like;
        frame.Draw(like.Context(), area, background, font.Get(), centred, others);
    }
    // The columns in which `picture` has text, as its first and last.
    static std::pair<int, int> TextColumns(const Picture& picture)
    {
        std::pair<int, int> columns{ -1, -1 };
        for (int x = 0; x < 320; ++x) {
            if (picture.Count(kTextWhite, { x, 0, x + 1, 240 }) == 0)
                continue;
            columns.first = columns.first < 0 ? x : columns.first;
            columns.second = x;
        }
        return columns;
    }

    SkinDevice skin;
    LyricsStripBackground background;
    LyricsFrame frame;
    std::uint16_t skinColor = 0;
};

TEST_F(LyricsFrameTest, WithoutADrawingThereIsNothingToCopy)
{
    const Picture picture(kAround);
    EXPECT_FALSE(frame.IsDrawn());
    frame.CopyTo(picture.Context());
    EXPECT_EQ(picture.Count(kAround565, kAll), 320 * 240);
}

TEST_F(LyricsFrameTest, WithoutTextItIsTheBackgroundInTheSizeOfTheArea)
{
    Draw(kArea, {}, {});
    EXPECT_TRUE(frame.IsDrawn());
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_EQ(picture.Count(skinColor, kArea), 250 * 70);
    EXPECT_EQ(picture.Count(kAround565, kAll), 320 * 240 - 250 * 70);
}

TEST_F(LyricsFrameTest, TextIsWhiteAndBeginsAtTheLeftOfItsPlace)
{
    Draw(kArea, {}, { { TEXT("||||"), { 100, 0, 200, 70 } } });
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    const auto [first, last] = TextColumns(picture);
    EXPECT_GE(first, 100);
    EXPECT_LE(first, 106);
    EXPECT_LE(last, 199);
    EXPECT_EQ(picture.Count(kTextWhite, { 0, 45, 250, 70 }), 0); // it stands at the top
}

TEST_F(LyricsFrameTest, TheFirstTextStandsInTheMiddleOfItsPlace)
{
    Draw(kArea, PlacedText{ TEXT("||||"), { 0, 0, 200, 70 } }, {});
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    const auto [first, last] = TextColumns(picture);
    EXPECT_NEAR((first + last) / 2, 100, 4);
}

TEST_F(LyricsFrameTest, TextIsCutAtItsPlaceAndAtTheStrip)
{
    const WString wide(400, TEXT('#'));
    Draw(kArea, {}, { { wide, { 60, 0, 120, 70 } }, { wide, { 200, 0, 5000, 70 } } });
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_GT(picture.Count(kTextWhite, { 60, 0, 120, 70 }), 50);
    EXPECT_GT(picture.Count(kTextWhite, { 200, 0, 250, 70 }), 50);
    EXPECT_EQ(picture.Count(kTextWhite, { 0, 0, 60, 70 }), 0);
    EXPECT_EQ(picture.Count(kTextWhite, { 120, 0, 200, 70 }), 0);
    EXPECT_EQ(picture.Count(kTextWhite, { 250, 0, 320, 70 }), 0);
}

TEST_F(LyricsFrameTest, PlacesAreMovedByTheCornerOfTheArea)
{
    const std::vector<PlacedText> text = { { TEXT("||||"), { 100, 20, 200, 60 } } };
    Draw(kArea, {}, text);
    const Picture whole(kAround);
    frame.CopyTo(whole.Context());
    Draw({ 30, 10, 230, 60 }, {}, text);
    const Picture moved(kAround);
    frame.CopyTo(moved.Context());
    EXPECT_EQ(TextColumns(moved).first, TextColumns(whole).first - 30);
    EXPECT_EQ(moved.Count(kAround565, kAll), 320 * 240 - 200 * 50);
    for (int y = 0; y < 50; ++y)
        EXPECT_EQ(moved.Count(kTextWhite, { 0, y, 200, y + 1 }), whole.Count(kTextWhite, { 30, y + 10, 230, y + 11 }))
            << y;
}

TEST_F(LyricsFrameTest, AnEmptyAreaHasNoPicture)
{
    Draw(kArea, {}, {});
    Draw({}, {}, { { TEXT("x"), kArea } });
    EXPECT_FALSE(frame.IsDrawn());
    Draw(kArea, {}, {});
    EXPECT_TRUE(frame.IsDrawn());
}

TEST_F(LyricsFrameTest, TheTextBeforeIsGone)
{
    Draw(kArea, {}, { { TEXT("####"), kArea } });
    Draw(kArea, {}, {});
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_EQ(picture.Count(skinColor, kArea), 250 * 70);
}

TEST_F(LyricsFrameTest, WithoutASkinTheTextStandsOnBlackAndTheOneBeforeIsGoneToo)
{
    background.Free();
    Draw(kArea, {}, { { TEXT("####"), kArea } });
    Draw(kArea, {}, {});
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_EQ(picture.Count(kBlack, kArea), 250 * 70);
}

TEST_F(LyricsFrameTest, AForgottenPictureIsNotCopied)
{
    Draw(kArea, {}, {});
    frame.Clear();
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_EQ(picture.Count(kAround565, kAll), 320 * 240);
}

TEST_F(LyricsFrameTest, AnAmpersandIsALetterLikeAnyOther)
{
    Draw(kArea, {}, { { TEXT("&&&&"), kArea } });
    const Picture picture(kAround);
    frame.CopyTo(picture.Context());
    EXPECT_GT(picture.Count(kTextWhite, kArea), 40);
}

TEST(ShownPart, ATextOfAThousandUnitsIsShownWhole)
{
    const WString text(1000, TEXT('x'));
    EXPECT_EQ(ShownPart(text), text);
    EXPECT_EQ(ShownPart(TEXT("abc")), TEXT("abc"));
    EXPECT_EQ(ShownPart({}), WStringView());
}

TEST(ShownPart, ALongerOneIsCutThereOrBeforeAPair)
{
    WString text(1001, TEXT('x'));
    EXPECT_EQ(ShownPart(text).size(), 1000U);
    text[999] = 0xD840;
    text[1000] = 0xDC00;
    EXPECT_EQ(ShownPart(text).size(), 999U);
    text[999] = 0xDC00;
    EXPECT_EQ(ShownPart(text).size(), 1000U);
}

TEST(StripBackground, IsThePartOfTheSkinThatTheStripCovers)
{
    // Red but for the part of 284 by 80 pixels at 34, 45.
    SkinDevice skin;
    GifImage image{ .width = 320, .height = 240, .indices = Bytes(320 * 240, 0) };
    for (std::ptrdiff_t y = 45; y < 125; ++y)
        std::fill_n(image.indices.begin() + y * 320 + 34, 284, std::uint8_t{ 1 });
    skin.Device().WriteFile("user/Windows/gui_musicplayer_background.gif",
                            GifBuilder().Screen(320, 240, { kRed, kGreen }).Image(image).Trailer().Text());
    LyricsStripBackground background;
    background.Load();
    const Picture picture(kAround);
    background.Draw(picture.Context());
    EXPECT_EQ(picture.Count(kGreen565, { 0, 0, 284, 80 }), 284 * 80);
    EXPECT_EQ(picture.Count(kAround565, kAll), 320 * 240 - 284 * 80);
}

TEST(StripBackground, IsNothingWithoutThePicture)
{
    SkinDevice skin;
    LyricsStripBackground background;
    background.Load();
    const Picture picture(kAround);
    background.Draw(picture.Context());
    EXPECT_EQ(picture.Count(kAround565, kAll), 320 * 240);
}

} // namespace
