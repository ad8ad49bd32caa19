// The animation as both systems show it.
#include "gui/gif_animation.h"

#include "tests/gif/gif_builder.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

using namespace cardsong::test;

namespace {

const std::vector<GifColor> kFourColors{ kBlack, kRed, kGreen, kBlue };

class Animation : public testing::Test {
protected:
    WString Write(const std::string& bytes)
    {
        m_device.WriteFile("user/scratch/picture.gif", bytes);
        return m_device.Path(TEXT("picture.gif"));
    }
    bool Start(const std::string& bytes)
    {
        return m_animation.Start(m_parent.Get(), Write(bytes).c_str(), m_widthPx, m_heightPx);
    }
    // Two colours in turn without end, and no delay.
    static std::string RedAndGreen(std::uint16_t width = 4, std::uint16_t height = 3)
    {
        GifImage red{ .width = width, .height = height, .indices = Bytes(std::size_t{ width } * height, 1) };
        GifImage green = red;
        std::ranges::fill(green.indices, std::uint8_t{ 2 });
        return GifBuilder().Screen(width, height, kFourColors).Image(red).Image(green).Trailer().Text();
    }
    std::uint16_t Shown(int x, int y) const
    {
        const HDC context = GetDC(m_parent.Get());
        const std::uint16_t pixel = Pixel565(context, x, y);
        ReleaseDC(m_parent.Get(), context);
        return pixel;
    }
    // Comes back when the pixel has that colour.
    void Await(int x, int y, std::uint16_t color) const
    {
        while (Shown(x, y) != color)
            Sleep(0);
    }

    ScratchDevice m_device;
    ParentWindow m_parent;
    GifAnimation m_animation;
    std::uint16_t m_widthPx = 0;
    std::uint16_t m_heightPx = 0;
};

} // namespace

TEST_F(Animation, TellsTheSizeOfItsPictures)
{
    ASSERT_TRUE(Start(RedAndGreen(5, 3)));
    EXPECT_EQ(m_widthPx, 5);
    EXPECT_EQ(m_heightPx, 3);
}

TEST_F(Animation, DrawsIntoTheTopLeftCornerAndNoFarther)
{
    const std::uint16_t below = Shown(0, 3);
    const std::uint16_t beside = Shown(5, 0);
    ASSERT_TRUE(Start(RedAndGreen(5, 3)));
    Await(4, 2, kRed565);
    Await(0, 0, kGreen565);
    m_animation.Stop();
    EXPECT_EQ(Shown(0, 3), below);
    EXPECT_EQ(Shown(5, 0), beside);
}

TEST_F(Animation, GoesOnWithoutEnd)
{
    ASSERT_TRUE(Start(RedAndGreen()));
    for (int i = 0; i < 5; ++i) {
        Await(0, 0, kRed565);
        Await(0, 0, kGreen565);
    }
}

TEST_F(Animation, StoppedItDrawsNoMore)
{
    ASSERT_TRUE(Start(RedAndGreen()));
    Await(0, 0, kRed565);
    m_animation.Stop();
    const std::uint16_t last = Shown(0, 0);
    for (int i = 0; i < 100; ++i) {
        Sleep(0);
        ASSERT_EQ(Shown(0, 0), last);
    }
}

TEST_F(Animation, StopsPausesAndResumesHarmlesslyWhenNothingPlays)
{
    m_animation.Stop();
    m_animation.Pause();
    m_animation.Resume();
    m_animation.Stop();
    ASSERT_TRUE(Start(RedAndGreen())); // the pause was none of this one
    Await(0, 0, kRed565);
    Await(0, 0, kGreen565);
}

TEST_F(Animation, StopsFromAPauseAndFromAResumption)
{
    ASSERT_TRUE(Start(RedAndGreen()));
    m_animation.Pause();
    m_animation.Stop();
    ASSERT_TRUE(Start(RedAndGreen()));
    m_animation.Pause();
    m_animation.Resume();
    m_animation.Stop();
    m_animation.Stop();
}

TEST_F(Animation, FilesThatCannotBeShownAreRefused)
{
    EXPECT_FALSE(Start(""));
    EXPECT_FALSE(Start("no picture"));
    EXPECT_FALSE(Start(GifBuilder().Screen(1, 1, kFourColors).Trailer().Text()));
    const GifImage pixel{ .width = 1, .height = 1, .indices = { 1 } };
    EXPECT_FALSE(Start(GifBuilder().Screen(0, 1, kFourColors).Image(pixel).Trailer().Text()));
    EXPECT_FALSE(Start(GifBuilder().Screen(65535, 65535, kFourColors).Image(pixel).Trailer().Text()));
    EXPECT_EQ(m_widthPx, 0);
    ASSERT_TRUE(Start(RedAndGreen())); // and the next one plays
    Await(0, 0, kGreen565);
}

TEST_F(Animation, ItsWindowMayGoBeforeIt)
{
    const HWND window = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 20, 20, nullptr,
                                        nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(m_animation.Start(window, Write(RedAndGreen()).c_str(), m_widthPx, m_heightPx));
    DestroyWindow(window);
    ParentWindow::Pump();
    m_animation.Stop();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Animation, EndsWithItsOwner)
{
    {
        GifAnimation shortLived;
        ASSERT_TRUE(shortLived.Start(m_parent.Get(), Write(RedAndGreen()).c_str(), m_widthPx, m_heightPx));
        Await(0, 0, kRed565);
    }
    const std::uint16_t last = Shown(0, 0);
    for (int i = 0; i < 100; ++i) {
        Sleep(0);
        ASSERT_EQ(Shown(0, 0), last);
    }
    ASSERT_TRUE(Start(RedAndGreen())); // which does not look for the one that is gone
}
