// Whether there is a card in the slot, as its folder tells.
#pragma once

// Whether anything lies on the card. A card pulled out leaves an empty folder, or none.
[[nodiscard]] bool IsCardInserted();
