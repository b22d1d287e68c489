#include "platform/ui/headless.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "platform/ui/module_resources.h"

namespace fenk::ui::headless {
namespace {

intptr_t send(Window window, Msg message, uintptr_t first, intptr_t second);
void post(Window window, Msg message, uintptr_t first, intptr_t second);
void resize(Window window, int32_t width, int32_t height);
void clear();

Display makeDisplay() {
    Display made{};
    made.send = send;
    made.post = post;
    made.resize = resize;
    made.clear = clear;
    return made;
}

Display display = makeDisplay();

HeadlessWindow* recordOf(Window window) {
    auto* record = static_cast<HeadlessWindow*>(window);
    return record && record->tag == kWindowTag && record->alive ? record : nullptr;
}

void blankRows(HeadlessWindow& window) {
    for (auto& row : window.rows) {
        std::memset(row, ' ', kColumns);
        row[kColumns] = '\0';
    }
}

void copyText(char* target, size_t capacity, const char* text) {
    std::snprintf(target, capacity, "%s", text ? text : "");
}

intptr_t send(Window window, Msg message, uintptr_t first, intptr_t second) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return 0;
    if (message == Msg::paint) ++record->paints;
    return record->procedure(window, message, first, second);
}

void post(Window window, Msg message, uintptr_t first, intptr_t second) {
    HeadlessWindow* record = recordOf(window);
    if (!record || record->queued == kQueueSize) return;
    record->queue[record->queued++] = Posted{message, first, second};
}

void resize(Window window, int32_t width, int32_t height) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    record->width = width;
    record->height = height;
    send(window, Msg::size, 0,
         static_cast<intptr_t>(static_cast<uint32_t>(width)) |
             static_cast<intptr_t>(static_cast<uint64_t>(static_cast<uint32_t>(height)) << 32));
}

void clear() {
    display.boxCount = display.answerCount = display.answerNext = 0;
    display.stepCount = display.stepNext = display.dialogCount = 0;
    display.beeps = 0;
    display.failNextCreate = false;
}

bool registerClass(const WindowClass& windowClass) {
    if (display.className || !windowClass.name || !windowClass.procedure) return false;
    display.className = windowClass.name;
    display.classProcedure = windowClass.procedure;
    return true;
}

void unregisterClass(const char* name, Instance) {
    if (display.className && name && std::strcmp(display.className, name) == 0) {
        display.className = nullptr;
        display.classProcedure = nullptr;
    }
}

Window createWindow(const char* className, const char*, Menu menu) {
    if (display.failNextCreate) {
        display.failNextCreate = false;
        return nullptr;
    }
    if (!display.className || !className || std::strcmp(display.className, className) != 0)
        return nullptr;
    auto free = std::find_if(std::begin(display.windows), std::end(display.windows),
                             [](const HeadlessWindow& w) { return !w.alive; });
    if (free == std::end(display.windows)) return nullptr;
    HeadlessWindow& window = *free;
    window = HeadlessWindow{};
    window.tag = kWindowTag;
    window.display = &display;
    window.alive = true;
    window.procedure = display.classProcedure;
    window.menu = static_cast<const MenuResource*>(menu);
    std::fill(std::begin(window.itemEnabled), std::end(window.itemEnabled), true);
    window.width = kDefaultWidth;
    window.height = kDefaultHeight;
    blankRows(window);
    send(&window, Msg::create, 0, 0);
    resize(&window, window.width, window.height);
    return &window;
}

void destroyWindow(Window window) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    send(window, Msg::destroy, 0, 0);
    record->alive = false;
    record->queued = 0;
}

void showWindow(Window window) {
    if (HeadlessWindow* record = recordOf(window)) record->visible = true;
}

void setFocus(Window window) {
    for (HeadlessWindow& w : display.windows) w.focused = (&w == window);
}

void setUserData(Window window, void* data) {
    if (HeadlessWindow* record = recordOf(window)) record->userData = data;
}

void* userData(Window window) {
    HeadlessWindow* record = recordOf(window);
    return record ? record->userData : nullptr;
}

Menu loadMenu(Instance, const char* name) { return const_cast<MenuResource*>(findMenu(name)); }

void destroyMenu(Menu menu) {
    for (HeadlessWindow& w : display.windows)
        if (w.menu == menu) w.menu = nullptr;
}

void enableMenuItem(Window window, int position, bool enabled) {
    HeadlessWindow* record = recordOf(window);
    if (record && record->menu && position >= 0 && position < kMenuItems)
        record->itemEnabled[position] = enabled;
}

intptr_t runDialog(Instance, const char* name, Window, Procedure procedure) {
    DialogStep step{controlOk, ""};
    if (display.stepNext < display.stepCount) step = display.steps[display.stepNext++];
    const DialogResource* resource = findDialog(name);
    intptr_t result = -1;
    HeadlessDialog& dialog = display.dialog;
    dialog = HeadlessDialog{resource, procedure, 0, false, 0, ""};
    if (resource && step.button != -1) {
        procedure(&dialog, Msg::initDialog, 0, 0);
        // The text is "typed": an edit box takes no more than its limit.
        size_t typed = std::strlen(step.text);
        if (dialog.textLimit > 0) typed = std::min(typed, static_cast<size_t>(dialog.textLimit));
        typed = std::min(typed, sizeof dialog.editText - 1);
        std::memcpy(dialog.editText, step.text, typed);
        dialog.editText[typed] = '\0';
        procedure(&dialog, Msg::command, static_cast<uintptr_t>(step.button), 0);
        result = dialog.ended ? dialog.result : 0;
    }
    if (display.dialogCount < kLogSize)
        display.dialogs[display.dialogCount] = DialogRecord{name, dialog.textLimit, result};
    ++display.dialogCount;
    return result;
}

void setTextLimit(Dialog dialog, int32_t control, int32_t limit) {
    if (control == controlFileName) static_cast<HeadlessDialog*>(dialog)->textLimit = limit;
}

size_t controlText(Dialog dialog, int32_t control, char* buffer, size_t capacity) {
    if (capacity == 0) return 0;
    const char* text = control == controlFileName ? static_cast<HeadlessDialog*>(dialog)->editText : "";
    size_t length = std::min(std::strlen(text), capacity - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return length;
}

void endDialog(Dialog dialog, intptr_t result) {
    auto* record = static_cast<HeadlessDialog*>(dialog);
    record->ended = true;
    record->result = result;
}

int messageBox(Window owner, const char* text, const char* caption, uint32_t style) {
    int answer = (style & boxYesNo) == boxYesNo ? answerYes : answerOk;
    if (display.answerNext < display.answerCount) answer = display.answers[display.answerNext++];
    if (display.boxCount < kLogSize) {
        BoxRecord& box = display.boxes[display.boxCount];
        box.owner = owner;
        copyText(box.text, sizeof box.text, text);
        copyText(box.caption, sizeof box.caption, caption);
        box.style = style;
        box.answer = answer;
    }
    ++display.boxCount;
    return answer;
}

void beep() { ++display.beeps; }

TextMetrics fixedFontMetrics(Window) { return TextMetrics{kCharWidth, kFontHeight, kExternalLeading}; }

Rect clientRect(Window window) {
    HeadlessWindow* record = recordOf(window);
    return record ? Rect{0, 0, record->width, record->height} : Rect{0, 0, 0, 0};
}

void validate(Window window) {
    if (HeadlessWindow* record = recordOf(window)) record->invalid = record->eraseNeeded = false;
}

Rect beginPaint(Window window) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return Rect{0, 0, 0, 0};
    if (record->eraseNeeded) blankRows(*record);
    validate(window);
    return clientRect(window);
}

// Cells outside the grid are clipped; characters without a glyph (controls)
// show as blanks.
void drawText(Window window, int32_t x, int32_t y, const char* text, size_t length) {
    HeadlessWindow* record = recordOf(window);
    if (!record || y < 0 || y % kLineHeight != 0 || y / kLineHeight >= kRows) return;
    char* row = record->rows[y / kLineHeight];
    int64_t column = x >= 0 ? x / kCharWidth : -((-static_cast<int64_t>(x) + kCharWidth - 1) / kCharWidth);
    for (size_t i = 0; i < length; ++i, ++column) {
        if (column < 0) continue;
        if (column >= kColumns) break;
        auto c = static_cast<unsigned char>(text[i]);
        row[column] = c < 0x20 || c == 0x7F ? ' ' : static_cast<char>(c);
    }
}

void endPaint(Window) {}

void setScrollPosition(Window window, Bar bar, int32_t position) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    ScrollBar& b = record->bars[bar];
    b.position = std::clamp(position, b.minimum, std::max(b.minimum, b.maximum));
}

void setScrollRange(Window window, Bar bar, int32_t minimum, int32_t maximum) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    record->bars[bar].minimum = minimum;
    record->bars[bar].maximum = maximum;
    setScrollPosition(window, bar, record->bars[bar].position);
}

// Moves the painted cells; the uncovered ones become blank and the window
// needs painting.
void scrollWindow(Window window, int32_t dx, int32_t dy) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    int rowShift = dy / kLineHeight;
    int columnShift = dx / kCharWidth;
    static char moved[kRows][kColumns + 1];
    for (int r = 0; r < kRows; ++r) {
        std::memset(moved[r], ' ', kColumns);
        moved[r][kColumns] = '\0';
        int from = r - rowShift;
        if (from < 0 || from >= kRows) continue;
        for (int c = 0; c < kColumns; ++c) {
            int fromColumn = c - columnShift;
            if (fromColumn >= 0 && fromColumn < kColumns) moved[r][c] = record->rows[from][fromColumn];
        }
    }
    std::memcpy(record->rows, moved, sizeof moved);
    record->invalid = true;
}

void invalidate(Window window, bool erase) {
    HeadlessWindow* record = recordOf(window);
    if (!record) return;
    record->invalid = true;
    record->eraseNeeded = record->eraseNeeded || erase;
}

void update(Window window) {
    HeadlessWindow* record = recordOf(window);
    if (record && record->invalid) send(window, Msg::paint, 0, 0);
}

intptr_t sendMessage(Window window, Msg message, uintptr_t first, intptr_t second) {
    return send(window, message, first, second);
}

// Posted messages first, in order; then a paint while the window needs one,
// as a message queue hands them out. Bounded, so that a procedure that keeps
// invalidating cannot hold the printing thread.
void dispatchPending(Window window) {
    for (int round = 0; round < 4 * kQueueSize; ++round) {
        HeadlessWindow* record = recordOf(window);
        if (!record) return;
        if (record->queued > 0) {
            Posted next = record->queue[0];
            std::memmove(record->queue, record->queue + 1, sizeof(Posted) * --record->queued);
            send(window, next.message, next.first, next.second);
        } else if (record->invalid) {
            send(window, Msg::paint, 0, 0);
        } else {
            return;
        }
    }
}

intptr_t defaultProcedure(Window window, Msg message, uintptr_t, intptr_t) {
    switch (message) {
    case Msg::paint:
        beginPaint(window);
        endPaint(window);
        return 0;
    case Msg::close:
        destroyWindow(window);
        return 0;
    default:
        return 0;
    }
}

constexpr Backend kBackend{
    registerClass,  unregisterClass, createWindow,     destroyWindow,  showWindow,
    setFocus,       setUserData,     userData,         loadMenu,       destroyMenu,
    enableMenuItem, runDialog,       setTextLimit,     controlText,    endDialog,
    messageBox,     beep,            fixedFontMetrics, clientRect,     beginPaint,
    drawText,       endPaint,        setScrollRange,   setScrollPosition, scrollWindow,
    invalidate,     validate,        update,           sendMessage,    dispatchPending,
    defaultProcedure,
};

}  // namespace
}  // namespace fenk::ui::headless

namespace fenk::ui {

const Backend& headlessBackend() { return headless::kBackend; }

}  // namespace fenk::ui
