// docs/formats/lrc.md says what the player makes of each text in tests/lyrics/texts, and it is true.
#include "lyrics/lyrics_context.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

namespace {

using cardsong::test::Lines;
using cardsong::test::LinesOf;
using cardsong::test::Wide;

const std::filesystem::path kRoot = CARDSONG_SOURCE_DIR;

std::string Contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

// A block of the page: "```lyrics FILE CASE", and a row "TIME TEXT" for each line.
struct Example {
    std::string file; // from the root
    std::string how;  // en, zh-TW, zh-CN, utf8
    Lines lines;
};

std::vector<Example> ExamplesOfPage()
{
    std::istringstream page(Contents(kRoot / "docs/formats/lrc.md"));
    std::vector<Example> examples;
    bool isInside = false;
    for (std::string row; std::getline(page, row);) {
        if (row.ends_with('\r'))
            row.pop_back();
        std::istringstream words(row);
        if (row.starts_with("```lyrics ")) {
            Example& example = examples.emplace_back();
            words >> example.file >> example.file >> example.how;
            isInside = true;
        } else if (row.starts_with("```")) {
            isInside = false;
        } else if (isInside) {
            const std::size_t blank = row.find(' ');
            examples.back().lines.emplace_back(std::stoi(row), row.substr(blank + 1));
        }
    }
    return examples;
}

Lines Played(const Example& example)
{
    const std::map<std::string, LANGID> languages = {
        { "en", 1033 }, { "zh-TW", 1028 }, { "zh-CN", 2052 }, { "utf8", 1033 }
    };
    const std::string text = Contents(kRoot / example.file);
    LyricsBytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    LyricsContext context(languages.at(example.how));
    context.SetSongPath(Wide("\\SDMMC\\Song.mp3"));
    context.SetUtf8Detection(example.how == "utf8" ? Utf8Detection::On : Utf8Detection::Off);
    context.LoadBytes(bytes, kDetectCodePage);
    return LinesOf(context.Lines());
}

TEST(LrcPage, SaysWhatThePlayerMakesOfEachText)
{
    for (const Example& example : ExamplesOfPage())
        EXPECT_EQ(Played(example), example.lines) << example.file << " " << example.how;
}

TEST(LrcPage, NamesEveryText)
{
    std::set<std::string> named;
    for (const Example& example : ExamplesOfPage())
        named.insert(std::filesystem::path(example.file).filename().string());
    std::set<std::string> there;
    for (const auto& entry : std::filesystem::directory_iterator(kRoot / "tests/lyrics/texts"))
        there.insert(entry.path().filename().string());
    EXPECT_EQ(named, there);
    EXPECT_GE(there.size(), 15U);
}

} // namespace
