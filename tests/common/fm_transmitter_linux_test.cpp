#include "common/fm_transmitter.h"

#include "common/trace_log.h"
#include "tests/platform/fake_radio.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using namespace cardsong::test;

namespace {

using Told = std::vector<std::string>;

// With a radio that nobody hears, and the developers' log switched on.
class FmTransmitter : public ::testing::Test {
protected:
    FmTransmitter()
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.debugOutput = true;
        cardsong::kernel::InstallDeviceTree(tree);
        g_logChecked = 1;
        g_logEnabled = 1;
    }
    ~FmTransmitter() override
    {
        g_logChecked = 0;
        g_logEnabled = 0;
    }

    void Store(std::uint32_t enabled, std::uint32_t preset, float first, float second = 88, float third = 89)
    {
        const FmSettings settings{ enabled, preset, { first, second, third } };
        std::string record(sizeof settings, 0);
        std::memcpy(record.data(), &settings, sizeof settings);
        m_device.WriteFile("user/PocketStoreII/TAVO/FM_Trans/FM_TransData.dat", record);
    }
    // What is logged meanwhile is in m_log.
    DWORD Apply()
    {
        testing::internal::CaptureStderr();
        const DWORD result = ApplyFmSettings();
        m_log = testing::internal::GetCapturedStderr();
        return result;
    }
    static std::string LogLine(const std::string& what)
    {
        return "[AP][Transmitter][FunName]Error: FM Transmitter " + what + " Fail!\n";
    }

    ScratchDevice m_device;
    FakeRadio m_radio;
    std::string m_log;
};

} // namespace

TEST_F(FmTransmitter, WithoutSettingsTheDefaultsAreWrittenAndTheDeviceIsNotOpened)
{
    EXPECT_EQ(Apply(), 0U);
    EXPECT_EQ(m_device.ReadFile("user/PocketStoreII/TAVO/FM_Trans/FM_TransData.dat").size(), 20U);
    EXPECT_EQ(m_radio.TakeTold(), Told{});
    EXPECT_EQ(m_log, "");
}

TEST_F(FmTransmitter, IsSetUpInOrderAndClosed)
{
    Store(5, 1, 87.5F, 107.9F);
    EXPECT_EQ(Apply(), 5U);
    // 107.9 MHz in units of 62.5 Hz.
    EXPECT_EQ(m_radio.TakeTold(),
              (Told{ "mute 0", "subchannels 2", "pilot tone 1", "frequency 1726400", "power 110", "close" }));
    EXPECT_EQ(m_radio.openCount, 0);
    EXPECT_EQ(m_log, "");
}

TEST_F(FmTransmitter, APresetThatDoesNotExistCountsAsTheFirst)
{
    for (const std::uint32_t preset : { 3U, 0x7FFFFFFFU, 0xFFFFFFFFU }) {
        Store(1, preset, 87.6F);
        EXPECT_EQ(Apply(), 1U);
        const Told told = m_radio.TakeTold();
        ASSERT_EQ(told.size(), 6U);
        EXPECT_EQ(told[3], "frequency 1401600");
    }
}

TEST_F(FmTransmitter, WithoutADeviceTheResultIs0)
{
    m_radio.isThere = false;
    Store(1, 0, 87.5F);
    EXPECT_EQ(Apply(), 0U);
    EXPECT_EQ(m_log, LogLine("create handle"));
    EXPECT_EQ(m_radio.openCount, 0);
}

TEST_F(FmTransmitter, OneThatCannotBePoweredOnIsClosed)
{
    m_radio.refused = { "mute" };
    Store(1, 0, 87.5F);
    EXPECT_EQ(Apply(), 0U);
    EXPECT_EQ(m_radio.TakeTold(), (Told{ "mute 0", "close" }));
    EXPECT_EQ(m_log, LogLine("Power on"));
}

TEST_F(FmTransmitter, WhatFailsAfterThatIsLoggedAndPassedOver)
{
    m_radio.refused = { "subchannels", "frequency", "power" };
    Store(1, 0, 87.5F);
    EXPECT_EQ(Apply(), 1U);
    EXPECT_EQ(m_radio.TakeTold(),
              (Told{ "mute 0", "subchannels 2", "pilot tone 1", "frequency 1400000", "power 110", "close" }));
    EXPECT_EQ(m_log, LogLine("set default property") + LogLine("tune freq") + LogLine("tune power rate"));
}

TEST_F(FmTransmitter, AFrequencyThatIsNoneIsNotSent)
{
    using Limits = std::numeric_limits<float>;
    for (const float frequencyMhz :
         { 0.0F, -87.5F, 1e30F, Limits::infinity(), Limits::quiet_NaN(), 20.0F, 108.01F, 655.35F }) {
        Store(1, 0, frequencyMhz);
        EXPECT_EQ(Apply(), 1U);
        EXPECT_EQ(m_radio.TakeTold(), (Told{ "mute 0", "subchannels 2", "pilot tone 1", "power 110", "close" }));
        EXPECT_EQ(m_log, LogLine("tune freq"));
    }
}

TEST_F(FmTransmitter, SettingsTooShortLeaveItSwitchedOff)
{
    m_device.WriteFile("user/PocketStoreII/TAVO/FM_Trans/FM_TransData.dat", std::string(19, '\x01'));
    EXPECT_EQ(Apply(), 0U);
    EXPECT_EQ(m_radio.TakeTold(), Told{});
    EXPECT_EQ(m_log, "");
}
