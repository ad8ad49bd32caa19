// Rows of pixels copied without those of a key colour: the inner loops of a keyed blit. As constant expressions they
// are checked for pointers that leave their row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cardsong::gdi {

// The target is written where the key stands too, with what it holds: without a branch the loop takes eight at a time.
// The rows do not overlap.
constexpr void CopyKeyedRow(std::uint16_t* __restrict target, const std::uint16_t* __restrict source, std::size_t count,
                            std::uint16_t key)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = source[i] == key ? target[i] : source[i];
}

// `columns` names the place in `source` of each target pixel; a place outside leaves the target as it is.
constexpr void StretchKeyedRow(std::uint16_t* target, std::span<const std::uint16_t> source,
                               std::span<const std::int64_t> columns, std::uint16_t key)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i] < 0 || columns[i] >= std::ssize(source))
            continue;
        const std::uint16_t pixel = source[static_cast<std::size_t>(columns[i])];
        if (pixel != key)
            target[i] = pixel;
    }
}

} // namespace cardsong::gdi
