// The card's port is gone while the player runs.
#include "app/card_removal.h"

#include "app/main_window.h"
#include "common/trace_log.h"
#include "tests/app/alerts_user.h"
#include "tests/app/player_fixture.h"
#include "tests/platform/kernel/module_builder.h"

#include <algorithm>
#include <cstring>
#include <memory>

using namespace cardsong::test;

namespace {

constexpr DWORD kPort = DBT_DEVTYP_PORT;
constexpr DWORD kVolume = 2;

// A device's header as a sender lays it out, in a block of just that many bytes.
class Broadcast {
public:
    Broadcast(DWORD type, WStringView name, DWORD statedBytes, std::size_t realBytes)
        : m_bytes(std::make_unique<std::byte[]>(realBytes))
    {
        std::vector<std::byte> whole(12 + name.size() * sizeof(WCHAR));
        const DWORD header[] = { statedBytes, type, 0 };
        std::memcpy(whole.data(), header, sizeof header);
        std::memcpy(whole.data() + sizeof header, name.data(), name.size() * sizeof(WCHAR));
        std::memcpy(m_bytes.get(), whole.data(), std::min(whole.size(), realBytes));
    }
    // `name` with its end, and a size that tells the truth.
    Broadcast(DWORD type, WStringView name)
        : Broadcast(type, WString(name) + WCHAR(0), static_cast<DWORD>(12 + (name.size() + 1) * 2),
                    12 + (name.size() + 1) * 2)
    {
    }
    LPARAM Parameter() const { return reinterpret_cast<LPARAM>(m_bytes.get()); }

private:
    std::unique_ptr<std::byte[]> m_bytes;
};

class CardRemoval : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        ::testing::internal::CaptureStderr();
    }
    void TearDown() override
    {
        ::testing::internal::GetCapturedStderr();
        g_logChecked = 0;
        g_logEnabled = 0;
        PlayerTest::TearDown();
    }

    static void SwitchLogOn()
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.debugOutput = true;
        cardsong::kernel::InstallDeviceTree(tree);
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEXT("\\TAVO\\TAVO_BACKDOOR"), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr);
        const DWORD on = 1;
        RegSetValueExW(key, TEXT("Activate"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&on), 4);
        RegCloseKey(key);
        g_logChecked = 0;
    }
    // What reached the console since the last call.
    static std::string Told()
    {
        std::string told = ::testing::internal::GetCapturedStderr();
        ::testing::internal::CaptureStderr();
        return told;
    }

    void StartWithASong()
    {
        Start();
        AddSong("a.mp3", 40);
        AddSong("b.mp3", 40);
        Press(VK_RETURN);
        Advance(20);
    }
    // The window hears of it; the user does `answer` at the notice.
    void PullCard(std::function<void()> answer = AlertsUser::TapOk)
    {
        const AlertsUser user(m_clock, std::move(answer));
        const Broadcast card(kPort, TEXT("DSK3:"));
        SendMessageW(m_window, WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE, card.Parameter());
        Pump();
    }
    void Send(WPARAM event, const Broadcast& device)
    {
        SendMessageW(m_window, WM_DEVICECHANGE, event, device.Parameter());
        Pump();
    }
    void PutStrings(std::uint16_t language, const std::string& module)
    {
        UseLanguage(language);
        char name[32];
        std::snprintf(name, sizeof name, "TAVO_StringTable_%04x.dll", static_cast<unsigned>(language));
        m_device.WriteFile(std::string("user/Windows/") + name, module);
    }
};

constexpr char kFirstLine[] = "[AP][Music][FunName]WM_DEVICECHANGE!\r\n\n";
constexpr char kPortLine[] = "[AP][Music][FunName]DBT_DEVTYP_PORT!\r\n\n";
constexpr char kCardLine[] = "[AP][Music][FunName]DSK3!\r\n\n";

} // namespace

// ---- the card's own port ----

TEST_F(CardRemoval, TheSongStopsBeforeTheNoticeIsShown)
{
    StartWithASong();
    TakeSimulatedCalls();
    int playing = -1;
    std::vector<std::string> calls;
    PullCard([&] {
        playing = g_isPlaying;
        calls = TakeSimulatedCalls();
        AlertsUser::TapOk();
    });
    EXPECT_EQ(playing, 0);
    EXPECT_NE(std::find(calls.begin(), calls.end(), "Stop"), calls.end());
}

TEST_F(CardRemoval, TheNoticeSaysThatNoCardWasFoundAndItsEndIsThePlayersEnd)
{
    StartWithASong();
    Told();
    PullCard();
    EXPECT_EQ(Told(), "Storage card: No storage card was found.\nPlease insert the card and start again.\n");
    EXPECT_TRUE(m_hasQuit);
    EXPECT_FALSE(IsWindow(m_window));
    EXPECT_EQ(FindWindowW(kAlertClass, nullptr), nullptr);
}

TEST_F(CardRemoval, ThePlayerWaitsAsLongAsTheNoticeIsShown)
{
    StartWithASong();
    bool stayed = false;
    PullCard([&] {
        m_clock.Advance(4900); // 100 short of the notice's own end
        SendMessageW(FindWindowW(kAlertClass, nullptr), WM_NULL, 0, 0);
        stayed = IsWindow(m_window) != FALSE && FindWindowW(kAlertClass, nullptr) != nullptr;
        AlertsUser::TapOk();
    });
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(CardRemoval, ANoticeThatNobodyAnswersClosesAndThePlayerExits)
{
    StartWithASong();
    PullCard([] {});
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(CardRemoval, TheExitKeyAtTheNoticeEndsBoth)
{
    StartWithASong();
    bool isGone = false;
    PullCard([&isGone] {
        cardsong::user::PressExitKey();
        isGone = AlertsUser::IsAlertGoneWhileTimeStands();
    });
    EXPECT_TRUE(isGone);
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(CardRemoval, WithAPausedSongThePlayerExitsToo)
{
    StartWithASong();
    Press(VK_RETURN);
    ASSERT_EQ(g_songLoaded, 1);
    PullCard();
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(CardRemoval, WithoutASongThereIsNothingToStopAndThePlayerExits)
{
    Start();
    TakeSimulatedCalls();
    std::vector<std::string> calls{ "not asked" };
    PullCard([&] {
        calls = TakeSimulatedCalls();
        AlertsUser::TapOk();
    });
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(m_hasQuit);
}

TEST_F(CardRemoval, EveryEntryIsInTheListThatTheExitSaves)
{
    StartWithASong();
    std::filesystem::rename(m_device.CardDirectory(), m_device.CardDirectory() + ".away");
    PullCard();
    const std::string saved = m_device.ReadFile("user/Windows/play_list.txt");
    std::string text;
    std::copy_if(saved.begin(), saved.end(), std::back_inserter(text), [](char byte) { return byte != 0; });
    EXPECT_EQ(text, "1$a.mp3$\\SDMMC$40\r\n2$b.mp3$\\SDMMC$0\r\n");
}

TEST_F(CardRemoval, ABroadcastFromAnotherThreadReachesTheWindow)
{
    StartWithASong();
    const AlertsUser user(m_clock, AlertsUser::TapOk);
    LRESULT answer = 0;
    std::thread system([&] {
        const Broadcast card(kPort, TEXT("DSK3:"));
        answer = SendMessageW(HWND_BROADCAST, WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE, card.Parameter());
    });
    while (!m_hasQuit) {
        Pump();
        std::this_thread::yield();
    }
    system.join();
    EXPECT_EQ(answer, TRUE);
}

// ---- the log ----

TEST_F(CardRemoval, TheCardsPortIsLoggedInThreeLinesBeforeTheNotice)
{
    StartWithASong();
    SwitchLogOn();
    Told();
    PullCard();
    EXPECT_EQ(Told().rfind(std::string(kFirstLine) + kPortLine + kCardLine + "Storage card: ", 0), 0U);
}

TEST_F(CardRemoval, WhatIsNotTheCardIsLoggedAsFarAsItGoes)
{
    struct Case {
        const char* name;
        Broadcast device;
        std::string log;
    };
    const WString endless(40, 'D');
    const Case cases[] = {
        { "another port", { kPort, TEXT("SDH1:") }, std::string(kFirstLine) + kPortLine },
        { "a port without a name", { kPort, TEXT("") }, std::string(kFirstLine) + kPortLine },
        { "in small letters", { kPort, TEXT("dsk3:") }, std::string(kFirstLine) + kPortLine },
        { "a name that only begins so", { kPort, TEXT("DSK3:\\") }, std::string(kFirstLine) + kPortLine },
        { "a shorter name", { kPort, TEXT("DSK3") }, std::string(kFirstLine) + kPortLine },
        { "a volume of that name", { kVolume, TEXT("DSK3:") }, kFirstLine },
        { "no size", { kPort, TEXT("DSK3:"), 0, 4 }, kFirstLine },
        { "a size that ends in the header", { kPort, TEXT("DSK3:"), 11, 11 }, kFirstLine },
        { "a header alone", { kPort, TEXT("DSK3:"), 12, 12 }, std::string(kFirstLine) + kPortLine },
        { "half a letter of a name", { kPort, TEXT("DSK3:"), 13, 13 }, std::string(kFirstLine) + kPortLine },
        { "a size before the name's end", { kPort, TEXT("DSK3:"), 22, 22 }, std::string(kFirstLine) + kPortLine },
        { "half of the name's end", { kPort, TEXT("DSK3:"), 23, 23 }, std::string(kFirstLine) + kPortLine },
        { "a name without end", { kPort, endless, 92, 92 }, std::string(kFirstLine) + kPortLine },
    };
    StartWithASong();
    SwitchLogOn();
    for (const Case& each : cases) {
        Told();
        Send(DBT_DEVICEREMOVECOMPLETE, each.device);
        EXPECT_EQ(Told(), each.log) << each.name;
        EXPECT_EQ(g_isPlaying, 1) << each.name;
    }
}

TEST_F(CardRemoval, ARemovalWithoutAHeaderIsLoggedAndNoMore)
{
    StartWithASong();
    SwitchLogOn();
    Told();
    SendMessageW(m_window, WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE, 0);
    Pump();
    EXPECT_EQ(Told(), kFirstLine);
    EXPECT_EQ(g_isPlaying, 1);
}

TEST_F(CardRemoval, NoOtherChangeOfADeviceMeansAnything)
{
    StartWithASong();
    SwitchLogOn();
    Told();
    const Broadcast card(kPort, TEXT("DSK3:"));
    for (const WPARAM event : { DBT_DEVICEARRIVAL, WPARAM{ 0x0007 }, WPARAM{ 0x8003 }, WPARAM{ 0x18004 }, WPARAM{ 0 } })
        Send(event, card);
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(g_isPlaying, 1);
}

// ---- the texts of the notice ----

TEST_F(CardRemoval, OfEachTextOfTheNotice99UnitsAreShown)
{
    std::vector<std::u16string> titles(16);
    std::vector<std::u16string> messages(16);
    titles[17001 % 16] = std::u16string(120, u'T');
    messages[1039 % 16] = std::u16string(99, u'm') + u"x";
    PutStrings(0x00AB, ModuleBuilder(ModuleKind::Pe32)
                           .AddStrings(17001 / 16 * 16, 0x0409, titles)
                           .AddStrings(1039 / 16 * 16, 0x0409, messages)
                           .Build());
    Start();
    Told();
    PullCard();
    EXPECT_EQ(Told(), std::string(99, 'T') + ": " + std::string(99, 'm') + "\n");
}

TEST_F(CardRemoval, WithoutAStringModuleTheNoticeIsEmptyAndStillAnswered)
{
    UseLanguage(0x0412);
    Start();
    Told();
    PullCard();
    EXPECT_EQ(Told(), ": \n");
    EXPECT_TRUE(m_hasQuit);
}
