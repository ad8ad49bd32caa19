// The things that a container of pointers is filled with in the tests, and how it is filled and read.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace cardsong::test {

inline int g_objects[10];
inline void* const kA = &g_objects[0];
inline void* const kB = &g_objects[1];
inline void* const kC = &g_objects[2];
inline void* const kD = &g_objects[3];

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

using Pointers = std::vector<void*>;

template <typename Container>
Container Filled(const Pointers& items)
{
    Container container;
    for (void* item : items)
        container.Add(item, -1);
    return container;
}

template <typename Container>
Pointers Items(const Container& container)
{
    Pointers items;
    for (std::int32_t i = 0; i < container.GetCount(); ++i)
        items.push_back(container.GetAt(i));
    return items;
}

} // namespace cardsong::test
