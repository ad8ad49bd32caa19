// The rules of the player once more, as plainly as they can be told: values and functions, without windows, timers,
// messages or any code of the program. What it says is compared with the program after every step.
#pragma once

#include "tests/app/model/model_engine.h"
#include "tests/app/model/player_view.h"
#include "tests/app/model/sown_random.h"
#include "tests/app/model/step.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cardsong::test {

struct ModelStart {
    std::vector<CardSong> songs; // all of them on the card and in the saved play list
    std::uint64_t seed = 0;      // of the numbers drawn
    std::optional<int> priority; // in the registry
    std::uint64_t nowMs = 0;
    std::function<long(const std::string& title)> titleWidthPx;
};

class PlayerModel {
public:
    explicit PlayerModel(ModelStart start);

    // Any step but those before the start and Wait.
    void Take(const Step& step);
    // Time passes, 100 ms at the most, and every message is answered.
    void Wait(int milliseconds);
    // What exit writes: the records of the play list.
    [[nodiscard]] std::string SavedList() const;
    [[nodiscard]] PlayerView View() const;

private:
    struct Entry {
        std::size_t song; // index on the card
        int mark = 0;
        bool isPlayed = false;
        double duration = 0;
    };
    struct LibraryEntry {
        std::size_t song;
        bool isChecked = false;
    };
    struct Strip {
        bool isActive;
        long left, right;
    };
    enum class Repeat { Off, All, Single };
    enum class Top { Main, PlayList, Library };
    enum { kProgress = 100, kLyrics = 200, kTitle = 1000 };

    // player_model.cpp: steps and time
    void Obey(int command);
    void StrikeKey(int key);
    void Tap(TapPlace place);
    void TakeSong(const Step& step);
    void TakeWorld(const Step& step);
    void Pump();
    void EndSong();
    void Tick(int timer);
    void RefreshProgress();
    void ScrollTitle();
    void StepStrip(Strip& strip, Strip& other) const;
    [[nodiscard]] std::uint32_t Now() const { return static_cast<std::uint32_t>(m_nowMs); }
    void StartTimer(int id);
    [[nodiscard]] double EnginePosition();

    // player_model_transport.cpp: play, pause, stop, interruptions
    void PlayOrPause();
    void Pause();
    bool PlayCurrent();
    void ChooseEntry();
    [[nodiscard]] double OpenOrResume(const CardSong& song);
    void ShowSong(Entry& entry, double durationSeconds, bool isAnew);
    bool TakeUnplayableOut();
    void Stop();
    void Seek(int slider, int position);
    void ShowLyrics();
    void PauseLyrics();
    void Interrupt();
    void GoOn();
    void LoseForeground();
    void RegainForeground();
    void HearAudioManager(int state);

    // player_model_lists.cpp: the two list windows and what they do to the lists
    void ObeyList(int command);
    void OpenPlayList();
    void ClosePlayList();
    void OpenLibrary();
    void CloseLibrary();
    void Leave(Top window, Top owner);
    void ScanCard(bool intoPlayList);
    void AddWholeCard();
    void MoveFromLibrary(bool all);
    void CheckAllOrNone();
    void ClearList();
    void RemoveMarked();
    [[nodiscard]] bool IsOnTop() const { return m_isInFront && !m_isPlayListOpen && !m_isLibraryOpen; }

    // player_model_order.cpp: next, previous, modes, the end of a song
    void Next();
    void Previous();
    void ChangeSongs();
    [[nodiscard]] int DrawNumber();
    [[nodiscard]] int DrawUnplayed();
    [[nodiscard]] int TakeRemembered(int& number) const;
    void TurnShuffle();
    void StepRepeat();
    void TakeEnd();

    [[nodiscard]] int Count() const { return static_cast<int>(m_list.size()); }
    [[nodiscard]] Entry& At(int number) { return m_list[static_cast<std::size_t>(number - 1)]; }
    [[nodiscard]] CardSong& SongOf(const Entry& entry) { return m_songs[entry.song]; }
    void Mark(int number);
    void MakeCurrent(int number);
    void EnableAll(bool isEnabled);
    void Enable(int command, bool isEnabled) { m_buttons.at(command).isEnabled = isEnabled; }
    void ShowOnly(int shown, std::initializer_list<int> faces);

    std::vector<CardSong> m_songs;
    NumberRow m_numbers;
    std::function<long(const std::string&)> m_titleWidthPx;
    std::uint64_t m_nowMs;

    std::vector<Entry> m_list;
    bool m_isLoaded = false;
    bool m_isPlaying = false;
    int m_current = 0;
    bool m_isInterrupted = false;
    double m_savedPosition = 0;
    bool m_shuffle = false;
    Repeat m_repeat = Repeat::Off;
    int m_shufflePrevious = 0;
    int m_shuffleNext = 0;
    std::optional<int> m_priority;
    int m_keptPriority = 0;
    bool m_isInFront = true; // the program
    std::vector<LibraryEntry> m_library;
    bool m_isPlayListOpen = false;
    bool m_isLibraryOpen = false;
    bool m_isLibraryOnList = false; // the library window belongs to the play list window
    Top m_active = Top::Main;       // when the program is in front

    std::map<int, ButtonView> m_buttons;
    bool m_isSliderEnabled = false;
    int m_sliderPosition = 0;
    std::string m_title, m_elapsed = "0:00", m_total = "0:00";
    Strip m_stripA{ false, 180, 318 };
    Strip m_stripB{ false, 0, 0 };
    std::map<int, std::uint64_t> m_timers;
    bool m_hasLyrics = false;

    ModelEngine m_engine;
    bool m_isPaused = false; // the facade's word: the open song was paused, not stopped
    bool m_failsNextInit = false;
    bool m_endIsPosted = false;
};

// "--:--", "0:59", "1:00:00"
[[nodiscard]] std::string TimeText(double seconds);

} // namespace cardsong::test
