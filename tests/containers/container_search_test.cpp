// Searching, which both containers do alike.
#include "containers/ptr_array_ctrl.h"
#include "containers/ptr_list_ctrl.h"
#include "tests/containers/pointers.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

template <typename Container>
class ContainerSearch : public testing::Test {
};
using Containers = testing::Types<CPtrListCtrl, CPtrArrayCtrl>;
TYPED_TEST_SUITE(ContainerSearch, Containers);

TYPED_TEST(ContainerSearch, FindYieldsEveryIndexAndEmptiesTheResultFirst)
{
    const auto container = Filled<TypeParam>({ kA, kB, kA });
    auto result = Filled<TypeParam>({ kD });
    container.Find(kA, result);
    ASSERT_EQ(result.GetCount(), 2);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(result.GetAt(0)), 0);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(result.GetAt(1)), 2);
}

TYPED_TEST(ContainerSearch, FindIntoTheContainerItselfLeavesItEmpty)
{
    auto container = Filled<TypeParam>({ kA, kA });
    container.Find(kA, container);
    EXPECT_EQ(container.GetCount(), 0);
}

TYPED_TEST(ContainerSearch, FindNextGoesOnBehindTheLastMatch)
{
    auto container = Filled<TypeParam>({ kB, kA, kA, kB, kA });
    EXPECT_EQ(container.FindFirst(kA), 1);
    EXPECT_EQ(container.FindNext(kA), 2);
    EXPECT_EQ(container.FindNext(kA), 4);
    EXPECT_EQ(container.FindNext(kA), -1);
}

TYPED_TEST(ContainerSearch, FindNextBeforeAnyFindFirstStartsAtTheHead)
{
    auto container = Filled<TypeParam>({ kA, kB, kA });
    EXPECT_EQ(container.FindNext(kA), 0);
    EXPECT_EQ(container.FindNext(kA), 2);
    EXPECT_EQ(container.FindFirst(kA), 0);
}

TYPED_TEST(ContainerSearch, AFailedSearchKeepsTheFindPosition)
{
    auto container = Filled<TypeParam>({ kA, kB, kA });
    EXPECT_EQ(container.FindFirst(kA), 0);
    EXPECT_EQ(container.FindFirst(kD), -1);
    EXPECT_EQ(container.FindNext(kD), -1);
    EXPECT_EQ(container.FindNext(kA), 2);
}

TYPED_TEST(ContainerSearch, FindNextBehindAShrunkContainerFindsNothing)
{
    auto container = Filled<TypeParam>({ kB, kB, kA });
    EXPECT_EQ(container.FindFirst(kA), 2);
    container.DeleteAt(0, 2);
    EXPECT_EQ(container.FindNext(kA), -1);
}

} // namespace
