#include "common/string_table.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <array>

using namespace cardsong::test;

namespace {

// A device with the string modules that ship with it, and with the UI language asked for.
class StringTable : public testing::Test {
protected:
    StringTable() { UseLanguage(0x0404); }
    ~StringTable() override
    {
        FreeLibrary(m_module);
        g_hInstance = m_instanceBefore;
    }
    void UseLanguage(LANGID language)
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.uiLanguage = language;
        cardsong::kernel::InstallDeviceTree(tree);
        g_hInstance = cardsong::kernel::ProgramInstance();
    }
    HMODULE Load()
    {
        FreeLibrary(m_module);
        m_module = LoadStringModule();
        return m_module;
    }

    ScratchDevice m_device;
    HINSTANCE m_instanceBefore = g_hInstance;
    HMODULE m_module = nullptr;
};

} // namespace

TEST_F(StringTable, Language0404LoadsItsModule)
{
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(ReadString(m_module, 17010), TEXT("播放清單"));
}

TEST_F(StringTable, Language0804LoadsItsModule)
{
    UseLanguage(0x0804);
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(ReadString(m_module, 17010), TEXT("播放列表"));
}

TEST_F(StringTable, EveryLanguageOfThePlayerLoadsItsModule)
{
    const std::pair<LANGID, WStringView> exits[] = { { 0x0404, TEXT("結束") }, { 0x0407, TEXT("Beenden") },
                                                     { 0x0409, TEXT("Exit") }, { 0x040C, TEXT("Quitter") },
                                                     { 0x0411, TEXT("終了") }, { 0x0804, TEXT("退出") },
                                                     { 0x0C0A, TEXT("Salir") } };
    for (const auto& [language, exit] : exits) {
        UseLanguage(language);
        ASSERT_NE(Load(), nullptr) << language;
        EXPECT_EQ(ReadString(m_module, 17002), exit) << language;
    }
}

TEST_F(StringTable, TheNameHasFourLowerCaseDigits)
{
    UseLanguage(0x00AB);
    EXPECT_EQ(Load(), nullptr);
    m_device.WriteFile("user/Windows/TAVO_StringTable_00ab.dll", [] {
        std::ifstream file(CARDSONG_DEVICE_TREE "/Windows/TAVO_StringTable_0409.dll", std::ios::binary);
        return std::string{ std::istreambuf_iterator<char>(file), {} };
    }());
    EXPECT_NE(Load(), nullptr);
}

TEST_F(StringTable, ALanguageWithoutAModuleGivesNull)
{
    UseLanguage(0x0412);
    EXPECT_EQ(Load(), nullptr);
}

TEST_F(StringTable, EveryCallLoadsAModuleOfItsOwn)
{
    const HMODULE first = LoadStringModule();
    const HMODULE second = LoadStringModule();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(FreeLibrary(first));
    EXPECT_EQ(ReadString(second, 17010), TEXT("播放清單"));
    EXPECT_TRUE(FreeLibrary(second));
}

TEST_F(StringTable, AStringThatTheModuleLacksComesFromTheProgram)
{
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(ReadString(m_module, 201), TEXT("Playlist"));
}

TEST_F(StringTable, WithoutAModuleTheProgramAnswers)
{
    EXPECT_EQ(ReadString(nullptr, 103), TEXT("OK"));
}

TEST_F(StringTable, AStringThatBothLackIsEmpty)
{
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(ReadString(m_module, 4242), WString());
    EXPECT_EQ(ReadString(nullptr, 17010), WString());
}
