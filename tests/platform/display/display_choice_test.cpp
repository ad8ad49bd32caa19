#include "platform/linux/display/display_choice.h"

#include "platform/linux/display/first_display.h"
#include "tests/platform/display/recorded_input.h"
#include "tests/platform/display/test_compositor.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using namespace cardsong::display;
using namespace cardsong::test;

class ADisplayChoice : public testing::Test {
protected:
    ADisplayChoice()
    {
        for (const char* name : { "SDL_VIDEODRIVER", "WAYLAND_DISPLAY", "DISPLAY", "XDG_RUNTIME_DIR" })
            unsetenv(name);
    }
    ~ADisplayChoice() override
    {
        for (const char* name : { "SDL_VIDEODRIVER", "WAYLAND_DISPLAY", "DISPLAY", "XDG_RUNTIME_DIR" })
            unsetenv(name);
    }
    static void Set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
};

const DisplayChoice kSdl = { "", true };

TEST_F(ADisplayChoice, IsSdlWhereNothingIsKnown)
{
    EXPECT_EQ(ChooseDisplay(), kSdl);
    Set("XDG_RUNTIME_DIR", "/nowhere/at/all");
    EXPECT_EQ(ChooseDisplay(), kSdl);
}

TEST_F(ADisplayChoice, IsTheWaylandDisplayThatIsNamed)
{
    Set("WAYLAND_DISPLAY", "wayland-7");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-7", false }));
}

TEST_F(ADisplayChoice, IsXAfterAWaylandDisplayThatCannotBeOpened)
{
    Set("WAYLAND_DISPLAY", "wayland-7");
    Set("DISPLAY", ":5");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-7", true }));
}

TEST_F(ADisplayChoice, TakesAnEmptyNameForNone)
{
    Set("WAYLAND_DISPLAY", "");
    Set("DISPLAY", "");
    Set("SDL_VIDEODRIVER", "");
    EXPECT_EQ(ChooseDisplay(), kSdl);
}

TEST_F(ADisplayChoice, IsACompositorThatStandsByWhereNoDisplayIsNamed)
{
    const TestCompositor compositor;
    const std::filesystem::path folder = std::filesystem::path(compositor.SocketPath()).parent_path();
    Set("XDG_RUNTIME_DIR", folder);
    EXPECT_EQ(ChooseDisplay(), kSdl);
    std::filesystem::rename(compositor.SocketPath(), folder / "wayland-0");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-0", true }));
    Set("DISPLAY", "far.away:10"); // the user is logged in from there
    EXPECT_EQ(ChooseDisplay(), kSdl);
}

TEST_F(ADisplayChoice, ObeysTheDriverThatTheUserNames)
{
    Set("WAYLAND_DISPLAY", "wayland-7");
    Set("DISPLAY", ":5");
    Set("SDL_VIDEODRIVER", "x11");
    EXPECT_EQ(ChooseDisplay(), kSdl);
    Set("SDL_VIDEODRIVER", "wayland");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-7", false }));
    Set("SDL_VIDEODRIVER", "wayland,x11");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-7", true }));
    unsetenv("WAYLAND_DISPLAY");
    EXPECT_EQ(ChooseDisplay(), (DisplayChoice{ "wayland-0", true }));
}

// Opens or does not.
class Door final : public Display {
public:
    Door(std::string trouble, std::string& log) : m_trouble(std::move(trouble)), m_log(log) {}
    std::string Start() override
    {
        m_log += "start ";
        return m_trouble;
    }
    void Stop() override { m_log += "stop "; }
    bool IsLost() const override { return m_trouble.empty(); }
    void FrameReady() override { m_log += "frame "; }

private:
    const std::string m_trouble;
    std::string& m_log;
};

std::unique_ptr<Display> Doors(const std::vector<std::string>& troubles, std::string& log)
{
    std::vector<std::unique_ptr<Display>> doors;
    for (const std::string& trouble : troubles)
        doors.push_back(std::make_unique<Door>(trouble, log));
    return std::make_unique<FirstDisplay>(std::move(doors));
}

TEST(FirstDisplay, IsTheFirstThatOpens)
{
    std::string log;
    const auto display = Doors({ "no Wayland", "", "never asked" }, log);
    EXPECT_FALSE(display->IsLost());
    EXPECT_EQ(display->Start(), "");
    display->FrameReady();
    EXPECT_TRUE(display->IsLost());
    EXPECT_EQ(log, "start start frame ");
    display->Stop();
    EXPECT_EQ(log, "start start frame stop stop stop ");
}

TEST(FirstDisplay, SaysWhyNoneOpens)
{
    std::string log;
    const auto display = Doors({ "no Wayland", "no X" }, log);
    EXPECT_EQ(display->Start(), "no Wayland; no X");
    display->FrameReady();
    EXPECT_FALSE(display->IsLost());
    EXPECT_EQ(log, "start start ");
}

TEST_F(ADisplayChoice, OpensXWhereWaylandIsGone)
{
    ResetRecordedInput();
    Set("WAYLAND_DISPLAY", "/nowhere/wayland-7");
    Set("DISPLAY", ":5");
    const auto display = MakeDesktopDisplay({ 1, false });
    unsetenv("DISPLAY");
    Set("SDL_VIDEODRIVER", "dummy"); // the window library's own stand-in for a server
    EXPECT_EQ(display->Start(), "");
    EXPECT_TRUE(PresentFrame());
    display->Stop();
    EXPECT_FALSE(PresentFrame());
}

} // namespace
