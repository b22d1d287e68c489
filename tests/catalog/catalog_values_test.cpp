// The catalog's copier and comparator, run by the library's guarded copy and
// compare operations.
#include <gtest/gtest.h>

#include "catalog_fixture.h"
#include "support/alloc_hooks.h"

namespace fenk::test {
namespace {

TEST(CatalogCopy, OfGeneratedValuesComparesEqualAndReleasesCleanly) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    std::mt19937 rng(99);
    for (int i = 0; i < 100; ++i) {
        OwnedEntry v;
        randomEntry(rng, v);
        void* copy = nullptr;
        ASSERT_EQ(kivCopyValue(w.get(), CATALOG_PDU_ENTRY, &v.entry, &copy), 0u);
        const auto* c = static_cast<const CatalogEntry*>(copy);
        EXPECT_TRUE(sameEntry(v.entry, *c));
        // A deep copy: nothing shared with the source.
        EXPECT_NE(c->created, v.entry.created);
        if (v.entry.tags) {
            EXPECT_NE(c->tags, v.entry.tags);
            EXPECT_NE(c->tags->value, v.entry.tags->value);
        }
        EXPECT_EQ(kivCompareValue(w.get(), CATALOG_PDU_ENTRY, &v.entry, copy), 0u);
        EXPECT_EQ(kivReleasePdu(w.get(), CATALOG_PDU_ENTRY, copy), 0);
        ASSERT_EQ(counter.live, 0);
    }
}

TEST(CatalogCopy, IntoTheCallersBufferUsesOnlyThatBuffer) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    alignas(8) uint8_t room[1024];
    kivStoreDecodeBufferLength(w.get(), sizeof room);
    void* copy = room;
    ASSERT_EQ(kivCopyValue(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry(), &copy), 0u);
    EXPECT_EQ(copy, room);
    EXPECT_TRUE(sameEntry(*catalogSampleEntry(), *static_cast<CatalogEntry*>(copy)));
    EXPECT_EQ(counter.calls, 0);
    kivStoreDecodeBufferLength(w.get(), 100);
    copy = room;
    EXPECT_EQ(kivCopyValue(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry(), &copy), 1u);
}

TEST(CatalogCompare, TellsEachFieldApartButNotTheOrderOfTheSetOf) {
    CatalogWorld w;
    OwnedEntry base;
    sampleEntry(base);
    struct Change {
        const char* what;
        void (*apply)(OwnedEntry&);
        bool differs;
    };
    const Change changes[] = {
        {"name", [](OwnedEntry& e) { e.name += "!"; }, true},
        {"serial", [](OwnedEntry& e) { ++e.entry.serial; }, true},
        {"created", [](OwnedEntry& e) { e.created[3] = '7'; }, true},
        {"flags", [](OwnedEntry& e) { e.flags[0] ^= 0x10; }, true},
        {"trailing zero flags", [](OwnedEntry& e) { e.flags.push_back(0); e.entry.flags.length = 12; }, false},
        {"digest", [](OwnedEntry& e) { e.digest.pop_back(); }, true},
        {"tag text", [](OwnedEntry& e) { e.tagTexts.front() = "other"; }, true},
        {"tag missing", [](OwnedEntry& e) { e.tagTexts.pop_back(); }, true},
        {"tag repeated", [](OwnedEntry& e) { e.tagTexts.back() = e.tagTexts.front(); }, true},
        {"tag order", [](OwnedEntry& e) { e.tagTexts.reverse(); }, false},
        {"note", [](OwnedEntry& e) { e.note[2] = 8; }, true},
        {"note absent", [](OwnedEntry& e) { e.note.clear(); }, true},
    };
    for (const Change& c : changes) {
        SCOPED_TRACE(c.what);
        OwnedEntry other;
        sampleEntry(other);
        c.apply(other);
        other.link();
        EXPECT_EQ(kivCompareValue(w.get(), CATALOG_PDU_ENTRY, &base.entry, &other.entry),
                  c.differs ? 1u : 0u);
    }
}

TEST(CatalogCompare, OfAnUnknownPduRaisesItsMessage) {
    CatalogWorld w;
    EXPECT_EQ(kivCompareValue(w.get(), 7, catalogSampleEntry(), catalogSampleEntry()), 3u);
}

}  // namespace
}  // namespace fenk::test
