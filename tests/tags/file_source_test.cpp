#include "tags/file_source.h"

#include "common/file_stream.h"
#include "tests/platform/scratch_device.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::ScratchDevice;

// `count` bytes, each telling its offset.
std::string Counted(std::size_t count)
{
    std::string text(count, 0);
    for (std::size_t i = 0; i < count; ++i)
        text[i] = static_cast<char>(i % 251);
    return text;
}

struct OpenedFile {
    explicit OpenedFile(const std::string& contents)
    {
        device.WriteFile("user/scratch/file.bin", contents);
        file = OpenForReading(device.Path(TEXT("file.bin")).c_str());
    }
    ScratchDevice device;
    UniqueFileStream file;
};

std::string Read(ByteSource& source, std::uint64_t offset, std::size_t count)
{
    std::string text(count, 0);
    text.resize(source.ReadAt(offset, std::as_writable_bytes(std::span(text))));
    return text;
}

TEST(FileSource, ReadsAtEveryOffsetWhatTheFileHolds)
{
    const std::string contents = Counted(20'000);
    OpenedFile opened(contents);
    ASSERT_TRUE(opened.file);
    FileSource source(opened.file.Get());
    EXPECT_EQ(source.SizeBytes(), 20'000u);
    for (const std::size_t offset : { 0U, 1U, 4000U, 4085U, 4086U, 4087U, 4095U, 4096U, 4097U, 12'000U, 5U, 19'870U,
                                      19'872U, 19'985U, 19'990U, 19'999U })
        EXPECT_EQ(Read(source, offset, 10), contents.substr(offset, 10)) << offset;
    EXPECT_EQ(Read(source, 0, 20'001), contents);
}

TEST(FileSource, ReadsNothingPastTheEnd)
{
    OpenedFile opened(Counted(100));
    ASSERT_TRUE(opened.file);
    FileSource source(opened.file.Get());
    EXPECT_EQ(Read(source, 100, 10), "");
    EXPECT_EQ(Read(source, ~std::uint64_t{ 0 }, 10), "");
    EXPECT_EQ(Read(source, 90, 20), Counted(100).substr(90));
}

TEST(FileSource, AnEmptyFileHasNoBytes)
{
    OpenedFile opened("");
    ASSERT_TRUE(opened.file);
    FileSource source(opened.file.Get());
    EXPECT_EQ(source.SizeBytes(), 0u);
    EXPECT_EQ(Read(source, 0, 1), "");
}

} // namespace
