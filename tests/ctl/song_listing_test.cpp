#include "ctl/song_listing.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::ScratchDevice;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

class SongListing : public testing::Test {
protected:
    std::string Write(std::string_view option)
    {
        const auto form = std::ranges::find(ListingForms(), option, &ListingForm::option);
        if (form == ListingForms().end()) {
            ADD_FAILURE() << option;
            return {};
        }
        const std::unique_ptr<std::FILE, CloseFile> file(std::tmpfile());
        m_told = 0;
        EXPECT_TRUE(WriteSongs(file.get(), *form, [this](unsigned long songs) { m_told = songs; }));
        std::rewind(file.get());
        std::string text(100'000, '\0');
        text.resize(std::fread(text.data(), 1, text.size(), file.get()));
        return text;
    }
    void AddTitled(const std::string& name, std::string title)
    {
        title.resize(125);
        m_device.WriteFile("card/" + name, std::string(1000, 'x') + "TAG" + title);
    }
    std::string Card() const { return m_device.CardDirectory(); }

    ScratchDevice m_device;
    unsigned long m_told = 0;
};

TEST_F(SongListing, WritesPathLengthAndTitle)
{
    AddTitled("Music/One.MP3", "Yesterday");
    EXPECT_EQ(Write(""), Card() + "/Music/One.MP3\t0\tYesterday\n");
    EXPECT_EQ(Write("--json"), "{\"path\":\"" + Card() + "/Music/One.MP3\",\"length_ms\":0,\"title\":\"Yesterday\"}\n");
    EXPECT_EQ(m_told, 1U);
}

TEST_F(SongListing, ASongWithoutATitleIsCalledLikeItsFile)
{
    m_device.WriteFile("card/Two.Three.wma");
    EXPECT_EQ(Write(""), Card() + "/Two.Three.wma\t0\tTwo.Three\n");
}

TEST_F(SongListing, AnEmptyCardGivesNoLine)
{
    EXPECT_EQ(Write(""), "");
    EXPECT_EQ(m_told, 0U);
}

TEST_F(SongListing, WhatWouldBreakALineIsEscaped)
{
    AddTitled("a\tb.mp3", "c\td\\e\nf");
    EXPECT_EQ(Write(""), Card() + "/a\\tb.mp3\t0\tc\\td\\\\e\\nf\n");
    EXPECT_EQ(Write("--json"),
              "{\"path\":\"" + Card() + "/a\\u0009b.mp3\",\"length_ms\":0,\"title\":\"c\\u0009d\\\\e\\u000af\"}\n");
}

TEST_F(SongListing, QuotesAreEscapedInJson)
{
    AddTitled("a.mp3", "say \"a\"");
    EXPECT_NE(Write("--json").find("\"title\":\"say \\\"a\\\"\""), std::string::npos);
}

TEST_F(SongListing, ANameThatIsNoTextIsWrittenAsItIsButNotIntoJson)
{
    m_device.WriteFile("card/\xB8\xE8.mp3");
    EXPECT_EQ(Write(""), Card() + "/\xB8\xE8.mp3\t0\t\xEF\xBF\xBD\xEF\xBF\xBD\n");
    EXPECT_EQ(Write("--json"), "{\"path\":\"" + Card() +
                                   "/\xEF\xBF\xBD\xEF\xBF\xBD.mp3\",\"length_ms\":0,"
                                   "\"title\":\"\xEF\xBF\xBD\xEF\xBF\xBD\"}\n");
}

TEST_F(SongListing, ChineseTitlesAreUtf8)
{
    AddTitled("a.mp3", "\xB8\xE8\xC7\xFA");
    EXPECT_EQ(Write(""), Card() + "/a.mp3\t0\t\xE6\xAD\x8C\xE6\x9B\xB2\n");
}

TEST_F(SongListing, HasOneFormWithoutAnOptionAndItIsTheFirst)
{
    EXPECT_EQ(ListingForms().front().option, "");
    for (const ListingForm& form : ListingForms().subspan(1)) {
        EXPECT_TRUE(form.option.starts_with("--")) << form.option;
        EXPECT_FALSE(form.help.empty()) << form.option;
    }
}

TEST_F(SongListing, AFullDiskIsTold)
{
    m_device.WriteFile("card/a.mp3");
    const std::unique_ptr<std::FILE, CloseFile> full(std::fopen("/dev/full", "w"));
    ASSERT_TRUE(full);
    EXPECT_FALSE(WriteSongs(full.get(), ListingForms().front(), [](unsigned long) {}));
}

} // namespace
