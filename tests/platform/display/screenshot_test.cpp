#include "platform/linux/display/screenshot.h"
#include "tests/platform/display/screen_painter.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>
#include <png.h>

#include <vector>

namespace {

using cardsong::display::SaveScreenshot;

TEST(Screenshot, HoldsEveryPixelOfTheScreen)
{
    const cardsong::test::ScratchDevice device;
    const std::string path = device.UserDirectory() + "/shot.png";
    cardsong::test::ScreenPainter painter;
    painter.Fill({ 319, 239, 320, 240 }, RGB(255, 0, 0));
    painter.Fill({ 0, 0, 1, 1 }, RGB(0, 0, 255));
    ASSERT_TRUE(SaveScreenshot(path));

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str()));
    EXPECT_EQ(image.width, 320U);
    EXPECT_EQ(image.height, 240U);
    image.format = PNG_FORMAT_RGB;
    std::vector<png_byte> bytes(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr));
    EXPECT_EQ(std::vector<png_byte>(bytes.begin(), bytes.begin() + 6), (std::vector<png_byte>{ 0, 0, 255, 0, 0, 0 }));
    EXPECT_EQ(std::vector<png_byte>(bytes.end() - 6, bytes.end()), (std::vector<png_byte>{ 0, 0, 0, 255, 0, 0 }));
}

TEST(Screenshot, TellsWhenTheFileCannotBeWritten)
{
    EXPECT_FALSE(SaveScreenshot("/nonexistent/folder/shot.png"));
}

} // namespace
