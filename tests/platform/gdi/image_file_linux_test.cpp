// Picture files of four formats that say more than they hold, or hold less than they say. The memory that a refused
// picture takes is measured.
#include "platform/ce.h"
#include "tests/gif/gif_builder.h"
#include "tests/platform/scratch_device.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

namespace {

using namespace cardsong::test;

std::string Number(std::uint32_t number, int bytes, bool isBigEndian)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text.push_back(static_cast<char>(number >> (8 * (isBigEndian ? bytes - 1 - i : i))));
    return text;
}
std::string Big(std::uint32_t number, int bytes)
{
    return Number(number, bytes, true);
}
std::string Little(std::uint32_t number, int bytes)
{
    return Number(number, bytes, false);
}

// Of a PNG: with the sum of its bytes, or the reader stops there.
std::string PngChunk(const std::string& typeAndData)
{
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : typeAndData) {
        sum ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
    }
    return Big(static_cast<std::uint32_t>(typeAndData.size() - 4), 4) + typeAndData + Big(~sum, 4);
}

std::string Png(std::uint32_t width, std::uint32_t height)
{
    const std::string header =
        Big(width, 4) + Big(height, 4) + std::string("\x08\x02\x00\x00\x00", 5); // 8 bits, colours
    return "\x89PNG\r\n\x1A\n" + PngChunk("IHDR" + header) + PngChunk("IDAT" + std::string(20, 'x')) + PngChunk("IEND");
}

std::string JpegSegment(const std::string& marker, const std::string& data)
{
    return marker + Big(static_cast<std::uint32_t>(data.size() + 2), 2) + data;
}

// `frame`: \xC0 baseline, \xC2 progressive.
std::string Jpeg(std::uint32_t width, std::uint32_t height, char frame)
{
    const std::string components("\x03\x01\x11\x00\x02\x11\x00\x03\x11\x00", 10);
    const std::string scan("\x03\x01\x00\x02\x00\x03\x00\x00\x3F\x00", 10);
    return "\xFF\xD8" + JpegSegment(std::string("\xFF") + frame, "\x08" + Big(height, 2) + Big(width, 2) + components) +
           JpegSegment("\xFF\xDA", scan) + std::string(100, '\x55') + "\xFF\xD9";
}

std::string Bmp(std::uint32_t width, std::uint32_t height)
{
    const std::string info = Little(40, 4) + Little(width, 4) + Little(height, 4) + Little(1, 2) + Little(24, 2) +
                             std::string(4, '\0') + std::string(20, '\0');
    return "BM" + Little(0xFFFFFFFF, 4) + Little(0, 4) + Little(54, 4) + info + std::string(100, 'x');
}

std::string Gif(std::uint32_t width, std::uint32_t height)
{
    return GifBuilder()
        .Screen(width, height, { kBlack, kRed })
        .Image({ .width = 1, .height = 1, .indices = { 1 } })
        .Trailer()
        .Text();
}

// The most address space that this process has ever had, in megabytes.
long PeakMb()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmPeak:"))
            return std::stol(line.substr(7)) / 1024;
    }
    return 0;
}

class ImageFiles : public testing::Test {
protected:
    HBITMAP Load(const std::string& file) const
    {
        m_device.WriteFile("user/scratch/a.img", file);
        return CreateBitmapFromImageFile(nullptr, m_device.Path(TEXT("a.img")).c_str());
    }
    // 6 x 5 pixels, each of another colour, in a format by the library's name.
    static std::string Written(const char* format)
    {
        GdkPixbuf* const picture = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 6, 5);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 6; ++x) {
                guchar* const pixel = gdk_pixbuf_get_pixels(picture) + y * gdk_pixbuf_get_rowstride(picture) + x * 3;
                pixel[0] = static_cast<guchar>(x * 40);
                pixel[1] = static_cast<guchar>(y * 50);
                pixel[2] = 200;
            }
        }
        gchar* bytes = nullptr;
        gsize size = 0;
        EXPECT_TRUE(gdk_pixbuf_save_to_buffer(picture, &bytes, &size, format, nullptr, nullptr));
        std::string file(bytes, size);
        g_free(bytes);
        g_object_unref(picture);
        return file;
    }

    ScratchDevice m_device;
};

TEST_F(ImageFiles, OfManyPixelsAreRefusedBeforeTheyTakeMemory)
{
    struct Case {
        const char* name;
        std::string file;
    };
    EXPECT_EQ(Load(Written("png").substr(0, 30)), nullptr); // the library's own first needs
    for (const Case& given :
         { Case{ "PNG", Png(20'000, 20'000) }, Case{ "PNG, the most", Png(0x7FFFFFFF, 0x7FFFFFFF) },
           Case{ "JPEG", Jpeg(20'000, 20'000, '\xC0') }, Case{ "JPEG, the most", Jpeg(0xFFFF, 0xFFFF, '\xC0') },
           Case{ "progressive JPEG", Jpeg(20'000, 20'000, '\xC2') }, Case{ "BMP", Bmp(20'000, 20'000) },
           Case{ "BMP, the most", Bmp(0x7FFFFFFF, 0x7FFFFFFF) },
           Case{ "BMP upside down", Bmp(20'000, static_cast<std::uint32_t>(-20'000)) },
           Case{ "BMP, negative", Bmp(0x80000000, 0x80000000) }, Case{ "GIF", Gif(20'000, 20'000) },
           Case{ "GIF, the most", Gif(0xFFFF, 0xFFFF) } }) {
        const long before = PeakMb();
        EXPECT_EQ(Load(given.file), nullptr) << given.name;
        EXPECT_LT(PeakMb() - before, 32) << given.name;
    }
}

TEST_F(ImageFiles, OfNoPixelsAreRefused)
{
    for (const auto& file :
         { Png(0, 5), Png(5, 0), Jpeg(0, 5, '\xC0'), Jpeg(5, 0, '\xC0'), Bmp(0, 5), Bmp(5, 0), Gif(0, 5), Gif(5, 0) })
        EXPECT_EQ(Load(file), nullptr) << file.substr(0, 4);
}

TEST_F(ImageFiles, AreReadUpTo4096PixelsASide)
{
    for (const char* format : { "png", "jpeg", "bmp" }) {
        for (const int side : { 4096, 4097 }) {
            for (const bool isWide : { true, false }) {
                GdkPixbuf* const picture =
                    gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, isWide ? side : 1, isWide ? 1 : side);
                gdk_pixbuf_fill(picture, 0xFF0000FF);
                gchar* bytes = nullptr;
                gsize size = 0;
                ASSERT_TRUE(gdk_pixbuf_save_to_buffer(picture, &bytes, &size, format, nullptr, nullptr));
                const HBITMAP bitmap = Load(std::string(bytes, size));
                EXPECT_EQ(bitmap != nullptr, side == 4096) << format << ' ' << side << ' ' << isWide;
                DeleteObject(bitmap);
                g_free(bytes);
                g_object_unref(picture);
            }
        }
    }
}

TEST_F(ImageFiles, OfEachFormatAreReadAsTheyWereWritten)
{
    for (const char* format : { "png", "bmp", "jpeg" }) {
        const HBITMAP bitmap = Load(Written(format));
        ASSERT_NE(bitmap, nullptr) << format;
        BITMAP record{};
        GetObjectW(bitmap, sizeof record, &record);
        EXPECT_EQ(record.bmWidth, 6);
        EXPECT_EQ(record.bmHeight, 5);
        const HDC context = CreateCompatibleDC(nullptr);
        SelectObject(context, bitmap);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 6; ++x) {
                const COLORREF color = GetPixel(context, x, y);
                const int tolerance = std::string(format) == "jpeg" ? 60 : 8; // this one loses some
                EXPECT_NEAR(static_cast<int>(color & 0xFF), x * 40, tolerance) << format;
                EXPECT_NEAR(static_cast<int>(color >> 8 & 0xFF), y * 50, tolerance) << format;
                EXPECT_NEAR(static_cast<int>(color >> 16 & 0xFF), 200, tolerance) << format;
            }
        }
        DeleteDC(context);
        DeleteObject(bitmap);
    }
}

TEST_F(ImageFiles, CutAnywhereEndWell)
{
    for (const std::string& whole : { Written("png"), Written("jpeg"), Written("bmp"), Gif(3, 3) }) {
        for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 200) {
            const HBITMAP bitmap = Load(whole.substr(0, size));
            EXPECT_EQ(bitmap != nullptr, DeleteObject(bitmap) != FALSE) << size;
        }
    }
}

TEST_F(ImageFiles, CutWithinTheirPixelsAreRefusedOrBlackFromThereOn)
{
    EXPECT_EQ(Load(Written("png").substr(0, 50)), nullptr);
    const HBITMAP bitmap = Load(Written("bmp").substr(0, 54 + 20)); // one row, and the lowest comes first
    ASSERT_NE(bitmap, nullptr);
    const HDC context = CreateCompatibleDC(nullptr);
    SelectObject(context, bitmap);
    for (int x = 0; x < 6; ++x) {
        EXPECT_NE(GetPixel(context, x, 4), RGB(0, 0, 0)) << x;
        for (int y = 0; y < 4; ++y)
            EXPECT_EQ(GetPixel(context, x, y), RGB(0, 0, 0)) << x << ' ' << y;
    }
    DeleteDC(context);
    DeleteObject(bitmap);
}

TEST_F(ImageFiles, WithAnyWrongByteEndWell)
{
    for (const std::string& whole : { Written("png"), Written("jpeg"), Written("bmp"), Gif(3, 3) }) {
        for (std::size_t at = 0; at < whole.size(); at += 1 + whole.size() / 100) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(~damaged[at]);
            const HBITMAP bitmap = Load(damaged);
            EXPECT_EQ(bitmap != nullptr, DeleteObject(bitmap) != FALSE) << at;
        }
    }
}

TEST_F(ImageFiles, ThatArePipesOrFoldersAreNotWaitedFor)
{
    ASSERT_EQ(mkfifo((m_device.UserDirectory() + "/scratch/pipe.gif").c_str(), 0600), 0);
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, m_device.Path(TEXT("pipe.gif")).c_str()), nullptr);
    EXPECT_EQ(CreateBitmapFromImageFile(nullptr, TEXT("\\scratch")), nullptr);
}

} // namespace
