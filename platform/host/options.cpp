#include "platform/host/options.h"

#include "platform/host/language_tag.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <getopt.h>

namespace cardsong::host {
namespace {

constexpr int kLargestScale = 16;
constexpr double kLongestRunSeconds = 7 * 24 * 3600.0;

enum Option : int {
    kDevice = 1,
    kCard,
    kLanguage,
    kScale,
    kFullScreen,
    kHeadless,
    kRunFor,
    kKeys,
    kScreenshot,
    kAudioSink,
    kFill,
    kVerbose,
    kVersion,
    kHelp = 'h',
};

constexpr option kOptions[] = {
    { "device", required_argument, nullptr, kDevice },
    { "card", required_argument, nullptr, kCard },
    { "language", required_argument, nullptr, kLanguage },
    { "scale", required_argument, nullptr, kScale },
    { "fullscreen", no_argument, nullptr, kFullScreen },
    { "headless", no_argument, nullptr, kHeadless },
    { "run-for", required_argument, nullptr, kRunFor },
    { "keys", required_argument, nullptr, kKeys },
    { "screenshot", required_argument, nullptr, kScreenshot },
    { "audio-sink", required_argument, nullptr, kAudioSink },
    { "fill", no_argument, nullptr, kFill },
    { "verbose", no_argument, nullptr, kVerbose },
    { "version", no_argument, nullptr, kVersion },
    { "help", no_argument, nullptr, kHelp },
    {},
};

// Values that are not numbers become ones that the check refuses.
int ReadScale(const std::string& text)
{
    int scale = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), scale);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && scale >= 1 && scale <= kLargestScale ? scale : -1;
}

double ReadSeconds(const std::string& text)
{
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' ? seconds : -1.0;
}

void Store(int which, const char* value, Options& options)
{
    switch (which) {
    case kDevice: options.deviceDirectory = value; break;
    case kCard: options.cardDirectory = value; break;
    case kLanguage: options.language = LanguageFromTag(value); break;
    case kScale: options.scale = ReadScale(value); break;
    case kFullScreen: options.fullScreen = true; break;
    case kHeadless: options.headless = true; break;
    case kRunFor: options.runForSeconds = ReadSeconds(value); break;
    case kKeys: options.keyScript = value; break;
    case kScreenshot: options.screenshotFile = value; break;
    case kAudioSink: options.audioSink = value; break;
    case kFill: options.fill = true; break;
    case kVerbose: options.verbose = true; break;
    case kVersion: options.showVersion = true; break;
    case kHelp: options.showHelp = true; break;
    default: break;
    }
}

std::optional<OptionError> CheckValues(const Options& options)
{
    if (options.language == 0)
        return OptionError{ "--language: not one of zh-TW, zh-CN, en" };
    if (options.scale < 0)
        return OptionError{ "--scale: not a whole number from 1 to 16" };
    if (!std::isfinite(options.runForSeconds) || options.runForSeconds < 0 ||
        options.runForSeconds > kLongestRunSeconds)
        return OptionError{ "--run-for: not a number of seconds" };
    if (options.fullScreen && options.scale != 0)
        return OptionError{ "--scale and --fullscreen exclude each other" };
    return std::nullopt;
}

} // namespace

const char* const kHelpText = R"(Usage: cardsong [OPTION...]

Plays the songs of a memory card.

  --device=DIR         The folder that keeps the device's own files
  --card=DIR           The folder that is the memory card
  --language=TAG       zh-TW, zh-CN or en
  --scale=N            Show each pixel N times as large
  --fullscreen         Fill the screen
  --headless           Run without any display
  --run-for=SECONDS    Exit after so many seconds
  --keys=SCRIPT        Press keys and tap: "Enter wait:500 tap:60,180 Right"
  --screenshot=FILE    Write the last picture as PNG
  --audio-sink=NAME    Where the sound goes: null (nowhere, in real time) or an output of the system
  --fill               Fill an empty play list from the card at the first play
  --verbose            Say what plays and what the debug log says
  --version            Print the version
  -h, --help           Print this help

Exit status: 0 the player was ended; 1 it could not start, or a picture could not be written; 2 an option means
nothing; 3 the display went away, after which the play list was saved; 130 it did not answer and was given up.
)";

std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options)
{
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), "cardsong");
    std::vector<char*> pointers; // the parser puts them into another order
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const int count = static_cast<int>(texts.size());

    opterr = 0; // it is not for the parser to print
    optind = 1;
    for (;;) {
        const int at = optind;
        const int which = getopt_long(count, pointers.data(), ":h", kOptions, nullptr);
        if (which == -1)
            break;
        const std::string word = pointers[static_cast<std::size_t>(std::max(at, optind - 1))];
        const bool hasValue = word.find('=') != std::string::npos; // one that the option does not take
        if (which == ':' && !hasValue)
            return OptionError{ word + ": needs a value" };
        if (which == ':' || which == '?')
            return OptionError{ word + ": not an option" };
        Store(which, optarg, options);
    }
    if (optind < count)
        return OptionError{ std::string(pointers[static_cast<std::size_t>(optind)]) + ": not an option" };
    return CheckValues(options);
}

} // namespace cardsong::host
