// What the user is told when there is no storage card.
#pragma once

// Writes the notice, in the user's language, to the console.
void TellThatNoCardIsThere();
