// Parsing and normalising time texts against a baseline of what any text
// service pays anyway: measuring the text and copying it into a fresh
// block (strlen + malloc + memcpy + free).
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr const char* kTexts[] = {"2009-01-01T10:00:00,5+01:00", "P1Y0M0DT0H0M5S",
                                  "R5/2009-01-01T10:00+01/2009-01-01T12:00+01:00",
                                  "2009-W05-3T24:00Z/P2W"};

void CopyText(benchmark::State& state) {
    size_t i = 0;
    for (auto _ : state) {
        const char* t = kTexts[i++ & 3];
        size_t n = std::strlen(t) + 1;
        char* p = static_cast<char*>(std::malloc(n));
        std::memcpy(p, t, n);
        benchmark::DoNotOptimize(p);
        std::free(p);
    }
}

struct World {
    KivGlobal world;
    World() { kivCompanionInitWorld(&world, nullptr); }
    ~World() { kivCompanionEndWorld(&world); }
};

void ParseTimePoint(benchmark::State& state) {
    World w;
    KivTimeFields f;
    for (auto _ : state) {
        benchmark::DoNotOptimize(kivParseTimePoint(&w.world, kTexts[0], &f));
        benchmark::DoNotOptimize(f);
    }
}

void NormalizeTimeText(benchmark::State& state) {
    World w;
    w.world.encodingRules = static_cast<int32_t>(state.range(0));
    size_t i = 0;
    for (auto _ : state) {
        char* out = nullptr;
        benchmark::DoNotOptimize(kivNormalizeTimeText(&w.world, kTexts[i++ & 3], &out));
        kivReleaseThroughTable(&w.world, out);
    }
}

void TimeTextsDiffer(benchmark::State& state) {
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            kivTimeTextsDiffer(&w.world, "P0Y1MT0,5S", "P1MT0.5S"));
}

void DateTimeRoundTrip(benchmark::State& state) {
    World w;
    int32_t y, mo, d, z;
    uint32_t h, mi, s, n;
    const char* f;
    for (auto _ : state) {
        char* out = nullptr;
        kivDateTimeToText(&w.world, 2009, 5, 6, 7, 8, 9, "25", 2, 330, &out);
        benchmark::DoNotOptimize(
            kivTextToDateTime(&w.world, out, &y, &mo, &d, &h, &mi, &s, &f, &n, &z));
        kivReleaseThroughTable(&w.world, out);
    }
}

}  // namespace

BENCHMARK(CopyText);
BENCHMARK(ParseTimePoint);
BENCHMARK(NormalizeTimeText)->Arg(0)->Arg(3);
BENCHMARK(TimeTextsDiffer);
BENCHMARK(DateTimeRoundTrip);
BENCHMARK_MAIN();
