// Looking a number up by XML name through the table: the three lookup
// table forms, the namespace resolution paths and the refused arguments.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

using Names = std::vector<std::pair<std::string, int16_t>>;

const Names kNames = {{"alpha", 1}, {"beta", 2},  {"gamma", 3}, {"delta", 4},   {"epsilon", 5},
                      {"zeta", 6},  {"eta", 7},   {"theta", 8}, {"abc", 11},    {"abcd", 12},
                      {"b", 13},    {"zero", 0},  {"\xC3\xA9t\xC3\xA9", 14}, {"iota", 300}};

// Owns the text and entries of one lookup table in a chosen form.
class Table {
public:
    Table(const Names& names, uint16_t form, uint32_t seed = 5, uint16_t buckets = 7) : names_(names) {
        for (const auto& [text, value] : names_) entries_.push_back({text.c_str(), value});
        table_ = {static_cast<uint16_t>(form), entries_.data()};
        if (form == KIV_LOOKUP_SORTED) {
            std::sort(entries_.begin(), entries_.end(),
                      [](const KivNameEntry& a, const KivNameEntry& b) { return std::strcmp(a.text, b.text) < 0; });
            sortedHead_ = {static_cast<uint16_t>(entries_.size()), entries_.data()};
            table_.data = &sortedHead_;
        } else if (form == KIV_LOOKUP_HASHED) {
            hashed_.assign(buckets, {nullptr, KIV_HASH_CHAIN_END, 0});
            for (const KivNameEntry& e : entries_) {
                uint32_t h = static_cast<uint32_t>(std::strlen(e.text)) + seed;
                for (const char* c = e.text; *c; ++c) h = (h * 2) ^ static_cast<unsigned char>(*c);
                size_t at = h % buckets;
                if (hashed_[at].text) {  // a new entry at the end of the chain
                    while (hashed_[at].next != KIV_HASH_CHAIN_END) at = hashed_[at].next;
                    hashed_[at].next = static_cast<uint16_t>(hashed_.size());
                    at = hashed_.size();
                    hashed_.push_back({nullptr, KIV_HASH_CHAIN_END, 0});
                }
                hashed_[at].text = e.text;
                hashed_[at].value = static_cast<uint16_t>(e.value);
            }
            hashedHead_ = {hashed_.data(), seed, buckets};
            table_.data = &hashedHead_;
        }
    }
    Table(const Table&) = delete;
    const KivLookupTable* get() const { return &table_; }
    const KivLookupTable& lookup() const { return table_; }

private:
    const Names names_;
    std::vector<KivNameEntry> entries_;
    KivLookupTable table_{};
    KivSortedNames sortedHead_{};
    std::vector<KivHashedName> hashed_;
    KivHashedNames hashedHead_{};
};

class NameLookup : public ::testing::Test {
protected:
    NameLookup() {
        known_[0] = {0, "urn:x", nullptr};
        known_[1] = {0, "urn:y", nullptr};
        tables_ = {0, 2, known_, &root_, nullptr};
        w.priv()->namespaceTable = &tables_;
    }
    // The number and the answer for a name.
    std::pair<int32_t, uint32_t> look(const char* ns, const char* name) {
        uint32_t number = 0xABCD;
        const int32_t answer = kivLookupNameNumber(w.get(), ns, name, &number);
        return {answer, number};
    }
    TestWorld w;
    KivNamespaceEntry known_[2];
    KivNameRecord root_{};
    KivXmlNameTables tables_{};
};

TEST_F(NameLookup, EveryFormGivesTheSameNumbers) {
    const Table sorted(kNames, KIV_LOOKUP_SORTED);
    const Table hashed(kNames, KIV_LOOKUP_HASHED);
    const Table tiny(kNames, KIV_LOOKUP_HASHED, 0xFFFFFFF0u, 1);
    for (const Table* table : {&sorted, &hashed, &tiny}) {
        root_ = {KIV_NAMES_ONE_NAMESPACE, table->get(), nullptr, -1, -1};
        for (const auto& [name, value] : kNames)
            EXPECT_EQ(look(nullptr, name.c_str()), std::make_pair(value < 1 ? 5 : 0, static_cast<uint32_t>(value))) << name;
        for (const char* missing : {"ab", "abcde", "alph", "alphas", "a", "zzz", "\xC3"})
            EXPECT_EQ(look(nullptr, missing), std::make_pair(5, 0xFFFFFFFFu)) << missing;
    }
    const Table single({{"only", 9}}, KIV_LOOKUP_SINGLE);
    root_ = {KIV_NAMES_ONE_NAMESPACE, single.get(), nullptr, -1, -1};
    EXPECT_EQ(look(nullptr, "only"), std::make_pair(0, 9u));
    EXPECT_EQ(look(nullptr, "onl"), std::make_pair(5, 0xFFFFFFFFu));
    EXPECT_EQ(look(nullptr, "only1"), std::make_pair(5, 0xFFFFFFFFu));
}

TEST_F(NameLookup, SortedSearchEndsAtEitherEdge) {
    for (size_t count = 1; count <= kNames.size(); ++count) {
        const Names names(kNames.begin(), kNames.begin() + count);
        const Table sorted(names, KIV_LOOKUP_SORTED);
        root_ = {KIV_NAMES_ONE_NAMESPACE, sorted.get(), nullptr, -1, -1};
        for (const auto& [name, value] : names) EXPECT_EQ(look(nullptr, name.c_str()).second, static_cast<uint32_t>(value));
        EXPECT_EQ(look(nullptr, "\x01").second, 0xFFFFFFFFu) << "below every name";
        EXPECT_EQ(look(nullptr, "\xFF").second, 0xFFFFFFFFu) << "above every name";
    }
}

TEST_F(NameLookup, OneNamespaceComparesTheTablesOwnPointer) {
    const Table sorted(kNames, KIV_LOOKUP_SORTED);
    root_ = {KIV_NAMES_ONE_NAMESPACE, sorted.get(), known_[0].uri, 42, -1};
    const std::string copy = "urn:x";
    EXPECT_EQ(look(copy.c_str(), "beta"), std::make_pair(0, 2u)) << "a known namespace text is replaced";
    EXPECT_EQ(look("urn:y", "beta"), std::make_pair(0, 42u)) << "another namespace: the record's not-found value";
    EXPECT_EQ(look(nullptr, "beta"), std::make_pair(0, 42u));
    EXPECT_EQ(look("urn:x2", "beta"), std::make_pair(0, 42u));
}

TEST_F(NameLookup, NamespaceTableChoosesPerNamespace) {
    const Table sorted(kNames, KIV_LOOKUP_SORTED);
    const Table hashed({{"b", 77}}, KIV_LOOKUP_HASHED);
    const KivLookupTable lookups[] = {sorted.lookup(), hashed.lookup()};
    const KivNamespaceChoice choices[] = {{"urn:x", 1, 0}, {"urn:y", 0, 500}, {"urn:z", 1, 0xFFFF}, {"urn:q", 0, 61},
                                          {"", 0, 99},     {nullptr, 1, 1},  {"urn:w", 2, 0}};
    const KivNamespaceNames names{7, choices, lookups};
    root_ = {KIV_NAMES_BY_NAMESPACE, &names, nullptr, -7, -1};

    EXPECT_EQ(look("urn:x", "gamma"), std::make_pair(0, 3u));
    EXPECT_EQ(look("urn:y", "anything"), std::make_pair(0, 500u));
    EXPECT_EQ(look("urn:z", "gamma"), std::make_pair(5, 0xFFFFFFFFu));
    EXPECT_EQ(look("urn:w", "gamma"), std::make_pair(5, 0xFFFFFFFFu)) << "an unknown kind";
    EXPECT_EQ(look("urn:q", "x"), std::make_pair(0, 61u)) << "an unknown namespace compared by text";
    EXPECT_EQ(look("urn:", "x").second, static_cast<uint32_t>(-7)) << "a namespace prefix does not match";
    EXPECT_EQ(look("urn:qq", "x").second, static_cast<uint32_t>(-7));
    const std::string empty;
    EXPECT_EQ(look(empty.c_str(), "x").second, static_cast<uint32_t>(-7))
        << "an empty namespace text matches by pointer only";
    EXPECT_EQ(look(nullptr, "b"), std::make_pair(0, 77u));
    EXPECT_EQ(look(nullptr, "beta"), std::make_pair(5, 0xFFFFFFFFu));
}

TEST_F(NameLookup, QualifiedTableChecksTheParallelNamespace) {
    const Names names = {{"a", 1}, {"b", 2}, {"c", 3}};
    const Table sorted(names, KIV_LOOKUP_SORTED);
    const KivNameEntry parallel[] = {{known_[0].uri, 10}, {known_[1].uri, 20}, {known_[0].uri, 30}};
    const KivQualifiedLookupTable qualified{sorted.lookup(), parallel};
    root_ = {0, &qualified, nullptr, -3, -1};
    EXPECT_EQ(look("urn:y", "b"), std::make_pair(0, 20u));
    EXPECT_EQ(look("urn:x", "c"), std::make_pair(0, 30u));
    EXPECT_EQ(look("urn:x", "b"), std::make_pair(5, 0xFFFFFFFFu));
    EXPECT_EQ(look(nullptr, "a"), std::make_pair(5, 0xFFFFFFFFu));
    EXPECT_EQ(look("urn:x", "d"), std::make_pair(5, 0xFFFFFFFFu)) << "not found is -1, not the record's value";
}

TEST_F(NameLookup, RefusedArguments) {
    const Table sorted(kNames, KIV_LOOKUP_SORTED);
    root_ = {KIV_NAMES_ONE_NAMESPACE, sorted.get(), nullptr, -1, 5};
    const std::pair<int32_t, uint32_t> refused(6, 0xABCD);  // nothing stored
    EXPECT_EQ(look(nullptr, nullptr), refused);
    EXPECT_EQ(look(nullptr, ""), refused);
    uint32_t number = 0xABCD;
    EXPECT_EQ(kivLookupNameNumber(nullptr, nullptr, "beta", &number), 6);
    EXPECT_EQ(kivLookupNameNumber(w.get(), nullptr, "beta", nullptr), 6);
    tables_.rootNames = nullptr;
    EXPECT_EQ(look(nullptr, "beta"), refused);
    w.priv()->namespaceTable = nullptr;
    EXPECT_EQ(look(nullptr, "beta"), refused);
    KivPrivate* state = w->privateState;
    w->privateState = nullptr;
    EXPECT_EQ(look(nullptr, "beta"), refused);
    w->privateState = state;
}

}  // namespace
