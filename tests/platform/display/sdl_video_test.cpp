// Which display the library may come up on.
#include "platform/linux/display/display.h"
#include "platform/linux/display/display_probe.h"

#include "tests/platform/display/test_compositor.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace cardsong::display;

namespace {

// A user whose environment names no display.
class SdlVideo : public testing::Test {
protected:
    SdlVideo()
    {
        for (const char* variable : { "DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER", "XDG_RUNTIME_DIR" })
            unsetenv(variable);
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus", 1); // the library would look for one at the server
    }
    void SetUp() override
    {
        if (std::filesystem::exists("/dev/dri"))
            GTEST_SKIP() << "this machine may have a bare screen";
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
    EXPECT_EQ(ProbeDisplay().trouble, "cannot open the X display :1977");
    const auto display = MakeSdlDisplay({});
    EXPECT_EQ(display->Start(), "cannot open the X display :1977");
    display->Stop();
    unsetenv("DISPLAY");
}

TEST_F(SdlVideo, LooksForADisplayWithoutAWord)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(ProbeDisplay().trouble, kTrouble);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(SdlVideo, TheProbeFindsTheWaylandDisplayThatThePlayerTakes)
{
    cardsong::test::TestCompositor compositor;
    setenv("WAYLAND_DISPLAY", compositor.SocketPath().c_str(), 1);
    EXPECT_EQ(ProbeDisplay().name, "wayland");
    EXPECT_EQ(ProbeDisplay().trouble, "");
    compositor.With([](const cardsong::test::CompositorState& state) { EXPECT_EQ(state.surface, nullptr); });
    setenv("WAYLAND_DISPLAY", "/nowhere/wayland-7", 1);
    const std::string trouble = "cannot open the Wayland display /nowhere/wayland-7: No such file or directory";
    EXPECT_EQ(ProbeDisplay().name, "");
    EXPECT_EQ(ProbeDisplay().trouble, trouble);
    setenv("DISPLAY", ":1977", 1);
    EXPECT_EQ(ProbeDisplay().trouble, trouble + "; cannot open the X display :1977");
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
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
