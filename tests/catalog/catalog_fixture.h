// Shared by the catalog tests: a world with the catalog's coders, generated
// Entry values that own their storage, and a field-by-field comparison.
#ifndef FENK_TEST_CATALOG_FIXTURE_H
#define FENK_TEST_CATALOG_FIXTURE_H

#include <cstdint>
#include <list>
#include <random>
#include <string>
#include <vector>

#include "catalog.h"
#include "support/test_world.h"

namespace fenk::test {

struct CatalogWorld : TestWorld {
    CatalogWorld() : TestWorld(&catalogControlTable) { catalogInstall(get()); }
};

struct OwnedEntry {
    CatalogEntry entry{};
    std::string name, created, note;
    std::vector<uint8_t> flags, digest;
    std::list<std::string> tagTexts;
    std::vector<CatalogTag> tags;

    OwnedEntry() = default;
    OwnedEntry(const OwnedEntry&) = delete;
    OwnedEntry& operator=(const OwnedEntry&) = delete;

    // Points the record at the owned storage; call after changing it.
    void link();
};

// A random valid Entry with the given number of tags (-1: 0 to 200).
void randomEntry(std::mt19937& rng, OwnedEntry& out, int tagCount = -1);

// The sample value of the demo, as an owned copy.
void sampleEntry(OwnedEntry& out);

// Field-by-field equality as the schema sees it: trailing zero bits of the
// named bit list do not count, and the SET OF is compared as a multiset.
::testing::AssertionResult sameEntry(const CatalogEntry& a, const CatalogEntry& b);

// Encodes with the world's current rules; the octets, or the code on failure.
struct Encoded {
    int32_t code;
    std::vector<uint8_t> octets;
};
Encoded encodeEntry(KivGlobal* world, const CatalogEntry& entry);

// Decodes the octets as the given PDU, into the caller's buffer when into is
// not null; the code and the value.
struct Decoded {
    int32_t code;
    void* value;
};
Decoded decodeEntry(KivGlobal* world, const std::vector<uint8_t>& octets, void* into = nullptr,
                    int32_t pdu = CATALOG_PDU_ENTRY);

}  // namespace fenk::test

#endif
