// The two containers beside std::list whose items are reached by walking from its nearer end: the same operations at
// the same indices.
#include "containers/ptr_array_ctrl.h"
#include "containers/ptr_list_ctrl.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstddef>
#include <iterator>
#include <list>
#include <random>
#include <vector>

namespace {

constexpr std::int32_t kItems = 5000;

int g_item;

// std::list with the operations by index that the others have.
class StandardList {
public:
    void Add(void* item, std::int32_t pos) { m_items.insert(pos < 0 ? m_items.end() : At(pos), item); }
    void* GetAt(std::int32_t index) { return *At(index); }
    void DeleteAt(std::int32_t index, std::int32_t) { m_items.erase(At(index)); }

private:
    std::list<void*>::iterator At(std::int32_t index)
    {
        const auto count = static_cast<std::int32_t>(m_items.size());
        return index <= count / 2 ? std::next(m_items.begin(), index) : std::prev(m_items.end(), count - index);
    }

    std::list<void*> m_items;
};

template <typename Container>
void Fill(Container& container, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i)
        container.Add(&g_item, -1);
}

std::vector<std::int32_t> RandomIndices()
{
    std::mt19937 random(1);
    std::vector<std::int32_t> indices(1000);
    for (std::int32_t& index : indices)
        index = std::uniform_int_distribution<std::int32_t>(0, kItems - 1)(random);
    return indices;
}

template <typename Container>
void WalkAscending(benchmark::State& state)
{
    Container container;
    Fill(container, kItems);
    for (auto _ : state) {
        for (std::int32_t i = 0; i < kItems; ++i)
            benchmark::DoNotOptimize(container.GetAt(i));
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

// What the walk by index is up against at best: std::list by its iterator.
void WalkAscendingByIterator(benchmark::State& state)
{
    const std::list<void*> items(kItems, &g_item);
    for (auto _ : state) {
        for (void* item : items)
            benchmark::DoNotOptimize(item);
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

// The head goes for each new item, so that the container keeps its size, and the middle is as far as it can be.
template <typename Container>
void InsertInTheMiddle(benchmark::State& state)
{
    Container container;
    Fill(container, kItems);
    for (auto _ : state) {
        container.Add(&g_item, kItems / 2);
        container.DeleteAt(0, 1);
    }
    state.SetItemsProcessed(state.iterations());
}

template <typename Container>
void DeleteInTheMiddle(benchmark::State& state)
{
    Container container;
    Fill(container, kItems);
    for (auto _ : state) {
        container.DeleteAt(kItems / 2, 1);
        container.Add(&g_item, -1);
    }
    state.SetItemsProcessed(state.iterations());
}

template <typename Container>
void InsertAndDeleteAnywhere(benchmark::State& state)
{
    const std::vector<std::int32_t> indices = RandomIndices();
    Container container;
    Fill(container, kItems);
    for (auto _ : state) {
        for (std::size_t i = 0; i + 1 < indices.size(); i += 2) {
            container.Add(&g_item, indices[i]);
            container.DeleteAt(indices[i + 1], 1);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(indices.size()));
}

// What 50,000 items take beside themselves.
template <typename Container>
void Build(benchmark::State& state)
{
    constexpr std::int32_t kSongs = 50'000;
    double bytesAnItem = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        Container container;
        Fill(container, kSongs);
        const auto after = mallinfo2();
        const auto bytes = (after.uordblks - before.uordblks) + (after.hblkhd - before.hblkhd);
        bytesAnItem = static_cast<double>(bytes) / kSongs;
    }
    state.SetItemsProcessed(state.iterations() * kSongs);
    state.counters["bytes_an_item"] = bytesAnItem;
}

#define EACH_CONTAINER(work)                                                                                           \
    BENCHMARK(work<CPtrListCtrl>);                                                                                     \
    BENCHMARK(work<CPtrArrayCtrl>);                                                                                    \
    BENCHMARK(work<StandardList>)

EACH_CONTAINER(WalkAscending);
BENCHMARK(WalkAscendingByIterator);
EACH_CONTAINER(InsertInTheMiddle);
EACH_CONTAINER(DeleteInTheMiddle);
EACH_CONTAINER(InsertAndDeleteAnywhere);
EACH_CONTAINER(Build);

} // namespace
