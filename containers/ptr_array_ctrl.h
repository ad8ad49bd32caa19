// An exported, growable array of untyped pointers, addressed by a 0-based index: the contiguous twin of CPtrListCtrl,
// with the same operations. It knows nothing of what its items point to and never frees them.
#pragma once

#include <cstdint>

// One thread only. An allocation that fails ends the program.
class CPtrArrayCtrl {
public:
    CPtrArrayCtrl() noexcept;
    CPtrArrayCtrl(const CPtrArrayCtrl& other) noexcept;
    ~CPtrArrayCtrl();

    std::int32_t GetSize() const;
    std::int32_t GetCount() const;
    bool IsEmpty() const;
    // How many items the array has room for: 0, or 1024 and its doubles. It doubles as soon as the count reaches half
    // of it, and halves when a removal leaves less than a quarter.
    std::int32_t GetCapability() const;

    // Inserts `item` so that it ends at index `pos`; a `pos` outside 0..count appends. Returns its index.
    std::int32_t Add(void* item, std::int32_t pos) noexcept;
    // Inserts the items of `other` in their order, the first at `pos`; outside 0..count they are appended. `other` may
    // be this array: its items are taken as they were. Returns the index of the first; -1 when `other` is null or
    // empty.
    std::int32_t Add(const CPtrArrayCtrl* other, std::int32_t pos) noexcept;
    // Replaces all items by those of `other` and returns the new count. Null: nothing happens, result 0. A copy of an
    // array onto itself empties it, since the old items go first.
    std::int32_t Copy(const CPtrArrayCtrl* other) noexcept;
    // Returns `index`, or -1 when there is no such item.
    std::int32_t Set(std::int32_t index, void* item);

    // Null when there is no such item.
    void* GetAt(std::int32_t index) const;
    void* GetHead() const;
    void* GetTail() const;

    // Empties `result`, then appends to it the index of every item equal to `item`, each as a pointer-sized integer.
    void Find(void* item, CPtrArrayCtrl& result) const noexcept;
    // The index of the first item equal to `item`, or of the first behind the last match that either call reported;
    // -1 when there is none, and the last match stays what it was.
    std::int32_t FindFirst(void* item);
    std::int32_t FindNext(void* item);

    // Removes up to `n` items from `index` on. Returns the item that stood there if any item is left behind the removed
    // ones, else null: so null when the removal reaches the end, and the item at `index` when `n` is 0. A negative `n`
    // removes nothing and gives null.
    void* DeleteAt(std::int32_t index, std::int32_t n) noexcept;
    void DeleteAll();

    CPtrArrayCtrl& operator=(const CPtrArrayCtrl& other) noexcept;
    CPtrArrayCtrl& operator+=(const CPtrArrayCtrl& other) noexcept;

private:
    bool Has(std::int32_t index) const { return index >= 0 && index < m_count; }
    void OnSizeChange(std::int64_t newCount);
    void** OpenGap(std::int32_t pos, std::int32_t n);
    std::int32_t FindFrom(std::int32_t index, void* item);

    void** m_data = nullptr; // null exactly when the capacity is 0
    std::int32_t m_capacity = 0;
    std::int32_t m_findPosition = -1;
    std::int32_t m_count = 0;
};

// The items of `first` followed by those of `second`.
CPtrArrayCtrl operator+(const CPtrArrayCtrl& first, const CPtrArrayCtrl& second) noexcept;
