#include "platform/host/language_tag.h"

#include <algorithm>
#include <cctype>

namespace cardsong::host {
namespace {

constexpr std::uint16_t kChineseTraditional = 0x0404;
constexpr std::uint16_t kChineseSimplified = 0x0804;
constexpr std::uint16_t kEnglish = 0x0409;

} // namespace

std::uint16_t LanguageFromTag(const std::string& tag)
{
    std::string name = tag.substr(0, tag.find_first_of(".@"));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(c == '_' ? '-' : std::tolower(c)); });
    if (name == "0404" || name == "zh-tw" || name == "zh-hk" || name == "zh-mo" || name.starts_with("zh-hant"))
        return kChineseTraditional;
    if (name == "0804" || name == "zh" || name == "zh-cn" || name == "zh-sg" || name.starts_with("zh-hans"))
        return kChineseSimplified;
    if (name == "0409" || name == "en" || name.starts_with("en-"))
        return kEnglish;
    return 0;
}

} // namespace cardsong::host
