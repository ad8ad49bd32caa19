#include "ctl/command.h"

#include <algorithm>

int Complain(const Console& console, const std::string& what, int status)
{
    std::fprintf(console.errors, "cardsongctl: %s\n", what.c_str());
    return status;
}

std::string OptionLine(std::string_view option, std::string_view what)
{
    constexpr std::size_t kColumn = 14; // where the text begins
    std::string line = "  " + std::string(option);
    line.resize(std::max(line.size() + 1, kColumn), ' ');
    return line + std::string(what) + '\n';
}
