#include "tests/containers/pointers.h"
#include "tests/containers/ptr_list_ctrl_peer.h"

#include <gtest/gtest.h>

namespace {

using namespace cardsong::test;

CPtrListCtrl ListOf(const Pointers& items)
{
    return Filled<CPtrListCtrl>(items);
}

TEST(PtrListCtrl, DeleteAtRemovesAndReturnsTheItem)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    EXPECT_EQ(list.DeleteAt(1, 1), kB);
    EXPECT_EQ(Items(list), (Pointers{ kA, kC }));
}

TEST(PtrListCtrl, DeleteAtOfNothingReturnsNull)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.DeleteAt(0, 0), nullptr);
    EXPECT_EQ(list.DeleteAt(0, -1), nullptr);
    EXPECT_EQ(list.DeleteAt(2, 1), nullptr);
    EXPECT_EQ(list.DeleteAt(-1, std::numeric_limits<std::int32_t>::max()), nullptr);
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(PtrListCtrl, DeleteAtPastTheEndStopsAtTheLastItem)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD });
    EXPECT_EQ(list.DeleteAt(2, 5), kC);
    EXPECT_EQ(Items(list), (Pointers{ kA, kB }));
    EXPECT_EQ(list.GetTail(), kB);
}

TEST(PtrListCtrl, DeleteAtOfTheHeadMovesTheHead)
{
    CPtrListCtrl list = ListOf({ kA, kB });
    EXPECT_EQ(list.DeleteAt(0, 1), kA);
    EXPECT_EQ(list.GetHead(), kB);
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, DeleteAtOfTheOnlyItemLeavesAUsableList)
{
    CPtrListCtrl list = ListOf({ kA });
    EXPECT_EQ(list.DeleteAt(0, 1), kA);
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), -1);
    list.Add(kB, -1);
    EXPECT_EQ(list.GetTail(), kB);
}

TEST(PtrListCtrl, DeleteAtRemembersTheNeighbour)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    list.DeleteAt(1, 1);
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), 1);
    list.DeleteAt(1, 1);
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), 0);
}

TEST(PtrListCtrl, DeleteAllEmptiesTheListAndLeavesTheItems)
{
    int value = 7;
    CPtrListCtrl list = ListOf({ &value, kB });
    list.DeleteAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetTail(), nullptr);
    EXPECT_EQ(value, 7);
}

TEST(PtrListCtrl, AddRemembersTheNewNode)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), 2);
    list.Add(kD, 1);
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), 1);
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, WalkingDownwardsStartsEachStepFromTheRememberedNode)
{
    CPtrListCtrl list;
    for (int i = 0; i < 100; ++i)
        list.Add(kA, -1);
    for (std::int32_t i = 97; i > 1; --i) {
        list.GetAt(i + 1);
        EXPECT_EQ(CPtrListCtrlPeer::Origin(list, i), "cache") << i;
    }
}

TEST(PtrListCtrl, TheNearerEndIsTheOriginWhenTheRememberedNodeIsNoNearer)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD, kA });
    list.GetAt(0); // as far from what follows as the head is
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 2), "head");
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 3), "tail");
}

TEST(PtrListCtrl, WalkingInOrderStartsEachStepFromTheRememberedNode)
{
    CPtrListCtrl list;
    for (int i = 0; i < 100; ++i)
        list.Add(kA, -1);
    list.GetAt(10);
    for (std::int32_t i = 11; i < 99; ++i) {
        EXPECT_EQ(CPtrListCtrlPeer::Origin(list, i), "cache") << i;
        list.GetAt(i);
        EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), i);
    }
}

TEST(PtrListCtrl, TheHeadWinsATieWithTheTail)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD });
    list.GetAt(0);
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 2), "head"); // two from the head, two from the tail by its count
}

TEST(PtrListCtrl, TheHeadWinsATieWithTheRememberedNode)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD, kA, kB, kC, kD });
    list.GetAt(4);
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 2), "head");
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 3), "cache");
}

TEST(PtrListCtrl, TheTailWinsATieWithTheRememberedNode)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD, kA, kB, kC, kD });
    list.GetAt(4);
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 6), "tail"); // two from the end by its count, two from index 4
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 5), "cache");
}

TEST(PtrListCtrl, TheTailCountsOneStepMoreThanItTakes)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC, kD, kA, kB, kC, kD });
    list.GetAt(5);
    EXPECT_EQ(CPtrListCtrlPeer::Origin(list, 6), "cache"); // one from index 5, one from the last item counted as two
}

TEST(PtrListCtrl, AnIndexOutsideTheListKeepsTheRememberedNode)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    list.GetAt(1);
    list.GetAt(3);
    list.GetAt(-1);
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), 1);
}

TEST(PtrListCtrl, AnEmptiedListRemembersNoNode)
{
    CPtrListCtrl list = ListOf({ kA, kB, kC });
    list.GetAt(1);
    list.DeleteAll();
    EXPECT_EQ(CPtrListCtrlPeer::CachedIndex(list), -1);
    EXPECT_EQ(CPtrListCtrlPeer::Fault(list), "");
}

TEST(PtrListCtrl, FindOfAnItemThatIsNotThereOnlyEmptiesTheResult)
{
    const CPtrListCtrl list = ListOf({ kA, kB });
    CPtrListCtrl result = ListOf({ kC });
    list.Find(kD, result);
    EXPECT_TRUE(result.IsEmpty());
}

TEST(PtrListCtrl, ACopyKnowsNoMatchOfTheListItIsMadeFrom)
{
    CPtrListCtrl list = ListOf({ kA, kA });
    EXPECT_EQ(list.FindFirst(kA), 0);
    CPtrListCtrl copy(list);
    EXPECT_EQ(copy.FindNext(kA), 0);
    EXPECT_EQ(list.FindNext(kA), 1);
}

} // namespace
