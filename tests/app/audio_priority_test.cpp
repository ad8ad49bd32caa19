#include "app/audio_priority.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <filesystem>

using cardsong::test::ScratchDevice;

namespace {

constexpr LSTATUS kSuccess = ERROR_SUCCESS;
constexpr LSTATUS kMissing = ERROR_FILE_NOT_FOUND;

// On a scratch device, whose registry is empty.
class AudioPriority : public ::testing::Test {
protected:
    static bool KeyExists()
    {
        HKEY key = nullptr;
        const LSTATUS result = RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("TAVO\\AudioManagement"), 0, KEY_READ, &key);
        if (result == kSuccess)
            RegCloseKey(key);
        return result == kSuccess;
    }
    static LSTATUS Store(DWORD type, const void* data, DWORD sizeBytes)
    {
        const UniqueKey key = OpenAudioManagementKey();
        return RegSetValueExW(key.Get(), TEXT("Priority"), 0, type, static_cast<const BYTE*>(data), sizeBytes);
    }
    // From here on no key can be made: a folder stands where the registry has its file.
    void RefuseWriting() const { std::filesystem::create_directories(m_device.UserDirectory() + "/registry.ini/x"); }

    ScratchDevice m_device;
};

} // namespace

TEST_F(AudioPriority, TheFirstReadingMakesTheKeyAndFails)
{
    ASSERT_FALSE(KeyExists());
    DWORD priority = 0;
    EXPECT_EQ(ReadAudioPriority(priority), kMissing);
    EXPECT_EQ(priority, 0U);
    EXPECT_TRUE(KeyExists());
    EXPECT_EQ(ReadAudioPriority(priority), kMissing);
}

TEST_F(AudioPriority, AFailedReadingLeavesTheCallersValue)
{
    DWORD priority = 3;
    EXPECT_EQ(ReadAudioPriority(priority), kMissing);
    EXPECT_EQ(priority, 3U);
}

TEST_F(AudioPriority, WhatIsWrittenIsReadBackAsANumber)
{
    WriteAudioPriority(2);
    DWORD priority = 0;
    EXPECT_EQ(ReadAudioPriority(priority), kSuccess);
    EXPECT_EQ(priority, 2U);
    DWORD type = 0;
    DWORD sizeBytes = 0;
    const UniqueKey key = OpenAudioManagementKey();
    EXPECT_EQ(RegQueryValueExW(key.Get(), TEXT("Priority"), nullptr, &type, nullptr, &sizeBytes), kSuccess);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(sizeBytes, 4U);
}

TEST_F(AudioPriority, ALargePriorityIsReadAsItIs)
{
    const DWORD seven = 7;
    ASSERT_EQ(Store(REG_DWORD, &seven, sizeof seven), kSuccess);
    DWORD priority = 0;
    EXPECT_EQ(ReadAudioPriority(priority), kSuccess);
    EXPECT_EQ(priority, 7U);
}

TEST_F(AudioPriority, AValueLongerThanANumberFailsAndLeavesTheCallersValue)
{
    ASSERT_EQ(Store(REG_SZ, TEXT("two"), 4 * sizeof(WCHAR)), kSuccess);
    DWORD priority = 1;
    EXPECT_EQ(ReadAudioPriority(priority), static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(priority, 1U);
}

TEST_F(AudioPriority, OtherValuesOfTheKeyHaveNamesOfTheirOwn)
{
    const UniqueKey key = OpenAudioManagementKey();
    ASSERT_TRUE(key);
    EXPECT_EQ(SetAudioValue(key, TEXT("Other"), 9), kSuccess);
    DWORD value = 0;
    EXPECT_EQ(QueryAudioValue(key, TEXT("Priority"), value), kMissing);
    EXPECT_EQ(QueryAudioValue(key, TEXT("Other"), value), kSuccess);
    EXPECT_EQ(value, 9U);
}

TEST_F(AudioPriority, WithoutAKeyReadingFailsAndWritingDoesNothing)
{
    RefuseWriting();
    EXPECT_FALSE(OpenAudioManagementKey());
    DWORD priority = 4;
    EXPECT_EQ(ReadAudioPriority(priority), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(priority, 4U);
    WriteAudioPriority(2);
    EXPECT_FALSE(KeyExists());
}
