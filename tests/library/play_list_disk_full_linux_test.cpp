// A disk that is full while the list is written.
#include "library/play_list_file.h"

#include "tests/library/lists.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace {

using cardsong::test::AddEntry;
using cardsong::test::EmptyLists;
using cardsong::test::ScratchDevice;

// No file may grow beyond so many bytes while this lives: to whoever writes it looks like a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{ bytes, m_before.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int) = nullptr;
};

TEST(PlayListOnAFullDisk, IsTheOldOneWhereverTheDiskIsFull)
{
    const ScratchDevice device;
    const EmptyLists lists;
    const std::string old = "an older list, whatever it holds";
    device.WriteFile("user/Windows/play_list.txt", old);
    for (int i = 0; i < 1000; ++i)
        AddEntry(PlayList, TEXT("song.mp3"), TEXT("\\SDMMC"), 1);
    for (const rlim_t bytes : { 0U, 1U, 1000U, 16384U, 20000U }) {
        const FullDisk full(bytes);
        SavePlayList(PlayList);
        EXPECT_EQ(device.ReadFile("user/Windows/play_list.txt"), old) << bytes;
        EXPECT_FALSE(std::filesystem::exists(device.UserDirectory() + "/Windows/play_list.new")) << bytes;
    }
    SavePlayList(PlayList);
    EXPECT_NE(device.ReadFile("user/Windows/play_list.txt"), old);
}

} // namespace
