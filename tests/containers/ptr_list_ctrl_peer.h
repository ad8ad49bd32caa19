// The tests' view into CPtrListCtrl: its links, and the node it remembers.
#pragma once

#include "containers/ptr_list_ctrl.h"

#include <string>

struct CPtrListCtrlPeer {
    static std::int32_t CachedIndex(const CPtrListCtrl& list) { return list.m_cachedIndex; }

    // Makes a list say that it has as many items, without having them.
    static void Claim(CPtrListCtrl& list, std::int32_t count) { list.m_count = count; }

    // Which end a look-up of `index` would start from.
    static std::string Origin(const CPtrListCtrl& list, std::int32_t index)
    {
        switch (list.NearestOrigin(index)) {
        case CPtrListCtrl::Origin::Head: return "head";
        case CPtrListCtrl::Origin::Tail: return "tail";
        case CPtrListCtrl::Origin::Cache: return "cache";
        }
        return "none";
    }

    // What is wrong with the links, the count, the tail or the remembered node; empty when all is well.
    static std::string Fault(const CPtrListCtrl& list)
    {
        const CPtrListCtrl::Node* before = list.m_head;
        const CPtrListCtrl::Node* cached = nullptr;
        std::int32_t count = 0;
        for (const CPtrListCtrl::Node* node = before->next; node != nullptr; before = node, node = node->next) {
            if (node->previous != before)
                return "node " + std::to_string(count) + " does not point back";
            if (count == list.m_cachedIndex)
                cached = node;
            ++count;
        }
        if (count != list.m_count)
            return "count " + std::to_string(list.m_count) + " of " + std::to_string(count) + " nodes";
        if (list.m_tail != (count == 0 ? nullptr : before))
            return "the tail is not the last node";
        if (list.m_cachedNode != cached || (list.m_cachedIndex == -1) != (cached == nullptr))
            return "the remembered node does not stand at index " + std::to_string(list.m_cachedIndex);
        return {};
    }
};
