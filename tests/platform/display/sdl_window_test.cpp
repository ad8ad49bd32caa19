#include "platform/linux/display/sdl_window.h"

#include <SDL.h>
#include <algorithm>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

using namespace cardsong::display;
using namespace cardsong::host;

// On the window library's stand-in for a server the window's pixels can be read back.
class SdlPixels : public testing::Test {
protected:
    SdlPixels()
    {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
        EXPECT_EQ(SDL_Init(SDL_INIT_VIDEO), 0);
    }
    ~SdlPixels() override
    {
        window.reset();
        SDL_Quit();
    }
    SDL_Window* Raw() const
    {
        for (Uint32 id = 1; id < 100; ++id) {
            if (SDL_Window* found = SDL_GetWindowFromID(id))
                return found;
        }
        return nullptr;
    }
    // 0xRRGGBB
    Uint32 PixelAt(int x, int y) const
    {
        const SDL_Surface* surface = SDL_GetWindowSurface(Raw());
        const auto* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        Uint8 red = 0;
        Uint8 green = 0;
        Uint8 blue = 0;
        SDL_GetRGB(reinterpret_cast<const Uint32*>(row)[x], surface->format, &red, &green, &blue);
        return static_cast<Uint32>((red << 16) | (green << 8) | blue);
    }

    std::unique_ptr<SdlWindow> window = std::make_unique<SdlWindow>();
    std::unique_ptr<Frame> frame = std::make_unique<Frame>();
};

TEST_F(SdlPixels, TheWindowHasTheScaleAskedFor)
{
    ASSERT_EQ(window->Open({ 3, false }), "");
    EXPECT_EQ(window->Size().x, 960);
    EXPECT_EQ(window->Size().y, 720);
    EXPECT_EQ(window->Place(), (Viewport{ 0, 0, 960, 720 }));
}

TEST_F(SdlPixels, EveryPixelOfAFrameIsEnlarged)
{
    ASSERT_EQ(window->Open({ 2, false }), "");
    (*frame)[320 * 1 + 1] = 0xF800;
    window->Show(*frame);
    for (const SDL_Point at : { SDL_Point{ 2, 2 }, SDL_Point{ 3, 2 }, SDL_Point{ 2, 3 }, SDL_Point{ 3, 3 } })
        EXPECT_EQ(PixelAt(at.x, at.y), 0xFF0000U) << at.x << "," << at.y;
    for (const SDL_Point at : { SDL_Point{ 1, 2 }, SDL_Point{ 4, 2 }, SDL_Point{ 2, 1 }, SDL_Point{ 2, 4 } })
        EXPECT_EQ(PixelAt(at.x, at.y), 0U) << at.x << "," << at.y;
}

TEST_F(SdlPixels, ALaterFrameReplacesTheRowsThatDiffer)
{
    ASSERT_EQ(window->Open({ 1, false }), "");
    (*frame)[0] = 0xFFFF;
    window->Show(*frame);
    (*frame)[0] = 0;
    (*frame)[320 * 239 + 319] = 0x001F;
    window->Show(*frame);
    EXPECT_EQ(PixelAt(0, 0), 0U);
    EXPECT_EQ(PixelAt(319, 239), 0x0000FFU);
}

TEST_F(SdlPixels, AWiderWindowIsBlackAroundTheScreen)
{
    ASSERT_EQ(window->Open({ 1, false }), "");
    std::fill(frame->begin(), frame->end(), std::uint16_t{ 0xFFFF });
    window->Show(*frame);
    SDL_SetWindowSize(Raw(), 800, 500);
    SDL_FillRect(SDL_GetWindowSurface(Raw()), nullptr, 0xFF00FF); // whatever was there
    window->Redraw();
    EXPECT_EQ(window->Place(), (Viewport{ 80, 10, 640, 480 }));
    EXPECT_EQ(PixelAt(79, 10), 0U);
    EXPECT_EQ(PixelAt(80, 9), 0U);
    EXPECT_EQ(PixelAt(80, 10), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(719, 489), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(720, 489), 0U);
    EXPECT_EQ(PixelAt(719, 490), 0U);
}

TEST_F(SdlPixels, ATurnedPictureHasATurnedWindow)
{
    ASSERT_EQ(window->Open({ .scale = 2, .turn = Turn::Quarter }), "");
    EXPECT_EQ(window->Size().x, 480);
    EXPECT_EQ(window->Size().y, 640);
    EXPECT_EQ(window->Place(), (Viewport{ 0, 0, 480, 640, Turn::Quarter }));
}

TEST_F(SdlPixels, EachTurnPutsTheFirstPixelIntoItsCorner)
{
    const struct {
        Turn turn;
        SDL_Point corner;
    } kCases[] = { { Turn::None, { 0, 0 } },
                   { Turn::Quarter, { 239, 0 } },
                   { Turn::Half, { 319, 239 } },
                   { Turn::ThreeQuarters, { 0, 319 } } };
    for (const auto& [turn, corner] : kCases) {
        ASSERT_EQ(window->Open({ .scale = 1, .turn = turn }), "");
        *frame = Frame();
        (*frame)[0] = 0xF800;
        window->Show(*frame);
        EXPECT_EQ(PixelAt(corner.x, corner.y), 0xFF0000U) << static_cast<int>(turn);
        window = std::make_unique<SdlWindow>();
    }
}

TEST_F(SdlPixels, ALaterFrameReplacesTheColumnsOfATurnedPicture)
{
    ASSERT_EQ(window->Open({ .scale = 1, .turn = Turn::Quarter }), "");
    (*frame)[0] = 0xFFFF;
    window->Show(*frame);
    (*frame)[0] = 0;
    (*frame)[320 * 239 + 319] = 0x001F;
    window->Show(*frame);
    EXPECT_EQ(PixelAt(239, 0), 0U);
    EXPECT_EQ(PixelAt(0, 319), 0x0000FFU);
}

TEST_F(SdlPixels, ASmallerWindowShowsTheWholePicture)
{
    ASSERT_EQ(window->Open({ 1, false }), "");
    SDL_SetWindowMinimumSize(Raw(), 1, 1); // not every window manager asks for it
    SDL_SetWindowSize(Raw(), 160, 140);
    window->Redraw();
    std::fill(frame->begin(), frame->end(), std::uint16_t{ 0xFFFF });
    window->Show(*frame);
    EXPECT_EQ(window->Place(), (Viewport{ 0, 10, 160, 120 }));
    EXPECT_EQ(PixelAt(0, 9), 0U);
    EXPECT_EQ(PixelAt(0, 10), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(159, 129), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(159, 130), 0U);
}

// One pixel of such a window shows some of two rows.
TEST_F(SdlPixels, ASmallerWindowFollowsEveryChangedRow)
{
    ASSERT_EQ(window->Open({ 1, false }), "");
    SDL_SetWindowMinimumSize(Raw(), 1, 1);
    SDL_SetWindowSize(Raw(), 240, 180);
    window->Redraw();
    for (int y = 0; y < kFrameHeightPx; ++y) {
        *frame = Frame();
        std::fill_n(frame->begin() + static_cast<std::ptrdiff_t>(y) * kFrameWidthPx, kFrameWidthPx,
                    std::uint16_t{ 0xFFFF });
        window->Show(*frame);
        for (int line = 0; line < 180; ++line) {
            const bool shows = line < (y + 1) * 3 / 4.0 && line + 1 > y * 3 / 4.0;
            ASSERT_EQ(PixelAt(100, line) != 0, shows) << "row " << y << ", line " << line;
        }
    }
}

TEST_F(SdlPixels, AWindowKeepsItsTurnWhateverItsSizeBecomes)
{
    ASSERT_EQ(window->Open({ 1, false }), "");
    SDL_SetWindowMinimumSize(Raw(), 1, 1);
    SDL_SetWindowSize(Raw(), 240, 320);
    window->Redraw();
    EXPECT_EQ(window->Place(), (Viewport{ 0, 70, 240, 180 }));
}

TEST_F(SdlPixels, AFullScreenThatBecomesSmallAndUprightTurnsThePicture)
{
    ASSERT_EQ(window->Open({ 0, true }), "");
    SDL_SetWindowFullscreen(Raw(), 0);
    SDL_SetWindowSize(Raw(), 240, 320);
    window->Redraw();
    EXPECT_EQ(window->Place(), (Viewport{ 0, 0, 240, 320, Turn::Quarter }));
}

TEST_F(SdlPixels, TheFullScreenIsAsLargeAsTheDesktopFromTheStart)
{
    SDL_DisplayMode desktop{};
    ASSERT_EQ(SDL_GetDesktopDisplayMode(0, &desktop), 0);
    ASSERT_EQ(window->Open({ 0, true }), "");
    EXPECT_EQ(window->Size().x, desktop.w);
    EXPECT_EQ(window->Size().y, desktop.h);
    EXPECT_EQ(window->Place(), FitViewport(desktop.w, desktop.h));
}

} // namespace
