// A decode-like allocation pattern: 100 000 blocks of 8 to 200 octets, then
// all given back at once. Memory handle and recorded allocation against
// malloc/free of the same blocks.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdlib>
#include <random>
#include <vector>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr size_t kBlocks = 100000;

const std::vector<uint32_t>& sizes() {
    static const std::vector<uint32_t> s = [] {
        std::mt19937 random(5);
        std::vector<uint32_t> v(kBlocks);
        for (auto& n : v) n = 8 + random() % 193;
        return v;
    }();
    return s;
}

void MallocFree(benchmark::State& state) {
    std::vector<void*> blocks(kBlocks);
    for (auto _ : state) {
        for (size_t i = 0; i < kBlocks; ++i) blocks[i] = std::malloc(sizes()[i]);
        benchmark::DoNotOptimize(blocks.data());
        for (void* b : blocks) std::free(b);
    }
    state.SetItemsProcessed(state.iterations() * kBlocks);
}

// The same, freed newest first, the order recorded blocks are given back in.
void MallocFreeNewestFirst(benchmark::State& state) {
    std::vector<void*> blocks(kBlocks);
    for (auto _ : state) {
        for (size_t i = 0; i < kBlocks; ++i) blocks[i] = std::malloc(sizes()[i]);
        benchmark::DoNotOptimize(blocks.data());
        for (size_t i = kBlocks; i-- > 0;) std::free(blocks[i]);
    }
    state.SetItemsProcessed(state.iterations() * kBlocks);
}

void HandleAllocDestroy(benchmark::State& state) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    for (auto _ : state) {
        KivMemoryHandle* h = kivCreateMemoryHandle(&world, 1 << 16);
        for (size_t i = 0; i < kBlocks; ++i) benchmark::DoNotOptimize(kivAllocate(&world, sizes()[i]));
        kivDestroyMemoryHandle(&world, h);
    }
    state.SetItemsProcessed(state.iterations() * kBlocks);
    kivCompanionEndWorld(&world);
}

void RecordedAllocFree(benchmark::State& state) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    world.currentBlockTable = &world.blockTable;
    for (auto _ : state) {
        for (size_t i = 0; i < kBlocks; ++i) benchmark::DoNotOptimize(kivAllocExact(&world, sizes()[i]));
        kivFreeTrackedBlocks(&world, world.freeHook);
    }
    state.SetItemsProcessed(state.iterations() * kBlocks);
    kivCompanionEndWorld(&world);
}

}  // namespace

BENCHMARK(MallocFree)->Unit(benchmark::kMillisecond);
BENCHMARK(MallocFreeNewestFirst)->Unit(benchmark::kMillisecond);
BENCHMARK(HandleAllocDestroy)->Unit(benchmark::kMillisecond);
BENCHMARK(RecordedAllocFree)->Unit(benchmark::kMillisecond);
// The process keeps the memory it frees, as a long-running coder process
// would configure it; with the defaults every destroyed handle's blocks go
// back to the system and each round pays page faults for them again.
int main(int argc, char** argv) {
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
