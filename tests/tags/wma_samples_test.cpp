// The WMA files of tests/data/wma: what real songs give, what hostile files give, and every beginning of all of them.
#include "tags/wma_info.h"
#include "tests/tags/beginnings.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ForEveryBeginning;
using cardsong::test::Sample;

struct Expected {
    const char* name;
    int result;
    std::int64_t duration;
    std::size_t titleUnits;
    std::uint32_t trackNumber; // 99 when the file has none
};

constexpr std::int64_t kSeven = 70'000'000;
constexpr Expected kFiles[] = {
    { "tagged", 0, 3'240'000, 4, 0 },
    { "untagged", 0, 3'240'000, 0, 99 },
    { "object_of_no_size", -1, kSeven, 0, 99 },
    { "object_smaller_than_its_header", -1, kSeven, 0, 99 },
    { "object_past_the_end", -1, kSeven, 4, 99 },
    { "large_object_before_data", -1, kSeven, 0, 99 },
    { "large_object_before_properties", -1, 0, 0, 99 },
    { "object_of_the_largest_size", 0, kSeven, 0, 99 },
    { "data_object_of_no_size", 0, kSeven, 0, 99 },
    { "data_object_cut_short", -1, kSeven, 0, 99 },
    { "properties_cut_short", -1, 0, 0, 99 },
    { "title_longer_than_its_object", -1, kSeven, 0, 99 },
    { "title_longer_than_its_field", 0, kSeven, 480, 99 },
    { "title_of_odd_bytes", 0, kSeven, 1, 99 },
    { "more_descriptors_than_there_are", -1, kSeven, 0, 5 },
    { "value_longer_than_its_object", -1, 0, 0, 5 },
    { "name_longer_than_its_object", -1, 0, 0, 99 },
    { "nothing_but_empty_objects", -1, 0, 0, 99 },
    { "header_only", -1, 0, 0, 99 },
    { "not_this_format", -1, 0, 0, 99 },
    { "nothing", -1, 0, 0, 99 },
};

std::unique_ptr<WmaInfo> Cleared()
{
    auto info = std::make_unique<WmaInfo>();
    info->trackNumber = 99;
    return info;
}

TEST(WmaSamples, EachFileGivesTheDocumentedResult)
{
    for (const Expected& expected : kFiles) {
        SCOPED_TRACE(expected.name);
        const Bytes bytes = Sample(std::string("wma/") + expected.name + ".wma");
        const auto info = Cleared();
        MemorySource source(bytes);
        EXPECT_EQ(ReadWmaInfo(source, *info), expected.result);
        EXPECT_EQ(info->duration, expected.duration);
        EXPECT_EQ(WStringView(info->title).size(), expected.titleUnits);
        EXPECT_EQ(info->trackNumber, expected.trackNumber);
    }
}

TEST(WmaSamples, TheTextsOfAnEncoderAreRead)
{
    const Bytes bytes = Sample("wma/tagged.wma");
    const auto info = Cleared();
    MemorySource source(bytes);
    ASSERT_EQ(ReadWmaInfo(source, *info), 0);
    EXPECT_EQ(WString(info->title), TEXT("Song"));
    EXPECT_EQ(WString(info->author), TEXT("Singer"));
    EXPECT_EQ(WString(info->rights), TEXT("none"));
    EXPECT_EQ(WString(info->description), TEXT(""));
    EXPECT_EQ(WString(info->album), TEXT("Album"));
    EXPECT_EQ(info->fileBytes, bytes.size());
}

TEST(WmaSamples, TheAuthorBehindATitleOfOddBytesIsRead)
{
    const Bytes bytes = Sample("wma/title_of_odd_bytes.wma");
    const auto info = Cleared();
    MemorySource source(bytes);
    ReadWmaInfo(source, *info);
    EXPECT_EQ(WString(info->title), TEXT("A"));
    EXPECT_EQ(WString(info->author), TEXT("B"));
}

TEST(WmaSamples, EveryBeginningIsReadOrRefused)
{
    for (const Expected& file : kFiles) {
        const Bytes whole = Sample(std::string("wma/") + file.name + ".wma");
        bool reached = false;
        ForEveryBeginning(whole, [&](MemorySource& source, std::size_t sizeBytes) {
            const auto info = Cleared();
            const int result = ReadWmaInfo(source, *info);
            ASSERT_TRUE(result == 0 || result == -1) << file.name << ' ' << sizeBytes;
            ASSERT_FALSE(reached && result != 0) << file.name << ": more bytes must not lose the Data Object";
            reached = result == 0;
        });
    }
}

} // namespace
