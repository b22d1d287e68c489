// The trace window (slot 31): one per process, showing the trace text store
// while it grows, with scrolling, a File menu (Save As..., Reset, Exit,
// About Trace...) and a confirmation before closing. It has no message loop
// of its own: the output service dispatches its messages.
#include <algorithm>
#include <cstring>

#include "platform/ui/module_resources.h"
#include "platform/ui/ui.h"
#include "tracewin/trace_store.h"
#include "tracewin/tracewin_slots.h"

namespace fenk {
namespace {

constexpr size_t kLineCapacity = 1024;
constexpr size_t kFileNameCapacity = 260;
constexpr int32_t kInitialWidest = 8;
constexpr int32_t kHorizontalPage = 8;

// Positions in the File menu.
constexpr int kItemSaveAs = 0;
constexpr int kItemReset = 1;
constexpr int kItemExit = 3;

// The process-wide window state. Touched only by the thread that opened the
// window, while it prints, saves or opens.
struct WindowState {
    KivGlobal* world;       // the world that opened the window
    KivGlobal* traceState;  // whose store is shown; from the user data, kept until Reset
    ui::Window window;
    ui::Instance instance;
    ui::Menu menu;
    int32_t charWidth;
    int32_t lineHeight;
    int32_t clientHeight;
    int32_t lineCount;
    int32_t top;   // first line shown
    int32_t left;  // first column shown
    int32_t widest;
    uint32_t lastPaintCount;
    bool contentCurrent;
    bool idle;
    bool exitRequested;
    char blankLine[kLineCapacity + 1];
    char fileName[kFileNameCapacity];
};

WindowState state;

constexpr const char kTitle[] = "Trace Info Window";

void setMenuItems(bool enabled) {
    const ui::Backend& ui = ui::backend();
    ui.enableMenuItem(state.window, kItemSaveAs, enabled);
    ui.enableMenuItem(state.window, kItemReset, enabled);
}

bool hasTraceText() { return state.traceState && state.traceState->traceFirstPage; }

void paint(ui::Window window, uintptr_t first, intptr_t second) {
    const ui::Backend& ui = ui::backend();
    if (!state.traceState) state.traceState = static_cast<KivGlobal*>(ui.userData(window));
    KivGlobal* store = state.traceState;
    if (store) state.lineCount = static_cast<int32_t>(store->traceLineCount);
    if (state.contentCurrent) {
        if (state.idle && store && store->traceLineCount > state.lastPaintCount) {
            state.idle = false;
            state.contentCurrent = false;
            state.lastPaintCount = store->traceLineCount;
            setMenuItems(false);
        }
        ui.defaultProcedure(window, ui::Msg::paint, first, second);
        return;
    }
    if (!store || !store->traceFile) {
        ui.defaultProcedure(window, ui::Msg::paint, first, second);
        return;
    }
    ui.beginPaint(window);
    ui::Rect client = ui.clientRect(window);
    int32_t firstLine = std::max(0, client.top / state.lineHeight + state.top - 1);
    int32_t endLine = std::min(state.lineCount, state.top + client.bottom / state.lineHeight);
    char line[kLineCapacity];
    int32_t drawn = 0;
    for (int32_t n = firstLine; n < endLine; ++n, ++drawn) {
        kivReadTraceLine(nullptr, window, store->traceFile, line, store->traceFirstPage,
                         static_cast<uint32_t>(n));
        size_t length = std::strlen(line);
        const char* text = length ? line : state.blankLine;
        ui.drawText(window, (1 - state.left) * state.charWidth, (n - state.top) * state.lineHeight, text,
                    length ? length : kLineCapacity);
        state.widest = std::max(state.widest, static_cast<int32_t>(length));
    }
    ui.endPaint(window);
    if (drawn >= state.clientHeight / state.lineHeight) state.contentCurrent = true;
    if (store->traceLineCount == state.lastPaintCount) {
        state.idle = true;
        state.contentCurrent = true;
        setMenuItems(true);
    } else {
        state.lastPaintCount = store->traceLineCount;
        setMenuItems(false);
    }
    ui.setScrollRange(window, ui::barHorizontal, 0, state.widest);
}

// Moves the view by step lines (vertical) or columns, within 0 and limit.
// The content-current flag is cleared for the update, so the lines that come
// into view are painted, and set afterwards.
void scrollBy(ui::Window window, ui::Bar bar, int64_t step, int32_t limit) {
    const ui::Backend& ui = ui::backend();
    int32_t& position = bar == ui::barVertical ? state.top : state.left;
    int64_t target = std::clamp<int64_t>(position + step, 0, std::max(0, limit));
    step = target - position;
    if (step == 0) return;
    if (bar == ui::barVertical)
        ui.scrollWindow(window, 0, static_cast<int32_t>(-step * state.lineHeight));
    else
        ui.scrollWindow(window, static_cast<int32_t>(-step * state.charWidth), 0);
    position = static_cast<int32_t>(target);
    ui.setScrollPosition(window, bar, position);
    state.contentCurrent = false;
    ui.invalidate(window, false);
    ui.update(window);
    state.contentCurrent = true;
}

void verticalScroll(ui::Window window, uintptr_t code, intptr_t thumb) {
    int64_t page = std::max(1, state.clientHeight / state.lineHeight);
    int64_t step = 0;
    switch (code) {
    case ui::scrollLineUp: step = -1; break;
    case ui::scrollLineDown: step = 1; break;
    case ui::scrollPageUp: step = -page; break;
    case ui::scrollPageDown: step = page; break;
    // The layer hands over the thumb position at full width, so positions
    // beyond 65535 need no correction.
    case ui::scrollThumbTrack: step = thumb - state.top; break;
    case ui::scrollTop: step = -state.top; break;
    case ui::scrollBottom: step = state.lineCount - state.top; break;
    default: break;
    }
    scrollBy(window, ui::barVertical, step, state.lineCount);
}

void horizontalScroll(ui::Window window, uintptr_t code, intptr_t thumb) {
    int64_t step = 0;
    switch (code) {
    case ui::scrollLineUp: step = -1; break;
    case ui::scrollLineDown: step = 1; break;
    case ui::scrollPageUp: step = -kHorizontalPage; break;
    case ui::scrollPageDown: step = kHorizontalPage; break;
    case ui::scrollThumbPosition: step = thumb - state.left; break;
    default: break;
    }
    scrollBy(window, ui::barHorizontal, step, state.widest);
}

void keyDown(ui::Window window, uintptr_t key) {
    const ui::Backend& ui = ui::backend();
    switch (key) {
    case ui::keyPageUp: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollPageUp, 0); break;
    case ui::keyPageDown: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollPageDown, 0); break;
    case ui::keyHome: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollTop, 0); break;
    case ui::keyEnd: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollBottom, 0); break;
    case ui::keyUp: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollLineUp, 0); break;
    case ui::keyDown: ui.sendMessage(window, ui::Msg::vscroll, ui::scrollLineDown, 0); break;
    case ui::keyLeft: ui.sendMessage(window, ui::Msg::hscroll, ui::scrollPageUp, 0); break;
    case ui::keyRight: ui.sendMessage(window, ui::Msg::hscroll, ui::scrollPageDown, 0); break;
    default: break;
    }
}

intptr_t fileNameDialog(ui::Dialog dialog, ui::Msg message, uintptr_t first, intptr_t) {
    const ui::Backend& ui = ui::backend();
    if (message == ui::Msg::initDialog) {
        ui.setTextLimit(dialog, ui::controlFileName, static_cast<int32_t>(kFileNameCapacity - 1));
        return 1;
    }
    if (message != ui::Msg::command) return 0;
    if (first == ui::controlOk) {
        ui.controlText(dialog, ui::controlFileName, state.fileName, kFileNameCapacity);
        ui.endDialog(dialog, 1);
        return 1;
    }
    if (first == ui::controlCancel) {
        ui.endDialog(dialog, 0);
        return 1;
    }
    return 0;
}

intptr_t aboutDialog(ui::Dialog dialog, ui::Msg message, uintptr_t first, intptr_t) {
    if (message == ui::Msg::initDialog) return 1;
    if (message == ui::Msg::command && (first == ui::controlOk || first == ui::controlCancel)) {
        ui::backend().endDialog(dialog, 1);
        return 1;
    }
    return 0;
}

void saveAs(ui::Window window) {
    const ui::Backend& ui = ui::backend();
    if (!hasTraceText()) {
        ui.beep();
        ui.messageBox(window, "No Trace Info Available", "Warning", ui::boxOk);
        return;
    }
    ui.enableMenuItem(window, kItemSaveAs, false);
    ui.enableMenuItem(window, kItemExit, false);
    intptr_t result = ui.runDialog(state.instance, ui::kFileNameDialogName, window, fileNameDialog);
    if (result == -1)
        showTraceError(window, "Cannot Create a Dialog Box");
    else if (result == 1)
        kivSaveTrace(state.traceState, window, state.fileName);
    ui.enableMenuItem(window, kItemSaveAs, true);
    ui.enableMenuItem(window, kItemExit, true);
}

// Empties the view; answers the store that was shown.
KivGlobal* resetView(ui::Window window) {
    const ui::Backend& ui = ui::backend();
    KivGlobal* shown = state.traceState;
    state.traceState = nullptr;
    state.widest = kInitialWidest;
    state.lineCount = 1;
    state.top = state.left = 0;
    state.idle = false;
    state.lastPaintCount = 0;
    // What is on show is no longer current: the next line must be painted.
    state.contentCurrent = false;
    ui.setScrollRange(window, ui::barVertical, 0, state.lineCount);
    ui.setScrollPosition(window, ui::barVertical, 0);
    ui.setScrollRange(window, ui::barHorizontal, 0, state.widest);
    ui.setScrollPosition(window, ui::barHorizontal, 0);
    ui.scrollWindow(window, 0, -state.lineHeight);
    // Erased, so that no line of the emptied store stays on show.
    ui.invalidate(window, true);
    ui.update(window);
    return shown;
}

void close(ui::Window window) {
    const ui::Backend& ui = ui::backend();
    if (!state.exitRequested) {
        ui.beep();
        int answer = ui.messageBox(window, "Do You Really Want To Exit?", "Warning",
                                   ui::boxYesNo | ui::iconQuestion);
        if (answer == ui::answerNo) return;
    }
    if (state.lastPaintCount > 0 && !state.idle) {
        ui.messageBox(window, "Encoder/Decoder Appears To Be Running.  Please Wait Until It Exits...",
                      "Info", ui::iconInformation);
        state.exitRequested = true;
        return;
    }
    state.exitRequested = false;
    ui.destroyMenu(state.menu);
    state.menu = nullptr;
    ui.destroyWindow(window);
}

// The window goes: its world writes to the output stream again, and the
// store of the world that opened it is emptied, temporary file included,
// whether or not any text was shown.
void destroy(ui::Window window) {
    KivGlobal* world = state.world;
    if (world) world->traceWindow = nullptr;
    resetView(window);
    if (world) kivResetTrace(world);
    ui::backend().unregisterClass(ui::kTraceClassName, state.instance);
    state.world = nullptr;
    state.window = nullptr;
    state.exitRequested = false;
    state.contentCurrent = false;
}

void created(ui::Window window) {
    ui::TextMetrics metrics = ui::backend().fixedFontMetrics(window);
    state.instance = ui::moduleInstance();
    state.window = window;
    state.charWidth = std::max(1, metrics.averageCharWidth);
    state.lineHeight = std::max(1, metrics.height + metrics.externalLeading);
    state.lineCount = 1;
    state.widest = kInitialWidest;
    state.top = state.left = 0;
}

void sized(ui::Window window, intptr_t size) {
    const ui::Backend& ui = ui::backend();
    state.clientHeight = static_cast<int32_t>(static_cast<uint64_t>(size) >> 32);
    ui.setScrollRange(window, ui::barVertical, 0, state.lineCount);
    ui.setScrollPosition(window, ui::barVertical, state.top);
    ui.setScrollRange(window, ui::barHorizontal, 0, state.widest);
    ui.setScrollPosition(window, ui::barHorizontal, state.left);
    state.contentCurrent = false;
    ui.invalidate(window, false);
    ui.update(window);
}

intptr_t traceWindowProcedure(ui::Window window, ui::Msg message, uintptr_t first, intptr_t second) {
    const ui::Backend& ui = ui::backend();
    switch (message) {
    case ui::Msg::create: created(window); return 0;
    case ui::Msg::size: sized(window, second); return 0;
    case ui::Msg::paint: paint(window, first, second); return 0;
    case ui::Msg::vscroll: verticalScroll(window, first, second); return 0;
    case ui::Msg::hscroll: horizontalScroll(window, first, second); return 0;
    case ui::Msg::keyDown: keyDown(window, first); return 0;
    case ui::Msg::close: close(window); return 0;
    case ui::Msg::destroy: destroy(window); return 0;
    case ui::Msg::command:
        switch (first) {
        case ui::commandSaveAs: saveAs(window); break;
        case ui::commandReset:
            if (hasTraceText()) kivResetTrace(resetView(window));
            break;
        case ui::commandAbout:
            if (ui.runDialog(state.instance, ui::kAboutDialogName, window, aboutDialog) == -1)
                showTraceError(window, "Cannot Create a Dialog Box");
            break;
        case ui::commandExit: ui.sendMessage(window, ui::Msg::close, 0, 0); break;
        default: break;
        }
        return 0;
    case ui::Msg::move:
    case ui::Msg::activate:
    case ui::Msg::getText:
    case ui::Msg::getMinMaxInfo:
    case ui::Msg::iconEraseBackground:
    case ui::Msg::windowPosChanging:
        state.contentCurrent = false;
        break;
    default:
        break;
    }
    ui.invalidate(window, false);
    return ui.defaultProcedure(window, message, first, second);
}

}  // namespace
}  // namespace fenk

extern "C" int32_t kivOpenTraceWindow(KivGlobal* world) {
    using namespace fenk;
    if (!world) return 6;
    if (world->traceWindow || state.world) return 24;
    const ui::Backend& ui = ui::backend();
    state.world = world;
    std::memset(state.blankLine, ' ', kLineCapacity);
    state.blankLine[kLineCapacity] = '\0';
    state.instance = ui::moduleInstance();
    ui.registerClass(ui::WindowClass{ui::kTraceClassName, traceWindowProcedure, 4, state.instance,
                                   ui::kTraceIconName, "arrow", 0xFFFFFF, ui::kTraceMenuName});
    state.menu = ui.loadMenu(state.instance, ui::kTraceMenuName);
    ui::Window window = ui.createWindow(ui::kTraceClassName, kTitle, state.menu);
    if (!window) {
        ui.destroyMenu(state.menu);
        ui.unregisterClass(ui::kTraceClassName, state.instance);
        state = WindowState{};
        return 24;
    }
    ui.setUserData(window, nullptr);
    ui.setFocus(window);
    ui.showWindow(window);
    ui.update(window);
    world->traceWindow = window;
    if (world->traceFile) return 0;
    return openTraceTempFile(world) ? 0 : 27;
}
