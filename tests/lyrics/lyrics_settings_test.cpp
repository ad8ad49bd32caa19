#include "lyrics/lyrics_settings.h"

#include "lyrics/settings_texts.h"
#include "tests/lyrics/settings_key.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

class LyricsSettingsTest : public ::testing::Test {
protected:
    ScratchDevice device;
    SettingsKey key;
};

TEST_F(LyricsSettingsTest, AFreshDeviceGetsEveryDefaultButTheRectangle)
{
    const LyricsSettings settings = LoadLyricsSettings();
    EXPECT_EQ(Utf8(settings.folder), "\\My Documents\\Lyrics");
    EXPECT_EQ(settings.playColor, 0U);
    EXPECT_EQ(settings.nextColor, 0x0000FFU);
    EXPECT_EQ(settings.backgroundColor, 0xFF0000U);
    EXPECT_EQ(settings.isTransparent, 1U);
    EXPECT_FALSE(settings.detectsUtf8);

    EXPECT_EQ(key.Text("Lyrics Path"), "\\My Documents\\Lyrics");
    EXPECT_EQ(key.Text("Play Color"), "RGB(0,0,0)");
    EXPECT_EQ(key.Text("Next Color"), "RGB(255,0,0)");
    EXPECT_EQ(key.Text("Lyrics Back Ground Color"), "RGB(0,0,255)");
    EXPECT_EQ(key.Number("Lyrics Transparent"), 1);
    EXPECT_EQ(key.Text("Lyrics Rect"), "(missing)");
    EXPECT_EQ(key.Number("Lyrics UTF-8"), SettingsKey::kMissing);
}

TEST_F(LyricsSettingsTest, WhatIsThereIsRead)
{
    key.SetText("Lyrics Path", "\\SDMMC\\Words");
    key.SetText("Play Color", "rgb( 10 , 20 , 30 )");
    key.SetText("Next Color", "RGB(300,0,0)");
    key.SetText("Lyrics Back Ground Color", "RGB(1,2,3)");
    key.SetNumber("Lyrics Transparent", 0);
    key.SetNumber("Lyrics UTF-8", 1);
    const LyricsSettings settings = LoadLyricsSettings();
    EXPECT_EQ(Utf8(settings.folder), "\\SDMMC\\Words");
    EXPECT_EQ(settings.playColor, 0x1E140AU);
    EXPECT_EQ(settings.nextColor, 44U);
    EXPECT_EQ(settings.backgroundColor, 0x030201U);
    EXPECT_EQ(settings.isTransparent, 0U);
    EXPECT_TRUE(settings.detectsUtf8);
    EXPECT_EQ(key.Text("Play Color"), "rgb( 10 , 20 , 30 )") << "it stays as it was";
}

TEST_F(LyricsSettingsTest, AColorThatMeansNothingIsNoneAndStaysWritten)
{
    key.SetText("Play Color", "RGB(1,2)");
    key.SetText("Next Color", "");
    const LyricsSettings settings = LoadLyricsSettings();
    EXPECT_EQ(settings.playColor, kNoColor);
    EXPECT_EQ(settings.nextColor, kNoColor);
    EXPECT_EQ(key.Text("Play Color"), "RGB(1,2)");
    EXPECT_EQ(key.Text("Next Color"), "");
}

TEST_F(LyricsSettingsTest, ATextLongerThanItCanBeIsReplacedByItsDefault)
{
    key.SetText("Play Color", "RGB(1,2,3)" + std::string(19, ' ')); // 30 with its zero
    EXPECT_EQ(LoadLyricsSettings().playColor, 0x030201U);
    key.SetText("Play Color", "RGB(1,2,3)" + std::string(20, ' '));
    EXPECT_EQ(LoadLyricsSettings().playColor, 0U);
    EXPECT_EQ(key.Text("Play Color"), "RGB(0,0,0)");

    key.SetText("Lyrics Path", std::string(259, 'a'));
    EXPECT_EQ(Utf8(LoadLyricsSettings().folder), std::string(259, 'a'));
    key.SetText("Lyrics Path", std::string(260, 'a'));
    EXPECT_EQ(Utf8(LoadLyricsSettings().folder), "\\My Documents\\Lyrics");
}

TEST_F(LyricsSettingsTest, AFlagThatIsNoNumberBecomesOne)
{
    key.SetText("Lyrics Transparent", "none");
    EXPECT_EQ(LoadLyricsSettings().isTransparent, 1U);
    EXPECT_EQ(key.Number("Lyrics Transparent"), 1);
}

TEST_F(LyricsSettingsTest, BytesWithoutAZeroAreReadWithinTheirRoom)
{
    key.SetBytes("Play Color", std::string(60, '\x31')); // 30 units of U+3131
    EXPECT_EQ(LoadLyricsSettings().playColor, kNoColor);
    key.SetBytes("Lyrics Path", std::string(520, '\x31'));
    EXPECT_EQ(LoadLyricsSettings().folder.size(), 260U);
}

TEST_F(LyricsSettingsTest, Utf8IsLookedForWhenTheNumberIsNotZero)
{
    key.SetNumber("Lyrics UTF-8", 0);
    EXPECT_FALSE(LoadLyricsSettings().detectsUtf8);
    key.SetNumber("Lyrics UTF-8", 2);
    EXPECT_TRUE(LoadLyricsSettings().detectsUtf8);
    key.SetText("Lyrics UTF-8", "yes, do");
    EXPECT_FALSE(LoadLyricsSettings().detectsUtf8);
}

TEST_F(LyricsSettingsTest, TheRectangleIsWrittenWhenItIsAskedFor)
{
    RECT rect = LoadLyricsRect();
    EXPECT_EQ(Utf8(RectText(rect)), "RECT(30,3,210,23)");
    EXPECT_EQ(key.Text("Lyrics Rect"), "RECT(30, 3, 210, 23)");
    key.SetText("Lyrics Rect", "RECT(1,2,3,4)");
    EXPECT_EQ(Utf8(RectText(LoadLyricsRect())), "RECT(1,2,3,4)");
    key.SetText("Lyrics Rect", "nothing");
    EXPECT_EQ(Utf8(RectText(LoadLyricsRect())), "RECT(0,0,0,0)");
}

TEST_F(LyricsSettingsTest, SavedSettingsAreReadBack)
{
    const LyricsSettings saved = { TEXT("\\SDMMC\\Words"), RGB(1, 2, 3), RGB(4, 5, 6), RGB(7, 8, 9), 0, true };
    SaveLyricsSettings(saved, { 1, 2, 250, 70 });
    EXPECT_EQ(key.Text("Lyrics Path"), "\\SDMMC\\Words");
    EXPECT_EQ(key.Text("Play Color"), "RGB(1,2,3)");
    EXPECT_EQ(key.Text("Next Color"), "RGB(4,5,6)");
    EXPECT_EQ(key.Text("Lyrics Back Ground Color"), "RGB(7,8,9)");
    EXPECT_EQ(key.Number("Lyrics Transparent"), 0);
    EXPECT_EQ(key.Text("Lyrics Rect"), "RECT(1,2,250,70)");
    EXPECT_EQ(key.Number("Lyrics UTF-8"), SettingsKey::kMissing) << "it is the user's";
    const LyricsSettings read = LoadLyricsSettings();
    EXPECT_EQ(read.folder, saved.folder);
    EXPECT_EQ(read.backgroundColor, saved.backgroundColor);
    EXPECT_EQ(read.isTransparent, 0U);
}

TEST_F(LyricsSettingsTest, EachSaverWritesItsOwnValuesOnly)
{
    SaveLyricsFolder(TEXT("\\a"));
    EXPECT_EQ(key.Text("Lyrics Path"), "\\a");
    EXPECT_EQ(key.Text("Play Color"), "(missing)");
    EXPECT_EQ(key.Text("Lyrics Rect"), "(missing)");
    SaveLyricsRect({ 1, 2, 3, 4 });
    EXPECT_EQ(key.Text("Lyrics Rect"), "RECT(1,2,3,4)");
    EXPECT_EQ(key.Text("Play Color"), "(missing)");
    SaveLyricsColors(1, 2, 3, 1);
    EXPECT_EQ(key.Text("Play Color"), "RGB(1,0,0)");
    EXPECT_EQ(key.Text("Next Color"), "RGB(2,0,0)");
    EXPECT_EQ(key.Text("Lyrics Back Ground Color"), "RGB(3,0,0)");
    EXPECT_EQ(key.Number("Lyrics Transparent"), 1);
    EXPECT_EQ(key.Text("Lyrics Path"), "\\a");
}

} // namespace
