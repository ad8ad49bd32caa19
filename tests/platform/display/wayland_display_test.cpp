// The life of a Wayland display: what keeps it from opening, and what ends it.
#include "tests/platform/display/wayland_stage.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wayland-server.h>

namespace {

using namespace cardsong::test;
using cardsong::display::MakeWaylandDisplay;

std::string TroubleOf(const std::string& name, int answerLimitMs = 20000)
{
    ResetRecordedInput();
    const auto display = MakeWaylandDisplay({ 1, false }, name, answerLimitMs);
    const std::string trouble = display->Start();
    EXPECT_FALSE(PresentFrame()); // nobody looks
    EXPECT_FALSE(display->IsLost());
    display->Stop();
    return trouble;
}

sockaddr_un AddressOf(const std::string& path)
{
    sockaddr_un address{ AF_UNIX, {} };
    path.copy(address.sun_path, sizeof(address.sun_path) - 1);
    return address;
}

// Connections for which nobody asks the server, until its queue is full.
class WaitingClients {
public:
    explicit WaitingClients(const std::string& path)
    {
        const sockaddr_un address = AddressOf(path);
        do
            m_clients.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        while (connect(m_clients.back(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0);
        EXPECT_EQ(errno, EAGAIN);
    }
    ~WaitingClients()
    {
        for (const int client : m_clients)
            close(client);
    }
    WaitingClients(const WaitingClients&) = delete;
    WaitingClients& operator=(const WaitingClients&) = delete;

private:
    std::vector<int> m_clients;
};

// Takes no connection until it is told.
class ListeningServer {
public:
    ListeningServer() : m_listening(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        std::string path = "/tmp/cardsong-listening-XXXXXX";
        m_folder = mkdtemp(path.data());
        const sockaddr_un address = AddressOf(Path());
        EXPECT_EQ(bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        EXPECT_EQ(listen(m_listening, 1), 0);
    }
    ~ListeningServer()
    {
        close(m_listening);
        std::filesystem::remove_all(m_folder);
    }
    ListeningServer(const ListeningServer&) = delete;
    ListeningServer& operator=(const ListeningServer&) = delete;
    std::string Path() const { return m_folder / "socket"; }
    void TakeOneAndEndIt() const { close(accept(m_listening, nullptr, nullptr)); }

private:
    const int m_listening;
    std::filesystem::path m_folder;
};

TEST(WaylandDisplay, SaysWhichItCannotOpenAndWhy)
{
    setenv("XDG_RUNTIME_DIR", "/nowhere/at/all", 1);
    EXPECT_EQ(TroubleOf("wayland-7"), "cannot open the Wayland display wayland-7: No such file or directory");
    for (const char* useless : { "", "not/from/the/root" }) {
        setenv("XDG_RUNTIME_DIR", useless, 1);
        EXPECT_EQ(TroubleOf("wayland-7"),
                  "cannot open the Wayland display wayland-7: XDG_RUNTIME_DIR is no whole path");
    }
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(TroubleOf("wayland-7"), "cannot open the Wayland display wayland-7: XDG_RUNTIME_DIR is not set");
    const std::string longest = "/tmp" + std::string(103, '/'); // a folder that everybody may write
    EXPECT_EQ(TroubleOf(longest), "cannot open the Wayland display " + longest + ": Connection refused");
    EXPECT_EQ(TroubleOf(longest + "/"), "cannot open the Wayland display " + longest + "/: File name too long");
    EXPECT_EQ(TroubleOf("/nowhere/wayland-7"),
              "cannot open the Wayland display /nowhere/wayland-7: No such file or directory");
}

TEST(WaylandDisplay, FindsASocketByItsName)
{
    TestCompositor compositor;
    const std::filesystem::path path = compositor.SocketPath();
    setenv("XDG_RUNTIME_DIR", path.parent_path().c_str(), 1);
    const auto display = MakeWaylandDisplay({ 1, false }, path.filename());
    EXPECT_EQ(display->Start(), "");
    display->Stop();
}

TEST(WaylandDisplay, NamesWhatItCannotDoWithout)
{
    for (const char* name : { "wl_compositor", "wl_shm", "xdg_wm_base" }) {
        TestCompositor compositor({ .without = { name } });
        const std::string what = name == std::string("wl_compositor") ? "wl_compositor of version 4" : name;
        EXPECT_EQ(TroubleOf(compositor.SocketPath()),
                  "cannot open the Wayland display " + compositor.SocketPath() + ": it has no " + what);
    }
    TestCompositor old({ .compositorVersion = 3 });
    EXPECT_EQ(TroubleOf(old.SocketPath()),
              "cannot open the Wayland display " + old.SocketPath() + ": it has no wl_compositor of version 4");
}

TEST(WaylandDisplay, DoesNotWaitForeverForACompositorThatHangs)
{
    TestCompositor compositor;
    compositor.Hang();
    EXPECT_EQ(TroubleOf(compositor.SocketPath(), 30),
              "cannot open the Wayland display " + compositor.SocketPath() + ": it does not answer");
}

TEST(WaylandDisplay, SaysThatACompositorDiedBeforeItWasOpen)
{
    const ListeningServer server;
    std::thread dying([&server] { server.TakeOneAndEndIt(); });
    EXPECT_EQ(TroubleOf(server.Path()), "cannot open the Wayland display " + server.Path() + ": it went away");
    dying.join();
}

TEST(WaylandDisplay, DoesNotWaitForeverForAPlaceInTheQueueOfACompositorThatHangs)
{
    const ListeningServer server;
    const WaitingClients before(server.Path());
    EXPECT_EQ(TroubleOf(server.Path(), 30),
              "cannot open the Wayland display " + server.Path() + ": it does not answer");
}

TEST(WaylandDisplay, WaitsForItsPlaceInTheQueueOfACompositorThatIsBusy)
{
    TestCompositor compositor;
    compositor.Hang();
    const WaitingClients before(compositor.SocketPath());
    ResetRecordedInput();
    const auto display = MakeWaylandDisplay({ 1, false }, compositor.SocketPath(), 20000);
    std::string trouble = "not known";
    std::thread opening([&] { trouble = display->Start(); });
    compositor.WakeUp();
    opening.join();
    EXPECT_EQ(trouble, "");
    display->Stop();
}

TEST(WaylandDisplay, TakesUpAConnectionThatWasHandedDown)
{
    TestCompositor compositor;
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    compositor.With([&](const CompositorState& state) { wl_client_create(state.display, ends[0]); });
    setenv("WAYLAND_SOCKET", std::to_string(ends[1]).c_str(), 1);
    const auto display = MakeWaylandDisplay({ 1, false }, "wayland-7");
    EXPECT_EQ(display->Start(), "");
    EXPECT_EQ(getenv("WAYLAND_SOCKET"), nullptr) << "no program that is started may take it, too";
    display->Stop();
    setenv("WAYLAND_SOCKET", "nonsense", 1);
    EXPECT_EQ(TroubleOf("wayland-7"), "cannot open the Wayland display wayland-7: WAYLAND_SOCKET is no connection");
    unsetenv("WAYLAND_SOCKET");
}

TEST(WaylandDisplay, ClosesItsWindowWhenItStops)
{
    WaylandStage stage;
    stage.Appear();
    stage.display->Stop();
    EXPECT_TRUE(stage.compositor.Await([](const CompositorState& state) {
        return state.surface == nullptr && state.topLevel == nullptr && state.seat == nullptr;
    }));
    EXPECT_FALSE(PresentFrame());
    EXPECT_FALSE(AskToRaise());
    EXPECT_FALSE(stage.display->IsLost());
}

TEST(WaylandDisplay, AsksThePlayerToEndWhenItsCompositorDies)
{
    WaylandStage stage;
    stage.Appear();
    EXPECT_FALSE(stage.display->IsLost());
    stage.compositor.Die();
    EXPECT_EQ(WaitForInput(stage.before + 1).back(), "exit key");
    stage.Paint(RGB(255, 0, 0)); // the player paints on
    stage.display->Stop();
    EXPECT_TRUE(stage.display->IsLost());
    EXPECT_EQ(RecordedInput().size(), stage.before + 1); // and hears nothing else
}

TEST(WaylandDisplay, DiesInTheSameWayOverAComplaintOfItsCompositor)
{
    WaylandStage stage;
    stage.Appear();
    testing::internal::CaptureStderr(); // the library prints the complaint
    stage.compositor.With(
        [](const CompositorState& state) { wl_resource_post_error(state.surface, 99, "for the test"); });
    EXPECT_EQ(WaitForInput(stage.before + 1).back(), "exit key");
    stage.display->Stop();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("for the test"), std::string::npos);
    EXPECT_TRUE(stage.display->IsLost());
}

TEST(WaylandDisplay, HoldsUpNothingWhenItsCompositorHangs)
{
    WaylandStage stage;
    stage.Appear();
    stage.compositor.Hang();
    for (int round = 0; round < 300; ++round) {
        stage.Paint(RGB(round % 256, 0, 0));
        EXPECT_TRUE(AskToRaise());
    }
    stage.display->Stop();
    EXPECT_FALSE(stage.display->IsLost());
}

TEST(WaylandDisplay, GoesOnWithACompositorThatWakesUpAgain)
{
    WaylandStage stage;
    stage.Appear();
    stage.compositor.Hang();
    stage.Paint(RGB(255, 255, 0));
    stage.Paint(RGB(0, 255, 0));
    stage.compositor.WakeUp();
    EXPECT_TRUE(stage.compositor.Await([](const CompositorState& state) { return state.screen.At(0, 0) == 0x00FF00; }));
}

TEST(WaylandDisplay, MayStopBeforeItHasASizeOrAFrame)
{
    WaylandStage stage({ .configures = false });
    stage.Paint(RGB(255, 0, 0));
    stage.AwaitAnswer();
    stage.compositor.With([](const CompositorState& state) { EXPECT_EQ(state.commits, 0); });
    stage.display->Stop();
    EXPECT_FALSE(stage.display->IsLost());
}

TEST(WaylandDisplay, OpensAndClosesAgainAndAgain)
{
    TestCompositor compositor;
    for (int round = 0; round < 30; ++round) {
        ResetRecordedInput();
        const auto display = MakeWaylandDisplay({ 1, false }, compositor.SocketPath());
        EXPECT_EQ(display->Start(), "");
        ScreenPainter painter;
        painter.Fill({ 0, 0, 320, 240 }, RGB(round, 0, 0));
        EXPECT_TRUE(PresentFrame());
        display->Stop();
        EXPECT_FALSE(display->IsLost());
    }
}

} // namespace
