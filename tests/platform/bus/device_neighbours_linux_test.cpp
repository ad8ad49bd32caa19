#include "platform/linux/bus/device_neighbours.h"

#include "platform/linux/ce/messages.h"
#include "platform/linux/user/input.h"
#include "tests/platform/bus/private_bus.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace cardsong::bus {
namespace {

class Neighbours : public ::testing::Test {
protected:
    std::string Folder() const { return m_device.UserDirectory(); }

    cardsong::test::ScratchDevice m_device;
};

constexpr WORD kExit = 17002;

// The key that a window gets first. It is there only when the other program has spoken.
WPARAM AwaitKey()
{
    const HWND window = CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                                        nullptr, nullptr, nullptr);
    SetForegroundWindow(window);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) && message.message != WM_KEYDOWN)
        DispatchMessageW(&message);
    DestroyWindow(window);
    user::ResetWindows();
    return message.wParam;
}

TEST_F(Neighbours, TheFirstToClaimAClassFindsNoOtherWindowOfIt)
{
    DeviceNeighbours first(Folder());
    EXPECT_EQ(first.Claim(u"AUDIOPLAYER"), ClaimResult::Ours);
    EXPECT_FALSE(first.HaveWindow(u"audioplayer"));
}

TEST_F(Neighbours, TheSecondFindsAWindowEvenAfterTheFirstHasGone)
{
    DeviceNeighbours first(Folder());
    DeviceNeighbours second(Folder());
    ASSERT_EQ(first.Claim(u"AUDIOPLAYER"), ClaimResult::Ours);
    ASSERT_EQ(second.Claim(u"AUDIOPLAYER"), ClaimResult::Others);
    first.ReleaseClaim();
    EXPECT_TRUE(second.HaveWindow(u"audioplayer")); // two that never had the class must not both go on
}

TEST_F(Neighbours, OneThatClaimsNothingFindsTheWindowAsLongAsItIsThere)
{
    DeviceNeighbours player(Folder());
    DeviceNeighbours visitor(Folder());
    EXPECT_FALSE(visitor.HaveWindow(u"audioplayer"));
    ASSERT_EQ(player.Claim(u"AUDIOPLAYER"), ClaimResult::Ours);
    EXPECT_TRUE(visitor.HaveWindow(u"audioplayer"));
    EXPECT_FALSE(visitor.HaveWindow(u"hhtaskbar"));
    player.ReleaseClaim();
    EXPECT_FALSE(visitor.HaveWindow(u"audioplayer"));
}

TEST_F(Neighbours, WhoNeverJoinedReachesNobody)
{
    DeviceNeighbours alone(Folder());
    alone.Send({ u"", u"n", 0, 0 });
    EXPECT_FALSE(alone.Flush(std::chrono::milliseconds(0)));
}

TEST_F(Neighbours, TheExitCommandActsAsTheExitKeyDoesAlsoBeforeThereIsAWindow)
{
    const cardsong::test::PrivateBus bus;
    DeviceNeighbours player(Folder());
    DeviceNeighbours visitor(Folder());
    ASSERT_EQ(player.Claim(u"AUDIOPLAYER", kExit), ClaimResult::Ours);
    player.Join(bus.Address());
    visitor.Join(bus.Address());
    ASSERT_TRUE(player.Flush(std::chrono::seconds(10)));
    visitor.Send({ u"audioplayer", u"", kExit, 0 });
    EXPECT_EQ(AwaitKey(), VK_F24);
}

TEST_F(Neighbours, AFolderIsTheSameByEveryPath)
{
    std::filesystem::create_directory_symlink(Folder(), m_device.CardDirectory() + "/link");
    EXPECT_NE(IdentityOfFolder(Folder()), "");
    EXPECT_EQ(IdentityOfFolder(Folder()), IdentityOfFolder(m_device.CardDirectory() + "/link"));
    EXPECT_EQ(IdentityOfFolder(Folder()), IdentityOfFolder(Folder() + "/../user"));
    EXPECT_NE(IdentityOfFolder(Folder()), IdentityOfFolder(m_device.CardDirectory()));
    EXPECT_EQ(IdentityOfFolder(Folder() + "/missing"), "");
}

} // namespace
} // namespace cardsong::bus
