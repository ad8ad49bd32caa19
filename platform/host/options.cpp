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
constexpr Turn kNoTurn = static_cast<Turn>(-1);
constexpr double kLongestRunSeconds = 7 * 24 * 3600.0;

template <auto Field>
void Take(const char* value, Options& options)
{
    options.*Field = value;
}

template <auto Flag>
void Raise(const char*, Options& options)
{
    options.*Flag = true;
}

void TakeLanguage(const char* value, Options& options)
{
    options.language = LanguageFromTag(value);
}

std::optional<int> WholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// Values without a meaning become ones that no field has otherwise.
void TakeScale(const char* value, Options& options)
{
    const auto scale = WholeNumber(value);
    options.scale = scale && *scale >= 1 && *scale <= kLargestScale ? *scale : -1;
}

void TakeTurn(const char* value, Options& options)
{
    options.turn = kNoTurn;
    for (const Turn turn : { Turn::None, Turn::Quarter, Turn::Half, Turn::ThreeQuarters }) {
        if (WholeNumber(value) == static_cast<int>(turn))
            options.turn = turn;
    }
}

void TakeSeconds(const char* value, Options& options)
{
    char* end = nullptr;
    const double seconds = std::strtod(value, &end);
    options.runForSeconds = *value != '\0' && *end == '\0' ? seconds : -1.0;
}

bool IsLanguage(const Options& options)
{
    return options.language != 0;
}

bool IsScale(const Options& options)
{
    return options.scale >= 0;
}

bool IsTurn(const Options& options)
{
    return options.turn != kNoTurn;
}

bool IsTime(const Options& options)
{
    return std::isfinite(options.runForSeconds) && options.runForSeconds >= 0 &&
           options.runForSeconds <= kLongestRunSeconds;
}

constexpr OptionRow kRows[] = {
    { .name = "device",
      .argument = "DIR",
      .help = "The folder that keeps the device's own files",
      .store = Take<&Options::deviceDirectory> },
    { .name = "card",
      .argument = "DIR",
      .help = "The folder that is the memory card",
      .store = Take<&Options::cardDirectory> },
    { .name = "language",
      .argument = "TAG",
      .help = "zh-TW, zh-CN, en, de, fr, ja or es",
      .store = TakeLanguage,
      .hasMeaning = IsLanguage,
      .complaint = "not one of zh-TW, zh-CN, en, de, fr, ja, es" },
    { .name = "skin",
      .argument = "NAME",
      .help = "Wear another skin, for instance amber",
      .store = Take<&Options::skin> },
    { .name = "scale",
      .argument = "N",
      .help = "Show each pixel N times as large",
      .store = TakeScale,
      .hasMeaning = IsScale,
      .complaint = "not a whole number from 1 to 16" },
    { .name = "fullscreen", .help = "Fill the screen", .store = Raise<&Options::fullScreen> },
    { .name = "rotate",
      .argument = "DEGREES",
      .help = "Turn picture and touch clockwise by 90, 180 or 270 degrees, for a panel that stands so",
      .store = TakeTurn,
      .hasMeaning = IsTurn,
      .complaint = "not one of 0, 90, 180, 270" },
    { .name = "headless", .help = "Run without any display", .store = Raise<&Options::headless> },
    { .name = "run-for",
      .argument = "SECONDS",
      .help = "Exit after so many seconds",
      .store = TakeSeconds,
      .hasMeaning = IsTime,
      .complaint = "not a number of seconds" },
    { .name = "keys",
      .argument = "SCRIPT",
      .help = "Press keys and tap: \"Enter wait:500 tap:60,180 Right\"",
      .store = Take<&Options::keyScript> },
    { .name = "screenshot",
      .argument = "FILE",
      .help = "Write the last picture as PNG",
      .store = Take<&Options::screenshotFile> },
    { .name = "audio-sink",
      .argument = "NAME",
      .help = "Where the sound goes: null (nowhere, in real time) or an output of the system",
      .store = Take<&Options::audioSink> },
    { .name = "fill", .help = "Fill an empty play list from the card at the first play", .playerWord = TEXT("--fill") },
    { .name = "play", .help = "Play at once", .playerWord = TEXT("--play") },
    { .name = "tell-exit",
      .help = "End with status 10, and not 0, when exit is pressed",
      .playerWord = TEXT("--tell-exit") },
    { .name = "lyrics-utf8",
      .help = "Take lyrics that are valid UTF-8 for UTF-8",
      .playerWord = TEXT("--lyrics-utf8") },
    { .name = "verbose",
      .help = "Say what plays and what the debug log says",
      .store = Raise<&Options::verbose>,
      .playerWord = TEXT("--report") },
    { .name = "doctor",
      .help = "Say what this machine lacks for playing, and exit",
      .store = Raise<&Options::examine> },
    { .name = "version", .help = "Print the version", .store = Raise<&Options::showVersion> },
    { .name = "help", .letter = 'h', .help = "Print this help", .store = Raise<&Options::showHelp> },
};

constexpr char kHelpHead[] = R"(Usage: cardsong [OPTION...] [SONG|FOLDER...]

Plays the songs of a memory card, or those that are named.

)";
constexpr std::size_t kHelpColumn = 23; // where the help of an option stands
constexpr char kHelpFoot[] = R"(
Exit status: 0 the player was ended; 1 it could not start, or a picture could not be written; 2 an option means
nothing; 3 the display went away, after which the play list was saved; 10 exit was pressed, with --tell-exit; 130 it
did not answer and was given up.
--doctor: 0 it can play; 1 something is bad.
)";

constexpr int kFirstRow = 256; // the parser's number of a row, above every letter

std::vector<option> ParserRows()
{
    std::vector<option> rows;
    for (const OptionRow& row : kRows)
        rows.push_back({ row.name, row.argument != nullptr ? required_argument : no_argument, nullptr,
                         kFirstRow + static_cast<int>(rows.size()) });
    rows.push_back({});
    return rows;
}

// A colon in front: the parser tells a missing value apart from an unknown option.
std::string ParserLetters()
{
    std::string letters = ":";
    for (const OptionRow& row : kRows) {
        if (row.letter != 0)
            letters += row.argument != nullptr ? std::string{ row.letter, ':' } : std::string{ row.letter };
    }
    return letters;
}

const OptionRow& RowOf(int which)
{
    const auto isMeant = [which](const OptionRow& row) { return row.letter == which; };
    return which >= kFirstRow ? kRows[which - kFirstRow] : *std::find_if(std::begin(kRows), std::end(kRows), isMeant);
}

void Store(const OptionRow& row, const char* value, Options& options)
{
    if (row.store != nullptr)
        row.store(value, options);
    if (row.playerWord == nullptr)
        return;
    const WString word = WString(row.playerWord) + TEXT(' ');
    if (options.playerCommandLine.find(word) == WString::npos)
        options.playerCommandLine += word;
}

std::optional<OptionError> CheckValues(const Options& options)
{
    for (const OptionRow& row : kRows) {
        if (row.hasMeaning != nullptr && !row.hasMeaning(options))
            return OptionError{ "--" + std::string(row.name) + ": " + row.complaint };
    }
    if (options.fullScreen && options.scale != 0)
        return OptionError{ "--scale and --fullscreen exclude each other" };
    return std::nullopt;
}

} // namespace

std::span<const OptionRow> OptionTable()
{
    return kRows;
}

std::string HelpText()
{
    std::string text = kHelpHead;
    for (const OptionRow& row : kRows) {
        std::string line = "  ";
        if (row.letter != 0)
            line += std::string{ '-', row.letter, ',', ' ' };
        line += "--" + std::string(row.name);
        if (row.argument != nullptr)
            line += "=" + std::string(row.argument);
        line.resize(std::max(line.size() + 1, kHelpColumn), ' ');
        text += line + row.help + '\n';
    }
    return text + kHelpFoot;
}

std::optional<OptionError> ReadOptions(const std::vector<std::string>& arguments, Options& options)
{
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), "cardsong");
    std::vector<char*> pointers; // the parser puts them into another order
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const int count = static_cast<int>(texts.size());
    const auto rows = ParserRows();
    const std::string letters = ParserLetters();

    opterr = 0; // it is not for the parser to print
    optind = 0; // 1 would let a parser go on within texts of the call before
    for (;;) {
        const int at = std::max(optind, 1);
        const int which = getopt_long(count, pointers.data(), letters.c_str(), rows.data(), nullptr);
        if (which == -1)
            break;
        const std::string word = pointers[static_cast<std::size_t>(std::max(at, optind - 1))];
        const bool hasValue = word.find('=') != std::string::npos; // one that the option does not take
        if (which == ':' && !hasValue)
            return OptionError{ word + ": needs a value" };
        if (which == ':' || which == '?')
            return OptionError{ word + ": not an option" };
        Store(RowOf(which), optarg, options);
    }
    options.songs.insert(options.songs.end(), pointers.begin() + optind, pointers.begin() + count);
    return CheckValues(options);
}

} // namespace cardsong::host
