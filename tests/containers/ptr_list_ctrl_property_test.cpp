// CPtrListCtrl against a plain vector: the same random operations, the same answers, sound links after each.
#include "tests/containers/ptr_list_ctrl_peer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>
#include <vector>

namespace {

constexpr int kOperations = 120'000;
constexpr std::size_t kMostItems = 60;

unsigned Seed()
{
    const char* given = std::getenv("CARDSONG_SEED");
    return given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device()();
}

// A list, the model it must equal, and the find position that the model keeps.
class Twins {
public:
    explicit Twins(unsigned seed) : m_random(seed) {}

    void Step()
    {
        switch (Number(0, 13)) {
        case 0:
        case 1:
        case 2: AddItem(); break;
        case 3: AddList(); break;
        case 4: AddItself(); break;
        case 5: SetItem(); break;
        case 6:
        case 7: Get(); break;
        case 8: FindAll(); break;
        case 9: FindOne(); break;
        case 10:
        case 11: Delete(); break;
        case 12: Renew(); break;
        case 13: CompareAll(); break;
        }
        if (m_model.size() > kMostItems)
            DeleteRange(0, static_cast<std::int32_t>(m_model.size() / 2));
        ASSERT_EQ(CPtrListCtrlPeer::Fault(m_list), "");
        ASSERT_EQ(m_list.GetCount(), Count());
        ASSERT_EQ(m_list.IsEmpty(), m_model.empty());
        ASSERT_EQ(m_list.GetHead(), m_model.empty() ? nullptr : m_model.front());
        ASSERT_EQ(m_list.GetTail(), m_model.empty() ? nullptr : m_model.back());
    }

private:
    std::int32_t Number(std::int32_t least, std::int32_t most)
    {
        return std::uniform_int_distribution<std::int32_t>(least, most)(m_random);
    }
    void* Item() { return reinterpret_cast<void*>(static_cast<std::intptr_t>(Number(0, 9))); }
    std::int32_t Count() const { return static_cast<std::int32_t>(m_model.size()); }
    std::int32_t Position() { return Number(-3, Count() + 2); }
    bool Inside(std::int32_t index) const { return index >= 0 && index < Count(); }
    std::int32_t Clamped(std::int32_t pos) const { return pos < 0 || pos > Count() ? Count() : pos; }

    void AddItem()
    {
        const std::int32_t pos = Position();
        void* item = Item();
        const std::int32_t expected = Clamped(pos);
        m_model.insert(m_model.begin() + expected, item);
        ASSERT_EQ(m_list.Add(item, pos), expected);
    }

    void AddList()
    {
        CPtrListCtrl other;
        std::vector<void*> items(static_cast<std::size_t>(Number(0, 5)));
        for (void*& item : items) {
            item = Item();
            other.Add(item, -1);
        }
        const std::int32_t pos = Position();
        m_model.insert(m_model.begin() + Clamped(pos), items.begin(), items.end());
        ASSERT_EQ(m_list.Add(&other, pos), static_cast<std::int32_t>(items.size()));
    }

    void AddItself()
    {
        const std::vector<void*> items = m_model;
        const std::int32_t pos = Position();
        m_model.insert(m_model.begin() + Clamped(pos), items.begin(), items.end());
        ASSERT_EQ(m_list.Add(&m_list, pos), static_cast<std::int32_t>(items.size()));
    }

    void SetItem()
    {
        const std::int32_t index = Position();
        void* item = Item();
        if (Inside(index))
            m_model[static_cast<std::size_t>(index)] = item;
        ASSERT_EQ(m_list.Set(index, item), Inside(index) ? index : -1);
    }

    void Get()
    {
        const std::int32_t index = Position();
        ASSERT_EQ(m_list.GetAt(index), Inside(index) ? m_model[static_cast<std::size_t>(index)] : nullptr);
    }

    void FindAll()
    {
        CPtrListCtrl result;
        void* item = Item();
        m_list.Find(item, result);
        std::vector<std::intptr_t> expected;
        for (std::size_t i = 0; i < m_model.size(); ++i) {
            if (m_model[i] == item)
                expected.push_back(static_cast<std::intptr_t>(i));
        }
        ASSERT_EQ(static_cast<std::size_t>(result.GetCount()), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_EQ(reinterpret_cast<std::intptr_t>(result.GetAt(static_cast<std::int32_t>(i))), expected[i]);
    }

    void FindOne()
    {
        void* item = Item();
        const bool first = Number(0, 1) == 0;
        std::int32_t expected = -1;
        for (std::int32_t i = first ? 0 : m_findPosition + 1; i < Count() && expected < 0; ++i) {
            if (m_model[static_cast<std::size_t>(i)] == item)
                expected = i;
        }
        if (expected >= 0)
            m_findPosition = expected;
        ASSERT_EQ(first ? m_list.FindFirst(item) : m_list.FindNext(item), expected);
    }

    void Delete() { DeleteRange(Position(), Number(-1, 4)); }

    void DeleteRange(std::int32_t index, std::int32_t n)
    {
        void* expected = nullptr;
        if (Inside(index) && n > 0) {
            expected = m_model[static_cast<std::size_t>(index)];
            const auto from = m_model.begin() + index;
            m_model.erase(from, from + std::min(n, Count() - index));
        }
        ASSERT_EQ(m_list.DeleteAt(index, n), expected);
    }

    void Renew()
    {
        if (Number(0, 9) == 0) {
            m_list.DeleteAll();
            m_model.clear();
        } else {
            const CPtrListCtrl copy(m_list);
            m_list = copy;
        }
    }

    void CompareAll()
    {
        const bool upwards = Number(0, 1) == 0;
        for (std::int32_t i = 0; i < Count(); ++i) {
            const std::int32_t index = upwards ? i : Count() - 1 - i;
            ASSERT_EQ(m_list.GetAt(index), m_model[static_cast<std::size_t>(index)]);
        }
    }

    std::mt19937 m_random;
    CPtrListCtrl m_list;
    std::vector<void*> m_model;
    std::int32_t m_findPosition = -1;
};

TEST(PtrListCtrlProperty, RandomOperationsGiveThePlainListsAnswers)
{
    const unsigned seed = Seed();
    std::cout << "CARDSONG_SEED=" << seed << '\n';
    Twins twins(seed);
    for (int operation = 0; operation < kOperations; ++operation) {
        twins.Step();
        if (HasFatalFailure())
            FAIL() << "operation " << operation << " of seed " << seed;
    }
}

} // namespace
