#include "lyrics/lrc_groups.h"

#include "tests/lyrics/lyric_lines.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Utf8;
using cardsong::test::Wide;

struct Group {
    std::vector<std::int32_t> timesMs;
    std::string text;

    bool operator==(const Group&) const = default;
};

std::vector<Group> GroupsOf(std::string_view ascii)
{
    const WString text = Wide(ascii);
    std::vector<Group> groups;
    LrcGroups reader(text);
    for (LrcGroup group; reader.Next(group);)
        groups.push_back({ group.timesMs, Utf8(group.text) });
    return groups;
}

using Groups = std::vector<Group>;

TEST(LrcGroups, ATagAndTheTextBehindItAreAGroup)
{
    EXPECT_EQ(GroupsOf("[00:12.34]Hello"), (Groups{ { { 12'340 }, "Hello" } }));
}

TEST(LrcGroups, TagsInFrontOfOneTextAreOneGroup)
{
    EXPECT_EQ(GroupsOf("[00:05.00][00:01.00]Chorus[00:02]X"),
              (Groups{ { { 5000, 1000 }, "Chorus" }, { { 2000 }, "X" } }));
}

TEST(LrcGroups, OtherTagsAreSkipped)
{
    EXPECT_EQ(GroupsOf("[ti:Song][offset:500][][00:10.00]X"), (Groups{ { { 10'000 }, "X" } }));
}

TEST(LrcGroups, LinesMeanNothing)
{
    EXPECT_EQ(GroupsOf("[00:01]one\r\ntwo\tthree\n\n[00:02]\x1F four \x7F"),
              (Groups{ { { 1000 }, "onetwothree" }, { { 2000 }, " four \x7F" } }));
}

TEST(LrcGroups, ALineEndBetweenTagsPartsThem)
{
    EXPECT_EQ(GroupsOf("[ti:Song]\n[00:01]a"), (Groups{ { {}, "" }, { { 1000 }, "a" } }));
}

TEST(LrcGroups, TextBeforeTheFirstTagHasNoTime)
{
    EXPECT_EQ(GroupsOf("LYRICSBEGIN[00:01]a"), (Groups{ { {}, "LYRICSBEGIN" }, { { 1000 }, "a" } }));
}

TEST(LrcGroups, TagsAtTheEndHaveNoText)
{
    EXPECT_EQ(GroupsOf("[00:01]a[00:02]"), (Groups{ { { 1000 }, "a" }, { { 2000 }, "" } }));
}

TEST(LrcGroups, ATagWithoutItsEndEndsTheText)
{
    EXPECT_EQ(GroupsOf("[00:01]a[00:02]b[00:03"), (Groups{ { { 1000 }, "a" }, { { 2000 }, "b" } }));
    EXPECT_EQ(GroupsOf("[00:01]a[00:02][00:03"), (Groups{ { { 1000 }, "a" } })) << "the tag before it goes, too";
    EXPECT_EQ(GroupsOf("["), Groups{});
}

TEST(LrcGroups, ATagEndsAtTheFirstBracketBehindIt)
{
    EXPECT_EQ(GroupsOf("[[00:01]a"), (Groups{ { {}, "a" } })) << "the tag is \"[00:01\"";
    EXPECT_EQ(GroupsOf("[00:01]]a"), (Groups{ { { 1000 }, "]a" } }));
    EXPECT_EQ(GroupsOf("]"), (Groups{ { {}, "]" } }));
}

TEST(LrcGroups, NoTextHasNoGroups)
{
    EXPECT_EQ(GroupsOf(""), Groups{});
}

TEST(LrcGroups, StampsOfWordsStayText)
{
    EXPECT_EQ(GroupsOf("[00:01]<00:01.00>Twin<00:01.50>kle"), (Groups{ { { 1000 }, "<00:01.00>Twin<00:01.50>kle" } }));
}

} // namespace
