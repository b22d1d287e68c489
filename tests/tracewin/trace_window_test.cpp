// The trace window over the headless window system: the store behind it,
// painting, scrolling, the File menu and closing.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/ui/headless.h"
#include "platform/ui/module_resources.h"
#include "support/test_world.h"

using fenk::test::TestWorld;
namespace ui = fenk::ui;
namespace hl = fenk::ui::headless;

namespace {

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string trimmed(const char* row) {
    std::string text(row);
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

class TraceWindow : public ::testing::Test {
protected:
    void SetUp() override { open(); }
    void TearDown() override { closeWindow(); }

    void open() {
        ASSERT_EQ(kivOpenTraceWindow(w.get()), 0);
        window = static_cast<hl::HeadlessWindow*>(w->traceWindow);
        display = hl::displayOf(window);
        ASSERT_NE(display, nullptr);
        display->clear();
    }

    // Closes whatever state the window is in: it is made idle first, so that
    // the running refusal does not keep it.
    void closeWindow() {
        for (int i = 0; i < 3 && w->traceWindow; ++i) {
            display->clear();
            send(ui::Msg::activate);
            send(ui::Msg::paint);
            send(ui::Msg::close);
        }
        ASSERT_EQ(w->traceWindow, nullptr);
    }

    intptr_t send(ui::Msg message, uintptr_t first = 0, intptr_t second = 0) {
        return display->send(window, message, first, second);
    }

    std::string row(int r) { return trimmed(window->rows[r]); }

    std::string box(int n) { return display->boxes[n].caption + std::string("|") + display->boxes[n].text; }

    void printLines(int from, int to) {
        for (int n = from; n < to; ++n) kivTracePrint(w.get(), "line %d\n", n);
    }

    std::string lineAt(uint32_t n) {
        char out[1024];
        kivReadTraceLine(nullptr, nullptr, w->traceFile, out, w->traceFirstPage, n);
        return out;
    }

    TestWorld w;
    hl::HeadlessWindow* window = nullptr;
    hl::Display* display = nullptr;
};

TEST_F(TraceWindow, OpensOncePerProcessWithAPrivateTemporaryFile) {
    EXPECT_TRUE(window->visible);
    EXPECT_TRUE(window->focused);
    ASSERT_NE(w->traceFile, nullptr);
    ASSERT_NE(w->traceFilePath, nullptr);
    struct stat info{};
    ASSERT_EQ(stat(w->traceFilePath, &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(kivOpenTraceWindow(w.get()), 24);
    TestWorld other;
    EXPECT_EQ(kivOpenTraceWindow(other.get()), 24);
    EXPECT_EQ(other->traceWindow, nullptr);
    EXPECT_EQ(kivOpenTraceWindow(nullptr), 6);

    // Closing removes the file; the world prints to its stream again.
    std::string path = w->traceFilePath;
    closeWindow();
    EXPECT_NE(stat(path.c_str(), &info), 0);
    EXPECT_EQ(w->traceFile, nullptr);
    EXPECT_EQ(w->traceFilePath, nullptr);
    kivTracePrint(w.get(), "after\n");
    EXPECT_EQ(w.output(), "after\n");

    // A window that cannot be made answers 24 and leaves no trace.
    display->failNextCreate = true;
    EXPECT_EQ(kivOpenTraceWindow(w.get()), 24);
    EXPECT_EQ(w->traceWindow, nullptr);
    open();
}

TEST_F(TraceWindow, PiecesFormOneLineIndexedWhenTheLineFeedArrives) {
    EXPECT_EQ(kivTracePrint(w.get(), "ab"), 2);
    EXPECT_EQ(kivTracePrint(w.get(), "%s", "cd"), 2);
    EXPECT_EQ(w->traceLineCount, 1u);
    EXPECT_EQ(w->traceLineOpen, 1);
    EXPECT_EQ(w->traceLineLength, 4);
    EXPECT_EQ(w->traceFirstPage->lineLengths[0], 0);
    EXPECT_EQ(kivTracePrint(w.get(), "ef\nnext\n"), 8);
    EXPECT_EQ(w->traceLineOpen, 0);
    EXPECT_EQ(w->traceLineCount, 2u);
    EXPECT_EQ(w->traceFirstPage->lineLengths[0], 7);
    EXPECT_EQ(w->traceFirstPage->lineStarts[1], 7u);
    EXPECT_EQ(w->traceWritten, 1);
    EXPECT_EQ(lineAt(0), "abcdef\n");
    EXPECT_EQ(lineAt(1), "next\n");
    EXPECT_EQ(kivTracePrint(w.get(), "%s", ""), 0);
    EXPECT_EQ(w.output(), "");
    // Each completed line was shown at once, one column in.
    EXPECT_EQ(row(0), " abcdef");
    EXPECT_EQ(row(1), " next");
    EXPECT_EQ(window->bars[ui::barVertical].maximum, 2);
    // The File menu is grayed while lines arrive, enabled again when idle.
    EXPECT_FALSE(window->itemEnabled[0]);
    EXPECT_FALSE(window->itemEnabled[1]);
    EXPECT_TRUE(window->itemEnabled[3]);
    send(ui::Msg::activate);
    send(ui::Msg::paint);
    EXPECT_TRUE(window->itemEnabled[0]);
    EXPECT_TRUE(window->itemEnabled[1]);
}

TEST_F(TraceWindow, The201stLineOpensASecondPage) {
    printLines(0, 200);
    EXPECT_EQ(w->traceFirstPage, w->traceCurrentPage);
    EXPECT_EQ(w->tracePageNumber, 0);
    printLines(200, 201);
    ASSERT_NE(w->traceFirstPage->next, nullptr);
    EXPECT_EQ(w->traceFirstPage->next, w->traceCurrentPage);
    EXPECT_EQ(w->traceCurrentPage->previous, w->traceFirstPage);
    EXPECT_EQ(w->traceCurrentPage->pageNumber, 1);
    EXPECT_EQ(w->tracePageNumber, 1);
    EXPECT_EQ(lineAt(199), "line 199\n");
    EXPECT_EQ(lineAt(200), "line 200\n");
}

TEST_F(TraceWindow, TextLongerThanTheFormatBufferIsKeptWhole) {
    std::string text(3000, 'L');
    EXPECT_EQ(kivTracePrint(w.get(), "%s\n", text.c_str()), 3001);
    EXPECT_EQ(w->traceFirstPage->lineLengths[0], 3001);
    EXPECT_EQ(lineAt(0), std::string(1023, 'L'));
    // A line too long for its 16-bit length is recorded as 65535 bytes.
    std::string huge(70000, 'H');
    kivTracePrint(w.get(), "%s", huge.c_str());
    kivTracePrint(w.get(), "%s\n", huge.c_str());
    EXPECT_EQ(w->traceFirstPage->lineLengths[1], 65535);
    EXPECT_EQ(lineAt(1), std::string(1023, 'H'));
    // Without memory for the whole text it is cut to what the buffer holds.
    KivPlainAlloc alloc = w->allocRoutine;
    w->allocRoutine = [](size_t) -> void* { return nullptr; };
    EXPECT_EQ(kivTracePrint(w.get(), "%s\n", text.c_str()), 1023);
    w->allocRoutine = alloc;
    kivTracePrint(w.get(), "\n");
    EXPECT_EQ(w->traceFirstPage->lineLengths[2], 1024);
    EXPECT_EQ(display->boxCount, 0);
}

TEST_F(TraceWindow, PaintingFollowsScrolling) {
    printLines(0, 100);
    EXPECT_EQ(row(0), " line 0");
    EXPECT_EQ(row(24), " line 24");
    send(ui::Msg::keyDown, ui::keyPageDown);
    EXPECT_EQ(window->bars[ui::barVertical].position, 25);
    EXPECT_EQ(row(0), " line 25");
    EXPECT_EQ(row(24), " line 49");
    send(ui::Msg::keyDown, ui::keyUp);
    EXPECT_EQ(row(0), " line 24");
    send(ui::Msg::vscroll, ui::scrollThumbTrack, 90);
    EXPECT_EQ(row(0), " line 90");
    EXPECT_EQ(row(9), " line 99");
    EXPECT_EQ(row(10), "");
    // Clamped at the line count, and at 0.
    send(ui::Msg::keyDown, ui::keyPageDown);
    EXPECT_EQ(window->bars[ui::barVertical].position, 100);
    send(ui::Msg::keyDown, ui::keyDown);
    EXPECT_EQ(window->bars[ui::barVertical].position, 100);
    send(ui::Msg::keyDown, ui::keyHome);
    EXPECT_EQ(row(0), " line 0");
    send(ui::Msg::keyDown, ui::keyPageUp);
    EXPECT_EQ(window->bars[ui::barVertical].position, 0);
    send(ui::Msg::keyDown, ui::keyEnd);
    EXPECT_EQ(window->bars[ui::barVertical].position, 100);
    // Other keys and the end-of-scroll code move nothing.
    send(ui::Msg::keyDown, 'A');
    send(ui::Msg::vscroll, ui::scrollEnd);
    EXPECT_EQ(window->bars[ui::barVertical].position, 100);
    send(ui::Msg::keyDown, ui::keyHome);
    // Horizontally by characters, up to the widest line painted.
    send(ui::Msg::hscroll, ui::scrollLineDown);
    EXPECT_EQ(row(0), "line 0");
    send(ui::Msg::keyDown, ui::keyRight);
    EXPECT_EQ(window->bars[ui::barHorizontal].position, 8);
    EXPECT_EQ(row(0), "");
    send(ui::Msg::hscroll, ui::scrollLineUp);
    send(ui::Msg::hscroll, ui::scrollEnd);
    EXPECT_EQ(window->bars[ui::barHorizontal].position, 7);
    send(ui::Msg::hscroll, ui::scrollThumbPosition, 6);
    EXPECT_EQ(row(0), "0");
    EXPECT_EQ(row(10), "10");
    send(ui::Msg::keyDown, ui::keyLeft);
    EXPECT_EQ(row(0), " line 0");
}

TEST_F(TraceWindow, WithoutTextResetDoesNothingAndSaveAsWarns) {
    std::string firstPath = w->traceFilePath;
    send(ui::Msg::command, ui::commandReset);
    EXPECT_EQ(firstPath, w->traceFilePath);
    EXPECT_EQ(display->boxCount, 0);
    send(ui::Msg::command, ui::commandSaveAs);
    EXPECT_EQ(display->beeps, 1u);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Warning|No Trace Info Available");
    EXPECT_EQ(display->boxes[0].style, 0u);
    EXPECT_EQ(display->dialogCount, 0);
}

TEST_F(TraceWindow, ResetEmptiesTheStoreAndClosesAnOpenLine) {
    std::string firstPath = w->traceFilePath;

    printLines(0, 30);
    send(ui::Msg::keyDown, ui::keyDown);
    send(ui::Msg::command, ui::commandReset);
    EXPECT_EQ(w->traceLineCount, 0u);
    EXPECT_EQ(w->traceFirstPage, nullptr);
    ASSERT_NE(w->traceFilePath, nullptr);
    EXPECT_NE(firstPath, w->traceFilePath);
    struct stat info{};
    EXPECT_NE(stat(firstPath.c_str(), &info), 0);
    EXPECT_EQ(row(0), "");
    EXPECT_EQ(window->bars[ui::barVertical].position, 0);

    kivTracePrint(w.get(), "fresh\n");
    EXPECT_EQ(w->traceFirstPage->lineStarts[0], 0u);
    EXPECT_EQ(lineAt(0), "fresh\n");
    EXPECT_EQ(row(0), " fresh");

    // A half-written line is dropped: the next text starts a new one.
    kivTracePrint(w.get(), "half");
    kivResetTrace(w.get());
    EXPECT_EQ(w->traceLineOpen, 0);
    kivTracePrint(w.get(), "whole\n");
    EXPECT_EQ(w->traceLineCount, 1u);
    EXPECT_EQ(lineAt(0), "whole\n");
}

TEST_F(TraceWindow, SaveAsCopiesTheTemporaryFileInBlocksOf10000) {
    std::string expected;
    for (int n = 0; n < 800; ++n) {
        char line[64];
        std::snprintf(line, sizeof line, "%04d\tsome trace text of the encoder\n", n);
        kivTracePrint(w.get(), "%s", line);
        expected += line;
    }
    ASSERT_GT(expected.size(), 20000u);
    ASSERT_LT(expected.size(), 30000u);
    char path[] = "/tmp/fenksaveXXXXXX";
    close(mkstemp(path));
    display->steps[0].button = ui::controlOk;
    std::snprintf(display->steps[0].text, sizeof display->steps[0].text, "%s", path);
    display->stepCount = 1;
    uint32_t paintsBefore = window->paints;
    send(ui::Msg::command, ui::commandSaveAs);
    EXPECT_EQ(fileText(path), expected);
    unlink(path);
    // One repaint after each of the three blocks.
    EXPECT_EQ(window->paints - paintsBefore, 3u);
    ASSERT_EQ(display->dialogCount, 1);
    EXPECT_STREQ(display->dialogs[0].name, "EnterTraceDlg");
    EXPECT_EQ(display->dialogs[0].textLimit, 259);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), std::string("Info|File ") + path + " Was Successfully Written");
    EXPECT_EQ(display->boxes[0].style, ui::iconInformation);
    EXPECT_TRUE(window->itemEnabled[0]);
    EXPECT_TRUE(window->itemEnabled[3]);

    // Cancel writes nothing; a dialog that cannot be made says so.
    display->clear();
    display->steps[0].button = ui::controlCancel;
    display->steps[1].button = -1;
    display->stepCount = 2;
    send(ui::Msg::command, ui::commandSaveAs);
    EXPECT_NE(access(path, F_OK), 0);
    EXPECT_EQ(display->boxCount, 0);
    send(ui::Msg::command, ui::commandSaveAs);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Error|Cannot Create a Dialog Box");
    EXPECT_EQ(display->boxes[0].style, ui::iconStop);
}

TEST_F(TraceWindow, SaveFailuresAreReported) {
    kivTracePrint(w.get(), "x\n");
    kivSaveTrace(w.get(), window, "/nonexistent-dir/trace.txt");
    kivSaveTrace(w.get(), window, "/");
    ASSERT_EQ(display->boxCount, 2);
    EXPECT_EQ(box(0), "Error|Cannot Open Output File: /nonexistent-dir/trace.txt");
    EXPECT_EQ(box(1), "Error|Cannot Open Output File: /");
    KivPlainAlloc alloc = w->allocRoutine;
    w->allocRoutine = [](size_t) -> void* { return nullptr; };
    kivSaveTrace(w.get(), window, "/tmp/unused");
    w->allocRoutine = alloc;
    ASSERT_EQ(display->boxCount, 3);
    EXPECT_EQ(box(2), "Error|Cannot Allocate Memory");
    kivSaveTrace(w.get(), window, "/dev/full");
    ASSERT_EQ(display->boxCount, 4);
    EXPECT_EQ(box(3), "Error|Cannot Write Output File: /dev/full");
}

TEST_F(TraceWindow, TemporaryFileFailuresAreReported) {
    kivTracePrint(w.get(), "first\n");
    FILE* file = w->traceFile;
    // Open for appending only, the file cannot be read back nor saved.
    FILE* writeOnly = std::fopen(w->traceFilePath, "a");
    ASSERT_NE(writeOnly, nullptr);
    w->traceFile = writeOnly;
    char out[1024] = "x";
    EXPECT_EQ(kivReadTraceLine(nullptr, window, w->traceFile, out, w->traceFirstPage, 0), -1);
    EXPECT_STREQ(out, "");
    char path[] = "/tmp/fenksaveXXXXXX";
    close(mkstemp(path));
    kivSaveTrace(w.get(), window, path);
    EXPECT_EQ(fileText(path), "");
    unlink(path);
    // Open for reading only, it takes no more text.
    FILE* readOnly = std::fopen(w->traceFilePath, "r");
    ASSERT_NE(readOnly, nullptr);
    w->traceFile = readOnly;
    EXPECT_EQ(kivTracePrint(w.get(), "second\n"), -1);
    w->traceFile = file;
    std::fclose(writeOnly);
    std::fclose(readOnly);
    EXPECT_EQ(w->traceLineCount, 1u);
    EXPECT_EQ(lineAt(0), "first\n");
    ASSERT_EQ(display->boxCount, 3);
    EXPECT_EQ(box(0), "Error|Cannot Read Temporary File");
    EXPECT_EQ(box(1), "Error|Cannot Read Tracing Info Temporary File");
    EXPECT_EQ(box(2), "Error|Error Writing a Temporary File");
}

TEST_F(TraceWindow, ResetDuringSaveStopsTheCopy) {
    for (int n = 0; n < 1000; ++n) kivTracePrint(w.get(), "%04d trace text\n", n);
    char path[] = "/tmp/fenksaveXXXXXX";
    close(mkstemp(path));
    // Handled after the first block, while the window is repainted.
    display->post(window, ui::Msg::command, ui::commandReset, 0);
    kivSaveTrace(w.get(), window, path);
    EXPECT_EQ(fileText(path).size(), 10000u);
    EXPECT_EQ(display->boxCount, 0);
    EXPECT_EQ(w->traceLineCount, 0u);
    unlink(path);
}

TEST_F(TraceWindow, IndexMemoryFailureKeepsTheTextUnindexed) {
    KivPlainAlloc alloc = w->allocRoutine;
    w->allocRoutine = [](size_t) -> void* { return nullptr; };
    EXPECT_EQ(kivTracePrint(w.get(), "lost\n"), -1);
    w->allocRoutine = alloc;
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Error|Unable To Alocate a Memory Block");
    EXPECT_EQ(w->traceLineCount, 0u);
    EXPECT_EQ(kivTracePrint(w.get(), "kept\n"), 5);
    EXPECT_EQ(w->traceFirstPage->lineStarts[0], 5u);
    EXPECT_EQ(lineAt(0), "kept\n");
}

TEST_F(TraceWindow, CloseAsksFirstAndNoKeepsTheWindow) {
    display->answers[0] = ui::answerNo;
    display->answerCount = 1;
    send(ui::Msg::command, ui::commandExit);
    EXPECT_EQ(display->beeps, 1u);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Warning|Do You Really Want To Exit?");
    EXPECT_EQ(display->boxes[0].style, ui::boxYesNo | ui::iconQuestion);
    EXPECT_NE(w->traceWindow, nullptr);
    send(ui::Msg::close);
    EXPECT_EQ(w->traceWindow, nullptr);
    EXPECT_FALSE(window->alive);
}

TEST_F(TraceWindow, CloseWhileOutputArrivesIsRefusedOnceThenCloses) {
    printLines(0, 2);
    // The close waits in the queue and is dispatched while a line prints.
    display->post(window, ui::Msg::close, 0, 0);
    printLines(2, 3);
    ASSERT_EQ(display->boxCount, 2);
    EXPECT_EQ(box(0), "Warning|Do You Really Want To Exit?");
    EXPECT_EQ(box(1), "Info|Encoder/Decoder Appears To Be Running.  Please Wait Until It Exits...");
    EXPECT_EQ(display->boxes[1].style, ui::iconInformation);
    EXPECT_NE(w->traceWindow, nullptr);
    // Output stopped: a repaint finds no new line, and the next close goes
    // through without asking again.
    send(ui::Msg::activate);
    send(ui::Msg::paint);
    send(ui::Msg::close);
    EXPECT_EQ(display->boxCount, 2);
    EXPECT_EQ(w->traceWindow, nullptr);
    kivTracePrint(w.get(), "to the stream\n");
    EXPECT_EQ(w.output(), "to the stream\n");
}

TEST_F(TraceWindow, AboutBoxRunsOrReportsFailure) {
    send(ui::Msg::command, ui::commandAbout);
    ASSERT_EQ(display->dialogCount, 1);
    EXPECT_STREQ(display->dialogs[0].name, "AboutTraceBox");
    EXPECT_EQ(display->dialogs[0].result, 1);
    display->steps[0].button = -1;
    display->stepCount = 1;
    send(ui::Msg::command, ui::commandAbout);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Error|Cannot Create a Dialog Box");
}

TEST_F(TraceWindow, AHundredThousandLinesReadBackWithABoundedIndex) {
    static long blocks;
    static long bytes;
    blocks = bytes = 0;
    w->allocRoutine = [](size_t size) -> void* {
        ++blocks;
        bytes += static_cast<long>(size);
        return std::malloc(size);
    };
    constexpr int kLines = 100000;
    for (int n = 0; n < kLines; ++n) kivTracePrint(w.get(), "%06d\tline\n", n);
    EXPECT_EQ(w->traceLineCount, static_cast<uint32_t>(kLines));
    EXPECT_EQ(blocks, 3 * kLines / KIV_TRACE_PAGE_LINES);
    EXPECT_EQ(bytes, (kLines / KIV_TRACE_PAGE_LINES) *
                         static_cast<long>(sizeof(KivTracePage) + KIV_TRACE_PAGE_LINES * 6));
    for (uint32_t n : {0u, 199u, 200u, 54321u, 65536u, 99999u}) {
        char expected[32];
        std::snprintf(expected, sizeof expected, "%06u        line\n", n);
        EXPECT_EQ(lineAt(n), expected);
    }
    send(ui::Msg::vscroll, ui::scrollThumbTrack, 70000);
    EXPECT_EQ(row(0), " 070000        line");
    w->allocRoutine = &std::malloc;
}

TEST(TraceWindowTempFile, FailureKeepsTheWindowWithoutAFile) {
    TestWorld w;
    const char* saved = std::getenv("TMPDIR");
    std::string old = saved ? saved : "";
    setenv("TMPDIR", "/nonexistent-dir", 1);
    int32_t result = kivOpenTraceWindow(w.get());
    if (saved) setenv("TMPDIR", old.c_str(), 1); else unsetenv("TMPDIR");
    EXPECT_EQ(result, 27);
    ASSERT_NE(w->traceWindow, nullptr);
    EXPECT_EQ(w->traceFile, nullptr);
    hl::Display* display = hl::displayOf(w->traceWindow);
    ASSERT_NE(display, nullptr);
    ASSERT_GE(display->boxCount, 1);
    EXPECT_STREQ(display->boxes[display->boxCount - 1].text, "Unable To Open a Temporary File");
    EXPECT_EQ(display->boxes[display->boxCount - 1].style, ui::iconStop);
    // Without a file the output takes the stream.
    kivTracePrint(w.get(), "stream\n");
    EXPECT_EQ(w.output(), "stream\n");
    display->clear();
    display->send(w->traceWindow, ui::Msg::close, 0, 0);
    EXPECT_EQ(w->traceWindow, nullptr);
}

}  // namespace

TEST_F(TraceWindow, TraceFileRefusalsShowWarningBoxes) {
    std::string path = ::testing::TempDir() + "fenk_trace_boxes.txt";
    ASSERT_EQ(kivOpenTraceFile(w.get(), path.c_str()), 0);
    EXPECT_EQ(kivOpenTraceFile(w.get(), path.c_str()), 28);
    ASSERT_EQ(display->boxCount, 1);
    EXPECT_EQ(box(0), "Warning|Sorry, Tracing File Is Already Opened");
    EXPECT_EQ(display->boxes[0].style, ui::boxOk);
    EXPECT_EQ(kivCloseTraceFile(w.get()), 0);
    unlink(path.c_str());

    EXPECT_EQ(kivOpenTraceFile(w.get(), "/nonexistent/fenk/trace.txt"), 27);
    ASSERT_EQ(display->boxCount, 2);
    EXPECT_EQ(box(1), "Warning|Unable To Open a Tracing File");
    EXPECT_EQ(display->boxes[1].style, ui::boxOk | ui::iconStop);
    EXPECT_EQ(w->savedOutputStream, nullptr);
}
