// In which order the main window is made, seen from the pictures that it asks for: here they come from the test, in
// place of the skin's.
#include "app/main_window.h"
#include "app/player_controls.h"
#include "gui/gif_bitmap.h"
#include "tests/app/player_fixture.h"

#include <algorithm>

using namespace cardsong::test;

namespace {

constexpr WORD kFirstFaces[] = { kCommandPrevious, kCommandStop, kCommandNext, kCommandShuffleOff, kCommandRepeatOff };

// A picture that was asked for, and how far the window had come.
struct Request {
    WString path;
    bool hasFirstFacesEnabled = false;
    bool isSliderEnabled = true;
    int playListCount = 0;
    LONG widthPx = 0;
};
std::vector<Request> g_requests;

class WindowCreation : public PlayerTest {
protected:
    WindowCreation() { g_requests.clear(); }

    static std::size_t IndexOf(const WCHAR* path)
    {
        const auto found = std::ranges::find(g_requests, WString(path), &Request::path);
        EXPECT_NE(found, g_requests.end());
        return static_cast<std::size_t>(found - g_requests.begin());
    }
};

} // namespace

HBITMAP LoadGifBitmap(LPCWSTR path)
{
    if (path == nullptr)
        return nullptr;
    const HWND window = FindWindowW(kMainWindowClass, nullptr);
    RECT place{};
    GetWindowRect(window, &place);
    g_requests.push_back(
        { path, std::ranges::all_of(kFirstFaces, [](WORD id) { return g_controls.buttons.IsEnabled(id); }),
          IsWindowEnabled(GetWindow(window, GW_CHILD)) != FALSE, PlayList.GetCount(), place.right - place.left });
    return nullptr;
}

TEST_F(WindowCreation, TheSliderComesFirstThenTheKeysThenTheBackground)
{
    Start();
    const auto slider = IndexOf(TEXT("\\Windows\\gui_musicplayer_progress_but_full.gif"));
    const auto softKey = IndexOf(TEXT("\\Windows\\gui_3but_normal.gif"));
    const auto button = IndexOf(TEXT("\\Windows\\gui_musicplayer_back_but_normal.gif"));
    const auto background = IndexOf(TEXT("\\Windows\\gui_musicplayer_background.gif"));
    EXPECT_EQ(slider, 0U);
    EXPECT_LT(slider, softKey);
    EXPECT_LT(softKey, button);
    EXPECT_LT(button, background);
    EXPECT_EQ(background, g_requests.size() - 1);
}

TEST_F(WindowCreation, TheWindowHasItsPlaceBeforeAnythingIsInIt)
{
    Start();
    ASSERT_FALSE(g_requests.empty());
    EXPECT_EQ(g_requests.front().widthPx, 320);
}

TEST_F(WindowCreation, TheButtonsAreDisabledWhenTheBackgroundIsThere)
{
    Start();
    const Request& background = g_requests.at(IndexOf(TEXT("\\Windows\\gui_musicplayer_background.gif")));
    EXPECT_TRUE(background.hasFirstFacesEnabled);
    for (const WORD id : kFirstFaces)
        EXPECT_FALSE(IsEnabled(id)) << id;
    for (const WORD id : { kCommandPlay, kCommandShuffleOn, kCommandRepeatAll, kCommandRepeatSingle })
        EXPECT_TRUE(IsEnabled(id)) << id;
}

TEST_F(WindowCreation, TheSliderIsDisabledFromTheStart)
{
    Start();
    EXPECT_FALSE(g_requests.at(IndexOf(TEXT("\\Windows\\gui_musicplayer_progress_but_full.gif"))).isSliderEnabled);
    EXPECT_FALSE(IsWindowEnabled(GetWindow(m_window, GW_CHILD)));
}

TEST_F(WindowCreation, ThePlayListIsReadLast)
{
    m_device.WriteFile("card/a.mp3", "x");
    std::string record;
    for (const char c : std::string("1$a.mp3$\\SDMMC$30"))
        record += { c, '\0' };
    m_device.WriteFile("user/Windows/play_list.txt", record + "\r\n");
    Start();
    EXPECT_EQ(g_requests.at(IndexOf(TEXT("\\Windows\\gui_musicplayer_background.gif"))).playListCount, 0);
    EXPECT_EQ(PlayList.GetCount(), 1);
}
