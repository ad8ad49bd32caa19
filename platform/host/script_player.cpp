#include "platform/host/script_player.h"

#include <cstdio>

namespace cardsong::host {

ScriptPlayer::~ScriptPlayer()
{
    Stop();
}

void ScriptPlayer::Start(std::vector<ScriptStep> steps)
{
    m_thread = std::thread([this, script = std::move(steps)] {
        for (const ScriptStep& step : script) {
            {
                const std::lock_guard lock(m_mutex);
                if (m_stops)
                    break;
            }
            Play(step);
        }
        m_isFinished = true;
    });
}

void ScriptPlayer::Stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stops = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void ScriptPlayer::Play(const ScriptStep& step)
{
    if (const auto* key = std::get_if<KeyStep>(&step)) {
        m_hands.Press(key->key);
    } else if (const auto* command = std::get_if<CommandStep>(&step)) {
        m_hands.Command(command->command);
    } else if (const auto* tap = std::get_if<TapStep>(&step)) {
        m_hands.Tap(tap->x, tap->y);
    } else if (const auto* wait = std::get_if<WaitStep>(&step)) {
        std::unique_lock lock(m_mutex);
        m_hands.Wait(lock, m_changed, wait->milliseconds, [this] { return m_stops; });
    } else if (const auto* shot = std::get_if<ShotStep>(&step)) {
        if (m_hands.Shoot(shot->path))
            return;
        std::fprintf(stderr, "cardsong: cannot write the picture %s\n", shot->path.c_str());
        m_allWritten = false;
    }
}

} // namespace cardsong::host
