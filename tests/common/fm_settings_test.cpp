#include "common/fm_settings.h"
#include "common/fm_transmitter.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr const char* kFile = "user/PocketStoreII/TAVO/FM_Trans/FM_TransData.dat";

class FmSettingsFile : public ::testing::Test {
protected:
    cardsong::test::ScratchDevice m_device;
};

// Off, preset 0, three times 87.5 as a float.
const std::string kDefaultRecord("\0\0\0\0"
                                 "\0\0\0\0"
                                 "\0\0\xAF\x42"
                                 "\0\0\xAF\x42"
                                 "\0\0\xAF\x42",
                                 20);

} // namespace

TEST_F(FmSettingsFile, AMissingOneIsWrittenWithTheDefaults)
{
    EXPECT_EQ(EnsureFmSettingsFile(), 0);
    EXPECT_EQ(m_device.ReadFile(kFile), kDefaultRecord);
    EXPECT_EQ(EnsureFmSettingsFile(), 1);
    FmSettings settings{ 9, 9, { 1, 2, 3 } };
    EXPECT_EQ(ReadFmSettings(settings), 1);
    EXPECT_EQ(settings.enabled, 0U);
    EXPECT_EQ(settings.preset, 0U);
    for (const float frequencyMhz : settings.frequenciesMhz)
        EXPECT_EQ(frequencyMhz, 87.5F);
}

TEST_F(FmSettingsFile, OneThatIsThereStaysAsItIs)
{
    m_device.WriteFile(kFile, "mine");
    EXPECT_EQ(EnsureFmSettingsFile(), 1);
    EXPECT_EQ(m_device.ReadFile(kFile), "mine");
}

TEST_F(FmSettingsFile, EachFieldHasItsPlace)
{
    m_device.WriteFile(kFile, std::string("\x01\x00\x00\x80" // on
                                          "\x02\x00\x00\x00" // preset 2
                                          "\x00\x00\xAF\x42" // 87.5
                                          "\x00\x00\xC8\x42" // 100
                                          "\x00\x00\xD8\x42" // 108
                                          "more",
                                          24));
    FmSettings settings;
    EXPECT_EQ(ReadFmSettings(settings), 1);
    EXPECT_EQ(settings.enabled, 0x80000001U);
    EXPECT_EQ(settings.preset, 2U);
    EXPECT_EQ(settings.frequenciesMhz[0], 87.5F);
    EXPECT_EQ(settings.frequenciesMhz[1], 100.0F);
    EXPECT_EQ(settings.frequenciesMhz[2], 108.0F);
}

TEST_F(FmSettingsFile, OneTooShortCountsAsUnread)
{
    for (std::size_t length = 0; length < kDefaultRecord.size(); ++length) {
        m_device.WriteFile(kFile, kDefaultRecord.substr(0, length));
        FmSettings settings{ 9, 8, { 1, 2, 3 } };
        EXPECT_EQ(ReadFmSettings(settings), 0) << length;
        EXPECT_EQ(settings.enabled, 9U);
        EXPECT_EQ(settings.preset, 8U);
        EXPECT_EQ(settings.frequenciesMhz[2], 3.0F);
    }
}

TEST_F(FmSettingsFile, AMissingOneCountsAsUnread)
{
    FmSettings settings;
    EXPECT_EQ(ReadFmSettings(settings), 0);
}

TEST_F(FmSettingsFile, OneThatCannotBeMadeIsNoError)
{
    m_device.WriteFile("user/PocketStoreII/TAVO", "a file in the folder's place");
    EXPECT_EQ(EnsureFmSettingsFile(), 0);
    EXPECT_EQ(ApplyFmSettings(), 0U);
}

TEST(FmFrequency, IsSentInHundredthsOfAMegahertz)
{
    EXPECT_EQ(FmFrequencyNumber(87.5F), 8750);
    EXPECT_EQ(FmFrequencyNumber(87.6F), 8760);
    EXPECT_EQ(FmFrequencyNumber(107.9F), 10790);
}

TEST(FmFrequency, EveryHundredthOfTheBandHasItsNumber)
{
    for (int hundredths = 6400; hundredths <= 10800; ++hundredths)
        EXPECT_EQ(FmFrequencyNumber(static_cast<float>(hundredths) / 100), hundredths);
}

TEST(FmFrequency, WhatLiesBetweenTwoNumbersCountsAsTheLower)
{
    EXPECT_EQ(FmFrequencyNumber(87.595F), 8759);
    EXPECT_EQ(FmFrequencyNumber(87.598F), 8759);
    EXPECT_EQ(FmFrequencyNumber(655.359F), 65535);
}

TEST(FmFrequency, WhatNoNumberStandsForHasNone)
{
    using Limits = std::numeric_limits<float>;
    for (const float frequencyMhz :
         { 0.0F, -0.0F, 0.005F, -87.5F, 655.37F, 1e30F, -1e30F, Limits::max(), Limits::denorm_min(), Limits::infinity(),
           -Limits::infinity(), Limits::quiet_NaN(), Limits::signaling_NaN() })
        EXPECT_EQ(FmFrequencyNumber(frequencyMhz), std::nullopt) << frequencyMhz;
}
