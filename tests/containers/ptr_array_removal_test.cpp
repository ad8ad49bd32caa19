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

TEST(PtrArrayCtrl, DeleteAtReturnsTheItemWhileOthersMoveDown)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kC, kD });
    EXPECT_EQ(array.DeleteAt(1, 2), kB);
    EXPECT_EQ(Items(array), (Pointers{ kA, kD }));
    EXPECT_EQ(array.DeleteAt(0, 1), kA);
    EXPECT_EQ(Items(array), (Pointers{ kD }));
}

TEST(PtrArrayCtrl, DeleteAtThatReachesTheEndReturnsNull)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(array.DeleteAt(2, 1), nullptr);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB }));
    EXPECT_EQ(array.DeleteAt(0, 2), nullptr);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(PtrArrayCtrl, DeleteAtOfMoreThanThereIsEmptiesTheArrayAndReturnsNull)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(array.DeleteAt(0, 1000), nullptr);
    EXPECT_TRUE(array.IsEmpty());
    CPtrArrayCtrl another = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(another.DeleteAt(1, kMost), nullptr);
    EXPECT_EQ(Items(another), (Pointers{ kA }));
}

TEST(PtrArrayCtrl, DeleteAtOfOneOfThreeReturnsTheFirst)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kC });
    EXPECT_EQ(array.DeleteAt(0, 1), kA);
    EXPECT_EQ(Items(array), (Pointers{ kB, kC }));
}

TEST(PtrArrayCtrl, DeleteAtOfNoItemsReturnsTheItemAndRemovesNothing)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.DeleteAt(0, 0), kA);
    EXPECT_EQ(array.DeleteAt(1, 0), kB);
    EXPECT_EQ(array.GetCount(), 2);
}

TEST(PtrArrayCtrl, DeleteAtOutsideTheArrayOrOfANegativeNumberChangesNothing)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB });
    EXPECT_EQ(array.DeleteAt(2, 1), nullptr);
    EXPECT_EQ(array.DeleteAt(2, 0), nullptr);
    EXPECT_EQ(array.DeleteAt(-1, 1), nullptr);
    EXPECT_EQ(array.DeleteAt(0, -1), nullptr);
    EXPECT_EQ(array.DeleteAt(0, kLeast), nullptr);
    EXPECT_EQ(Items(array), (Pointers{ kA, kB }));
    CPtrArrayCtrl empty;
    EXPECT_EQ(empty.DeleteAt(0, 1), nullptr);
    EXPECT_EQ(empty.GetCapability(), 0);
}

TEST(PtrArrayCtrl, DeleteAllGivesTheRoomBackAndLeavesTheItems)
{
    int value = 7;
    CPtrArrayCtrl array = ArrayOf({ &value, kB });
    array.DeleteAll();
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetCapability(), 0);
    EXPECT_EQ(value, 7);
    array.Add(kA, 0);
    EXPECT_EQ(array.GetTail(), kA);
}

TEST(PtrArrayCapacity, TheFirstItemMakesRoomFor1024)
{
    EXPECT_EQ(ArrayOfMany(1).GetCapability(), 1024);
    EXPECT_EQ(ArrayOfMany(511).GetCapability(), 1024);
}

TEST(PtrArrayCapacity, DoublesWhenTheCountReachesHalf)
{
    EXPECT_EQ(ArrayOfMany(512).GetCapability(), 2048);
    EXPECT_EQ(ArrayOfMany(1023).GetCapability(), 2048);
    EXPECT_EQ(ArrayOfMany(1024).GetCapability(), 4096);
}

TEST(PtrArrayCapacity, HalvesWhenLessThanAQuarterIsLeft)
{
    CPtrArrayCtrl array = ArrayOfMany(512);
    array.DeleteAt(0, 1);
    EXPECT_EQ(array.GetCount(), 511);
    EXPECT_EQ(array.GetCapability(), 1024);
}

TEST(PtrArrayCapacity, StaysWhileAQuarterIsLeft)
{
    CPtrArrayCtrl array = ArrayOfMany(600);
    array.DeleteAt(0, 88);
    EXPECT_EQ(array.GetCount(), 512);
    EXPECT_EQ(array.GetCapability(), 2048);
}

TEST(PtrArrayCapacity, NeverFallsBelow1024WhileThereIsABlock)
{
    CPtrArrayCtrl array = ArrayOfMany(3);
    array.DeleteAt(0, 3);
    EXPECT_EQ(array.GetCapability(), 1024);
}

TEST(PtrArrayCapacity, HalvesOnceForOneRemovalHoweverMuchGoes)
{
    CPtrArrayCtrl array = ArrayOfMany(4096);
    EXPECT_EQ(array.GetCapability(), 16384);
    array.DeleteAt(0, 4095);
    EXPECT_EQ(array.GetCapability(), 8192);
}

TEST(PtrArrayCapacity, OneBulkWithinADoubleDoublesOnce)
{
    CPtrArrayCtrl array = ArrayOfMany(100);
    const CPtrArrayCtrl more = ArrayOfMany(1500);
    array.Add(&more, -1);
    EXPECT_EQ(array.GetCount(), 1600);
    EXPECT_EQ(array.GetCapability(), 2048);
}

TEST(PtrArrayCapacity, ABulkBeyondADoubleDoublesUntilItFits)
{
    const CPtrArrayCtrl more = ArrayOfMany(5000);
    CPtrArrayCtrl array;
    array.Add(&more, 0);
    EXPECT_EQ(array.GetCapability(), 8192);
    CPtrArrayCtrl another = ArrayOf({ kB, kC });
    EXPECT_EQ(another.Add(&more, 1), 1);
    EXPECT_EQ(another.GetCount(), 5002);
    EXPECT_EQ(another.GetCapability(), 8192);
    EXPECT_EQ(another.GetHead(), kB);
    EXPECT_EQ(another.GetTail(), kC);
}

TEST(PtrArrayCapacity, ABulkThatFitsExactlyIsNotDoubledAgain)
{
    const CPtrArrayCtrl more = ArrayOfMany(4096);
    CPtrArrayCtrl array;
    array.Add(&more, -1);
    EXPECT_EQ(array.GetCapability(), 4096);
}

// The rule looks at the count alone, so that even a removal doubles what one bulk has filled past half.
TEST(PtrArrayCapacity, ARemovalThatLeavesHalfDoubles)
{
    const CPtrArrayCtrl more = ArrayOfMany(3000);
    CPtrArrayCtrl array;
    array.Add(&more, -1);
    EXPECT_EQ(array.GetCapability(), 4096);
    array.DeleteAt(0, 1);
    EXPECT_EQ(array.GetCapability(), 8192);
}

TEST(PtrArrayCapacity, ACopyHasItsOwn)
{
    CPtrArrayCtrl array = ArrayOfMany(1024);
    EXPECT_EQ(array.GetCapability(), 4096);
    const CPtrArrayCtrl copy(array); // 1024 items at once, for which the first block is enough
    EXPECT_EQ(copy.GetCapability(), 1024);
    array.DeleteAll();
    EXPECT_EQ(copy.GetCount(), 1024);
}

TEST(PtrArrayCapacity, ADeletionOfNothingLooksAtTheCountToo)
{
    const CPtrArrayCtrl more = ArrayOfMany(3000);
    CPtrArrayCtrl array;
    array.Add(&more, -1);
    EXPECT_EQ(array.DeleteAt(0, 0), kA);
    EXPECT_EQ(array.GetCapability(), 8192);
    EXPECT_EQ(array.DeleteAt(3000, 1), nullptr); // outside the array, so nothing happens
    EXPECT_EQ(array.GetCapability(), 8192);
}

} // namespace
