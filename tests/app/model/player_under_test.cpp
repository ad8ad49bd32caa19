#include "tests/app/model/player_under_test.h"

#include "app/audio_priority.h"
#include "app/interruption.h"
#include "app/play_modes.h"
#include "controls/seek_slider.h"
#include "tests/app/model/sown_random.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace cardsong::test {

namespace {

constexpr LPCWSTR kPriorityKey = TEXT("\\TAVO\\AudioManagement");
constexpr LPCWSTR kPriority = TEXT("Priority");

void PutPriority(int value)
{
    HKEY key = nullptr;
    DWORD disposition = 0;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kPriorityKey, 0, nullptr, 0, 0, nullptr, &key, &disposition);
    const auto number = static_cast<DWORD>(value);
    RegSetValueExW(key, kPriority, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
    RegCloseKey(key);
}

WPARAM WordsOf(int low, int high)
{
    return MAKEWPARAM(static_cast<WORD>(low), static_cast<WORD>(high));
}

std::string LyricsFileOf(const std::string& name)
{
    return "card/" + name.substr(0, name.rfind('.')) + ".lrc";
}

SimulatedSong SimulatedFrom(const CardSong& song)
{
    return { song.lengthSeconds, song.kind != SongKind::OfUnknownLength, song.kind != SongKind::WithoutMusic,
             song.kind == SongKind::WithoutDecoder };
}

std::string Record(int number, const CardSong& song)
{
    std::string bytes;
    for (const char letter : std::to_string(number) + "$" + song.name + "$\\SDMMC$" +
                                 std::to_string(static_cast<unsigned>(song.savedSeconds))) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes + "\r\n";
}

// Everything of the process that a player does not begin anew.
void ForgetEarlierPlayers()
{
    g_playModes = {};
    g_interruption = {};
    g_audioPriority = 0;
    SongList(CardSongList).FreeAll();
    g_elapsedText = TEXT("0:00");
    g_totalText = TEXT("0:00");
}

} // namespace

PlayerUnderTest::PlayerUnderTest(std::vector<CardSong> songs, std::optional<int> priority, std::uint64_t seed)
    : m_songs(std::move(songs))
{
    PlayerTest::SetUp();
    SowRandom(seed);
    ForgetEarlierPlayers();
    std::string saved;
    for (std::size_t i = 0; i < m_songs.size(); ++i) {
        PutSong(m_songs[i]);
        saved += Record(static_cast<int>(i) + 1, m_songs[i]);
    }
    m_device.WriteFile("card/readme.txt"); // the card is never empty
    m_device.WriteFile("user/Windows/play_list.txt", saved);
    if (priority)
        PutPriority(*priority);
    Start();
    m_slider = GetWindow(m_window, GW_CHILD);
}

PlayerUnderTest::~PlayerUnderTest()
{
    user::SetDisplayActive(true);
    PlayerTest::TearDown();
    ForgetEarlierPlayers();
}

void PlayerUnderTest::PutSong(const CardSong& song)
{
    const auto path = std::filesystem::path(m_device.CardDirectory()) / song.name;
    if (song.isThere)
        m_device.WriteFile("card/" + song.name, "x");
    else
        std::filesystem::remove(path);
    if (song.kind == SongKind::WithLyrics)
        m_device.WriteFile(LyricsFileOf(song.name), "[00:00.00]One[00:02.00]Two[00:04.00]Three");
    else
        std::filesystem::remove(path.parent_path() / LyricsFileOf(song.name).substr(5));
    SetSimulatedSong(TEXT("\\SDMMC\\") + WString(song.name.begin(), song.name.end()), SimulatedFrom(song));
}

void PlayerUnderTest::Take(const Step& step)
{
    switch (step.kind) {
    case StepKind::Command:
    case StepKind::Sent: SendMessageW(m_window, WM_COMMAND, WordsOf(step.a, step.b), 0); break;
    case StepKind::Slide: SendMessageW(m_window, kSliderMovedMessage, kSeekSliderId, step.a); break;
    case StepKind::Row: TapRow(kPlayListWindowId, PlayList, step.a); break;
    case StepKind::Check: TapRow(kLibraryWindowId, CardSongList, step.a); break;
    case StepKind::CloseLists:
        for (const LPCWSTR title : { kLibraryTitle, kPlayListTitle })
            SendMessageW(FindWindowW(title, nullptr), WM_CLOSE, 0, 0);
        break;
    default:
        TakeInput(step);
        TakeSound(step);
        TakeFile(step);
        TakeWorld(step);
    }
    if (step.kind != StepKind::Sent && step.kind != StepKind::EndWaits)
        Pump();
}

void PlayerUnderTest::TapRow(UINT window, const CPtrListCtrl& list, int index)
{
    SendMessageW(m_window, WM_NOTIFY, window, index % std::max(list.GetCount(), 1));
}

// What another program, or a list, is in front of gets neither keys nor taps.
void PlayerUnderTest::TakeInput(const Step& step)
{
    static constexpr POINT kPlaces[] = { kPlayKey, kStopKey, kNextKey, kBackKey, kRepeatKey, kShuffleKey };
    if (!IsOnTop())
        return;
    const auto key = static_cast<UINT>(step.a);
    if (step.kind == StepKind::HeldKey)
        user::KeyDown(key);
    if (step.kind == StepKind::Key || step.kind == StepKind::HeldKey)
        Press(key);
    if (step.kind == StepKind::Tap)
        Tap(kPlaces[step.a]);
}

void PlayerUnderTest::TakeSound(const Step& step)
{
    if (step.kind == StepKind::Finish || step.kind == StepKind::EndWaits)
        FinishCurrentSong();
    if (step.kind == StepKind::Break)
        BreakCurrentSong();
    if (step.kind == StepKind::Abort)
        AbortCurrentSong();
    if (step.kind == StepKind::FailInit)
        FailNextSimulatedInit();
}

void PlayerUnderTest::TakeFile(const Step& step)
{
    const bool isFile =
        step.kind == StepKind::Delete || step.kind == StepKind::Restore || step.kind == StepKind::Become;
    if (!isFile || m_songs.empty())
        return;
    CardSong& song = m_songs[static_cast<std::size_t>(step.a) % m_songs.size()];
    if (step.kind == StepKind::Become)
        song.kind = static_cast<SongKind>(step.b);
    else
        song.isThere = step.kind == StepKind::Restore;
    PutSong(song);
}

void PlayerUnderTest::TakeWorld(const Step& step)
{
    if (step.kind == StepKind::Focus) {
        m_isInFront = step.a != 0;
        user::SetDisplayActive(m_isInFront);
    }
    if (step.kind == StepKind::Activate && IsOnTop())
        SendMessageW(m_window, WM_ACTIVATE, static_cast<WPARAM>(step.a), 0);
    if (step.kind == StepKind::Priority)
        PutPriority(step.a);
    if (step.kind == StepKind::AudioState)
        PostMessageW(HWND_BROADCAST, g_msgAudioManager, WordsOf(0, step.a), 0);
}

void PlayerUnderTest::PutBackSongsThatLeft()
{
    std::set<std::string> names;
    for (const MediaFileEntry& entry : ConstSongList(PlayList))
        names.insert(Narrow(entry.fileName));
    for (CardSong& song : m_songs) {
        if (names.count(song.name) > 0)
            continue;
        song.isThere = true;
        PutSong(song);
        const WString name(song.name.begin(), song.name.end());
        SongList(PlayList).Append(NewMediaEntry(name, TEXT("\\SDMMC")));
    }
}

void PlayerUnderTest::Wait(int milliseconds)
{
    m_clock.Advance(static_cast<std::uint64_t>(milliseconds));
    AdvanceSimulatedGraphs();
    Pump();
}

void PlayerUnderTest::Exit(int road)
{
    switch (road) {
    case 1: Press(VK_F24); break;
    case 2: Tap(kExitKey); break;
    case 3: PostMessageW(HWND_BROADCAST, g_msgMassStorage, 0, 0); break;
    default: SendMessageW(m_window, WM_COMMAND, kCommandExit, 0);
    }
    Pump();
}

} // namespace cardsong::test
