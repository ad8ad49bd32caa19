#include "tests/containers/pointers.h"
#include "tests/containers/ptr_list_ctrl_peer.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

CPtrListCtrl ListOf(const Pointers& items)
{
    return Filled<CPtrListCtrl>(items);
}

TEST(PtrListCtrl, ANewListIsEmpty)
{
    CPtrListCtrl list;
    EXPECT_EQ(list.GetSize(), 0);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHead(), nullptr);
    EXPECT_EQ(list.GetTail(), nullptr);
    EXPECT_EQ(list.GetAt(0), nullptr);
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), -1);
}

TEST(PtrListCtrl, AListWithOneItemIsNotEmpty)
{
    CPtrListCtrl list = ListOf({ kA });
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(list.GetSize(), 1);
}

TEST(PtrListCtrl, AddAtMinusOneAppends)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Add(kC, -1), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC }));
}

TEST(PtrListCtrl, AddPastTheEndAppends)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Add(kC, 3), 2);
    EXPECT_EQ(list.Add(kD, std::numeric_limits<std::int32_t>::max()), 3);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC, kD }));
}

TEST(PtrListCtrl, AddBelowMinusOneAppends)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Add(kC, -2), 2);
    EXPECT_EQ(list.Add(kD, std::numeric_limits<std::int32_t>::min()), 3);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC, kD }));
}

TEST(PtrListCtrl, AddAtTheCountAppends)
{
    CPtrListCtrl list = ListOf({ kA });
    EXPECT_EQ(list.Add(kB, 1), 1);
    EXPECT_EQ(list.GetTail(), kB);
}

TEST(PtrListCtrl, AddAtZeroOfAnEmptyListMakesHeadAndTail)
{
    CPtrListCtrl list;
    EXPECT_EQ(list.Add(kA, 0), 0);
    EXPECT_EQ(list.GetHead(), kA);
    EXPECT_EQ(list.GetTail(), kA);
    EXPECT_EQ(list.GetCount(), 1);
}

TEST(PtrListCtrl, AddInTheMiddleMovesTheRestUp)
{
    CPtrListCtrl list = ListOf({ kA, kC });
    EXPECT_EQ(list.Add(kB, 1), 1);
    EXPECT_EQ(list.Add(kD, 0), 0);
    EXPECT_EQ(Items(list), (Pointers{ kD, kA, kB, kC }));
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, ANullItemIsAnItem)
{
    CPtrListCtrl list;
    list.Add(static_cast<void*>(nullptr), -1);
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.FindFirst(nullptr), 0);
}

TEST(PtrListCtrl, AddOfAListAppendsInOrderAndReturnsItsCount)
{
    CPtrListCtrl list = ListOf({ kA });
    CPtrListCtrl other = ListOf({ kB, kC });
    EXPECT_EQ(list.Add(&other, -1), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(Items(other), (Pointers{ kB, kC }));
}

TEST(PtrListCtrl, AddOfAListAtAPositionKeepsItsOrder)
{
    CPtrListCtrl list = ListOf({ kA, kD });
    CPtrListCtrl other = ListOf({ kB, kC });
    EXPECT_EQ(list.Add(&other, 1), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC, kD }));
}

TEST(PtrListCtrl, AddOfAListAtZeroPutsItFirst)
{
    CPtrListCtrl list = ListOf({ kC });
    CPtrListCtrl other = ListOf({ kA, kB });
    EXPECT_EQ(list.Add(&other, 0), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC }));
}

TEST(PtrListCtrl, AddOfAListBelowMinusOneAppendsAllOfIt)
{
    CPtrListCtrl list = ListOf({ kA });
    CPtrListCtrl other = ListOf({ kB, kC, kD });
    EXPECT_EQ(list.Add(&other, -2), 3);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC, kD }));
}

TEST(PtrListCtrl, AddOfAListPastTheEndAppendsAllOfIt)
{
    CPtrListCtrl list = ListOf({ kA });
    CPtrListCtrl other = ListOf({ kB, kC });
    EXPECT_EQ(list.Add(&other, std::numeric_limits<std::int32_t>::max()), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kC }));
}

TEST(PtrListCtrl, AddOfANullListDoesNothing)
{
    CPtrListCtrl list = ListOf({ kA });
    EXPECT_EQ(list.Add(static_cast<CPtrListCtrl*>(nullptr), 0), 0);
    EXPECT_EQ(Items(list), (Pointers{ kA }));
}

TEST(PtrListCtrl, AddOfTheListItselfInTheMiddleTakesItsItemsAsTheyWere)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Add(&list, 1), 2);
    EXPECT_EQ(Items(list), (Pointers{ kA, kA, kB, kB }));
}

TEST(PtrListCtrl, CopyReplacesTheItemsAndReturnsTheNewCount)
{
    CPtrListCtrl list = ListOf({ kA });
    CPtrListCtrl other = ListOf({ kB, kC });
    EXPECT_EQ(list.Copy(&other), 2);
    EXPECT_EQ(Items(list), (Pointers{ kB, kC }));
}

TEST(PtrListCtrl, CopyOfNullKeepsTheItems)
{
    CPtrListCtrl list = ListOf({ kA });
    EXPECT_EQ(list.Copy(nullptr), 0);
    EXPECT_EQ(Items(list), (Pointers{ kA }));
}

TEST(PtrListCtrl, TheCopyConstructorCopiesTheItems)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    CPtrListCtrl copy(list);
    copy.Add(kC, -1);
    EXPECT_EQ(Items(copy), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(Items(list), (Pointers{ kA, kB }));
}

TEST(PtrListCtrl, AssignmentOfAListToItselfEmptiesIt)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    CPtrListCtrl& same = list;
    list = same;
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, AssignmentReplacesAndYieldsTheList)
{
    CPtrListCtrl list = ListOf({ kA });
    const CPtrListCtrl other = ListOf({ kB });
    EXPECT_EQ(&(list = other), &list);
    EXPECT_EQ(Items(list), (Pointers{ kB }));
}

TEST(PtrListCtrl, PlusAssignmentOfAListToItselfDoublesIt)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(&(list += list), &list);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB, kA, kB }));
}

TEST(PtrListCtrl, PlusYieldsTheFirstThenTheSecond)
{
    const CPtrListCtrl first = ListOf({ kA, kB });
    const CPtrListCtrl second = ListOf({ kC });
    EXPECT_EQ(Items(first + second), (Pointers{ kA, kB, kC }));
    EXPECT_EQ(first.GetCount(), 2);
    EXPECT_EQ(second.GetCount(), 1);
}

TEST(PtrListCtrl, GetAtOutsideTheListIsNull)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.GetAt(2), nullptr);
    EXPECT_EQ(list.GetAt(-1), nullptr);
    EXPECT_EQ(list.GetAt(1), kB);
}

TEST(PtrListCtrl, SetReplacesTheItem)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Set(1, kC), 1);
    EXPECT_EQ(list.Set(0, kD), 0);
    EXPECT_EQ(Items(list), (Pointers{ kD, kC }));
}

TEST(PtrListCtrl, SetOutsideTheListChangesNothing)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.Set(2, kC), -1);
    EXPECT_EQ(list.Set(-1, kC), -1);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB }));
}

TEST(PtrListCtrl, HeadAndTailAreTheFirstAndTheLast)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    EXPECT_EQ(list.GetHead(), kA);
    EXPECT_EQ(list.GetTail(), kC);
}

TEST(PtrListCtrl, CopyOfAnEmptyListEmpties)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    const CPtrListCtrl empty;
    EXPECT_EQ(list.Copy(&empty), 0);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, PlusOfAListWithItselfYieldsItTwice)
{
    const CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(Items(list + list), (Pointers{ kA, kB, kA, kB }));
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(PtrListCtrl, SizeAndCountAreTheSameAtEveryStep)
{
    CPtrListCtrl list;
    for (std::int32_t count = 1; count <= 5; ++count) {
        list.Add(kA, 0);
        EXPECT_EQ(list.GetSize(), count);
        EXPECT_EQ(list.GetCount(), count);
    }
}

TEST(PtrListCtrl, TheEndOfAListLeavesItsItems)
{
    int value = 7;
    {
        CPtrListCtrl list = ListOf({ &value });
        const CPtrListCtrl copy(list);
    }
    EXPECT_EQ(value, 7);
}

} // namespace
