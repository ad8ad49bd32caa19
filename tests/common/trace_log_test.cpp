#include "common/trace_log.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

using namespace cardsong::test;

namespace {

constexpr LPCWSTR kSwitchKey = TEXT("\\TAVO\\TAVO_BACKDOOR");

// A process that has not logged yet, on a fresh registry, whose debug output goes to the error stream.
class TraceLogTest : public testing::Test {
protected:
    TraceLogTest()
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.debugOutput = true;
        cardsong::kernel::InstallDeviceTree(tree);
        StartAnew();
    }
    ~TraceLogTest() override { StartAnew(); }

    static void StartAnew()
    {
        g_logChecked = 0;
        g_logEnabled = 0;
    }
    static void SetSwitch(DWORD value)
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSwitchKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
                  LSTATUS{ 0 });
        EXPECT_EQ(RegSetValueExW(key, TEXT("Activate"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), 4),
                  LSTATUS{ 0 });
        RegCloseKey(key);
    }
    // The value, or -1 when there is none of type DWORD.
    static long long ReadSwitch()
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSwitchKey, 0, KEY_READ, &key) != LSTATUS{ 0 })
            return -1;
        DWORD type = 0;
        DWORD value = 0;
        DWORD size = sizeof(value);
        const LSTATUS result =
            RegQueryValueExW(key, TEXT("Activate"), nullptr, &type, reinterpret_cast<LPBYTE>(&value), &size);
        RegCloseKey(key);
        return result == LSTATUS{ 0 } && type == REG_DWORD && size == 4 ? value : -1LL;
    }
    template <typename... Arguments>
    static std::string Logged(DWORD moduleId, LPCWSTR format, Arguments... arguments)
    {
        testing::internal::CaptureStderr();
        TraceLog(moduleId, format, arguments...);
        return testing::internal::GetCapturedStderr();
    }

    ScratchDevice m_device;
};

} // namespace

TEST_F(TraceLogTest, WithoutTheValueTheFirstCallCreatesItWithZeroAndPrintsNothing)
{
    EXPECT_EQ(ReadSwitch(), -1);
    EXPECT_EQ(Logged(33, TEXT("hello")), "");
    EXPECT_EQ(ReadSwitch(), 0);
    EXPECT_EQ(g_logChecked, 1);
    EXPECT_EQ(g_logEnabled, 0);
}

TEST_F(TraceLogTest, SwitchedOnItPrintsTheModulesNameAndALineBreak)
{
    SetSwitch(1);
    EXPECT_EQ(Logged(33, TEXT("position %d of %s"), 7, TEXT("song")), "[AP][Music][FunName]position 7 of song\n");
    EXPECT_EQ(g_logEnabled, 1);
}

TEST_F(TraceLogTest, AnyValueButZeroSwitchesOn)
{
    SetSwitch(0x80000000);
    EXPECT_EQ(IsTraceLogSwitchedOn(), 1);
    SetSwitch(0);
    EXPECT_EQ(IsTraceLogSwitchedOn(), 0);
    SetSwitch(2);
    EXPECT_EQ(IsTraceLogSwitchedOn(), 1);
    EXPECT_EQ(ReadSwitch(), 2);
}

TEST_F(TraceLogTest, AValueLongerThanANumberLeavesTheLogOffAndStays)
{
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSwitchKey, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key, nullptr),
        LSTATUS{ 0 });
    const BYTE bytes[] = { 1, 0, 0, 0, 1 };
    EXPECT_EQ(RegSetValueExW(key, TEXT("Activate"), 0, REG_BINARY, bytes, sizeof bytes), LSTATUS{ 0 });
    EXPECT_EQ(Logged(33, TEXT("hello")), "");
    DWORD sizeBytes = 0;
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Activate"), nullptr, nullptr, nullptr, &sizeBytes), LSTATUS{ 0 });
    EXPECT_EQ(sizeBytes, 5U);
    RegCloseKey(key);
}

TEST_F(TraceLogTest, AMessageOf300UnitsIsCutTo255)
{
    SetSwitch(1);
    const WString message(300, TEXT('x'));
    EXPECT_EQ(Logged(14, TEXT("%s"), message.c_str()), "[AP Log][14]" + std::string(255, 'x'));
}

TEST_F(TraceLogTest, AMessageOf255UnitsIsWhole)
{
    SetSwitch(1);
    const WString message = WString(254, TEXT('x')) + TEXT("y");
    EXPECT_EQ(Logged(14, TEXT("%s"), message.c_str()), "[AP Log][14]" + std::string(254, 'x') + "y");
    EXPECT_EQ(Logged(14, TEXT("%sz"), message.c_str()), "[AP Log][14]" + std::string(254, 'x') + "y");
}

TEST_F(TraceLogTest, AModuleWithoutANameIsPrintedByItsNumberAndWithoutALineBreak)
{
    SetSwitch(1);
    EXPECT_EQ(Logged(14, TEXT("a")), "[AP Log][14]a");
    EXPECT_EQ(Logged(31, TEXT("a")), "[AP Log][31]a");
    EXPECT_EQ(Logged(38, TEXT("a")), "[AP Log][38]a");
    EXPECT_EQ(Logged(0, TEXT("a")), "[AP Log][0]a");
}

TEST_F(TraceLogTest, NineteenModulesHaveAName)
{
    const std::map<DWORD, std::string> names = {
        { 1, "Shell" },        { 2, "Menu" },     { 3, "Settings" }, { 4, "Navigation" }, { 5, "Map" },
        { 6, "Position" },     { 7, "Phone" },    { 8, "Contacts" }, { 9, "Bluetooth" },  { 10, "Radio" },
        { 11, "Transmitter" }, { 12, "Storage" }, { 13, "Update" },  { 32, "Video" },     { 33, "Music" },
        { 34, "Photo" },       { 35, "Audio" },   { 36, "Text" },    { 37, "Power" },
    };
    SetSwitch(1);
    for (DWORD id = 0; id < 64; ++id) {
        const auto named = names.find(id);
        const std::string expected =
            named != names.end() ? "[AP][" + named->second + "][FunName]a\n" : "[AP Log][" + std::to_string(id) + "]a";
        EXPECT_EQ(Logged(id, TEXT("a")), expected);
    }
}

TEST_F(TraceLogTest, TheSwitchIsReadOnceAProcess)
{
    SetSwitch(1);
    Logged(33, TEXT("first"));
    SetSwitch(0);
    EXPECT_EQ(Logged(33, TEXT("second")), "[AP][Music][FunName]second\n");
    StartAnew();
    EXPECT_EQ(Logged(33, TEXT("third")), "");
    SetSwitch(1);
    EXPECT_EQ(Logged(33, TEXT("fourth")), "");
}
