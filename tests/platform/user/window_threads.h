// How many threads have to do with windows at the moment.
#pragma once

#include "platform/linux/user/desktop.h"

#include <algorithm>

namespace cardsong::test {

inline int WindowThreads()
{
    const user::LockedDesktop desktop;
    return static_cast<int>(
        std::ranges::count_if(desktop->queues, [](const auto& known) { return known.lock() != nullptr; }));
}

} // namespace cardsong::test
