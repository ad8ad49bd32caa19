#include "containers/ptr_array_ctrl.h"

#include "tests/containers/pointers.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

CPtrArrayCtrl ArrayOf(const Pointers& items)
{
    return Filled<CPtrArrayCtrl>(items);
}

CPtrArrayCtrl ArrayOfMany(std::int32_t count)
{
    return ArrayOf(Pointers(static_cast<std::size_t>(count), kA));
}

TEST(PtrArrayCtrl, ANewArrayIsEmptyAndHoldsNoRoom)
{
    const CPtrArrayCtrl array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetCapability(), 0);
    EXPECT_EQ(array.GetHead(), nullptr);
    EXPECT_EQ(array.GetTail(), nullptr);
    EXPECT_EQ(array.GetAt(0), nullptr);
}

TEST(PtrArrayCtrl, AnArrayWithOneItemIsNotEmpty)
{
    const CPtrArrayCtrl array = ArrayOf({ kA });
    EXPECT_FALSE(array.IsEmpty());
    EXPECT_EQ(array.GetSize(), 1);
    EXPECT_EQ(array.GetHead(), kA);
    EXPECT_EQ(array.GetTail(), kA);
}

TEST(PtrArrayCtrl, AddAtMinusOneAppends)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.Add(kC, -1), 2);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC }));
}

TEST(PtrArrayCtrl, AddOutsideTheArrayAppends)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    EXPECT_EQ(array.Add(kB, 2), 1);
    EXPECT_EQ(array.Add(kC, kMost), 2);
    EXPECT_EQ(array.Add(kD, -2), 3);
    EXPECT_EQ(array.Add(kA, kLeast), 4);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC, kD, kA }));
}

TEST(PtrArrayCtrl, AddAtTheCountAppends)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    EXPECT_EQ(array.Add(kB, 1), 1);
    EXPECT_EQ(array.GetTail(), kB);
}

TEST(PtrArrayCtrl, AddAtZeroOfAnEmptyArrayMakesHeadAndTail)
{
    CPtrArrayCtrl array;
    EXPECT_EQ(array.Add(kA, 0), 0);
    EXPECT_EQ(array.GetHead(), kA);
    EXPECT_EQ(array.GetTail(), kA);
}

TEST(PtrArrayCtrl, AddInTheMiddleMovesTheRestUp)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kC });
    EXPECT_EQ(array.Add(kB, 1), 1);
    EXPECT_EQ(array.Add(kD, 0), 0);
    EXPECT_EQ(Items(array), (Pointers{ kD, kA, kB, kC }));
}

TEST(PtrArrayCtrl, ANullItemIsAnItem)
{
    CPtrArrayCtrl array;
    array.Add(static_cast<void*>(nullptr), -1);
    EXPECT_EQ(array.GetCount(), 1);
    EXPECT_EQ(array.FindFirst(nullptr), 0);
}

TEST(PtrArrayCtrl, AddOfAnArrayAppendsInOrderAndReturnsTheIndexOfItsFirst)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl other = ArrayOf({ kB, kC });
    EXPECT_EQ(array.Add(&other, -1), 1);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(Items(other), (Pointers{ kB, kC }));
}

TEST(PtrArrayCtrl, AddOfAnArrayAtAPositionKeepsItsOrder)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kD });
    const CPtrArrayCtrl other = ArrayOf({ kB, kC });
    EXPECT_EQ(array.Add(&other, 1), 1);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC, kD }));
}

TEST(PtrArrayCtrl, AddOfAnArrayAtZeroPutsItFirst)
{
    CPtrArrayCtrl array = ArrayOf({ kC });
    const CPtrArrayCtrl other = ArrayOf({ kA, kB });
    EXPECT_EQ(array.Add(&other, 0), 0);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC }));
}

TEST(PtrArrayCtrl, AddOfAnArrayOutsideTheArrayAppendsAllOfIt)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl other = ArrayOf({ kB, kC });
    EXPECT_EQ(array.Add(&other, -2), 1);
    EXPECT_EQ(array.Add(&other, kMost), 3);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kC, kB, kC }));
}

TEST(PtrArrayCtrl, AddOfANullOrAnEmptyArrayChangesNothing)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl empty;
    EXPECT_EQ(array.Add(static_cast<const CPtrArrayCtrl*>(nullptr), 0), -1);
    EXPECT_EQ(array.Add(&empty, 0), -1);
    EXPECT_EQ(Items(array), (Pointers{ kA }));
    CPtrArrayCtrl another;
    EXPECT_EQ(another.Add(&empty, 0), -1);
    EXPECT_EQ(another.GetCapability(), 0);
}

TEST(PtrArrayCtrl, AddOfTheArrayItselfTakesItsItemsAsTheyWere)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(array.Add(&array, 1), 1);
    EXPECT_EQ(Items(array), (Pointers{ kA, kA, kB, kC, kB, kC }));
}

TEST(PtrArrayCtrl, AddOfTheArrayItselfMayMoveItsBlock)
{
    CPtrArrayCtrl array = ArrayOfMany(511);
    array.Set(0, kB);
    array.Set(510, kC);
    EXPECT_EQ(array.Add(&array, -1), 511);
    EXPECT_EQ(array.GetCount(), 1022);
    EXPECT_EQ(array.GetCapability(), 2048);
    EXPECT_EQ(array.GetAt(511), kB);
    EXPECT_EQ(array.GetAt(1021), kC);
}

TEST(PtrArrayCtrl, CopyReplacesTheItemsAndReturnsTheNewCount)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl other = ArrayOf({ kB, kC });
    EXPECT_EQ(array.Copy(&other), 2);
    EXPECT_EQ(Items(array), (Pointers{ kB, kC }));
}

TEST(PtrArrayCtrl, CopyOfNullKeepsTheItems)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    EXPECT_EQ(array.Copy(nullptr), 0);
    EXPECT_EQ(Items(array), (Pointers{ kA }));
}

TEST(PtrArrayCtrl, CopyOfAnEmptyArrayEmpties)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl empty;
    EXPECT_EQ(array.Copy(&empty), 0);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(PtrArrayCtrl, TheCopyConstructorCopiesTheItems)
{
    const CPtrArrayCtrl array = ArrayOf({ kA, kB });
    CPtrArrayCtrl copy(array);
    copy.Add(kC, -1);
    EXPECT_EQ(Items(copy), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(Items(array), (Pointers{ kA, kB }));
}

TEST(PtrArrayCtrl, AssignmentOfAnArrayToItselfEmptiesIt)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    const CPtrArrayCtrl& same = array;
    array = same;
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetCapability(), 0);
}

TEST(PtrArrayCtrl, AssignmentReplacesAndYieldsTheArray)
{
    CPtrArrayCtrl array = ArrayOf({ kA });
    const CPtrArrayCtrl other = ArrayOf({ kB });
    EXPECT_EQ(&(array = other), &array);
    EXPECT_EQ(Items(array), (Pointers{ kB }));
}

TEST(PtrArrayCtrl, PlusAssignmentOfAnArrayToItselfDoublesIt)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(&(array += array), &array);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB, kA, kB }));
}

TEST(PtrArrayCtrl, PlusYieldsTheFirstThenTheSecond)
{
    const CPtrArrayCtrl first = ArrayOf({ kA, kB });
    const CPtrArrayCtrl second = ArrayOf({ kC });
    EXPECT_EQ(Items(first + second), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(first.GetCount(), 2);
    EXPECT_EQ(second.GetCount(), 1);
}

TEST(PtrArrayCtrl, GetAtOutsideTheArrayIsNull)
{
    const CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.GetAt(1), kB);
    EXPECT_EQ(array.GetAt(2), nullptr);
    EXPECT_EQ(array.GetAt(-1), nullptr);
    EXPECT_EQ(array.GetAt(kMost), nullptr);
    EXPECT_EQ(array.GetAt(kLeast), nullptr);
}

TEST(PtrArrayCtrl, SetReplacesTheItem)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.Set(1, kC), 1);
    EXPECT_EQ(array.Set(0, kD), 0);
    EXPECT_EQ(Items(array), (Pointers{ kD, kC }));
}

TEST(PtrArrayCtrl, SetOutsideTheArrayChangesNothing)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.Set(2, kC), -1);
    EXPECT_EQ(array.Set(-1, kC), -1);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB }));
}

TEST(PtrArrayCtrl, HeadAndTailAreTheFirstAndTheLast)
{
    const CPtrArrayCtrl array = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(array.GetHead(), kA);
    EXPECT_EQ(array.GetTail(), kC);
}

TEST(PtrArrayCtrl, SizeAndCountAreTheSameAtEveryStep)
{
    CPtrArrayCtrl array;
    for (std::int32_t count = 1; count <= 5; ++count) {
        array.Add(kA, 0);
        EXPECT_EQ(array.GetSize(), count);
        EXPECT_EQ(array.GetCount(), count);
    }
}

TEST(PtrArrayCtrl, TheEndOfAnArrayLeavesItsItems)
{
    int value = 7;
    {
        const CPtrArrayCtrl array = ArrayOf({ &value });
        const CPtrArrayCtrl copy(array);
    }
    EXPECT_EQ(value, 7);
}

} // namespace
