#include "tests/app/model/model_engine.h"

#include <algorithm>
#include <utility>

namespace cardsong::test {

void ModelEngine::Open(const CardSong& song)
{
    Close();
    m_state = EngineState::Stopped;
    m_name = song.name;
    m_hasMusic = song.kind != SongKind::WithoutMusic;
    if (!m_hasMusic)
        return;
    const bool isSilentSecond = song.kind == SongKind::WithoutDecoder;
    m_lengthSeconds = isSilentSecond ? 1.0 : song.lengthSeconds;
    m_isLengthKnown = !isSilentSecond && song.kind != SongKind::OfUnknownLength;
}

void ModelEngine::Enter(EngineState state, std::uint32_t tick)
{
    if (!IsOpen() || state == m_state)
        return;
    Anchor(Position(tick), tick);
    m_state = state;
    if (state == EngineState::Stopped)
        m_isEndTold = false;
}

void ModelEngine::Seek(double seconds, std::uint32_t tick)
{
    if (!IsOpen() || !m_hasMusic)
        return;
    m_isEndTold = false;
    Anchor(std::clamp(seconds, 0.0, m_lengthSeconds), tick);
}

bool ModelEngine::Look(std::uint32_t tick)
{
    return Position(tick) >= m_lengthSeconds && End(tick);
}

bool ModelEngine::End(std::uint32_t tick)
{
    if (!m_hasMusic || m_state != EngineState::Running || m_isEndTold)
        return false;
    Anchor(Position(tick), tick);
    m_isEndTold = true;
    m_endWaits = true;
    return true;
}

bool ModelEngine::TakeEnd()
{
    return std::exchange(m_endWaits, false);
}

double ModelEngine::Position(std::uint32_t tick) const
{
    if (!m_hasMusic || m_state != EngineState::Running || m_isEndTold)
        return m_anchorSeconds;
    const double playedSeconds = static_cast<double>(tick - m_anchorTick) / 1000.0;
    return std::min(m_anchorSeconds + playedSeconds, std::max(m_anchorSeconds, m_lengthSeconds));
}

double ModelEngine::Duration() const
{
    if (!IsOpen())
        return 0.0;
    return m_isLengthKnown ? m_lengthSeconds : 1.0;
}

void ModelEngine::Anchor(double seconds, std::uint32_t tick)
{
    m_anchorSeconds = seconds;
    m_anchorTick = tick;
}

} // namespace cardsong::test
