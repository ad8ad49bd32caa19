// One registry and several programs: nothing is lost, nobody waits for ever, nothing is left lying.
#include "platform/linux/kernel/registry_file.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <set>
#include <spawn.h>
#include <string>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

using namespace std::chrono_literals;

// Thousands of files that are flushed take a minute on some disks: the scratch devices lie in memory where they can.
class MemoryForScratch {
public:
    MemoryForScratch()
    {
        if (std::filesystem::is_directory("/dev/shm"))
            setenv("TMPDIR", "/dev/shm", 1);
    }
    ~MemoryForScratch()
    {
        if (m_before)
            setenv("TMPDIR", m_before->c_str(), 1);
        else
            unsetenv("TMPDIR");
    }
    MemoryForScratch(const MemoryForScratch&) = delete;
    MemoryForScratch& operator=(const MemoryForScratch&) = delete;

private:
    static std::optional<std::string> Before()
    {
        const char* const folder = std::getenv("TMPDIR");
        return folder ? std::optional<std::string>(folder) : std::nullopt;
    }
    const std::optional<std::string> m_before = Before();
};

class RegistrySharing : public ::testing::Test {
protected:
    static bool Write(std::u16string_view name, BYTE number)
    {
        return WriteRegistryValue(u"K", name, { REG_DWORD, { number, 0, 0, 0 } });
    }
    static int Read(std::u16string_view name)
    {
        const auto value = ReadRegistryValue(u"K", name);
        return value && value->data.size() == 4 ? value->data[0] | value->data[1] << 8 : -1;
    }
    pid_t StartWriter(const char* prefix) const
    {
        std::string program = CARDSONG_REGISTRY_WRITER;
        std::string folder = device.UserDirectory();
        std::string prefixText = prefix;
        char* const arguments[] = { program.data(), folder.data(), prefixText.data(), nullptr };
        pid_t child = -1;
        EXPECT_EQ(posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ), 0);
        return child;
    }
    static int ResultOf(pid_t child)
    {
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // A process that was stopped while it held the lock.
    pid_t StopAHolderOfTheLock() const
    {
        const auto path = device.UserDirectory() + "/registry.lock";
        const pid_t child = fork();
        if (child == 0) {
            const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
            if (flock(descriptor, LOCK_EX) != 0)
                _exit(1);
            raise(SIGSTOP);
            _exit(0);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, WUNTRACED), child);
        EXPECT_TRUE(WIFSTOPPED(status));
        return child;
    }
    template <typename Action>
    static std::chrono::steady_clock::duration TimeOf(Action action)
    {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::steady_clock::now() - start;
    }
    std::set<std::string> FilesOfTheRegistry() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(device.UserDirectory())) {
            if (entry.is_regular_file())
                names.insert(entry.path().filename().string());
        }
        return names;
    }

    const MemoryForScratch memory;
    test::ScratchDevice device;
};

TEST_F(RegistrySharing, TwoProgramsThatWriteAThousandNumbersEachLoseNone)
{
    const pid_t first = StartWriter("first ");
    const pid_t second = StartWriter("second ");
    EXPECT_EQ(ResultOf(first), 0);
    EXPECT_EQ(ResultOf(second), 0);
    for (const std::u16string prefix : { u"first ", u"second " }) {
        for (int i = 1; i <= 10; ++i)
            EXPECT_EQ(Read(prefix + static_cast<char16_t>(u'0' + i % 10)), 990 + i);
    }
    EXPECT_EQ(FilesOfTheRegistry(), (std::set<std::string>{ "registry.ini", "registry.lock" }));
}

TEST_F(RegistrySharing, AStoppedProgramThatHoldsTheLockDelaysAWriterByHalfASecondAtMost)
{
    ASSERT_TRUE(Write(u"v", 1));
    const pid_t holder = StopAHolderOfTheLock();
    EXPECT_LT(TimeOf([] { EXPECT_FALSE(Write(u"v", 2)); }), 700ms);
    EXPECT_LT(TimeOf([] {
                  for (BYTE i = 0; i < 5; ++i)
                      EXPECT_FALSE(Write(u"v", i));
              }),
              300ms);
    EXPECT_EQ(Read(u"v"), 1);
    kill(holder, SIGCONT);
    EXPECT_EQ(ResultOf(holder), 0);
    EXPECT_TRUE(Write(u"v", 3));
    EXPECT_EQ(Read(u"v"), 3);
}

TEST_F(RegistrySharing, ReadersDoNotWaitForTheLock)
{
    ASSERT_TRUE(Write(u"v", 1));
    const pid_t holder = StopAHolderOfTheLock();
    EXPECT_LT(TimeOf([] { EXPECT_EQ(Read(u"v"), 1); }), 200ms);
    kill(holder, SIGKILL);
    EXPECT_EQ(ResultOf(holder), -1);
    EXPECT_TRUE(Write(u"v", 2));
}

TEST_F(RegistrySharing, WhatACrashedWriterLeftIsOverwrittenAndGone)
{
    ASSERT_TRUE(Write(u"v", 1));
    device.WriteFile("user/registry.ini.new", "[HKEY_LOCAL_MACHINE\\K]\nv=dwo");
    EXPECT_EQ(Read(u"v"), 1);
    EXPECT_TRUE(Write(u"w", 2));
    EXPECT_EQ(Read(u"v"), 1);
    EXPECT_EQ(FilesOfTheRegistry(), (std::set<std::string>{ "registry.ini", "registry.lock" }));
}

TEST_F(RegistrySharing, TwoVersionsOfOneSizeInOneMomentAreTold)
{
    for (BYTE round = 0; round < 40; ++round) {
        EXPECT_EQ(Read(u"v"), round == 0 ? -1 : round);
        const pid_t other = fork();
        if (other == 0)
            _exit(Write(u"v", 200) && Write(u"v", static_cast<BYTE>(round + 1)) ? 0 : 1);
        EXPECT_EQ(ResultOf(other), 0);
    }
}

} // namespace
} // namespace cardsong::kernel
