// Namespace prefixes through the table: the copy made on the first change,
// the prefix rules and answers, the default namespace, and the stem of
// generated prefixes kept clear of the chosen ones.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

class NamespacePrefixes : public ::testing::Test {
protected:
    NamespacePrefixes() {
        entries_[0] = {0, "urn:a", nullptr};
        entries_[1] = {0, "urn:b", "gen1"};
        entries_[2] = {KIV_NAMESPACE_FIXED, "urn:fixed", "xml"};
        entries_[3] = {0, "urn:c", nullptr};
        entries_[4] = {0, "urn:d", nullptr};
        tables_ = {1, 5, entries_, nullptr, "ns"};
        w.priv()->namespaceTable = &tables_;
    }

    int32_t set(const char* uri, const char* prefix) { return kivSetNamespacePrefix(w.get(), uri, prefix); }
    const char* get(const char* uri) {
        const char* prefix = "unset";
        EXPECT_EQ(kivGetNamespacePrefix(w.get(), uri, &prefix), 0) << uri;
        return prefix;
    }
    std::string stem() { return w.priv()->prefixStem; }
    const KivNamespaceEntry* copy() { return static_cast<const KivNamespaceEntry*>(w.priv()->namespaceEntries); }

    TestWorld w;
    KivNamespaceEntry entries_[5];
    KivXmlNameTables tables_;
};

TEST_F(NamespacePrefixes, FirstChangeCopiesTheEntriesAndLeavesTheTableAlone) {
    EXPECT_STREQ(get("urn:b"), "gen1") << "before any change the table is read";
    EXPECT_EQ(copy(), nullptr);
    EXPECT_EQ(set("urn:a", "pa"), 0);
    ASSERT_NE(copy(), nullptr);
    EXPECT_STREQ(get("urn:a"), "pa");
    EXPECT_EQ(entries_[0].prefix, nullptr);
    EXPECT_EQ(entries_[0].flags, 0);
    EXPECT_EQ(copy()[0].flags, KIV_NAMESPACE_CHOSEN);
    EXPECT_STREQ(copy()[2].uri, "urn:fixed");

    const KivNamespaceEntry* first = copy();
    EXPECT_EQ(set("urn:b", "pb"), 0);
    EXPECT_EQ(copy(), first) << "one copy per world";
    EXPECT_STREQ(entries_[1].prefix, "gen1");
}

TEST_F(NamespacePrefixes, PrefixRules) {
    EXPECT_EQ(set("urn:a", "a1"), 0);
    EXPECT_EQ(set("urn:c", "a1"), 114);
    EXPECT_EQ(set("urn:a", "a1"), 114) << "even on the namespace that holds it";
    EXPECT_EQ(set("urn:c", "gen1"), 114) << "generated prefixes count too";
    for (const char* bad : {"1a", "_a", "a b", "", "a:b", "-"}) EXPECT_EQ(set("urn:c", bad), 113) << bad;
    EXPECT_EQ(set("urn:c", "a.b-c_d9Z"), 0);
    EXPECT_EQ(set("urn:nowhere", "x"), 112);
    EXPECT_EQ(set("urn:fixed", "x"), 112);
    EXPECT_EQ(set("urn:a", "a2"), 0) << "a namespace can change its prefix";
    EXPECT_STREQ(get("urn:a"), "a2");
    const char* prefix = nullptr;
    EXPECT_EQ(kivGetNamespacePrefix(w.get(), "urn:nowhere", &prefix), 112);
    EXPECT_EQ(kivGetNamespacePrefix(w.get(), "urn:fixed", &prefix), 112);
}

TEST_F(NamespacePrefixes, DefaultNamespace) {
    EXPECT_EQ(set("urn:a", nullptr), 0);
    EXPECT_EQ(get("urn:a"), nullptr);
    EXPECT_EQ(copy()[0].flags, KIV_NAMESPACE_CHOSEN);
    EXPECT_EQ(w.priv()->namespaceFlags, 1u);
    EXPECT_EQ(set("urn:b", nullptr), 114) << "a default is set and urn:b has a prefix";
    EXPECT_EQ(set("urn:a", "pa"), 0) << "giving the default a prefix ends the default";
    EXPECT_EQ(w.priv()->namespaceFlags, 0u);
    EXPECT_EQ(set("urn:b", nullptr), 0);
    EXPECT_EQ(get("urn:b"), nullptr);

    for (uint32_t flags : {0u, 2u, 3u, 5u, 8u}) {
        tables_.flags = flags;
        EXPECT_EQ(set("urn:c", nullptr), 111) << flags;
    }
    tables_.flags = 9;
    EXPECT_EQ(set("urn:c", nullptr), 0) << "only the low three bits count";
}

TEST_F(NamespacePrefixes, StemStepsPastChosenPrefixes) {
    struct Step { const char* uri; const char* prefix; const char* stem; };
    const struct { const char* defaultStem; std::vector<Step> steps; } groups[] = {
        // A prefix outside the stem leaves it.
        {"ns", {{"urn:a", "nsx", "nt"}, {"urn:c", "nt1", "nu"}, {"urn:d", "other", "nu"}}},
        // Several taken names are skipped at once; the default stem is copied
        // only when needed.
        {"ab", {{"urn:c", "ac", ""}, {"urn:d", "ad7", ""}, {"urn:b", "ae", ""}, {"urn:a", "abc", "af"}}},
        // The stem carries and grows.
        {"zy", {{"urn:a", "zyq", "zz"}, {"urn:c", "zz", "aaa"}, {"urn:d", "aaab", "aab"}}},
    };
    for (const auto& group : groups) {
        TestWorld world;
        tables_.defaultPrefixStem = group.defaultStem;
        world.priv()->namespaceTable = &tables_;
        for (const Step& step : group.steps) {
            EXPECT_EQ(kivSetNamespacePrefix(world.get(), step.uri, step.prefix), 0) << step.prefix;
            EXPECT_STREQ(world.priv()->prefixStem, step.stem) << step.prefix;
        }
    }
}

TEST_F(NamespacePrefixes, StemStaysWithinFifteenCharacters) {
    const std::string zs(15, 'z');
    const std::string longer = std::string(20, 'q');
    tables_.defaultPrefixStem = longer.c_str();
    const std::string chosen = longer + "1";
    EXPECT_EQ(set("urn:a", chosen.c_str()), 0);
    EXPECT_EQ(stem(), std::string(14, 'q') + "r") << "a long default stem is cut to 15";

    std::strcpy(w.priv()->prefixStem, zs.c_str());
    const std::string full = zs + "9";
    EXPECT_EQ(set("urn:c", full.c_str()), 0);
    EXPECT_EQ(stem(), std::string(15, 'a')) << "wraps around instead of growing";
}

TEST_F(NamespacePrefixes, RefusedArgumentsAndMissingMemory) {
    EXPECT_EQ(kivSetNamespacePrefix(nullptr, "urn:a", "p"), 6);
    EXPECT_EQ(set(nullptr, "p"), 6);
    const char* prefix;
    EXPECT_EQ(kivGetNamespacePrefix(w.get(), nullptr, &prefix), 6);
    EXPECT_EQ(kivGetNamespacePrefix(w.get(), "urn:a", nullptr), 6);

    w.priv()->privateAllocRoutine = [](size_t) -> void* { return nullptr; };
    EXPECT_EQ(set("urn:a", "p"), 8);
    EXPECT_EQ(copy(), nullptr);
    EXPECT_EQ(get("urn:a"), nullptr) << "nothing changed";

    w.priv()->namespaceTable = nullptr;
    EXPECT_EQ(set("urn:a", "p"), 6);
    EXPECT_EQ(kivGetNamespacePrefix(w.get(), "urn:a", &prefix), 6);
}

TEST(ListItems, CopyTheItemOrClearIt) {
    TestWorld w;
    uint8_t data[3] = {1, 2, 3};
    const KivBuffer items[] = {{3, data}, {1, data + 2}};
    const KivBufferList list{2, items};
    KivBuffer item{99, data};
    EXPECT_EQ(kivGetListItem(w.get(), &list, 1, &item), 0);
    EXPECT_EQ(item.length, 1u);
    EXPECT_EQ(item.value, data + 2);
    EXPECT_EQ(kivGetListItem(w.get(), &list, 2, &item), 6);
    EXPECT_EQ(item.length, 0u);
    EXPECT_EQ(item.value, nullptr);
    item = {99, data};
    EXPECT_EQ(kivGetListItem(nullptr, &list, 0, &item), 6);
    EXPECT_EQ(item.value, nullptr);
    EXPECT_EQ(kivGetListItem(w.get(), nullptr, 0, &item), 6);
    EXPECT_EQ(kivGetListItem(w.get(), &list, 0, nullptr), 6);
}

}  // namespace
