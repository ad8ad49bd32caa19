// Tells when the milestones of a start were reached, for measuring; silent unless asked.
#pragma once

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace cardsong::kernel {

// Writes "<milestone> <milliseconds>" to standard error, counted from the moment that the environment variable
// CARDSONG_TRACE_START names (seconds since 1970 with a fraction, as $EPOCHREALTIME of the shell). Silent without it.
inline void TraceStart(const char* milestone)
{
    static const char* const startedAt = std::getenv("CARDSONG_TRACE_START");
    if (startedAt == nullptr)
        return;
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    std::fprintf(stderr, "%s %.1f\n", milestone, (now.count() - std::strtod(startedAt, nullptr)) * 1000.0);
}

} // namespace cardsong::kernel
