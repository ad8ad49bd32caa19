// The driver of the transmitter on a radio of this machine.
#include "platform/linux/ce/kernel.h"
#include "tests/platform/fake_radio.h"

#include <gtest/gtest.h>

#include <memory>

namespace cardsong::kernel {
namespace {

using Told = std::vector<std::string>;

constexpr DWORD kPowerOn = 0xD4310000;
constexpr DWORD kSetDefaultProperties = 0xD431001C;
constexpr DWORD kTuneFrequency = 0xD431000C;
constexpr DWORD kSetOutputPowerRate = 0xD4310010;

class FmTransmitterDevice : public ::testing::Test {
protected:
    static HANDLE Open()
    {
        return CreateFileW(u"fmt0:", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    }
    // Through a handle of its own. The size that is told is 0.
    static DWORD ErrorOf(DWORD code, void* input = nullptr)
    {
        const HANDLE device = Open();
        DWORD returnedBytes = 5;
        SetLastError(ERROR_SUCCESS);
        const BOOL result = DeviceIoControl(device, code, input, 0, nullptr, 0, &returnedBytes, nullptr);
        const DWORD error = GetLastError();
        EXPECT_EQ(result != FALSE, error == ERROR_SUCCESS);
        EXPECT_EQ(returnedBytes, 0U);
        EXPECT_TRUE(CloseHandle(device));
        return error;
    }
    static DWORD Tune(std::uint16_t hundredthsMhz) { return ErrorOf(kTuneFrequency, &hundredthsMhz); }

    test::FakeRadio radio;
};

TEST_F(FmTransmitterDevice, ARadioThatOnlyHearsIsNone)
{
    radio.isThere = false;
    EXPECT_EQ(Open(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(radio.openCount, 0);
}

TEST_F(FmTransmitterDevice, StaysOpenUntilItsHandleIsClosed)
{
    const HANDLE device = Open();
    EXPECT_EQ(radio.openCount, 1);
    EXPECT_TRUE(CloseHandle(device));
    EXPECT_EQ(radio.openCount, 0);
    EXPECT_FALSE(DeviceIoControl(device, kPowerOn, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(FmTransmitterDevice, OneThatCannotBeMutedIsPoweredAllTheTime)
{
    radio.canBeMuted = false;
    EXPECT_EQ(ErrorOf(kPowerOn), ERROR_SUCCESS);
    EXPECT_EQ(radio.TakeTold(), (Told{ "close" }));
    radio.refused = { "modulator" };
    EXPECT_EQ(ErrorOf(kPowerOn), ERROR_ACCESS_DENIED);
}

TEST_F(FmTransmitterDevice, EachUnitOfFrequencyIsServed)
{
    struct Unit {
        std::uint32_t capability;
        std::uint32_t low;
        std::uint32_t high;
        const char* told;
    };
    const Unit kUnits[] = {
        { V4L2_TUNER_CAP_LOW, 1'216'000, 1'728'000, "frequency 1401600" },     // 62.5 Hz
        { 0, 1216, 1728, "frequency 1402" },                                   // 62.5 kHz, 1401.6 of them
        { V4L2_TUNER_CAP_1HZ, 76'000'000, 108'000'000, "frequency 87600000" }, // 1 Hz
    };
    for (const auto& unit : kUnits) {
        radio.capability = unit.capability;
        radio.rangeLow = unit.low;
        radio.rangeHigh = unit.high;
        EXPECT_EQ(Tune(8760), ERROR_SUCCESS);
        EXPECT_EQ(radio.TakeTold(), (Told{ unit.told, "close" }));
    }
}

TEST_F(FmTransmitterDevice, AFrequencyOutOfTheModulatorsRangeIsRefused)
{
    EXPECT_EQ(Tune(7600), ERROR_SUCCESS);
    EXPECT_EQ(Tune(10800), ERROR_SUCCESS);
    radio.TakeTold();
    for (const int hundredthsMhz : { 0, 7599, 10801, 65535 })
        EXPECT_EQ(Tune(static_cast<std::uint16_t>(hundredthsMhz)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(radio.TakeTold(), (Told{ "close", "close", "close", "close" }));
}

TEST_F(FmTransmitterDevice, WithoutStereoItSendsMono)
{
    radio.capability = V4L2_TUNER_CAP_LOW;
    EXPECT_EQ(ErrorOf(kSetDefaultProperties), ERROR_SUCCESS);
    EXPECT_EQ(radio.TakeTold(), (Told{ "subchannels 1", "pilot tone 1", "close" }));
}

TEST_F(FmTransmitterDevice, AFailureAmongTheDefaultsIsToldAfterTheRest)
{
    radio.refused = { "subchannels" };
    EXPECT_EQ(ErrorOf(kSetDefaultProperties), ERROR_ACCESS_DENIED);
    EXPECT_EQ(radio.TakeTold(), (Told{ "subchannels 2", "pilot tone 1", "close" }));
}

TEST_F(FmTransmitterDevice, NoInputIsInvalid)
{
    EXPECT_EQ(ErrorOf(kTuneFrequency), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(kSetOutputPowerRate), ERROR_INVALID_PARAMETER);
}

TEST_F(FmTransmitterDevice, OneByteIsReadOfThePowerRate)
{
    const auto rate = std::make_unique<std::uint8_t>(std::uint8_t{ 255 });
    EXPECT_EQ(ErrorOf(kSetOutputPowerRate, rate.get()), ERROR_SUCCESS);
    EXPECT_EQ(radio.TakeTold(), (Told{ "power 255", "close" }));
}

TEST_F(FmTransmitterDevice, AnotherCodeIsUnknown)
{
    EXPECT_EQ(ErrorOf(0xD4310004), ERROR_INVALID_FUNCTION);
    EXPECT_EQ(ErrorOf(0x9C402008), ERROR_INVALID_FUNCTION);
}

} // namespace
} // namespace cardsong::kernel
