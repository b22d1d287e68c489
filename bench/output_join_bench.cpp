// Joining 1 MiB of output chunks (forward and backward, the chunks given
// back included) against one memcpy of 1 MiB.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr size_t kTotal = 1 << 20;
constexpr int kChunks = kTotal / KIV_OUTPUT_CHUNK_SIZE;

void Memcpy1MiB(benchmark::State& state) {
    std::vector<uint8_t> from(kTotal, 7), to(kTotal);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), kTotal);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * kTotal);
}

void fillChunks(KivGlobal* world) {
    for (int i = 0; i < kChunks; ++i)
        std::memset(kivNewOutputChunk(world), i, KIV_OUTPUT_CHUNK_SIZE);
}

template <bool Forward>
void Join1MiB(benchmark::State& state) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    world.currentBlockTable = &world.blockTable;
    for (auto _ : state) {
        state.PauseTiming();
        fillChunks(&world);
        world.poolLeft = 0;
        state.ResumeTiming();
        uint32_t length = 0;
        uint8_t* out = nullptr;
        if (Forward)
            kivJoinForwardOutput(&world, &length, &out);
        else
            kivJoinBackwardOutput(&world, 0, &length, &out);
        benchmark::DoNotOptimize(out);
        state.PauseTiming();
        kivFreeBlock(&world, out);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * kTotal);
    kivCompanionEndWorld(&world);
}

}  // namespace

BENCHMARK(Memcpy1MiB)->Unit(benchmark::kMicrosecond);
BENCHMARK(Join1MiB<true>)->Name("JoinForward1MiB")->Unit(benchmark::kMicrosecond);
BENCHMARK(Join1MiB<false>)->Name("JoinBackward1MiB")->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
