// Songs that the command line names: a card of their own, with a player whose list is its own.
#pragma once

#include "platform/host/options.h"

namespace cardsong::host {

// Leaves one player to the user's device and its opened songs: when `options` names songs, every player there is ended,
// else one that plays opened songs. Waits until it has saved its list. With songs, `options` asks afterwards for a
// player of them alone, in the folder .cardsong-opened of the device: on a card of links to them, with the looks, the
// lyrics folder and a copy of the registry of the user's device and an empty list, so that the user's own list stays as
// it is. What was opened before is forgotten. All that is made for the songs is made before a player is ended. Returns
// an empty text, or one line that says what is in the way. Call it in one's turn (StartTurn), and before any thread
// runs.
[[nodiscard]] std::string OpenSongs(Options& options);

} // namespace cardsong::host
