#include "platform/ce.h"
#include "platform/device_tree.h"

#include <gtest/gtest.h>

namespace {

class DebugOutput : public ::testing::Test {
protected:
    DebugOutput() : m_before(cardsong::kernel::CurrentDeviceTree()) {}
    ~DebugOutput() override { cardsong::kernel::InstallDeviceTree(m_before); }

    std::string Print(bool isWanted)
    {
        auto tree = m_before;
        tree.debugOutput = isWanted;
        cardsong::kernel::InstallDeviceTree(tree);
        ::testing::internal::CaptureStderr();
        NKDbgPrintfW(TEXT("[AP][%s]%d \u6B4C\n"), TEXT("Player"), 33);
        return ::testing::internal::GetCapturedStderr();
    }

private:
    const cardsong::kernel::DeviceTree m_before;
};

TEST_F(DebugOutput, IsUtf8WhereTheHostWantsIt)
{
    EXPECT_EQ(Print(true), "[AP][Player]33 \xE6\xAD\x8C\n");
}

TEST_F(DebugOutput, IsSilentOtherwise)
{
    EXPECT_EQ(Print(false), "");
}

TEST_F(DebugOutput, TheLanguageIsTheDeviceTrees)
{
    auto tree = cardsong::kernel::CurrentDeviceTree();
    tree.uiLanguage = 0x0804;
    cardsong::kernel::InstallDeviceTree(tree);
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0804);
}

} // namespace
