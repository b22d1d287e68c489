// The window-system layer: the few window, menu, dialog, message-box,
// painting and scrolling services the trace window uses. Every call goes to
// the active backend, a table of routines; the headless backend keeps
// everything in memory, the desktop backend shows real windows.
#ifndef FENK_PLATFORM_UI_UI_H
#define FENK_PLATFORM_UI_UI_H

#include <cstddef>
#include <cstdint>

namespace fenk::ui {

using Window = void*;
using Dialog = void*;
using Menu = void*;
using Instance = void*;

struct Rect {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

struct TextMetrics {
    int32_t averageCharWidth;
    int32_t height;
    int32_t externalLeading;
};

// Messages a window or dialog procedure receives. For scroll messages the
// first parameter is the scroll code and the second the thumb position (full
// width, not cut to 16 bits); for keyDown the key; for command the command id.
enum class Msg : uint32_t {
    create = 1,
    destroy,
    size,  // second parameter: client width | client height << 32
    paint,
    close,
    command,
    keyDown,
    vscroll,
    hscroll,
    move,
    activate,
    getText,
    getMinMaxInfo,
    iconEraseBackground,
    windowPosChanging,
    setCursor,
    initDialog,
    initMenu  // a menu of the window is about to drop down
};

using Procedure = intptr_t (*)(Window window, Msg message, uintptr_t first, intptr_t second);

enum ScrollCode : uintptr_t {
    scrollLineUp = 0,  // also line left
    scrollLineDown = 1,
    scrollPageUp = 2,
    scrollPageDown = 3,
    scrollThumbPosition = 4,
    scrollThumbTrack = 5,
    scrollTop = 6,
    scrollBottom = 7,
    scrollEnd = 8
};

enum Key : uintptr_t {
    keyPageUp = 0x21,
    keyPageDown = 0x22,
    keyEnd = 0x23,
    keyHome = 0x24,
    keyLeft = 0x25,
    keyUp = 0x26,
    keyRight = 0x27,
    keyDown = 0x28
};

enum Bar : int { barHorizontal = 0, barVertical = 1 };

// Message-box style bits and answers.
enum : uint32_t {
    boxOk = 0x00,
    boxYesNo = 0x04,
    iconStop = 0x10,
    iconQuestion = 0x20,
    iconInformation = 0x40
};
enum Answer : int { answerOk = 1, answerCancel = 2, answerYes = 6, answerNo = 7 };

// Resources, described as data.
struct MenuItem {
    const char* text;  // null for a separator
    int32_t command;
};
struct MenuResource {
    const char* name;
    const char* popupText;
    const MenuItem* items;
    size_t itemCount;
};

enum class ControlKind : uint8_t { staticText, centredText, edit, button, defaultButton };
struct ControlResource {
    ControlKind kind;
    const char* text;
    int32_t id;  // -1 for static texts
    int16_t x, y, width, height;
};
struct DialogResource {
    const char* name;
    const char* caption;
    const char* fontName;
    int32_t pointSize;
    int16_t x, y, width, height;
    const ControlResource* controls;
    size_t controlCount;
};

struct WindowClass {
    const char* name;
    Procedure procedure;
    int32_t windowExtraBytes;
    Instance instance;
    const char* iconName;
    const char* cursorName;     // a stock cursor
    uint32_t backgroundColour;  // 0xRRGGBB
    const char* menuName;
};

// The backend: one routine per service.
struct Backend {
    bool (*registerClass)(const WindowClass& windowClass);
    void (*unregisterClass)(const char* name, Instance instance);
    Window (*createWindow)(const char* className, const char* title, Menu menu);
    void (*destroyWindow)(Window window);
    void (*showWindow)(Window window);
    void (*setFocus)(Window window);
    void (*setUserData)(Window window, void* data);
    void* (*userData)(Window window);
    Menu (*loadMenu)(Instance instance, const char* name);
    void (*destroyMenu)(Menu menu);
    // Enables or grays an item of the window menu's first popup, by position.
    void (*enableMenuItem)(Window window, int position, bool enabled);
    // Runs a modal dialog; -1 when it cannot be created.
    intptr_t (*runDialog)(Instance instance, const char* name, Window owner, Procedure procedure);
    void (*setTextLimit)(Dialog dialog, int32_t control, int32_t limit);
    size_t (*controlText)(Dialog dialog, int32_t control, char* buffer, size_t capacity);
    void (*endDialog)(Dialog dialog, intptr_t result);
    int (*messageBox)(Window owner, const char* text, const char* caption, uint32_t style);
    void (*beep)();
    TextMetrics (*fixedFontMetrics)(Window window);
    Rect (*clientRect)(Window window);
    Rect (*beginPaint)(Window window);
    void (*drawText)(Window window, int32_t x, int32_t y, const char* text, size_t length);
    void (*endPaint)(Window window);
    void (*setScrollRange)(Window window, Bar bar, int32_t minimum, int32_t maximum);
    void (*setScrollPosition)(Window window, Bar bar, int32_t position);
    void (*scrollWindow)(Window window, int32_t dx, int32_t dy);
    void (*invalidate)(Window window, bool erase);
    void (*validate)(Window window);
    void (*update)(Window window);
    intptr_t (*sendMessage)(Window window, Msg message, uintptr_t first, intptr_t second);
    // Removes every message waiting for the window and dispatches it.
    void (*dispatchPending)(Window window);
    intptr_t (*defaultProcedure)(Window window, Msg message, uintptr_t first, intptr_t second);
};

const Backend& headlessBackend();

// The desktop backend, or null when no display can be opened. Built only
// where the desktop toolkit is available.
const Backend* desktopBackend();

// The backend in use.
const Backend& backend();

// The library's own module, found from one of its own addresses.
Instance moduleInstance();

}  // namespace fenk::ui

#endif
