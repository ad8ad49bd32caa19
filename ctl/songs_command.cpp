#include "ctl/songs_command.h"

#include "ctl/song_listing.h"
#include "platform/device_tree.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

namespace {

constexpr unsigned long kSongsAStep = 50;

// How many songs there were so far.
class ProgressLine {
public:
    explicit ProgressLine(const Console& console) : m_console(console) {}
    ~ProgressLine()
    {
        if (m_console.showsProgress)
            std::fprintf(m_console.errors, "\r%lu songs\n", m_songs);
    }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Tell(unsigned long songs)
    {
        if (m_console.showsProgress && songs % kSongsAStep == 0)
            std::fprintf(m_console.errors, "\r%lu songs", songs);
        m_songs = songs;
    }

private:
    const Console& m_console;
    unsigned long m_songs = 0;
};

int List(const std::string& folder, const ListingForm& form, const Console& console)
{
    std::error_code error;
    if (!std::filesystem::is_directory(std::u8string(folder.begin(), folder.end()), error))
        return Complain(console, folder + ": no such folder", kFailed);
    cardsong::kernel::DeviceTree tree;
    tree.cardDirectory = folder;
    cardsong::kernel::InstallDeviceTree(tree);
    ProgressLine progress(console);
    const auto tell = [&progress](unsigned long songs) { progress.Tell(songs); };
    if (!WriteSongs(console.out, form, tell))
        return Complain(console, std::string("cannot write: ") + std::strerror(errno), kFailed);
    return 0;
}

int Run(std::span<const std::string_view> arguments, const Console& console)
{
    const auto forms = ListingForms();
    const ListingForm* chosen = &forms.front();
    std::vector<std::string> folders;
    for (const std::string_view argument : arguments) {
        const auto form = std::ranges::find(forms, argument, &ListingForm::option);
        if (!argument.empty() && form != forms.end())
            chosen = &*form;
        else if (argument.starts_with("-"))
            return Complain(console, "songs: unknown option " + std::string(argument), kBadUsage);
        else
            folders.emplace_back(argument);
    }
    if (folders.size() != 1)
        return Complain(console, "songs: takes one folder", kBadUsage);
    while (folders[0].size() > 1 && folders[0].back() == '/')
        folders[0].pop_back();
    return List(folders[0], *chosen, console);
}

std::string Synopsis()
{
    std::string choices;
    for (const ListingForm& form : ListingForms().subspan(1))
        choices += (choices.empty() ? "" : "|") + std::string(form.option);
    return "songs DIR [" + choices + "]";
}

std::string OptionLines()
{
    std::string lines;
    for (const ListingForm& form : ListingForms().subspan(1))
        lines += OptionLine(form.option, form.help);
    return lines;
}

constexpr std::string_view kDescription =
    R"(songs prints a line for each MP3 and WMA song in DIR and its folders: path, length
in milliseconds, title, parted by tabs. In a path or title, \t, \n, \r and \\ stand
for a tab, line ends and a backslash. A song without a title is called like its
file. The scan is the player's own: navigation maps at the top of a card are
left out, and a folder that links lead to is listed once.
)";

} // namespace

const Command kSongsCommand = { "songs", Synopsis, kDescription, OptionLines, Run };
