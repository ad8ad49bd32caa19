// How many titles of a card are read right: ours beside TagLib with uchardet as its guess for 8-bit text. Each kind of
// title is one row; "right" and "of" are its counters. A title that our code-page rule can tell is always right.
#include "bench/library/song_tree.h"
#include "encoding/code_page.h"
#include "library/song_facts.h"

#include <benchmark/benchmark.h>
#include <iconv.h>
#include <taglib/fileref.h>
#include <taglib/id3v1tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tstring.h>
#include <uchardet/uchardet.h>

#include <cstdlib>
#include <iterator>
#include <random>

namespace {

constexpr int kTitles = 500;
constexpr std::size_t kTitleField = 30; // bytes

std::string Convert(const std::string& bytes, const char* from, const char* to)
{
    const iconv_t converter = iconv_open(to, from);
    std::string out(bytes.size() * 4 + 4, '\0');
    char* source = const_cast<char*>(bytes.data());
    std::size_t sourceBytes = bytes.size();
    char* target = out.data();
    std::size_t targetBytes = out.size();
    const bool isWhole = converter != iconv_t(-1) &&
                         iconv(converter, &source, &sourceBytes, &target, &targetBytes) != static_cast<std::size_t>(-1);
    if (converter != iconv_t(-1))
        iconv_close(converter);
    out.resize(isWhole ? out.size() - targetBytes : 0);
    return out;
}

// Titles of three to nine of the characters that are common in the set, as a song has them.
std::vector<std::string> ChineseTitles(const char* charset, int firstLead, int lastLead, int firstTrail, int lastTrail)
{
    std::mt19937 random(20080808);
    std::vector<std::string> titles;
    while (titles.size() < kTitles) {
        std::string title;
        const int characters = std::uniform_int_distribution<int>(3, 9)(random);
        for (int i = 0; i < characters; ++i) {
            title += static_cast<char>(std::uniform_int_distribution<int>(firstLead, lastLead)(random));
            title += static_cast<char>(std::uniform_int_distribution<int>(firstTrail, lastTrail)(random));
        }
        if (!Convert(title, charset, "UTF-8").empty()) // every pair stands for a character
            titles.push_back(title);
    }
    return titles;
}

std::vector<std::string> AsciiTitles()
{
    std::vector<std::string> titles;
    for (int i = 0; i < kTitles; ++i)
        titles.push_back("Song number " + std::to_string(i));
    return titles;
}

std::string FileWithBlock(std::string title)
{
    title.resize(kTitleField);
    return std::string(2000, 'x') + "TAG" + title + std::string(95, '\0');
}

std::string Utf8OfOurs(const WString& text)
{
    const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR));
    return Convert(bytes, "UTF-16LE", "UTF-8");
}

std::string OursOf(const WString& devicePath)
{
    return Utf8OfOurs(ReadSongFacts(devicePath.c_str(), SongFormat::Mp3).title);
}

std::string TheirsOf(const std::string& hostPath)
{
    TagLib::MPEG::File file(hostPath.c_str(), false);
    const std::string bytes = file.ID3v1Tag() != nullptr ? file.ID3v1Tag()->title().to8Bit(false) : std::string();
    const uchardet_t detector = uchardet_new();
    uchardet_handle_data(detector, bytes.data(), bytes.size());
    uchardet_data_end(detector);
    const std::string charset = uchardet_get_charset(detector);
    uchardet_delete(detector);
    return Convert(bytes, charset.empty() ? "ISO-8859-1" : charset.c_str(), "UTF-8");
}

void CountRight(benchmark::State& state, const std::vector<std::string>& titles, const char* charset, int codePage)
{
    const std::filesystem::path card = std::filesystem::temp_directory_path() / "cardsong-bench-titles";
    std::filesystem::create_directories(card);
    cardsong::kernel::DeviceTree tree;
    tree.cardDirectory = card.string();
    cardsong::kernel::InstallDeviceTree(tree);
    int ours = 0, theirs = 0, told = 0;
    for (auto _ : state) {
        ours = theirs = told = 0;
        for (const std::string& title : titles) {
            const std::string bytes = FileWithBlock(title);
            std::ofstream(card / "a.mp3", std::ios::binary)
                .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            const std::string right = Convert(title, charset, "UTF-8");
            const bool isOursRight = OursOf(TEXT("\\SDMMC\\a.mp3")) == right;
            const bool isTold = GetCodePage(title.c_str()) == codePage;
            if (isTold && !isOursRight)
                state.SkipWithError("a title whose code page was told is wrong");
            ours += isOursRight ? 1 : 0;
            told += isTold ? 1 : 0;
            theirs += TheirsOf((card / "a.mp3").string()) == right ? 1 : 0;
        }
    }
    std::filesystem::remove_all(card);
    state.counters["of"] = static_cast<double>(titles.size());
    state.counters["told"] = told;
    state.counters["ours_right"] = ours;
    state.counters["theirs_right"] = theirs;
}

// Formats that say how their text is encoded: both sides ought to be right.
void CountTold(benchmark::State& state, const std::string& name, const std::vector<std::string>& files,
               const std::vector<std::string>& titles)
{
    const std::filesystem::path card = std::filesystem::temp_directory_path() / "cardsong-bench-titles";
    std::filesystem::create_directories(card);
    cardsong::kernel::DeviceTree tree;
    tree.cardDirectory = card.string();
    cardsong::kernel::InstallDeviceTree(tree);
    const WString devicePath = TEXT("\\SDMMC\\") + WString(name.begin(), name.end());
    int ours = 0, theirs = 0;
    for (auto _ : state) {
        ours = theirs = 0;
        for (std::size_t i = 0; i < files.size(); ++i) {
            std::ofstream(card / name, std::ios::binary)
                .write(files[i].data(), static_cast<std::streamsize>(files[i].size()));
            ours += Utf8OfOurs(ReadSongFacts(devicePath.c_str(), *SongFormatOf(devicePath.c_str())).title) == titles[i];
            const TagLib::FileRef file((card / name).c_str(), false);
            theirs += file.tag() != nullptr && file.tag()->title().to8Bit(true) == titles[i] ? 1 : 0;
        }
    }
    std::filesystem::remove_all(card);
    state.counters["of"] = static_cast<double>(files.size());
    state.counters["told"] = static_cast<double>(files.size());
    state.counters["ours_right"] = ours;
    state.counters["theirs_right"] = theirs;
}

std::string FileWithFrame(const std::string& utf16)
{
    const std::string data = "\x01\xFF\xFE" + utf16;
    const auto byteOf = [](std::size_t size, int shift, unsigned mask) {
        return static_cast<char>(size >> shift & mask);
    };
    const std::size_t tagBytes = data.size() + 10;
    std::string tag = "ID3";
    tag += { 3, 0, 0, 0, 0, byteOf(tagBytes, 7, 0x7F), byteOf(tagBytes, 0, 0x7F) };
    tag += "TIT2";
    tag += { 0, 0, byteOf(data.size(), 8, 0xFF), byteOf(data.size(), 0, 0xFF), 0, 0 };
    return tag + data + std::string(2000, 'x');
}

void Id3v2InUtf16(benchmark::State& state)
{
    std::vector<std::string> files, titles;
    for (const std::string& title : ChineseTitles("GB2312", 0xB0, 0xD7, 0xA1, 0xFE)) {
        files.push_back(FileWithFrame(Convert(title, "GB2312", "UTF-16LE")));
        titles.push_back(Convert(title, "GB2312", "UTF-8"));
    }
    CountTold(state, "a.mp3", files, titles);
}

void Asf(benchmark::State& state)
{
    std::ifstream file(std::string(CARDSONG_TEST_DATA) + "/wma/tagged.wma", std::ios::binary);
    CountTold(state, "a.wma", { { std::istreambuf_iterator<char>(file), {} } }, { "Song" });
}

void AsciiId3v1(benchmark::State& state)
{
    CountRight(state, AsciiTitles(), "ASCII", kNoCodePage);
}
void Gb2312Id3v1(benchmark::State& state)
{
    CountRight(state, ChineseTitles("GB2312", 0xB0, 0xD7, 0xA1, 0xFE), "GB2312", kCodePageGb2312);
}
void Big5Id3v1(benchmark::State& state)
{
    CountRight(state, ChineseTitles("BIG5", 0xA4, 0xC6, 0x40, 0xFE), "BIG5", kCodePageBig5);
}

BENCHMARK(AsciiId3v1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Gb2312Id3v1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Big5Id3v1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Id3v2InUtf16)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Asf)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
