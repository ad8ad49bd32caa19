// One frame of the main window while a song plays: all of it painted, its controls too, and handed to the display.
#include "app/command_ids.h"
#include "app/player_state.h"
#include "app/registered_messages.h"
#include "app/start_up.h"
#include "app/win_main.h"
#include "common/string_table.h"
#include "library/media_scan.h"
#include "platform/linux/display/headless_display.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "playback/simulated_graph.h"
#include "tests/platform/scratch_device.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

using namespace cardsong;
using namespace cardsong::test;

constexpr LPCWSTR kSong = TEXT("Clair de lune, suite bergamasque, played by a long name.mp3");

// The player with its real skin and a song of an hour, which plays.
class PlayingPlayer {
public:
    PlayingPlayer()
    {
        kernel::InstallClock(&m_clock);
        kernel::DeviceTree tree;
        tree.userDirectory = m_device.UserDirectory();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.cardDirectory = m_device.CardDirectory();
        tree.uiLanguage = 0x0409;
        kernel::InstallDeviceTree(tree);
        if (!m_display.Start().empty())
            std::abort();
        g_hInstance = kernel::ProgramInstance();
        RegisterStartMessages();
        g_hStringModule = LoadStringModule();
        m_window = InitInstance(g_hInstance, SW_SHOW);
        Pump();
        AddSong();
        SendMessageW(m_window, WM_COMMAND, kCommandPlay, 0);
        Pump();
        if (!IsPlaying())
            std::abort();
    }
    ~PlayingPlayer()
    {
        SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
        Pump();
        m_display.Stop();
        user::ResetWindows(); // the next player registers its classes again
        FreeLibrary(g_hStringModule);
        g_hStringModule = nullptr;
        kernel::InstallClock(nullptr);
    }
    PlayingPlayer(const PlayingPlayer&) = delete;
    PlayingPlayer& operator=(const PlayingPlayer&) = delete;

    void Tick(UINT_PTR timer)
    {
        SendMessageW(m_window, WM_TIMER, timer, 0);
        Pump();
    }
    void Repaint()
    {
        constexpr RECT screen{ 0, 0, kScreenWidthPx, kScreenHeightPx };
        InvalidateRect(m_window, &screen, FALSE);
        UpdateWindow(m_window);
        Pump();
    }
    std::uint64_t FrameCount() const { return m_display.FrameCount(); }

private:
    void AddSong()
    {
        const WString name(kSong);
        m_device.WriteFile("card/" + std::string(name.begin(), name.end()), "x");
        auto* const entry = new MediaFileEntry{};
        name.copy(entry->fileName, MAX_PATH - 1);
        WString(TEXT("\\SDMMC")).copy(entry->folder, MAX_PATH - 1);
        PlayList.Add(entry, -1);
        SetSimulatedSong(TEXT("\\SDMMC\\") + name, { 3600, true, true });
    }
    void Pump() const
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            RunMessage(m_window, message);
    }

    ScratchDevice m_device;
    kernel::VirtualClock m_clock;
    display::HeadlessDisplay m_display;
    HWND m_window = nullptr;
};

// The title moves with each frame, so that each is drawn anew and differs from the one before.
void FrameWithAMovingTitle(benchmark::State& state)
{
    PlayingPlayer player;
    const std::uint64_t before = player.FrameCount();
    for (auto step : state) {
        (void)step;
        player.Tick(kTitleTimer);
    }
    if (player.FrameCount() - before < static_cast<std::uint64_t>(state.iterations()))
        state.SkipWithError("not every tick showed a frame of its own");
}
BENCHMARK(FrameWithAMovingTitle)->Unit(benchmark::kMicrosecond);

// What has not changed is not drawn again, but for the soft keys and the controls.
void FrameThatIsLikeTheOneBefore(benchmark::State& state)
{
    PlayingPlayer player;
    for (auto step : state) {
        (void)step;
        player.Repaint();
    }
}
BENCHMARK(FrameThatIsLikeTheOneBefore)->Unit(benchmark::kMicrosecond);

} // namespace
