// One step of a script: what happens to the player, in words that can be printed and read back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cardsong::test {

enum class StepKind {
    // What the player finds at its start; they stand before all others.
    Draws,    // the seed of the numbers that Random() draws
    Song,     // one more song in the saved play list: its SongKind, its length in tenths of a second
    Priority, // in the registry: now, or from the start on
    // What the user does.
    Command, // WM_COMMAND with this id and high word
    Sent,    // the same, and what is posted meanwhile waits for the next step
    Key,
    HeldKey,    // repeats once
    Tap,        // on a TapPlace
    Slide,      // the seek slider asks for this position
    Row,        // the play list window tells that this row was tapped
    Check,      // the library window tells it
    CloseLists, // both windows go without a command
    // What happens to it.
    Wait,     // milliseconds
    Finish,   // the song ends now
    EndWaits, // the same, and its notice waits for the next step
    Break,    // the song breaks off
    Abort,
    Delete,  // the file of the song of this index
    Restore, // that file
    Become,  // that file becomes another SongKind
    FailInit,
    Focus,    // 0: another program comes to the front, 1: it goes
    Activate, // WM_ACTIVATE with this word
    AudioState,
    Exit, // by this road; nothing comes after it
};

enum class SongKind { Plain, WithLyrics, OfUnknownLength, WithoutDecoder, WithoutMusic };
constexpr int kSongKinds = 5;

enum class TapPlace { Play, Stop, Next, Previous, Repeat, Shuffle };
constexpr int kTapPlaces = 6;
constexpr int kExitRoads = 4; // the command, the key, the soft key, the storage that is taken away

struct Step {
    StepKind kind;
    int a = 0;
    int b = 0;
    bool operator==(const Step&) const = default;
};

using Script = std::vector<Step>;

[[nodiscard]] bool StandsBeforeTheStart(StepKind kind);

// "Song 0 30; Key 13; Wait 100": what ReadScript takes back.
[[nodiscard]] std::string WriteScript(const Script& script);
// Throws std::invalid_argument at a word that names no step.
[[nodiscard]] Script ReadScript(std::string_view text);

} // namespace cardsong::test
