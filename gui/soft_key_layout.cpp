#include "gui/soft_key_layout.h"

#include "gui/soft_key_bar.h"

#include <algorithm>
#include <cstddef>

namespace {

#define SKIN(name) TEXT("\\Windows\\gui_") TEXT(name) TEXT(".gif")
#define SKIN_SET(name)                                                                                                 \
    {                                                                                                                  \
        SKIN(name "_normal"), SKIN(name "_down"), nullptr, SKIN(name "_disable")                                       \
    }

constexpr ButtonImageSet kNoSkin = {};
constexpr ButtonImageSet kThreeSlotSkin = SKIN_SET("3but");
constexpr ButtonImageSet kFourSlotSkin = SKIN_SET("4but");
constexpr ButtonImageSet kFiveSlotSkin = SKIN_SET("5but");
constexpr ButtonImageSet kSixSlotSkin = SKIN_SET("6but");
constexpr ButtonImageSet kPairUpSkin = SKIN_SET("4but_up");
constexpr ButtonImageSet kPairDownSkin = SKIN_SET("4but_down");
constexpr ButtonImageSet kScrollUpSkin = SKIN_SET("listscrollup");
constexpr ButtonImageSet kScrollDownSkin = SKIN_SET("listscrolldown");
constexpr ButtonImageSet kVolumeSkin = { SKIN("3but_volume_ctrl_normal"), SKIN("3but_volume_ctrl_down"), nullptr,
                                         nullptr };

#undef SKIN_SET
#undef SKIN

struct Slots {
    int widthPx;
    const ButtonImageSet& skin;
};

bool IsPair(int id)
{
    return id == kSoftKeyPairId || id == kSoftKeyListScrollId;
}

// A pair takes two entries of a bar that is laid out for one slot less; the smallest and the largest bar make no
// difference.
Slots SlotsFor(int count, bool hasPair)
{
    if (count == 2)
        return { 160, kNoSkin };
    switch (hasPair ? std::max(count - 1, 3) : count) {
    case 3: return { 106, kThreeSlotSkin };
    case 4: return { 80, kFourSlotSkin };
    case 5: return { 64, kFiveSlotSkin };
    default: return { 53, kSixSlotSkin };
    }
}

RECT BarPlace(int leftPx, int widthPx)
{
    return { leftPx, kSoftKeyTopPx, leftPx + widthPx, kSoftKeyTopPx + kSoftKeyHeightPx };
}

} // namespace

std::optional<std::vector<SoftKeyPlan>> PlanSoftKeys(int count, std::span<const int> ids)
{
    if (count < 2 || count > 7)
        return std::nullopt;
    const auto slots = static_cast<std::size_t>(count);
    const bool hasPair = std::ranges::any_of(ids.first(std::min(slots, ids.size())), IsPair);
    const auto [widthPx, slotSkin] = SlotsFor(count, hasPair);
    std::vector<SoftKeyPlan> plan(hasPair ? slots + 1 : slots);
    for (std::size_t i = 0; i < std::min(plan.size(), ids.size()); ++i) {
        const int id = ids[i];
        const int leftPx = widthPx * static_cast<int>(i);
        if (IsPair(id) && i + 1 < plan.size()) { // a second pair may find no button left
            const bool inBar = id == kSoftKeyPairId;
            const int halfPx = widthPx / 2;
            plan[i] = { kUpButtonId, inBar ? BarPlace(leftPx, halfPx) : kScrollUpPlace,
                        inBar ? kPairUpSkin : kScrollUpSkin, false };
            plan[i + 1] = { kDownButtonId, inBar ? BarPlace(leftPx + halfPx, halfPx) : kScrollDownPlace,
                            inBar ? kPairDownSkin : kScrollDownSkin, false };
            ++i;
        } else if (!IsPair(id) && id != kSoftKeyEmptyId) {
            plan[i] = { static_cast<UINT>(id), BarPlace(leftPx, widthPx),
                        id == kSoftKeyVolumeId ? kVolumeSkin : slotSkin, true };
        }
    }
    return plan;
}
