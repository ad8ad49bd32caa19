#include "lyrics/lyrics_line_choice.h"

#include "lyrics/lyrics_context.h"

namespace {

std::optional<ChosenLine> ChooseInRound(std::int32_t count, std::int64_t positionMs)
{
    if (positionMs < 0)
        return std::nullopt;
    const std::int64_t inRoundMs = positionMs % (std::int64_t{ count } * kPlaceholderIntervalMs);
    return ChosenLine{ static_cast<std::int32_t>(inRoundMs / kPlaceholderIntervalMs), inRoundMs };
}

bool IsTimeOf(const LyricLine& line, const LyricLine* next, std::int64_t positionMs)
{
    return next != nullptr ? positionMs >= line.timeMs && positionMs < next->timeMs : positionMs > line.timeMs;
}

std::int32_t StepBack(std::int32_t index, std::int32_t steps, std::int32_t count, LineOrder order)
{
    if (index >= steps)
        return index - steps;
    return order == LineOrder::Round ? (index - steps + steps * count) % count : kNoLine;
}

} // namespace

std::optional<ChosenLine> ChooseLine(ConstLyricList lines, LineOrder order, std::int32_t lastShown,
                                     std::int64_t positionMs)
{
    const std::int32_t count = lines.Count();
    if (count == 0)
        return std::nullopt;
    if (order == LineOrder::Round)
        return ChooseInRound(count, positionMs);
    std::int32_t index = lastShown >= 0 && lastShown < count ? lastShown : 0;
    for (std::int32_t tried = 0; tried < count; ++tried) {
        const LyricLine& line = lines.At(index);
        const bool isLast = index == count - 1;
        if (IsTimeOf(line, isLast ? nullptr : lines.Find(index + 1), positionMs))
            return ChosenLine{ index, positionMs };
        index = isLast ? 0 : index + 1;
    }
    return std::nullopt;
}

std::int32_t LineBefore(std::int32_t index, std::int32_t count, LineOrder order)
{
    return StepBack(index, 1, count, order);
}

std::int32_t LineAfter(std::int32_t index, std::int32_t count, LineOrder order)
{
    if (index + 1 < count)
        return index + 1;
    return order == LineOrder::Round ? 0 : kNoLine;
}

std::int32_t SecondLineBefore(std::int32_t index, std::int32_t count, LineOrder order)
{
    return StepBack(index, 2, count, order);
}
