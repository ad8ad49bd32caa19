// What a skinned list looks like, pixel by pixel.
#include "gui/skin_list_draw.h"

#include "gui/text_line.h"
#include "tests/gui/skin_list_fixture.h"

using namespace cardsong::test;

namespace {

constexpr RECT kScreen = { 0, 0, 320, 240 };
constexpr std::uint16_t kSeparator565 = 0x057E; // #00AFF0
constexpr std::uint16_t kTitle565 = 0x05FE;     // #00BEF2

class SkinListDraw : public SkinListTest {
protected:
    SkinListModel Model(SkinListMode mode, std::int32_t count)
    {
        SkinListModel model;
        model.SetMode(mode);
        model.SetItems(m_items);
        model.SetItemCount(count);
        return model;
    }
    void Draw(const SkinListModel& model, WStringView title = {})
    {
        SkinListPainter painter;
        painter.Draw(m_picture.Context(), model, title);
    }
    // The picture again with nothing but the ground, as a base to draw the expected on.
    static void DrawEmpty(const Picture& picture)
    {
        SkinListModel none;
        none.SetMode(SkinListMode::Text);
        SkinListPainter painter;
        painter.Draw(picture.Context(), none, {});
    }
    static int Differences(const Picture& a, const Picture& b)
    {
        int count = 0;
        for (int y = 0; y < 240; ++y)
            for (int x = 0; x < 320; ++x)
                count += a.At(x, y) != b.At(x, y) ? 1 : 0;
        return count;
    }
    static void Write(const Picture& picture, WStringView text, const RECT& box, int points, UINT placement)
    {
        const UniqueFont font = CreatePlainFont(picture.Context(), points);
        DrawTextLine(picture.Context(), text, box, font.Get(), RGB(0, 0, 0), DT_VCENTER | placement);
    }

    Picture m_picture;
};

} // namespace

TEST_F(SkinListDraw, AnEmptyListIsItsGroundAndThreeLines)
{
    Draw(Model(SkinListMode::CheckedText, 0));
    EXPECT_EQ(m_picture.Count(kSeparator565, kScreen), 3 * 253);
    EXPECT_EQ(m_picture.Count(m_ground, kScreen), 320 * 240 - 3 * 253);
    for (const int y : { 72, 118, 164 }) {
        EXPECT_EQ(m_picture.At(4, y), m_ground);
        EXPECT_EQ(m_picture.At(5, y), kSeparator565);
        EXPECT_EQ(m_picture.At(257, y), kSeparator565);
        EXPECT_EQ(m_picture.At(258, y), m_ground);
    }
}

TEST_F(SkinListDraw, WithoutABackgroundTheGroundIsWhite)
{
    m_skin.Device().WriteFile("user/Windows/gui_full_bg2.gif", "no picture");
    Draw(Model(SkinListMode::Text, 0));
    EXPECT_EQ(m_picture.Count(kWhite565, kScreen), 320 * 240 - 3 * 253);
}

TEST_F(SkinListDraw, ABackgroundSmallerThanTheScreenStandsOnWhite)
{
    m_skin.Device().WriteFile("user/Windows/gui_full_bg2.gif", PlainGif(10, 240, kGreen));
    Draw(Model(SkinListMode::Text, 0));
    EXPECT_EQ(m_picture.At(9, 239), kGreen565);
    EXPECT_EQ(m_picture.At(10, 0), kWhite565);
    m_skin.Device().WriteFile("user/Windows/gui_full_bg2.gif", PlainGif(320, 10, kGreen));
    Draw(Model(SkinListMode::Text, 0));
    EXPECT_EQ(m_picture.At(319, 9), kGreen565);
    EXPECT_EQ(m_picture.At(0, 10), kWhite565);
}

TEST_F(SkinListDraw, TheTitleIsWrittenInTheCaptionFontIntoItsBox)
{
    Draw(Model(SkinListMode::Text, 0), kSquares);
    Picture expected;
    DrawEmpty(expected);
    const UniqueFont font = CreateCaptionFont(expected.Context(), 14);
    DrawTextLine(expected.Context(), kSquares, { 0, 0, 300, 26 }, font.Get(), RGB(0x00, 0xBE, 0xF2),
                 DT_VCENTER | DT_LEFT);
    EXPECT_EQ(Differences(m_picture, expected), 0);
    EXPECT_GT(m_picture.Count(kTitle565, { 0, 0, 300, 26 }), 50);
}

TEST_F(SkinListDraw, ATitleThatIsTooLongEndsInAnEllipsisWithinItsBox)
{
    Draw(Model(SkinListMode::Text, 0), WString(39, TEXT('\u25A0')));
    EXPECT_EQ(m_picture.Count(m_ground, { 300, 0, 320, 26 }), 20 * 26);
    EXPECT_GT(m_picture.Count(kTitle565, { 0, 0, 280, 26 }), 500);
    Picture cut;
    DrawEmpty(cut);
    const UniqueFont font = CreateCaptionFont(cut.Context(), 14);
    DrawTextLine(cut.Context(), WString(39, TEXT('\u25A0')), { 0, 0, 300, 26 }, font.Get(), RGB(0x00, 0xBE, 0xF2),
                 DT_VCENTER);
    EXPECT_NE(Differences(m_picture, cut), 0); // it was not just cut
}

TEST_F(SkinListDraw, AnAmpersandOfATitleOrASongIsShown)
{
    Picture without;
    m_items = { ListItem(TEXT("ab"), TEXT("c")) };
    SkinListPainter().Draw(without.Context(), Model(SkinListMode::CheckedText, 1), TEXT("ab"));
    m_items = { ListItem(TEXT("a&b"), TEXT("&c")) };
    Draw(Model(SkinListMode::CheckedText, 1), TEXT("a&b"));
    for (const RECT& box : { RECT{ 0, 0, 300, 26 }, RECT{ 45, 27, 190, 71 }, RECT{ 190, 27, 240, 71 } })
        EXPECT_LT(m_picture.Count(m_ground, box), without.Count(m_ground, box) - 5);
}

TEST_F(SkinListDraw, ATextAloneStandsInItsRow)
{
    m_items = { ListItem(TEXT("Song one"), TEXT("no"), 1, 1), ListItem(kSquares, TEXT("no"), 1, 1) };
    Draw(Model(SkinListMode::Text, 2));
    Picture expected;
    DrawEmpty(expected);
    Write(expected, TEXT("Song one"), { 10, 27, 258, 71 }, 14, DT_LEFT);
    Write(expected, kSquares, { 10, 73, 258, 117 }, 14, DT_LEFT);
    EXPECT_EQ(Differences(m_picture, expected), 0);
}

TEST_F(SkinListDraw, ACheckedTextHasItsBoxItsTextAndItsTime)
{
    m_items = { ListItem(TEXT("Song one"), TEXT("4:29"), 0, 1), ListItem(kSquares, TEXT("10:07"), 1, 1) };
    Draw(Model(SkinListMode::CheckedText, 2));
    Picture expected;
    DrawEmpty(expected);
    CheckBoxImages().Draw(expected.Context(), { 0, 27, 45, 71 }, 0);
    CheckBoxImages().Draw(expected.Context(), { 0, 73, 45, 117 }, 1);
    Write(expected, TEXT("Song one"), { 45, 27, 190, 71 }, 14, DT_LEFT);
    Write(expected, kSquares, { 45, 73, 190, 117 }, 14, DT_LEFT);
    Write(expected, TEXT("4:29"), { 190, 27, 240, 71 }, 11, DT_RIGHT);
    Write(expected, TEXT("10:07"), { 190, 73, 240, 117 }, 11, DT_RIGHT);
    EXPECT_EQ(Differences(m_picture, expected), 0);
    EXPECT_EQ(m_picture.At(0, 27), m_unchecked);
    EXPECT_EQ(m_picture.At(19, 46), m_unchecked);
    EXPECT_EQ(m_picture.At(20, 46), m_ground);
    EXPECT_EQ(m_picture.At(0, 73), m_checked);
}

TEST_F(SkinListDraw, TwoChecksHaveABoxOnEitherSideOfTheText)
{
    m_items = { ListItem(TEXT("Song"), TEXT("no"), 0, 1) };
    Draw(Model(SkinListMode::TwoChecks, 1));
    Picture expected;
    DrawEmpty(expected);
    CheckBoxImages().Draw(expected.Context(), { 0, 27, 45, 71 }, 0);
    CheckBoxImages().Draw(expected.Context(), { 190, 27, 213, 71 }, 1);
    Write(expected, TEXT("Song"), { 45, 27, 190, 71 }, 14, DT_LEFT);
    EXPECT_EQ(Differences(m_picture, expected), 0);
    EXPECT_EQ(m_picture.At(190, 27), m_checked);
}

TEST_F(SkinListDraw, ALongTextEndsInAnEllipsisWithinItsBox)
{
    const WString longText(100, TEXT('\u25A0'));
    m_items = { ListItem(longText, {}, 4, 4) };
    for (const auto& [mode, box] : { std::pair{ SkinListMode::Text, RECT{ 10, 27, 258, 71 } },
                                     std::pair{ SkinListMode::CheckedText, RECT{ 45, 27, 190, 71 } } }) {
        Draw(Model(mode, 1));
        Picture cut;
        DrawEmpty(cut);
        const int inkOfBox = m_picture.Count(kBlack565, box);
        EXPECT_GT(inkOfBox, 500);
        EXPECT_EQ(m_picture.Count(kBlack565, kScreen), inkOfBox);
        Write(cut, longText, box, 14, DT_LEFT);
        EXPECT_NE(Differences(m_picture, cut), 0);
    }
}

TEST_F(SkinListDraw, ATextOfAllItsUnitsNeedsNoZero)
{
    m_items = { ListItem(WString(100, TEXT('i')), WString(100, TEXT('\u25A0')), 4) };
    Draw(Model(SkinListMode::CheckedText, 1));
    EXPECT_EQ(m_picture.Count(m_ground, { 240, 27, 258, 71 }), 18 * 44);
    EXPECT_GT(m_picture.Count(kBlack565, { 190, 27, 240, 71 }), 100);
}

TEST_F(SkinListDraw, TheSelectedRowLiesOnTheHighlight)
{
    m_items = { ListItem(TEXT("Song"), {}, 4) };
    SkinListModel model = Model(SkinListMode::CheckedText, 1);
    model.Select(0);
    Draw(model);
    EXPECT_EQ(m_picture.At(0, 27), Highlight());
    EXPECT_EQ(m_picture.At(257, 70), Highlight());
    EXPECT_EQ(m_picture.At(258, 70), m_ground);
    EXPECT_EQ(m_picture.At(0, 26), m_ground);
    EXPECT_EQ(m_picture.At(0, 71), m_ground);
    Picture expected;
    DrawEmpty(expected);
    const RECT row = { 0, 27, 258, 71 };
    FillRect(expected.Context(), &row, GetSysColorBrush(COLOR_HIGHLIGHT));
    Write(expected, TEXT("Song"), { 45, 27, 190, 71 }, 14, DT_LEFT);
    EXPECT_EQ(Differences(m_picture, expected), 0);
}

TEST_F(SkinListDraw, TheSelectedTextIsShownFromWhereItHasSwungTo)
{
    const WString text = TEXT("\u25A0|") + WString(40, TEXT('\u25CF'));
    m_items = { ListItem(text, {}, 4), ListItem(text, {}, 4) };
    SkinListModel model = Model(SkinListMode::CheckedText, 2);
    model.Select(0);
    SkinListPainter painter;
    const auto width = [&](WStringView part) { return painter.MainTextWidth(m_picture.Context(), part); };
    EXPECT_TRUE(model.SwingText(width));
    EXPECT_TRUE(model.SwingText(width));
    painter.Draw(m_picture.Context(), model, {});
    Picture expected;
    DrawEmpty(expected);
    const RECT row = { 0, 27, 258, 71 };
    FillRect(expected.Context(), &row, GetSysColorBrush(COLOR_HIGHLIGHT));
    Write(expected, WStringView(text).substr(2), { 45, 27, 190, 71 }, 14, DT_WORD_ELLIPSIS);
    Write(expected, text, { 45, 73, 190, 117 }, 14, DT_WORD_ELLIPSIS);
    EXPECT_EQ(Differences(m_picture, expected), 0);
}

TEST_F(SkinListDraw, MeasuresTheMainTextInFourteenPoints)
{
    SkinListPainter painter;
    const UniqueFont font = CreatePlainFont(m_picture.Context(), 14);
    const SelectedObject selected(m_picture.Context(), font.Get());
    RECT size = {};
    MeasureText(m_picture.Context(), TEXT("Song"), size);
    EXPECT_EQ(painter.MainTextWidth(m_picture.Context(), TEXT("Song")), size.right);
    EXPECT_EQ(painter.MainTextWidth(m_picture.Context(), {}), 0);
}

TEST_F(SkinListDraw, ACheckStateWithoutAPictureDrawsNothing)
{
    for (const std::int32_t state : { 2, 4, 7, 8, 100, -1, INT_MAX, INT_MIN }) {
        m_items = { ListItem({}, {}, state, state) };
        Draw(Model(SkinListMode::TwoChecks, 1));
        EXPECT_EQ(m_picture.Count(m_ground, { 0, 27, 258, 71 }), 258 * 44) << state;
    }
}

TEST_F(SkinListDraw, KeyedPixelsOfACheckBoxAreSeeThrough)
{
    m_skin.Device().WriteFile("user/Windows/gui_checkbox_check.gif", PlainGif(20, 20, kMagenta));
    m_items = { ListItem({}, {}, 1) };
    Draw(Model(SkinListMode::CheckedText, 1));
    EXPECT_EQ(m_picture.Count(m_ground, { 0, 27, 258, 71 }), 258 * 44);
}

TEST_F(SkinListDraw, WithoutPicturesOfCheckBoxesTheTextsAreThere)
{
    m_skin.Device().WriteFile("user/Windows/gui_checkbox_check.gif", "no picture");
    m_items = { ListItem(kSquares, {}, 1) };
    Draw(Model(SkinListMode::CheckedText, 1));
    EXPECT_EQ(m_picture.Count(m_ground, { 0, 27, 45, 71 }), 45 * 44);
    EXPECT_GT(m_picture.Count(kBlack565, { 45, 27, 190, 71 }), 50);
}

TEST_F(SkinListDraw, ThePicturesOfCheckBoxesAreLoadedOnceForAllLists)
{
    auto first = CheckBoxImages::Shared();
    EXPECT_EQ(CheckBoxImages::Shared(), first);
    m_skin.Device().WriteFile("user/Windows/gui_checkbox_check.gif", PlainGif(20, 20, kGreen));
    const auto colorOf = [](CheckBoxImages& images) {
        const Picture picture;
        images.Draw(picture.Context(), { 0, 0, 45, 44 }, 1);
        return picture.At(0, 0);
    };
    EXPECT_EQ(colorOf(*CheckBoxImages::Shared()), m_checked);
    first.reset(); // with the last list they go
    EXPECT_EQ(colorOf(*CheckBoxImages::Shared()), kGreen565);
}

TEST_F(SkinListDraw, ARowBehindTheLastItemIsEmpty)
{
    m_items.assign(6, ListItem(kSquares, TEXT("1:00"), 1));
    SkinListModel model = Model(SkinListMode::CheckedText, 6);
    model.PageDown();
    Draw(model);
    EXPECT_EQ(m_picture.At(0, 73), m_checked);
    EXPECT_EQ(m_picture.Count(m_ground, { 0, 119, 258, 163 }), 258 * 44);
    EXPECT_EQ(m_picture.Count(m_ground, { 0, 165, 258, 209 }), 258 * 44);
}

// ---- the whole window ----

TEST_F(SkinListDraw, TheWindowShowsGroundRowsAndButtons)
{
    m_items.assign(5, ListItem({}, {}, 1));
    Create(5);
    EXPECT_EQ(At(310, 10), m_ground);
    EXPECT_EQ(At(0, 27), m_checked);
    EXPECT_EQ(At(258, 26), m_scrollUpDisabled);
    EXPECT_EQ(At(319, 116), m_scrollUpDisabled);
    EXPECT_EQ(At(258, 117), m_scrollDown);
    EXPECT_EQ(At(319, 207), m_scrollDown);
    EXPECT_EQ(At(0, 208), m_key); // over the last pixel line of the fourth row
    EXPECT_EQ(At(319, 239), m_barGround);
    Command(kPageDown);
    ParentWindow::Pump();
    EXPECT_EQ(At(0, 27), m_checked);
    EXPECT_EQ(At(0, 73), m_ground);
    EXPECT_EQ(At(258, 26), m_scrollUp);
    EXPECT_EQ(At(258, 117), m_scrollDownDisabled);
}

TEST_F(SkinListDraw, ThePageIndicatorFollowsTheTitleAfterTwoBlanks)
{
    m_list.SetPageIndicator(SkinListPageIndicator::Shown);
    Create(9);
    Command(kPageDown);
    ParentWindow::Pump();
    CopyTitle(m_picture);
    const auto differences = [&] {
        const Picture now;
        CopyTitle(now);
        return Differences(now, m_picture);
    };
    m_list.SetPageIndicator(SkinListPageIndicator::Hidden);
    m_list.SetTitle(TEXT("Songs"));
    ParentWindow::Pump();
    EXPECT_NE(differences(), 0);
    m_list.SetTitle(TEXT("Songs  2/3"));
    ParentWindow::Pump();
    EXPECT_EQ(differences(), 0);
}

TEST_F(SkinListDraw, AnEmptyListIsPageOneOfOne)
{
    m_list.SetPageIndicator(SkinListPageIndicator::Shown);
    Create(0);
    CopyTitle(m_picture);
    EXPECT_GT(TitleInk(), 20);
    m_list.SetPageIndicator(SkinListPageIndicator::Hidden);
    m_list.SetTitle(TEXT("Songs  1/1"));
    ParentWindow::Pump();
    const Picture now;
    CopyTitle(now);
    EXPECT_EQ(Differences(now, m_picture), 0);
}

TEST_F(SkinListDraw, ATitleHasThirtyNineUnitsAtMost)
{
    Create(1, SkinListMode::Text, (WString(39, TEXT('i')) + WString(30, TEXT('\u25A0'))).c_str());
    const int cut = TitleInk();
    m_list.SetTitle(WString(39, TEXT('i')).c_str());
    ParentWindow::Pump();
    EXPECT_EQ(TitleInk(), cut);
    m_list.SetTitle(WString(38, TEXT('i')).c_str());
    ParentWindow::Pump();
    EXPECT_LT(TitleInk(), cut);
    m_list.SetTitle(nullptr);
    ParentWindow::Pump();
    EXPECT_EQ(TitleInk(), 0);
}

// A source that changes the count while the list is being painted.
class RestlessSource : public SkinListSource {
public:
    explicit RestlessSource(SkinListWnd& list) : m_list(list) { itemCount = 100; }
    const SkinListItem* ItemAt(std::int32_t) override
    {
        m_list.SetItemCount(++asked % 3 == 0 ? 1 : 7);
        return &m_item;
    }
    int asked = 0;

private:
    SkinListWnd& m_list;
    SkinListItem m_item = {};
};

TEST_F(SkinListDraw, ACountThatChangesDuringAPaintHarmsNothing)
{
    RestlessSource source(m_list);
    Prepare(m_list);
    m_list.SetItemSource(&source);
    m_list.SetItemCount(7);
    const HWND window = m_list.Create(m_owner.Get(), TEXT("Songs"), SkinListRedraw::AtOnce, kListId);
    ASSERT_NE(window, nullptr);
    TapRow(0);
    for (int i = 0; i < 5; ++i) {
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);
    }
    EXPECT_GT(source.asked, 5);
    EXPECT_EQ(At(0, 27), m_unchecked);
    m_list.SetItemSource(nullptr);
    m_list.SetItemCount(0);
}
