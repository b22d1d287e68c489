// Parsing TIME values through slot 324 against sscanf reading the same
// date and time fields: the parser should cost no more than the C library's
// scanner while checking every field.
#include <benchmark/benchmark.h>

#include <csetjmp>
#include <cstdio>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

const char* const kPoint = "2009-05-01T10:15:30.250+05:30";
const char* const kInterval = "R12/2009-05-01T10:15:30/P1Y2M3DT4H5M6S";

void ScanfBaseline(benchmark::State& state) {
    int f[9];
    for (auto _ : state) {
        int n = std::sscanf(kPoint, "%d-%d-%dT%d:%d:%d.%d+%d:%d", &f[0], &f[1], &f[2], &f[3], &f[4],
                            &f[5], &f[6], &f[7], &f[8]);
        benchmark::DoNotOptimize(n);
        benchmark::DoNotOptimize(f);
    }
}

void Parse(benchmark::State& state, const char* text) {
    KivGlobal world;
    kivCompanionInitWorld(&world, nullptr);
    jmp_buf frame;
    world.jumpBuffer = &frame;
    if (setjmp(frame) != 0) {
        state.SkipWithError("the text was refused");
        kivCompanionEndWorld(&world);
        return;
    }
    KivTimeValue value;
    for (auto _ : state) {
        kivParseTimeValue(&world, text, &value);
        benchmark::DoNotOptimize(value);
    }
    kivCompanionEndWorld(&world);
}

void ParsePoint(benchmark::State& state) { Parse(state, kPoint); }
void ParseRecurringInterval(benchmark::State& state) { Parse(state, kInterval); }

}  // namespace

BENCHMARK(ScanfBaseline);
BENCHMARK(ParsePoint);
BENCHMARK(ParseRecurringInterval);
BENCHMARK_MAIN();
