// The messages that programs of the device send each other. Their numbers are the system's choice.
#pragma once

#include "platform/ce.h"

// 0 until they are registered; no message has that number.
extern UINT g_msgAreYouMe;      // a second start asks the running player to come to the front
extern UINT g_msgUserAddSongs;  // the library window was closed: its ticked songs join the play list
extern UINT g_msgMassStorage;   // the card goes to a computer: the player ends
extern UINT g_msgAudioManager;  // the state of a user of the device's sound has changed
extern UINT g_msgStatusRequest; // another program asks what the player does

// The first three; each start needs them, also one that ends at once.
void RegisterStartMessages();
// The others, once there is a window.
void RegisterWindowMessages();
