#include "containers/ptr_array_ctrl.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

int g_objects[10];
void* const kA = &g_objects[0];
void* const kB = &g_objects[1];
void* const kC = &g_objects[2];
void* const kD = &g_objects[3];

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

using Pointers = std::vector<void*>;

CPtrArrayCtrl ArrayOf(const Pointers& items)
{
    CPtrArrayCtrl array;
    for (void* item : items)
        array.Add(item, -1);
    return array;
}

CPtrArrayCtrl ArrayOfMany(std::int32_t count)
{
    return ArrayOf(Pointers(static_cast<std::size_t>(count), kA));
}

Pointers Items(const CPtrArrayCtrl& array)
{
    Pointers items;
    for (std::int32_t i = 0; i < array.GetCount(); ++i)
        items.push_back(array.GetAt(i));
    return items;
}

TEST(PtrArrayCtrl, FindYieldsEveryIndexAndEmptiesTheResultFirst)
{
    const CPtrArrayCtrl array = ArrayOf({ kA, kB, kA });
    CPtrArrayCtrl result = ArrayOf({ kD });
    array.Find(kA, result);
    ASSERT_EQ(result.GetCount(), 2);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(result.GetAt(0)), 0);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(result.GetAt(1)), 2);
}

TEST(PtrArrayCtrl, FindIntoTheArrayItselfLeavesItEmpty)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kA });
    array.Find(kA, array);
    EXPECT_EQ(array.GetCount(), 0);
}

TEST(PtrArrayCtrl, FindNextGoesOnBehindTheLastMatch)
{
    CPtrArrayCtrl array = ArrayOf({ kB, kA, kA, kB, kA });
    EXPECT_EQ(array.FindFirst(kA), 1);
    EXPECT_EQ(array.FindNext(kA), 2);
    EXPECT_EQ(array.FindNext(kA), 4);
    EXPECT_EQ(array.FindNext(kA), -1);
}

TEST(PtrArrayCtrl, FindNextBeforeAnyFindFirstStartsAtTheHead)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kA });
    EXPECT_EQ(array.FindNext(kA), 0);
    EXPECT_EQ(array.FindNext(kA), 2);
    EXPECT_EQ(array.FindFirst(kA), 0);
}

TEST(PtrArrayCtrl, AFailedSearchKeepsTheFindPosition)
{
    CPtrArrayCtrl array = ArrayOf({ kA, kB, kA });
    EXPECT_EQ(array.FindFirst(kA), 0);
    EXPECT_EQ(array.FindFirst(kD), -1);
    EXPECT_EQ(array.FindNext(kD), -1);
    EXPECT_EQ(array.FindNext(kA), 2);
}

TEST(PtrArrayCtrl, FindNextBehindAShrunkArrayFindsNothing)
{
    CPtrArrayCtrl array = ArrayOf({ kB, kB, kA });
    EXPECT_EQ(array.FindFirst(kA), 2);
    array.DeleteAt(0, 2);
    EXPECT_EQ(array.FindNext(kA), -1);
    array.DeleteAll();
    EXPECT_EQ(array.FindNext(kA), -1);
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
