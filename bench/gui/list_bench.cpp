// What a skinned list costs: a turn of the page with its paint, and a new count, of 5 items beside 50,000. Both must
// take the same time.
#include "gui/skin_list_window.h"
#include "platform/device_tree.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

namespace {

constexpr int kKeys[] = { 16, 29, 33, kSoftKeyListScrollId };

void UseBuiltSkin()
{
    cardsong::kernel::DeviceTree tree = cardsong::kernel::CurrentDeviceTree();
    tree.systemDirectory = CARDSONG_DEVICE_TREE;
    cardsong::kernel::InstallDeviceTree(tree);
}

// An open list of `count` items on its first page, painted.
class OpenList {
public:
    explicit OpenList(std::int64_t count) : m_items(static_cast<std::size_t>(count))
    {
        UseBuiltSkin();
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            WString(TEXT("Clair de lune, suite bergamasque.mp3")).copy(m_items[i].mainText, kSkinListTextUnits - 1);
            WString(TEXT("5:04")).copy(m_items[i].secondaryText, kSkinListTextUnits - 1);
            m_items[i].firstCheckState = i % 2 == 0 ? 1 : 0;
        }
        list.SetDisplayMode(SkinListMode::CheckedText);
        list.SetSoftKeys(static_cast<int>(std::size(kKeys)), kKeys);
        list.SetPageIndicator(SkinListPageIndicator::Shown);
        list.SetItems(m_items);
        list.SetItemCount(static_cast<std::int32_t>(count));
        if (list.Create(nullptr, TEXT("list"), SkinListRedraw::AtOnce, 50) == nullptr)
            std::abort();
        UpdateWindow(list.Window());
    }
    void Turn(WPARAM button)
    {
        SendMessageW(list.Window(), WM_COMMAND, button, 0);
        UpdateWindow(list.Window());
    }

    SkinListWnd list;

private:
    std::vector<SkinListItem> m_items;
};

void TurnThePage(benchmark::State& state)
{
    OpenList open(state.range(0));
    for (auto step : state) {
        (void)step;
        open.Turn(kDownButtonId);
        open.Turn(kUpButtonId);
    }
    state.SetItemsProcessed(state.iterations() * 2); // turns
}
BENCHMARK(TurnThePage)->Arg(5)->Arg(50'000)->Unit(benchmark::kMicrosecond);

void CountAnew(benchmark::State& state)
{
    OpenList open(state.range(0));
    const auto count = static_cast<std::int32_t>(state.range(0));
    for (auto step : state) {
        (void)step;
        open.list.SetItemCount(count - 1);
        open.list.SetItemCount(count);
    }
    state.SetItemsProcessed(state.iterations() * 2);
}
BENCHMARK(CountAnew)->Arg(5)->Arg(50'000)->Unit(benchmark::kMicrosecond);

} // namespace
