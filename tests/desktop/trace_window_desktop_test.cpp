// The trace window on a real X display (a private Xvfb): what is printed
// shows up in the window, the keys scroll it, and the File menu saves,
// resets and exits, driven with xdotool as a user would.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "support/test_world.h"
#include "x_session.h"

using fenk::test::Band;
using fenk::test::Helper;
using fenk::test::Image;
using fenk::test::runCommand;
using fenk::test::TestWorld;

namespace {

constexpr int kPrinted = 300;
constexpr int kScrollBarRoom = 24;  // right edge of the window left out of the text
constexpr const char kTitleSearch[] = "xdotool search --onlyvisible --name '^Trace Info Window$'";

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool exists(const std::string& path) {
    struct stat info{};
    return stat(path.c_str(), &info) == 0;
}

// Line n of the printed trace: (n mod 8 + 1) times four M's, so that the
// lines on show can be told apart by their painted widths.
int printedLength(int n) { return (n % 8 + 1) * 4; }

// Checks that the text bands (the menu bar's band left out) are lines
// firstLine, firstLine + 1, ... of the printed trace in one fixed-width
// font, one below the other; answers how many lines were seen.
int expectPrintedLines(const std::vector<Band>& bands, int firstLine) {
    if (bands.size() < 10) {
        ADD_FAILURE() << "only " << bands.size() << " bands of text on show";
        return 0;
    }
    const Band* lines = bands.data() + 1;
    size_t count = bands.size() - 1;
    // The widths of a 4-character and a 32-character line fix the cell
    // width and the glyphs' side bearings.
    const Band* shortest = nullptr;
    const Band* longest = nullptr;
    for (size_t k = 0; k < 8; ++k) {
        int length = printedLength(firstLine + static_cast<int>(k));
        if (length == 4) shortest = &lines[k];
        if (length == 32) longest = &lines[k];
    }
    double cell = ((longest->right - longest->left) - (shortest->right - shortest->left)) / 28.0;
    double bearing = 4 * cell - (shortest->right - shortest->left);
    EXPECT_GT(cell, 4.0);
    int spacing = lines[1].top - lines[0].top;
    for (size_t k = 0; k < count; ++k) {
        const Band& band = lines[k];
        int length = printedLength(firstLine + static_cast<int>(k));
        // The last band may be a line cut by the bottom edge: only full
        // lines are measured.
        if (k + 1 == count && band.bottom - band.top < lines[0].bottom - lines[0].top) break;
        EXPECT_NEAR(band.right - band.left, length * cell - bearing, 2.0) << "line " << firstLine + k;
        EXPECT_NEAR(band.left, lines[0].left, 1) << "line " << firstLine + k;
        if (k > 0) {
            EXPECT_NEAR(band.top - lines[k - 1].top, spacing, 1) << "line " << firstLine + k;
        }
    }
    return static_cast<int>(count);
}

std::string menuChoice(char mnemonic);
std::string answer(const std::string& title, const std::string& actions, const std::string& log);

// Exit, answering the question Yes (a refusal while lines arrive is
// answered Ok; Exit is then chosen again).
std::string closeByExit() {
    return menuChoice('x') + "; sleep 1; for id in $(x search --onlyvisible --name '^(Warning|Info)$'); do " +
           "x windowfocus --sync $id key Return; done";
}

class DesktopTraceWindow : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static fenk::test::XServer server;
        unavailable = server.start();
        if (!unavailable.empty()) return;
        if (runCommand("command -v xdotool && command -v xwd", 10).empty()) {
            unavailable = "xdotool or xwd is not installed";
            return;
        }
        // Before the library's first use of the window system, which picks
        // the desktop when a display is at hand.
        setenv("DISPLAY", server.display().c_str(), 1);
        unsetenv("WAYLAND_DISPLAY");
        setenv("GDK_BACKEND", "x11", 1);
        display = server.display();
    }

    void SetUp() override {
        if (!unavailable.empty()) GTEST_SKIP() << "no X display for the desktop tests: " << unavailable;
        char directory[] = "/tmp/fenk-desktop-XXXXXX";
        ASSERT_NE(mkdtemp(directory), nullptr);
        scratch = directory;
        ASSERT_EQ(kivOpenTraceWindow(w.get()), 0);
        ASSERT_NE(w->traceWindow, nullptr);
        ASSERT_NE(w->traceFile, nullptr);
        windowId = runCommand(kTitleSearch, 30);
        ASSERT_FALSE(windowId.empty()) << "no window titled \"Trace Info Window\"";
        windowId = windowId.substr(0, windowId.find('\n'));
        for (int n = 0; n < kPrinted; ++n) kivTracePrint(w.get(), "%s\n", std::string(printedLength(n), 'M').c_str());
    }

    // Lets the window handle what is waiting: it has no event loop of its
    // own, the library serves it whenever a line is printed.
    void pump() {
        kivTracePrint(w.get(), "pump %d\n", ++pumps);
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }

    template <typename Condition>
    bool pumpUntil(Condition condition, int seconds) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        while (std::chrono::steady_clock::now() < deadline) {
            if (condition()) return true;
            pump();
        }
        return condition();
    }

    std::vector<Band> textBands() {
        Image image;
        if (!fenk::test::readWindowDump(runCommand("xwd -silent -id " + windowId, 30), image)) return {};
        return fenk::test::darkBands(image, image.width - kScrollBarRoom);
    }

    // A script driving the window. Whatever it leaves open (a menu, a
    // dialog, a message box) would hold the printing thread, so at its end
    // it closes them all with Escape. It calls ready when the window is to
    // be served: the events it queued up to then are handled together.
    std::string script(const std::string& steps) {
        return "exec 2>>" + scratch + "/helper.log; set -ex; export DISPLAY=" + display + "; " +
               "x() { timeout 30 xdotool \"$@\"; }; ready() { touch " + marker() + "; }; " +
               "trap 'set +e; for id in $(x search --onlyvisible --name \"^(Warning|Info|Trace Info File)$\"); do "
               "x windowfocus --sync $id key Escape; done; x key Escape' EXIT; " +
               "root=$(x search --maxdepth 0 --name '' | head -n1); win=" + windowId + "; " +
               "x windowfocus --sync $win; " + steps + "; ready";
    }

    std::string marker() const { return scratch + "/ready"; }

    // Runs the script; serves the window from its call of ready until it
    // ends. Answers what went wrong: empty when the script succeeded, else
    // its trace.
    std::string drive(const std::string& steps, int seconds = 90) {
        std::string log = scratch + "/helper.log";
        std::remove(marker().c_str());
        std::remove(log.c_str());
        Helper helper(script(steps));
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        while (!exists(marker()) && !helper.done() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        pumpUntil([&] { return helper.done(); }, seconds);
        std::string trace = helper.finish(5) == 0 ? "" : "script failed:\n" + fileText(log);
        std::remove(log.c_str());
        return trace;
    }

    // A window left open is closed as a user would, so that its store and
    // temporary file go with it.
    void TearDown() override {
        for (int attempt = 0; attempt < 3 && w->traceWindow; ++attempt)
            drive(closeByExit(), 60);
        EXPECT_EQ(w->traceWindow, nullptr);
        if (!scratch.empty()) std::filesystem::remove_all(scratch);
    }

    static inline std::string unavailable;
    static inline std::string display;
    TestWorld w;
    std::string scratch;
    std::string windowId;
    int pumps = 0;
};

// Chooses a File menu item by its mnemonic, as a user coming from another
// window would: the trace window is activated and its menu opened at once,
// so that both are handled between the same two printed lines.
std::string menuChoice(char mnemonic) {
    return std::string("x windowfocus --sync $root; x windowfocus --sync $win; x key --clearmodifiers alt+f; ") +
           "ready; sleep 1; x key " + mnemonic;
}

// Waits for the window titled title, logs its title and runs the actions
// on it.
std::string answer(const std::string& title, const std::string& actions, const std::string& log) {
    return "; id=$(x search --sync --onlyvisible --name '^" + title + "$' | head -n1); [ -n \"$id\" ]; " +
           "x getwindowname $id >> " + log + "; x windowfocus --sync $id; sleep 0.5; " + actions;
}

TEST_F(DesktopTraceWindow, ShowsThePrintedLinesAndScrollsByKey) {
    // The window shows the first lines, each where the fixed font puts it.
    std::vector<Band> bands;
    ASSERT_TRUE(pumpUntil([&] { return (bands = textBands()).size() >= 10; }, 30));
    int shown = expectPrintedLines(bands, 0);
    EXPECT_LT(shown, kPrinted);

    // Three lines down by the arrow key: line 3 comes first; Home goes back.
    auto firstWidth = [&] {
        bands = textBands();
        return bands.size() > 1 ? bands[1].right - bands[1].left : 0;
    };
    int fourCharacters = bands[1].right - bands[1].left;
    ASSERT_EQ(drive("x key Down Down Down"), "");
    ASSERT_TRUE(pumpUntil([&] { return firstWidth() > 3 * fourCharacters; }, 30));
    expectPrintedLines(bands, 3);
    ASSERT_EQ(drive("x key Home"), "");
    ASSERT_TRUE(pumpUntil([&] { return firstWidth() == fourCharacters; }, 30));
    expectPrintedLines(bands, 0);
}

TEST_F(DesktopTraceWindow, FileMenuSavesResetsAndExits) {
    std::string saved = scratch + "/saved.txt";
    std::string log = scratch + "/boxes.log";

    // Save As...: the file-name dialog, then the success box.
    ASSERT_EQ(drive(menuChoice('s') +
                    answer("Trace Info File", "x type --delay 20 '" + saved + "'; x key Return", log) +
                    answer("Info", "x key Return", log)),
              "");
    std::string text = fileText(saved);
    std::string expected;
    for (int n = 0; n < kPrinted; ++n) expected += std::string(printedLength(n), 'M') + "\n";
    ASSERT_GE(text.size(), expected.size());
    EXPECT_EQ(text.substr(0, expected.size()), expected);
    EXPECT_EQ(text, fileText(w->traceFilePath).substr(0, text.size()));

    // Reset empties the store and starts a new temporary file.
    std::string oldPath = w->traceFilePath;
    ASSERT_EQ(drive(menuChoice('r')), "");
    ASSERT_TRUE(pumpUntil([&] { return w->traceLineCount < 20; }, 30)) << w->traceLineCount;
    EXPECT_FALSE(exists(oldPath));
    EXPECT_NE(w->traceFile, nullptr);

    // Exit asks first; No keeps the window.
    ASSERT_EQ(drive(menuChoice('x') + answer("Warning", "x key alt+n", log)), "");
    pump();
    EXPECT_NE(w->traceWindow, nullptr);
    EXPECT_FALSE(runCommand(kTitleSearch, 30).empty());

    // Yes closes it: no line arrived while the menu was down, so the
    // window is idle and not refused. The world prints to its stream again.
    std::string path = w->traceFilePath;
    ASSERT_EQ(drive(menuChoice('x') + answer("Warning", "x key Return", log)), "");
    EXPECT_EQ(w->traceWindow, nullptr);
    EXPECT_TRUE(runCommand(kTitleSearch, 30).empty());
    EXPECT_FALSE(exists(path));
    w.clearOutput();
    kivTracePrint(w.get(), "after\n");
    EXPECT_EQ(w.output(), "after\n");

    std::string boxes = fileText(log);
    EXPECT_EQ(boxes.substr(0, boxes.find("Warning")), "Trace Info File\nInfo\n");
    EXPECT_NE(boxes.find("Warning\nWarning\n"), std::string::npos) << boxes;
}

}  // namespace
