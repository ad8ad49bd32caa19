// Every text of every string module in the place where it shows, measured in the font that the toolkit takes for it.
#include "common/string_table.h"
#include "gui/caption_text.h"
#include "tests/gui/window_fixture.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using namespace cardsong::test;

namespace {

constexpr LANGID kLanguages[] = { 0x0404, 0x0407, 0x0409, 0x040C, 0x0411, 0x0804, 0x0C0A };
constexpr int kEdgePx = 2; // what stays free on each side of a caption, besides the edges of its face

// Where a text shows: how many pixels a line has there, how many lines, and how many units the program reads.
struct Place {
    const char* name;
    int widthPx;
    int lines;
    std::size_t units;
};
constexpr Place kSoftKeyOfThree = { "soft key of three", 104 - 2 * kEdgePx, 1, 63 };
constexpr Place kSoftKeyOfFour = { "soft key of four", 77 - 2 * kEdgePx, 1, 63 };
constexpr Place kSoftKeyOfSix = { "soft key of six", 51 - 2 * kEdgePx, 1, 63 };
constexpr Place kAlertButton = { "alert button", 134 - 2 * kEdgePx, 1, 63 };
constexpr Place kAlertTitle = { "alert title", 256, 1, 63 };
constexpr Place kBoxTitle = { "title of the processing box", 61, 1, 63 };
constexpr Place kListTitle = { "list title", 300, 1, 39 };
constexpr Place kMessage = { "message", 250, 6, 99 };

struct Text {
    UINT id;
    Place place;
};
constexpr Text kTexts[] = {
    { 1001, kAlertButton },   { 1003, kAlertButton },    { 1004, kAlertButton },     { 1005, kAlertButton },
    { 1039, kMessage },       { 17001, kAlertTitle },    { 17002, kSoftKeyOfThree }, { 17003, kSoftKeyOfThree },
    { 17010, kListTitle },    { 17011, kListTitle },     { 17016, kSoftKeyOfSix },   { 17025, kSoftKeyOfSix },
    { 17028, kSoftKeyOfSix }, { 17029, kSoftKeyOfSix },  { 17030, kSoftKeyOfFour },  { 17031, kSoftKeyOfSix },
    { 17033, kSoftKeyOfSix }, { 17035, kSoftKeyOfFour }, { 17040, kAlertTitle },     { 17041, kMessage },
    { 17042, kMessage },      { 17043, kAlertTitle },    { 17044, kMessage },        { 17045, kBoxTitle },
    { 17046, kMessage },      { 17047, kAlertTitle },    { 17048, kMessage },        { 17049, kMessage },
    { 17050, kMessage },
};
// The page indicator of the longest list that anybody pages through stands behind a list's title.
constexpr WStringView kLongestPages = TEXT("  999/999");
constexpr int kLargestPoints = 14;

class SkinStringsFit : public testing::TestWithParam<LANGID> {
protected:
    SkinStringsFit()
    {
        auto tree = cardsong::kernel::CurrentDeviceTree();
        tree.systemDirectory = CARDSONG_DEVICE_TREE;
        tree.uiLanguage = GetParam();
        cardsong::kernel::InstallDeviceTree(tree);
        m_module = LoadStringModule();
        m_font = CreateCaptionFont(m_picture.Context(), kLargestPoints);
    }
    ~SkinStringsFit() override { FreeLibrary(m_module); }

    // Of the module alone: no text of the program's own stands in for it.
    WString Read(UINT id) const
    {
        std::array<WCHAR, 512> text = {};
        return WString(text.data(),
                       static_cast<std::size_t>(LoadStringW(m_module, id, text.data(), static_cast<int>(text.size()))));
    }
    int WidthOf(const WString& text) const
    {
        const SelectedObject font(m_picture.Context(), m_font.Get());
        RECT rect = {};
        MeasureText(m_picture.Context(), text.c_str(), rect);
        return rect.right;
    }
    // Every line of a message on its own: a text that is broken elsewhere leaves a word alone on its line.
    void ExpectLinesFit(const WString& text, const Place& place) const
    {
        int lines = 0;
        for (std::size_t start = 0; start <= text.size();) {
            const std::size_t end = std::min(text.find(u'\n', start), text.size());
            EXPECT_LE(WidthOf(text.substr(start, end - start)), place.widthPx) << "line " << lines;
            ++lines;
            start = end + 1;
        }
        EXPECT_LE(lines, place.lines);
    }

    ScratchDevice m_device;
    Picture m_picture;
    HMODULE m_module = nullptr;
    UniqueFont m_font;
};

std::string Utf8(const WString& text)
{
    std::array<char, 2048> bytes = {};
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes.data();
}

} // namespace

TEST_P(SkinStringsFit, EveryTextIsThereAndFitsItsPlace)
{
    ASSERT_NE(m_module, nullptr);
    for (const auto& [id, place] : kTexts) {
        WString text = Read(id);
        SCOPED_TRACE(std::to_string(id) + ", " + place.name + ": " + Utf8(text));
        EXPECT_FALSE(text.empty());
        EXPECT_LE(text.size(), place.units);
        if (place.units == kListTitle.units)
            text += kLongestPages;
        ExpectLinesFit(text, place);
    }
}

// The font is one for Chinese: it draws typographic quotes and dots as wide as an ideograph.
class LatinStrings : public SkinStringsFit {};

TEST_P(LatinStrings, UsePlainMarks)
{
    for (const auto& [id, place] : kTexts) {
        for (const WCHAR unit : Read(id))
            EXPECT_LT(unit, 0x2000) << id;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, SkinStringsFit, testing::ValuesIn(kLanguages),
                         [](const auto& language) { return "Language" + std::to_string(language.param); });
INSTANTIATE_TEST_SUITE_P(Languages, LatinStrings, testing::Values(0x0407, 0x0409, 0x040C, 0x0C0A),
                         [](const auto& language) { return "Language" + std::to_string(language.param); });
