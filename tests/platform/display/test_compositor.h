// A Wayland compositor for tests: it does what a test says, also what no good compositor does, and remembers what it
// was asked. One client, one window.
#pragma once

#include "platform/ce.h"

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

struct wl_display;
struct wl_global;
struct wl_resource;

namespace cardsong::test {

enum class ReleaseBuffers { AtOnce, WhenReplaced, Never };

struct CompositorOffer {
    std::set<std::string> without = {}; // names of interfaces that it does not have
    std::uint32_t compositorVersion = 4;
    std::uint32_t otherVersions = 1000; // of the seat and the output, at most
    int outputWidthPx = 1280;
    int outputHeightPx = 720;
    int outputTransform = 0;
    int scale = 1;
    SIZE windowSize{}; // 0: as the window likes
    bool configures = true;
    bool callsForFrames = true; // as soon as it has one
    ReleaseBuffers releases = ReleaseBuffers::AtOnce;
    std::uint32_t capabilities = 7; // pointer 1, keyboard 2, touch 4
};

// 0xRRGGBB words, rows without padding.
struct ShownPicture {
    int widthPx = 0;
    int heightPx = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t At(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * widthPx + x)); }
};

// All that a test may look at and act with, while it holds the compositor: see With and Await.
struct CompositorState {
    CompositorOffer offer;
    wl_display* display = nullptr;
    std::map<std::string, wl_global*> globals; // by their interfaces
    // What the window is and has; null or empty: not yet, or no more.
    wl_resource* surface = nullptr;
    wl_resource* shellSurface = nullptr;
    wl_resource* topLevel = nullptr;
    wl_resource* decoration = nullptr;
    wl_resource* shell = nullptr;
    std::string title;
    std::string appId;
    SIZE smallest{};
    bool wantsFullScreen = false;
    bool wantsFrame = false;
    int menusAsked = 0;
    std::uint32_t ackedSerial = 0;
    std::uint32_t pongSerial = 0;
    std::vector<std::string> activations;   // the tokens
    wl_resource* activationToken = nullptr; // asked for
    std::uint32_t activationSerial = 0;
    // What it shows. `screen` has taken only what was damaged.
    int commits = 0; // with a buffer
    int bufferScale = 1;
    ShownPicture buffer;
    ShownPicture screen;
    std::vector<RECT> damage;                         // of the last commit
    std::map<wl_resource*, ShownPicture> heldBuffers; // as they were given
    bool wasHeldBufferChanged = false;
    std::vector<wl_resource*> frameCalls; // asked for, not made
    // Input devices of the client; null: not asked for.
    wl_resource* seat = nullptr;
    wl_resource* pointer = nullptr;
    wl_resource* keyboard = nullptr;
    wl_resource* touch = nullptr;
    wl_resource* output = nullptr;
    int cursorsShown = 0;
    int cursorsHidden = 0;

    std::uint32_t NextSerial() const;
    // The states are numbers of xdg_toplevel.state.
    std::uint32_t Configure(SIZE size, const std::vector<std::uint32_t>& states);
    // The client hears that there is no such thing any more.
    void TakeAway(const std::string& interface);
    // A screen is plugged in; `output` is that one as soon as the client asks for it.
    void PlugIn(int scale);
    // Asks the client whether it lives; it answers with the serial.
    std::uint32_t Ping() const;
    void CallForFrame();
    void Release();
};

class TestCompositor {
public:
    explicit TestCompositor(const CompositorOffer& offer = {});
    ~TestCompositor();
    TestCompositor(const TestCompositor&) = delete;
    TestCompositor& operator=(const TestCompositor&) = delete;

    std::string SocketPath() const { return m_folder / "wayland"; }
    // Acts while nothing is handed out; what was said to the client is sent then.
    void With(const std::function<void(CompositorState&)>& act);
    // Returns whether it became true; waits for long only in a failing test.
    bool Await(const std::function<bool(const CompositorState&)>& isTrue);
    // From now on nothing is read, answered and accepted.
    void Hang();
    void WakeUp();
    // Ends the connection of the client, as a compositor does that crashes.
    void Die();

private:
    void Run();

    std::filesystem::path m_folder;
    std::mutex m_mutex; // guards the state, and all that the library keeps
    std::condition_variable m_changed;
    CompositorState m_state;
    const int m_wakeUp;
    bool m_ends = false;
    std::atomic<bool> m_hangs = false;
    std::thread m_thread;
};

} // namespace cardsong::test
