// Starting other programs of the device.
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/unicode.h"
#include "platform/linux/kernel/waits.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

bool IsProgram(const std::string& hostPath)
{
    struct stat facts = {};
    return stat(hostPath.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && access(hostPath.c_str(), X_OK) == 0;
}

bool IsBare(std::u16string_view image)
{
    return image.find_first_of(u"\\/") == std::u16string_view::npos;
}

std::u16string_view WithoutExe(std::u16string_view image)
{
    constexpr std::u16string_view kExe = u".exe";
    const bool endsInExe = image.size() > kExe.size() && EqualIgnoringCase(image.substr(image.size() - 4), kExe);
    return endsInExe ? image.substr(0, image.size() - kExe.size()) : image;
}

// In the device tree, with its extension and without.
std::optional<std::string> FindInTree(std::u16string_view image)
{
    for (const auto name : { image, WithoutExe(image) }) {
        const auto path = (IsBare(name) ? u"\\Windows\\" : u"") + std::u16string(name);
        const auto found = FindOnHost(ParseDevicePath(path));
        if (found.Found() && IsProgram(found.hostPath))
            return found.hostPath;
    }
    return std::nullopt;
}

// On this machine, where programs have no extension.
std::optional<std::string> FindOnSearchPath(std::u16string_view image)
{
    const char* const searchPath = std::getenv("PATH");
    if (!IsBare(image) || !searchPath)
        return std::nullopt;
    const auto name = ToUtf8(WithoutExe(image));
    std::string_view rest = searchPath;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        const auto candidate = std::string(rest.substr(0, end)) + '/' + name;
        if (end != 0 && IsProgram(candidate))
            return candidate;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return std::nullopt;
}

// The arguments of a command line: separated by blanks, a quoted one may hold blanks.
std::vector<std::string> SplitArguments(std::u16string_view line)
{
    std::vector<std::string> arguments;
    std::u16string current;
    bool isQuoted = false;
    bool isOpen = false;
    for (const char16_t unit : line) {
        if (unit == u'"') {
            isQuoted = !isQuoted;
            isOpen = true;
        } else if ((unit == u' ' || unit == u'\t') && !isQuoted) {
            if (isOpen)
                arguments.push_back(ToUtf8(current));
            current.clear();
            isOpen = false;
        } else {
            current.push_back(unit);
            isOpen = true;
        }
    }
    if (isOpen)
        arguments.push_back(ToUtf8(current));
    return arguments;
}

// Starts the program in a session of its own, with no signal blocked or ignored. Returns an errno.
int Spawn(const std::string& program, std::vector<std::string> arguments, pid_t& process)
{
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const int error = posix_spawn(&process, program.c_str(), nullptr, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    return error;
}

// Waits for the child in the background, so that none is left behind as a zombie.
void ReapInBackground(pid_t process, const std::shared_ptr<CompletionObject>& end)
{
    const auto reap = [process, end] {
        while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        end->Complete();
    };
    try {
        std::thread(reap).detach();
    } catch (const std::system_error&) {
        end->Complete(); // no thread to be had: nobody shall wait for ever
    }
}

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

// `commandLine` holds the arguments alone, as on the device.
BOOL CreateProcessW(LPCWSTR image, LPWSTR commandLine, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID,
                    LPCWSTR, STARTUPINFOW*, PROCESS_INFORMATION* information)
{
    if (!image || !*image)
        return Fail(ERROR_INVALID_PARAMETER);
    auto program = FindInTree(image);
    if (!program)
        program = FindOnSearchPath(image);
    if (!program)
        return Fail(ERROR_FILE_NOT_FOUND);
    const auto line = commandLine ? std::u16string_view(commandLine) : std::u16string_view();
    pid_t process = 0;
    const int error = Spawn(*program, SplitArguments(line), process);
    if (error != 0)
        return Fail(error == ENOEXEC  ? ERROR_BAD_EXE_FORMAT
                    : error == ENOENT ? ERROR_FILE_NOT_FOUND
                                      : ERROR_ACCESS_DENIED);
    const auto end = std::make_shared<CompletionObject>();
    if (information)
        *information = { InsertHandle(end), InsertHandle(end), static_cast<DWORD>(process),
                         static_cast<DWORD>(process) };
    ReapInBackground(process, end);
    return TRUE;
}
