#include "ctl/command.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

int Complain(const Console& console, const std::string& what, int status)
{
    std::fprintf(console.errors, "cardsongctl: %s\n", what.c_str());
    return status;
}

int Print(const Console& console, const std::string& text)
{
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), console.out) == text.size();
    if (isWritten && std::fflush(console.out) == 0)
        return 0;
    return errno == EPIPE ? kFailed : Complain(console, std::string("cannot write: ") + std::strerror(errno), kFailed);
}

std::string OptionLine(std::string_view option, std::string_view what)
{
    constexpr std::size_t kColumn = 14; // where the text begins
    std::string line = "  " + std::string(option);
    line.resize(std::max(line.size() + 1, kColumn), ' ');
    return line + std::string(what) + '\n';
}
