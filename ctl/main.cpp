// cardsongctl: Cardsong's library for people and scripts. Reads its command and shows how far it has come.
#include "ctl/song_listing.h"
#include "platform/device_tree.h"

#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kFailed = 1;
constexpr int kBadUsage = 2;
constexpr unsigned long kSongsAStep = 50;

constexpr const char* kHelp = R"(usage: cardsongctl songs DIR [--json]

Prints a line for each MP3 and WMA song in DIR and its folders: path, length in
milliseconds, title, parted by tabs. In a path or title, \t, \n, \r and \\ stand
for a tab, line ends and a backslash. A song without a title is called like its
file. The scan is the player's own: navigation maps at the top of a card are
left out, and a folder that links lead to is listed once.

  --json      one JSON object a line instead: path, length_ms, title
  -h, --help  print this
  --version   print the version
)";

int Complain(const std::string& what, int status)
{
    std::fprintf(stderr, "cardsongctl: %s\n", what.c_str());
    return status;
}

// How many songs there were so far, on a terminal that the songs themselves do not go to.
class ProgressLine {
public:
    void Tell(unsigned long songs)
    {
        if (m_isShown && songs % kSongsAStep == 0)
            std::fprintf(stderr, "\r%lu songs", songs);
        m_songs = songs;
    }
    ~ProgressLine()
    {
        if (m_isShown)
            std::fprintf(stderr, "\r%lu songs\n", m_songs);
    }

private:
    const bool m_isShown = isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0;
    unsigned long m_songs = 0;
};

int PrintSongs(const std::string& folder, SongLines form)
{
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return Complain(folder + ": no such folder", kFailed);
    cardsong::kernel::DeviceTree tree;
    tree.cardDirectory = folder;
    cardsong::kernel::InstallDeviceTree(tree);
    ProgressLine progress;
    const auto tell = [&progress](unsigned long songs) { progress.Tell(songs); };
    return WriteSongs(stdout, form, tell) ? 0 : Complain(std::string("cannot write: ") + std::strerror(errno), kFailed);
}

int RunSongs(const std::vector<std::string_view>& arguments)
{
    SongLines form = SongLines::Tabs;
    std::vector<std::string> folders;
    for (const std::string_view argument : arguments) {
        if (argument == "--json")
            form = SongLines::Json;
        else if (argument.starts_with("-"))
            return Complain("songs: unknown option " + std::string(argument), kBadUsage);
        else
            folders.emplace_back(argument);
    }
    if (folders.size() != 1)
        return Complain("songs: takes one folder", kBadUsage);
    while (folders[0].size() > 1 && folders[0].back() == '/')
        folders[0].pop_back();
    return PrintSongs(folders[0], form);
}

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string_view> words(arguments + 1, arguments + count);
    for (const std::string_view word : words) {
        if (word == "-h" || word == "--help") {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (word == "--version") {
            std::puts("cardsongctl " CARDSONG_VERSION);
            return 0;
        }
    }
    if (words.empty())
        return Complain("no command; --help tells which there are", kBadUsage);
    if (words[0] == "songs")
        return RunSongs({ words.begin() + 1, words.end() });
    return Complain("unknown command " + std::string(words[0]), kBadUsage);
}
