// Play, pause, stop, and how the player gives way.
#include "tests/app/model/player_model.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace cardsong::test {

namespace {

constexpr double kCannotOpen = -8;

std::string TitleOf(const CardSong& song, int number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%02d.%s", number, song.name.substr(0, song.name.rfind('.')).c_str());
    return text;
}

} // namespace

void PlayerModel::Mark(int number)
{
    int place = 0;
    for (Entry& entry : m_list)
        entry.mark = ++place == number ? number : 0;
}

void PlayerModel::MakeCurrent(int number)
{
    Mark(number);
    m_current = number;
}

void PlayerModel::EnableAll(bool isEnabled)
{
    for (auto& [command, button] : m_buttons)
        if (command != 258 && command != 259)
            button.isEnabled = isEnabled;
    m_isSliderEnabled = isEnabled;
}

void PlayerModel::ShowOnly(int shown, std::initializer_list<int> faces)
{
    for (const int face : faces)
        m_buttons.at(face).isShown = face == shown;
}

void PlayerModel::PlayOrPause()
{
    if (m_isPlaying) {
        Pause();
        return;
    }
    if (m_isLoaded && m_current >= 1 && m_current <= Count())
        MakeCurrent(m_current); // the paused song goes on, whichever row is marked
    const bool isCardThere = std::ranges::any_of(m_list, [this](const Entry& entry) { return SongOf(entry).isThere; });
    bool goesOn = true;
    while (goesOn && !m_list.empty()) {
        m_isLoaded = true;
        if (PlayCurrent())
            return;
        goesOn = isCardThere && TakeUnplayableOut(); // what is merely away is not taken out
        Stop();
    }
    m_isLoaded = false;
}

void PlayerModel::Pause()
{
    ShowOnly(258, { 258, 259 });
    m_isPlaying = false;
    if (m_engine.IsOpen()) {
        m_engine.Enter(EngineState::Paused, Now());
        StartTimer(kProgress);
        m_isPaused = true;
    }
    PauseLyrics();
}

bool PlayerModel::PlayCurrent()
{
    m_isPlaying = true;
    ShowOnly(259, { 258, 259 });
    EnableAll(true);
    ChooseEntry();
    Entry& entry = At(m_current);
    if (m_shuffle)
        entry.isPlayed = true;
    if (m_isInterrupted) {
        Seek(0, 0);
        m_isInterrupted = false;
        m_savedPosition = 0;
    }
    if (m_title.empty())
        m_title = TitleOf(SongOf(entry), m_current);
    const bool isAnew = !(m_isPaused && m_engine.Name() == SongOf(entry).name);
    const double duration = OpenOrResume(SongOf(entry));
    StartTimer(kTitle);
    if (duration <= 0)
        return false;
    ShowSong(entry, duration, isAnew);
    return true;
}

void PlayerModel::ChooseEntry()
{
    const auto marked = std::ranges::find_if(m_list, [](const Entry& entry) { return entry.mark != 0; });
    const bool goesRound = m_repeat == Repeat::All || m_shuffle;
    if (marked == m_list.end()) {
        MakeCurrent(1);
        if (m_repeat != Repeat::All)
            Enable(256, false);
        return;
    }
    m_current = marked->mark;
    if (m_current == Count() && !goesRound)
        Enable(262, false);
    else if (m_current == 1 && !goesRound)
        Enable(256, false);
}

double PlayerModel::OpenOrResume(const CardSong& song)
{
    if (!m_isPaused || m_engine.Name() != song.name) {
        if (!song.isThere)
            return kCannotOpen; // and what was open stays open
        m_engine.Close();
        if (std::exchange(m_failsNextInit, false))
            return kCannotOpen;
        m_engine.Open(song);
    }
    m_engine.Enter(EngineState::Running, Now());
    StartTimer(kProgress);
    m_isPaused = false;
    return m_engine.Duration();
}

void PlayerModel::ShowSong(Entry& entry, double durationSeconds, bool isAnew)
{
    m_total = TimeText(durationSeconds);
    if (entry.duration == 0 && m_engine.KnowsDuration())
        entry.duration = durationSeconds;
    if (!m_stripA.isActive && !m_stripB.isActive)
        m_stripA = { true, 180, 180 + m_titleWidthPx(m_title) };
    if (isAnew)
        m_hasLyrics = SongOf(entry).kind == SongKind::WithLyrics;
    ShowLyrics();
}

// True when the player goes on with the next song.
bool PlayerModel::TakeUnplayableOut()
{
    m_list.erase(m_list.begin() + (m_current - 1));
    if (m_list.empty())
        return false;
    MakeCurrent(m_current <= Count() ? m_current : 1);
    return m_current != 1 || m_repeat == Repeat::All || m_shuffle;
}

void PlayerModel::Stop()
{
    if (m_keptPriority < 5)
        m_priority = m_keptPriority;
    m_isInterrupted = false;
    m_savedPosition = 0;
    if (m_isPlaying)
        ShowOnly(258, { 258, 259 });
    PauseLyrics();
    m_hasLyrics = false;
    m_stripA = { false, 180, 318 };
    m_stripB = { false, 0, 0 };
    m_elapsed = "0:00";
    m_current = 0;
    m_isLoaded = false;
    m_isPlaying = false;
    m_timers.erase(kTitle);
    m_title.clear();
    if (m_engine.IsOpen()) {
        m_engine.Seek(0, Now());
        m_engine.Enter(EngineState::Stopped, Now());
        m_timers.erase(kProgress);
        m_isPaused = false;
    }
    m_sliderPosition = 0;
    EnableAll(false);
}

void PlayerModel::Seek(int slider, int position)
{
    if (m_isInterrupted)
        m_engine.Seek(m_savedPosition, Now());
    else if (slider == 300)
        m_engine.Seek(m_engine.Duration() * position / 400, Now());
}

// ---- lyrics ----

void PlayerModel::ShowLyrics()
{
    if (m_hasLyrics)
        StartTimer(kLyrics);
}

void PlayerModel::PauseLyrics()
{
    m_timers.erase(kLyrics);
}

// ---- giving way ----

void PlayerModel::Interrupt()
{
    Pause();
    m_isInterrupted = true;
    m_savedPosition = EnginePosition();
}

void PlayerModel::GoOn()
{
    PlayOrPause();
    m_isInterrupted = false;
    m_savedPosition = 0;
}

void PlayerModel::LoseForeground()
{
    if (m_isPlaying && m_priority.value_or(m_keptPriority) >= 2)
        Interrupt();
    PauseLyrics();
}

void PlayerModel::RegainForeground()
{
    if (!m_isPlaying && m_isInterrupted && m_priority.value_or(m_keptPriority) <= 1)
        GoOn();
    if (m_isPlaying)
        ShowLyrics();
}

void PlayerModel::HearAudioManager(int state)
{
    if (state >= 2 && m_isPlaying)
        Interrupt();
    else if (state <= 1 && !m_isPlaying && m_isInterrupted)
        GoOn();
}

} // namespace cardsong::test
