#include "platform/linux/host/options.h"

#include <glib.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <memory>

namespace cardsong::host {
namespace {

constexpr std::uint16_t kChineseTraditional = 0x0404;
constexpr std::uint16_t kChineseSimplified = 0x0804;
constexpr std::uint16_t kEnglish = 0x0409;
constexpr int kLargestScale = 16;
constexpr double kLongestRunSeconds = 7 * 24 * 3600.0;

struct GFree {
    void operator()(char* text) const { g_free(text); }
};
using GText = std::unique_ptr<char, GFree>;

struct ContextFree {
    void operator()(GOptionContext* context) const { g_option_context_free(context); }
};

std::string TakeText(char* text)
{
    const GText owner(text);
    return owner ? std::string(owner.get()) : std::string();
}

std::string DefaultDeviceDirectory()
{
    return std::string(g_get_user_data_dir()) + "/cardsong";
}

std::string DefaultCardDirectory()
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

std::optional<OptionError> CheckValues(const Options& options)
{
    if (options.language == 0)
        return OptionError{ "--language: not one of zh-TW, zh-CN, en" };
    if (options.scale < 0 || options.scale > kLargestScale)
        return OptionError{ "--scale: not a whole number from 1 to 16" };
    if (!std::isfinite(options.runForSeconds) || options.runForSeconds < 0 ||
        options.runForSeconds > kLongestRunSeconds)
        return OptionError{ "--run-for: not a number of seconds" };
    if (options.fullScreen && options.scale != 0)
        return OptionError{ "--scale and --fullscreen exclude each other" };
    return std::nullopt;
}

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

std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options)
{
    char *device = nullptr, *card = nullptr, *language = nullptr, *keys = nullptr, *screenshot = nullptr,
         *sink = nullptr, *scale = nullptr;
    gboolean fullScreen = FALSE, headless = FALSE, fill = FALSE, verbose = FALSE, version = FALSE, help = FALSE;
    double runFor = 0;
    const GOptionEntry entries[] = {
        { "device", 0, 0, G_OPTION_ARG_FILENAME, &device, "The folder that keeps the device's own files", "DIR" },
        { "card", 0, 0, G_OPTION_ARG_FILENAME, &card, "The folder that is the memory card", "DIR" },
        { "language", 0, 0, G_OPTION_ARG_STRING, &language, "zh-TW, zh-CN or en", "TAG" },
        { "scale", 0, 0, G_OPTION_ARG_STRING, &scale, "Show each pixel N times as large", "N" },
        { "fullscreen", 0, 0, G_OPTION_ARG_NONE, &fullScreen, "Fill the screen", nullptr },
        { "headless", 0, 0, G_OPTION_ARG_NONE, &headless, "Run without any display", nullptr },
        { "run-for", 0, 0, G_OPTION_ARG_DOUBLE, &runFor, "Exit after so many seconds", "SECONDS" },
        { "keys", 0, 0, G_OPTION_ARG_STRING, &keys, "Press keys and tap: \"Enter wait:500 tap:60,180 Right\"",
          "SCRIPT" },
        { "screenshot", 0, 0, G_OPTION_ARG_FILENAME, &screenshot, "Write the last picture as PNG", "FILE" },
        { "audio-sink", 0, 0, G_OPTION_ARG_STRING, &sink, "pulse, alsa, null or a GStreamer sink", "NAME" },
        { "fill", 0, 0, G_OPTION_ARG_NONE, &fill, "Fill an empty play list from the card at the first play", nullptr },
        { "verbose", 0, 0, G_OPTION_ARG_NONE, &verbose, "Say what plays and what the debug log says", nullptr },
        { "version", 0, 0, G_OPTION_ARG_NONE, &version, "Print the version", nullptr },
        { "help", 'h', 0, G_OPTION_ARG_NONE, &help, "Print this help", nullptr },
        { nullptr, 0, 0, G_OPTION_ARG_NONE, nullptr, nullptr, nullptr },
    };
    const std::unique_ptr<GOptionContext, ContextFree> context(g_option_context_new(nullptr));
    g_option_context_set_summary(context.get(), "Plays the songs of a memory card.");
    g_option_context_set_help_enabled(context.get(), FALSE);
    g_option_context_add_main_entries(context.get(), entries, nullptr);

    // The parser takes pointers out of its array, never the texts themselves.
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), "cardsong");
    std::vector<char*> pointers;
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    int count = static_cast<int>(texts.size());
    char** rest = pointers.data();
    GError* error = nullptr;
    const bool parsed = g_option_context_parse(context.get(), &count, &rest, &error) != FALSE;
    options.deviceDirectory = TakeText(device);
    options.cardDirectory = TakeText(card);
    options.keyScript = TakeText(keys);
    options.screenshotFile = TakeText(screenshot);
    options.audioSink = TakeText(sink);
    const std::string languageTag = TakeText(language), scaleText = TakeText(scale);
    if (!parsed) {
        const std::string message = error->message;
        g_error_free(error);
        return OptionError{ message };
    }
    if (count > 1)
        return OptionError{ std::string("Not an option: ") + rest[1] };

    options.helpText = TakeText(g_option_context_get_help(context.get(), FALSE, nullptr));
    options.fullScreen = fullScreen != FALSE;
    options.headless = headless != FALSE;
    options.fill = fill != FALSE;
    options.verbose = verbose != FALSE;
    options.showVersion = version != FALSE;
    options.showHelp = help != FALSE;
    options.runForSeconds = runFor;
    if (!scaleText.empty()) {
        char* end = nullptr;
        const long value = std::strtol(scaleText.c_str(), &end, 10);
        options.scale = *end == '\0' && value >= 1 && value <= kLargestScale ? static_cast<int>(value) : -1;
    }
    options.language = languageTag.empty() ? LanguageOfEnvironment() : LanguageFromTag(languageTag);
    if (options.deviceDirectory.empty())
        options.deviceDirectory = DefaultDeviceDirectory();
    if (options.cardDirectory.empty())
        options.cardDirectory = DefaultCardDirectory();
    return CheckValues(options);
}

} // namespace cardsong::host
