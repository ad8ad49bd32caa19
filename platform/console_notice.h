// What a person at the console is told of this machine: each text once. An engine says it; the host chooses where it
// goes. Every call may come from any thread.
#pragma once

#include <cstdio>
#include <mutex>
#include <set>
#include <string>

namespace cardsong::kernel {

struct ConsoleNotices {
    std::mutex mutex;
    std::FILE* stream = nullptr;
    std::set<std::string> told;
};

inline ConsoleNotices& TheConsoleNotices()
{
    static ConsoleNotices s_notices;
    return s_notices;
}

// `stream`: borrowed; null: nobody is told, which is so until a host says otherwise. What was told before counts as not
// told on the new stream.
inline void TellNoticesTo(std::FILE* stream)
{
    ConsoleNotices& notices = TheConsoleNotices();
    const std::lock_guard<std::mutex> guard(notices.mutex);
    notices.stream = stream;
    notices.told.clear();
}

// A line "cardsong: TEXT". UTF-8, without an end of line.
inline void TellOnce(const std::string& text)
{
    ConsoleNotices& notices = TheConsoleNotices();
    const std::lock_guard<std::mutex> guard(notices.mutex);
    if (notices.stream == nullptr || !notices.told.insert(text).second)
        return;
    std::fprintf(notices.stream, "cardsong: %s\n", text.c_str());
    std::fflush(notices.stream);
}

// `what`: a plural ("WMA songs"); `package`: by the name under which it is installed ("gstreamer1.0-libav").
inline void NoteMissingPackage(const std::string& what, const std::string& package)
{
    TellOnce(what + " need the package " + package + ", which is not installed");
}

} // namespace cardsong::kernel
