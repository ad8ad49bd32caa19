#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace {

class StartedPrograms : public ::testing::Test {
protected:
    // The program that writes its arguments, one a line, to a file beside itself.
    void Install(const std::string& hostRelativePath)
    {
        const std::filesystem::path root = std::filesystem::path(device.UserDirectory()).parent_path();
        std::filesystem::create_directories((root / hostRelativePath).parent_path());
        std::filesystem::copy_file(CARDSONG_TEST_PROGRAM, root / hostRelativePath);
    }
    BOOL Start(const WCHAR* image, WString commandLine)
    {
        PROCESS_INFORMATION information = {};
        const BOOL isStarted = CreateProcessW(image, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                              nullptr, &information);
        if (isStarted) {
            EXPECT_NE(information.dwProcessId, 0U);
            EXPECT_EQ(WaitForSingleObject(information.hProcess, INFINITE), DWORD{ WAIT_OBJECT_0 });
            EXPECT_TRUE(CloseHandle(information.hProcess));
            EXPECT_TRUE(CloseHandle(information.hThread));
        }
        return isStarted;
    }

    cardsong::test::ScratchDevice device;
};

TEST_F(StartedPrograms, AnInstalledProgramGetsItsArguments)
{
    Install("system/Windows/TAVO_SET_AUDIO.exe");
    EXPECT_TRUE(Start(TEXT("tavo_set_audio.exe"), TEXT("-s \"two words\"  last")));
    EXPECT_EQ(device.ReadFile("system/Windows/TAVO_SET_AUDIO.exe.out"), "-s\ntwo words\nlast\n");
}

TEST_F(StartedPrograms, TheUsersProgramIsStartedInThePlaceOfTheInstalledOne)
{
    Install("system/Windows/a.exe");
    Install("user/Windows/a.exe");
    EXPECT_TRUE(Start(TEXT("a.exe"), TEXT("x")));
    EXPECT_EQ(device.ReadFile("user/Windows/a.exe.out"), "x\n");
    EXPECT_EQ(device.ReadFile("system/Windows/a.exe.out"), "");
}

TEST_F(StartedPrograms, AProgramIsStartedByItsDevicePath)
{
    Install("card/My Programs/a.exe");
    EXPECT_TRUE(Start(TEXT("\\SDMMC\\My Programs\\a.exe"), TEXT("")));
    EXPECT_TRUE(std::filesystem::exists(device.CardDirectory() + "/My Programs/a.exe.out"));
    EXPECT_EQ(device.ReadFile("card/My Programs/a.exe.out"), "");
}

TEST_F(StartedPrograms, NobodyNeedsToAskForTheHandles)
{
    Install("user/Windows/a.exe");
    EXPECT_TRUE(CreateProcessW(TEXT("a.exe"), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr, nullptr));
    const std::string written = device.UserDirectory() + "/Windows/a.exe.out";
    for (int i = 0; i < 500 && !std::filesystem::exists(written); ++i)
        Sleep(10);
    EXPECT_TRUE(std::filesystem::exists(written));
}

TEST_F(StartedPrograms, AMissingProgramIsNotFound)
{
    for (const auto* const image : { TEXT("TAVO_SET_NOTHING.exe"), TEXT("\\Windows\\none.exe"), TEXT("\\none\\a.exe"),
                                     TEXT("\\Windows\\notepad.exe"), TEXT("C:a.exe") }) {
        EXPECT_FALSE(Start(image, TEXT("-s")));
        EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
    }
}

TEST_F(StartedPrograms, AFolderIsNoProgram)
{
    device.MakeFolder("user/Windows/a.exe");
    EXPECT_FALSE(Start(TEXT("a.exe"), TEXT("")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_FILE_NOT_FOUND });
}

TEST_F(StartedPrograms, AForeignProgramHasABadFormat)
{
    device.WriteFile("user/Windows/ce.exe", std::string("MZ\0\0", 4));
    std::filesystem::permissions(device.UserDirectory() + "/Windows/ce.exe", std::filesystem::perms::owner_all);
    EXPECT_FALSE(Start(TEXT("ce.exe"), TEXT("")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_BAD_EXE_FORMAT });
}

TEST_F(StartedPrograms, NoNameIsAnError)
{
    EXPECT_FALSE(Start(nullptr, TEXT("")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
    EXPECT_FALSE(Start(TEXT(""), TEXT("")));
    EXPECT_EQ(GetLastError(), DWORD{ ERROR_INVALID_PARAMETER });
}

} // namespace
