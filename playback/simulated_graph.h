// What a test tells the simulated engine and asks of it. Songs take their length from a table and run on the tick
// count, so that a virtual clock plays them; no file is opened and nothing sounds. Each call may come from any thread.
#pragma once

#include "platform/ce.h"

#include <functional>
#include <string>
#include <vector>

struct SimulatedSong {
    double lengthSeconds = 180.0;
    bool lengthKnown = true;     // false: the length query fails
    bool playable = true;        // false: nothing in the file is music
    bool decoderMissing = false; // true: this machine cannot play it, and runs through one silent second
};

// What the song of `path` (letters compared without case) is from its next rendering on. Songs not named are a default
// one.
void SetSimulatedSong(WStringView path, const SimulatedSong& song);
// Called whenever a graph begins to run, on its thread; null: nobody.
void OnSimulatedRun(std::function<void()> listener);
// Forgets songs, calls, the listener and a failure asked for; graphs that live stay as they are.
void ResetSimulatedGraphs();
void FailNextSimulatedInit();

// Reports the end of every running song whose time is over, as the position query of each does too.
void AdvanceSimulatedGraphs();
// The running songs end now, wherever they are; or break off as on a read error; or are aborted.
void FinishCurrentSong();
void BreakCurrentSong();
void AbortCurrentSong();

// Calls of all graphs in order since the last asking: "Init", "RenderFile \SDMMC\a.mp3", "SetVolume -784", "Pause",
// "SetPosition 0.0", "SetNotifyWindow on", "SetNotifyWindow off", "Run", "Stop", "SetRate 2.0", "ReleaseAll".
std::vector<std::string> TakeSimulatedCalls();
// The graphs that hold a song or could.
int LiveSimulatedGraphs();
