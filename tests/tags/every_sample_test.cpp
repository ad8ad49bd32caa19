// Every sample and every beginning of it, in a buffer of just its size and as a file of the device: always a defined
// result, and the same one wherever the bytes lie.
#include "common/file_stream.h"
#include "tags/file_source.h"
#include "tags/id3_frame_search.h"
#include "tags/mp3_info.h"
#include "tags/tag_results.h"
#include "tags/wma_info.h"
#include "tests/platform/scratch_device.h"
#include "tests/tags/beginnings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>

namespace {

using cardsong::test::Bytes;
using cardsong::test::ForEveryBeginning;
using cardsong::test::Sample;
using cardsong::test::ScratchDevice;

// "mp3/nothing.mp3" and its like, in tests/data.
std::vector<std::string> Names(const char* extension)
{
    std::vector<std::string> names;
    const std::filesystem::path root = CARDSONG_TEST_DATA;
    for (const char* folder : { "mp3", "wma", "songs" }) {
        for (const auto& entry : std::filesystem::directory_iterator(root / folder)) {
            if (entry.path().extension() == extension)
                names.push_back(std::string(folder) + "/" + entry.path().filename().string());
        }
    }
    return names;
}

struct Mp3Result {
    int result;
    std::uint32_t durationMs;
    std::uint32_t fileBytes;
    std::uint32_t tagBytes;
    std::uint8_t genre;
    std::vector<std::byte> title;
    bool operator==(const Mp3Result&) const = default;
};

Mp3Result ReadMp3(ByteSource& source)
{
    Mp3FileInfo info;
    const int result = ReadMp3Info(&source, info, TagFrames::Skip);
    return { result,           info.durationMs,
             info.fileBytes,   info.id3v2TagBytes,
             info.id3v1.genre, FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", 100) };
}

std::vector<unsigned char> ReadWma(ByteSource& source)
{
    const auto info = std::make_unique<WmaInfo>();
    std::memset(static_cast<void*>(info.get()), 0, sizeof *info);
    const int result = ReadWmaInfo(source, *info);
    EXPECT_TRUE(result == 0 || result == -1);
    std::vector<unsigned char> all(sizeof *info + 1);
    std::memcpy(all.data(), info.get(), sizeof *info);
    all.back() = static_cast<unsigned char>(result == 0);
    return all;
}

TEST(EverySample, ThereAreSome)
{
    EXPECT_GE(Names(".mp3").size(), 22U);
    EXPECT_GE(Names(".wma").size(), 23U);
}

TEST(EverySample, EveryBeginningOfAnMp3IsReadOrRefused)
{
    for (const std::string& name : Names(".mp3")) {
        const Bytes whole = Sample(name);
        ForEveryBeginning(whole, [&name](MemorySource& source, std::size_t sizeBytes) {
            Mp3FileInfo info;
            const int result = ReadMp3Info(&source, info, TagFrames::Read);
            ASSERT_TRUE(result == kTagOk || result == kTagBadData) << name << ' ' << sizeBytes;
            ASSERT_EQ(result == kTagOk, info.frame.frameBytes != 0) << name << ' ' << sizeBytes;
            ASSERT_LE(info.id3v2TagBytes, sizeBytes) << name;
            ASSERT_LE(FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", 100).size(), 100U);
        });
    }
}

TEST(EverySample, EveryBeginningOfAWmaIsReadOrRefused)
{
    for (const std::string& name : Names(".wma")) {
        if (name.starts_with("wma/")) // wma_samples_test.cpp has these
            continue;
        ForEveryBeginning(Sample(name), [&name](MemorySource& source, std::size_t sizeBytes) {
            ReadWma(source);
            ASSERT_FALSE(testing::Test::HasFailure()) << name << ' ' << sizeBytes;
        });
    }
}

TEST(EverySample, AFileOfTheDeviceIsReadAsItsBytesInMemory)
{
    ScratchDevice device;
    const auto read = [&device](const std::string& name, auto reader) {
        const Bytes bytes = Sample(name);
        device.WriteFile("user/scratch/song.bin", cardsong::test::SampleText(name));
        const UniqueFileStream file = OpenForReading(device.Path(TEXT("song.bin")).c_str());
        ASSERT_TRUE(file);
        FileSource fromFile(file.Get());
        MemorySource fromMemory(bytes);
        EXPECT_EQ(reader(fromFile), reader(fromMemory)) << name;
    };
    for (const std::string& name : Names(".mp3"))
        read(name, ReadMp3);
    for (const std::string& name : Names(".wma"))
        read(name, ReadWma);
}

} // namespace
