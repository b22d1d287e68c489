// Hexadecimal dump of a 16 MiB file (slot 19, plain and framed layouts)
// into a world whose output stream is /dev/null, against the xxd command
// dumping the same file to /dev/null. The file is made with random octets
// in a temporary directory at start and removed at the end.
//
// xxd runs as a child process; its figure is the child's CPU time (user +
// system, from wait4) set as manual time, so it compares with the CPU time
// of our dump. It includes starting the program and reading the file from
// the page cache; our dump works on the octets already in memory.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr size_t kSize = 16u << 20;

struct Sample {
    std::string directory;
    std::string file;
    std::vector<uint8_t> octets;

    Sample() : octets(kSize) {
        char pattern[] = "/tmp/fenk-hexdump-XXXXXX";
        if (!mkdtemp(pattern)) std::abort();
        directory = pattern;
        file = directory + "/sample.bin";
        std::mt19937 random(19);
        for (auto& o : octets) o = static_cast<uint8_t>(random());
        FILE* out = std::fopen(file.c_str(), "wb");
        if (!out || std::fwrite(octets.data(), 1, kSize, out) != kSize || std::fclose(out) != 0)
            std::abort();
    }
    ~Sample() {
        std::remove(file.c_str());
        rmdir(directory.c_str());
    }
};

Sample& sample() {
    static Sample s;
    return s;
}

void HexDump(benchmark::State& state) {
    KivGlobal world;
    if (kivCompanionInitWorld(&world, nullptr) != 0) std::abort();
    FILE* sink = std::fopen("/dev/null", "w");
    if (!sink) std::abort();
    world.outputStream = sink;
    if (state.range(0)) kivStoreDebugFlags(&world, KIV_DEBUG_FRAMED_DUMPS);
    const auto& octets = sample().octets;
    for (auto _ : state) kivHexDump(&world, octets.data(), static_cast<int32_t>(kSize));
    state.SetBytesProcessed(state.iterations() * kSize);
    kivCompanionEndWorld(&world);
    std::fclose(sink);
}

// One run of `xxd FILE > /dev/null`; answers the child's CPU seconds.
double runXxd(const std::string& file) {
    pid_t child = fork();
    if (child < 0) std::abort();
    if (child == 0) {
        int sink = open("/dev/null", O_WRONLY);
        if (sink < 0 || dup2(sink, STDOUT_FILENO) < 0) _exit(127);
        execlp("xxd", "xxd", file.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child) std::abort();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
    auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void XxdToDevNull(benchmark::State& state) {
    const std::string& file = sample().file;
    for (auto _ : state) {
        double seconds = runXxd(file);
        if (seconds < 0) {
            state.SkipWithError("xxd did not run");
            return;
        }
        state.SetIterationTime(seconds);
    }
}

}  // namespace

BENCHMARK(HexDump)->Arg(0)->Arg(1)->ArgName("framed")->Unit(benchmark::kMillisecond);
BENCHMARK(XxdToDevNull)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
