#include "platform/ce.h"
#include "tests/gif/gif_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace cardsong::test;
using namespace std::string_view_literals;

// Two pixels of two colours, 24 bits, rows of four bytes, the lower row first.
constexpr auto kTwoPixels = "BM\x3E\0\0\0\0\0\0\0\x36\0\0\0"             // file header: size 62, pixels at 54
                            "\x28\0\0\0\x02\0\0\0\x01\0\0\0\x01\0\x18\0" // 2 x 1, one plane, 24 bits
                            "\0\0\0\0\x08\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                            "\0\0\xFF\xFF\0\0\0\0"sv; // red, blue

// A GIF of one pixel, white.
constexpr auto kOneWhitePixel = "GIF89a\x01\0\x01\0\x80\0\0\xFF\xFF\xFF\0\0\0"
                                "\x2C\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0\x3B"sv;

COLORREF PixelOf(HBITMAP bitmap, int x, int y)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    const COLORREF color = GetPixel(dc, x, y);
    DeleteDC(dc);
    return color;
}

TEST(ImageFile, AGifBecomesABitmapOfTheScreensFormat)
{
    const ScratchDevice device;
    device.WriteFile("user/scratch/zone.gif", kOneWhitePixel);
    const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("ZONE.gif")).c_str());
    ASSERT_NE(bitmap, nullptr);
    BITMAP record{};
    GetObjectW(bitmap, sizeof(record), &record);
    EXPECT_EQ(record.bmWidth, 1);
    EXPECT_EQ(record.bmHeight, 1);
    EXPECT_EQ(record.bmBitsPixel, 16);
    EXPECT_EQ(PixelOf(bitmap, 0, 0), RGB(255, 255, 255));
    EXPECT_TRUE(DeleteObject(bitmap));
}

// The pixels of one row of a bitmap made from `gif`.
std::vector<COLORREF> FirstRow(const std::string& gif)
{
    const ScratchDevice device;
    device.WriteFile("user/scratch/a.gif", gif);
    const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("a.gif")).c_str());
    BITMAP record{};
    GetObjectW(bitmap, sizeof(record), &record);
    std::vector<COLORREF> row;
    for (int x = 0; x < record.bmWidth; ++x)
        row.push_back(PixelOf(bitmap, x, 0));
    DeleteObject(bitmap);
    return row;
}

TEST(ImageFile, RowsComeInTheirOrder)
{
    const ScratchDevice device;
    const GifImage image{ .width = 1, .height = 3, .indices = { 1, 2, 0 } };
    device.WriteFile("user/scratch/a.gif",
                     GifBuilder().Screen(1, 3, { kBlue, kRed, kGreen, kWhite }).Image(image).Trailer().Text());
    const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("a.gif")).c_str());
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(PixelOf(bitmap, 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(PixelOf(bitmap, 0, 1), RGB(0, 255, 0));
    EXPECT_EQ(PixelOf(bitmap, 0, 2), RGB(0, 0, 255));
    EXPECT_TRUE(DeleteObject(bitmap));
}

constexpr COLORREF kRedColor = RGB(255, 0, 0);
constexpr COLORREF kGreenColor = RGB(0, 255, 0);

TEST(ImageFile, AGifsFirstFrameStandsOnItsScreenTheRestIsBlack)
{
    const auto gif = GifBuilder().Screen(4, 1, { kBlue, kRed, kGreen, kWhite });
    const GifImage image{ .left = 1, .width = 2, .height = 1, .indices = { 1, 2 } };
    const GifImage later{ .width = 1, .height = 1, .indices = { 3 } };
    EXPECT_EQ(FirstRow(GifBuilder(gif).Image(image).Image(later).Trailer().Text()),
              (std::vector<COLORREF>{ 0, kRedColor, kGreenColor, 0 }));
}

TEST(ImageFile, ASeeThroughPixelIsBlack)
{
    const GifImage image{ .width = 2, .height = 1, .indices = { 1, 2 } };
    const auto gif =
        GifBuilder().Screen(2, 1, { kBlue, kRed, kGreen, kWhite }).GraphicControl(0, 0, 2).Image(image).Trailer();
    EXPECT_EQ(FirstRow(gif.Text()), (std::vector<COLORREF>{ kRedColor, 0 }));
}

TEST(ImageFile, AGifsFrameIsCutToItsScreen)
{
    const GifImage image{ .left = 1, .width = 3, .height = 2, .indices = { 1, 2, 1, 2, 1, 2 } };
    const auto gif = GifBuilder().Screen(2, 1, { kBlue, kRed, kGreen, kWhite }).Image(image).Trailer();
    EXPECT_EQ(FirstRow(gif.Text()), (std::vector<COLORREF>{ 0, kRedColor }));
}

TEST(ImageFile, OtherFormatsAreReadToo)
{
    const ScratchDevice device;
    device.WriteFile("user/scratch/a.bmp", kTwoPixels);
    const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("a.bmp")).c_str());
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(PixelOf(bitmap, 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(PixelOf(bitmap, 1, 0), RGB(0, 0, 255));
    DeleteObject(bitmap);
}

TEST(ImageFile, NoPathAndNoFileGiveNoBitmap)
{
    const ScratchDevice device;
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, nullptr), nullptr);
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, TEXT("")), nullptr);
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, device.Path(TEXT("missing.gif")).c_str()), nullptr);
}

TEST(ImageFile, NeedsNoApartmentOfAKindOnTheCallersThread)
{
    constexpr DWORD kApartmentThreaded = 2;
    const ScratchDevice device;
    device.WriteFile("user/scratch/a.gif", kOneWhitePixel);
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, kApartmentThreaded)));
    const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("a.gif")).c_str());
    EXPECT_NE(bitmap, nullptr);
    DeleteObject(bitmap);
    CoUninitialize();
}

TEST(ImageFile, EveryTruncationOfAGifEndsWell)
{
    const ScratchDevice device;
    for (std::size_t size = 0; size < kOneWhitePixel.size(); ++size) {
        device.WriteFile("user/scratch/cut.gif", kOneWhitePixel.substr(0, size));
        const HBITMAP bitmap = CreateBitmapFromImageFile(nullptr, device.Path(TEXT("cut.gif")).c_str());
        EXPECT_EQ(bitmap != nullptr, DeleteObject(bitmap) != FALSE) << size;
    }
}

TEST(ImageFile, APictureWiderThanTheLimitIsRefusedByItsHeader)
{
    const ScratchDevice device;
    std::string wide(kOneWhitePixel);
    wide[6] = '\x01'; // 4097 pixels
    wide[7] = '\x10';
    device.WriteFile("user/scratch/wide.gif", wide);
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, device.Path(TEXT("wide.gif")).c_str()), nullptr);
}

} // namespace
