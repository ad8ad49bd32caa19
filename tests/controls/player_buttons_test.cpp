#include "controls/player_buttons.h"

#include "common/rect.h"
#include "tests/gui/skin_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace cardsong::test;

namespace {

struct ExpectedButton {
    UINT id;
    int x;
    int widthPx;
    std::string normal, pressed, disabled; // without folder, prefix and ending
};

const std::vector<ExpectedButton> kMusic = {
    { 256, 0, 66, "back_but_normal", "back_but_down", "back_but_disable" },
    { 258, 113, 47, "play_but_normal", "play_but_down", "play_but_disable" },
    { 259, 113, 47, "pause_but_normal", "pause_but_down", "pause_but_disable" },
    { 260, 66, 47, "stop_but_normal", "stop_but_down", "stop_but_disable" },
    { 262, 160, 47, "next_but_normal", "next_but_down", "next_but_disable" },
    { 263, 254, 66, "shuffle_but_normal", "shuffle_but_down", "shuffle_but_disable" },
    { 264, 254, 66, "shuffle_but_on", "shuffle_but_down", "shuffle_but_disable" },
    { 265, 207, 47, "repeat_but_normal", "repeat_but_down", "repeat_but_disable" },
    { 266, 207, 47, "repeat_but_on", "repeat_but_down", "repeat_but_disable" },
    { 267, 207, 47, "repeat_single_but_on", "repeat_single_but_down", "repeat_but_disable" },
};

const std::vector<ExpectedButton> kVideo = {
    { 256, 0, 66, "back_but_normal", "back_but_down", "back_but_normal" },
    { 257, 0, 0, "reverse_but_normal", "reverse_but_down", "reverse_but_normal" },
    { 258, 113, 47, "play_but_normal", "play_but_down", "play_but_normal" },
    { 259, 113, 47, "pause_but_normal", "pause_but_down", "pause_but_normal" },
    { 260, 66, 47, "stop_but_normal", "stop_but_down", "stop_but_normal" },
    { 261, 0, 0, "forward_but_normal", "forward_but_down", "forward_but_normal" },
    { 262, 160, 47, "next_but_normal", "next_but_down", "next_but_normal" },
};

class PlayerButtons : public testing::Test {
protected:
    ~PlayerButtons() override { m_set.Destroy(); }

    std::uint16_t FaceOf(UINT id, UINT action, UINT state)
    {
        const Picture picture;
        m_set.DrawItem(DrawRequest(id, action, state, picture.Context(), { 0, 0, 66, 49 }));
        return picture.At(1, 1);
    }
    void CreateAndCompare(PlayerButtonKind kind, const std::string& prefix, const std::vector<ExpectedButton>& expected)
    {
        for (const ExpectedButton& button : expected) {
            for (const std::string& name : { button.normal, button.pressed, button.disabled })
                m_skin.Add(prefix + name);
        }
        CreatePlayerButtons(m_set, m_parent.Get(), kind);
        for (const ExpectedButton& button : expected) {
            SCOPED_TRACE(button.id);
            const HWND window = GetDlgItem(m_parent.Get(), static_cast<int>(button.id));
            ASSERT_NE(window, nullptr);
            RECT rect = {};
            GetWindowRect(window, &rect);
            EXPECT_EQ(rect.left, button.x);
            EXPECT_EQ(rect.top, button.widthPx != 0 ? 159 : 0);
            EXPECT_EQ(WidthOf(rect), button.widthPx);
            EXPECT_EQ(HeightOf(rect), button.widthPx != 0 ? 49 : 0);
            EXPECT_EQ(FaceOf(button.id, ODA_DRAWENTIRE, 0), m_skin.Add(prefix + button.normal));
            EXPECT_EQ(FaceOf(button.id, ODA_SELECT, ODS_SELECTED), m_skin.Add(prefix + button.pressed));
            EXPECT_EQ(FaceOf(button.id, ODA_DRAWENTIRE, ODS_DISABLED), m_skin.Add(prefix + button.disabled));
        }
    }
    int ChildCount() const
    {
        int count = 0;
        for (HWND child = GetWindow(m_parent.Get(), GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
            ++count;
        return count;
    }

    SkinDevice m_skin;
    ParentWindow m_parent;
    PlayerButtonSet m_set;
};

} // namespace

TEST_F(PlayerButtons, TheMusicSetHasTenButtonsInTwelveSlots)
{
    CreateAndCompare(PlayerButtonKind::Music, "gui_musicplayer_", kMusic);
    EXPECT_EQ(m_set.Kind(), PlayerButtonKind::Music);
    EXPECT_EQ(m_set.Buttons().size(), 12U);
    EXPECT_EQ(ChildCount(), 10);
    EXPECT_EQ(m_set.Find(257), nullptr);
    EXPECT_EQ(m_set.Find(261), nullptr);
}

TEST_F(PlayerButtons, TheVideoSetHasSevenButtons)
{
    CreateAndCompare(PlayerButtonKind::Video, "gui_videoplayer_", kVideo);
    EXPECT_EQ(m_set.Kind(), PlayerButtonKind::Video);
    EXPECT_EQ(m_set.Buttons().size(), 7U);
    EXPECT_EQ(ChildCount(), 7);
    EXPECT_EQ(m_set.Find(263), nullptr);
}

TEST_F(PlayerButtons, NoButtonHasACaptionAndTheFocusGoesToTheOwner)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    for (const ExpectedButton& expected : kMusic) {
        const SkinButton* button = m_set.Find(expected.id);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->Caption()[0], 0);
        EXPECT_EQ(button->FontSizePoints(), 20);
        EXPECT_EQ(button->TextColor(), 0x208FFFU);
        EXPECT_EQ(button->FocusOwner(), m_parent.Get());
    }
}

TEST_F(PlayerButtons, AClickSendsTheCommandOfTheButton)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    SendMessageW(m_set.Find(kCommandNext)->Window(), BM_CLICK, 0, 0);
    ASSERT_EQ(m_parent.seen.size(), 1U);
    EXPECT_EQ(m_parent.seen[0].message, WM_COMMAND);
    EXPECT_EQ(m_parent.seen[0].wParam, 262U);
}

TEST_F(PlayerButtons, EnablingAndShowingReachTheNamedButtonOnly)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    m_set.Enable(kCommandStop, false);
    EXPECT_FALSE(m_set.IsEnabled(kCommandStop));
    EXPECT_TRUE(m_set.IsEnabled(kCommandPlay));
    m_set.Enable(kCommandStop, true);
    EXPECT_TRUE(m_set.IsEnabled(kCommandStop));
    m_set.Show(kCommandPause, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(m_set.Find(kCommandPause)->Window()));
    EXPECT_TRUE(IsWindowVisible(m_set.Find(kCommandPlay)->Window()));
}

TEST_F(PlayerButtons, ButtonsThatAreNotThereAreLeftAlone)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    m_set.Enable(257, false);
    m_set.Show(0, SW_HIDE);
    m_set.Enable(0, false);
    EXPECT_FALSE(m_set.IsEnabled(257));
    EXPECT_FALSE(m_set.IsEnabled(0));
    EXPECT_EQ(FaceOf(257, ODA_DRAWENTIRE, 0), kBlue565);
    EXPECT_TRUE(m_set.IsEnabled(kCommandPrevious));
}

TEST_F(PlayerButtons, TellsWhetherARequestIsForOneOfItsButtons)
{
    const Picture picture;
    const RECT item = { 0, 0, 66, 49 };
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    EXPECT_TRUE(m_set.DrawItem(DrawRequest(kCommandPrevious, ODA_DRAWENTIRE, 0, picture.Context(), item)));
    EXPECT_FALSE(m_set.DrawItem(DrawRequest(kCommandBack5, ODA_DRAWENTIRE, 0, picture.Context(), item)));
    EXPECT_FALSE(m_set.DrawItem(DrawRequest(0, ODA_DRAWENTIRE, 0, picture.Context(), item)));
}

TEST_F(PlayerButtons, RepaintAllInvalidatesTheButtonsAndNothingElse)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    ParentWindow::Pump();
    for (const ExpectedButton& expected : kMusic)
        ValidateRect(m_set.Find(expected.id)->Window(), nullptr);
    ValidateRect(m_parent.Get(), nullptr);
    m_set.RepaintAll();
    for (const ExpectedButton& expected : kMusic)
        EXPECT_TRUE(GetUpdateRect(m_set.Find(expected.id)->Window(), nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(m_parent.Get(), nullptr, FALSE));
}

TEST_F(PlayerButtons, TheBackgroundSourceShowsUnderEveryButton)
{
    m_skin.Device().WriteFile("user/Windows/gui_musicplayer_stop_but_normal.gif", PlainGif(47, 49, kMagenta));
    const UniqueBitmap background(LoadGifBitmap(m_skin.Plain("b.gif", 320, 240, kGreen).c_str()));
    const HBITMAP source = background.Get();
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    EXPECT_EQ(FaceOf(kCommandStop, ODA_DRAWENTIRE, 0), kBlue565);
    m_set.SetBackgroundSource(&source);
    EXPECT_EQ(FaceOf(kCommandStop, ODA_DRAWENTIRE, 0), kGreen565);
}

TEST_F(PlayerButtons, DestroyedTheSetHasNoButtons)
{
    CreatePlayerButtons(m_set, m_parent.Get(), PlayerButtonKind::Music);
    m_set.Destroy();
    EXPECT_TRUE(m_set.Buttons().empty());
    EXPECT_EQ(m_set.Find(kCommandPlay), nullptr);
    m_set.Enable(kCommandPlay, false);
    m_set.RepaintAll();
    EXPECT_EQ(ChildCount(), 10); // the windows are the owner's
}
