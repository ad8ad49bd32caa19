// Both containers against a plain vector: the same random operations, the same answers, a sound inside after each.
#include "containers/ptr_array_ctrl.h"
#include "tests/containers/ptr_list_ctrl_peer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kOperations = 120'000;

unsigned Seed()
{
    const char* given = std::getenv("CARDSONG_SEED");
    return given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device()();
}

// Where the two containers answer differently.
struct ListRules {
    using Container = CPtrListCtrl;

    static std::int32_t ResultOfAdd(std::size_t n, std::int32_t) { return static_cast<std::int32_t>(n); }
    static void* ResultOfDelete(const std::vector<void*>& items, std::int32_t index, std::int32_t n)
    {
        return n > 0 ? items[static_cast<std::size_t>(index)] : nullptr;
    }
    static std::string Fault(const CPtrListCtrl& list) { return CPtrListCtrlPeer::Fault(list); }
    void CountWillBe(std::size_t) {}
    void Emptied() {}
};

struct ArrayRules {
    using Container = CPtrArrayCtrl;

    static std::int32_t ResultOfAdd(std::size_t n, std::int32_t pos) { return n > 0 ? pos : -1; }
    static void* ResultOfDelete(const std::vector<void*>& items, std::int32_t index, std::int32_t n)
    {
        const bool isSomethingBehind = n >= 0 && index + n < static_cast<std::int32_t>(items.size());
        return isSomethingBehind ? items[static_cast<std::size_t>(index)] : nullptr;
    }
    std::string Fault(const CPtrArrayCtrl& array) const
    {
        const auto expected = static_cast<std::int32_t>(m_capacity);
        return array.GetCapability() == expected ? "" : "capacity is not " + std::to_string(expected);
    }
    void CountWillBe(std::size_t count)
    {
        if (count >= m_capacity / 2)
            m_capacity *= 2;
        else if (count < m_capacity / 4)
            m_capacity /= 2;
        for (m_capacity = std::max<std::size_t>(m_capacity, 1024); m_capacity < count;)
            m_capacity *= 2;
    }
    void Emptied() { m_capacity = 0; }

private:
    std::size_t m_capacity = 0;
};

// A container, the model it must equal, and the find position that the model keeps.
template <typename Rules>
class Twins {
public:
    using Container = typename Rules::Container;

    // Past `mostItems` a good half of them is removed.
    Twins(unsigned seed, std::size_t mostItems) : m_random(seed), m_mostItems(mostItems) {}

    void Step()
    {
        switch (Number(0, 13)) {
        case 0:
        case 1:
        case 2: AddItem(); break;
        case 3: AddOther(); break;
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
        if (m_model.size() > m_mostItems)
            DeleteRange(0, static_cast<std::int32_t>(m_model.size() / 2));
        ASSERT_EQ(m_rules.Fault(m_container), "");
        ASSERT_EQ(m_container.GetCount(), Count());
        ASSERT_EQ(m_container.GetSize(), Count());
        ASSERT_EQ(m_container.IsEmpty(), m_model.empty());
        ASSERT_EQ(m_container.GetHead(), m_model.empty() ? nullptr : m_model.front());
        ASSERT_EQ(m_container.GetTail(), m_model.empty() ? nullptr : m_model.back());
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
        m_rules.CountWillBe(m_model.size() + 1);
        m_model.insert(m_model.begin() + expected, item);
        ASSERT_EQ(m_container.Add(item, pos), expected);
    }

    void AddOther()
    {
        Container other;
        const std::int32_t most = Number(0, 9) == 0 ? static_cast<std::int32_t>(m_mostItems) : 5;
        std::vector<void*> items(static_cast<std::size_t>(Number(0, most)));
        for (void*& item : items) {
            item = Item();
            other.Add(item, -1);
        }
        AddAll(items, &other);
    }

    void AddItself()
    {
        const std::vector<void*> items = m_model;
        AddAll(items, &m_container);
    }

    void AddAll(const std::vector<void*>& items, const Container* other)
    {
        const std::int32_t pos = Position();
        const std::int32_t expected = Rules::ResultOfAdd(items.size(), Clamped(pos));
        if (!items.empty())
            m_rules.CountWillBe(m_model.size() + items.size());
        m_model.insert(m_model.begin() + Clamped(pos), items.begin(), items.end());
        ASSERT_EQ(m_container.Add(other, pos), expected);
    }

    void SetItem()
    {
        const std::int32_t index = Position();
        void* item = Item();
        if (Inside(index))
            m_model[static_cast<std::size_t>(index)] = item;
        ASSERT_EQ(m_container.Set(index, item), Inside(index) ? index : -1);
    }

    void Get()
    {
        const std::int32_t index = Position();
        ASSERT_EQ(m_container.GetAt(index), Inside(index) ? m_model[static_cast<std::size_t>(index)] : nullptr);
    }

    void FindAll()
    {
        Container result;
        void* item = Item();
        m_container.Find(item, result);
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
        ASSERT_EQ(first ? m_container.FindFirst(item) : m_container.FindNext(item), expected);
    }

    void Delete() { DeleteRange(Position(), Number(-1, 4)); }

    void DeleteRange(std::int32_t index, std::int32_t n)
    {
        void* expected = nullptr;
        if (Inside(index)) {
            expected = Rules::ResultOfDelete(m_model, index, n);
            const auto from = m_model.begin() + index;
            m_model.erase(from, from + std::clamp(n, 0, Count() - index));
            if (n >= 0)
                m_rules.CountWillBe(m_model.size());
        }
        ASSERT_EQ(m_container.DeleteAt(index, n), expected);
    }

    void Renew()
    {
        const std::vector<void*> items = Number(0, 9) == 0 ? std::vector<void*>() : m_model;
        const Container copy(m_container);
        if (items.empty())
            m_container.DeleteAll();
        else
            m_container = copy;
        m_model = items;
        m_rules.Emptied();
        if (!items.empty())
            m_rules.CountWillBe(items.size());
    }

    void CompareAll()
    {
        const bool upwards = Number(0, 1) == 0;
        for (std::int32_t i = 0; i < Count(); ++i) {
            const std::int32_t index = upwards ? i : Count() - 1 - i;
            ASSERT_EQ(m_container.GetAt(index), m_model[static_cast<std::size_t>(index)]);
        }
    }

    std::mt19937 m_random;
    std::size_t m_mostItems;
    Container m_container;
    Rules m_rules;
    std::vector<void*> m_model;
    std::int32_t m_findPosition = -1;
};

template <typename Rules>
void TakeRandomSteps(std::size_t mostItems)
{
    const unsigned seed = Seed();
    std::cout << "CARDSONG_SEED=" << seed << '\n';
    Twins<Rules> twins(seed, mostItems);
    for (int operation = 0; operation < kOperations; ++operation) {
        twins.Step();
        if (testing::Test::HasFatalFailure())
            FAIL() << "operation " << operation << " of seed " << seed;
    }
}

TEST(PtrListCtrlProperty, RandomOperationsGiveThePlainListsAnswers)
{
    TakeRandomSteps<ListRules>(60);
}

// Enough items for several doubles and halves of the capacity.
TEST(PtrArrayCtrlProperty, RandomOperationsGiveThePlainArraysAnswersAndCapacity)
{
    TakeRandomSteps<ArrayRules>(1200);
}

} // namespace
