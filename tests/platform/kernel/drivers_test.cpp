// The stream drivers of the device.
#include "tests/platform/kernel/device_fixture.h"

#include <filesystem>

namespace {

class Drivers : public cardsong::test::DeviceTest {
protected:
    HANDLE Open(const WString& name)
    {
        return CreateFileW(name.c_str(), 1, 3, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
};

TEST_F(Drivers, TheCardsDriversOpenWhileThereIsACard)
{
    for (const auto* const name : { TEXT("DSK3:"), TEXT("SDH1:"), TEXT("sdh1:") }) {
        const HANDLE handle = Open(name);
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(CloseHandle(handle));
        EXPECT_FALSE(CloseHandle(handle));
    }
    ASSERT_TRUE(std::filesystem::remove(device.CardDirectory()));
    EXPECT_EQ(Open(TEXT("DSK3:")), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(Drivers, OnlyTheCardHostKnowsItsCode)
{
    const HANDLE host = Open(TEXT("SDH1:"));
    const HANDLE disk = Open(TEXT("DSK3:"));
    DWORD returned = 5;
    EXPECT_TRUE(DeviceIoControl(host, 0x9C402008, nullptr, 0, nullptr, 0, &returned, nullptr));
    EXPECT_EQ(returned, 0U);
    EXPECT_FALSE(DeviceIoControl(host, 0x9C40200C, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_FUNCTION);
    EXPECT_FALSE(DeviceIoControl(disk, 0x9C402008, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_TRUE(CloseHandle(host));
    EXPECT_TRUE(CloseHandle(disk));
    EXPECT_FALSE(DeviceIoControl(host, 0x9C402008, nullptr, 0, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Drivers, ThereIsNoTransmitter)
{
    EXPECT_EQ(Open(TEXT("FMT0:")), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

} // namespace
