// The real player on the built device tree, with a screen that nobody sees, a clock that stands still and a simulated
// engine: a test taps, presses keys, lets time pass, and looks.
#pragma once

#include "app/command_ids.h"
#include "app/launch_options.h"
#include "app/player_state.h"
#include "app/registered_messages.h"
#include "app/start_up.h"
#include "app/win_main.h"
#include "common/string_table.h"
#include "library/media_scan.h"
#include "library/song_list.h"
#include "platform/ce.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"
#include "playback/simulated_graph.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace cardsong::test {

constexpr POINT kPlayKey{ 136, 183 };
constexpr POINT kStopKey{ 89, 183 };
constexpr POINT kNextKey{ 183, 183 };
constexpr POINT kBackKey{ 33, 183 };
constexpr POINT kRepeatKey{ 230, 183 };
constexpr POINT kShuffleKey{ 287, 183 };
constexpr POINT kExitKey{ 50, 224 };
constexpr LONG kSliderLeft = 17;
constexpr LONG kSliderWidthPx = 286;
constexpr LONG kSliderMiddleY = 146;

using Frame = std::vector<std::uint16_t>;

class PlayerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        kernel::InstallClock(&m_clock);
        UseLanguage(0x0409);
        ResetSimulatedGraphs();
        gdi::ClearScreen();
    }

    void TearDown() override
    {
        if (IsWindow(m_window))
            SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
        Pump();
        user::ResetWindows();
        if (g_hStringModule != nullptr)
            FreeLibrary(g_hStringModule);
        g_hStringModule = nullptr;
        g_launchOptions = {};
        SongList(PlayList).FreeAll();
        kernel::InstallClock(nullptr);
    }

    void UseLanguage(LANGID language)
    {
        kernel::DeviceTree tree;
        tree.userDirectory = m_device.UserDirectory();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.cardDirectory = m_device.CardDirectory();
        tree.uiLanguage = language;
        kernel::InstallDeviceTree(tree);
    }

    // A playable song on the card and at the end of the play list, `seconds` long.
    void AddSong(const std::string& name, double seconds) { AddFile(name, { seconds, true, true }); }
    // A file in which nothing is music.
    void AddBadSong(const std::string& name) { AddFile(name, { 0, true, false }); }
    // A song whose decoder this machine lacks.
    void AddSongWithoutDecoder(const std::string& name) { AddFile(name, { 30, true, true, true }); }

    // Starts the player; its window is shown and painted afterwards.
    void Start()
    {
        g_hInstance = kernel::ProgramInstance();
        RegisterStartMessages();
        g_hStringModule = LoadStringModule();
        m_window = InitInstance(g_hInstance, SW_SHOW);
        Pump();
    }

    // Ends the player, whose list is then what it saved, and starts it anew.
    void StartAgain()
    {
        SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
        Pump();
        user::ResetWindows();
        m_hasQuit = false;
        Start();
    }

    // Handles every message that waits, as the main loop does.
    void Pump()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                m_hasQuit = true;
                m_exitStatus = static_cast<int>(message.wParam);
            } else {
                RunMessage(m_window, message);
            }
        }
    }

    // Lets time pass in tenths of a second.
    void Advance(int tenths)
    {
        for (int i = 0; i < tenths; ++i) {
            m_clock.Advance(100);
            AdvanceSimulatedGraphs();
            Pump();
        }
    }

    void Press(UINT key)
    {
        user::KeyDown(key);
        user::KeyUp(key);
        Pump();
    }

    void Tap(POINT at)
    {
        user::PointerDown(at);
        Pump();
        user::PointerUp(at);
        Pump();
    }

    static Frame Screen()
    {
        Frame frame(static_cast<std::size_t>(kScreenWidthPx) * kScreenHeightPx);
        gdi::CopyScreen(frame);
        return frame;
    }
    static std::uint16_t PixelOf(const Frame& frame, LONG x, LONG y)
    {
        return frame[static_cast<std::size_t>(y) * kScreenWidthPx + static_cast<std::size_t>(x)];
    }
    // How many pixels of a rectangle differ between two frames.
    static int Differences(const Frame& a, const Frame& b, const RECT& rect)
    {
        int count = 0;
        for (LONG y = rect.top; y < rect.bottom; ++y)
            for (LONG x = rect.left; x < rect.right; ++x)
                count += PixelOf(a, x, y) != PixelOf(b, x, y) ? 1 : 0;
        return count;
    }

    static std::string Narrow(const WString& text) { return { text.begin(), text.end() }; }
    HWND Control(int id) const { return GetDlgItem(m_window, id); }
    bool IsShown(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }

    ScratchDevice m_device;
    kernel::VirtualClock m_clock;
    HWND m_window = nullptr;
    bool m_hasQuit = false;
    int m_exitStatus = -1; // of the program, when it has quit

private:
    void AddFile(const std::string& name, const SimulatedSong& song)
    {
        m_device.WriteFile("card/" + name, "x");
        auto* const entry = new MediaFileEntry{};
        const WString wide(name.begin(), name.end());
        wide.copy(entry->fileName, MAX_PATH - 1);
        WString(TEXT("\\SDMMC")).copy(entry->folder, MAX_PATH - 1);
        PlayList.Add(entry, -1);
        SetSimulatedSong(TEXT("\\SDMMC\\") + wide, song);
    }
};

} // namespace cardsong::test
