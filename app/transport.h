// Play, pause, stop and seek. Each function answers one command or message.
#pragma once

#include "platform/ce.h"

// Pauses while playing; else goes on with the paused song, or plays the marked one, or the first. Songs that are gone
// or no music leave the list; while their card is away, all stay and the player stops.
void PlayOrPause(HWND window);
// `request`: wParam of the stop command; its high word kStopQuietly leaves the picture for the next song to repaint.
void StopSong(HWND window, WPARAM request);
// Answer to the seek slider: `sliderPosition` 0 to kSeekSliderMaximum.
void SeekToSlider(WPARAM sliderId, LPARAM sliderPosition);
void StepBack5Seconds();
void StepForward5Seconds();
