// The text conversions beside the C library's iconv, and the guess of the code page beside uchardet: in bulk, and a
// song title at a time. The peers' handles are opened once; each title sets them back, as a separate text asks for.
#include "encoding/big5_gb_text.h"
#include "encoding/code_page.h"
#include "encoding/gb_unicode_text.h"

#include <benchmark/benchmark.h>
#include <iconv.h>
#include <uchardet/uchardet.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kTitles = 400;
constexpr int kAsciiEvery = 8; // one title in eight is plain ASCII, and one in eight ends in some
constexpr std::size_t kBulkBytes = std::size_t{ 1 } << 20;

class Iconv {
public:
    Iconv(const char* source, const char* target) : m_handle(iconv_open(target, source))
    {
        if (m_handle == reinterpret_cast<iconv_t>(-1))
            std::abort();
    }
    ~Iconv() { iconv_close(m_handle); }

    // False when any of the text has no counterpart.
    bool operator()(const std::string& text, char* out, std::size_t room)
    {
        char* source = const_cast<char*>(text.data());
        std::size_t sourceBytes = text.size();
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        return iconv(m_handle, &source, &sourceBytes, &out, &room) == 0;
    }

private:
    iconv_t m_handle;
};

enum class Charset { Gb2312, Big5 };

// Hanzi that are common in one set and have a counterpart in the other.
class CommonHanzi {
public:
    explicit CommonHanzi(Charset charset)
        : m_isGb(charset == Charset::Gb2312), m_toOther(m_isGb ? "GB2312" : "BIG5", m_isGb ? "BIG5" : "GB2312")
    {
    }

    int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(m_random); }

    std::string Text(int count)
    {
        std::string text;
        while (text.size() < 2 * static_cast<std::size_t>(count)) {
            const bool isHighTrail = m_isGb || Number(0, 1) == 1;
            const std::string pair{ static_cast<char>(m_isGb ? Number(0xB0, 0xD7) : Number(0xA4, 0xC6)),
                                    static_cast<char>(isHighTrail ? Number(0xA1, 0xFE) : Number(0x40, 0x7E)) };
            char converted[8];
            if (m_toOther(pair, converted, sizeof converted))
                text += pair;
        }
        return text;
    }

private:
    bool m_isGb;
    Iconv m_toOther;
    std::mt19937 m_random{ 20080808 };
};

std::vector<std::string> Titles(Charset charset)
{
    CommonHanzi hanzi(charset);
    std::vector<std::string> titles;
    while (titles.size() < kTitles) {
        std::string title = hanzi.Text(titles.size() % kAsciiEvery == 0 ? 0 : hanzi.Number(2, 9));
        if (titles.size() % kAsciiEvery < 2)
            title += " Yesterday (1985)";
        titles.push_back(title);
    }
    return titles;
}

// Lines as lyrics have them.
std::string Lyrics(Charset charset)
{
    CommonHanzi hanzi(charset);
    std::string text;
    while (text.size() < kBulkBytes)
        text += hanzi.Text(hanzi.Number(5, 14)) + '\n';
    return text;
}

std::vector<std::string> Texts(Charset charset, bool inBulk)
{
    return inBulk ? std::vector<std::string>{ Lyrics(charset) } : Titles(charset);
}

void Run(benchmark::State& state, const std::vector<std::string>& texts, auto&& work)
{
    std::size_t bytes = 0;
    for (const std::string& text : texts)
        bytes += text.size();
    for (auto _ : state) {
        for (const std::string& text : texts)
            work(text);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

// Room for any conversion of the longest text.
std::vector<char> Room()
{
    return std::vector<char>(4 * kBulkBytes);
}

void GbToUtf16(benchmark::State& state, bool inBulk)
{
    std::vector<Utf16Unit> units(2 * kBulkBytes);
    Run(state, Texts(Charset::Gb2312, inBulk), [&](const std::string& text) {
        gbToUnicode(text.c_str(), units.data());
        benchmark::ClobberMemory();
    });
}

void Convert(benchmark::State& state, Charset charset, bool inBulk)
{
    std::vector<char> room = Room();
    const auto convert = charset == Charset::Big5 ? Big5ToGb : GbToBig5;
    Run(state, Texts(charset, inBulk), [&](const std::string& text) {
        convert(text.c_str(), room.data());
        benchmark::ClobberMemory();
    });
}

void ConvertByIconv(benchmark::State& state, Charset charset, const char* source, const char* target, bool inBulk)
{
    std::vector<char> room = Room();
    Iconv convert(source, target);
    Run(state, Texts(charset, inBulk), [&](const std::string& text) {
        if (!convert(text, room.data(), room.size()))
            std::abort();
        benchmark::ClobberMemory();
    });
}

std::vector<std::string> TitlesOfBoth()
{
    std::vector<std::string> titles = Titles(Charset::Gb2312);
    const std::vector<std::string> more = Titles(Charset::Big5);
    titles.insert(titles.end(), more.begin(), more.end());
    return titles;
}

void GuessCodePage(benchmark::State& state)
{
    Run(state, TitlesOfBoth(), [](const std::string& text) { benchmark::DoNotOptimize(GetCodePage(text.c_str())); });
}

void GuessByUchardet(benchmark::State& state)
{
    const uchardet_t detector = uchardet_new();
    Run(state, TitlesOfBoth(), [&](const std::string& text) {
        uchardet_reset(detector);
        uchardet_handle_data(detector, text.data(), text.size());
        uchardet_data_end(detector);
        benchmark::DoNotOptimize(uchardet_get_charset(detector));
    });
    uchardet_delete(detector);
}

constexpr bool kInBulk = true;
constexpr bool kByTitle = false;

BENCHMARK_CAPTURE(GbToUtf16, bulk, kInBulk);
BENCHMARK_CAPTURE(ConvertByIconv, gb_to_utf16_bulk, Charset::Gb2312, "GB2312", "UTF-16LE", kInBulk);
BENCHMARK_CAPTURE(GbToUtf16, title, kByTitle);
BENCHMARK_CAPTURE(ConvertByIconv, gb_to_utf16_title, Charset::Gb2312, "GB2312", "UTF-16LE", kByTitle);
BENCHMARK_CAPTURE(Convert, big5_to_gb_bulk, Charset::Big5, kInBulk);
BENCHMARK_CAPTURE(ConvertByIconv, big5_to_gb_bulk, Charset::Big5, "BIG5", "GB2312", kInBulk);
BENCHMARK_CAPTURE(Convert, big5_to_gb_title, Charset::Big5, kByTitle);
BENCHMARK_CAPTURE(ConvertByIconv, big5_to_gb_title, Charset::Big5, "BIG5", "GB2312", kByTitle);
BENCHMARK_CAPTURE(Convert, gb_to_big5_bulk, Charset::Gb2312, kInBulk);
BENCHMARK_CAPTURE(ConvertByIconv, gb_to_big5_bulk, Charset::Gb2312, "GB2312", "BIG5", kInBulk);
BENCHMARK_CAPTURE(Convert, gb_to_big5_title, Charset::Gb2312, kByTitle);
BENCHMARK_CAPTURE(ConvertByIconv, gb_to_big5_title, Charset::Gb2312, "GB2312", "BIG5", kByTitle);
BENCHMARK(GuessCodePage);
BENCHMARK(GuessByUchardet);

} // namespace
