#include "platform/linux/ce/kernel.h"
#include "platform/linux/kernel/registry_file.h"
#include "platform/linux/kernel/registry_text.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

class RegistryFile : public ::testing::Test {
protected:
    static RegistryValue Number(DWORD number)
    {
        RegistryValue value{ REG_DWORD, std::vector<BYTE>(4) };
        std::memcpy(value.data.data(), &number, 4);
        return value;
    }
    static DWORD NumberIn(std::u16string_view key, std::u16string_view name)
    {
        const auto value = ReadRegistryValue(key, name);
        DWORD number = 0xBAD;
        if (value && value->data.size() == 4)
            std::memcpy(&number, value->data.data(), 4);
        return number;
    }

    test::ScratchDevice device;
};

TEST_F(RegistryFile, IsReadByPeople)
{
    EXPECT_TRUE(WriteRegistryValue(u"TAVO\\AudioManagement", u"Priority", Number(7)));
    const auto text = RegistryValueFromText("text:RGB(0,0,0)");
    EXPECT_TRUE(WriteRegistryValue(u"SOFTWARE\\Microsoft\\LyricsSetting", u"Play Color", *text));
    EXPECT_TRUE(WriteRegistryValue(u"TAVO\\AudioManagement", u"Raw", { REG_BINARY, { 1, 0xAB } }));
    EXPECT_EQ(device.ReadFile("user/registry.ini"), "[HKEY_LOCAL_MACHINE\\TAVO\\AudioManagement]\n"
                                                    "Priority=dword:00000007\n"
                                                    "Raw=hex(3):01,ab\n"
                                                    "\n"
                                                    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\LyricsSetting]\n"
                                                    "Play Color=text:RGB(0,0,0)\n");
}

TEST_F(RegistryFile, AnEmptyKeyStaysInTheFile)
{
    EXPECT_TRUE(CreateRegistryKey(u"TAVO\\Language"));
    EXPECT_EQ(device.ReadFile("user/registry.ini"), "[HKEY_LOCAL_MACHINE\\TAVO\\Language]\n");
    EXPECT_TRUE(RegistryKeyExists(u"tavo\\LANGUAGE"));
    EXPECT_TRUE(RegistryKeyExists(u"TAVO"));
    EXPECT_FALSE(RegistryKeyExists(u"TAV"));
}

TEST_F(RegistryFile, WhatAPersonWritesIsRead)
{
    device.WriteFile("user/registry.ini",
                     "# a comment\n[hkey_local_machine\\tavo\\audiomanagement]\npriority=dword:3\n");
    EXPECT_EQ(NumberIn(u"TAVO\\AudioManagement", u"Priority"), 3U);
    EXPECT_TRUE(WriteRegistryValue(u"TAVO\\AudioManagement", u"Priority", Number(4)));
    EXPECT_EQ(device.ReadFile("user/registry.ini"),
              "# a comment\n[hkey_local_machine\\tavo\\audiomanagement]\npriority=dword:00000004\n");
}

TEST_F(RegistryFile, ASpoiltValueIsMissing)
{
    device.WriteFile("user/registry.ini",
                     "[HKEY_LOCAL_MACHINE\\K]\na=dword:\nb=dword:123456789\nc=hex(3):1,zz\nd=plain\n"
                     "e=hex(:01\nf=dword:1\n");
    for (const auto* const name : { u"a", u"b", u"c", u"d", u"e" })
        EXPECT_FALSE(ReadRegistryValue(u"K", name).has_value());
    EXPECT_EQ(NumberIn(u"K", u"f"), 1U);
}

TEST_F(RegistryFile, ASpoiltValueIsLeftOutOfTheList)
{
    device.WriteFile("user/registry.ini", "[HKEY_LOCAL_MACHINE\\K]\na=dword:1\nb=plain\nc=dword:2\n");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, KEY_READ, &key), static_cast<LSTATUS>(ERROR_SUCCESS));
    WCHAR name[8];
    DWORD units = 8;
    EXPECT_EQ(RegEnumValueW(key, 1, name, &units, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_SUCCESS));
    EXPECT_EQ(WString(name), u"c");
    units = 8;
    EXPECT_EQ(RegEnumValueW(key, 2, name, &units, nullptr, nullptr, nullptr, nullptr),
              static_cast<LSTATUS>(ERROR_NO_MORE_ITEMS));
    RegCloseKey(key);
}

// Elsewhere this is the end of the program.
TEST_F(RegistryFile, AListOfKeysWithoutRoomIsRefused)
{
    EXPECT_TRUE(CreateRegistryKey(u"K"));
    WCHAR name[8];
    DWORD units = 8;
    constexpr auto kInvalid = static_cast<LSTATUS>(ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumKeyExW(HKEY_LOCAL_MACHINE, 0, nullptr, &units, nullptr, nullptr, nullptr, nullptr), kInvalid);
    EXPECT_EQ(RegEnumKeyExW(HKEY_LOCAL_MACHINE, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr), kInvalid);
}

TEST_F(RegistryFile, AForeignFileIsAnEmptyRegistryAndIsReplaced)
{
    device.WriteFile("user/registry.ini", std::string("\0\xFF\x01[[[=\n", 9));
    EXPECT_FALSE(RegistryKeyExists(u"K"));
    EXPECT_TRUE(WriteRegistryValue(u"K", u"v", Number(1)));
    EXPECT_EQ(device.ReadFile("user/registry.ini"), "[HKEY_LOCAL_MACHINE\\K]\nv=dword:00000001\n");
}

TEST_F(RegistryFile, WhatAnotherProcessWritesIsSeen)
{
    EXPECT_TRUE(WriteRegistryValue(u"K", u"v", Number(1)));
    EXPECT_EQ(NumberIn(u"K", u"v"), 1U);
    const pid_t other = fork();
    if (other == 0)
        _exit(WriteRegistryValue(u"K", u"v", Number(2)) ? 0 : 1);
    int status = -1;
    ASSERT_EQ(waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(NumberIn(u"K", u"v"), 2U);
}

TEST_F(RegistryFile, TwoProcessesAndTwoThreadsLoseNothing)
{
    constexpr DWORD kValues = 25;
    const auto writeAll = [](const char16_t* prefix) {
        bool isWritten = true;
        for (DWORD i = 0; i < kValues; ++i)
            isWritten =
                WriteRegistryValue(u"K", prefix + std::u16string(1, static_cast<char16_t>(u'a' + i)), Number(i)) &&
                isWritten;
        return isWritten;
    };
    const pid_t other = fork();
    if (other == 0)
        _exit(writeAll(u"child ") ? 0 : 1);
    std::thread second([&] { EXPECT_TRUE(writeAll(u"second ")); });
    EXPECT_TRUE(writeAll(u"first "));
    second.join();
    int status = -1;
    ASSERT_EQ(waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    for (const std::u16string prefix : { u"child ", u"first ", u"second " }) {
        for (DWORD i = 0; i < kValues; ++i)
            EXPECT_EQ(NumberIn(u"K", prefix + std::u16string(1, static_cast<char16_t>(u'a' + i))), i);
    }
}

TEST_F(RegistryFile, ALeadingSeparatorIsIgnoredAsOnTheDevice)
{
    HKEY key = nullptr;
    EXPECT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"\\TAVO\\TAVO_BACKDOOR", 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
        static_cast<LSTATUS>(ERROR_SUCCESS));
    // A key opened for writing is read too: the device does not tell the rights apart.
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExW(key, u"Activate", nullptr, nullptr, nullptr, &size),
              static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(RegCloseKey(key), static_cast<LSTATUS>(ERROR_SUCCESS));
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"TAVO\\TAVO_BACKDOOR", 0, KEY_READ, &key),
              static_cast<LSTATUS>(ERROR_SUCCESS));
    EXPECT_EQ(RegCloseKey(key), static_cast<LSTATUS>(ERROR_SUCCESS));
}

TEST_F(RegistryFile, AnUnchangedValueIsNotWrittenAgain)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, nullptr, 0, 0, nullptr, &key, nullptr), 0);
    const DWORD number = 5;
    const auto* const data = reinterpret_cast<const BYTE*>(&number);
    ASSERT_EQ(RegSetValueExW(key, u"v", 0, REG_DWORD, data, 4), 0);
    const auto path = device.UserDirectory() + "/registry.ini";
    struct stat before = {};
    struct stat after = {};
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    EXPECT_EQ(RegSetValueExW(key, u"v", 0, REG_DWORD, data, 4), 0);
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(RegCloseKey(key), 0);
}

TEST_F(RegistryFile, AFolderThatCannotBeWrittenRefusesNewKeys)
{
    DeviceTree tree = CurrentDeviceTree();
    tree.userDirectory = "/proc/cardsong";
    InstallDeviceTree(tree);
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, nullptr, 0, 0, nullptr, &key, nullptr),
              static_cast<LSTATUS>(ERROR_ACCESS_DENIED));
}

TEST(RegistryText, EveryValueSurvivesTheRoundTrip)
{
    const RegistryValue kValues[] = {
        { REG_DWORD, { 1, 2, 3, 0xFF } },
        { REG_DWORD, { 1, 2 } },
        { REG_SZ, {} },
        { REG_SZ, { 0, 0 } },
        { REG_SZ, { 'a', 0, 0, 0 } },
        { REG_SZ, { 'a', 0 } },
        { REG_SZ, { 'a', 0, 0 } },
        { REG_SZ, { 0, 0, 'a', 0, 0, 0 } },
        { REG_SZ, { 0, 0xD8, 0, 0 } },
        { REG_BINARY, { 0 } },
        { 0xFFFFFFFF, { 9 } },
    };
    for (const auto& value : kValues) {
        const auto back = RegistryValueFromText(RegistryValueToText(value));
        ASSERT_TRUE(back.has_value()) << RegistryValueToText(value);
        EXPECT_EQ(back->type, value.type) << RegistryValueToText(value);
        EXPECT_EQ(back->data, value.data) << RegistryValueToText(value);
    }
}

} // namespace
} // namespace cardsong::kernel
