// The trace store behind the trace window: its line index pages and the
// blocks that hold long texts. Without memory the store carries on (a line
// goes unindexed, a long text is cut); nothing may be lost either way.
#include <cstdlib>
#include <cstring>

#include "platform/ui/headless.h"
#include "sweep.h"

namespace fenk::test {
namespace {

namespace ui = fenk::ui;

// The window system of these tests is the headless one.
const bool kHeadless = [] {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    return true;
}();

// Closes the window as a user would: it resets the opening world's store.
void closeWindow(KivGlobal* w) {
    for (int i = 0; i < 3 && w->traceWindow; ++i) {
        ui::headless::Display* display = ui::headless::displayOf(w->traceWindow);
        display->send(w->traceWindow, ui::Msg::activate, 0, 0);
        display->send(w->traceWindow, ui::Msg::paint, 0, 0);
        display->send(w->traceWindow, ui::Msg::close, 0, 0);
    }
}

Outcome traceStore(KivGlobal* w) {
    if (kivOpenTraceWindow(w) != 0) return failed(kWrongResult);
    static char longLine[3000];
    std::memset(longLine, 'x', sizeof longLine - 1);
    // 450 lines: three pages of the line index.
    for (int i = 0; i < 450; ++i) kivTracePrint(w, "line %d\n", i);
    kivTracePrint(w, "%s\n", longLine);
    const bool indexed = w->traceLineCount <= 451 && w->traceLineCount > 0;
    closeWindow(w);
    return indexed && !w->traceWindow && !w->traceFirstPage ? done() : failed(kWrongResult);
}

const ServiceGroup group({
    {"trace", "trace window store (25, 31)", WorldKind::plain, Fails::absorbs, 0, traceStore},
});

}  // namespace
}  // namespace fenk::test
