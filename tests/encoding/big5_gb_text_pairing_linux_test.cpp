// The conversions between Big5 and GB2312 over every code, against what they are to follow: what the program of the
// published pairing makes of each character alone, then the C library's own pairing. Skipped without that program.
#include "encoding/big5_gb_text.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iconv.h>
#include <map>
#include <string>
#include <vector>

namespace {

class Library {
public:
    Library(const char* source, const char* target) : m_handle(iconv_open(target, source)) {}
    ~Library() { iconv_close(m_handle); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    // Empty when the library has no counterpart.
    std::string operator()(std::string text) const
    {
        char converted[16] = {};
        char* source = text.data();
        char* target = converted;
        std::size_t sourceBytes = text.size();
        std::size_t targetBytes = sizeof converted;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_handle, &source, &sourceBytes, &target, &targetBytes) != 0 || sourceBytes != 0)
            return {};
        return { converted, sizeof converted - targetBytes };
    }

private:
    iconv_t m_handle;
};

using Forms = std::map<std::string, std::string>; // UTF-8

// What the pairing's program makes of each text, which stands alone on its line.
Forms ConvertedByThePairing(const std::string& direction, const std::vector<std::string>& texts)
{
    const std::string before = testing::TempDir() + "pairing-" + std::to_string(getpid()) + ".txt";
    const std::string after = before + ".out";
    std::ofstream file(before);
    for (const std::string& text : texts)
        file << text << '\n';
    file.close();
    Forms forms;
    if (std::system(("opencc -c " + direction + ".json -i " + before + " -o " + after).c_str()) == 0) {
        std::ifstream lines(after);
        std::string line;
        for (const std::string& text : texts)
            forms[text] = std::getline(lines, line) ? line : "";
    }
    std::filesystem::remove(before);
    std::filesystem::remove(after);
    return forms;
}

bool IsInRowsOfGb2312(const std::string& code)
{
    return Library("GB2312", "UTF-8")(code) != "";
}

// The signs, the usual hanzi and the rare ones; not what was added behind them.
bool IsInRowsOfBig5(const std::string& code)
{
    return (code >= "\xA1\x40" && code <= "\xA3\xBF") || (code >= "\xA4\x40" && code <= "\xC6\x7E") ||
           (code >= "\xC9\x40" && code <= "\xF9\xD5");
}

bool IsPrivate(const std::string& character)
{
    return character >= "\uE000" && character <= "\uF8FF";
}

// A set, the other one, and the way between them. `page` numbers the characters of `name`.
struct Journey {
    const char* name;
    const char* page;
    const char* other;
    const char* otherPage;
    int lastLead;
    int firstTrail;
    const char* direction;
    std::function<bool(const std::string&)> isInRowsOfOther;
    Forms secondForms; // where the other set lacks the pairing's first form
    std::string square;
    void (*convert)(const char*, char*);
};

// How many characters become another form, stay themselves, follow the library, or are lost.
struct Counts {
    int changed = 0;
    int same = 0;
    int byTheLibrary = 0;
    int lost = 0;

    bool operator==(const Counts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Counts& counts)
{
    return out << counts.changed << ' ' << counts.same << ' ' << counts.byTheLibrary << ' ' << counts.lost;
}

class Expectation {
public:
    explicit Expectation(const Journey& journey)
        : m_journey(journey), m_toPage(journey.page, "UTF-8"), m_isKnown(journey.name, "UTF-8"),
          m_toOther("UTF-8", journey.otherPage), m_byTheLibrary(journey.name, journey.other)
    {
        std::vector<std::string> characters;
        for (const std::string& code : Codes()) {
            if (!Character(code).empty())
                characters.push_back(Character(code));
        }
        m_forms = ConvertedByThePairing(journey.direction, characters);
        for (const auto& [character, form] : journey.secondForms)
            m_forms[character] = form;
    }

    bool IsOpen() const
    {
        return m_toPage.IsOpen() && m_isKnown.IsOpen() && m_toOther.IsOpen() && m_byTheLibrary.IsOpen();
    }

    std::vector<std::string> Codes() const
    {
        std::vector<std::string> codes;
        for (int lead = 0xA1; lead <= m_journey.lastLead; ++lead) {
            const bool isFree = std::string(m_journey.name) == "GB2312" && lead >= 0xAA && lead <= 0xAF;
            for (int trail = m_journey.firstTrail; trail <= 0xFE && !isFree; ++trail)
                codes.push_back({ static_cast<char>(lead), static_cast<char>(trail) });
        }
        return codes;
    }

    std::string operator()(const std::string& code, Counts& counts) const
    {
        const std::string character = Character(code);
        if (character.empty())
            return m_journey.square;
        const std::string& form = m_forms.at(character);
        if (const std::string found = m_toOther(form); found.size() == 2 && m_journey.isInRowsOfOther(found)) {
            ++(form == character ? counts.same : counts.changed);
            return found;
        }
        if (const std::string found = m_byTheLibrary(code); found.size() == 2 && m_journey.isInRowsOfOther(found)) {
            ++counts.byTheLibrary;
            return found;
        }
        ++counts.lost;
        return m_journey.square;
    }

private:
    std::string Character(const std::string& code) const
    {
        const std::string character = m_isKnown(code).empty() ? "" : m_toPage(code);
        return IsPrivate(character) ? "" : character;
    }

    const Journey& m_journey;
    const Library m_toPage;
    const Library m_isKnown;
    const Library m_toOther;
    const Library m_byTheLibrary;
    Forms m_forms;
};

bool IsThePairingThere()
{
    return std::system("command -v opencc >/dev/null") == 0;
}

void ExpectOverAllCodes(const Journey& journey, const Counts& expectedCounts)
{
    const Expectation expectation(journey);
    ASSERT_TRUE(expectation.IsOpen());
    Counts counts;
    for (const std::string& code : expectation.Codes()) {
        char converted[3] = {};
        journey.convert(code.c_str(), converted);
        const std::string expected = expectation(code, counts);
        ASSERT_EQ(std::string(converted, 2), expected)
            << std::hex << static_cast<int>(static_cast<unsigned char>(code[0])) << ' '
            << static_cast<int>(static_cast<unsigned char>(code[1]));
    }
    EXPECT_EQ(counts, expectedCounts);
}

TEST(Big5ToGbMapping, FollowsThePublishedPairingOverAllCodes)
{
    if (!IsThePairingThere())
        GTEST_SKIP() << "tools/install-packages tables";
    const Forms secondForms = { { "牴", "抵" }, { "祇", "只" }, { "衹", "只" }, { "瞭", "了" } };
    ExpectOverAllCodes(
        { "BIG5", "BIG5", "GB2312", "CP936", 0xF9, 0x40, "t2s", IsInRowsOfGb2312, secondForms, "\xA1\xF5", Big5ToGb },
        { .changed = 2427, .same = 4635, .byTheLibrary = 307, .lost = 6134 });
}

TEST(GbToBig5Mapping, FollowsThePublishedPairingOverAllCodes)
{
    if (!IsThePairingThere())
        GTEST_SKIP() << "tools/install-packages tables";
    const Forms secondForms = { { "里", "里" }, { "娴", "嫻" }, { "镎", "錼" } };
    ExpectOverAllCodes(
        { "GB2312", "CP936", "BIG5", "BIG5", 0xF7, 0xA1, "s2t", IsInRowsOfBig5, secondForms, "\xA1\xBC", GbToBig5 },
        { .changed = 2236, .same = 4521, .byTheLibrary = 96, .lost = 592 });
}

} // namespace
