#include "containers/ptr_array_ctrl.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::int64_t kLeastCapacity = 1024;
constexpr std::int64_t kMostCapacity = std::int64_t{ 1 } << 30; // the last double that 32 bits hold

// A change of the count doubles the capacity once, halves it once or leaves it. It doubles again only while the new
// items do not fit.
std::int64_t WantedCapacity(std::int64_t capacity, std::int64_t newCount)
{
    if (newCount < capacity / 2 && newCount >= capacity / 4)
        return capacity;
    std::int64_t wanted = newCount >= capacity / 2 ? capacity * 2 : capacity / 2;
    wanted = std::max(wanted, kLeastCapacity);
    while (wanted < newCount)
        wanted *= 2;
    return wanted;
}

} // namespace

CPtrArrayCtrl::CPtrArrayCtrl() noexcept = default;

CPtrArrayCtrl::CPtrArrayCtrl(const CPtrArrayCtrl& other) noexcept
{
    Copy(&other);
}

CPtrArrayCtrl::~CPtrArrayCtrl()
{
    DeleteAll();
}

std::int32_t CPtrArrayCtrl::GetSize() const
{
    return m_count;
}

std::int32_t CPtrArrayCtrl::GetCount() const
{
    return m_count;
}

bool CPtrArrayCtrl::IsEmpty() const
{
    return m_count < 1;
}

std::int32_t CPtrArrayCtrl::GetCapability() const
{
    return m_capacity;
}

std::int32_t CPtrArrayCtrl::Add(void* item, std::int32_t pos) noexcept
{
    if (pos < 0 || pos > m_count)
        pos = m_count;
    *OpenGap(pos, 1) = item;
    return pos;
}

std::int32_t CPtrArrayCtrl::Add(const CPtrArrayCtrl* other, std::int32_t pos) noexcept
{
    if (other == nullptr || other->m_count < 1)
        return -1;
    if (pos < 0 || pos > m_count)
        pos = m_count;
    const std::int32_t n = other->m_count;
    void** gap = OpenGap(pos, n);
    if (other == this) { // what stood from `pos` on now stands behind the gap
        std::copy_n(m_data, pos, gap);
        std::copy_n(gap + n, n - pos, gap + pos);
    } else {
        std::copy_n(other->m_data, n, gap);
    }
    return pos;
}

std::int32_t CPtrArrayCtrl::Copy(const CPtrArrayCtrl* other) noexcept
{
    if (other == nullptr)
        return 0;
    DeleteAll();
    Add(other, -1);
    return m_count;
}

std::int32_t CPtrArrayCtrl::Set(std::int32_t index, void* item)
{
    if (!Has(index))
        return -1;
    m_data[index] = item;
    return index;
}

void* CPtrArrayCtrl::GetAt(std::int32_t index) const
{
    return Has(index) ? m_data[index] : nullptr;
}

void* CPtrArrayCtrl::GetHead() const
{
    return GetAt(0);
}

void* CPtrArrayCtrl::GetTail() const
{
    return GetAt(m_count - 1);
}

void CPtrArrayCtrl::Find(void* item, CPtrArrayCtrl& result) const noexcept
{
    result.DeleteAll();
    for (std::int32_t i = 0; i < m_count; ++i) {
        if (m_data[i] == item)
            result.Add(reinterpret_cast<void*>(static_cast<std::intptr_t>(i)), -1);
    }
}

std::int32_t CPtrArrayCtrl::FindFirst(void* item)
{
    return FindFrom(0, item);
}

std::int32_t CPtrArrayCtrl::FindNext(void* item)
{
    return FindFrom(m_findPosition + 1, item);
}

void* CPtrArrayCtrl::DeleteAt(std::int32_t index, std::int32_t n) noexcept
{
    if (!Has(index) || n < 0)
        return nullptr;
    void** gap = m_data + index;
    void** rest = gap + std::min(m_count - index, n);
    void** end = m_data + m_count;
    void* removed = rest != end ? *gap : nullptr;
    std::copy(rest, end, gap);
    m_count -= static_cast<std::int32_t>(rest - gap);
    OnSizeChange(m_count);
    return removed;
}

void CPtrArrayCtrl::DeleteAll()
{
    std::free(m_data);
    m_data = nullptr;
    m_capacity = 0;
    m_count = 0;
}

// A copy onto itself empties the array: see Copy.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
CPtrArrayCtrl& CPtrArrayCtrl::operator=(const CPtrArrayCtrl& other) noexcept
{
    Copy(&other);
    return *this;
}

CPtrArrayCtrl& CPtrArrayCtrl::operator+=(const CPtrArrayCtrl& other) noexcept
{
    Add(&other, -1);
    return *this;
}

// `newCount`: the count after an insertion that is to come, or after a removal that is done.
void CPtrArrayCtrl::OnSizeChange(std::int64_t newCount)
{
    const std::int64_t wanted = WantedCapacity(m_capacity, newCount);
    if (wanted == m_capacity)
        return;
    if (wanted > kMostCapacity)
        std::abort();
    // A null block makes realloc the same as malloc.
    void* data = std::realloc(m_data, static_cast<std::size_t>(wanted) * sizeof(void*));
    if (data == nullptr)
        std::abort();
    m_data = static_cast<void**>(data);
    m_capacity = static_cast<std::int32_t>(wanted);
}

// Makes room for `n` items at `pos` (0..count) and counts them; what they are is up to the caller.
void** CPtrArrayCtrl::OpenGap(std::int32_t pos, std::int32_t n)
{
    OnSizeChange(std::int64_t{ m_count } + n);
    void** gap = m_data + pos;
    std::copy_backward(gap, m_data + m_count, m_data + m_count + n);
    m_count += n;
    return gap;
}

std::int32_t CPtrArrayCtrl::FindFrom(std::int32_t index, void* item)
{
    for (; index < m_count; ++index) {
        if (m_data[index] == item) {
            m_findPosition = index;
            return index;
        }
    }
    return -1;
}

CPtrArrayCtrl operator+(const CPtrArrayCtrl& first, const CPtrArrayCtrl& second) noexcept
{
    CPtrArrayCtrl sum(first);
    sum += second;
    return sum;
}
