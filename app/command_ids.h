// Ids of the main window's commands, timers and strings. Those of the transport buttons stand with the button set.
#pragma once

#include "controls/player_button_ids.h"
#include "platform/ce.h"

constexpr WORD kCommandExit = 18;
constexpr WORD kCommandAudioSettings = 22;
constexpr WORD kCommandPlayListWindow = 24;

// High word of the stop command: do not repaint, another song follows at once.
constexpr WORD kStopQuietly = 1;

constexpr int kSeekSliderId = 300;
constexpr int kSeekSliderMaximum = 400;

constexpr UINT_PTR kLyricsTimer = 200;
constexpr UINT_PTR kTitleTimer = 1000;

constexpr int kStringNoCardTitle = 17001;
constexpr int kStringNoCardMessage = 1039;
constexpr int kStringExit = 17002;
constexpr int kStringPlayList = 17003;

// Module of the player in the debug log.
constexpr unsigned kLogModule = 33;
