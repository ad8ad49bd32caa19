// What the user is told when there is no storage card.
#pragma once

// Shows the notice, in the user's language, as an alert, and writes it to the console as well, for those who see no
// screen. Returns when the alert has closed.
void TellThatNoCardIsThere();
