// Any bytes as the text of a lyrics file, in every language and with every code page. Times ascend, texts can be shown,
// and the lines are those that adding one by one gives.
#include "lyrics/lrc_groups.h"
#include "lyrics/lyrics_parser.h"
#include "lyrics/lyrics_text.h"
#include "lyrics/lyrics_title.h"

#include <cstdlib>

namespace {

constexpr std::int32_t kLargestTimeMs = 6'039'990;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

struct Lines {
    ~Lines() { LyricList(list).FreeAll(); }
    CPtrListCtrl list;
};

void Check(const ConstLyricList& lines)
{
    std::int32_t timeMs = -1;
    for (std::int32_t i = 0; i < lines.Count(); ++i) {
        Require(lines.At(i).timeMs > timeMs && lines.At(i).timeMs <= kLargestTimeMs);
        timeMs = lines.At(i).timeMs;
        Require(!lines.At(i).text->empty());
        for (const WCHAR unit : *lines.At(i).text)
            Require(unit >= 0x20);
    }
}

void CheckAgainstThePlainRule(const WString& text, const ConstLyricList& lines)
{
    Lines plain;
    LrcGroups groups(text);
    for (LrcGroup group; groups.Next(group);) {
        for (const std::int32_t timeMs : group.timesMs)
            LyricList(plain.list).Add(timeMs, std::make_shared<const WString>(group.text));
    }
    Require(lines.Count() == plain.list.GetCount());
    for (std::int32_t i = 0; i < lines.Count(); ++i) {
        const LyricLine& expected = ConstLyricList(plain.list).At(i);
        Require(lines.At(i).timeMs == expected.timeMs && *lines.At(i).text == *expected.text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    constexpr LANGID kLanguages[] = { 1033, kLanguageTaiwan, kLanguagePrc };
    constexpr std::int32_t kPages[] = { kDetectCodePage, kAlreadyUtf16, 65001, 936, 950, 0 };
    const unsigned choice = size > 0 ? data[0] : 0;
    LyricsBytes bytes(data + (size > 0 ? 1 : 0), data + size);
    bytes.push_back(0);
    bytes.shrink_to_fit();

    const WString text = DecodeLyrics(bytes, kPages[choice % 6], kLanguages[choice / 6 % 3],
                                      choice >= 128 ? Utf8Detection::On : Utf8Detection::Off);
    Require(text.find(WCHAR{ 0 }) == WString::npos && text.size() < bytes.size());
    Lines lines;
    ParseLrcText(text, LyricList(lines.list));
    Check(ConstLyricList(lines.list));
    CheckAgainstThePlainRule(text, ConstLyricList(lines.list));

    const LyricsTitle title(bytes);
    Require(title.Traditional().size() <= kMostTitleUnits && title.Simplified().size() <= kMostTitleUnits);
    return 0;
}
