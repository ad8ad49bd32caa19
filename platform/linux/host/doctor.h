// `cardsong --doctor`: what this machine has for playing and what it lacks, for a person or a script. It opens no
// window, writes nothing, and waits a limited time for every server.
#pragma once

#include "platform/host/options.h"

#include <chrono>
#include <cstdio>
#include <span>
#include <string>

namespace cardsong::host {

enum class Verdict {
    Good,
    Poor, // the player plays without it
    Bad,  // it cannot play as it should
};
struct Finding {
    Verdict verdict = Verdict::Good;
    std::string text; // one line: what was found, and what helps
};

struct Examination {
    const char* subject;                     // what the line is about
    Finding (*look)(const Options& options); // may hang, crash, or end the process
    std::chrono::milliseconds limit;         // for look
    Finding hung;                            // when it took longer
};

// Makes every examination at once, each in a process of its own, and prints a line for each on `out`, in their order.
// Returns the exit status: 0 when nothing is bad, else 1. Call it while this process has one thread.
[[nodiscard]] int Examine(std::span<const Examination> examinations, const Options& options, std::FILE* out);

// All that the player needs, on standard output.
[[nodiscard]] int RunDoctor(const Options& options);

} // namespace cardsong::host
