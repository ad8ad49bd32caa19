#include "platform/host/language_tag.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace cardsong::host {
namespace {

constexpr std::uint16_t kChineseTraditional = 0x0404;
constexpr std::uint16_t kChineseSimplified = 0x0804;

// One row a way to name a language: the name itself, and whatever a hyphen follows it with.
struct NameOfLanguage {
    const char* name;
    std::uint16_t language;
};

// The first row that fits counts: a region or a script stands before its language.
constexpr auto kNames = std::to_array<NameOfLanguage>({
    { "zh-tw", kChineseTraditional },
    { "zh-hk", kChineseTraditional },
    { "zh-mo", kChineseTraditional },
    { "zh-hant", kChineseTraditional },
    { "0404", kChineseTraditional },
    { "zh-cn", kChineseSimplified },
    { "zh-sg", kChineseSimplified },
    { "zh-hans", kChineseSimplified },
    { "zh", kChineseSimplified },
    { "0804", kChineseSimplified },
    { "en", 0x0409 },
    { "0409", 0x0409 },
    { "de", 0x0407 },
    { "0407", 0x0407 },
    { "fr", 0x040C },
    { "040c", 0x040C },
    { "ja", 0x0411 },
    { "0411", 0x0411 },
    { "es", 0x0C0A },
    { "0c0a", 0x0C0A },
    { "040a", 0x0C0A }, // the same language in another order of its letters
});

bool Fits(const std::string& name, const std::string& row)
{
    return name == row || name.starts_with(row + '-');
}

} // namespace

std::uint16_t LanguageFromTag(const std::string& tag)
{
    std::string name = tag.substr(0, tag.find_first_of(".@"));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(c == '_' ? '-' : std::tolower(c)); });
    const auto row = std::find_if(kNames.begin(), kNames.end(), [&](const auto& one) { return Fits(name, one.name); });
    return row != kNames.end() ? row->language : std::uint16_t{ 0 };
}

} // namespace cardsong::host
