// The headless backend of the window-system layer: windows live in memory,
// painted text is kept as rows of characters, message boxes are recorded and
// answered from a script, dialogs are filled in and closed from a script.
//
// The records below are plain data reached through a window handle: a
// handle of this backend points at a HeadlessWindow, whose display holds the
// logs, the scripts and routines to send, post and resize. Programs that
// drive the library (its tests, a batch tool) can thus steer the window
// without the library exporting anything.
#ifndef FENK_PLATFORM_UI_HEADLESS_H
#define FENK_PLATFORM_UI_HEADLESS_H

#include <cstddef>
#include <cstdint>

#include "platform/ui/ui.h"

namespace fenk::ui::headless {

constexpr uint32_t kWindowTag = 0x574e4448;  // marks a HeadlessWindow
constexpr int32_t kCharWidth = 8;
constexpr int32_t kFontHeight = 14;
constexpr int32_t kExternalLeading = 2;
constexpr int32_t kLineHeight = kFontHeight + kExternalLeading;
constexpr int32_t kDefaultWidth = 80 * kCharWidth;
constexpr int32_t kDefaultHeight = 25 * kLineHeight;
constexpr int kRows = 64;
constexpr int kColumns = 200;
constexpr int kMenuItems = 8;
constexpr int kQueueSize = 32;
constexpr int kLogSize = 32;
constexpr int kScriptSize = 16;
constexpr int kWindows = 2;

struct Display;

struct ScrollBar {
    int32_t minimum;
    int32_t maximum;
    int32_t position;
};

struct Posted {
    Msg message;
    uintptr_t first;
    intptr_t second;
};

struct HeadlessWindow {
    uint32_t tag;
    Display* display;
    bool alive;
    bool visible;
    bool focused;
    bool invalid;
    bool eraseNeeded;
    Procedure procedure;
    void* userData;
    const MenuResource* menu;
    bool itemEnabled[kMenuItems];
    int32_t width;
    int32_t height;
    ScrollBar bars[2];  // indexed by Bar
    uint32_t paints;    // paint messages delivered
    Posted queue[kQueueSize];
    int queued;
    // The painted text: cell (row, column) is at y = row * kLineHeight,
    // x = column * kCharWidth; unpainted cells are blanks.
    char rows[kRows][kColumns + 1];
};

struct BoxRecord {
    Window owner;
    char text[512];
    char caption[64];
    uint32_t style;
    int answer;
};

// What the next dialog does: press button 1 (Ok) or 2 (Cancel) after
// typing text into its edit box, or fail to be created (-1).
struct DialogStep {
    intptr_t button;
    char text[400];
};

struct DialogRecord {
    const char* name;
    int32_t textLimit;
    intptr_t result;
};

struct HeadlessDialog {
    const DialogResource* resource;
    Procedure procedure;
    int32_t textLimit;
    bool ended;
    intptr_t result;
    char editText[400];
};

struct Display {
    // Controls: deliver a message now, queue one for the next dispatch of
    // waiting messages, give the window a new client size (a size message),
    // and forget every log and script.
    intptr_t (*send)(Window window, Msg message, uintptr_t first, intptr_t second);
    void (*post)(Window window, Msg message, uintptr_t first, intptr_t second);
    void (*resize)(Window window, int32_t width, int32_t height);
    void (*clear)();

    // Message boxes shown (the first kLogSize are kept; boxCount counts all)
    // and the answers to give, in order; past the script Yes/No boxes are
    // answered Yes and the others Ok.
    BoxRecord boxes[kLogSize];
    int boxCount;
    int answers[kScriptSize];
    int answerCount;
    int answerNext;

    DialogStep steps[kScriptSize];
    int stepCount;
    int stepNext;
    DialogRecord dialogs[kLogSize];
    int dialogCount;

    uint32_t beeps;
    bool failNextCreate;

    const char* className;
    Procedure classProcedure;
    HeadlessWindow windows[kWindows];
    HeadlessDialog dialog;
};

// The display behind a handle of this backend; null for any other handle.
inline Display* displayOf(Window window) {
    auto* record = static_cast<HeadlessWindow*>(window);
    return record && record->tag == kWindowTag ? record->display : nullptr;
}

}  // namespace fenk::ui::headless

#endif
