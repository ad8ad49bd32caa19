// What lies in a key of the registry.
#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr LSTATUS kSuccess = ERROR_SUCCESS;
constexpr LSTATUS kNoMore = ERROR_NO_MORE_ITEMS;
constexpr DWORD kRoomUnits = 256;

class RegistryListing : public ::testing::Test {
protected:
    RegistryListing()
    {
        WCHAR own[32];
        wsprintfW(own, TEXT("%08x%08x"), Random(), Random());
        path = WString(TEXT("SOFTWARE\\CardsongTests\\")) + own;
        key = Create(path);
    }
    ~RegistryListing() override { RegCloseKey(key); }

    static HKEY Create(const WString& name)
    {
        HKEY created = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                  nullptr, &created, nullptr),
                  kSuccess);
        return created;
    }
    void Add(const WString& below) { EXPECT_EQ(RegCloseKey(Create(path + TEXT('\\') + below)), kSuccess); }
    void SetNumber(const WCHAR* value, DWORD number)
    {
        EXPECT_EQ(RegSetValueExW(key, value, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number),
                  kSuccess);
    }
    // In alphabetical order: a system has an order of its own.
    static std::vector<WString> KeysIn(HKEY parent)
    {
        std::vector<WString> names;
        WCHAR name[kRoomUnits];
        DWORD units = kRoomUnits;
        while (RegEnumKeyExW(parent, static_cast<DWORD>(names.size()), name, &units, nullptr, nullptr, nullptr,
                             nullptr) == kSuccess) {
            EXPECT_EQ(name[units], 0);
            names.emplace_back(name, units);
            units = kRoomUnits;
        }
        std::ranges::sort(names);
        return names;
    }
    static std::vector<WString> ValuesIn(HKEY parent)
    {
        std::vector<WString> names;
        WCHAR name[kRoomUnits];
        DWORD units = kRoomUnits;
        while (RegEnumValueW(parent, static_cast<DWORD>(names.size()), name, &units, nullptr, nullptr, nullptr,
                             nullptr) == kSuccess) {
            EXPECT_EQ(name[units], 0);
            names.emplace_back(name, units);
            units = kRoomUnits;
        }
        std::ranges::sort(names);
        return names;
    }

    cardsong::test::ScratchDevice device;
    WString path;
    HKEY key = nullptr;
    WCHAR told[kRoomUnits] = {};
    DWORD toldUnits = kRoomUnits;
};

using Names = std::vector<WString>;

TEST_F(RegistryListing, ANewKeyHoldsNothing)
{
    EXPECT_EQ(RegEnumKeyExW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr), kNoMore);
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr), kNoMore);
}

TEST_F(RegistryListing, TheKeysOneStepBelowAreTold)
{
    Add(TEXT("Beta"));
    Add(TEXT("alpha\\deep\\deeper"));
    Add(TEXT("alpha\\other"));
    EXPECT_EQ(KeysIn(key), (Names{ TEXT("Beta"), TEXT("alpha") }));
    EXPECT_EQ(RegEnumKeyExW(key, 2, told, &toldUnits, nullptr, nullptr, nullptr, nullptr), kNoMore);
}

TEST_F(RegistryListing, AKeyWhoseNameBeginsTheSameIsNoneBelow)
{
    RegCloseKey(Create(path + TEXT("more\\below")));
    EXPECT_EQ(KeysIn(key), Names{});
}

TEST_F(RegistryListing, AKeyIsToldOnceInTheSpellingOfItsCreation)
{
    Add(TEXT("Alpha\\one"));
    Add(TEXT("ALPHA\\two"));
    EXPECT_EQ(KeysIn(key), (Names{ TEXT("Alpha") }));
}

TEST_F(RegistryListing, ValuesAreNoKeysAndKeysAreNoValues)
{
    Add(TEXT("Key"));
    SetNumber(TEXT("Value"), 1);
    EXPECT_EQ(KeysIn(key), (Names{ TEXT("Key") }));
    EXPECT_EQ(ValuesIn(key), (Names{ TEXT("Value") }));
}

TEST_F(RegistryListing, ValuesAreToldWithTheNamelessOne)
{
    SetNumber(TEXT("b"), 1);
    SetNumber(TEXT(""), 2);
    SetNumber(TEXT("a=[\\]"), 3);
    EXPECT_EQ(ValuesIn(key), (Names{ TEXT(""), TEXT("a=[\\]"), TEXT("b") }));
}

TEST_F(RegistryListing, AValueComesWithItsTypeAndItsBytes)
{
    SetNumber(TEXT("Priority"), 0x89ABCDEF);
    DWORD type = 0;
    DWORD number = 0;
    DWORD sizeBytes = sizeof number;
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, &type, reinterpret_cast<BYTE*>(&number), &sizeBytes),
              kSuccess);
    EXPECT_EQ(WString(told), TEXT("Priority"));
    EXPECT_EQ(toldUnits, 8U);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(number, 0x89ABCDEFU);
    EXPECT_EQ(sizeBytes, 4U);
}

TEST_F(RegistryListing, TheSizeOfAValueIsToldWithoutItsBytes)
{
    SetNumber(TEXT("Priority"), 7);
    DWORD sizeBytes = 0;
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, &sizeBytes), kSuccess);
    EXPECT_EQ(sizeBytes, 4U);
}

TEST_F(RegistryListing, ARoomTooSmallForTheBytesTellsTheSizeNeeded)
{
    SetNumber(TEXT("Priority"), 7);
    BYTE byte = 0x55;
    DWORD sizeBytes = 1;
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, nullptr, &byte, &sizeBytes),
              static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(sizeBytes, 4U);
    EXPECT_EQ(byte, 0x55);
}

TEST_F(RegistryListing, ANameNeedsRoomForItsZero)
{
    Add(TEXT("Alpha"));
    SetNumber(TEXT("Value"), 1);
    toldUnits = 5;
    EXPECT_EQ(RegEnumKeyExW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_MORE_DATA));
    toldUnits = 5;
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_MORE_DATA));
    toldUnits = 6;
    EXPECT_EQ(RegEnumKeyExW(key, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr), kSuccess);
    EXPECT_EQ(toldUnits, 5U);
    EXPECT_EQ(WString(told), TEXT("Alpha"));
}

TEST_F(RegistryListing, TheRootIsTheDevicesOwn)
{
    EXPECT_EQ(KeysIn(HKEY_LOCAL_MACHINE), (Names{ TEXT("SOFTWARE") }));
    EXPECT_EQ(ValuesIn(HKEY_LOCAL_MACHINE), Names{});
}

TEST_F(RegistryListing, ImpossibleArgumentsAreInvalid)
{
    constexpr LSTATUS kInvalid = ERROR_INVALID_PARAMETER;
    Add(TEXT("Alpha"));
    SetNumber(TEXT("Value"), 1);
    EXPECT_EQ(RegEnumKeyExW(key, 0, told, &toldUnits, &toldUnits, nullptr, nullptr, nullptr), kInvalid);
    BYTE byte = 0;
    EXPECT_EQ(RegEnumValueW(key, 0, told, nullptr, nullptr, nullptr, nullptr, nullptr), kInvalid);
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, &toldUnits, nullptr, nullptr, nullptr), kInvalid);
    EXPECT_EQ(RegEnumValueW(key, 0, told, &toldUnits, nullptr, nullptr, &byte, nullptr), kInvalid);
}

TEST_F(RegistryListing, AClosedKeyHasNoList)
{
    const HKEY closed = Create(path);
    RegCloseKey(closed);
    EXPECT_EQ(RegEnumKeyExW(closed, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(RegEnumValueW(closed, 0, told, &toldUnits, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
}

} // namespace
