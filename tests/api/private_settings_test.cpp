#include <gtest/gtest.h>

#include <cstring>

#include "support/test_world.h"

using fenk::test::TestWorld;

TEST(PrivateSettings, StoreAndFetch) {
    TestWorld w;
    EXPECT_EQ(kivStorePrivatePointer(w.get(), 0x1122334455667788ull), 0);
    EXPECT_EQ(w.priv()->privatePointer, 0x1122334455667788ull);
    EXPECT_EQ(kivStorePrivateWord1(w.get(), 11), 0);
    EXPECT_EQ(kivStorePrivateWord2(w.get(), 22), 0);
    EXPECT_EQ(kivFetchPrivateWord1(w.get()), 11u);
    EXPECT_EQ(kivFetchPrivateWord2(w.get()), 22u);
    EXPECT_EQ(kivFetchPrivateWord1(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivFetchPrivateWord2(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivStorePrivateWord1(nullptr, 1), 6);
    EXPECT_EQ(kivStorePrivateWord2(nullptr, 1), 6);
    EXPECT_EQ(kivStorePrivatePointer(nullptr, 1), 6);

    // A counted table needs both pointers.
    int a, b;
    EXPECT_EQ(kivStorePrivateTable(w.get(), nullptr, nullptr, 0), 0);
    EXPECT_EQ(w.priv()->privateTable, nullptr);
    EXPECT_EQ(kivStorePrivateTable(w.get(), &a, nullptr, 2), 6);
    EXPECT_EQ(kivStorePrivateTable(w.get(), nullptr, &b, 2), 6);
    EXPECT_EQ(w.priv()->privateTableCount, 0);
    EXPECT_EQ(kivStorePrivateTable(w.get(), &a, &b, 2), 0);
    EXPECT_EQ(w.priv()->privateTable, &a);
    EXPECT_EQ(w.priv()->privateTable2, &b);
    EXPECT_EQ(w.priv()->privateTableCount, 2);
    EXPECT_EQ(kivStorePrivateTable(nullptr, &a, &b, 2), 6);
}

namespace {
bool refuse = false;
void* companionAlloc(size_t size) { return refuse ? nullptr : std::malloc(size); }
}  // namespace

TEST(PrivateSettings, EntryTableIsCopied) {
    TestWorld w;
    w.priv()->privateAllocRoutine = &companionAlloc;
    uint8_t entries[3][32];
    for (int i = 0; i < 3; ++i) std::memset(entries[i], 'a' + i, 32);
    EXPECT_EQ(kivStoreEntryTable(w.get(), 7, 8, entries, 3, 9), 0);
    ASSERT_NE(w.priv()->entryTable, nullptr);
    EXPECT_NE(w.priv()->entryTable, static_cast<void*>(entries));
    EXPECT_EQ(std::memcmp(w.priv()->entryTable, entries, sizeof entries), 0);
    EXPECT_EQ(w.priv()->entryCount, 3u);
    EXPECT_EQ(w.priv()->entryContext, 7u);
    EXPECT_EQ(w.priv()->entryWord, 8u);
    EXPECT_EQ(w.priv()->entryExtra, 9u);
    std::free(w.priv()->entryTable);

    refuse = true;
    EXPECT_EQ(kivStoreEntryTable(w.get(), 1, 2, entries, 3, 4), 8);
    EXPECT_EQ(w.priv()->entryTable, nullptr);
    EXPECT_EQ(w.priv()->entryContext, 1u) << "the words are stored before the copy";
    refuse = false;

    EXPECT_EQ(kivStoreEntryTable(w.get(), 5, 6, nullptr, 3, 7), 0) << "nothing to copy";
    EXPECT_EQ(w.priv()->entryTable, nullptr);
    EXPECT_EQ(kivStoreEntryTable(nullptr, 5, 6, nullptr, 3, 7), 6);
}
