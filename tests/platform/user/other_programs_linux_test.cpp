// Windows and messages of the device's other programs, which a fake stands for.
#include "platform/linux/user/other_programs.h"

#include "tests/platform/user/pump.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

using cardsong::user::CrossingMessage;
using cardsong::user::InstallOtherPrograms;
using cardsong::user::PostFromOtherProgram;

class FakePrograms final : public cardsong::user::OtherPrograms {
public:
    bool HaveWindow(std::u16string_view className) override { return hasPlayer && className == u"otherplayer"; }
    void Send(CrossingMessage message) override { sent.push_back(std::move(message)); }

    bool hasPlayer = true;
    std::vector<CrossingMessage> sent;
};

class OtherPrograms : public ::testing::Test {
protected:
    void SetUp() override { InstallOtherPrograms(m_programs); }
    void TearDown() override { InstallOtherPrograms(nullptr); }

    const std::shared_ptr<FakePrograms> m_programs = std::make_shared<FakePrograms>();
    const UINT m_number = RegisterWindowMessageW(TEXT("Cardsong Test Crossing"));
};

TEST_F(OtherPrograms, AWindowOfAnotherProgramIsFoundByItsClassInAnyLetters)
{
    const HWND window = FindWindowW(TEXT("OtherPlayer"), nullptr);
    EXPECT_NE(window, nullptr);
    EXPECT_EQ(FindWindowW(TEXT("OTHERPLAYER"), nullptr), window);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(OtherPrograms, AWindowOfThisProgramIsFoundBeforeOneOfAnother)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = TEXT("OtherPlayer");
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    EXPECT_TRUE(IsWindow(FindWindowW(TEXT("OtherPlayer"), nullptr))); // the class alone is no window of ours
    const HWND own =
        CreateWindowExW(0, TEXT("OtherPlayer"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(FindWindowW(TEXT("OtherPlayer"), nullptr), own);
    DestroyWindow(own);
    EXPECT_NE(FindWindowW(TEXT("OtherPlayer"), nullptr), own);
    UnregisterClassW(TEXT("OtherPlayer"), nullptr);
}

TEST_F(OtherPrograms, WindowsOfOthersAreNotFoundByTextOrWithoutAClass)
{
    EXPECT_EQ(FindWindowW(TEXT("OtherPlayer"), TEXT("")), nullptr);
    EXPECT_EQ(FindWindowW(nullptr, TEXT("OtherPlayer")), nullptr);
    EXPECT_EQ(FindWindowW(TEXT("Unknown"), nullptr), nullptr);
    EXPECT_EQ(FindWindowW(reinterpret_cast<LPCWSTR>(0xC123), nullptr), nullptr);
}

TEST_F(OtherPrograms, AWindowIsGoneWithItsProgram)
{
    const HWND window = FindWindowW(TEXT("OtherPlayer"), nullptr);
    m_programs->hasPlayer = false;
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(FindWindowW(TEXT("OtherPlayer"), nullptr), nullptr);
    SetLastError(0);
    EXPECT_FALSE(PostMessageW(window, m_number, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_TRUE(m_programs->sent.empty());
}

TEST_F(OtherPrograms, ACommandPostedToAWindowOfAnotherProgramCrossesOver)
{
    EXPECT_TRUE(PostMessageW(FindWindowW(TEXT("OtherPlayer"), nullptr), WM_COMMAND, 258, 0));
    EXPECT_EQ(m_programs->sent, (std::vector<CrossingMessage>{ { u"otherplayer", u"", 258, 0 } }));
}

TEST_F(OtherPrograms, ARegisteredMessageCrossesOverByItsName)
{
    EXPECT_TRUE(PostMessageW(FindWindowW(TEXT("OtherPlayer"), nullptr), m_number, 7, -8));
    EXPECT_EQ(m_programs->sent, (std::vector<CrossingMessage>{ { u"otherplayer", u"Cardsong Test Crossing", 7, -8 } }));
}

TEST_F(OtherPrograms, OtherMessagesAndPointersDoNotCrossOver)
{
    const HWND window = FindWindowW(TEXT("OtherPlayer"), nullptr);
    for (const UINT message : { UINT{ WM_DRAWITEM }, UINT{ WM_USER + 20 }, UINT{ WM_CLOSE }, UINT{ 0xFFFF } }) {
        SetLastError(0);
        EXPECT_FALSE(PostMessageW(window, message, 0, 0)) << message;
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED) << message;
    }
    EXPECT_FALSE(PostMessageW(window, WM_COMMAND, 258, 1));
    EXPECT_EQ(SendMessageW(window, WM_COMMAND, 258, 0), 0); // nobody waits for another program
    EXPECT_TRUE(m_programs->sent.empty());
}

TEST_F(OtherPrograms, ABroadcastReachesOwnWindowsOnceAndGoesOutOnce)
{
    TestWindow window;
    PumpMessages();
    EXPECT_TRUE(PostMessageW(HWND_BROADCAST, m_number, 1, 2));
    PumpMessages();
    EXPECT_EQ(window.Count(m_number), 1);
    const CrossingMessage expected{ u"", u"Cardsong Test Crossing", 1, 2 };
    EXPECT_EQ(m_programs->sent, std::vector<CrossingMessage>{ expected });
    m_programs->sent.clear();
    EXPECT_TRUE(SendMessageW(HWND_BROADCAST, m_number, 1, 2));
    EXPECT_EQ(window.Count(m_number), 2);
    EXPECT_EQ(m_programs->sent, std::vector<CrossingMessage>{ expected });
}

TEST_F(OtherPrograms, ABroadcastOfAnyOtherMessageStaysHere)
{
    TestWindow window;
    PumpMessages();
    PostMessageW(HWND_BROADCAST, WM_USER + 1, 0, 0);
    PostMessageW(HWND_BROADCAST, WM_COMMAND, 258, 0);
    PumpMessages();
    EXPECT_EQ(window.Count(WM_USER + 1), 1);
    EXPECT_TRUE(m_programs->sent.empty());
}

TEST_F(OtherPrograms, WhatAnotherProgramBroadcastsReachesEveryTopLevelWindowAndGoesNoFurther)
{
    TestWindow first;
    TestWindow second;
    PumpMessages();
    PostFromOtherProgram({ u"", u"CARDSONG test CROSSING", 3, 4 });
    PumpMessages();
    for (const TestWindow* window : { &first, &second }) {
        ASSERT_EQ(window->Count(m_number), 1);
        EXPECT_EQ(window->Last(m_number)->wParam, 3U);
        EXPECT_EQ(window->Last(m_number)->lParam, 4);
    }
    EXPECT_TRUE(m_programs->sent.empty());
}

TEST_F(OtherPrograms, WhatIsForOneWindowReachesTheTopmostOfItsClass)
{
    TestWindow first;
    TestWindow second;
    PumpMessages();
    PostFromOtherProgram({ first.ClassName(), u"", 258, 0 });
    PumpMessages();
    EXPECT_EQ(first.Count(WM_COMMAND), 1);
    EXPECT_EQ(second.Count(WM_COMMAND), 0);
}

TEST_F(OtherPrograms, NamesAndWindowsThatNobodyKnowsHereAreIgnored)
{
    TestWindow window;
    PumpMessages();
    window.Forget();
    PostFromOtherProgram({ u"", u"Cardsong Test Never Registered", 0, 0 });
    PostFromOtherProgram({ u"NoSuchClass", u"Cardsong Test Crossing", 0, 0 });
    PostFromOtherProgram({ u"", u"", 258, 0 });                // a command for all
    PostFromOtherProgram({ window.ClassName(), u"", 258, 1 }); // a pointer
    PumpMessages();
    EXPECT_TRUE(window.Seen().empty());
}

TEST_F(OtherPrograms, AProgramThatDoesNotListenFindsOnlySomeOfManyMessages)
{
    TestWindow window;
    PumpMessages();
    for (int i = 0; i < 1000; ++i)
        PostFromOtherProgram({ u"", u"Cardsong Test Crossing", 0, 0 });
    EXPECT_TRUE(PostMessageW(window, WM_USER + 20, 0, 0)); // its own have room
    PumpMessages();
    EXPECT_EQ(window.Count(m_number), 64);
    EXPECT_EQ(window.Count(WM_USER + 20), 1);
}

TEST_F(OtherPrograms, OthersPostFromThreadsWithoutAQueue)
{
    TestWindow window;
    PumpMessages();
    std::thread([] { PostFromOtherProgram({ u"", u"Cardsong Test Crossing", 0, 0 }); }).join();
    PumpMessages();
    EXPECT_EQ(window.Count(m_number), 1);
}

} // namespace
