#include "platform/host/device_keys.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace cardsong::host;

TEST(DeviceKeys, AreEachThereOnce)
{
    std::set<UINT> codes;
    for (const DeviceKey& key : DeviceKeys())
        EXPECT_TRUE(codes.insert(key.code).second) << key.code;
    EXPECT_EQ(codes.count(0), 0U);
}

TEST(DeviceKeys, HaveScriptNamesThatMeanOneKeyEach)
{
    std::set<std::string_view> names;
    for (const DeviceKey& key : DeviceKeys()) {
        if (!key.scriptName.empty()) {
            EXPECT_TRUE(names.insert(key.scriptName).second) << key.scriptName;
        }
        EXPECT_EQ(key.scriptName.find_first_of(" \t:"), std::string_view::npos) << key.scriptName;
    }
    EXPECT_FALSE(names.empty());
}

TEST(DeviceKeys, LetNoKeyOfTheMachineStandForTwo)
{
    std::set<std::string_view> machineKeys;
    std::set<UINT> desktopCodes;
    for (const DeviceKey& key : DeviceKeys()) {
        EXPECT_FALSE(key.machineKeys[0].empty()) << key.code;
        for (const std::string_view name : key.machineKeys) {
            if (!name.empty()) {
                EXPECT_TRUE(machineKeys.insert(name).second) << name;
            }
        }
        for (const UINT code : key.desktopCodes) {
            if (code != 0) {
                EXPECT_TRUE(desktopCodes.insert(code).second) << code;
            }
        }
    }
}

TEST(DeviceKeys, HaveNoCodeThatADesktopTurnsIntoAnother)
{
    for (const DeviceKey& key : DeviceKeys()) {
        for (const DeviceKey& other : DeviceKeys())
            for (const UINT code : other.desktopCodes)
                EXPECT_NE(key.code, code);
    }
}

} // namespace
