#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// One fresh key for each test; on a system whose registry outlives the test its name is a new one.
class Registry : public ::testing::Test {
protected:
    Registry()
    {
        WCHAR name[32];
        wsprintfW(name, TEXT("%08x%08x"), Random(), Random());
        path = WString(TEXT("SOFTWARE\\CardsongTests\\")) + name;
        DWORD disposition = 0;
        EXPECT_EQ(Create(path, &key, &disposition), static_cast<LSTATUS>(ERROR_SUCCESS));
        EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
    }
    ~Registry() override { RegCloseKey(key); }

    static LSTATUS Create(const WString& name, HKEY* created, DWORD* disposition)
    {
        return RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                               nullptr, created, disposition);
    }
    LSTATUS Set(const WCHAR* name, DWORD type, const void* data, DWORD sizeBytes)
    {
        return RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), sizeBytes);
    }
    LSTATUS Query(const WCHAR* name, DWORD* type, void* data, DWORD* sizeBytes)
    {
        return RegQueryValueExW(key, name, nullptr, type, static_cast<BYTE*>(data), sizeBytes);
    }

    cardsong::test::ScratchDevice device;
    WString path;
    HKEY key = nullptr;
};

constexpr LSTATUS kSuccess = ERROR_SUCCESS;

TEST_F(Registry, ANumberIsReadBack)
{
    const DWORD written = 0x89ABCDEF;
    ASSERT_EQ(Set(TEXT("Priority"), REG_DWORD, &written, sizeof written), kSuccess);
    DWORD read = 0;
    DWORD type = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Priority"), &type, &read, &size), kSuccess);
    EXPECT_EQ(read, 0x89ABCDEFU);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(size, 4U);
}

TEST_F(Registry, NamesAreComparedWithoutCase)
{
    const DWORD written = 7;
    ASSERT_EQ(Set(TEXT("Play Color"), REG_DWORD, &written, sizeof written), kSuccess);
    WString upper = path;
    for (auto& unit : upper)
        unit = unit >= TEXT('a') && unit <= TEXT('z') ? static_cast<WCHAR>(unit - 0x20) : unit;
    HKEY again = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, upper.c_str(), 0, KEY_READ, &again), kSuccess);
    DWORD read = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(RegQueryValueExW(again, TEXT("PLAY COLOR"), nullptr, nullptr, reinterpret_cast<BYTE*>(&read), &size),
              kSuccess);
    EXPECT_EQ(read, 7U);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, TextIsReadBackWithItsZero)
{
    const auto* const text = TEXT("RGB(255,0,0)");
    ASSERT_EQ(Set(TEXT("Next Color"), REG_SZ, text, 13 * sizeof(WCHAR)), kSuccess);
    WCHAR read[30];
    DWORD type = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Next Color"), &type, read, &size), kSuccess);
    EXPECT_EQ(WString(read), TEXT("RGB(255,0,0)"));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 13 * sizeof(WCHAR));
}

TEST_F(Registry, TextOneCharacterShortIsStoredWithItsZero)
{
    const WCHAR text[] = TEXT("abc");
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, text, 3 * sizeof(WCHAR)), kSuccess);
    DWORD size = 0;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, nullptr, &size), kSuccess);
    EXPECT_EQ(size, 4 * sizeof(WCHAR));
}

TEST_F(Registry, TextStoredWithoutAZeroGetsOneWhereThereIsRoom)
{
    const WCHAR text[] = TEXT("abcd");
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, text, 2 * sizeof(WCHAR)), kSuccess);
    WCHAR read[4] = { TEXT('x'), TEXT('x'), TEXT('x'), TEXT('x') };
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, read, &size), kSuccess);
    EXPECT_EQ(size, 2 * sizeof(WCHAR));
    EXPECT_EQ(WString(read), TEXT("ab"));
    WCHAR exact[2] = {};
    size = sizeof exact;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, exact, &size), kSuccess);
    EXPECT_EQ(WString(exact, 2), TEXT("ab"));
}

TEST_F(Registry, NoBytesOfTextAreStoredAsNone)
{
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, TEXT(""), 0), kSuccess);
    DWORD size = 9;
    DWORD type = 0;
    EXPECT_EQ(Query(TEXT("Text"), &type, nullptr, &size), kSuccess);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
}

TEST_F(Registry, ABufferTooSmallTellsTheSizeNeeded)
{
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, TEXT("abc"), 4 * sizeof(WCHAR)), kSuccess);
    BYTE read[3] = { 9, 9, 9 };
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, read, &size), static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(size, 4 * sizeof(WCHAR));
}

TEST_F(Registry, BytesAreReadBackAsTheyAre)
{
    const BYTE written[] = { 0, 0xFF, 0x0A, '=', '[', 0 };
    ASSERT_EQ(Set(TEXT("Bytes"), REG_BINARY, written, sizeof written), kSuccess);
    BYTE read[16] = {};
    DWORD type = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Bytes"), &type, read, &size), kSuccess);
    EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(std::string(read, read + size), std::string(written, written + sizeof written));
}

TEST_F(Registry, TextWithEveryOddCharacterIsReadBack)
{
    const WString text = TEXT("  \\a;b#c=[d]%\n\t\u6B4C\u66F2 \u00E9 ");
    const auto sizeBytes = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, text.c_str(), sizeBytes), kSuccess);
    WCHAR read[64];
    DWORD size = sizeof read;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, read, &size), kSuccess);
    EXPECT_EQ(WString(read), text);
}

TEST_F(Registry, NamesWithEveryOddCharacterAreKeptApart)
{
    const WCHAR* const kNames[] = { TEXT(""),  TEXT("@"),    TEXT("#x"),    TEXT(" x "),    TEXT("x"),    TEXT("a=b"),
                                    TEXT("a"), TEXT("a[b]"), TEXT("%0041"), TEXT("\u6B4C"), TEXT("a\tb"), TEXT("[a]") };
    DWORD number = 100;
    for (const auto* const name : kNames) {
        ASSERT_EQ(Set(name, REG_DWORD, &number, sizeof number), kSuccess);
        ++number;
    }
    number = 100;
    for (const auto* const name : kNames) {
        DWORD read = 0;
        DWORD size = sizeof read;
        EXPECT_EQ(Query(name, nullptr, &read, &size), kSuccess);
        EXPECT_EQ(read, number++);
    }
}

TEST_F(Registry, AMissingValueTellsFileNotFound)
{
    DWORD size = 5;
    EXPECT_EQ(Query(TEXT("none"), nullptr, nullptr, &size), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(size, 0U);
    BYTE buffer[8];
    size = 8;
    EXPECT_EQ(Query(TEXT("none"), nullptr, buffer, &size), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(size, 8U);
}

TEST_F(Registry, AMissingKeyTellsFileNotFound)
{
    HKEY none = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (path + TEXT("\\none")).c_str(), 0, KEY_READ, &none),
              static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Registry, ASecondCreationOpensTheKey)
{
    HKEY again = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(Create(path, &again, &disposition), kSuccess);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, SeparatorsAtTheEndAreIgnored)
{
    HKEY again = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (path + TEXT("\\")).c_str(), 0, KEY_READ, &again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, TheKeysAboveANewKeyExist)
{
    HKEY above = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\CardsongTests"), 0, KEY_READ, &above), kSuccess);
    EXPECT_EQ(RegCloseKey(above), kSuccess);
}

TEST_F(Registry, AKeyBelowAnOpenKeyIsNamedFromThere)
{
    HKEY below = nullptr;
    EXPECT_EQ(RegCreateKeyExW(key, TEXT("Sub"), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &below, nullptr), kSuccess);
    EXPECT_EQ(RegCloseKey(below), kSuccess);
    HKEY again = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (path + TEXT("\\Sub")).c_str(), 0, KEY_READ, &again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, AKeyClosesOnce)
{
    HKEY again = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExW(again, TEXT("x"), nullptr, nullptr, nullptr, &size),
              static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
}

TEST_F(Registry, AValueIsReplacedByAnotherType)
{
    const DWORD number = 1;
    ASSERT_EQ(Set(TEXT("v"), REG_DWORD, &number, sizeof number), kSuccess);
    ASSERT_EQ(Set(TEXT("V"), REG_SZ, TEXT("x"), 2 * sizeof(WCHAR)), kSuccess);
    DWORD type = 0;
    DWORD size = 0;
    EXPECT_EQ(Query(TEXT("v"), &type, nullptr, &size), kSuccess);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 2 * sizeof(WCHAR));
}

// Elsewhere a leading separator is an error; the device's programs write their keys with one.
TEST_F(Registry, SeparatorsAtTheStartAreIgnored)
{
    HKEY again = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(Create(TEXT("\\") + path, &again, &disposition), kSuccess);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));
    EXPECT_EQ(RegCloseKey(again), kSuccess);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (TEXT("\\\\") + path).c_str(), 0, KEY_READ, &again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, SeparatorsBelowAnOpenKeyAreIgnoredToo)
{
    HKEY below = nullptr;
    ASSERT_EQ(RegCreateKeyExW(key, TEXT("\\a\\\\b\\"), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &below, nullptr),
              kSuccess);
    EXPECT_EQ(RegCloseKey(below), kSuccess);
    EXPECT_EQ(RegOpenKeyExW(key, TEXT("\\a"), 0, KEY_READ, &below), kSuccess);
    EXPECT_EQ(RegCloseKey(below), kSuccess);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (path + TEXT("\\a\\b")).c_str(), 0, KEY_READ, &below), kSuccess);
    EXPECT_EQ(RegCloseKey(below), kSuccess);
}

TEST_F(Registry, NoPathMeansTheKeyItself)
{
    const DWORD number = 7;
    ASSERT_EQ(Set(TEXT("v"), REG_DWORD, &number, sizeof number), kSuccess);
    for (const WCHAR* const none : { static_cast<const WCHAR*>(nullptr), TEXT("") }) {
        HKEY same = nullptr;
        ASSERT_EQ(RegOpenKeyExW(key, none, 0, KEY_READ, &same), kSuccess);
        DWORD size = 0;
        EXPECT_EQ(RegQueryValueExW(same, TEXT("v"), nullptr, nullptr, nullptr, &size), kSuccess);
        EXPECT_EQ(size, 4U);
        EXPECT_EQ(RegCloseKey(same), kSuccess);
    }
}

TEST_F(Registry, TheRootIsTheDevicesOwn)
{
    const DWORD number = 7;
    DWORD read = 0;
    DWORD size = sizeof read;
    EXPECT_EQ(RegSetValueExW(HKEY_LOCAL_MACHINE, TEXT("v"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), 4),
              kSuccess);
    HKEY root = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, nullptr, 0, KEY_READ, &root), kSuccess);
    EXPECT_EQ(RegQueryValueExW(root, TEXT("v"), nullptr, nullptr, reinterpret_cast<BYTE*>(&read), &size), kSuccess);
    EXPECT_EQ(read, 7U);
    EXPECT_EQ(RegCloseKey(root), kSuccess);
    EXPECT_EQ(RegQueryValueExW(HKEY_LOCAL_MACHINE, TEXT("V"), nullptr, nullptr, nullptr, &size), kSuccess);
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), kSuccess);
}

TEST_F(Registry, NothingOfThisMachineIsSeen)
{
    for (const auto* const name : { TEXT("SOFTWARE\\Microsoft"), TEXT("SYSTEM"), TEXT("HARDWARE") }) {
        HKEY none = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, name, 0, KEY_READ, &none),
                  static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    }
}

TEST_F(Registry, EachDeviceHasARegistryOfItsOwn)
{
    {
        const cardsong::test::ScratchDevice other;
        HKEY none = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &none),
                  static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    }
    HKEY again = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &again), kSuccess);
    EXPECT_EQ(RegCloseKey(again), kSuccess);
}

TEST_F(Registry, TooSmallARoomForTheZeroIsLeftAlone)
{
    const WCHAR text[] = TEXT("abcd");
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, text, 2 * sizeof(WCHAR)), kSuccess);
    WCHAR read[3] = { TEXT('x'), TEXT('x'), TEXT('x') };
    DWORD size = 2 * sizeof(WCHAR) + 1;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, read, &size), kSuccess);
    EXPECT_EQ(size, 2 * sizeof(WCHAR));
    EXPECT_EQ(WString(read, 3), TEXT("abx"));
}

TEST_F(Registry, TextOfOddBytesIsStoredAsItIs)
{
    ASSERT_EQ(Set(TEXT("Text"), REG_SZ, TEXT("abc"), 5), kSuccess);
    DWORD size = 0;
    EXPECT_EQ(Query(TEXT("Text"), nullptr, nullptr, &size), kSuccess);
    EXPECT_EQ(size, 5U);
}

TEST_F(Registry, ImpossibleArgumentsAreInvalid)
{
    constexpr LSTATUS kInvalid = ERROR_INVALID_PARAMETER;
    HKEY other = nullptr;
    EXPECT_EQ(RegOpenKeyExW(key, TEXT("q"), 0, KEY_READ, nullptr), kInvalid);
    EXPECT_EQ(RegCreateKeyExW(key, TEXT("q"), 1, nullptr, 0, KEY_ALL_ACCESS, nullptr, &other, nullptr), kInvalid);
    EXPECT_EQ(RegOpenKeyExW(nullptr, TEXT("q"), 0, KEY_READ, &other), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
    BYTE data[8] = {};
    ASSERT_EQ(Set(TEXT("s"), REG_BINARY, data, 4), kSuccess);
    DWORD size = 8;
    EXPECT_EQ(RegQueryValueExW(key, TEXT("s"), nullptr, nullptr, data, nullptr), kInvalid);
    EXPECT_EQ(RegQueryValueExW(key, TEXT("s"), &size, nullptr, nullptr, nullptr), kInvalid);
    EXPECT_EQ(RegCloseKey(nullptr), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
}

TEST_F(Registry, AValueOfNothingIsStored)
{
    ASSERT_EQ(Set(TEXT("Nothing"), REG_BINARY, nullptr, 0), kSuccess);
    DWORD type = 0;
    DWORD size = 9;
    EXPECT_EQ(Query(TEXT("Nothing"), &type, nullptr, &size), kSuccess);
    EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(size, 0U);
}

TEST_F(Registry, AClosedKeyTakesNoValue)
{
    HKEY other = nullptr;
    ASSERT_EQ(Create(path + TEXT("\\Other"), &other, nullptr), kSuccess);
    ASSERT_EQ(RegCloseKey(other), kSuccess);
    const BYTE data = 1;
    EXPECT_EQ(RegSetValueExW(other, TEXT("Value"), 0, REG_BINARY, &data, 1),
              static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
}

} // namespace
