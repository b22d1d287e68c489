// DER encode + decode of the catalog's Entry (a SET OF of 20 tags) through
// our coders and the library, against a peer library's template coders
// (i2d/d2i) on the same structure. Each iteration encodes, decodes and
// releases everything; both sides produce the same octets.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "catalog.h"
#include "catalog_peer.h"
#include "kivapit.h"

namespace {

// The sample value with 20 tags instead of 3.
CatalogEntry* benchEntry() {
    static CatalogEntry entry;
    static CatalogTag tags[20];
    static char texts[20][16];
    static bool made = false;
    if (!made) {
        entry = *catalogSampleEntry();
        for (int i = 0; i < 20; ++i) {
            std::snprintf(texts[i], sizeof texts[i], "tag-%02d-%c", (i * 7) % 20, 'a' + i);
            tags[i].value = texts[i];
            tags[i].next = i < 19 ? &tags[i + 1] : nullptr;
        }
        entry.tags = tags;
        made = true;
    }
    return &entry;
}

void FenkDerEncodeDecode(benchmark::State& state) {
    KivGlobal world;
    if (catalogInitWorld(&world) != 0 || kivSelectRules(&world, 3) != 0) std::abort();
    CatalogEntry* entry = benchEntry();
    for (auto _ : state) {
        KivBuffer out{0, nullptr};
        if (kivEncodePdu(&world, CATALOG_PDU_ENTRY, entry, &out) != 0) std::abort();
        int32_t pdu = CATALOG_PDU_ENTRY;
        void* value = nullptr;
        if (kivDecodePdu(&world, &pdu, &out, &value) != 0) std::abort();
        benchmark::DoNotOptimize(value);
        kivReleasePdu(&world, pdu, value);
        kivFreeBlock(&world, out.value);
    }
    kivCompanionEndWorld(&world);
}

// As an application tuned for speed runs it: a temporary buffer for the
// output chunks, and the decoded value built in a buffer of the caller's.
void FenkDerEncodeDecodeInBuffers(benchmark::State& state) {
    KivGlobal world;
    if (catalogInitWorld(&world) != 0 || kivSelectRules(&world, 3) != 0) std::abort();
    static uint8_t temporary[64 * 1024];
    KivWorkBuffer work{sizeof temporary, temporary};
    if (kivStoreWorkBuffer(&world, &work) != 0) std::abort();
    alignas(8) static uint8_t room[4096];
    kivStoreDecodeBufferLength(&world, sizeof room);
    CatalogEntry* entry = benchEntry();
    for (auto _ : state) {
        KivBuffer out{0, nullptr};
        if (kivEncodePdu(&world, CATALOG_PDU_ENTRY, entry, &out) != 0) std::abort();
        int32_t pdu = CATALOG_PDU_ENTRY;
        void* value = room;
        if (kivDecodePdu(&world, &pdu, &out, &value) != 0) std::abort();
        benchmark::DoNotOptimize(value);
        kivFreeBlock(&world, out.value);
    }
    kivCompanionEndWorld(&world);
}

// Encode only and decode only, to see where the time goes.
void FenkDerEncode(benchmark::State& state) {
    KivGlobal world;
    if (catalogInitWorld(&world) != 0 || kivSelectRules(&world, 3) != 0) std::abort();
    for (auto _ : state) {
        KivBuffer out{0, nullptr};
        if (kivEncodePdu(&world, CATALOG_PDU_ENTRY, benchEntry(), &out) != 0) std::abort();
        kivFreeBlock(&world, out.value);
    }
    kivCompanionEndWorld(&world);
}

void FenkDerDecode(benchmark::State& state) {
    KivGlobal world;
    if (catalogInitWorld(&world) != 0 || kivSelectRules(&world, 3) != 0) std::abort();
    KivBuffer out{0, nullptr};
    if (kivEncodePdu(&world, CATALOG_PDU_ENTRY, benchEntry(), &out) != 0) std::abort();
    for (auto _ : state) {
        int32_t pdu = CATALOG_PDU_ENTRY;
        void* value = nullptr;
        if (kivDecodePdu(&world, &pdu, &out, &value) != 0) std::abort();
        kivReleasePdu(&world, pdu, value);
    }
    kivFreeBlock(&world, out.value);
    kivCompanionEndWorld(&world);
}

void PeerDerEncodeDecode(benchmark::State& state) {
    PeerEntry* entry = peerFromCatalog(benchEntry());
    if (!entry) std::abort();
    for (auto _ : state) {
        unsigned char* octets = nullptr;
        int length = peerEncode(entry, &octets);
        if (length <= 0) std::abort();
        PeerEntry* back = peerDecode(octets, length);
        if (!back) std::abort();
        benchmark::DoNotOptimize(back);
        peerFree(back);
        peerFreeEncoding(octets);
    }
    peerFree(entry);
}

}  // namespace

BENCHMARK(FenkDerEncodeDecode);
BENCHMARK(FenkDerEncodeDecodeInBuffers);
BENCHMARK(PeerDerEncodeDecode);
BENCHMARK(FenkDerEncode);
BENCHMARK(FenkDerDecode);
BENCHMARK_MAIN();
