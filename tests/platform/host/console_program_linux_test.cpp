// The standard streams of a program that was started without them.
#include "platform/console_program.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace cardsong;

namespace {

bool IsOpen(int descriptor)
{
    return fcntl(descriptor, F_GETFD) == 0;
}

} // namespace

TEST(StandardStreams, AFileGetsNoNumberOfAStreamThatWasClosed)
{
    EXPECT_EXIT(
        {
            for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
                close(stream);
            host::OpenStandardStreams();
            _exit(open("/dev/null", O_RDWR) > STDERR_FILENO ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, ReadingAndWritingFailWhereAStreamWasClosed)
{
    EXPECT_EXIT(
        {
            for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
                close(stream);
            host::OpenStandardStreams();
            char byte = 0;
            const bool fail = read(STDIN_FILENO, &byte, 1) < 0 && errno == EBADF && write(STDOUT_FILENO, "a", 1) < 0 &&
                              errno == EBADF && write(STDERR_FILENO, "a", 1) < 0 && errno == EBADF;
            _exit(fail ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, ThatAreOpenStayAsTheyAre)
{
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            host::OpenStandardStreams();
            _exit(IsOpen(STDIN_FILENO) && write(STDERR_FILENO, "heard", 5) == 5 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "heard");
}
