// What the test's process holds of the machine at one moment.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <ostream>
#include <string>

namespace cardsong::test {

// A sanitizer's allocator answers for itself: heap and resident memory tell nothing then.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsMemoryMeasured = false;
#else
constexpr bool kIsMemoryMeasured = true;
#endif

struct ProcessUse {
    std::size_t heapBytes = 0; // allocated and not freed
    std::size_t residentBytes = 0;
    std::size_t descriptors = 0;
    std::size_t threads = 0;
};

inline std::size_t CountFilesOf(const char* folder)
{
    const std::filesystem::directory_iterator files(folder);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

inline std::size_t ResidentBytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word != "VmRSS:")
            continue;
        std::size_t kilobytes = 0;
        status >> kilobytes;
        return kilobytes * 1024;
    }
    return 0;
}

inline ProcessUse MeasureProcess()
{
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    return { heap.uordblks + heap.hblkhd, ResidentBytes(), CountFilesOf("/proc/self/fd"),
             CountFilesOf("/proc/self/task") };
}

inline std::ostream& operator<<(std::ostream& out, const ProcessUse& use)
{
    if (kIsMemoryMeasured)
        out << use.heapBytes << " bytes of heap, " << use.residentBytes << " resident, ";
    return out << use.descriptors << " descriptors, " << use.threads << " threads";
}

} // namespace cardsong::test
