#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

// What depends on this machine's own programs: scripts, marks of execution, the search path, children to reap.
class Processes : public ::testing::Test {
protected:
    // A program that writes its arguments, one a line, to a file beside itself.
    void MakeProgram(const std::string& name)
    {
        device.WriteFile(name, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.out\"\n");
        ASSERT_EQ(chmod((Root() + name).c_str(), 0755), 0);
    }
    std::string Root() const
    {
        const auto user = device.UserDirectory();
        return user.substr(0, user.size() - std::string("user").size());
    }
    BOOL Start(const WCHAR* image, WString commandLine)
    {
        const BOOL isStarted = CreateProcessW(image, commandLine.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                                              nullptr, nullptr, nullptr, &information);
        if (isStarted) {
            EXPECT_EQ(WaitForSingleObject(information.hProcess, INFINITE), WAIT_OBJECT_0);
            EXPECT_TRUE(CloseHandle(information.hProcess));
            EXPECT_TRUE(CloseHandle(information.hThread));
        }
        return isStarted;
    }

    cardsong::test::ScratchDevice device;
    PROCESS_INFORMATION information = {};
};

TEST_F(Processes, AProgramOfTheDeviceNeedsNoExtension)
{
    MakeProgram("user/Windows/tavo_set_audio");
    EXPECT_TRUE(Start(TEXT("TAVO_SET_AUDIO.exe"), TEXT("-s")));
    EXPECT_EQ(device.ReadFile("user/Windows/tavo_set_audio.out"), "-s\n");
}

TEST_F(Processes, AProgramOfThisMachineIsFoundOnItsSearchPath)
{
    MakeProgram("bin/TAVO_SET_AUDIO");
    const std::string before = std::getenv("PATH");
    setenv("PATH", (Root() + "bin:" + before).c_str(), 1);
    EXPECT_TRUE(Start(TEXT("TAVO_SET_AUDIO.exe"), TEXT("-s")));
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(device.ReadFile("bin/TAVO_SET_AUDIO.out"), "-s\n");
}

TEST_F(Processes, NoChildIsLeftBehind)
{
    MakeProgram("user/Windows/a.exe");
    ASSERT_TRUE(Start(TEXT("a.exe"), TEXT("")));
    EXPECT_EQ(waitpid(static_cast<pid_t>(information.dwProcessId), nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(Processes, AFileThatIsNoProgramIsNotFound)
{
    device.WriteFile("user/Windows/song.exe", "not a program");
    EXPECT_FALSE(Start(TEXT("song.exe"), TEXT("")));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

} // namespace
