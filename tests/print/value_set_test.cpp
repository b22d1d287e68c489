// Value-set lookup through the table over trees made by a small builder in
// both layouts, checked against the sets they were built from.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "fenkapi.h"

namespace {

// One element of a set: a single value, a range, or a list of up to 7 values.
struct Item {
    uint32_t kind;
    std::vector<uint32_t> values;  // one value; lower and upper bound; the list
    uint32_t low() const { return values.empty() ? 0 : values.front(); }
    uint32_t high() const { return values.empty() ? 0 : values.back(); }
    bool contains(uint32_t v) const {
        if (kind == KIV_VALUE_SET_RANGE) return v >= values[0] && v <= values[1];
        return std::find(values.begin(), values.end(), v) != values.end();
    }
};

// Lays the items (sorted, disjoint) out as a search tree: each node's smaller
// items follow it directly, its larger ones further on. A node's first word
// is never read, so each node starts on the previous node's last word where
// the layout's offsets put it there.
class TreeBuilder {
public:
    TreeBuilder(std::vector<Item> items, bool compact) : items_(std::move(items)), compact_(compact) {
        words_.push_back(compact ? KIV_VALUE_SET_COMPACT : 0);
        if (!items_.empty()) emit(0, 0, items_.size());
    }
    const uint32_t* tree() const { return words_.data(); }

private:
    uint32_t skip() const { return compact_ ? 0 : 1; }

    uint32_t smallerOffset(const Item& item) const {
        switch (item.kind) {
            case KIV_VALUE_SET_ONE: return 2 + skip();
            case KIV_VALUE_SET_RANGE: return 3 + skip();
            default: return static_cast<uint32_t>(item.values.size()) + skip();
        }
    }

    void put(size_t at, uint32_t word) {
        if (words_.size() <= at) words_.resize(at + 1, 0xDEADBEEF);
        words_[at] = word;
    }

    // Writes items [lo, hi) as a subtree whose node starts at position at;
    // answers the position after its last word.
    size_t emit(size_t at, size_t lo, size_t hi) {
        size_t m = lo + (hi - lo) / 2;
        // A list's smaller subtree would begin inside its values when the
        // offsets leave no room: such a list gets no smaller items.
        if (items_[m].kind == KIV_VALUE_SET_LIST &&
            smallerOffset(items_[m]) < items_[m].values.size() + 1)
            m = lo;
        const Item& item = items_[m];
        uint32_t header = item.kind << 30;
        if (item.kind == KIV_VALUE_SET_LIST) header |= static_cast<uint32_t>(item.values.size()) << 26;
        for (size_t i = 0; i < item.values.size(); ++i) put(at + 2 + i, item.values[i]);
        size_t end = at + 2 + item.values.size();
        if (m > lo) {
            header |= KIV_VALUE_SET_SMALLER;
            end = emit(at + smallerOffset(item), lo, m);
        }
        if (m + 1 < hi) {
            const size_t larger = compact_ ? end - 1 : end;
            header |= static_cast<uint32_t>(larger - at);
            end = emit(larger, m + 1, hi);
        }
        put(at + 1, header);
        return end;
    }

    std::vector<Item> items_;
    bool compact_;
    std::vector<uint32_t> words_;
};

std::vector<Item> randomItems(std::mt19937& rng, int count) {
    std::vector<Item> items;
    uint32_t next = rng() % 4;
    for (int i = 0; i < count; ++i) {
        Item item{static_cast<uint32_t>(rng() % 3), {}};
        if (item.kind == KIV_VALUE_SET_ONE) {
            item.values = {next};
        } else if (item.kind == KIV_VALUE_SET_RANGE) {
            item.values = {next, next + static_cast<uint32_t>(rng() % 5)};
        } else {
            const size_t n = 1 + rng() % 7;
            uint32_t v = next;
            for (size_t k = 0; k < n; ++k) {
                item.values.push_back(v);
                v += 1 + static_cast<uint32_t>(rng() % 3);
            }
        }
        next = item.high() + 1 + static_cast<uint32_t>(rng() % 4);
        items.push_back(item);
    }
    return items;
}

TEST(ValueSet, GeneratedTreesHoldExactlyTheirSets) {
    std::mt19937 rng(3);
    for (int round = 0; round < 200; ++round) {
        const std::vector<Item> items = randomItems(rng, 1 + round % 23);
        for (bool compact : {false, true}) {
            TreeBuilder builder(items, compact);
            for (uint32_t v = 0; v <= items.back().high() + 3; ++v) {
                const bool expected =
                    std::any_of(items.begin(), items.end(), [v](const Item& i) { return i.contains(v); });
                ASSERT_EQ(kivValueInSet(builder.tree(), v) != 0, expected)
                    << "value " << v << " round " << round << (compact ? " compact" : " normal");
            }
        }
    }
}

TEST(ValueSet, UnsignedBoundsAtTheTopOfTheRange) {
    for (bool compact : {false, true}) {
        TreeBuilder builder({{KIV_VALUE_SET_ONE, {5}}, {KIV_VALUE_SET_RANGE, {0x7FFFFFFF, 0xFFFFFFFE}}},
                            compact);
        EXPECT_TRUE(kivValueInSet(builder.tree(), 0x80000000u));
        EXPECT_TRUE(kivValueInSet(builder.tree(), 5));
        EXPECT_FALSE(kivValueInSet(builder.tree(), 0xFFFFFFFFu));
        EXPECT_FALSE(kivValueInSet(builder.tree(), 6));
    }
}

TEST(ValueSet, SingleNodes) {
    const uint32_t range[] = {0, KIV_VALUE_SET_RANGE << 30, 32, 126};
    for (uint32_t v : {32u, 126u, 100u}) EXPECT_TRUE(kivValueInSet(range, v)) << v;
    for (uint32_t v : {31u, 127u}) EXPECT_FALSE(kivValueInSet(range, v)) << v;

    // The later node holds 3, but 3 lies below the first key and the first
    // node has no smaller subtree.
    const uint32_t unreachable[] = {0, (KIV_VALUE_SET_ONE << 30) | 3, 10, 0, KIV_VALUE_SET_ONE << 30, 3};
    EXPECT_TRUE(kivValueInSet(unreachable, 10));
    EXPECT_FALSE(kivValueInSet(unreachable, 3));
    EXPECT_TRUE(kivValueInSet(unreachable + 3, 3));

    const uint32_t emptyList[] = {0, KIV_VALUE_SET_LIST << 30, 7};
    EXPECT_FALSE(kivValueInSet(emptyList, 7));
    const uint32_t nothing[] = {KIV_VALUE_SET_COMPACT, (KIV_VALUE_SET_NONE << 30) | KIV_VALUE_SET_SMALLER, 7};
    EXPECT_FALSE(kivValueInSet(nothing, 7));
    EXPECT_FALSE(kivValueInSet(nothing, 3)) << "a compact empty node does not lead to itself";
}

}  // namespace
