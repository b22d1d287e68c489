// GeneralizedTime text to seconds since 1970 (slot 287, through apiTbl)
// against OpenSSL's ASN1_TIME_to_tm followed by timegm on the same texts.
// The OpenSSL time objects are made once, outside the timed loop.
#include <benchmark/benchmark.h>
#include <openssl/asn1.h>

#include <cstdlib>
#include <ctime>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr const char* kTexts[] = {"20240229120000Z",      "19700101000000Z",
                                  "20380119031407Z",      "20091231235959.123Z",
                                  "20240101120000+0530",  "20110615083000-0800",
                                  "19991231235959.5Z",    "20200301000000Z"};
constexpr size_t kCount = sizeof kTexts / sizeof kTexts[0];

void FenkGeneralizedTimeToSeconds(benchmark::State& state) {
    KivGlobal world;
    if (kivCompanionInitWorld(&world, nullptr) != 0) std::abort();
    size_t i = 0;
    for (auto _ : state) {
        uint64_t seconds = 0;
        int32_t code = kivGeneralizedTimeTextToSeconds(&world, kTexts[i++ % kCount], &seconds);
        benchmark::DoNotOptimize(code);
        benchmark::DoNotOptimize(seconds);
    }
    kivCompanionEndWorld(&world);
}

void OpenSslTimeToTmAndTimegm(benchmark::State& state) {
    ASN1_TIME* times[kCount];
    for (size_t k = 0; k < kCount; ++k) {
        times[k] = ASN1_GENERALIZEDTIME_new();
        if (!times[k] || !ASN1_GENERALIZEDTIME_set_string(times[k], kTexts[k])) std::abort();
    }
    size_t i = 0;
    for (auto _ : state) {
        struct tm fields;
        int ok = ASN1_TIME_to_tm(times[i++ % kCount], &fields);
        time_t seconds = timegm(&fields);
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(seconds);
    }
    for (ASN1_TIME* t : times) ASN1_TIME_free(t);
}

}  // namespace

BENCHMARK(FenkGeneralizedTimeToSeconds);
BENCHMARK(OpenSslTimeToTmAndTimegm);
BENCHMARK_MAIN();
