#include "gui/soft_key_bar.h"

#include "tests/gui/skin_fixture.h"

#include <gtest/gtest.h>

using namespace cardsong::test;

namespace {

constexpr int kThreeIds[] = { 18, 24, 22 };
constexpr RECT kItem = { 0, 0, 106, 32 };

class SoftKeyBarTest : public testing::Test {
protected:
    SoftKeyBarTest()
    {
        m_background = m_skin.Add("gui_softkey_zone_bg", 320, 32);
        m_normal = m_skin.Add("gui_3but_normal", 100, 30);
        m_pressed = m_skin.Add("gui_3but_down", 100, 30);
        m_disabled = m_skin.Add("gui_3but_disable", 100, 30);
        m_volume = m_skin.Add("gui_3but_volume_ctrl_normal", 100, 30);
    }
    bool CreateThree(std::span<const ButtonCaption> captions = {}, std::span<const ButtonImageSet> sets = {})
    {
        return m_bar.Create(m_parent.Get(), nullptr, 3, kThreeIds, captions, sets);
    }
    std::uint16_t Drawn(UINT id, UINT action, UINT state)
    {
        const Picture picture;
        m_bar.DrawItem(DrawRequest(id, action, state, picture.Context(), kItem));
        return picture.At(3, 3);
    }

    SkinDevice m_skin;
    ParentWindow m_parent;
    SoftKeyBar m_bar;
    std::uint16_t m_background, m_normal, m_pressed, m_disabled, m_volume;
};

} // namespace

TEST_F(SoftKeyBarTest, MakesOneButtonWindowASlot)
{
    ASSERT_TRUE(CreateThree());
    ASSERT_EQ(m_bar.Buttons().size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        const SkinButton& button = m_bar.Buttons()[i];
        EXPECT_EQ(button.ControlId(), static_cast<UINT>(kThreeIds[i]));
        EXPECT_EQ(GetDlgCtrlID(button.Window()), kThreeIds[i]);
        EXPECT_EQ(button.FocusOwner(), m_parent.Get());
        EXPECT_EQ(button.Place().left, static_cast<LONG>(106 * i));
        EXPECT_EQ(button.Place().top, 208);
        EXPECT_EQ(button.FontSizePoints(), 12);
        EXPECT_EQ(button.TextColor(), RGB(255, 255, 255));
        EXPECT_EQ(button.Caption()[0], 0);
    }
}

TEST_F(SoftKeyBarTest, AnInvalidCountMakesNoBar)
{
    for (const int count : { 1, 8 }) {
        EXPECT_FALSE(m_bar.Create(m_parent.Get(), nullptr, count, kThreeIds));
        EXPECT_TRUE(m_bar.Buttons().empty());
        EXPECT_EQ(GetWindow(m_parent.Get(), GW_CHILD), nullptr);
    }
}

TEST_F(SoftKeyBarTest, AnEmptySlotHasNoWindow)
{
    constexpr int ids[] = { 18, 0, 22 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 3, ids));
    EXPECT_EQ(m_bar.Buttons()[1].Window(), nullptr);
    EXPECT_EQ(m_bar.Buttons()[1].ControlId(), 0U);
    const Picture picture;
    m_bar.DrawAll(picture.Context());
    EXPECT_EQ(picture.At(106 + 3, 208 + 3), m_background);
}

TEST_F(SoftKeyBarTest, ABarOfFourIdsWithAPairHasFiveButtons)
{
    constexpr int ids[] = { 18, 24, 21, 0, 0 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 4, ids));
    ASSERT_EQ(m_bar.Buttons().size(), 5U);
    EXPECT_EQ(m_bar.Buttons()[2].ControlId(), 40U);
    EXPECT_EQ(m_bar.Buttons()[3].ControlId(), 41U);
    EXPECT_EQ(m_bar.Buttons()[3].Place().left, 212 + 53);
    EXPECT_EQ(m_bar.Buttons()[2].TextColor(), RGB(255, 255, 255));
    EXPECT_EQ(m_bar.Buttons()[2].FontSizePoints(), 12);
}

TEST_F(SoftKeyBarTest, CaptionsGoWithTheirSlots)
{
    const ButtonCaption captions[] = { { TEXT("One"), 0, 14, RGB(1, 1, 1) }, { TEXT("Two"), 0, 0, RGB(2, 2, 2) } };
    ASSERT_TRUE(CreateThree(captions));
    EXPECT_EQ(WString(m_bar.Buttons()[0].Caption()), TEXT("One"));
    EXPECT_EQ(m_bar.Buttons()[0].FontSizePoints(), 14);
    EXPECT_EQ(m_bar.Buttons()[0].TextColor(), RGB(1, 1, 1));
    EXPECT_EQ(WString(m_bar.Buttons()[1].Caption()), TEXT("Two"));
    EXPECT_EQ(m_bar.Buttons()[1].FontSizePoints(), 12);
    EXPECT_EQ(m_bar.Buttons()[1].TextColor(), 0U); // a caption of size 0 gives no colour
    EXPECT_EQ(m_bar.Buttons()[2].Caption()[0], 0);
}

TEST_F(SoftKeyBarTest, TheCallersImagesWinOverTheSlotsSkin)
{
    const std::uint16_t own = m_skin.Add("own", 100, 30);
    const ButtonImageSet sets[] = { {}, { TEXT("\\Windows\\own.gif"), nullptr, nullptr, nullptr } };
    ASSERT_TRUE(CreateThree({}, sets));
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), kBlue565);
    EXPECT_EQ(Drawn(24, ODA_DRAWENTIRE, 0), own);
    EXPECT_EQ(Drawn(22, ODA_DRAWENTIRE, 0), m_volume);
}

TEST_F(SoftKeyBarTest, DrawsTheButtonThatTheRequestNames)
{
    ASSERT_TRUE(CreateThree());
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), m_normal);
    EXPECT_EQ(Drawn(24, ODA_SELECT, ODS_SELECTED), m_pressed);
    EXPECT_EQ(Drawn(24, ODA_DRAWENTIRE, ODS_DISABLED), m_disabled);
    EXPECT_EQ(Drawn(22, ODA_DRAWENTIRE, 0), m_volume);
    EXPECT_EQ(Drawn(19, ODA_DRAWENTIRE, 0), kBlue565);
    EXPECT_EQ(Drawn(0, ODA_DRAWENTIRE, 0), kBlue565);
}

TEST_F(SoftKeyBarTest, TellsWhetherARequestIsForOneOfItsButtons)
{
    constexpr int ids[] = { 18, 0, 22 };
    const Picture picture;
    EXPECT_FALSE(m_bar.DrawItem(DrawRequest(18, ODA_DRAWENTIRE, 0, picture.Context(), kItem))); // no bar yet
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 3, ids));
    EXPECT_TRUE(m_bar.DrawItem(DrawRequest(18, ODA_DRAWENTIRE, 0, picture.Context(), kItem)));
    EXPECT_TRUE(m_bar.DrawItem(DrawRequest(22, ODA_FOCUS, 0, picture.Context(), kItem))); // its own, without a look
    EXPECT_FALSE(m_bar.DrawItem(DrawRequest(24, ODA_DRAWENTIRE, 0, picture.Context(), kItem)));
    EXPECT_FALSE(m_bar.DrawItem(DrawRequest(0, ODA_DRAWENTIRE, 0, picture.Context(), kItem)));
}

TEST_F(SoftKeyBarTest, TheBackgroundSourceShowsUnderEveryButton)
{
    m_skin.Device().WriteFile("user/Windows/gui_3but_normal.gif", PlainGif(100, 30, kMagenta));
    const UniqueBitmap background(LoadGifBitmap(m_skin.Plain("b.gif", 320, 240, kGreen).c_str()));
    const HBITMAP source = background.Get();
    ASSERT_TRUE(CreateThree());
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), kBlue565);
    m_bar.SetBackgroundSource(&source);
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), kGreen565);
    EXPECT_EQ(Drawn(24, ODA_DRAWENTIRE, 0), kGreen565);
}

TEST_F(SoftKeyBarTest, TheBackgroundIsDrawnAtTheBottomOfTheScreen)
{
    ASSERT_TRUE(CreateThree());
    const Picture picture;
    m_bar.DrawBackground(picture.Context());
    EXPECT_EQ(picture.Count(m_background, { 0, 208, 320, 240 }), 320 * 32);
    EXPECT_EQ(picture.Count(kBlue565, { 0, 0, 320, 208 }), 320 * 208);
}

TEST_F(SoftKeyBarTest, DrawAllDrawsTheButtonsOnTheBackground)
{
    ASSERT_TRUE(CreateThree());
    m_bar.Enable(24, false);
    const Picture picture;
    m_bar.DrawAll(picture.Context());
    EXPECT_EQ(picture.Count(m_normal, { 0, 208, 100, 238 }), 100 * 30);
    EXPECT_EQ(picture.Count(m_disabled, { 106, 208, 206, 238 }), 100 * 30);
    EXPECT_EQ(picture.Count(m_volume, { 212, 208, 312, 238 }), 100 * 30);
    EXPECT_EQ(picture.At(103, 220), m_background);
}

TEST_F(SoftKeyBarTest, TheArrowKeysClickTheUpAndTheDownButton)
{
    constexpr int ids[] = { 18, 24, 21, 0, 0 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 4, ids));
    m_bar.ArrowKey(VK_UP);
    ASSERT_EQ(m_parent.seen.size(), 1U);
    EXPECT_EQ(m_parent.seen[0].message, WM_COMMAND);
    EXPECT_EQ(LOWORD(m_parent.seen[0].wParam), 40);
    m_bar.ArrowKey(VK_DOWN);
    ASSERT_EQ(m_parent.seen.size(), 2U);
    EXPECT_EQ(LOWORD(m_parent.seen[1].wParam), 41);
}

TEST_F(SoftKeyBarTest, OtherKeysClickNothing)
{
    constexpr int ids[] = { 18, 24, 21, 0, 0 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 4, ids));
    for (const WPARAM key : { WPARAM{ VK_LEFT }, WPARAM{ VK_RIGHT }, WPARAM{ VK_RETURN }, WPARAM{ 41 }, WPARAM{ 0 } })
        m_bar.ArrowKey(key);
    EXPECT_TRUE(m_parent.seen.empty());
}

TEST_F(SoftKeyBarTest, ArrowKeysOnABarWithoutThePairDoNothing)
{
    ASSERT_TRUE(CreateThree());
    m_bar.ArrowKey(VK_UP);
    m_bar.ArrowKey(VK_DOWN);
    EXPECT_TRUE(m_parent.seen.empty());
}

TEST_F(SoftKeyBarTest, EnablingAndShowingReachTheNamedButtonOnly)
{
    ASSERT_TRUE(CreateThree());
    m_bar.Enable(24, false);
    EXPECT_FALSE(m_bar.IsEnabled(24));
    EXPECT_TRUE(m_bar.IsEnabled(18));
    m_bar.Enable(24, true);
    EXPECT_TRUE(m_bar.IsEnabled(24));
    EXPECT_FALSE(m_bar.IsEnabled(99));
    EXPECT_FALSE(m_bar.IsEnabled(0));
    m_bar.Show(22, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(m_bar.Buttons()[2].Window()));
    EXPECT_TRUE(IsWindowVisible(m_bar.Buttons()[0].Window()));
    m_bar.Enable(0, false);
    m_bar.Show(0, SW_HIDE);
    EXPECT_TRUE(m_bar.IsEnabled(18));
    EXPECT_TRUE(IsWindowVisible(m_bar.Buttons()[0].Window()));
}

TEST_F(SoftKeyBarTest, OfTwoButtonsWithOneIdTheFirstIsEnabled)
{
    constexpr int ids[] = { 18, 18, 22 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 3, ids));
    m_bar.Enable(18, false);
    EXPECT_FALSE(m_bar.Buttons()[0].IsEnabled());
    EXPECT_TRUE(m_bar.Buttons()[1].IsEnabled());
}

TEST_F(SoftKeyBarTest, ImagesAreSetOnEveryButtonOfTheId)
{
    constexpr int ids[] = { 18, 18, 24 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 3, ids));
    const std::uint16_t own = m_skin.Add("own", 100, 30);
    m_bar.SetImage(18, ButtonFace::Normal, TEXT("\\Windows\\own.gif"));
    m_bar.SetImage(0, ButtonFace::Normal, nullptr);
    const Picture picture;
    m_bar.DrawAll(picture.Context());
    EXPECT_EQ(picture.At(3, 211), own);
    EXPECT_EQ(picture.At(106 + 3, 211), own);
    EXPECT_EQ(picture.At(212 + 3, 211), m_normal);
}

TEST_F(SoftKeyBarTest, CaptionsAreSetByIdOrInOrder)
{
    ASSERT_TRUE(CreateThree());
    m_bar.SetCaption(24, { TEXT("Two"), 0, 0, 0 });
    m_bar.SetCaption(0, { TEXT("None"), 0, 0, 0 });
    EXPECT_EQ(m_bar.Buttons()[0].Caption()[0], 0);
    EXPECT_EQ(WString(m_bar.Buttons()[1].Caption()), TEXT("Two"));
    const ButtonCaption captions[] = { { TEXT("A"), 0, 0, 0 }, { TEXT("B"), 0, 0, 0 }, { TEXT("C"), 0, 0, 0 } };
    m_bar.SetCaptions(captions);
    EXPECT_EQ(WString(m_bar.Buttons()[0].Caption()), TEXT("A"));
    EXPECT_EQ(WString(m_bar.Buttons()[1].Caption()), TEXT("B"));
    EXPECT_EQ(WString(m_bar.Buttons()[2].Caption()), TEXT("C"));
}

TEST_F(SoftKeyBarTest, MoreOrFewerCaptionsThanButtonsAreFine)
{
    ASSERT_TRUE(CreateThree());
    const std::vector<ButtonCaption> many(5, { TEXT("A"), 0, 0, 0 });
    m_bar.SetCaptions(many);
    EXPECT_EQ(WString(m_bar.Buttons()[2].Caption()), TEXT("A"));
    m_bar.SetCaptions(std::vector<ButtonCaption>(1, { TEXT("B"), 0, 0, 0 }));
    EXPECT_EQ(WString(m_bar.Buttons()[0].Caption()), TEXT("B"));
    EXPECT_EQ(WString(m_bar.Buttons()[1].Caption()), TEXT("A"));
}

TEST_F(SoftKeyBarTest, TheKeyColorIsSetOnOneButtonOrAll)
{
    const WString green = m_skin.Plain("g.gif", 100, 30, kGreen);
    const ButtonImageSet set = { green.c_str(), nullptr, nullptr, nullptr };
    ASSERT_TRUE(CreateThree({}, std::vector<ButtonImageSet>(3, set)));
    m_bar.SetKeyColor(24, RGB(0, 255, 0));
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), kGreen565);
    EXPECT_EQ(Drawn(24, ODA_DRAWENTIRE, 0), kBlue565);
    m_bar.SetKeyColor(0, RGB(0, 255, 0));
    EXPECT_EQ(Drawn(18, ODA_DRAWENTIRE, 0), kBlue565);
    EXPECT_EQ(Drawn(22, ODA_DRAWENTIRE, 0), kBlue565);
}

TEST_F(SoftKeyBarTest, RepaintAllInvalidatesEveryButton)
{
    ASSERT_TRUE(CreateThree());
    ParentWindow::Pump();
    for (const SkinButton& button : m_bar.Buttons())
        ValidateRect(button.Window(), nullptr);
    m_bar.RepaintAll();
    for (const SkinButton& button : m_bar.Buttons())
        EXPECT_TRUE(GetUpdateRect(button.Window(), nullptr, FALSE));
}

TEST_F(SoftKeyBarTest, RepaintingABarWithAnEmptySlotLeavesOtherWindowsAlone)
{
    constexpr int ids[] = { 18, 0, 22 };
    ASSERT_TRUE(m_bar.Create(m_parent.Get(), nullptr, 3, ids));
    ParentWindow::Pump();
    ValidateRect(m_parent.Get(), nullptr);
    m_bar.RepaintAll();
    EXPECT_FALSE(GetUpdateRect(m_parent.Get(), nullptr, FALSE));
}

TEST_F(SoftKeyBarTest, DestroyedItHasNoButtonsAndDrawsNothing)
{
    ASSERT_TRUE(CreateThree());
    m_bar.Destroy();
    EXPECT_TRUE(m_bar.Buttons().empty());
    const Picture picture;
    m_bar.DrawAll(picture.Context());
    EXPECT_EQ(picture.Count(kBlue565, { 0, 200, 320, 240 }), 320 * 40);
    m_bar.ArrowKey(VK_UP);
    EXPECT_FALSE(m_bar.IsEnabled(18));
}
