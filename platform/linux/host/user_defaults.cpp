#include "platform/linux/host/user_defaults.h"

#include "platform/host/language_tag.h"

#include <glib.h>

namespace cardsong::host {
namespace {

constexpr std::uint16_t kEnglish = 0x0409;

std::string CardDirectory()
{
    const char* const music = g_get_user_special_dir(G_USER_DIRECTORY_MUSIC);
    return music != nullptr ? std::string(music) : std::string(g_get_home_dir()) + "/Music";
}

std::uint16_t LanguageOfEnvironment()
{
    for (const char* name : { "LC_ALL", "LC_MESSAGES", "LANG" })
        if (const char* const value = g_getenv(name); value != nullptr && *value != '\0')
            if (const auto language = LanguageFromTag(value); language != 0)
                return language;
    return kEnglish;
}

} // namespace

Options UserDefaults()
{
    Options options;
    options.deviceDirectory = std::string(g_get_user_data_dir()) + "/cardsong";
    options.cardDirectory = CardDirectory();
    options.language = LanguageOfEnvironment();
    return options;
}

} // namespace cardsong::host
