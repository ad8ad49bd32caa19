#include "containers/ptr_list_ctrl.h"

#include <cstdlib>
#include <limits>
#include <vector>

namespace {

constexpr std::int32_t kUnreachable = std::numeric_limits<std::int32_t>::max();

} // namespace

CPtrListCtrl::CPtrListCtrl() noexcept : m_head(new Node{}) {}

CPtrListCtrl::CPtrListCtrl(const CPtrListCtrl& other) noexcept : CPtrListCtrl()
{
    Copy(&other);
}

CPtrListCtrl::~CPtrListCtrl()
{
    DeleteAll();
    delete m_head;
}

std::int32_t CPtrListCtrl::GetSize() const
{
    return m_count;
}

std::int32_t CPtrListCtrl::GetCount() const
{
    return m_count;
}

bool CPtrListCtrl::IsEmpty() const
{
    return m_count < 1;
}

std::int32_t CPtrListCtrl::Add(void* item, std::int32_t pos) noexcept
{
    if (pos < 0 || pos > m_count)
        pos = m_count;
    Node* before = pos == m_count ? m_tail : SearchToPos(pos - 1);
    if (before == nullptr)
        before = m_head;
    Node* node = new Node{ item, before->next, before };
    before->next = node;
    if (node->next != nullptr)
        node->next->previous = node;
    SetCurPos(pos, node);
    if (m_tail == nullptr)
        m_tail = node;
    else if (m_tail->next != nullptr)
        m_tail = m_tail->next;
    ++m_count;
    return pos;
}

std::int32_t CPtrListCtrl::Add(const CPtrListCtrl* other, std::int32_t pos) noexcept
{
    if (other == nullptr)
        return 0;
    // Taken before the first insertion, so that a list can be added to itself.
    std::vector<void*> items;
    items.reserve(static_cast<std::size_t>(other->m_count));
    for (const Node* node = other->m_head->next; node != nullptr; node = node->next)
        items.push_back(node->item);

    if (pos < 0 || pos > m_count)
        pos = m_count;
    for (void* item : items)
        Add(item, pos++);
    return static_cast<std::int32_t>(items.size());
}

std::int32_t CPtrListCtrl::Copy(const CPtrListCtrl* other) noexcept
{
    if (other == nullptr)
        return 0;
    DeleteAll();
    Add(other, -1);
    return m_count;
}

std::int32_t CPtrListCtrl::Set(std::int32_t index, void* item)
{
    Node* node = SearchToPos(index);
    if (node == nullptr)
        return -1;
    node->item = item;
    return index;
}

void* CPtrListCtrl::GetAt(std::int32_t index) const
{
    const Node* node = SearchToPos(index);
    return node != nullptr ? node->item : nullptr;
}

void* CPtrListCtrl::GetHead() const
{
    const Node* first = m_head->next;
    return first != nullptr ? first->item : nullptr;
}

void* CPtrListCtrl::GetTail() const
{
    return m_tail != nullptr ? m_tail->item : nullptr;
}

void CPtrListCtrl::Find(void* item, CPtrListCtrl& result) const noexcept
{
    result.DeleteAll();
    std::intptr_t index = 0;
    for (const Node* node = m_head->next; node != nullptr; node = node->next, ++index) {
        if (node->item == item)
            result.Add(reinterpret_cast<void*>(index), -1);
    }
}

std::int32_t CPtrListCtrl::FindFirst(void* item)
{
    return FindFrom(0, item);
}

std::int32_t CPtrListCtrl::FindNext(void* item)
{
    return FindFrom(m_findPosition + 1, item);
}

void* CPtrListCtrl::DeleteAt(std::int32_t index, std::int32_t n)
{
    if (index < 0 || n < 1 || index >= m_count)
        return nullptr;
    void* first = DeleteOne(index);
    for (std::int32_t removed = 1; removed < n && index < m_count; ++removed)
        DeleteOne(index);
    return first;
}

void CPtrListCtrl::DeleteAll()
{
    while (m_tail != nullptr && m_count > 0)
        DeleteAt(0, 1);
}

// A copy onto itself empties the list: see Copy.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
CPtrListCtrl& CPtrListCtrl::operator=(const CPtrListCtrl& other) noexcept
{
    Copy(&other);
    return *this;
}

CPtrListCtrl& CPtrListCtrl::operator+=(const CPtrListCtrl& other) noexcept
{
    Add(&other, -1);
    return *this;
}

void CPtrListCtrl::SetCurPos(std::int32_t index, Node* node) const
{
    m_cachedIndex = index;
    m_cachedNode = node;
}

// The tail counts one step more than it costs; on a tie the head wins over the tail, and the tail over the cache.
CPtrListCtrl::Origin CPtrListCtrl::NearestOrigin(std::int32_t index) const
{
    const std::int32_t fromHead = index;
    const std::int32_t fromTail = m_tail != nullptr ? m_count - index : kUnreachable;
    const std::int32_t fromCache = m_cachedIndex >= 0 ? std::abs(index - m_cachedIndex) : kUnreachable;
    if (fromHead <= fromTail && fromHead <= fromCache)
        return Origin::Head;
    return fromTail <= fromCache ? Origin::Tail : Origin::Cache;
}

CPtrListCtrl::Node* CPtrListCtrl::SearchToPos(std::int32_t index) const
{
    if (index < 0 || index >= m_count)
        return nullptr;
    Node* node = m_head;
    std::int32_t reached = -1;
    switch (NearestOrigin(index)) {
    case Origin::Head: break;
    case Origin::Tail:
        node = m_tail;
        reached = m_count - 1;
        break;
    case Origin::Cache:
        node = m_cachedNode;
        reached = m_cachedIndex;
        break;
    }
    for (; reached < index; ++reached)
        node = node->next;
    for (; reached > index; --reached)
        node = node->previous;
    SetCurPos(index, node);
    return node;
}

void* CPtrListCtrl::DeleteOne(std::int32_t index)
{
    Node* node = SearchToPos(index);
    Node* before = node->previous == m_head ? nullptr : node->previous;
    node->previous->next = node->next;
    if (node->next != nullptr) {
        node->next->previous = node->previous;
        SetCurPos(index, node->next);
    } else {
        SetCurPos(index - 1, before); // -1 and null when it was the only item
    }
    if (node == m_tail)
        m_tail = before;
    void* item = node->item;
    delete node;
    --m_count;
    return item;
}

std::int32_t CPtrListCtrl::FindFrom(std::int32_t index, void* item)
{
    for (; index < m_count; ++index) {
        if (GetAt(index) == item) {
            m_findPosition = index;
            return index;
        }
    }
    return -1;
}

CPtrListCtrl operator+(const CPtrListCtrl& first, const CPtrListCtrl& second) noexcept
{
    CPtrListCtrl sum(first);
    sum += second;
    return sum;
}
