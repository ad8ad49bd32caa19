#include "common/file_stream.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using cardsong::test::ScratchDevice;

TEST(OpenForReading, OpensAFileAtItsFirstByte)
{
    ScratchDevice device;
    device.WriteFile("user/scratch/song.mp3", "a\r\nb");
    const UniqueFileStream file = OpenForReading(device.Path(TEXT("song.mp3")).c_str());
    ASSERT_TRUE(file);
    std::string bytes(5, 0);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.Get()));
    EXPECT_EQ(bytes, "a\r\nb");
}

TEST(OpenForReading, OfNoPathOrNoFileIsNone)
{
    ScratchDevice device;
    EXPECT_FALSE(OpenForReading(nullptr));
    EXPECT_FALSE(OpenForReading(device.Path(TEXT("missing.mp3")).c_str()));
}

} // namespace
