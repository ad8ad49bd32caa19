// Whether the device's card slot holds a card that can be used, as its drivers tell at the start.
#pragma once

// 1 when the storage card is present and usable, else 0.
[[nodiscard]] int IsStorageCardPresent();
