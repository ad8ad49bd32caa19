// What is seen of the real player.
#include "app/audio_priority.h"
#include "app/interruption.h"
#include "app/lyrics_display.h"
#include "app/play_modes.h"
#include "app/player_controls.h"
#include "app/title_ticker.h"
#include "common/gdi_handles.h"
#include "gui/text_line.h"
#include "library/text_measuring.h"
#include "platform/linux/user/desktop.h"
#include "playback/simulated_engine.h"
#include "tests/app/model/player_under_test.h"

#include <utility>

namespace cardsong::test {

namespace {

int PriorityInRegistry()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("\\TAVO\\AudioManagement"), 0, 0, &key) != ERROR_SUCCESS)
        return -1;
    DWORD number = 0;
    DWORD type = REG_DWORD;
    DWORD sizeBytes = sizeof number;
    const LSTATUS result =
        RegQueryValueExW(key, TEXT("Priority"), nullptr, &type, reinterpret_cast<LPBYTE>(&number), &sizeBytes);
    RegCloseKey(key);
    return result == ERROR_SUCCESS ? static_cast<int>(number) : -1;
}

bool IsListOpen(LPCWSTR title)
{
    return FindWindowW(title, nullptr) != nullptr;
}

} // namespace

long TitleWidthPx(const std::string& title)
{
    static std::map<std::string, long> s_widths;
    const auto known = s_widths.find(title);
    if (known != s_widths.end())
        return known->second;
    const HDC screen = GetDC(nullptr);
    const UniqueFont font(CreatePlainFont(screen, 18));
    ReleaseDC(nullptr, screen);
    return s_widths[title] = MeasureText(WString(title.begin(), title.end()).c_str(), font.Get()).cx;
}

PlayerView PlayerUnderTest::View()
{
    PlayerView view;
    SeeState(view);
    SeeScreen(view);
    SeeEngine(view);
    return view;
}

void PlayerUnderTest::SeeState(PlayerView& view) const
{
    view.loaded = g_songLoaded;
    view.playing = g_isPlaying;
    view.stepping = g_stepBusy;
    view.current = g_currentNumber;
    view.interrupted = g_pausedByInterruption;
    view.savedPosition = g_savedPosition;
    view.shuffle = g_shuffle;
    view.repeatAll = g_repeatAll;
    view.repeatOne = g_repeatOne;
    view.shufflePrevious = g_shufflePrevious;
    view.shuffleNext = g_shuffleNext;
    for (const MediaFileEntry& entry : ConstSongList(PlayList))
        view.list.push_back({ Narrow(entry.fileName), entry.playMark, entry.playedInShuffle != 0, entry.duration });
    for (const MediaFileEntry& entry : ConstSongList(CardSongList))
        view.library.push_back({ Narrow(entry.fileName), entry.isChecked != 0 });
    view.isPlayListOpen = IsListOpen(kPlayListTitle);
    view.isLibraryOpen = IsListOpen(kLibraryTitle);
    view.lyricsShown = g_lyricsShown;
    view.priority = PriorityInRegistry();
    view.keptPriority = static_cast<int>(g_audioPriority);
}

void PlayerUnderTest::SeeScreen(PlayerView& view) const
{
    for (const int command : { 256, 258, 259, 260, 262, 263, 264, 265, 266, 267 })
        view.buttons[command] = { IsEnabled(command), IsShown(command) };
    view.isSliderEnabled = IsWindowEnabled(m_slider) != FALSE;
    view.sliderPosition = g_controls.slider->GetPos();
    view.title = Narrow(g_titleText);
    view.elapsed = Narrow(g_elapsedText);
    view.total = Narrow(g_totalText);
    const auto seen = [](const TitleStrip& strip) {
        return StripView{ strip.isActive, strip.rect.left, strip.rect.right };
    };
    view.strips = { seen(g_titleStripA), seen(g_titleStripB) };
    const auto queue = user::CurrentQueue();
    const user::LockedDesktop desktop;
    for (const user::Timer& timer : queue->timers)
        if (timer.window == m_window)
            view.timers[static_cast<int>(timer.id)] = timer.dueMs;
}

void PlayerUnderTest::HearEngine()
{
    const std::string rendering = "RenderFile \\SDMMC\\";
    for (const std::string& call : TakeSimulatedCalls())
        if (call.starts_with(rendering)) {
            m_rendered = call.substr(rendering.size());
            ++m_renderings;
        }
}

bool PlayerUnderTest::IsOnTop() const
{
    return m_isInFront && !IsListOpen(kPlayListTitle) && !IsListOpen(kLibraryTitle);
}

int PlayerUnderTest::CountOpenedSongs()
{
    HearEngine();
    return std::exchange(m_renderings, 0);
}

void PlayerUnderTest::SeeEngine(PlayerView& view)
{
    HearEngine();
    const auto& engines = TheSimulation().engines;
    if (engines.empty())
        return;
    constexpr const char* kStates[] = { "stopped", "paused", "running" };
    view.openSong = engines.size() == 1 ? m_rendered : "several songs";
    view.engine = kStates[static_cast<int>(engines[0]->state)];
    view.position = engines[0]->PositionSeconds();
}

std::string PlayerUnderTest::SavedList() const
{
    std::string text;
    const std::string bytes = m_device.ReadFile("user/Windows/play_list.txt");
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        if (bytes[i] == '\r' && bytes[i + 1] == '\n')
            text += '\n';
        else
            text += bytes[i + 1] == '\0' ? bytes[i] : '?';
    }
    return text;
}

std::string PlayerUnderTest::LeftOver() const
{
    std::string text;
    if (IsWindow(m_window) || !m_hasQuit)
        text += "  the program goes on\n";
    if (LiveSimulatedGraphs() != 0)
        text += "  a graph lives\n";
    if (!PlayList.IsEmpty() || !CardSongList.IsEmpty())
        text += "  a list is not freed\n";
    const auto queue = user::CurrentQueue();
    const user::LockedDesktop desktop;
    if (!queue->timers.empty())
        text += "  a timer runs\n";
    return text;
}

} // namespace cardsong::test
