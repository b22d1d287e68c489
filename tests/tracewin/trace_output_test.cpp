// Formatted output without a trace window, and reading index lines back.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

std::string hookSeen, contextSeen;

// An output hook or context routine that records the text and answers
// base plus its length.
template <std::string* seen, int base>
int recording(KivGlobal*, const char* format, va_list args) {
    char text[256];
    int n = std::vsnprintf(text, sizeof text, format, args);
    *seen += text;
    return base + n;
}
constexpr auto recordingHook = &recording<&hookSeen, 1000>;
constexpr auto recordingContext = &recording<&contextSeen, 2000>;

std::string printSeen;

int recordingPrint(FILE*, const char* format, ...) {
    va_list args;
    va_start(args, format);
    char text[4096];
    int n = std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    printSeen += text;
    return 3000 + n;
}

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

KivControlTable someTable{nullptr, 17, nullptr};

}  // namespace

TEST(TraceOutput, StreamGetsTheTextFlushedInCallOrder) {
    TestWorld w;
    char path[] = "/tmp/fenktestXXXXXX";
    int fd = mkstemp(path);
    ASSERT_GE(fd, 0);
    FILE* stream = fdopen(fd, "w");
    ASSERT_NE(stream, nullptr);
    w->outputStream = stream;
    EXPECT_EQ(kivTracePrint(w.get(), "%s=%d ", "a", 1), 4);
    // Flushed at once: another reader of the file sees it.
    EXPECT_EQ(fileText(path), "a=1 ");
    kivCompanionPrint(w.get(), "%.2f|", 2.5);
    kivTracePrint(w.get(), "%c\n", 'z');
    EXPECT_EQ(fileText(path), "a=1 2.50|z\n");
    std::fclose(stream);
    unlink(path);
}

TEST(TraceOutput, HookThenContextOnlyWithAControlTable) {
    TestWorld w;
    w.priv()->outputHook = recordingHook;
    w->outputContext = recordingContext;
    hookSeen.clear();
    contextSeen.clear();
    // No control table: straight to the stream.
    kivTracePrint(w.get(), "plain %d;", 1);
    EXPECT_EQ(w.output(), "plain 1;");
    EXPECT_EQ(hookSeen, "");

    w->controlTable = &someTable;
    EXPECT_EQ(kivTracePrint(w.get(), "hook %s %.1f", "h", 0.5), 1000 + 10);
    EXPECT_EQ(hookSeen, "hook h 0.5");
    EXPECT_EQ(contextSeen, "");

    w.priv()->outputHook = nullptr;
    EXPECT_EQ(kivTracePrint(w.get(), "ctx %u", 7u), 2000 + 5);
    EXPECT_EQ(contextSeen, "ctx 7");
    EXPECT_EQ(w.output(), "plain 1;");

    // No world, or no stream: nothing printed, not even to the hook.
    EXPECT_EQ(kivTracePrint(nullptr, "x"), 0);
    w->outputStream = nullptr;
    w.priv()->outputHook = recordingHook;
    hookSeen.clear();
    EXPECT_EQ(kivTracePrint(w.get(), "x"), 0);
    EXPECT_EQ(hookSeen, "");
}

TEST(TraceOutput, ReplacedPrintRoutineGetsTheFinishedText) {
    TestWorld w;
    w->printRoutine = &recordingPrint;
    printSeen.clear();
    EXPECT_EQ(kivTracePrint(w.get(), "%d-%s-%g", 42, "x", 1.5), 3000 + 8);
    EXPECT_EQ(printSeen, "42-x-1.5");
    // Longer than the 1024-character buffer: still whole.
    std::string longText(1500, 'q');
    printSeen.clear();
    kivTracePrint(w.get(), "<%s>", longText.c_str());
    EXPECT_EQ(printSeen, "<" + longText + ">");
    EXPECT_EQ(w.output(), "");
    // Back to the default routine: the stream again.
    w->printRoutine = nullptr;
    kivTracePrint(w.get(), "s");
    EXPECT_EQ(w.output(), "s");
}

// Reading lines back from a hand-made index page and file.
class ReadTraceLine : public ::testing::Test {
protected:
    void SetUp() override {
        file_ = std::tmpfile();
        ASSERT_NE(file_, nullptr);
        page_ = KivTracePage{nullptr, nullptr, starts_, lengths_, 0};
    }
    void TearDown() override { std::fclose(file_); }

    // Appends a line (line feed included by the caller) as index entry n.
    void add(uint32_t n, const std::string& text) {
        std::fseek(file_, 0, SEEK_END);
        starts_[n] = static_cast<uint32_t>(std::ftell(file_));
        lengths_[n] = static_cast<uint16_t>(text.size());
        std::fwrite(text.data(), 1, text.size(), file_);
    }
    std::string read(uint32_t n, int32_t* result = nullptr) {
        char out[1024];
        std::memset(out, 'Z', sizeof out);
        int32_t r = kivReadTraceLine(nullptr, nullptr, file_, out, &page_, n);
        if (result) *result = r;
        return out;
    }

    FILE* file_ = nullptr;
    uint32_t starts_[KIV_TRACE_PAGE_LINES] = {};
    uint16_t lengths_[KIV_TRACE_PAGE_LINES] = {};
    KivTracePage page_{};
};

TEST_F(ReadTraceLine, TabsBecomeEightBlanksAndRunsCountOnce) {
    add(0, "\tA\t\tB\n");
    add(1, "plain\n");
    add(2, "x\t\t\t");
    add(3, "\t\t");
    int32_t result = 0;
    EXPECT_EQ(read(0, &result), "        A        B\n");
    EXPECT_EQ(result, 6);
    EXPECT_EQ(read(1), "plain\n");
    EXPECT_EQ(read(2), "x");          // trailing tabs separate nothing
    EXPECT_EQ(read(3), "\t\t");       // no piece at all: unchanged
    EXPECT_EQ(read(4, &result), "");  // not ended yet: length 0
    EXPECT_EQ(result, 0);
}

TEST_F(ReadTraceLine, DestinationStaysBelow1024Characters) {
    add(0, std::string(2000, 'w') + "\n");
    add(1, std::string(1020, 'v') + "\tEND\n");
    int32_t result = 0;
    EXPECT_EQ(read(0, &result), std::string(1023, 'w'));
    EXPECT_EQ(result, 2001);
    EXPECT_EQ(read(1), std::string(1020, 'v') + "   ");
}

TEST_F(ReadTraceLine, WalksToTheLinesPage) {
    uint32_t starts2[KIV_TRACE_PAGE_LINES] = {};
    uint16_t lengths2[KIV_TRACE_PAGE_LINES] = {};
    KivTracePage second{&page_, nullptr, starts2, lengths2, 1};
    page_.next = &second;
    add(5, "first page\n");
    std::fseek(file_, 0, SEEK_END);
    starts2[5] = static_cast<uint32_t>(std::ftell(file_));
    lengths2[5] = 12;
    std::fputs("second page\n", file_);
    EXPECT_EQ(read(5), "first page\n");
    EXPECT_EQ(read(205), "second page\n");
    EXPECT_EQ(read(405), "");  // no such page
}
