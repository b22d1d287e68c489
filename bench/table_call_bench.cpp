// Allocation through the table (slot 242 -> allocHook -> allocRoutine) and
// release (slot 244) against malloc/free of the same sizes: the cost of the
// indirections every allocating service pays.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr size_t kSizes[] = {8, 24, 64, 200};

void MallocFree(benchmark::State& state) {
    size_t i = 0;
    for (auto _ : state) {
        void* p = std::malloc(kSizes[i++ & 3]);
        benchmark::DoNotOptimize(p);
        std::free(p);
    }
}

void TableAllocRelease(benchmark::State& state) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    size_t i = 0;
    for (auto _ : state) {
        void* p = kivAllocate(&world, kSizes[i++ & 3]);
        benchmark::DoNotOptimize(p);
        kivRelease(&world, p);
    }
    kivCompanionEndWorld(&world);
}

}  // namespace

BENCHMARK(MallocFree);
BENCHMARK(TableAllocRelease);
BENCHMARK_MAIN();
