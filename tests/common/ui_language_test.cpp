#include "common/ui_language.h"

#include "common/registry_key.h"
#include "common/string_table.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace cardsong::test;

namespace {

constexpr const char* kFile = "user/PocketStoreII/TAVO/Language/Language.dat";
constexpr long long kMissing = -1;

std::vector<LANGID> g_fontsChosen;

// A device in English, whose registry is empty and which has no language file.
class UiLanguage : public testing::Test {
protected:
    UiLanguage()
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.uiLanguage = 0x0409;
        cardsong::kernel::InstallDeviceTree(tree);
        g_fontsChosen.clear();
        g_chooseUiFont = [](LANGID language) { g_fontsChosen.push_back(language); };
    }
    ~UiLanguage() override { g_chooseUiFont = nullptr; }

    // The number in the registry.
    static long long Stored(LPCWSTR name)
    {
        const UniqueKey key = OpenExistingKey(TEXT("TAVO\\Language"));
        DWORD number = 0;
        DWORD type = 0;
        DWORD sizeBytes = sizeof number;
        const LSTATUS result =
            key ? RegQueryValueExW(key.Get(), name, nullptr, &type, reinterpret_cast<LPBYTE>(&number), &sizeBytes)
                : ERROR_INVALID_HANDLE;
        return result == LSTATUS{ 0 } && type == REG_DWORD && sizeBytes == 4 ? number : kMissing;
    }
    static void ExpectNothingChanged()
    {
        EXPECT_EQ(GetUserDefaultUILanguage(), 0x0409);
        EXPECT_FALSE(OpenExistingKey(TEXT("TAVO\\Language")));
        EXPECT_TRUE(g_fontsChosen.empty());
    }

    ScratchDevice m_device;
};

// Simplified Chinese texts, an English voice.
const std::string kChinese("\x04\x08\x00\x00\x09\x04\x00\x00", 8);

} // namespace

TEST_F(UiLanguage, IsTakenFromTheFileAndKeptInTheRegistry)
{
    m_device.WriteFile(kFile, kChinese);
    SyncUiLanguageFromFile();
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0804);
    EXPECT_EQ(Stored(TEXT("Text")), 0x0804);
    EXPECT_EQ(Stored(TEXT("Audio")), 0x0409);
    EXPECT_EQ(g_fontsChosen, std::vector<LANGID>{ 0x0804 });
}

TEST_F(UiLanguage, TheNextStringModuleIsThatOfTheNewLanguage)
{
    auto tree = cardsong::kernel::CurrentDeviceTree();
    tree.systemDirectory = CARDSONG_DEVICE_TREE;
    cardsong::kernel::InstallDeviceTree(tree);
    m_device.WriteFile(kFile, kChinese);
    SyncUiLanguageFromFile();
    const HMODULE strings = LoadStringModule();
    ASSERT_NE(strings, nullptr);
    EXPECT_EQ(ReadString(strings, 17010), TEXT("播放列表"));
    FreeLibrary(strings);
}

TEST_F(UiLanguage, TheLow16BitsAreTheLanguage)
{
    m_device.WriteFile(kFile, std::string("\x04\x08\xFF\xFF\xFF\xFF\xFF\xFF", 8) + "more");
    SyncUiLanguageFromFile();
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0804);
    EXPECT_EQ(Stored(TEXT("Text")), 0xFFFF0804);
    EXPECT_EQ(Stored(TEXT("Audio")), 0xFFFFFFFF);
}

TEST_F(UiLanguage, WithTheKeyThereTheFileIsNotLookedAt)
{
    m_device.WriteFile(kFile, kChinese);
    OpenOrCreateKey(TEXT("TAVO\\Language"));
    SyncUiLanguageFromFile();
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0409);
    EXPECT_EQ(Stored(TEXT("Text")), kMissing);
    EXPECT_EQ(g_fontsChosen, std::vector<LANGID>{ 0x0409 });
}

TEST_F(UiLanguage, WithoutAFileNothingChanges)
{
    SyncUiLanguageFromFile();
    ExpectNothingChanged();
}

TEST_F(UiLanguage, AFileShorterThan8BytesChangesNothing)
{
    for (std::size_t length = 0; length < kChinese.size(); ++length) {
        m_device.WriteFile(kFile, kChinese.substr(0, length));
        SyncUiLanguageFromFile();
        ExpectNothingChanged();
    }
}

TEST_F(UiLanguage, ALanguageOf0IsNone)
{
    m_device.WriteFile(kFile, std::string(8, '\0'));
    SyncUiLanguageFromFile();
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0409);
    EXPECT_EQ(Stored(TEXT("Text")), 0);
}

TEST_F(UiLanguage, NoToolkitNeedsToListen)
{
    g_chooseUiFont = nullptr;
    m_device.WriteFile(kFile, kChinese);
    SyncUiLanguageFromFile();
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0804);
}

TEST_F(UiLanguage, WithoutAFileTheDefaultBecomesTheLanguageAndNoFileIsWritten)
{
    EXPECT_EQ(EnsureLanguageFile(), 0);
    EXPECT_EQ(GetUserDefaultUILanguage(), 1028);
    EXPECT_EQ(Stored(TEXT("Text")), 1028);
    EXPECT_EQ(Stored(TEXT("Audio")), 1028);
    EXPECT_TRUE(g_fontsChosen.empty());
    EXPECT_EQ(GetFileAttributesW(TEXT("PocketStoreII\\TAVO\\Language\\Language.dat")), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(EnsureLanguageFile(), 0);
}

TEST_F(UiLanguage, AFileThatIsThereIsEnoughWhateverItHolds)
{
    m_device.WriteFile(kFile, "x");
    EXPECT_EQ(EnsureLanguageFile(), 1);
    ExpectNothingChanged();
}

TEST_F(UiLanguage, IsSetForTheWholeProcess)
{
    EXPECT_TRUE(SetUserDefaultUILanguage(0x0404));
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0404);
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(SetUserDefaultUILanguage(0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0404);
}
