// An exported, doubly linked list of untyped pointers, addressed by a 0-based index. It knows nothing of what its items
// point to and never frees them: their owner does so before DeleteAll or the end of the list.
#pragma once

#include <cstdint>

// One thread only. Walking by ascending or descending index costs one step per call: the list remembers the node it
// last reached. An allocation that fails ends the program.
class CPtrListCtrl {
public:
    CPtrListCtrl() noexcept;
    CPtrListCtrl(const CPtrListCtrl& other) noexcept;
    ~CPtrListCtrl();

    std::int32_t GetSize() const;
    std::int32_t GetCount() const;
    bool IsEmpty() const;

    // Inserts `item` so that it ends at index `pos`; a `pos` outside 0..count appends. Returns its index.
    std::int32_t Add(void* item, std::int32_t pos) noexcept;
    // Inserts the items of `other` in their order, the first at `pos`; outside 0..count they are appended. `other` may
    // be this list, which then doubles. Returns the number of items that `other` had; 0 for null.
    std::int32_t Add(const CPtrListCtrl* other, std::int32_t pos) noexcept;
    // Replaces all items by those of `other` and returns the new count. Null: nothing happens, result 0. A copy of a
    // list onto itself empties it, since the old items go first.
    std::int32_t Copy(const CPtrListCtrl* other) noexcept;
    // Returns `index`, or -1 when there is no such item.
    std::int32_t Set(std::int32_t index, void* item);

    // Null when there is no such item.
    void* GetAt(std::int32_t index) const;
    void* GetHead() const;
    void* GetTail() const;

    // Empties `result`, then appends to it the index of every item equal to `item`, each as a pointer-sized integer.
    void Find(void* item, CPtrListCtrl& result) const noexcept;
    // The index of the first item equal to `item`, or of the first behind the last match that either call reported;
    // -1 when there is none, and the last match stays what it was.
    std::int32_t FindFirst(void* item);
    std::int32_t FindNext(void* item);

    // Removes up to `n` items from `index` on. Returns the item that stood there, null when nothing was removed.
    void* DeleteAt(std::int32_t index, std::int32_t n);
    void DeleteAll();

    CPtrListCtrl& operator=(const CPtrListCtrl& other) noexcept;
    CPtrListCtrl& operator+=(const CPtrListCtrl& other) noexcept;

private:
    friend struct CPtrListCtrlPeer; // the tests' view of the links and of the remembered node

    struct Node {
        void* item;
        Node* next;
        Node* previous;
    };
    enum class Origin { Head, Tail, Cache };

    void SetCurPos(std::int32_t index, Node* node) const;
    Origin NearestOrigin(std::int32_t index) const;
    Node* SearchToPos(std::int32_t index) const;
    void* DeleteOne(std::int32_t index); // 0..count-1
    std::int32_t FindFrom(std::int32_t index, void* item);

    mutable std::int32_t m_cachedIndex = -1; // -1 exactly when there is no cached node
    Node* m_head;                            // a sentinel before the first item
    Node* m_tail = nullptr;                  // null exactly when the list is empty
    mutable Node* m_cachedNode = nullptr;
    std::int32_t m_findPosition = -1;
    std::int32_t m_count = 0;
};

// The items of `first` followed by those of `second`.
CPtrListCtrl operator+(const CPtrListCtrl& first, const CPtrListCtrl& second) noexcept;
