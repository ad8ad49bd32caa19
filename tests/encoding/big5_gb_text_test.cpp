#include "encoding/big5_gb_text.h"

#include "encoding/code_page.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>

namespace {

constexpr char kUntouched = '\x7F';
using Conversion = void (*)(const char*, char*);

// What is written for `text`: as many bytes as it has and one zero, nothing behind them, on a buffer of just that size.
std::string Converted(Conversion convert, const std::string& text)
{
    std::string written(text.size() + 1, kUntouched);
    convert(text.c_str(), written.data());
    EXPECT_EQ(written.back(), '\0');
    written.pop_back();
    EXPECT_EQ(written.find('\0'), std::string::npos);
    return written;
}

std::string ToGb(const std::string& text)
{
    return Converted(Big5ToGb, text);
}

std::string ToBig5(const std::string& text)
{
    return Converted(GbToBig5, text);
}

std::string Pair(int lead, int trail)
{
    return { static_cast<char>(lead), static_cast<char>(trail) };
}

const std::string kSquareInGb = "\xA1\xF5";
const std::string kSquareInBig5 = "\xA1\xBC";

TEST(Big5ToGb, TraditionalHanziBecomeTheirSimplifiedForms)
{
    EXPECT_EQ(ToGb("\xB7\x52\xB0\xEA"), "\xB0\xAE\xB9\xFA"); // "love", "country"
}

TEST(Big5ToGb, AHanziOfBothSetsIsItself)
{
    EXPECT_EQ(ToGb("\xA4\xA4\xA4\xE5"), "\xD6\xD0\xCE\xC4"); // "Chinese writing"
}

struct Paired {
    const char* character;
    std::string gb;
    std::string big5;
};

// What stands in both sets and is paired with itself.
TEST(BothSets, AnOldFormIsNoNewCharacter)
{
    const Paired rows[] = { { "汆", "\xD9\xE0", "\xC9\xF8" }, { "祛", "\xEC\xEE", "\xD2\xE7" },
                            { "朐", "\xEB\xD4", "\xCE\xFA" }, { "捂", "\xCE\xE6", "\xAE\xB8" },
                            { "筇", "\xF3\xCC", "\xD6\xCC" }, { "Π", "\xA6\xB0", "\xA3\x53" },
                            { "Σ", "\xA6\xB2", "\xA3\x55" },  { "─", "\xA9\xA4", "\xA2\x77" },
                            { "—", "\xA1\xAA", "\xA1\x58" },  { "·", "\xA1\xA4", "\xA1\x50" },
                            { "周", "\xD6\xDC", "\xA9\x50" }, { "松", "\xCB\xC9", "\xAA\x51" },
                            { "御", "\xD3\xF9", "\xB1\x73" }, { "里", "\xC0\xEF", "\xA8\xBD" },
                            { "床", "\xB4\xB2", "\xA7\xC9" }, { "群", "\xC8\xBA", "\xB8\x73" } };
    for (const Paired& row : rows) {
        EXPECT_EQ(ToBig5(row.gb), row.big5) << row.character;
        EXPECT_EQ(ToGb(row.big5), row.gb) << row.character;
    }
}

// One form in each set.
TEST(BothSets, ASimplifiedHanziAndItsUsualTraditionalOneArePaired)
{
    const Paired rows[] = { { "发 發", "\xB7\xA2", "\xB5\x6F" }, { "后 後", "\xBA\xF3", "\xAB\xE1" },
                            { "为 為", "\xCE\xAA", "\xAC\xB0" }, { "众 眾", "\xD6\xDA", "\xB2\xB3" },
                            { "启 啟", "\xC6\xF4", "\xB1\xD2" }, { "钟 鍾", "\xD6\xD3", "\xC1\xE9" },
                            { "台 臺", "\xCC\xA8", "\xBB\x4F" }, { "于 於", "\xD3\xDA", "\xA9\xF3" } };
    for (const Paired& row : rows) {
        EXPECT_EQ(ToBig5(row.gb), row.big5) << row.character;
        EXPECT_EQ(ToGb(row.big5), row.gb) << row.character;
    }
}

TEST(Big5ToGb, OfSeveralTraditionalHanziAllHaveTheirSimplifiedOne)
{
    const Paired rows[] = { { "髮 发", "\xB7\xA2", "\xBE\x76" }, { "后 后", "\xBA\xF3", "\xA6\x5A" },
                            { "週 周", "\xD6\xDC", "\xB6\x67" }, { "鬆 松", "\xCB\xC9", "\xC3\x50" },
                            { "禦 御", "\xD3\xF9", "\xBF\x6D" }, { "裡 里", "\xC0\xEF", "\xB8\xCC" },
                            { "裏 里", "\xC0\xEF", "\xF9\xD8" }, { "鐘 钟", "\xD6\xD3", "\xC4\xC1" },
                            { "乾 干", "\xB8\xC9", "\xB0\xAE" }, { "牴 抵", "\xB5\xD6", "\xAC\xBB" } };
    for (const Paired& row : rows)
        EXPECT_EQ(ToGb(row.big5), row.gb) << row.character;
}

// Characters that GB2312 lacks and the pairing does not know are read as the ones that everybody takes them for.
TEST(Big5ToGb, AnotherFormOfAHanziStandsForOneThatIsMissing)
{
    const Paired rows[] = { { "妳 你", "\xC4\xE3", "\xA9\x70" },
                            { "牠 它", "\xCB\xFC", "\xA8\x65" },
                            { "囉 罗", "\xC2\xDE", "\xC5\x6F" } };
    for (const Paired& row : rows)
        EXPECT_EQ(ToGb(row.big5), row.gb) << row.character;
}

TEST(Big5ToGb, TheIdeographicSpaceIsItself)
{
    EXPECT_EQ(ToGb("\xA1\x40"), "\xA1\xA1");
}

TEST(Big5ToGb, ASecondCodeOfACharacterIsTheSameCharacter)
{
    EXPECT_EQ(ToGb("\xA2\xCC\xA4\x51"), "\xCA\xAE\xCA\xAE"); // "ten", twice in Big5
}

TEST(Big5ToGb, ACodeWithoutACounterpartBecomesTheWhiteSquare)
{
    EXPECT_EQ(ToGb("\xA1\xC0"), kSquareInGb); // a circled sign
    EXPECT_EQ(ToGb("\xF9\xFE"), kSquareInGb); // the last code of the last row, free
    EXPECT_EQ(ToGb("\xA4\x7F"), kSquareInGb); // no trail byte of Big5, but a column
    EXPECT_EQ(ToGb("\xA4\xA0"), kSquareInGb);
}

TEST(Big5ToGb, AsciiAndBytesBelowTheLeadsStay)
{
    EXPECT_EQ(ToGb("Yesterday\x01\x7F\x80\xA0"), "Yesterday\x01\x7F\x80\xA0");
}

TEST(Big5ToGb, TheFirstTrailByteIs0x40)
{
    EXPECT_EQ(ToGb("\xA4\x40"), "\xD2\xBB"); // "one"
    EXPECT_EQ(ToGb("\xA4\x3F"), "\xA4\x3F");
}

TEST(Big5ToGb, ALeadByteBeforeALowByteIsCopiedAlone)
{
    EXPECT_EQ(ToGb("\xA4 \xA4\xA4"), "\xA4 \xD6\xD0");
    EXPECT_EQ(ToGb("\xFF\x3F\xA4\xA4"), "\xFF\x3F\xD6\xD0");
}

TEST(Big5ToGb, ALoneLeadByteAtTheEndStays)
{
    EXPECT_EQ(ToGb("\xA4"), "\xA4");
    EXPECT_EQ(ToGb("\xA4\xA4\xF9"), "\xD6\xD0\xF9");
}

TEST(Big5ToGb, APairAboveTheLastRowIsCopiedWhole)
{
    EXPECT_EQ(ToGb("\xFA\xA4\xA4\xA4"), "\xFA\xA4\xD6\xD0");
    EXPECT_EQ(ToGb("\xFF\xFF\xA4\xA4"), "\xFF\xFF\xD6\xD0");
}

TEST(Big5ToGb, ATrailByteOf0xFFReadsTheFirstColumnOfTheNextRow)
{
    EXPECT_EQ(ToGb("\xA3\xFF"), ToGb("\xA4\x40"));
    EXPECT_EQ(ToGb("\xF9\xFF"), "\xF9\xFF"); // there is no next row, so it is copied
}

TEST(GbToBig5, SimplifiedHanziBecomeTheirTraditionalForms)
{
    EXPECT_EQ(ToBig5("\xB0\xAE\xB9\xFA"), "\xB7\x52\xB0\xEA");
}

TEST(GbToBig5, AHanziOfBothSetsIsItself)
{
    EXPECT_EQ(ToBig5("\xD6\xD0\xCE\xC4"), "\xA4\xA4\xA4\xE5");
}

TEST(GbToBig5, LeadByte0xA1UsesTheFirstRow)
{
    EXPECT_EQ(ToBig5("\xA1\xA1"), "\xA1\x40");
    EXPECT_EQ(ToBig5("\xA1\xB6"), "\xA1\x6D"); // the opening mark of a title
    EXPECT_EQ(ToBig5(kSquareInGb), kSquareInBig5);
}

TEST(GbToBig5, SymbolsUseTheRowsBehindIt)
{
    EXPECT_EQ(ToBig5("\xA3\xC1"), "\xA2\xCF"); // a wide A
    EXPECT_EQ(ToBig5("\xA3\xAC"), "\xA1\x41"); // the wide comma
    EXPECT_EQ(ToBig5("\xA6\xA1"), "\xA3\x44"); // the Greek Alpha
}

TEST(GbToBig5, TheFirstAndTheLastHanziHaveTheirRows)
{
    EXPECT_EQ(ToBig5("\xB0\xA1"), "\xB0\xDA");
    EXPECT_EQ(ToBig5("\xF7\xFD"), "\xC2\x4D");
}

TEST(GbToBig5, TheFreeLeadBytesUseTheRowsOfTheFirstHanzi)
{
    for (int lead = 0xAA; lead <= 0xAF; ++lead) {
        for (int trail = 0xA1; trail <= 0xFE; ++trail)
            ASSERT_EQ(ToBig5(Pair(lead, trail)), ToBig5(Pair(lead + 6, trail))) << std::hex << lead << ' ' << trail;
    }
}

TEST(GbToBig5, ACodeWithoutACounterpartBecomesTheWhiteSquare)
{
    EXPECT_EQ(ToBig5("\xA4\xA2"), kSquareInBig5); // a kana
    EXPECT_EQ(ToBig5("\xD7\xFA"), kSquareInBig5); // a free code
    EXPECT_EQ(ToBig5("\xF7\xFE"), kSquareInBig5);
}

TEST(GbToBig5, AsciiAndBytesBelowTheLeadsStay)
{
    EXPECT_EQ(ToBig5("Yesterday\x01\x7F\x80\xA0"), "Yesterday\x01\x7F\x80\xA0");
}

TEST(GbToBig5, TheFirstTrailByteIs0xA1)
{
    EXPECT_EQ(ToBig5("\xB0\xA0"), "\xB0\xA0");
    EXPECT_EQ(ToBig5("\xB0\x41\xD6\xD0"), "\xB0\x41\xA4\xA4");
}

TEST(GbToBig5, ALoneLeadByteAtTheEndStays)
{
    EXPECT_EQ(ToBig5("\xB0"), "\xB0");
    EXPECT_EQ(ToBig5("\xD6\xD0\xF7"), "\xA4\xA4\xF7");
}

TEST(GbToBig5, APairAboveTheLastRowIsCopiedWhole)
{
    EXPECT_EQ(ToBig5("\xF8\xD6\xD6\xD0"), "\xF8\xD6\xA4\xA4");
    EXPECT_EQ(ToBig5("\xFE\xFE\xFF\xFF"), "\xFE\xFE\xFF\xFF");
}

TEST(GbToBig5, ATrailByteOf0xFFReadsTheFirstColumnOfTheNextRow)
{
    EXPECT_EQ(ToBig5("\xB0\xFF"), ToBig5("\xB1\xA1"));
    EXPECT_EQ(ToBig5("\xA1\xFF"), ToBig5("\xA2\xA1"));
    EXPECT_EQ(ToBig5("\xA9\xFF"), ToBig5("\xB0\xA1"));
    EXPECT_EQ(ToBig5("\xF7\xFF"), "\xF7\xFF"); // what is behind the last row is copied
}

class BothWays : public testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Conversions, BothWays, testing::Values(Big5ToGb, GbToBig5),
                         [](const auto& test) { return test.param == Big5ToGb ? "Big5ToGb" : "GbToBig5"; });

TEST_P(BothWays, EmptyTextWritesOneZeroAndNoMore)
{
    char written[2] = { kUntouched, kUntouched };
    GetParam()("", written);
    EXPECT_EQ(written[0], '\0');
    EXPECT_EQ(written[1], kUntouched);
}

TEST_P(BothWays, WithANullPointerNothingIsWritten)
{
    char written[2] = { kUntouched, kUntouched };
    GetParam()(nullptr, written);
    EXPECT_EQ(written[0], kUntouched);
    GetParam()("\xB0\xA1", nullptr);
    GetParam()(nullptr, nullptr);
}

TEST_P(BothWays, NothingBehindTheZeroIsConverted)
{
    char text[] = "\xD6\xD0\0\xD6\xD0";
    GetParam()(text, text);
    EXPECT_EQ(std::string(text + 2, 3), std::string("\0\xD6\xD0", 3));
}

TEST_P(BothWays, EveryPairKeepsItsLengthAndGivesNoLeadByteAlone)
{
    for (int lead = 1; lead < 256; ++lead) {
        for (int trail = 1; trail < 256; ++trail) {
            const std::string before = Pair(lead, trail);
            const std::string after = Converted(GetParam(), before);
            const bool isPair = lead >= 0xA1 && trail >= (GetParam() == Big5ToGb ? 0x40 : 0xA1);
            ASSERT_TRUE(isPair ? static_cast<unsigned char>(after[0]) >= 0xA1 : after == before)
                << std::hex << lead << ' ' << trail;
        }
    }
}

TEST_P(BothWays, ATextIsConvertedInItsPlaceAsIntoAnother)
{
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        std::string text(std::uniform_int_distribution<std::size_t>(0, 40)(random), ' ');
        for (char& byte : text)
            byte = static_cast<char>(std::uniform_int_distribution<int>(1, 255)(random));
        const std::string expected = Converted(GetParam(), text);
        GetParam()(text.c_str(), text.data());
        ASSERT_EQ(text, expected);
    }
}

// How often `isTrue` holds for the codes of a set that have a counterpart.
int CountPairs(int lastLead, int firstTrail, Conversion convert, const std::string& square,
               const std::function<bool(const std::string&, const std::string&)>& isTrue)
{
    int count = 0;
    for (int lead = 0xA1; lead <= lastLead; ++lead) {
        for (int trail = firstTrail; trail <= 0xFE; ++trail) {
            const std::string code = Pair(lead, trail);
            const std::string counterpart = Converted(convert, code);
            const bool isFree = firstTrail == 0xA1 && lead >= 0xAA && lead <= 0xAF;
            if (!isFree && counterpart != square && isTrue(code, counterpart))
                ++count;
        }
    }
    return count;
}

bool Always(const std::string&, const std::string&)
{
    return true;
}

TEST(ThereAndBack, TheSampleTitlesAreEachOthers)
{
    const auto traditional = cardsong::test::SampleText("text/title_big5.txt");
    const auto simplified = cardsong::test::SampleText("text/title_gb2312.txt");
    ASSERT_FALSE(traditional.empty());
    EXPECT_EQ(ToGb(traditional), simplified);
    EXPECT_EQ(ToBig5(simplified), traditional);
    EXPECT_EQ(GetCodePage(traditional.c_str()), kCodePageBig5);
    EXPECT_EQ(GetCodePage(simplified.c_str()), kCodePageGb2312);
}

TEST(ThereAndBack, TheSquareStandsForTheSquare)
{
    EXPECT_EQ(ToGb(kSquareInBig5), kSquareInGb);
    EXPECT_EQ(ToBig5(kSquareInGb), kSquareInBig5);
}

// Several traditional hanzi share one simplified form, which stands for one of them.
TEST(ThereAndBack, MostCodesComeBackAsTheyWere)
{
    const auto big5ComesBack = [](const std::string& big5, const std::string& gb) { return ToBig5(gb) == big5; };
    const auto gbComesBack = [](const std::string& gb, const std::string& big5) { return ToGb(big5) == gb; };
    EXPECT_EQ(CountPairs(0xF9, 0x40, Big5ToGb, kSquareInGb, Always), 7368);
    EXPECT_EQ(CountPairs(0xF9, 0x40, Big5ToGb, kSquareInGb, big5ComesBack), 6772);
    EXPECT_EQ(CountPairs(0xF7, 0xA1, GbToBig5, kSquareInBig5, Always), 6852);
    EXPECT_EQ(CountPairs(0xF7, 0xA1, GbToBig5, kSquareInBig5, gbComesBack), 6772);
}

// The exceptions are one sign and thirteen hanzi, most of them traditional forms that GB2312 holds too.
TEST(ThereAndBack, ASecondJourneyChangesNothingMore)
{
    const auto changesGb = [](const std::string&, const std::string& gb) { return ToGb(ToBig5(gb)) != gb; };
    const auto changesBig5 = [](const std::string&, const std::string& big5) { return ToBig5(ToGb(big5)) != big5; };
    EXPECT_EQ(CountPairs(0xF9, 0x40, Big5ToGb, kSquareInGb, changesGb), 1);
    EXPECT_EQ(CountPairs(0xF7, 0xA1, GbToBig5, kSquareInBig5, changesBig5), 13);
}

} // namespace
