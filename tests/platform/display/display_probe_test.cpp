// Which display the player may come up on, as the doctor asks.
#include "platform/linux/display/display_probe.h"

#include "platform/linux/display/display.h"
#include "tests/platform/display/test_compositor.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace cardsong::display;

namespace {

// A user whose environment names no display.
class ADisplayProbe : public testing::Test {
protected:
    ADisplayProbe() { Forget(); }
    ~ADisplayProbe() override { Forget(); }
    static void Forget()
    {
        for (const char* variable : { "DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER", "XDG_RUNTIME_DIR" })
            unsetenv(variable);
    }
};

constexpr const char* kNone = "there is no display: no Wayland compositor, no X server, no screen";

TEST_F(ADisplayProbe, WithoutADisplayThePlayerIsNotShownToNobody)
{
    const auto display = MakeSdlDisplay({});
    EXPECT_EQ(display->Start(), kNone);
    display->Stop();
}

TEST_F(ADisplayProbe, SaysThatThereIsNone)
{
    const DisplayProbe probe = ProbeDisplay();
    EXPECT_EQ(probe.name, "");
    EXPECT_EQ(probe.trouble, kNone);
}

TEST_F(ADisplayProbe, AnXServerThatIsNotThereIsNoDisplay)
{
    setenv("DISPLAY", ":1977", 1);
    EXPECT_EQ(ProbeDisplay().trouble, "cannot open the X display :1977");
}

TEST_F(ADisplayProbe, ADisplayThatNobodySeesIsUsedWhenItIsAskedFor)
{
    for (const char* driver : { "offscreen", "dummy" }) {
        setenv("SDL_VIDEODRIVER", driver, 1);
        EXPECT_EQ(ProbeDisplay().name, driver);
        EXPECT_EQ(ProbeDisplay().trouble, "");
    }
}

TEST_F(ADisplayProbe, ACompositorThatAnswersIsADisplay)
{
    const cardsong::test::TestCompositor compositor(cardsong::test::CompositorOffer{});
    setenv("WAYLAND_DISPLAY", compositor.SocketPath().c_str(), 1);
    EXPECT_EQ(ProbeDisplay().name, "wayland");
}

TEST_F(ADisplayProbe, SaysOfEachDisplayWhyItIsNone)
{
    setenv("WAYLAND_DISPLAY", "/nowhere/wayland-7", 1);
    setenv("DISPLAY", ":1977", 1);
    EXPECT_EQ(ProbeDisplay().trouble, "cannot open the Wayland display /nowhere/wayland-7: No such file or directory; "
                                      "cannot open the X display :1977");
}

} // namespace
