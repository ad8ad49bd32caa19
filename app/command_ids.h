// Ids of the main window's commands, timers and strings. Those of the transport buttons stand with the button set.
#pragma once

#include "controls/player_button_ids.h"
#include "platform/ce.h"

constexpr WORD kCommandPlayListBack = 16;
constexpr WORD kCommandExit = 18;
constexpr WORD kCommandAudioSettings = 22;
constexpr WORD kCommandPlayListWindow = 24;
constexpr WORD kCommandLibraryWindow = 25;
constexpr WORD kCommandClearPlayList = 28;
constexpr WORD kCommandPlayMarked = 29;
constexpr WORD kCommandCheckAll = 30;
constexpr WORD kCommandAddCard = 31;
constexpr WORD kCommandRemoveMarked = 33;
constexpr WORD kCommandLibraryDone = 35;

// High word of the stop command: do not repaint, another song follows at once.
constexpr WORD kStopQuietly = 1;

constexpr UINT kPlayListWindowId = 50;
constexpr UINT kLibraryWindowId = 51;
constexpr int kSeekSliderId = 300;
constexpr int kSeekSliderMaximum = 400;

constexpr UINT_PTR kLyricsTimer = 200;
constexpr UINT_PTR kTitleTimer = 1000;

constexpr int kStringNoCardTitle = 17001;
constexpr int kStringNoCardMessage = 1039;
constexpr int kStringExit = 17002;
constexpr int kStringPlayList = 17003;
constexpr int kStringPlayListTitle = 17010;
constexpr int kStringLibraryTitle = 17011;
constexpr int kStringOfCommandZero = 17000; // and the command's number: the captions of the list windows' keys
constexpr int kStringScanTitle = 17045;
constexpr int kStringScanMessage = 17046;

// Module of the player in the debug log.
constexpr unsigned kLogModule = 33;
