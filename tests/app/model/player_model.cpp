#include "tests/app/model/player_model.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace cardsong::test {

namespace {

constexpr int kLeft = 37;
constexpr int kRight = 39;
constexpr int kEnter = 13;

} // namespace

std::string TimeText(double seconds)
{
    const auto whole = static_cast<unsigned>(seconds);
    char text[32];
    if (whole == 0)
        return "--:--";
    if (whole < 3600)
        std::snprintf(text, sizeof text, "%u:%02u", whole / 60, whole % 60);
    else
        std::snprintf(text, sizeof text, "%u:%02u:%02u", whole / 3600, whole / 60 % 60, whole % 60);
    return text;
}

PlayerModel::PlayerModel(ModelStart start)
    : m_songs(std::move(start.songs)), m_numbers(start.seed), m_titleWidthPx(std::move(start.titleWidthPx)),
      m_nowMs(start.nowMs), m_priority(start.priority), m_keptPriority(start.priority.value_or(0))
{
    for (std::size_t i = 0; i < m_songs.size(); ++i)
        m_list.push_back({ i, 0, false, m_songs[i].savedSeconds });
    for (const int command : { 256, 258, 259, 260, 262, 263, 264, 265, 266, 267 })
        m_buttons[command] = {};
    for (const int first : { 256, 260, 262, 263, 265 })
        Enable(first, false);
    for (const int hidden : { 259, 264, 266, 267 })
        m_buttons[hidden].isShown = false;
}

void PlayerModel::Take(const Step& step)
{
    switch (step.kind) {
    case StepKind::Sent: Obey(step.a); return; // what is posted waits
    case StepKind::EndWaits: EndSong(); return;
    case StepKind::Command: Obey(step.a); break;
    case StepKind::Key:
        Pump();
        StrikeKey(step.a);
        break;
    case StepKind::HeldKey:
        Pump();
        StrikeKey(step.a);
        if (step.a != kEnter)
            StrikeKey(step.a);
        break;
    case StepKind::Tap:
        Pump();
        Tap(static_cast<TapPlace>(step.a));
        break;
    case StepKind::Slide: Seek(300, step.a); break;
    case StepKind::Row:
        if (Count() > 0)
            Mark(step.a % Count() + 1);
        break;
    case StepKind::Check:
        if (!m_library.empty()) {
            bool& isChecked = m_library[static_cast<std::size_t>(step.a) % m_library.size()].isChecked;
            isChecked = !isChecked;
        }
        break;
    case StepKind::CloseLists:
        CloseLibrary();
        ClosePlayList();
        break;
    case StepKind::Finish:
    case StepKind::Break:
    case StepKind::Abort: EndSong(); break;
    case StepKind::AudioState:
        Pump();
        HearAudioManager(step.a);
        break;
    default: step.kind == StepKind::Focus || step.kind == StepKind::Activate ? TakeWorld(step) : TakeSong(step);
    }
    Pump();
}

void PlayerModel::Obey(int command)
{
    switch (command) {
    case 256: Previous(); break;
    case 257: m_engine.Seek(EnginePosition() - 5, Now()); break;
    case 258:
    case 259: PlayOrPause(); break;
    case 260: Stop(); break;
    case 261: m_engine.Seek(EnginePosition() + 5, Now()); break;
    case 262: Next(); break;
    case 263:
    case 264: TurnShuffle(); break;
    case 265:
    case 266:
    case 267: StepRepeat(); break;
    default: ObeyList(command);
    }
}

void PlayerModel::StrikeKey(int key)
{
    if (!IsOnTop())
        return;
    switch (key) {
    case kLeft: Previous(); break;
    case kRight: Next(); break;
    case kEnter: PlayOrPause(); break;
    default: break;
    }
}

void PlayerModel::Tap(TapPlace place)
{
    static const std::map<TapPlace, std::vector<int>> kFaces = {
        { TapPlace::Play, { 258, 259 } }, { TapPlace::Stop, { 260 } },         { TapPlace::Next, { 262 } },
        { TapPlace::Previous, { 256 } },  { TapPlace::Shuffle, { 263, 264 } }, { TapPlace::Repeat, { 265, 266, 267 } },
    };
    if (!IsOnTop())
        return;
    for (const int face : kFaces.at(place))
        if (m_buttons.at(face).isShown) {
            if (m_buttons.at(face).isEnabled)
                Obey(face);
            return;
        }
}

void PlayerModel::TakeSong(const Step& step)
{
    if (step.kind == StepKind::FailInit)
        m_failsNextInit = true;
    if (step.kind == StepKind::Priority)
        m_priority = step.a;
    if (m_songs.empty())
        return;
    CardSong& song = m_songs[static_cast<std::size_t>(step.a) % m_songs.size()];
    if (step.kind == StepKind::Delete)
        song.isThere = false;
    if (step.kind == StepKind::Restore)
        song.isThere = true;
    if (step.kind == StepKind::Become)
        song.kind = static_cast<SongKind>(step.b);
}

void PlayerModel::TakeWorld(const Step& step)
{
    if (step.kind == StepKind::Activate) {
        if (step.a == 1 && IsOnTop())
            RegainForeground();
    } else if (m_isInFront != (step.a != 0)) {
        m_isInFront = step.a != 0;
        if (m_active == Top::Main)
            m_isInFront ? RegainForeground() : LoseForeground();
    }
}

// ---- time ----

void PlayerModel::Wait(int milliseconds)
{
    m_nowMs += static_cast<std::uint64_t>(milliseconds);
    if (m_engine.Look(Now()))
        m_endIsPosted = true;
    Pump();
}

// What was posted comes before the ticks.
void PlayerModel::Pump()
{
    for (;;) {
        if (std::exchange(m_endIsPosted, false)) {
            TakeEnd();
            continue;
        }
        const auto due = std::ranges::find_if(m_timers, [this](const auto& timer) { return timer.second <= m_nowMs; });
        if (due == m_timers.end())
            return;
        due->second += ((m_nowMs - due->second) / 100 + 1) * 100;
        Tick(due->first);
    }
}

void PlayerModel::EndSong()
{
    if (m_engine.End(Now()))
        m_endIsPosted = true;
}

void PlayerModel::StartTimer(int id)
{
    if (m_timers.count(id) == 0)
        m_timers[id] = m_nowMs + 100;
}

double PlayerModel::EnginePosition()
{
    if (m_engine.Look(Now()))
        m_endIsPosted = true;
    return m_engine.Position(Now());
}

void PlayerModel::Tick(int timer)
{
    if (timer == kProgress)
        RefreshProgress();
    else if (timer == kTitle && m_isLoaded)
        ScrollTitle();
}

void PlayerModel::RefreshProgress()
{
    const double position = m_isInterrupted ? m_savedPosition : EnginePosition();
    const double duration = m_engine.Duration();
    const double slider = duration > 0 ? position / duration * 400 : m_sliderPosition;
    if (slider <= 400) // the slider takes no place beyond its end
        m_sliderPosition = static_cast<int>(slider);
    const std::string text = TimeText(position);
    m_elapsed = text == "--:--" ? "0:00" : text;
}

void PlayerModel::ScrollTitle()
{
    StepStrip(m_stripA, m_stripB);
    StepStrip(m_stripB, m_stripA);
    for (Strip* strip : { &m_stripA, &m_stripB })
        if (m_isPlaying && strip->isActive) {
            strip->left -= 5;
            strip->right -= 5;
        }
}

void PlayerModel::StepStrip(Strip& strip, Strip& other) const
{
    if (strip.isActive && strip.right <= 0)
        strip.isActive = false;
    else if (strip.isActive && strip.left < 0 && strip.right <= 268 && !other.isActive)
        other = { true, 318, 318 + m_titleWidthPx(m_title) };
}

} // namespace cardsong::test
