// Commands that the buttons send, each the identity of one button.
#pragma once

#include "platform/ce.h"

constexpr WORD kCommandPrevious = 256;
constexpr WORD kCommandBack5 = 257;
constexpr WORD kCommandPlay = 258;
constexpr WORD kCommandPause = 259;
constexpr WORD kCommandStop = 260;
constexpr WORD kCommandForward5 = 261;
constexpr WORD kCommandNext = 262;
constexpr WORD kCommandShuffleOff = 263;
constexpr WORD kCommandShuffleOn = 264;
constexpr WORD kCommandRepeatOff = 265;
constexpr WORD kCommandRepeatAll = 266;
constexpr WORD kCommandRepeatSingle = 267;
