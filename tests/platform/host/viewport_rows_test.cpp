#include "platform/host/viewport_rows.h"

#include "platform/screen_size.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <vector>

namespace {

using namespace cardsong::host;

constexpr Turn kTurns[] = { Turn::None, Turn::Quarter, Turn::Half, Turn::ThreeQuarters };

using Picture = std::vector<std::uint16_t>;

Picture Filled(std::uint16_t pixel)
{
    return Picture(static_cast<std::size_t>(kScreenWidthPx) * kScreenHeightPx, pixel);
}

Picture Noise()
{
    Picture picture = Filled(0);
    std::mt19937 random(7);
    for (auto& pixel : picture)
        pixel = static_cast<std::uint16_t>(random());
    return picture;
}

std::uint16_t& At(Picture& picture, LONG x, LONG y)
{
    return picture[static_cast<std::size_t>(y * kScreenWidthPx + x)];
}

// One pixel of the surface.
std::uint16_t Shown(const Picture& picture, const Viewport& viewport, int x, int y)
{
    std::array<std::uint16_t, 1> pixel{};
    ShowRow(picture, viewport, y, x, pixel);
    return pixel[0];
}

// A surface in memory, of 16-bit pixels.
struct Paper {
    int widthPx;
    std::vector<std::uint16_t> pixels;

    Paper(int width, int height, std::uint16_t ground)
        : widthPx(width), pixels(static_cast<std::size_t>(width) * height, ground)
    {
    }
    void Draw(const Picture& picture, const Viewport& viewport, const RECT& part)
    {
        DrawPart(picture, viewport, part, { reinterpret_cast<std::byte*>(pixels.data()), widthPx * 2, 2 },
                 [this](std::span<const std::uint16_t> row, std::byte* target) {
                     ++written;
                     std::memcpy(target, row.data(), row.size_bytes());
                 });
    }
    std::uint16_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y) * widthPx + x]; }
    int written = 0; // rows
};

} // namespace

TEST(ViewportRows, EveryPointShowsThePixelThatATouchOfItMeans)
{
    Picture picture = Noise();
    for (const Turn turn : kTurns) {
        for (const SIZE surface : { SIZE{ 320, 320 }, { 700, 660 } }) {
            const Viewport viewport = FitViewport(static_cast<int>(surface.cx), static_cast<int>(surface.cy), turn);
            Picture row(static_cast<std::size_t>(viewport.widthPx));
            for (int y = viewport.top; y < viewport.top + viewport.heightPx; ++y) {
                ShowRow(picture, viewport, y, viewport.left, row);
                for (int x = 0; x < viewport.widthPx; ++x) {
                    const POINT point = *ToScreenPoint(viewport, viewport.left + x, y);
                    ASSERT_EQ(row[static_cast<std::size_t>(x)], At(picture, point.x, point.y))
                        << "turn " << static_cast<int>(turn) << ": " << x << "," << y;
                }
            }
        }
    }
}

TEST(ViewportRows, ARowMayBeginWithinARepeatedPixel)
{
    Picture picture = Filled(0);
    At(picture, 0, 0) = 1;
    At(picture, 1, 0) = 2;
    At(picture, 2, 0) = 3;
    std::array<std::uint16_t, 5> row{};
    ShowRow(picture, FitViewport(960, 720), 2, 2, row);
    EXPECT_EQ(row, (std::array<std::uint16_t, 5>{ 1, 2, 2, 2, 3 }));
}

TEST(ViewportRows, AtHalfTheSizeFourPixelsBecomeTheirMean)
{
    Picture picture = Filled(0);
    At(picture, 0, 0) = 0xF800;
    At(picture, 1, 0) = 0xF800;
    At(picture, 0, 1) = 0x001F;
    At(picture, 319, 239) = 0x07E0;
    const Viewport half = FitViewport(160, 120);
    EXPECT_EQ(Shown(picture, half, 0, 0), 16 << 11 | 8); // half of red and a quarter of blue, rounded
    EXPECT_EQ(Shown(picture, half, 159, 119), 16 << 5);
    EXPECT_EQ(Shown(picture, half, 1, 0), 0);
}

TEST(ViewportRows, AtThreeQuartersAPixelCountsByWhatOfItIsCovered)
{
    Picture picture = Filled(0);
    for (LONG y = 0; y < kScreenHeightPx; ++y)
        At(picture, 1, y) = 0x07E0; // of the four columns that three show, the second
    const Viewport viewport = FitViewport(240, 180);
    EXPECT_EQ(Shown(picture, viewport, 0, 0), 16 << 5); // a quarter of 63 of four thirds
    EXPECT_EQ(Shown(picture, viewport, 1, 0), 32 << 5); // half
    EXPECT_EQ(Shown(picture, viewport, 2, 0), 0);
}

TEST(ViewportRows, OneColourStaysThatColourAtEverySize)
{
    for (const std::uint16_t colour : { std::uint16_t{ 0xFFFF }, std::uint16_t{ 0x1234 }, std::uint16_t{ 0 } }) {
        const Picture picture = Filled(colour);
        for (const SIZE surface : { SIZE{ 319, 239 }, { 240, 320 }, { 97, 61 }, { 3, 2 }, { 1, 1 } }) {
            for (const Turn turn : kTurns) {
                const Viewport viewport = FitViewport(static_cast<int>(surface.cx), static_cast<int>(surface.cy), turn);
                for (int y = viewport.top; y < viewport.top + viewport.heightPx; ++y) {
                    Picture row(static_cast<std::size_t>(viewport.widthPx));
                    ShowRow(picture, viewport, y, viewport.left, row);
                    ASSERT_EQ(row, Picture(row.size(), colour)) << surface.cx << " x " << surface.cy;
                }
            }
        }
    }
}

// Turning a made-smaller picture and making a turned one smaller are the same.
TEST(ViewportRows, ASmallerPictureIsTheSameAtEveryTurn)
{
    const Picture picture = Noise();
    const Viewport upright = FitViewport(192, 144);
    for (const Turn turn : kTurns) {
        const SIZE size = TurnedSize(turn);
        const Viewport turned = FitViewport(static_cast<int>(size.cx) * 3 / 5, static_cast<int>(size.cy) * 3 / 5, turn);
        for (int y = 0; y < 144; ++y) {
            for (int x = 0; x < 192; ++x) {
                int turnedX = x;
                int turnedY = y;
                if (turn == Turn::Quarter) {
                    turnedX = 143 - y;
                    turnedY = x;
                } else if (turn == Turn::Half) {
                    turnedX = 191 - x;
                    turnedY = 143 - y;
                } else if (turn == Turn::ThreeQuarters) {
                    turnedX = y;
                    turnedY = 191 - x;
                }
                ASSERT_EQ(Shown(picture, turned, turnedX, turnedY), Shown(picture, upright, x, y))
                    << "turn " << static_cast<int>(turn) << ": " << x << "," << y;
            }
        }
    }
}

TEST(ViewportRows, DrawingAPartLeavesTheRestAlone)
{
    const Picture picture = Filled(1);
    const Viewport viewport = FitViewport(660, 490); // 10, 5
    Paper paper(660, 490, 7);
    paper.Draw(picture, viewport, ToSurface(viewport, { 0, 10, kScreenWidthPx, 12 }));
    for (int y = 0; y < 490; ++y) {
        for (int x = 0; x < 660; ++x) {
            const bool isDrawn = x >= 10 && x < 650 && y >= 25 && y < 29;
            ASSERT_EQ(paper.At(x, y), isDrawn ? 1 : 7) << x << "," << y;
        }
    }
}

TEST(ViewportRows, LinesThatAreAlikeAreWrittenOnce)
{
    const Picture picture = Noise();
    const Viewport viewport = FitViewport(720, 970, Turn::Quarter);
    Paper paper(720, 970, 0);
    paper.Draw(picture, viewport, { 0, 5, 720, 965 });
    EXPECT_EQ(paper.written, 320);
    for (int y = 5; y < 965; ++y) {
        Picture row(720);
        ShowRow(picture, viewport, y, 0, row);
        ASSERT_TRUE(std::equal(row.begin(), row.end(), paper.pixels.begin() + static_cast<std::ptrdiff_t>(y) * 720));
    }
}

TEST(ViewportRows, APartMayBeginWithinARepeatedLine)
{
    Picture picture = Filled(0);
    At(picture, 0, 0) = 1;
    At(picture, 0, 1) = 2;
    Paper paper(960, 720, 7);
    paper.Draw(picture, FitViewport(960, 720), { 0, 1, 1, 4 });
    EXPECT_EQ(paper.At(0, 0), 7);
    EXPECT_EQ(paper.At(0, 1), 1);
    EXPECT_EQ(paper.At(0, 2), 1);
    EXPECT_EQ(paper.At(0, 3), 2);
    EXPECT_EQ(paper.At(0, 4), 7);
}

TEST(ViewportRows, AnEmptyPartDrawsNothing)
{
    Paper paper(320, 240, 7);
    paper.Draw(Filled(1), FitViewport(320, 240), { 5, 5, 5, 9 });
    paper.Draw(Filled(1), FitViewport(320, 240), { 5, 5, 9, 5 });
    paper.Draw(Filled(1), FitViewport(0, 0), { 0, 0, 0, 0 });
    EXPECT_EQ(paper.written, 0);
}

TEST(ViewportRows, WideningFillsTheLowBitsOfEveryColour)
{
    const std::array<std::uint16_t, 4> row = { 0xF81F, 0x07E0, 0x0821, 0xFFFF };
    std::array<std::uint32_t, 4> wide{};
    WidenRow(row, { 16, 8, 0 }, wide);
    EXPECT_EQ(wide, (std::array<std::uint32_t, 4>{ 0xFF00FF, 0x00FF00, 0x080408, 0xFFFFFF }));
    WidenRow(row, { 0, 8, 16 }, wide);
    EXPECT_EQ(wide[2], 0x080408U);
}
