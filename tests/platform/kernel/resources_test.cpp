#include "platform/ce.h"
#include "tests/platform/kernel/module_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using cardsong::test::ModuleBuilder;
using cardsong::test::ModuleKind;
using cardsong::test::ScratchDevice;

constexpr std::uint16_t kDialogType = 5;

class Resources : public ::testing::TestWithParam<ModuleKind> {
protected:
    Resources()
    {
        ModuleBuilder builder(GetParam());
        builder.Add({ kDialogType, 0, u"AUDIOPLAYER", 0x0409, "named dialog" });
        builder.Add({ kDialogType, 102, {}, 0x0404, "numbered dialog" });
        builder.Add({ kDialogType, 103, {}, 0x0411, "dialog of another language" });
        builder.AddStrings(17008, 0x0404, { u"", u"", u"Play list", u"\u6B4C\u66F2" });
        device.WriteFile("user/scratch/module.dll", builder.Build());
        module = Load(TEXT("module.dll"));
    }
    ~Resources() override { FreeLibrary(module); }

    HMODULE Load(WStringView name)
    {
        return LoadLibraryExW(device.Path(name).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    }
    std::string Data(HRSRC resource)
    {
        const auto* const data = static_cast<const char*>(LockResource(LoadResource(module, resource)));
        return data ? std::string(data, SizeofResource(module, resource)) : "(none)";
    }

    ScratchDevice device;
    HMODULE module = nullptr;
};

TEST_P(Resources, ANamedDialogIsFoundWithoutCase)
{
    ASSERT_NE(module, nullptr);
    const HRSRC resource = FindResourceW(module, TEXT("audioPlayer"), RT_DIALOG);
    ASSERT_NE(resource, nullptr);
    EXPECT_EQ(Data(resource), "named dialog");
}

TEST_P(Resources, ANumberedDialogIsFound)
{
    EXPECT_EQ(Data(FindResourceW(module, MAKEINTRESOURCEW(102), RT_DIALOG)), "numbered dialog");
    EXPECT_EQ(Data(FindResourceW(module, TEXT("#102"), RT_DIALOG)), "numbered dialog");
}

TEST_P(Resources, AResourceOfAnotherLanguageIsBetterThanNone)
{
    EXPECT_EQ(Data(FindResourceW(module, MAKEINTRESOURCEW(103), RT_DIALOG)), "dialog of another language");
}

TEST_P(Resources, FailuresAreGraded)
{
    EXPECT_EQ(FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(77)), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_RESOURCE_TYPE_NOT_FOUND));
    EXPECT_EQ(FindResourceW(module, MAKEINTRESOURCEW(1), RT_DIALOG), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_RESOURCE_NAME_NOT_FOUND));
    EXPECT_EQ(FindResourceW(module, TEXT("OTHER"), RT_DIALOG), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_RESOURCE_NAME_NOT_FOUND));
}

TEST_P(Resources, AStringIsCopied)
{
    WCHAR buffer[20];
    EXPECT_EQ(LoadStringW(module, 17010, buffer, 20), 9);
    EXPECT_EQ(WString(buffer), TEXT("Play list"));
    EXPECT_EQ(LoadStringW(module, 17011, buffer, 20), 2);
    EXPECT_EQ(WString(buffer), TEXT("\u6B4C\u66F2"));
}

TEST_P(Resources, AStringIsCutToTheBuffer)
{
    WCHAR buffer[5];
    EXPECT_EQ(LoadStringW(module, 17010, buffer, 5), 4);
    EXPECT_EQ(WString(buffer), TEXT("Play"));
}

TEST_P(Resources, ABufferOfNoLengthGetsAPointerIntoTheModule)
{
    const WCHAR* text = nullptr;
    ASSERT_EQ(LoadStringW(module, 17010, reinterpret_cast<LPWSTR>(&text), 0), 9);
    EXPECT_EQ(WString(text, 9), TEXT("Play list"));
    EXPECT_EQ(text[9], 2); // no zero: the length of the next string follows
}

TEST_P(Resources, WithoutABufferNothingIsTold)
{
    EXPECT_EQ(LoadStringW(module, 17010, nullptr, 20), 0);
    EXPECT_EQ(LoadStringW(module, 17010, nullptr, 0), 0);
}

TEST_P(Resources, AMissingStringIsEmpty)
{
    WCHAR buffer[20];
    EXPECT_EQ(LoadStringW(module, 17012, buffer, 20), 0); // in the block
    EXPECT_EQ(LoadStringW(module, 1039, buffer, 20), 0);  // no such block
}

TEST_P(Resources, AModuleIsFreedOnce)
{
    const HMODULE second = Load(TEXT("MODULE.dll"));
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(FreeLibrary(second));
    WCHAR buffer[20];
    EXPECT_EQ(LoadStringW(module, 17010, buffer, 20), 9); // the first handle is still good
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module));
}

TEST_P(Resources, AnEmptyFileIsInvalid)
{
    device.WriteFile("user/scratch/empty.dll");
    EXPECT_EQ(Load(TEXT("empty.dll")), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_INVALID));
}

TEST_P(Resources, AMissingFileIsNotFound)
{
    EXPECT_EQ(Load(TEXT("none.dll")), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_P(Resources, AFileThatIsNoModuleHasABadFormat)
{
    device.WriteFile("user/scratch/text.dll", std::string(4096, 'x'));
    EXPECT_EQ(Load(TEXT("text.dll")), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));
}

INSTANTIATE_TEST_SUITE_P(BothForms, Resources, ::testing::Values(ModuleKind::Pe32, ModuleKind::Pe32Plus),
                         [](const auto& form) { return form.param == ModuleKind::Pe32 ? "Pe32" : "Pe32Plus"; });

} // namespace
