// Captions out of the string modules, in more than one language: the language is set the way the host room sets it.
#include "common/string_table.h"
#include "gui/caption_text.h"
#include "gui/soft_key_bar.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <vector>

using namespace cardsong::test;

namespace {

constexpr UINT kId = 77;
constexpr RECT kPlace = { 30, 40, 50, 52 };

// A device in a language of choice, with the string modules that ship with it.
class SkinButtonStrings : public testing::Test {
protected:
    SkinButtonStrings() { UseLanguage(0x0404); }
    ~SkinButtonStrings() override
    {
        FreeLibrary(m_module);
        g_hInstance = m_instanceBefore;
    }
    void UseLanguage(LANGID language)
    {
        FreeLibrary(m_module);
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.uiLanguage = language;
        cardsong::kernel::InstallDeviceTree(tree);
        g_hInstance = cardsong::kernel::ProgramInstance();
        m_module = LoadStringModule();
    }

    ScratchDevice m_device;
    ParentWindow m_parent;
    SkinButton m_button;
    HINSTANCE m_instanceBefore = g_hInstance;
    HMODULE m_module = nullptr;
};

} // namespace

TEST_F(SkinButtonStrings, ACaptionWithoutATextIsReadFromTheModule)
{
    const ButtonCaption caption = { nullptr, 17003, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), m_module, kId, kPlace, &caption, nullptr));
    EXPECT_EQ(WString(m_button.Caption()), TEXT("播放清單"));
}

TEST_F(SkinButtonStrings, ATextWinsOverAString)
{
    const ButtonCaption caption = { TEXT("Go"), 17003, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), m_module, kId, kPlace, &caption, nullptr));
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Go"));
}

TEST_F(SkinButtonStrings, ACaptionThatTheModuleLacksIsTheProgramsOwn)
{
    const ButtonCaption caption = { nullptr, 201, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), m_module, kId, kPlace, &caption, nullptr));
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Playlist"));
    m_button.SetCaption({ nullptr, 200, 0, 0 });
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Back"));
    UseLanguage(0x0407);
    m_button.SetStringModule(m_module);
    m_button.ReloadCaption();
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Back"));
}

TEST_F(SkinButtonStrings, ACaptionThatTheProgramLacksTooIsEmpty)
{
    const ButtonCaption caption = { nullptr, 4242, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), m_module, kId, kPlace, &caption, nullptr));
    EXPECT_EQ(m_button.Caption()[0], 0);
}

TEST_F(SkinButtonStrings, WithoutAModuleNoStringIsRead)
{
    const ButtonCaption caption = { nullptr, 201, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), nullptr, kId, kPlace, &caption, nullptr));
    EXPECT_EQ(m_button.Caption()[0], 0);
}

TEST_F(SkinButtonStrings, AStringIdOfZeroOrLessIsNone)
{
    for (const int id : { 0, -5 }) {
        m_button.SetStringModule(m_module);
        m_button.SetCaption({ nullptr, id, 0, 0 });
        EXPECT_EQ(m_button.Caption()[0], 0);
        m_button.ReloadCaption();
        EXPECT_EQ(m_button.Caption()[0], 0);
    }
}

TEST_F(SkinButtonStrings, AfterAChangeOfLanguageTheCaptionIsReadAgain)
{
    const ButtonCaption caption = { nullptr, 17003, 12, 0 };
    ASSERT_TRUE(m_button.Create(m_parent.Get(), m_module, kId, kPlace, &caption, nullptr));
    UseLanguage(0x0409);
    m_button.SetStringModule(m_module);
    ParentWindow::Pump();
    ValidateRect(m_button.Window(), nullptr);
    m_button.ReloadCaption();
    EXPECT_EQ(WString(m_button.Caption()), ReadString(m_module, 17003));
    EXPECT_NE(WString(m_button.Caption()), TEXT("播放清單"));
    EXPECT_TRUE(GetUpdateRect(m_button.Window(), nullptr, FALSE));
}

TEST_F(SkinButtonStrings, ReloadingKeepsATextThatIsNoString)
{
    m_button.SetStringModule(m_module);
    m_button.SetCaption({ TEXT("Go"), 0, 0, 0 });
    m_button.ReloadCaption();
    EXPECT_EQ(WString(m_button.Caption()), TEXT("Go"));
}

TEST_F(SkinButtonStrings, OnlyChineseFollowsTheSizeOfTheCaption)
{
    const auto textHeight = [](int points) {
        const Picture picture;
        CaptionFont font;
        const SelectedObject selected(picture.Context(), font.Get(picture.Context(), points));
        TEXTMETRICW metrics = {};
        GetTextMetricsW(picture.Context(), &metrics);
        return metrics.tmHeight;
    };
    EXPECT_GT(textHeight(24), textHeight(12));
    UseLanguage(0x0409);
    EXPECT_EQ(textHeight(24), textHeight(12));
}

TEST_F(SkinButtonStrings, AFontInTheCacheFollowsLanguageAndSize)
{
    const Picture picture;
    CaptionFont font;
    const auto heightOf = [&](int points) {
        const SelectedObject selected(picture.Context(), font.Get(picture.Context(), points));
        TEXTMETRICW metrics = {};
        GetTextMetricsW(picture.Context(), &metrics);
        return metrics.tmHeight;
    };
    const LONG small = heightOf(12);
    const LONG large = heightOf(30);
    EXPECT_GT(large, small);
    UseLanguage(0x0409);
    EXPECT_LT(heightOf(30), large);
}

TEST_F(SkinButtonStrings, OfABarAreReadAgainForOneButtonOrAll)
{
    const HMODULE module = LoadLibraryExW(TEXT("TAVO_StringTable_0404.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    const std::vector<ButtonCaption> captions(3, { nullptr, 17003, 12, 0 });
    constexpr int ids[] = { 18, 24, 22 };
    SoftKeyBar bar;
    ASSERT_TRUE(bar.Create(m_parent.Get(), nullptr, 3, ids, captions)); // without a module: no texts yet
    EXPECT_EQ(bar.Buttons()[1].Caption()[0], 0);
    bar.ReloadCaption(24, module);
    EXPECT_EQ(bar.Buttons()[0].Caption()[0], 0);
    EXPECT_EQ(WString(bar.Buttons()[1].Caption()), TEXT("播放清單"));
    bar.SetCaptions(std::vector<ButtonCaption>(3, { TEXT("x"), 17003, 0, 0 }));
    bar.ReloadCaption(0, module);
    for (const SkinButton& button : bar.Buttons())
        EXPECT_EQ(WString(button.Caption()), TEXT("播放清單"));
    FreeLibrary(module);
}
