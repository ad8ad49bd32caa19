// The keys of a desktop's keyboard, from the program's table to the player.
#include "platform/desktop_keys.h"

#include "gui/skin_list_geometry.h"
#include "platform/host/device_keys.h"
#include "tests/app/alerts_user.h"
#include "tests/app/player_fixture.h"

#include <map>
#include <set>

using namespace cardsong;
using namespace cardsong::test;

namespace {

const std::map<std::string_view, WORD> kCommands = {
    { "Previous", 256 }, { "Back5", 257 },    { "Play", 258 }, { "Pause", 259 },
    { "Stop", 260 },     { "Forward5", 261 }, { "Next", 262 }, { "Shuffle", 263 },
    { "Repeat", 265 },   { "Settings", 22 },  { "List", 24 },
};

class DesktopKeyboard : public PlayerTest {
protected:
    void Give(WORD command)
    {
        user::GiveCommand(ProgramDesktopKeys().mainWindowClass, command);
        Pump();
    }
};

} // namespace

TEST(ProgramDesktopKeys, NameEachCommandOnce)
{
    std::map<std::string_view, WORD> named;
    for (const CommandKey& key : ProgramDesktopKeys().commands)
        EXPECT_TRUE(named.emplace(key.scriptName, key.command).second) << key.scriptName;
    EXPECT_EQ(named, kCommands);
}

TEST(ProgramDesktopKeys, LetNoKeyOfTheMachineStandForTwoThings)
{
    std::set<std::string_view> names;
    std::set<UINT> codes;
    const auto add = [&](const auto& newNames, const auto& newCodes) {
        for (const std::string_view name : newNames)
            EXPECT_TRUE(name.empty() || names.insert(name).second) << name;
        for (const UINT code : newCodes)
            EXPECT_TRUE(code == 0 || codes.insert(code).second) << code;
    };
    for (const host::DeviceKey& key : host::DeviceKeys()) {
        add(key.machineKeys, key.desktopCodes);
        EXPECT_TRUE(codes.insert(key.code).second) << key.code;
    }
    for (const CommandKey& key : ProgramDesktopKeys().commands)
        add(key.keys.names, key.keys.desktopCodes);
    for (const TapKey& key : ProgramDesktopKeys().taps)
        add(key.keys.names, key.keys.desktopCodes);
}

TEST(ProgramDesktopKeys, NameAKeyOnBothSystemsOrOnNone)
{
    const auto check = [](const MachineKeys& keys) {
        for (std::size_t i = 0; i < keys.names.size(); ++i)
            EXPECT_EQ(keys.names[i].empty(), keys.desktopCodes[i] == 0) << keys.names[i];
    };
    for (const CommandKey& key : ProgramDesktopKeys().commands)
        check(key.keys);
    for (const TapKey& key : ProgramDesktopKeys().taps)
        check(key.keys);
}

TEST(ProgramDesktopKeys, TapTheRowsOfAListAndItsScrollButtons)
{
    std::vector<POINT> places;
    for (const TapKey& key : ProgramDesktopKeys().taps)
        places.push_back(key.place);
    ASSERT_EQ(places.size(), 6U);
    for (int row = 0; row < kSkinListRows; ++row)
        EXPECT_EQ(SkinListRowAt(places[static_cast<std::size_t>(row)]), row);
    EXPECT_EQ(places[4].x, 289);
    EXPECT_EQ(places[4].y, 71);
    EXPECT_EQ(places[5].x, 289);
    EXPECT_EQ(places[5].y, 162);
}

TEST_F(DesktopKeyboard, TheCommandsReachThePlayer)
{
    AddSong("a.mp3", 60);
    AddSong("b.mp3", 60);
    Start();
    Give(kCommandPlay);
    EXPECT_TRUE(IsPlaying());
    Give(kCommandNext);
    EXPECT_EQ(g_currentNumber, 2);
    Give(kCommandStop);
    EXPECT_FALSE(IsPlaying());
}

TEST_F(DesktopKeyboard, WhatItsButtonCannotDoAKeyCannotEither)
{
    AddSong("a.mp3", 60);
    AddSong("b.mp3", 60);
    Start();
    Give(kCommandNext);
    EXPECT_FALSE(IsSongLoaded());
    ASSERT_FALSE(IsEnabled(kCommandNext));
}

TEST_F(DesktopKeyboard, TheFirstBottomButtonOfThePlayerIsExit)
{
    Start();
    user::TapBottomButton(1);
    Pump();
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(DesktopKeyboard, AnAlertIsAnsweredByTheNumberOfItsButton)
{
    std::filesystem::remove_all(m_device.CardDirectory());
    ::testing::internal::CaptureStderr();
    bool isGone = false;
    {
        const AlertsUser user(m_clock, [&] {
            user::TapBottomButton(1);
            isGone = AlertsUser::IsAlertGoneWhileTimeStands();
        });
        Start();
    }
    ::testing::internal::GetCapturedStderr();
    EXPECT_TRUE(isGone);
}
