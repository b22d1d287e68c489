#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "support/test_world.h"

namespace {

std::string readFile(const std::string& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

struct TraceFile : ::testing::Test {
    fenk::test::TestWorld w;
    std::string first = ::testing::TempDir() + "fenk_trace_first.txt";
    std::string second = ::testing::TempDir() + "fenk_trace_second.txt";
    void TearDown() override {
        unlink(first.c_str());
        unlink(second.c_str());
    }
};

}  // namespace

TEST_F(TraceFile, OutputGoesToTheFileWhileItIsOpen) {
    FILE* original = w->outputStream;
    ASSERT_EQ(kivOpenTraceFile(w.get(), first.c_str()), 0);
    EXPECT_EQ(w->savedOutputStream, original);
    uint8_t octets[] = {0xAB, 0xCD};
    kivHexDump(w.get(), octets, 2);
    EXPECT_EQ(kivOpenTraceFile(w.get(), second.c_str()), 28) << "the first file stays";
    kivHexDump(w.get(), octets, 1);
    EXPECT_EQ(kivCloseTraceFile(w.get()), 0);
    EXPECT_EQ(w->outputStream, original);
    EXPECT_EQ(w->savedOutputStream, nullptr);
    EXPECT_EQ(readFile(first), "ABCD\nAB\n");
    EXPECT_EQ(access(second.c_str(), F_OK), -1);
    EXPECT_EQ(w.output(), "");
    EXPECT_EQ(kivCloseTraceFile(w.get()), 0) << "none open";
}

TEST_F(TraceFile, AFileThatCannotBeOpenedLeavesTheStreamAlone) {
    FILE* original = w->outputStream;
    EXPECT_EQ(kivOpenTraceFile(w.get(), "/nonexistent/dir/trace.txt"), 27);
    EXPECT_EQ(w->outputStream, original);
    EXPECT_EQ(w->savedOutputStream, nullptr);
    EXPECT_EQ(kivOpenTraceFile(nullptr, first.c_str()), 6);
    EXPECT_EQ(kivOpenTraceFile(w.get(), nullptr), 6);
    EXPECT_EQ(kivCloseTraceFile(nullptr), 6);
    // Without a trace window the refusal shows no box and prints nothing.
    EXPECT_EQ(w->traceWindow, nullptr);
    EXPECT_EQ(w.output(), "");
}
