#include "ctl/registry_listing.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

class RegistryList : public ::testing::Test {
protected:
    static void Set(const WCHAR* path, const WCHAR* name, DWORD type, const std::string& bytes)
    {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                                  &key, nullptr),
                  static_cast<LSTATUS>(ERROR_SUCCESS));
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())),
                  static_cast<LSTATUS>(ERROR_SUCCESS));
        RegCloseKey(key);
    }

    cardsong::test::ScratchDevice device;
};

TEST_F(RegistryList, KeysComeBeforeValuesInAlphabeticalOrder)
{
    Set(TEXT("Top\\zeta\\below"), TEXT("x"), REG_DWORD, { "\1\0\0\0", 4 });
    Set(TEXT("Top\\Alpha"), TEXT("x"), REG_DWORD, { "\1\0\0\0", 4 });
    Set(TEXT("Top"), TEXT("number"), REG_DWORD, { "\7\0\0\0", 4 });
    Set(TEXT("Top"), TEXT("bytes"), REG_BINARY, { "\1\xAB", 2 });
    EXPECT_EQ(ListRegistryKey(TEXT("Top")), "Alpha\\\nzeta\\\nbytes\t01ab\nnumber\t7\n");
    EXPECT_EQ(ListRegistryKey(TEXT("\\TOP\\Alpha\\")), "x\t1\n");
}

TEST_F(RegistryList, TheRootHasALineForEachKeyOfTheDevice)
{
    Set(TEXT("One\\Two"), TEXT(""), REG_DWORD, { "\1\0\0\0", 4 });
    EXPECT_EQ(ListRegistryKey({}), "One\\\n");
}

TEST_F(RegistryList, AnEmptyDeviceHasAnEmptyList)
{
    EXPECT_EQ(ListRegistryKey({}), "");
}

TEST_F(RegistryList, AMissingKeyHasNone)
{
    EXPECT_EQ(ListRegistryKey(TEXT("None")), std::nullopt);
}

TEST_F(RegistryList, AValueLargerThanMostIsListedWhole)
{
    const std::string bytes(200'000, '\x5A');
    Set(TEXT("Top"), TEXT("large"), REG_BINARY, bytes);
    Set(TEXT("Top"), TEXT("next"), REG_DWORD, { "\1\0\0\0", 4 });
    const auto lines = ListRegistryKey(TEXT("Top"));
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->size(), std::string("large\t\nnext\t1\n").size() + 2 * bytes.size());
    EXPECT_EQ(lines->substr(0, 10), "large\t5a5a");
}

} // namespace
