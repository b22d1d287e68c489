// Guarded operations of the sample application: encoding (with its output
// chunks, joins and SET OF frames), decoding, transcoding and tracing. Each
// answers 8 when memory runs out and gives back whatever it had obtained.
#include <cstdio>
#include <cstring>
#include <vector>

#include "catalog.h"
#include "support/test_world.h"
#include "fault_plan.h"
#include "sweep.h"

namespace fenk::test {
namespace {

constexpr int32_t kBer = 0, kDer = 3, kXer = 5;

// The sample with 30 tags given in reverse order, so that DER has to sort.
CatalogEntry* manyTags() {
    static CatalogEntry entry = [] {
        static char texts[30][8];
        static CatalogTag tags[30];
        for (int i = 0; i < 30; ++i) {
            std::snprintf(texts[i], sizeof texts[i], "tag%02d", 29 - i);
            tags[i] = {i + 1 < 30 ? &tags[i + 1] : nullptr, texts[i]};
        }
        CatalogEntry e = *catalogSampleEntry();
        e.tags = tags;
        return e;
    }();
    return &entry;
}

// The sample with its tags in the order DER sorts them into.
CatalogEntry* sortedSample() {
    static CatalogEntry entry = [] {
        static char texts[3][16] = {"2026", "Archive", "reference"};
        static CatalogTag tags[3] = {{&tags[1], texts[0]}, {&tags[2], texts[1]}, {nullptr, texts[2]}};
        CatalogEntry e = *catalogSampleEntry();
        e.tags = tags;
        return e;
    }();
    return &entry;
}

// The encoding a world without failures makes (worked out once).
const std::vector<uint8_t>& reference(int32_t rules, CatalogEntry* value) {
    static std::vector<uint8_t> made[3][8];
    std::vector<uint8_t>& slot = made[value == manyTags() ? 1 : value == sortedSample() ? 2 : 0][rules];
    if (slot.empty()) {
        TestWorld clean(&catalogControlTable);
        catalogInstall(clean.get());
        kivSelectRules(clean.get(), rules);
        KivBuffer out{0, nullptr};
        if (kivEncodePdu(clean.get(), CATALOG_PDU_ENTRY, value, &out) == 0) {
            slot.assign(out.value, out.value + out.length);
            kivFreeBlock(clean.get(), out.value);
        }
    }
    return slot;
}

Outcome encode(KivGlobal* w, int32_t rules, CatalogEntry* value) {
    const std::vector<uint8_t>& expected = reference(rules, value);
    kivSelectRules(w, rules);
    KivBuffer out{0, nullptr};
    int32_t code = kivEncodePdu(w, CATALOG_PDU_ENTRY, value, &out);
    if (code != 0) return failed(out.value ? kWrongResult : code);
    const bool same = !expected.empty() && out.length == expected.size() &&
                      std::memcmp(out.value, expected.data(), out.length) == 0;
    kivFreeBlock(w, out.value);
    return same ? done() : failed(kWrongResult);
}

Outcome decode(KivGlobal* w, int32_t rules, CatalogEntry* value) {
    const std::vector<uint8_t>& octets = reference(rules, value);
    kivSelectRules(w, rules);
    KivBuffer in{static_cast<uint32_t>(octets.size()), const_cast<uint8_t*>(octets.data())};
    int32_t pdu = CATALOG_PDU_ENTRY;
    void* decoded = nullptr;
    int32_t code = kivDecodePdu(w, &pdu, &in, &decoded);
    if (code != 0) return failed(decoded ? kWrongResult : code);
    pauseFaults();
    const bool same = kivCompareValue(w, CATALOG_PDU_ENTRY, value, decoded) == 0;
    resumeFaults();
    kivReleasePdu(w, pdu, decoded);
    return same ? done() : failed(kWrongResult);
}

constexpr WorldKind C = WorldKind::catalog;

const ServiceGroup group({
    {"coders", "BER encoding (20)", C, Fails::answers, 8,
     [](KivGlobal* w) { return encode(w, kBer, catalogSampleEntry()); }},
    {"coders", "DER encoding, SET OF of 30 (20, 110-112)", C, Fails::answers, 8,
     [](KivGlobal* w) { return encode(w, kDer, manyTags()); }},
    {"coders", "XER encoding (20)", C, Fails::answers, 8,
     [](KivGlobal* w) { return encode(w, kXer, catalogSampleEntry()); }},
    {"coders", "BER decoding (21)", C, Fails::answers, 8,
     [](KivGlobal* w) { return decode(w, kBer, catalogSampleEntry()); }},
    {"coders", "DER decoding, SET OF of 30 (21)", C, Fails::answers, 8,
     [](KivGlobal* w) { return decode(w, kDer, manyTags()); }},
    {"coders", "DER to XML (192)", C, Fails::answers, 8,
     [](KivGlobal* w) {
         // The tags come back in DER's order, as the sorted entry has them.
         const std::vector<uint8_t>& der = reference(kDer, catalogSampleEntry());
         const std::vector<uint8_t>& xml = reference(kXer, sortedSample());
         KivBuffer in{static_cast<uint32_t>(der.size()), const_cast<uint8_t*>(der.data())};
         KivBuffer out{0, nullptr};
         kivStoreXmlRules(w, kXer);
         int32_t code = kivTranscodeToXml(w, CATALOG_PDU_ENTRY, kDer, &in, &out);
         if (code != 0) return failed(out.value ? kWrongResult : code);
         const bool same = out.length == xml.size() &&
                           std::memcmp(out.value, xml.data(), out.length) == 0;
         kivFreeBlock(w, out.value);
         return same ? done() : failed(kWrongResult);
     }},
    {"coders", "traced encoding (20 with debug flags)", C, Fails::answers, 8,
     [](KivGlobal* w) {
         kivStoreDebugFlags(w, KIV_DEBUG_ENCODER_INPUT | KIV_DEBUG_ENCODER_OUTPUT |
                                   KIV_DEBUG_FRAMED_DUMPS);
         return encode(w, kDer, manyTags());
     }},
});

}  // namespace
}  // namespace fenk::test
