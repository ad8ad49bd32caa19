#include "ctl/device_option.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string_view>;

DeviceArguments Read(const Words& words)
{
    return ReadDeviceOption(words);
}

TEST(DeviceOption, IsTakenOutWhereverItStands)
{
    EXPECT_EQ(Read({ "--device", "/d", "get", "k" }).words, (Words{ "get", "k" }));
    EXPECT_EQ(Read({ "get", "--device", "/d", "k" }).deviceDirectory, "/d");
    EXPECT_EQ(Read({ "get", "k", "--device=/d" }).words, (Words{ "get", "k" }));
    EXPECT_EQ(Read({ "get", "k", "--device=/d" }).deviceDirectory, "/d");
}

TEST(DeviceOption, MayBeAbsent)
{
    const DeviceArguments read = Read({ "get" });
    EXPECT_EQ(read.deviceDirectory, "");
    EXPECT_EQ(read.words, Words{ "get" });
    EXPECT_TRUE(read.isComplete);
}

TEST(DeviceOption, TheLastOneCounts)
{
    EXPECT_EQ(Read({ "--device=a", "--device", "b" }).deviceDirectory, "b");
}

TEST(DeviceOption, WithoutItsValueItIsIncomplete)
{
    EXPECT_FALSE(Read({ "get", "--device" }).isComplete);
}

} // namespace
