// What the model knows of sound: one song behind one graph, which runs on the ticks of the clock.
#pragma once

#include "tests/app/model/step.h"

#include <cstdint>
#include <string>

namespace cardsong::test {

// A song of the card.
struct CardSong {
    std::string name;
    SongKind kind = SongKind::Plain;
    double lengthSeconds = 0;
    double savedSeconds = 0; // in the saved play list: 0, or whole
    bool isThere = true;
};

enum class EngineState { None, Stopped, Paused, Running }; // None: nothing was ever opened, or the last opening failed

class ModelEngine {
public:
    void Open(const CardSong& song);
    void Close() { *this = {}; }
    void Enter(EngineState state, std::uint32_t tick);
    // A place outside the song is its beginning or its end.
    void Seek(double seconds, std::uint32_t tick);
    // The end is told once, when somebody looks after the song's time is over; true: now.
    bool Look(std::uint32_t tick);
    // The song ends wherever it is. False where none runs.
    bool End(std::uint32_t tick);
    // What waits to be asked for.
    bool TakeEnd();

    [[nodiscard]] bool IsOpen() const { return m_state != EngineState::None; }
    [[nodiscard]] EngineState State() const { return m_state; }
    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] double Position(std::uint32_t tick) const;
    // 1 where nobody knows it.
    [[nodiscard]] double Duration() const;
    [[nodiscard]] bool KnowsDuration() const { return IsOpen() && m_isLengthKnown; }

private:
    void Anchor(double seconds, std::uint32_t tick);

    EngineState m_state = EngineState::None;
    std::string m_name;
    bool m_hasMusic = false;
    bool m_isLengthKnown = true;
    double m_lengthSeconds = 0;
    double m_anchorSeconds = 0;
    std::uint32_t m_anchorTick = 0;
    bool m_isEndTold = false;
    bool m_endWaits = false;
};

} // namespace cardsong::test
