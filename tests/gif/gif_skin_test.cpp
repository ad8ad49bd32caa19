// Every picture of the default skin, through the decoder alone.
#include "gif/gif_sequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<std::byte> ReadBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string text{ std::istreambuf_iterator<char>(file), {} };
    std::vector<std::byte> bytes(text.size());
    std::ranges::transform(text, bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

std::vector<std::filesystem::path> SkinPictures()
{
    std::vector<std::filesystem::path> pictures;
    for (const auto& entry : std::filesystem::directory_iterator(CARDSONG_SKIN_DIRECTORY)) {
        if (entry.path().extension() == ".gif")
            pictures.push_back(entry.path());
    }
    return pictures;
}

} // namespace

TEST(Skin, EveryFrameOfEveryPictureDecodes)
{
    const auto pictures = SkinPictures();
    EXPECT_GE(pictures.size(), 60U);
    for (const auto& path : pictures) {
        const auto bytes = ReadBytes(path);
        GifSequence gif;
        ASSERT_TRUE(gif.Open(bytes, 0xFFFF)) << path;
        const std::size_t pixels = std::size_t{ gif.Screen().widthPx } * gif.Screen().heightPx;
        EXPECT_GT(pixels, 0U) << path;
        for (std::uint32_t i = 0; i < gif.FrameCount(); ++i) {
            const GifFrame* frame = gif.DecodeNextFrame();
            ASSERT_NE(frame, nullptr) << path << " frame " << i;
            EXPECT_EQ(frame->canvas.size(), pixels) << path;
        }
    }
}

TEST(Skin, EveryTruncationOfAButtonHasADefinedResult)
{
    const auto whole = ReadBytes(std::filesystem::path(CARDSONG_SKIN_DIRECTORY) / "gui_3but_normal.gif");
    ASSERT_GT(whole.size(), 13U);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<std::byte> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        GifSequence gif;
        if (!gif.Open(cut, 0xFFFF))
            continue;
        EXPECT_EQ(gif.FrameCount(), 1U);
        const GifFrame* frame = gif.DecodeNextFrame();
        if (frame != nullptr) {
            EXPECT_EQ(frame->canvas.size(), 106U * 32U);
        }
    }
}
