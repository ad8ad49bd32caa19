// Which song follows which.
#include "tests/app/model/player_model.h"

#include <algorithm>
#include <utility>

namespace cardsong::test {

void PlayerModel::Next()
{
    if (!m_isLoaded)
        return;
    int number = m_current + 1;
    if (m_shuffle) {
        m_shufflePrevious = m_current;
        number = TakeRemembered(m_shuffleNext);
        if (number == 0)
            number = DrawUnplayed();
    } else if (m_current == Count()) {
        if (m_repeat != Repeat::All) {
            Stop();
            return;
        }
        number = 1;
    }
    MakeCurrent(number);
    ChangeSongs();
}

void PlayerModel::Previous()
{
    if (!m_isLoaded)
        return;
    int number = m_current - 1;
    if (m_shuffle) {
        m_shuffleNext = m_current;
        number = TakeRemembered(m_shufflePrevious);
        if (number == 0)
            number = DrawNumber();
    } else if (m_current == 1) {
        if (m_repeat != Repeat::All)
            return;
        number = Count();
    }
    MakeCurrent(number);
    ChangeSongs();
}

// A player that was paused is paused on the new song.
void PlayerModel::ChangeSongs()
{
    const bool wasPlaying = m_isPlaying;
    Stop();
    PlayOrPause();
    if (!wasPlaying && m_isPlaying)
        PlayOrPause();
}

int PlayerModel::DrawNumber()
{
    return static_cast<int>(m_numbers.Draw() % static_cast<std::uint32_t>(Count())) + 1;
}

int PlayerModel::DrawUnplayed()
{
    const bool areAllPlayed = std::ranges::all_of(m_list, &Entry::isPlayed);
    int number = DrawNumber();
    while (!areAllPlayed && At(number).isPlayed)
        number = DrawNumber();
    return number;
}

// None when the list has become shorter than that.
int PlayerModel::TakeRemembered(int& number) const
{
    const int remembered = std::exchange(number, 0);
    return remembered <= Count() ? remembered : 0;
}

void PlayerModel::TurnShuffle()
{
    m_shuffle = !m_shuffle;
    ShowOnly(m_shuffle ? 264 : 263, { 263, 264 });
    if (m_shuffle) {
        for (Entry& entry : m_list)
            entry.isPlayed = false;
        if (m_isLoaded)
            At(m_current).isPlayed = true;
        Enable(256, true);
        Enable(262, true);
        return;
    }
    if (m_current == 1)
        Enable(256, m_repeat == Repeat::All);
    if (m_current == Count())
        Enable(262, false);
}

void PlayerModel::StepRepeat()
{
    m_repeat = m_repeat == Repeat::Off ? Repeat::All : m_repeat == Repeat::All ? Repeat::Single : Repeat::Off;
    ShowOnly(m_repeat == Repeat::All ? 266 : m_repeat == Repeat::Single ? 267 : 265, { 265, 266, 267 });
    if (m_repeat == Repeat::All) {
        Enable(256, true);
        Enable(262, true);
        return;
    }
    if (m_current == 1)
        Enable(256, false);
    if (m_current == Count())
        Enable(262, false);
}

// An end that is told after stop is dropped.
void PlayerModel::TakeEnd()
{
    if (!m_engine.TakeEnd() || !m_isLoaded)
        return;
    if (m_repeat == Repeat::Single) {
        MakeCurrent(m_current); // whichever row is marked
        Stop();
        PlayOrPause();
    } else if (m_shuffle || m_repeat == Repeat::All) {
        Next();
    } else {
        Stop();
    }
}

} // namespace cardsong::test
