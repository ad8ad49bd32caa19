// The commands that change the play modes: what they change of the list, the faces and the step buttons.
#pragma once

// Shuffle goes on or off. Going on, every song but the current one counts as not played.
void ToggleShuffle();
// Repeat goes from off to all, to single, to off, whichever of its faces was pressed.
void StepRepeatMode();
