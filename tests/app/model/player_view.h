// All that can be seen of a player at one moment. The model tells what should be seen, the player what is.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace cardsong::test {

struct EntryView {
    std::string name;
    int mark = 0;
    bool isPlayed = false;
    double duration = 0;
    bool operator==(const EntryView&) const = default;
};

struct LibraryView {
    std::string name;
    bool isChecked = false;
    bool operator==(const LibraryView&) const = default;
};

struct ButtonView {
    bool isEnabled = true;
    bool isShown = true;
    bool operator==(const ButtonView&) const = default;
};

struct StripView {
    bool isActive = false;
    long left = 0;
    long right = 0;
    bool operator==(const StripView&) const = default;
};

struct PlayerView {
    int loaded = 0;
    int playing = 0;
    int stepping = 0;
    int current = 0;
    int interrupted = 0;
    double savedPosition = 0;
    int shuffle = 0;
    int repeatAll = 0;
    int repeatOne = 0;
    int shufflePrevious = 0;
    int shuffleNext = 0;
    std::vector<EntryView> list;
    std::vector<LibraryView> library;
    bool isPlayListOpen = false; // its window
    bool isLibraryOpen = false;
    std::map<int, ButtonView> buttons; // by command
    bool isSliderEnabled = false;
    int sliderPosition = 0;
    std::string title, elapsed, total;
    std::array<StripView, 2> strips;
    std::map<int, std::uint64_t> timers; // id, and when it is due
    int lyricsShown = 0;
    std::string openSong; // by the engine; empty: none
    std::string engine;   // "stopped", "paused", "running"; empty: none
    double position = 0;  // of the engine
    int priority = 0;     // in the registry; -1: none
    int keptPriority = 0; // that is written back
};

// A line for each thing that differs; empty when nothing does.
[[nodiscard]] std::string Differences(const PlayerView& expected, const PlayerView& seen);

// What holds for every player at every moment, whatever the model says; a line for each law that is broken.
[[nodiscard]] std::string BrokenLaws(const PlayerView& seen);

} // namespace cardsong::test
