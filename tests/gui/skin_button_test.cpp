#include "gui/skin_button.h"

#include "common/rect.h"
#include "tests/gui/skin_fixture.h"

#include <gtest/gtest.h>

using namespace cardsong::test;

namespace {

constexpr UINT kId = 77;
constexpr RECT kPlace = { 30, 40, 50, 52 }; // 20 x 12
constexpr RECT kItem = { 0, 0, 20, 12 };
constexpr ButtonCaption kSquare = { TEXT("\u25A0"), 0, 12, RGB(255, 255, 255) };

int CaptionWidth(HDC context, const WString& text)
{
    const UniqueFont font = CreateCaptionFont(context, 12);
    const SelectedObject selected(context, font.Get());
    RECT rect = {};
    MeasureText(context, text.c_str(), rect);
    return WidthOf(rect);
}

class SkinButtonTest : public testing::Test {
protected:
    SkinButtonTest()
    {
        m_normal = m_skin.Plain("n.gif", 10, 8, kRed);
        m_pressed = m_skin.Plain("p.gif", 10, 8, kGreen);
        m_focus = m_skin.Plain("f.gif", 10, 8, kBlack);
        m_disabled = m_skin.Plain("d.gif", 10, 8, kWhite);
    }
    ButtonImageSet Images() const
    {
        return { m_normal.c_str(), m_pressed.c_str(), m_focus.c_str(), m_disabled.c_str() };
    }
    bool Create(const ButtonCaption* caption = nullptr)
    {
        const ButtonImageSet images = Images();
        return m_button.Create(m_parent.Get(), nullptr, kId, kPlace, caption, &images);
    }
    // The colour in the middle of the face that a request draws on blue; blue when it draws none.
    std::uint16_t FaceOf(UINT action, UINT state)
    {
        const Picture picture;
        m_button.DrawItem(DrawRequest(kId, action, state, picture.Context(), kItem));
        return picture.At(5, 4);
    }

    SkinDevice m_skin;
    ParentWindow m_parent;
    SkinButton m_button;
    WString m_normal, m_pressed, m_focus, m_disabled;
};

} // namespace

TEST_F(SkinButtonTest, ResetGivesTheDefaults)
{
    m_button.Reset(9);
    EXPECT_EQ(m_button.ControlId(), 9U);
    EXPECT_EQ(m_button.Window(), nullptr);
    EXPECT_EQ(m_button.FontSizePoints(), 12);
    EXPECT_EQ(m_button.TextColor(), 0U);
    EXPECT_EQ(m_button.Caption()[0], 0);
    EXPECT_EQ(SkinButton().ControlId(), 0U);
}

TEST_F(SkinButtonTest, CreateMakesAVisibleChildWithItsIdAtItsPlace)
{
    ASSERT_TRUE(Create());
    const HWND window = m_button.Window();
    EXPECT_EQ(GetParent(window), m_parent.Get());
    EXPECT_EQ(GetDlgCtrlID(window), static_cast<int>(kId));
    EXPECT_TRUE(IsWindowVisible(window));
    RECT rect = {};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.left, 30);
    EXPECT_EQ(rect.top, 40);
    EXPECT_EQ(rect.right, 50);
    EXPECT_EQ(rect.bottom, 52);
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & 0xF, static_cast<LONG_PTR>(BS_OWNERDRAW));
    EXPECT_EQ(m_button.FocusOwner(), m_parent.Get());
}

TEST_F(SkinButtonTest, WithoutAParentThereIsNoWindowAndNoImage)
{
    const ButtonImageSet images = Images();
    EXPECT_FALSE(m_button.Create(nullptr, nullptr, kId, kPlace, nullptr, &images));
    EXPECT_EQ(m_button.Window(), nullptr);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kBlue565);
    m_button.Repaint();
    m_button.Enable(true);
    EXPECT_FALSE(m_button.IsEnabled());
}

TEST_F(SkinButtonTest, TheSystemAsksItToDrawItselfWhenItIsPainted)
{
    int drawn = 0;
    m_parent.onDrawItem = [&](const DRAWITEMSTRUCT& request) {
        EXPECT_EQ(request.CtlID, kId);
        ++drawn;
        m_button.DrawItem(request);
    };
    ASSERT_TRUE(Create());
    ParentWindow::Pump();
    EXPECT_EQ(drawn, 1);
    const HDC context = GetDC(m_button.Window());
    EXPECT_EQ(Pixel565(context, 5, 4), kRed565);
    ReleaseDC(m_button.Window(), context);
    m_button.Repaint();
    ParentWindow::Pump();
    EXPECT_EQ(drawn, 2);
}

// ---- faces ----

TEST_F(SkinButtonTest, DrawnEntirelyItShowsTheNormalFace)
{
    ASSERT_TRUE(Create());
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kRed565);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, ODS_FOCUS), kRed565);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, ODS_SELECTED), kRed565);
}

TEST_F(SkinButtonTest, DrawnEntirelyAndDisabledItShowsTheDisabledFace)
{
    ASSERT_TRUE(Create());
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, ODS_DISABLED), kWhite565);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, ODS_DISABLED | ODS_SELECTED), kWhite565);
}

TEST_F(SkinButtonTest, SelectedItShowsThePressedFace)
{
    ASSERT_TRUE(Create());
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_SELECTED), kGreen565);
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_SELECTED | ODS_FOCUS), kGreen565);
}

TEST_F(SkinButtonTest, ReleasedItShowsTheNormalFace)
{
    ASSERT_TRUE(Create());
    EXPECT_EQ(FaceOf(ODA_SELECT, 0), kRed565);
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_FOCUS), kRed565);
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_DISABLED), kRed565);
}

TEST_F(SkinButtonTest, AnyOtherActionDrawsNothing)
{
    ASSERT_TRUE(Create(&kSquare));
    for (const UINT action : { UINT{ ODA_FOCUS }, UINT{ 0 }, UINT{ 8 } }) {
        const Picture picture;
        m_button.DrawItem(DrawRequest(kId, action, 0, picture.Context(), kItem));
        m_button.DrawItemComposed(DrawRequest(kId, action, 0, picture.Context(), kItem));
        EXPECT_EQ(picture.Count(kBlue565, kItem), 20 * 12) << action;
    }
}

TEST_F(SkinButtonTest, AFaceIsDrawnAtItsOwnSizeInTheCornerOfTheItem)
{
    ASSERT_TRUE(Create());
    const Picture picture;
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), { 100, 50, 120, 62 }));
    EXPECT_EQ(picture.Count(kRed565, { 0, 0, 320, 240 }), 10 * 8);
    EXPECT_EQ(picture.Count(kRed565, { 100, 50, 110, 58 }), 10 * 8);
}

TEST_F(SkinButtonTest, PixelsOfTheKeyColorAreLeftOut)
{
    const WString keyed = m_skin.Plain("k.gif", 10, 8, kMagenta);
    ASSERT_TRUE(Create());
    m_button.SetImage(ButtonFace::Normal, keyed.c_str());
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kBlue565);
    m_button.SetKeyColor(RGB(0, 255, 0));
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kMagenta565);
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_SELECTED), kBlue565); // the green face
}

TEST_F(SkinButtonTest, AMissingImageLeavesOnlyTheCaption)
{
    ASSERT_TRUE(m_button.Create(m_parent.Get(), nullptr, kId, kPlace, &kSquare, nullptr));
    const Picture under(RGB(255, 0, 0));
    const HBITMAP source = under.Bitmap();
    m_button.SetBackgroundSource(&source); // no face, so nothing of it either
    const Picture picture;
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), kItem));
    EXPECT_EQ(picture.Count(kRed565, kItem), 0);
    EXPECT_LT(picture.Count(kBlue565, kItem), 20 * 12);
}

// ---- focus ----

TEST_F(SkinButtonTest, DrawnInTheFocusStateItHandsTheFocusToItsOwner)
{
    ASSERT_TRUE(Create());
    for (const UINT action : { UINT{ ODA_SELECT }, UINT{ ODA_FOCUS } }) {
        SetFocus(m_button.Window());
        ASSERT_EQ(GetFocus(), m_button.Window());
        FaceOf(action, ODS_FOCUS);
        EXPECT_EQ(GetFocus(), m_parent.Get()) << action;
    }
}

TEST_F(SkinButtonTest, OtherRequestsLeaveTheFocusAlone)
{
    ASSERT_TRUE(Create());
    SetFocus(m_button.Window());
    FaceOf(ODA_SELECT, ODS_FOCUS | ODS_SELECTED);
    FaceOf(ODA_SELECT, 0);
    FaceOf(ODA_FOCUS, 0);
    FaceOf(ODA_DRAWENTIRE, ODS_FOCUS);
    EXPECT_EQ(GetFocus(), m_button.Window());
}

TEST_F(SkinButtonTest, AButtonWithoutAFocusOwnerKeepsTheFocus)
{
    ASSERT_TRUE(Create());
    SetFocus(m_parent.Get());
    SkinButton stray;
    const Picture picture;
    stray.DrawItem(DrawRequest(0, ODA_FOCUS, ODS_FOCUS, picture.Context(), kItem));
    EXPECT_EQ(GetFocus(), m_parent.Get());
}

TEST_F(SkinButtonTest, TheSystemsFocusRequestReturnsTheFocusAtOnce)
{
    m_parent.onDrawItem = [&](const DRAWITEMSTRUCT& request) { m_button.DrawItem(request); };
    ASSERT_TRUE(Create());
    ParentWindow::Pump();
    SetFocus(m_button.Window());
    ParentWindow::Pump();
    EXPECT_EQ(GetFocus(), m_parent.Get());
}

// ---- background source ----

TEST_F(SkinButtonTest, TheBackgroundAtItsPlaceShowsUnderAKeyedFace)
{
    const WString keyed = m_skin.Plain("k.gif", 10, 8, kMagenta);
    ASSERT_TRUE(Create());
    m_button.SetImage(ButtonFace::Normal, keyed.c_str());
    HBITMAP source = nullptr;
    m_button.SetBackgroundSource(&source);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kBlue565); // not there yet

    Picture background(RGB(0, 255, 0));
    const UniqueBrush red(CreateSolidBrush(RGB(255, 0, 0)));
    const RECT corner = { 30, 40, 31, 41 };
    FillRect(background.Context(), &corner, red.Get());
    UniqueBitmap copy(LoadGifBitmap(m_skin.Plain("b.gif", 320, 240, kWhite).c_str()));
    {
        const UniqueMemoryContext context(CreateCompatibleDC(nullptr));
        const SelectedObject selected(context.Get(), copy.Get());
        BitBlt(context.Get(), 0, 0, 320, 240, background.Context(), 0, 0, SRCCOPY);
    }
    source = copy.Get();
    const Picture picture;
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), { 5, 6, 25, 18 }));
    EXPECT_EQ(picture.At(5, 6), kRed565); // the source's pixel at the button's own place
    EXPECT_EQ(picture.Count(kGreen565, { 0, 0, 320, 240 }), 20 * 12 - 1);
    EXPECT_EQ(picture.Count(kGreen565, { 5, 6, 25, 18 }), 20 * 12 - 1);

    m_button.SetBackgroundSource(nullptr);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kBlue565);
}

TEST_F(SkinButtonTest, ComposedItShowsTheBackgroundUnderAKeyedFaceToo)
{
    const WString keyed = m_skin.Plain("k.gif", 10, 8, kMagenta);
    const UniqueBitmap background(LoadGifBitmap(m_skin.Plain("b.gif", 320, 240, kGreen).c_str()));
    const HBITMAP source = background.Get();
    ASSERT_TRUE(Create());
    m_button.SetImage(ButtonFace::Normal, keyed.c_str());
    m_button.SetBackgroundSource(&source);
    const Picture picture;
    m_button.DrawItemComposed(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), { 5, 6, 25, 18 }));
    EXPECT_EQ(picture.Count(kGreen565, { 5, 6, 25, 18 }), 20 * 12);
}

// ---- captions ----

TEST_F(SkinButtonTest, TheCaptionTakesTextSizeAndColor)
{
    const ButtonCaption caption = { TEXT("Go"), 0, 14, RGB(1, 2, 3) };
    ASSERT_TRUE(Create(&caption));
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Go"));
    EXPECT_EQ(m_button.FontSizePoints(), 14);
    EXPECT_EQ(m_button.TextColor(), RGB(1, 2, 3));
}

TEST_F(SkinButtonTest, ACaptionOfSizeZeroKeepsSizeAndColorAtCreation)
{
    const ButtonCaption caption = { TEXT("Go"), 0, 0, RGB(1, 2, 3) };
    ASSERT_TRUE(Create(&caption));
    EXPECT_EQ(m_button.FontSizePoints(), 12);
    EXPECT_EQ(m_button.TextColor(), 0U);
}

TEST_F(SkinButtonTest, ACaptionIsCutTo63Units)
{
    const WString text = WString(62, TEXT('x')) + TEXT("yz");
    const ButtonCaption caption = { text.c_str(), 0, 12, 0 };
    ASSERT_TRUE(Create(&caption));
    EXPECT_EQ(WString(m_button.Caption()), WString(62, TEXT('x')) + TEXT("y"));
}

TEST_F(SkinButtonTest, SettingACaptionWithColorZeroKeepsTheColor)
{
    const ButtonCaption first = { TEXT("Go"), 0, 14, RGB(1, 2, 3) };
    ASSERT_TRUE(Create(&first));
    m_button.SetCaption({ TEXT("Stop"), 0, 0, 0 });
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Stop"));
    EXPECT_EQ(m_button.TextColor(), RGB(1, 2, 3));
    EXPECT_EQ(m_button.FontSizePoints(), 14);
}

TEST_F(SkinButtonTest, SettingACaptionTakesAColorAndASizeThatAreNotZero)
{
    ASSERT_TRUE(Create());
    m_button.SetCaption({ TEXT("Stop"), 0, 0, RGB(4, 5, 6) });
    EXPECT_EQ(m_button.TextColor(), RGB(4, 5, 6));
    EXPECT_EQ(m_button.FontSizePoints(), 12);
    m_button.SetCaption({ TEXT("Stop"), 0, 9, 0 });
    EXPECT_EQ(m_button.FontSizePoints(), 9);
}

TEST_F(SkinButtonTest, SettingACaptionClearsTheOldOneAndRepaints)
{
    ASSERT_TRUE(Create(&kSquare));
    ParentWindow::Pump();
    ValidateRect(m_button.Window(), nullptr);
    m_button.SetCaption({ nullptr, 0, 0, 0 });
    EXPECT_EQ(m_button.Caption()[0], 0);
    EXPECT_TRUE(GetUpdateRect(m_button.Window(), nullptr, FALSE));
}

TEST_F(SkinButtonTest, TheWholeCaptionIsWrittenInTheMiddleOfTheItemInItsColor)
{
    const ButtonCaption caption = { TEXT("HHH"), 0, 12, RGB(255, 255, 255) };
    ASSERT_TRUE(Create(&caption));
    const Picture picture(RGB(0, 0, 0));
    SetTextColor(picture.Context(), RGB(255, 0, 0));
    SetBkMode(picture.Context(), OPAQUE);
    const RECT item = { 100, 100, 200, 140 };
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), item));
    RECT ink = { 320, 240, -1, -1 };
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 320; ++x) {
            const std::uint16_t pixel = picture.At(x, y);
            if (pixel == kBlack565 || pixel == kRed565)
                continue;
            ink = { std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x),
                    std::max<LONG>(ink.bottom, y) };
        }
    }
    ASSERT_GE(ink.right, 0);
    EXPECT_NEAR((ink.left + ink.right) / 2, 150, 2);
    EXPECT_NEAR((ink.top + ink.bottom) / 2, 120, 5);
    EXPECT_NEAR(WidthOf(ink) + 1, CaptionWidth(picture.Context(), TEXT("HHH")), 4); // less than a letter
    // The context is as it was.
    EXPECT_EQ(SetTextColor(picture.Context(), 0), RGB(255, 0, 0));
    EXPECT_EQ(SetBkMode(picture.Context(), OPAQUE), OPAQUE);
}

TEST_F(SkinButtonTest, ACaptionOfTheKeyColorIsSeeThroughOnlyWhenComposed)
{
    const ButtonCaption caption = { TEXT("\u25A0HH"), 0, 12, kSkinKeyColor };
    ASSERT_TRUE(Create(&caption));
    const Picture direct;
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, direct.Context(), kItem));
    EXPECT_GT(direct.Count(kMagenta565, kItem), 0);
    const Picture composed;
    m_button.DrawItemComposed(DrawRequest(kId, ODA_DRAWENTIRE, 0, composed.Context(), kItem));
    EXPECT_EQ(composed.Count(kMagenta565, kItem), 0);
    EXPECT_GT(composed.Count(kBlue565, { 0, 0, 10, 8 }), 0);
    EXPECT_GT(composed.Count(kRed565, { 0, 0, 10, 8 }), 0);
}

TEST_F(SkinButtonTest, ComposedItShowsTheFaceAtItsOwnSize)
{
    ASSERT_TRUE(Create());
    const Picture picture;
    m_button.DrawItemComposed(DrawRequest(kId, ODA_SELECT, ODS_SELECTED, picture.Context(), { 100, 50, 105, 54 }));
    EXPECT_EQ(picture.Count(kGreen565, { 0, 0, 320, 240 }), 10 * 8);
    EXPECT_EQ(picture.Count(kGreen565, { 100, 50, 110, 58 }), 10 * 8);
}

// ---- window operations ----

TEST_F(SkinButtonTest, DrawIntoUsesItsPlaceAndWhetherItIsEnabled)
{
    ASSERT_TRUE(Create());
    const Picture enabled;
    m_button.DrawInto(enabled.Context());
    EXPECT_EQ(enabled.Count(kRed565, { 30, 40, 40, 48 }), 10 * 8);
    EXPECT_EQ(enabled.Count(kRed565, { 0, 0, 320, 240 }), 10 * 8);
    m_button.Enable(false);
    EXPECT_FALSE(m_button.IsEnabled());
    const Picture disabled;
    m_button.DrawInto(disabled.Context());
    EXPECT_EQ(disabled.Count(kWhite565, { 30, 40, 40, 48 }), 10 * 8);
    m_button.Enable(true);
    EXPECT_TRUE(m_button.IsEnabled());
}

TEST_F(SkinButtonTest, DrawIntoWritesTheCaption)
{
    const ButtonCaption caption = { TEXT("HH"), 0, 12, RGB(255, 255, 255) };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), nullptr, kId, kPlace, &caption, nullptr));
    const Picture picture;
    m_button.DrawInto(picture.Context());
    EXPECT_LT(picture.Count(kBlue565, kPlace), 20 * 12);
}

TEST_F(SkinButtonTest, ShowingAndHidingReachTheWindow)
{
    ASSERT_TRUE(Create());
    m_button.Show(SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(m_button.Window()));
    m_button.Show(SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(m_button.Window()));
}

TEST_F(SkinButtonTest, MovingKeepsTheSizeAndResizingThePlace)
{
    ASSERT_TRUE(Create());
    RECT rect = {};
    m_button.Move(60, 70);
    GetWindowRect(m_button.Window(), &rect);
    EXPECT_EQ(rect.left, 60);
    EXPECT_EQ(rect.top, 70);
    EXPECT_EQ(rect.right, 80);
    EXPECT_EQ(rect.bottom, 82);
    m_button.Resize(33, 44);
    GetWindowRect(m_button.Window(), &rect);
    EXPECT_EQ(rect.left, 60);
    EXPECT_EQ(rect.top, 70);
    EXPECT_EQ(rect.right, 93);
    EXPECT_EQ(rect.bottom, 114);
    const Picture picture;
    m_button.DrawInto(picture.Context());
    EXPECT_EQ(picture.Count(kRed565, { 60, 70, 70, 78 }), 10 * 8);
}

TEST_F(SkinButtonTest, TopmostBringsItAboveItsSiblings)
{
    SkinButton other;
    ASSERT_TRUE(Create());
    ASSERT_TRUE(other.Create(m_parent.Get(), nullptr, 78, kPlace, nullptr, nullptr));
    other.Show(SW_HIDE);
    const HWND lower = GetWindow(m_parent.Get(), GW_CHILD) == other.Window() ? m_button.Window() : other.Window();
    SkinButton& button = lower == other.Window() ? other : m_button;
    button.MakeTopmost(false);
    EXPECT_NE(GetWindow(m_parent.Get(), GW_CHILD), lower);
    button.MakeTopmost(true);
    EXPECT_EQ(GetWindow(m_parent.Get(), GW_CHILD), lower);
    EXPECT_TRUE(IsWindowVisible(lower));
    RECT rect = {};
    GetWindowRect(lower, &rect);
    EXPECT_EQ(rect.left, 30);
    EXPECT_EQ(rect.right, 50);
}

// ---- images, copies, strings ----

TEST_F(SkinButtonTest, EachImageCanBeReplaced)
{
    ASSERT_TRUE(Create());
    m_button.SetImage(ButtonFace::Normal, m_disabled.c_str());
    m_button.SetImage(ButtonFace::Pressed, m_normal.c_str());
    m_button.SetImage(ButtonFace::Disabled, m_pressed.c_str());
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kWhite565);
    EXPECT_EQ(FaceOf(ODA_SELECT, ODS_SELECTED), kRed565);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, ODS_DISABLED), kGreen565);
    m_button.SetImage(ButtonFace::Focus, nullptr);
    m_button.SetImage(ButtonFace::Normal, nullptr);
    EXPECT_EQ(FaceOf(ODA_DRAWENTIRE, 0), kBlue565);
}

TEST_F(SkinButtonTest, ReplacingAnImageRepaints)
{
    ASSERT_TRUE(Create());
    ParentWindow::Pump();
    ValidateRect(m_button.Window(), nullptr);
    m_button.SetImage(ButtonFace::Pressed, nullptr);
    EXPECT_TRUE(GetUpdateRect(m_button.Window(), nullptr, FALSE));
}

TEST_F(SkinButtonTest, FreeLeavesTheWindowButNothingToDraw)
{
    ASSERT_TRUE(Create(&kSquare));
    m_button.Free();
    EXPECT_TRUE(IsWindow(m_button.Window()));
    EXPECT_EQ(m_button.Caption()[0], 0);
    const Picture picture;
    m_button.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), kItem));
    EXPECT_EQ(picture.Count(kBlue565, kItem), 20 * 12);
}

TEST_F(SkinButtonTest, ACopySharesTheImagesAndOutlivesTheOriginals)
{
    const ButtonCaption caption = { TEXT("Go"), 0, 14, RGB(1, 2, 3) };
    ASSERT_TRUE(Create(&caption));
    m_button.SetKeyColor(RGB(0, 255, 0));
    SkinButton copy;
    copy.CopyFrom(m_button);
    m_button.Free();
    EXPECT_EQ(copy.ControlId(), kId);
    EXPECT_EQ(copy.Window(), m_button.Window());
    EXPECT_EQ(copy.FocusOwner(), m_parent.Get());
    EXPECT_EQ(copy.Place().left, 30);
    EXPECT_EQ(copy.Place().bottom, 52);
    EXPECT_EQ(copy.FontSizePoints(), 14);
    EXPECT_EQ(copy.TextColor(), RGB(1, 2, 3));
    EXPECT_EQ(WString(copy.Caption()), TEXT("Go"));
    const Picture picture;
    copy.DrawItem(DrawRequest(kId, ODA_SELECT, 0, picture.Context(), kItem));
    EXPECT_EQ(picture.At(0, 0), kRed565);
    const Picture keyed;
    copy.DrawItem(DrawRequest(kId, ODA_SELECT, ODS_SELECTED, keyed.Context(), kItem));
    EXPECT_EQ(keyed.At(0, 0), kBlue565); // green is the key
}

TEST_F(SkinButtonTest, ACopyOfAButtonWithoutACaptionKeepsItsOwn)
{
    const UniqueBitmap background(LoadGifBitmap(m_skin.Plain("b.gif", 320, 240, kGreen).c_str()));
    const HBITMAP source = background.Get();
    ASSERT_TRUE(Create());
    SkinButton copy;
    copy.SetCaption({ TEXT("Mine"), 0, 0, 0 });
    copy.SetBackgroundSource(&source);
    copy.CopyFrom(m_button);
    EXPECT_EQ(WString(copy.Caption()), TEXT("Mine"));
    copy.SetImage(ButtonFace::Normal, m_skin.Plain("k.gif", 10, 8, kMagenta).c_str());
    copy.SetCaption({ TEXT(""), 0, 0, 0 });
    const Picture picture;
    copy.DrawItem(DrawRequest(kId, ODA_DRAWENTIRE, 0, picture.Context(), kItem));
    EXPECT_EQ(picture.Count(kBlue565, kItem), 20 * 12); // no background source any more
}
