// One player at a time: a second start hands over to the one that runs.
#pragma once

// Whether a player runs already. It is asked to come to the front, and this start is to end.
[[nodiscard]] bool HandOverToRunningPlayer();
