// Which display the library may come up on.
#include "platform/linux/display/display.h"
#include "platform/linux/display/display_probe.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace cardsong::display;

namespace {

// A user whose environment names no display.
class SdlVideo : public testing::Test {
protected:
    SdlVideo()
    {
        for (const char* variable : { "DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER" })
            unsetenv(variable);
    }
    ~SdlVideo() override { unsetenv("SDL_VIDEODRIVER"); }
};

constexpr const char* kTrouble = "no display answers: no X server, no Wayland compositor and no bare screen";

TEST_F(SdlVideo, WithoutADisplayThePlayerIsNotShownToNobody)
{
    const auto display = MakeSdlDisplay({});
    EXPECT_EQ(display->Start(), kTrouble);
    display->Stop();
}

TEST_F(SdlVideo, WithoutADisplayTheProbeSaysSo)
{
    const DisplayProbe probe = ProbeDisplay();
    EXPECT_EQ(probe.name, "");
    EXPECT_EQ(probe.trouble, kTrouble);
}

TEST_F(SdlVideo, AnXServerThatIsNotThereIsNoDisplay)
{
    setenv("DISPLAY", ":1977", 1);
    EXPECT_EQ(ProbeDisplay().trouble, kTrouble);
    unsetenv("DISPLAY");
}

TEST_F(SdlVideo, ADisplayThatNobodySeesIsUsedWhenItIsAskedFor)
{
    for (const char* driver : { "offscreen", "dummy" }) {
        setenv("SDL_VIDEODRIVER", driver, 1);
        EXPECT_EQ(ProbeDisplay().name, driver);
        EXPECT_EQ(ProbeDisplay().trouble, "");
    }
}

} // namespace
