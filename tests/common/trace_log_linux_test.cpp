#include "common/trace_log.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

TEST(TraceLogWithoutAKey, StaysOffForTheLifeOfTheProcess)
{
    const cardsong::test::ScratchDevice device;
    auto tree = cardsong::kernel::CurrentDeviceTree();
    tree.debugOutput = true;
    cardsong::kernel::InstallDeviceTree(tree);
    g_logChecked = 0;
    g_logEnabled = 0;
    const std::string registry = device.UserDirectory() + "/registry.ini";
    std::filesystem::create_directories(registry + "/a folder in its place");
    testing::internal::CaptureStderr();
    TraceLog(kMusicPlayerTrace, TEXT("first"));
    std::filesystem::remove_all(registry);
    device.WriteFile("user/registry.ini", "[HKEY_LOCAL_MACHINE\\TAVO\\TAVO_BACKDOOR]\nActivate=dword:1\n");
    EXPECT_EQ(IsTraceLogSwitchedOn(), 1);
    TraceLog(kMusicPlayerTrace, TEXT("second"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(g_logChecked, 1);
    EXPECT_EQ(g_logEnabled, 0);
    g_logChecked = 0;
}
