#include "platform/linux/host/child_question.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cardsong::host {
namespace {

using Clock = std::chrono::steady_clock;

// What says that a text is whole. A child's own children may hold the pipe open for longer.
constexpr char kEnd = '\0';

void BeQuiet()
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        dup2(nowhere, stream);
}

// A group of its own can be ended with all that a library started; it dies with who asks.
[[noreturn]] void AnswerInChild(const std::function<std::string()>& answer, pid_t asker, int pipe)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != asker)
        _exit(1);
    BeQuiet();
    const std::string text = answer() + kEnd;
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(pipe, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR)
            _exit(1);
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    _exit(0);
}

bool AwaitBytes(int pipe, Clock::time_point end)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd wait = { pipe, POLLIN, 0 };
        const int ready = poll(&wait, 1, static_cast<int>(std::max<long>(left, 0)));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

} // namespace

ChildQuestion::ChildQuestion(const std::function<std::string()>& answer, std::chrono::milliseconds limit)
    : m_end(Clock::now() + limit)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    const pid_t asker = getpid();
    m_child = fork();
    if (m_child == 0)
        AnswerInChild(answer, asker, ends[1]);
    close(ends[1]);
    m_answer = ends[0];
    if (m_child > 0)
        setpgid(m_child, m_child); // whoever of the two comes first
}

ChildQuestion::~ChildQuestion()
{
    if (m_answer >= 0)
        close(m_answer);
    if (m_child <= 0)
        return;
    kill(-m_child, SIGKILL);
    while (waitpid(m_child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

ChildQuestion::Reply ChildQuestion::Await()
{
    std::string text;
    char bytes[512];
    while (m_child > 0 && AwaitBytes(m_answer, m_end)) {
        const ssize_t count = read(m_answer, bytes, sizeof bytes);
        if (count <= 0)
            return { Outcome::Failed, {} };
        text.append(bytes, static_cast<std::size_t>(count));
        if (text.back() == kEnd) {
            text.pop_back();
            return { Outcome::Answered, text };
        }
    }
    return { m_child > 0 ? Outcome::Hung : Outcome::Failed, {} };
}

} // namespace cardsong::host
