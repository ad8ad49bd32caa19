// Modules of the device: where they are looked for, and a real one.
#include "platform/ce.h"
#include "tests/platform/kernel/module_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using cardsong::test::ModuleBuilder;
using cardsong::test::ModuleKind;

std::string SampleModule()
{
    return ModuleBuilder(ModuleKind::Pe32).AddStrings(17008, 0x0404, { u"", u"", u"Play list" }).Build();
}

class DeviceModules : public ::testing::Test {
protected:
    static int StringUnits(LPCWSTR name)
    {
        const HMODULE module = LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE);
        if (module == nullptr)
            return -1;
        WCHAR buffer[20];
        const int units = LoadStringW(module, 17010, buffer, 20);
        EXPECT_TRUE(FreeLibrary(module));
        return units;
    }

    cardsong::test::ScratchDevice device;
};

TEST_F(DeviceModules, ABareNameIsLookedForUnderWindows)
{
    device.WriteFile("system/Windows/TAVO_StringTable_0404.dll", SampleModule());
    const HMODULE module = LoadLibraryExW(TEXT("TAVO_StringTable_0404.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    WCHAR buffer[20];
    EXPECT_EQ(LoadStringW(module, 17010, buffer, 20), 9);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(DeviceModules, ABareNameThatIsMissingIsNotFound)
{
    EXPECT_EQ(LoadLibraryExW(TEXT("TAVO_StringTable_0411.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
}

TEST_F(DeviceModules, NoModuleIsLoadedAsCode)
{
    device.WriteFile("user/Windows/a.dll", SampleModule());
    EXPECT_EQ(LoadLibraryExW(TEXT("a.dll"), nullptr, 0), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
}

// The real thing: a module that the resource compiler and the linker of the Windows tools made.
TEST_F(DeviceModules, ALinkedModuleIsRead)
{
    const std::string linked = CARDSONG_TEST_MODULE;
    std::ifstream file(linked, std::ios::binary);
    const std::string bytes{ std::istreambuf_iterator<char>(file), {} };
    ASSERT_FALSE(bytes.empty());
    device.WriteFile("user/Windows/linked.dll", bytes);
    const HMODULE module = LoadLibraryExW(TEXT("linked.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    WCHAR buffer[40];
    EXPECT_EQ(LoadStringW(module, 17001, buffer, 40), 7);
    EXPECT_EQ(WString(buffer), TEXT("No card"));
    EXPECT_EQ(LoadStringW(module, 1039, buffer, 40), 4);
    EXPECT_EQ(WString(buffer), TEXT("\u8BF7\u63D2\u5165\u5361"));
    DLGTEMPLATE dialog = {};
    const HRSRC resource = FindResourceW(module, TEXT("AUDIOPLAYER"), RT_DIALOG);
    ASSERT_GE(SizeofResource(module, resource), sizeof dialog);
    std::memcpy(&dialog, LockResource(LoadResource(module, resource)), sizeof dialog);
    EXPECT_EQ(dialog.style, 0x80080040U);
    EXPECT_EQ(dialog.cx, 241);
    EXPECT_EQ(dialog.cy, 119);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(DeviceModules, ANameWithoutAnExtensionMeansALibrary)
{
    device.WriteFile("system/Windows/installed.dll", SampleModule());
    device.WriteFile("card/own.dll", SampleModule());
    EXPECT_EQ(StringUnits(TEXT("Installed")), 9);
    EXPECT_EQ(StringUnits(TEXT("\\SDMMC\\own")), 9);
    device.WriteFile("user/Windows/plain", SampleModule());
    EXPECT_EQ(StringUnits(TEXT("plain.")), 9);
    EXPECT_EQ(StringUnits(TEXT("plain")), -1);
}

TEST_F(DeviceModules, TheUsersModuleLiesOverTheInstalledOne)
{
    device.WriteFile("system/Windows/a.dll", "not a module");
    device.WriteFile("user/Windows/a.dll", SampleModule());
    EXPECT_EQ(StringUnits(TEXT("a.dll")), 9);
}

TEST_F(DeviceModules, NoModuleOfThisMachineIsLoaded)
{
    for (const auto* const name : { TEXT("kernel32.dll"), TEXT("kernel32"), TEXT("\\Windows\\system32\\kernel32.dll"),
                                    TEXT("\\SDMMC\\none\\a.dll") }) {
        EXPECT_EQ(StringUnits(name), -1);
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
    }
}

TEST_F(DeviceModules, AFolderIsNoModule)
{
    device.MakeFolder("user/Windows/a.dll");
    EXPECT_EQ(StringUnits(TEXT("a.dll")), -1);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_ACCESS_DENIED });
}

TEST_F(DeviceModules, NoNameIsAnError)
{
    EXPECT_EQ(LoadLibraryExW(nullptr, nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
    EXPECT_EQ(LoadLibraryExW(TEXT(""), nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
    EXPECT_FALSE(FreeLibrary(nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_HANDLE });
}

} // namespace
