// Rows of a keyed blit, run by the compiler: clang refuses a pointer that leaves its row, even one that is not
// followed.
#include "platform/linux/gdi/keyed_row.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using cardsong::gdi::CopyKeyedRow;
using cardsong::gdi::StretchKeyedRow;
using Row = std::array<std::uint16_t, 4>;

constexpr std::uint16_t kKey = 0xF81F;

template <std::size_t kColumns>
constexpr Row Stretched(Row target, const std::array<std::int64_t, kColumns>& columns)
{
    const std::array<std::uint16_t, 3> source = { 1, kKey, 3 };
    StretchKeyedRow(target.data(), source, columns, kKey);
    return target;
}

constexpr Row Copied(Row target)
{
    const Row source = { kKey, 2, kKey, 4 };
    CopyKeyedRow(target.data(), source.data(), source.size(), kKey);
    return target;
}

TEST(KeyedRow, StretchingStaysWithinRowsThatFillTheirMemory)
{
    constexpr Row kStretched = Stretched<4>({ 9, 9, 9, 9 }, { 0, 1, 2, 2 });
    EXPECT_EQ(kStretched, (Row{ 1, 9, 3, 3 }));
}

TEST(KeyedRow, AColumnBeyondTheSourceLeavesTheTarget)
{
    constexpr Row kStretched = Stretched<4>({ 9, 9, 9, 9 }, { -1, 0, 3, INT64_MAX });
    EXPECT_EQ(kStretched, (Row{ 9, 1, 9, 9 }));
}

TEST(KeyedRow, NoColumnsTouchNothing)
{
    constexpr Row kStretched = Stretched<0>({ 9, 8, 7, 6 }, {});
    EXPECT_EQ(kStretched, (Row{ 9, 8, 7, 6 }));
}

TEST(KeyedRow, CopyingLeavesTheTargetWhereTheKeyStands)
{
    constexpr Row kCopied = Copied({ 9, 8, 7, 6 });
    EXPECT_EQ(kCopied, (Row{ 9, 2, 7, 4 }));
}

} // namespace
