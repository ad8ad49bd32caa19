#include "app/song_steps.h"

#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/player_state.h"
#include "app/step_choice.h"

namespace {

// Keeps the commands that a change of songs sends from starting another one.
class StepGuard {
public:
    StepGuard() : m_entered(!IsStepping())
    {
        if (m_entered)
            g_stepBusy = 1;
    }
    ~StepGuard()
    {
        if (m_entered)
            g_stepBusy = 0;
    }
    StepGuard(const StepGuard&) = delete;
    StepGuard& operator=(const StepGuard&) = delete;
    [[nodiscard]] bool MayStep() const { return m_entered && IsSongLoaded(); }

private:
    bool m_entered;
};

void ChangeSongs(HWND window)
{
    const bool wasPlaying = IsPlaying();
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(kCommandStop, kStopQuietly), 0);
    SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
    if (!wasPlaying && IsPlaying()) // where nothing could be played, the player has stopped
        SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
}

} // namespace

void StepToNext(HWND window)
{
    const StepGuard guard;
    if (!guard.MayStep())
        return;
    const int number = ChooseNext(ConstSongList(PlayList), g_currentNumber, g_playModes);
    if (number == 0) {
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
        return;
    }
    MakeCurrent(number);
    ChangeSongs(window);
}

void StepToPrevious(HWND window)
{
    const StepGuard guard;
    if (!guard.MayStep())
        return;
    const int number = ChoosePrevious(ConstSongList(PlayList), g_currentNumber, g_playModes);
    if (number == 0)
        return;
    MakeCurrent(number);
    ChangeSongs(window);
}
