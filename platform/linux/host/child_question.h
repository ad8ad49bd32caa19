// A question that is answered in a process of its own, so that whoever asks outlives an answer that hangs, crashes or
// ends the program, and keeps none of the threads that it takes. Knows no question.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <sys/types.h>

namespace cardsong::host {

class ChildQuestion {
public:
    enum class Outcome {
        Answered,
        Failed, // it ended without an answer
        Hung,
    };
    struct Reply {
        Outcome outcome;
        std::string text; // of an answer
    };

    // Begins to ask; returns at once. `answer` runs in the child and returns a text without zeros; what it writes to
    // standard output or error is lost. Call it while this process has one thread. `limit` begins now.
    ChildQuestion(const std::function<std::string()>& answer, std::chrono::milliseconds limit);
    // The child is gone afterwards, whatever it does.
    ~ChildQuestion();
    ChildQuestion(const ChildQuestion&) = delete;
    ChildQuestion& operator=(const ChildQuestion&) = delete;

    // Waits for the answer, until the limit at most. Once.
    [[nodiscard]] Reply Await();

private:
    const std::chrono::steady_clock::time_point m_end;
    pid_t m_child = -1;
    int m_answer = -1; // where it can be read
};

} // namespace cardsong::host
