// Stands in for the sounds of the system: notes what would be played.
#pragma once

#include "platform/ce.h"

#include <vector>

namespace cardsong::test {

struct RecordedSound {
    WString path; // empty: silence
    DWORD flags;
    bool operator==(const RecordedSound&) const = default;
};
using Sounds = std::vector<RecordedSound>;

// What was asked for since the call before.
Sounds TakeSounds();

} // namespace cardsong::test
