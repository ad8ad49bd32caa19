// An answer from a process of its own, whatever becomes of that process.
#include "platform/linux/host/child_question.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <new>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace cardsong::host;
using Outcome = ChildQuestion::Outcome;

namespace {

constexpr std::chrono::milliseconds kAmple{ 30'000 };
constexpr std::chrono::milliseconds kShort{ 50 };

// A number that a process and its children share.
class SharedNumber {
public:
    SharedNumber()
        : m_memory(mmap(nullptr, sizeof(Number), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
          m_number(new (m_memory) Number(0))
    {
    }
    ~SharedNumber() { munmap(m_memory, sizeof(Number)); }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;

    std::atomic<int>& operator*() const { return *m_number; }
    int Await() const
    {
        while (*m_number == 0)
            usleep(100);
        return *m_number;
    }

private:
    using Number = std::atomic<int>;
    void* const m_memory;
    Number* const m_number;
};

// Descendants whose parents are gone become children of this process.
class ChildQuestionTest : public testing::Test {
protected:
    ChildQuestionTest() { prctl(PR_SET_CHILD_SUBREAPER, 1); }
    ~ChildQuestionTest() override { prctl(PR_SET_CHILD_SUBREAPER, 0); }

    // Waits for its end; the signal that ended it.
    static int EndOf(pid_t process)
    {
        int status = 0;
        return waitpid(process, &status, 0) == process && WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
};

std::string HangForEver()
{
    for (;;)
        pause();
}

TEST_F(ChildQuestionTest, AnAnswerComesBackWhole)
{
    const std::string longText(1'000'000, 'x'); // more than a pipe holds
    for (const std::string& text : { std::string(), std::string("one line"), longText }) {
        ChildQuestion question([&] { return text; }, kAmple);
        const auto reply = question.Await();
        EXPECT_EQ(reply.outcome, Outcome::Answered);
        EXPECT_TRUE(reply.text == text);
    }
}

TEST_F(ChildQuestionTest, AChildThatEndsWithoutAnAnswerHasFailed)
{
    ChildQuestion ends([]() -> std::string { _exit(0); }, kAmple);
    EXPECT_EQ(ends.Await().outcome, Outcome::Failed);
    ChildQuestion crashes(
        []() -> std::string {
            raise(SIGKILL);
            return "alive";
        },
        kAmple);
    EXPECT_EQ(crashes.Await().outcome, Outcome::Failed);
}

TEST_F(ChildQuestionTest, AChildThatHangsIsGivenUpAndEndedWithItsOwnChildren)
{
    const SharedNumber child;
    const SharedNumber grandchild;
    {
        ChildQuestion question(
            [&] {
                const pid_t started = fork();
                if (started == 0)
                    return HangForEver();
                *child = getpid();
                *grandchild = started;
                return HangForEver();
            },
            kShort);
        grandchild.Await();
        EXPECT_EQ(question.Await().outcome, Outcome::Hung);
    }
    EXPECT_EQ(kill(*child, 0), -1) << "the child is still there";
    EXPECT_EQ(EndOf(*grandchild), SIGKILL);
}

TEST_F(ChildQuestionTest, WhatAChildLeavesBehindDoesNotHoldItsAnswerUp)
{
    const SharedNumber grandchild;
    {
        ChildQuestion question(
            [&] {
                const pid_t started = fork();
                if (started == 0)
                    return HangForEver();
                *grandchild = started;
                return std::string("done");
            },
            kAmple);
        const auto reply = question.Await();
        EXPECT_EQ(reply.outcome, Outcome::Answered);
        EXPECT_EQ(reply.text, "done");
    }
    EXPECT_EQ(EndOf(*grandchild), SIGKILL);
}

TEST_F(ChildQuestionTest, QuestionsAreAnsweredAtTheSameTime)
{
    const SharedNumber begun;
    const auto awaitTheOther = [&] {
        ++*begun;
        while (*begun < 2)
            usleep(100);
        return std::string("met");
    };
    ChildQuestion first(awaitTheOther, kAmple);
    ChildQuestion second(awaitTheOther, kAmple);
    EXPECT_EQ(first.Await().text, "met");
    EXPECT_EQ(second.Await().text, "met");
}

TEST_F(ChildQuestionTest, AChildPrintsNothing)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ChildQuestion question(
        [] {
            static_cast<void>(write(STDOUT_FILENO, "out", 3));
            static_cast<void>(write(STDERR_FILENO, "err", 3));
            return std::string("quiet");
        },
        kAmple);
    EXPECT_EQ(question.Await().text, "quiet");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ChildQuestionTest, AChildDiesWithWhoAsks)
{
    const SharedNumber child;
    const pid_t asker = fork();
    if (asker == 0) {
        const ChildQuestion question(
            [&] {
                *child = getpid();
                return HangForEver();
            },
            kAmple);
        HangForEver();
    }
    const pid_t started = child.Await();
    kill(asker, SIGKILL);
    EXPECT_EQ(EndOf(asker), SIGKILL);
    EXPECT_EQ(EndOf(started), SIGKILL);
}

} // namespace
