// A program for tests: writes its arguments, one a line, to a file beside itself.
#include <cstdio>
#include <string>

int main(int count, char* arguments[])
{
    std::FILE* const file = std::fopen((std::string(arguments[0]) + ".out").c_str(), "wb");
    if (file == nullptr)
        return 1;
    for (int i = 1; i < count; ++i)
        std::fprintf(file, "%s\n", arguments[i]);
    return std::fclose(file) == 0 ? 0 : 1;
}
