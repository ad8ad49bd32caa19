#include "app/progress.h"

#include "app/command_ids.h"
#include "app/interruption.h"
#include "app/player_controls.h"
#include "app/player_state.h"
#include "app/status_report.h"
#include "library/play_time_text.h"
#include "playback/media_player.h"

namespace {

const WString kUnknownTime = TEXT("--:--");

void ShowElapsed(double positionSeconds)
{
    WString text = FormatPlayTime(static_cast<unsigned>(positionSeconds));
    if (text == kUnknownTime)
        text = TEXT("0:00");
    if (text == g_elapsedText)
        return;
    g_elapsedText = text;
    ReportProgress();
}

} // namespace

void RefreshProgress()
{
    const double positionSeconds = ShownPosition();
    const double durationSeconds = Player().GetDuration();
    if (positionSeconds == 0)
        g_controls.buttons.Enable(kCommandBack5, false);
    if (durationSeconds > 0)
        g_controls.slider->SetPos(static_cast<int>(positionSeconds / durationSeconds * kSeekSliderMaximum));
    ShowElapsed(positionSeconds);
}
