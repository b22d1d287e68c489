// Ordering 10 000 SET OF components under DER (begin, a component each,
// end: joins, the sort and the write-back) against std::sort with memcmp on
// the same encodings.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr size_t kComponents = 10000;

// INTEGER-like encodings of 3 to 10 octets.
const std::vector<std::vector<uint8_t>>& encodings() {
    static const std::vector<std::vector<uint8_t>> e = [] {
        std::mt19937 random(3);
        std::vector<std::vector<uint8_t>> v(kComponents);
        for (auto& c : v) {
            size_t n = 1 + random() % 8;
            c = {0x02, static_cast<uint8_t>(n)};
            for (size_t i = 0; i < n; ++i) c.push_back(static_cast<uint8_t>(random()));
        }
        return v;
    }();
    return e;
}

void prepend(KivGlobal* world, uint8_t** cursor, uint32_t* left, const uint8_t* octets,
             uint32_t length) {
    while (length) {
        if (*left == 0) {
            *cursor = static_cast<uint8_t*>(kivNewOutputChunk(world)) + KIV_OUTPUT_CHUNK_SIZE;
            *left = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = std::min(length, *left);
        *cursor -= part;
        *left -= part;
        length -= part;
        std::memcpy(*cursor, octets + length, part);
    }
}

void StdSortMemcmp(benchmark::State& state) {
    struct Entry {
        uint32_t length;
        const uint8_t* octets;
    };
    std::vector<Entry> base;
    for (const auto& c : encodings()) base.push_back({static_cast<uint32_t>(c.size()), c.data()});
    std::vector<Entry> entries;
    for (auto _ : state) {
        entries = base;
        std::sort(entries.begin(), entries.end(), [](const Entry& p, const Entry& q) {
            int r = std::memcmp(p.octets, q.octets, std::min(p.length, q.length));
            return r ? r < 0 : p.length < q.length;
        });
        benchmark::DoNotOptimize(entries.data());
    }
    state.SetItemsProcessed(state.iterations() * kComponents);
}

void DerSetOf(benchmark::State& state) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    world.currentBlockTable = &world.blockTable;
    world.encodingRules = 3;
    KivRoutine coders[KIV_CODER_BACKWARD_WRITER + 1] = {};
    coders[KIV_CODER_BACKWARD_WRITER] = reinterpret_cast<KivRoutine>(&prepend);
    world.berCoders = reinterpret_cast<KivCoderPair*>(coders);
    for (auto _ : state) {
        uint8_t* cursor = nullptr;
        uint32_t left = 0;
        kivBeginSetOf(&world, kComponents, &cursor, &left);
        for (auto it = encodings().rbegin(); it != encodings().rend(); ++it) {
            kivNextSetOfComponent(&world, &left);
            prepend(&world, &cursor, &left, it->data(), static_cast<uint32_t>(it->size()));
        }
        kivEndSetOf(&world, &cursor, &left, 0);
        state.PauseTiming();
        kivFreeTrackedBlocks(&world, world.freeHook);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kComponents);
    kivCompanionEndWorld(&world);
}

}  // namespace

BENCHMARK(StdSortMemcmp)->Unit(benchmark::kMicrosecond);
BENCHMARK(DerSetOf)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
