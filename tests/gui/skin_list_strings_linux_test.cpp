// Title and captions of a skinned list out of the string modules: the language is set the way the host room sets it.
#include "common/string_table.h"
#include "platform/device_tree.h"
#include "tests/gui/skin_list_fixture.h"

using namespace cardsong::test;

namespace {

constexpr UINT kPlayListString = 17010;
constexpr UINT kProgramsOwnString = 201; // no module has it

class SkinListStrings : public SkinListTest {
protected:
    SkinListStrings() { UseLanguage(0x0404); }
    ~SkinListStrings() override { g_hInstance = m_instanceBefore; }
    static void UseLanguage(LANGID language)
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.uiLanguage = language;
        cardsong::kernel::InstallDeviceTree(tree);
        g_hInstance = cardsong::kernel::ProgramInstance();
    }
    void CreateWithStrings(SkinListRedraw redraw = SkinListRedraw::AtOnce)
    {
        const ButtonCaption captions[] = { { nullptr, kPlayListString, 12, 0 },
                                           { nullptr, kProgramsOwnString, 12, 0 },
                                           { TEXT("Go"), 0, 12, 0 } };
        Prepare(m_list);
        m_list.SetSoftKeys(4, kListKeys, captions);
        m_list.Create(m_owner.Get(), TEXT("Songs"), redraw, kListId);
        m_list.SetTitleString(kPlayListString);
        ParentWindow::Pump();
    }
    WString CaptionOf(UINT id) { return m_list.SoftKeys().Find(id)->Caption(); }
    // Whether the window's title is drawn as `text` is.
    bool IsTitle(LPCWSTR text)
    {
        const Picture shown;
        CopyTitle(shown);
        m_list.SetTitle(text);
        ParentWindow::Pump();
        const Picture expected;
        CopyTitle(expected);
        int differences = 0;
        for (int y = 0; y < 26; ++y)
            for (int x = 0; x < 300; ++x)
                differences += shown.At(x, y) != expected.At(x, y) ? 1 : 0;
        return differences == 0;
    }

private:
    HINSTANCE m_instanceBefore = g_hInstance;
};

} // namespace

TEST_F(SkinListStrings, TitleAndCaptionsAreReadFromTheModuleOfTheLanguage)
{
    CreateWithStrings();
    EXPECT_EQ(CaptionOf(16), TEXT("播放清單"));
    EXPECT_EQ(CaptionOf(33), TEXT("Go"));
    EXPECT_TRUE(IsTitle(TEXT("播放清單")));
    EXPECT_FALSE(IsTitle(TEXT("播放列表")));
}

TEST_F(SkinListStrings, AStringThatTheModuleLacksIsTheProgramsOwn)
{
    CreateWithStrings();
    EXPECT_EQ(CaptionOf(29), TEXT("Playlist"));
    m_list.SetTitleString(kProgramsOwnString);
    ParentWindow::Pump();
    EXPECT_TRUE(IsTitle(TEXT("Playlist")));
}

TEST_F(SkinListStrings, WithoutAModuleTheTitleIsTheProgramsOwn)
{
    UseLanguage(0x0407);
    CreateWithStrings();
    m_list.SetTitleString(kProgramsOwnString);
    ParentWindow::Pump();
    EXPECT_TRUE(IsTitle(TEXT("Playlist")));
}

TEST_F(SkinListStrings, AfterAChangeOfLanguageTitleAndCaptionsAreReadAgain)
{
    CreateWithStrings();
    UseLanguage(0x0804);
    m_list.LanguageChanged();
    ParentWindow::Pump();
    EXPECT_EQ(CaptionOf(16), TEXT("播放列表"));
    EXPECT_EQ(CaptionOf(33), TEXT("Go"));
    EXPECT_TRUE(IsTitle(TEXT("播放列表")));
}

TEST_F(SkinListStrings, AfterAChangeOfLanguageATitleThatIsNoStringStays)
{
    CreateWithStrings();
    m_list.SetTitle(TEXT("Mine"));
    UseLanguage(0x0804);
    m_list.LanguageChanged();
    ParentWindow::Pump();
    EXPECT_TRUE(IsTitle(TEXT("Mine")));
}

TEST_F(SkinListStrings, AChangeOfLanguageKeepsPageAndCount)
{
    CreateWithStrings();
    m_list.SetItemCount(9);
    Command(kPageDown);
    UseLanguage(0x0409);
    m_list.LanguageChanged();
    EXPECT_EQ(m_list.CurrentPage(), 2);
    EXPECT_EQ(m_list.PageCount(), 3);
    EXPECT_TRUE(IsEnabled(40));
}

TEST_F(SkinListStrings, AReloadedTitleFollowsItsString)
{
    CreateWithStrings();
    ParentWindow::Pump();
    m_list.ReloadTitle();
    EXPECT_EQ(TakeUpdate().right, 300);
    EXPECT_TRUE(IsTitle(TEXT("播放清單")));
}

TEST_F(SkinListStrings, AfterAChangeOfLanguageTheWholeListIsPaintedAnew)
{
    CreateWithStrings(SkinListRedraw::ByOwner); // whoever repaints otherwise
    UseLanguage(0x0409);
    ParentWindow::Pump();
    m_list.LanguageChanged();
    const RECT update = TakeUpdate();
    EXPECT_EQ(update.right, 320);
    EXPECT_EQ(update.bottom, 240);
}

TEST_F(SkinListStrings, ANewTextForgetsTheString)
{
    CreateWithStrings();
    m_list.SetTitle(TEXT("Mine"));
    m_list.ReloadTitle();
    ParentWindow::Pump();
    EXPECT_TRUE(IsTitle(TEXT("Mine")));
}
