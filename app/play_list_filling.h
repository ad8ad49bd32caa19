// Where songs come from when the play list is empty and play is asked for.
#pragma once

// The songs of the saved list whose card has come back.
void TakeBackSavedSongs();
// All songs of the card, when the start asked for them ("--fill") and the list is still empty.
void FillFromCard();
