// The device's own program for loudness and tone.
#pragma once

// Starts it; nothing happens on a device that has none.
void StartAudioSettings();
