#include "platform/linux/bus/device_neighbours.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace cardsong::bus {
namespace {

class Neighbours : public ::testing::Test {
protected:
    std::string Folder() const { return m_device.UserDirectory(); }

    test::ScratchDevice m_device;
};

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
