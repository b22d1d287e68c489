// The desktop backend of the window-system layer, on GTK 3.
//
// A window is a toplevel with the menu bar, a drawing area and two scroll
// bars that the window procedure drives itself (ranges and positions in
// lines and columns). What the procedure paints goes into an off-screen
// image of the client area, which is copied to the screen whenever the
// desktop asks; scrolling moves that image. There is no event loop here:
// events are handled only inside dispatchPending (called while the library
// prints or saves) and inside modal dialogs and message boxes. While a menu
// of the window is down, dispatchPending waits for it to close, so that a
// menu choice is never lost between two printed lines.
#include <gtk/gtk.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "platform/ui/module_resources.h"
#include "platform/ui/ui.h"

namespace fenk::ui {
namespace {

constexpr const char kFontName[] = "Monospace 10";
constexpr int kWindows = 2;
constexpr int kMenuItems = 8;
constexpr int kMenus = 2;
constexpr int kDefaultColumns = 90;
constexpr int kDefaultRows = 30;
constexpr int kWheelLines = 3;
constexpr size_t kMaxDrawn = 1100;    // longest run of characters drawn at once
constexpr size_t kTextCapacity = 600;  // longest label or message text taken over
// Dialog units to pixels.
constexpr double kDialogUnitX = 2.0;
constexpr double kDialogUnitY = 2.0;
// Events handled in one go before a waiting paint is delivered.
constexpr int kEventsPerRound = 500;
constexpr int kPaintRounds = 8;

struct DesktopWindow;

struct DesktopMenu {
    bool used;
    GtkWidget* bar;
    GtkWidget* items[kMenuItems];  // by position, separators included
    int itemCount;
    DesktopWindow* owner;
};

struct ScrollRange {
    int32_t minimum;
    int32_t maximum;
};

struct DesktopWindow {
    bool alive;
    Procedure procedure;
    void* userData;
    GtkWidget* toplevel;
    GtkWidget* area;
    GtkAdjustment* adjustments[2];  // indexed by Bar
    ScrollRange ranges[2];
    DesktopMenu* menu;
    cairo_surface_t* image;  // the client area as painted
    int32_t width;
    int32_t height;
    bool invalid;
    bool eraseNeeded;
    bool drawn;  // the image changed since it was last put on screen
};

struct DesktopDialog {
    bool running;
    bool ended;
    intptr_t result;
    Procedure procedure;
    GtkWidget* entry;
};

struct WindowClassRecord {
    const char* name;
    Procedure procedure;
    uint32_t background;
};

struct Desktop {
    PangoFontDescription* font;
    TextMetrics metrics;
    WindowClassRecord windowClass;
    DesktopWindow windows[kWindows];
    DesktopMenu menus[kMenus];
    DesktopDialog dialog;
    int menusDown;  // popups of our menus on screen
};

Desktop desktop;

DesktopWindow* recordOf(Window window) {
    for (DesktopWindow& w : desktop.windows)
        if (&w == window && w.alive) return &w;
    return nullptr;
}

intptr_t deliver(DesktopWindow* window, Msg message, uintptr_t first = 0, intptr_t second = 0) {
    return window && window->alive ? window->procedure(window, message, first, second) : 0;
}

// The system's texts mark mnemonics with '&'; the toolkit uses '_'.
void toMnemonic(const char* text, char* out, size_t capacity) {
    size_t n = 0;
    for (const char* p = text ? text : ""; *p && n + 2 < capacity; ++p) {
        if (*p == '&' && p[1] == '&') {
            out[n++] = *p++;
        } else if (*p == '&') {
            out[n++] = '_';
        } else if (*p == '_') {
            out[n++] = '_';
            out[n++] = '_';
        } else {
            out[n++] = *p;
        }
    }
    out[n] = '\0';
}

// Trace text is bytes: printable ASCII stays, bytes from 0xA0 are taken as
// Latin-1, and control bytes show as blanks, as in a fixed-font cell grid.
size_t toUtf8(const char* text, size_t length, char* out) {
    size_t n = 0;
    for (size_t i = 0; i < length; ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
            out[n++] = ' ';
        } else if (c < 0x80) {
            out[n++] = static_cast<char>(c);
        } else {
            out[n++] = static_cast<char>(0xC0 | (c >> 6));
            out[n++] = static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    out[n] = '\0';
    return n;
}

void setSource(cairo_t* cr, uint32_t colour) {
    cairo_set_source_rgb(cr, ((colour >> 16) & 0xFF) / 255.0, ((colour >> 8) & 0xFF) / 255.0,
                         (colour & 0xFF) / 255.0);
}

void fillBackground(cairo_t* cr) {
    setSource(cr, desktop.windowClass.background);
    cairo_paint(cr);
}

// Lines and columns a page of the window holds, for the scroll bars' thumbs.
int32_t pageOf(const DesktopWindow& w, Bar bar) {
    int32_t cell = bar == barVertical ? desktop.metrics.height + desktop.metrics.externalLeading
                                      : desktop.metrics.averageCharWidth;
    int32_t extent = bar == barVertical ? w.height : w.width;
    return std::max(1, extent / std::max(1, cell));
}

// A range of minimum..maximum positions: the adjustment's upper end is one
// page past the maximum, so that the thumb can reach it.
void configure(DesktopWindow& w, Bar bar, double value) {
    GtkAdjustment* adjustment = w.adjustments[bar];
    const ScrollRange& range = w.ranges[bar];
    double page = pageOf(w, bar);
    double maximum = std::max(range.minimum, range.maximum);
    value = std::clamp(value, static_cast<double>(range.minimum), maximum);
    gtk_adjustment_configure(adjustment, value, range.minimum, maximum + page, 1, page, page);
}

void showNow(DesktopWindow& w) {
    GdkWindow* window = gtk_widget_get_window(w.area);
    if (!window || !w.drawn) return;
    w.drawn = false;
    // Painting is done at once, as the procedure expects when it asks for an
    // update; the frame clock would otherwise put it off to a later turn.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_window_process_updates(window, FALSE);
    G_GNUC_END_IGNORE_DEPRECATIONS
    gdk_display_flush(gdk_window_get_display(window));
}

// A new client size keeps what was painted, in the top left corner.
void resizeImage(DesktopWindow& w, int32_t width, int32_t height) {
    cairo_surface_t* image =
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, std::max(1, width), std::max(1, height));
    cairo_t* cr = cairo_create(image);
    fillBackground(cr);
    if (w.image) {
        cairo_set_source_surface(cr, w.image, 0, 0);
        cairo_paint(cr);
        cairo_surface_destroy(w.image);
    }
    cairo_destroy(cr);
    w.image = image;
    w.width = width;
    w.height = height;
}

// Signal handlers: the toolkit's events become the procedure's messages.

gboolean onDraw(GtkWidget*, cairo_t* cr, gpointer data) {
    auto* w = static_cast<DesktopWindow*>(data);
    fillBackground(cr);
    if (w->image) {
        cairo_set_source_surface(cr, w->image, 0, 0);
        cairo_paint(cr);
    }
    return TRUE;
}

void onSizeAllocate(GtkWidget*, GdkRectangle* allocation, gpointer data) {
    auto* w = static_cast<DesktopWindow*>(data);
    if (!w->alive || (allocation->width == w->width && allocation->height == w->height)) return;
    resizeImage(*w, allocation->width, allocation->height);
    configure(*w, barVertical, gtk_adjustment_get_value(w->adjustments[barVertical]));
    configure(*w, barHorizontal, gtk_adjustment_get_value(w->adjustments[barHorizontal]));
    deliver(w, Msg::size, 0,
            static_cast<intptr_t>(static_cast<uint32_t>(w->width)) |
                static_cast<intptr_t>(static_cast<uint64_t>(static_cast<uint32_t>(w->height)) << 32));
}

gboolean onDelete(GtkWidget*, GdkEvent*, gpointer data) {
    deliver(static_cast<DesktopWindow*>(data), Msg::close);
    return TRUE;  // the procedure decides whether the window goes
}

gboolean onKeyPress(GtkWidget*, GdkEventKey* event, gpointer data) {
    uintptr_t key = 0;
    switch (event->keyval) {
    case GDK_KEY_Page_Up: case GDK_KEY_KP_Page_Up: key = keyPageUp; break;
    case GDK_KEY_Page_Down: case GDK_KEY_KP_Page_Down: key = keyPageDown; break;
    case GDK_KEY_Home: case GDK_KEY_KP_Home: key = keyHome; break;
    case GDK_KEY_End: case GDK_KEY_KP_End: key = keyEnd; break;
    case GDK_KEY_Left: case GDK_KEY_KP_Left: key = keyLeft; break;
    case GDK_KEY_Right: case GDK_KEY_KP_Right: key = keyRight; break;
    case GDK_KEY_Up: case GDK_KEY_KP_Up: key = keyUp; break;
    case GDK_KEY_Down: case GDK_KEY_KP_Down: key = keyDown; break;
    default: return FALSE;  // menu mnemonics and the rest go on
    }
    deliver(static_cast<DesktopWindow*>(data), Msg::keyDown, key, 0);
    return TRUE;
}

gboolean onFocusChange(GtkWidget*, GdkEvent*, gpointer data) {
    deliver(static_cast<DesktopWindow*>(data), Msg::activate);
    return FALSE;
}

gboolean onConfigure(GtkWidget*, GdkEvent*, gpointer data) {
    deliver(static_cast<DesktopWindow*>(data), Msg::windowPosChanging);
    deliver(static_cast<DesktopWindow*>(data), Msg::move);
    return FALSE;
}

gboolean onWheel(GtkWidget*, GdkEventScroll* event, gpointer data) {
    auto* w = static_cast<DesktopWindow*>(data);
    Msg message = Msg::vscroll;
    uintptr_t code = scrollLineDown;
    switch (event->direction) {
    case GDK_SCROLL_UP: code = scrollLineUp; break;
    case GDK_SCROLL_DOWN: break;
    case GDK_SCROLL_LEFT: message = Msg::hscroll; code = scrollLineUp; break;
    case GDK_SCROLL_RIGHT: message = Msg::hscroll; break;
    default: return FALSE;
    }
    for (int i = 0; i < kWheelLines && recordOf(w); ++i) deliver(w, message, code, 0);
    return TRUE;
}

gboolean onScrollBar(GtkRange* range, GtkScrollType scroll, gdouble value, gpointer data) {
    auto* w = static_cast<DesktopWindow*>(data);
    bool vertical = gtk_range_get_adjustment(range) == w->adjustments[barVertical];
    uintptr_t code;
    switch (scroll) {
    case GTK_SCROLL_STEP_BACKWARD: case GTK_SCROLL_STEP_UP: case GTK_SCROLL_STEP_LEFT:
        code = scrollLineUp; break;
    case GTK_SCROLL_STEP_FORWARD: case GTK_SCROLL_STEP_DOWN: case GTK_SCROLL_STEP_RIGHT:
        code = scrollLineDown; break;
    case GTK_SCROLL_PAGE_BACKWARD: case GTK_SCROLL_PAGE_UP: case GTK_SCROLL_PAGE_LEFT:
        code = scrollPageUp; break;
    case GTK_SCROLL_PAGE_FORWARD: case GTK_SCROLL_PAGE_DOWN: case GTK_SCROLL_PAGE_RIGHT:
        code = scrollPageDown; break;
    case GTK_SCROLL_START: code = scrollTop; break;
    case GTK_SCROLL_END: code = scrollBottom; break;
    // A dragged thumb: the vertical view follows it, the horizontal one is
    // moved to where it is let go of, as each procedure expects.
    case GTK_SCROLL_JUMP: code = vertical ? scrollThumbTrack : scrollThumbPosition; break;
    default: return TRUE;
    }
    deliver(w, vertical ? Msg::vscroll : Msg::hscroll, code, static_cast<intptr_t>(value + 0.5));
    return TRUE;  // the procedure sets the position itself
}

void onMenuItem(GtkMenuItem* item, gpointer data) {
    auto* menu = static_cast<DesktopMenu*>(data);
    auto command = static_cast<uintptr_t>(GPOINTER_TO_INT(g_object_get_data(G_OBJECT(item), "command")));
    if (menu->owner) deliver(menu->owner, Msg::command, command, 0);
}

// A dropped-down menu takes the keyboard from its window: the window is
// told, after the paint it was waiting for, as it is told of any other
// deactivation. Printing stops while the menu is down (see
// dispatchPending), so the paint that follows finds the window idle when no
// line arrived since the last one.
void onMenuShown(GtkWidget*, gpointer data) {
    ++desktop.menusDown;
    DesktopWindow* w = static_cast<DesktopMenu*>(data)->owner;
    if (!w) return;
    if (w->invalid) deliver(w, Msg::paint);
    deliver(w, Msg::initMenu);
    deliver(w, Msg::activate);
}

void onMenuHidden(GtkWidget*, gpointer) {
    if (desktop.menusDown > 0) --desktop.menusDown;
}

// The services.

bool registerClass(const WindowClass& windowClass) {
    if (desktop.windowClass.name || !windowClass.name || !windowClass.procedure) return false;
    desktop.windowClass = WindowClassRecord{windowClass.name, windowClass.procedure,
                                            windowClass.backgroundColour};
    return true;
}

void unregisterClass(const char* name, Instance) {
    if (desktop.windowClass.name && name && std::strcmp(desktop.windowClass.name, name) == 0)
        desktop.windowClass = WindowClassRecord{};
}

Menu loadMenu(Instance, const char* name) {
    const MenuResource* resource = findMenu(name);
    if (!resource) return nullptr;
    DesktopMenu* menu = std::find_if(std::begin(desktop.menus), std::end(desktop.menus),
                                     [](const DesktopMenu& m) { return !m.used; });
    if (menu == std::end(desktop.menus)) return nullptr;
    *menu = DesktopMenu{};
    menu->used = true;
    char label[kTextCapacity];
    menu->bar = gtk_menu_bar_new();
    g_object_ref_sink(menu->bar);
    toMnemonic(resource->popupText, label, sizeof label);
    GtkWidget* top = gtk_menu_item_new_with_mnemonic(label);
    GtkWidget* popup = gtk_menu_new();
    gtk_menu_item_set_submenu(GTK_MENU_ITEM(top), popup);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu->bar), top);
    g_signal_connect(popup, "show", G_CALLBACK(onMenuShown), menu);
    g_signal_connect(popup, "hide", G_CALLBACK(onMenuHidden), menu);
    for (size_t i = 0; i < resource->itemCount && i < kMenuItems; ++i) {
        const MenuItem& item = resource->items[i];
        GtkWidget* widget;
        if (item.text) {
            toMnemonic(item.text, label, sizeof label);
            widget = gtk_menu_item_new_with_mnemonic(label);
            g_object_set_data(G_OBJECT(widget), "command", GINT_TO_POINTER(item.command));
            g_signal_connect(widget, "activate", G_CALLBACK(onMenuItem), menu);
        } else {
            widget = gtk_separator_menu_item_new();
        }
        gtk_menu_shell_append(GTK_MENU_SHELL(popup), widget);
        menu->items[menu->itemCount++] = widget;
    }
    return menu;
}

void destroyMenu(Menu handle) {
    auto* menu = static_cast<DesktopMenu*>(handle);
    if (!menu || !menu->used) return;
    if (menu->owner) menu->owner->menu = nullptr;
    gtk_widget_destroy(menu->bar);
    g_object_unref(menu->bar);
    *menu = DesktopMenu{};
}

GtkWidget* makeScrollBar(DesktopWindow& w, Bar bar) {
    w.adjustments[bar] = gtk_adjustment_new(0, 0, 1, 1, 1, 1);
    GtkWidget* widget = gtk_scrollbar_new(
        bar == barVertical ? GTK_ORIENTATION_VERTICAL : GTK_ORIENTATION_HORIZONTAL, w.adjustments[bar]);
    g_signal_connect(widget, "change-value", G_CALLBACK(onScrollBar), &w);
    return widget;
}

Window createWindow(const char* className, const char* title, Menu menuHandle) {
    if (!desktop.windowClass.name || !className || std::strcmp(desktop.windowClass.name, className) != 0)
        return nullptr;
    DesktopWindow* slot = std::find_if(std::begin(desktop.windows), std::end(desktop.windows),
                                       [](const DesktopWindow& w) { return !w.alive && !w.toplevel; });
    if (slot == std::end(desktop.windows)) return nullptr;
    DesktopWindow& w = *slot;
    w = DesktopWindow{};
    w.alive = true;
    w.procedure = desktop.windowClass.procedure;
    w.toplevel = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(w.toplevel), title ? title : "");
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_container_add(GTK_CONTAINER(w.toplevel), box);
    if (auto* menu = static_cast<DesktopMenu*>(menuHandle)) {
        menu->owner = &w;
        w.menu = menu;
        gtk_box_pack_start(GTK_BOX(box), menu->bar, FALSE, FALSE, 0);
    }
    GtkWidget* grid = gtk_grid_new();
    gtk_box_pack_start(GTK_BOX(box), grid, TRUE, TRUE, 0);
    w.area = gtk_drawing_area_new();
    gtk_widget_set_hexpand(w.area, TRUE);
    gtk_widget_set_vexpand(w.area, TRUE);
    gtk_widget_set_can_focus(w.area, TRUE);
    gtk_widget_add_events(w.area, GDK_SCROLL_MASK | GDK_BUTTON_PRESS_MASK);
    gtk_grid_attach(GTK_GRID(grid), w.area, 0, 0, 1, 1);
    gtk_grid_attach(GTK_GRID(grid), makeScrollBar(w, barVertical), 1, 0, 1, 1);
    gtk_grid_attach(GTK_GRID(grid), makeScrollBar(w, barHorizontal), 0, 1, 1, 1);

    const TextMetrics& m = desktop.metrics;
    int32_t width = kDefaultColumns * m.averageCharWidth;
    int32_t height = kDefaultRows * (m.height + m.externalLeading);
    gtk_widget_set_size_request(w.area, 20 * m.averageCharWidth, 4 * (m.height + m.externalLeading));
    gtk_window_set_default_size(GTK_WINDOW(w.toplevel), width, height);

    g_signal_connect(w.area, "draw", G_CALLBACK(onDraw), &w);
    g_signal_connect(w.area, "size-allocate", G_CALLBACK(onSizeAllocate), &w);
    g_signal_connect(w.area, "scroll-event", G_CALLBACK(onWheel), &w);
    g_signal_connect(w.toplevel, "delete-event", G_CALLBACK(onDelete), &w);
    g_signal_connect(w.toplevel, "key-press-event", G_CALLBACK(onKeyPress), &w);
    g_signal_connect(w.toplevel, "focus-in-event", G_CALLBACK(onFocusChange), &w);
    g_signal_connect(w.toplevel, "focus-out-event", G_CALLBACK(onFocusChange), &w);
    g_signal_connect(w.toplevel, "configure-event", G_CALLBACK(onConfigure), &w);

    // Created, then sized, as the procedure expects before it is shown; the
    // real size follows when the desktop has placed the window.
    resizeImage(w, width, height);
    deliver(&w, Msg::create);
    configure(w, barVertical, 0);
    configure(w, barHorizontal, 0);
    deliver(&w, Msg::size, 0,
            static_cast<intptr_t>(static_cast<uint32_t>(width)) |
                static_cast<intptr_t>(static_cast<uint64_t>(static_cast<uint32_t>(height)) << 32));
    return &w;
}

void destroyWindow(Window window) {
    DesktopWindow* w = recordOf(window);
    if (!w) return;
    deliver(w, Msg::destroy);
    w->alive = false;
    // A menu still attached goes with its window.
    if (w->menu) destroyMenu(w->menu);
    GtkWidget* toplevel = w->toplevel;
    GdkDisplay* display = gtk_widget_get_display(toplevel);
    gtk_widget_destroy(toplevel);
    if (w->image) cairo_surface_destroy(w->image);
    *w = DesktopWindow{};
    gdk_display_flush(display);
}

void showWindow(Window window) {
    DesktopWindow* w = recordOf(window);
    if (!w) return;
    gtk_widget_show_all(w->toplevel);
    gtk_window_present(GTK_WINDOW(w->toplevel));
    gdk_display_flush(gtk_widget_get_display(w->toplevel));
}

void setFocus(Window window) {
    if (DesktopWindow* w = recordOf(window)) gtk_widget_grab_focus(w->area);
}

void setUserData(Window window, void* data) {
    if (DesktopWindow* w = recordOf(window)) w->userData = data;
}

void* userData(Window window) {
    DesktopWindow* w = recordOf(window);
    return w ? w->userData : nullptr;
}

void enableMenuItem(Window window, int position, bool enabled) {
    DesktopWindow* w = recordOf(window);
    if (w && w->menu && position >= 0 && position < w->menu->itemCount)
        gtk_widget_set_sensitive(w->menu->items[position], enabled);
}

GtkWindow* ownerOf(Window owner) {
    DesktopWindow* w = recordOf(owner);
    return w ? GTK_WINDOW(w->toplevel) : nullptr;
}

void onDialogButton(GtkButton* button, gpointer) {
    auto id = static_cast<uintptr_t>(GPOINTER_TO_INT(g_object_get_data(G_OBJECT(button), "control")));
    desktop.dialog.procedure(&desktop.dialog, Msg::command, id, 0);
}

// Closing a dialog from its title bar is its Cancel.
gboolean onDialogDelete(GtkWidget*, GdkEvent*, gpointer) {
    desktop.dialog.procedure(&desktop.dialog, Msg::command, controlCancel, 0);
    return TRUE;
}

// Escape is the dialog's Cancel too.
gboolean onDialogKey(GtkWidget*, GdkEventKey* event, gpointer) {
    if (event->keyval != GDK_KEY_Escape) return FALSE;
    desktop.dialog.procedure(&desktop.dialog, Msg::command, controlCancel, 0);
    return TRUE;
}

// Controls are placed where the resource puts them, in dialog units.
GtkWidget* makeControl(const ControlResource& control, GtkWidget** edit) {
    char text[kTextCapacity];
    toMnemonic(control.text, text, sizeof text);
    GtkWidget* widget = nullptr;
    switch (control.kind) {
    case ControlKind::staticText:
    case ControlKind::centredText:
        widget = gtk_label_new_with_mnemonic(text);
        gtk_label_set_xalign(GTK_LABEL(widget), control.kind == ControlKind::centredText ? 0.5f : 0.0f);
        break;
    case ControlKind::edit:
        widget = gtk_entry_new();
        gtk_entry_set_activates_default(GTK_ENTRY(widget), TRUE);
        gtk_entry_set_width_chars(GTK_ENTRY(widget), 1);
        *edit = widget;
        break;
    case ControlKind::button:
    case ControlKind::defaultButton:
        widget = gtk_button_new_with_mnemonic(text);
        g_object_set_data(G_OBJECT(widget), "control", GINT_TO_POINTER(control.id));
        g_signal_connect(widget, "clicked", G_CALLBACK(onDialogButton), nullptr);
        gtk_widget_set_can_default(widget, TRUE);
        break;
    }
    gtk_widget_set_size_request(widget, static_cast<int>(control.width * kDialogUnitX),
                                static_cast<int>(control.height * kDialogUnitY));
    return widget;
}

intptr_t runDialog(Instance, const char* name, Window owner, Procedure procedure) {
    const DialogResource* resource = findDialog(name);
    DesktopDialog& d = desktop.dialog;
    if (!resource || d.running) return -1;
    GtkWidget* dialog = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(dialog), resource->caption);
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
    gtk_window_set_type_hint(GTK_WINDOW(dialog), GDK_WINDOW_TYPE_HINT_DIALOG);
    if (GtkWindow* parent = ownerOf(owner)) {
        gtk_window_set_transient_for(GTK_WINDOW(dialog), parent);
        gtk_window_set_position(GTK_WINDOW(dialog), GTK_WIN_POS_CENTER_ON_PARENT);
    }
    GtkWidget* fixed = gtk_fixed_new();
    gtk_widget_set_size_request(fixed, static_cast<int>(resource->width * kDialogUnitX),
                                static_cast<int>(resource->height * kDialogUnitY));
    gtk_container_add(GTK_CONTAINER(dialog), fixed);
    GtkWidget* edit = nullptr;
    GtkWidget* label = nullptr;
    GtkWidget* defaultButton = nullptr;
    for (size_t i = 0; i < resource->controlCount; ++i) {
        const ControlResource& control = resource->controls[i];
        GtkWidget* widget = makeControl(control, &edit);
        if (control.kind == ControlKind::staticText) label = widget;
        if (control.kind == ControlKind::defaultButton) defaultButton = widget;
        gtk_fixed_put(GTK_FIXED(fixed), widget, static_cast<int>(control.x * kDialogUnitX),
                      static_cast<int>(control.y * kDialogUnitY));
    }
    if (label && edit) gtk_label_set_mnemonic_widget(GTK_LABEL(label), edit);
    g_signal_connect(dialog, "delete-event", G_CALLBACK(onDialogDelete), nullptr);
    g_signal_connect(dialog, "key-press-event", G_CALLBACK(onDialogKey), nullptr);
    d = DesktopDialog{true, false, 0, procedure, edit};
    gtk_widget_show_all(dialog);
    if (defaultButton) gtk_widget_grab_default(defaultButton);
    procedure(&d, Msg::initDialog, 0, 0);
    if (edit) gtk_widget_grab_focus(edit);
    else if (defaultButton) gtk_widget_grab_focus(defaultButton);
    // Modal: the caller waits here until the dialog ends.
    while (!d.ended) gtk_main_iteration();
    gtk_widget_destroy(dialog);
    intptr_t result = d.result;
    d = DesktopDialog{};
    return result;
}

void setTextLimit(Dialog dialog, int32_t control, int32_t limit) {
    auto* d = static_cast<DesktopDialog*>(dialog);
    if (control == controlFileName && d->entry) gtk_entry_set_max_length(GTK_ENTRY(d->entry), limit);
}

size_t controlText(Dialog dialog, int32_t control, char* buffer, size_t capacity) {
    if (capacity == 0) return 0;
    auto* d = static_cast<DesktopDialog*>(dialog);
    const char* text = control == controlFileName && d->entry ? gtk_entry_get_text(GTK_ENTRY(d->entry)) : "";
    size_t length = std::min(std::strlen(text), capacity - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return length;
}

void endDialog(Dialog dialog, intptr_t result) {
    auto* d = static_cast<DesktopDialog*>(dialog);
    d->ended = true;
    d->result = result;
}

const char* iconOf(uint32_t style) {
    if (style & iconStop) return "dialog-error";
    if (style & iconQuestion) return "dialog-question";
    if (style & iconInformation) return "dialog-information";
    return nullptr;
}

// A message box closed from its title bar answers No to a question (the
// window stays) and Ok otherwise.
int messageBox(Window owner, const char* text, const char* caption, uint32_t style) {
    bool yesNo = (style & boxYesNo) == boxYesNo;
    GtkWidget* dialog = gtk_dialog_new();
    gtk_window_set_title(GTK_WINDOW(dialog), caption ? caption : "");
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
    if (GtkWindow* parent = ownerOf(owner)) {
        gtk_window_set_transient_for(GTK_WINDOW(dialog), parent);
        gtk_window_set_position(GTK_WINDOW(dialog), GTK_WIN_POS_CENTER_ON_PARENT);
    }
    GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    gtk_container_set_border_width(GTK_CONTAINER(row), 12);
    if (const char* icon = iconOf(style))
        gtk_box_pack_start(GTK_BOX(row), gtk_image_new_from_icon_name(icon, GTK_ICON_SIZE_DIALOG), FALSE,
                           FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), gtk_label_new(text ? text : ""), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), row, TRUE, TRUE, 0);
    if (yesNo) {
        gtk_dialog_add_button(GTK_DIALOG(dialog), "_Yes", GTK_RESPONSE_YES);
        gtk_dialog_add_button(GTK_DIALOG(dialog), "_No", GTK_RESPONSE_NO);
        gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_YES);
    } else {
        gtk_dialog_add_button(GTK_DIALOG(dialog), "_OK", GTK_RESPONSE_OK);
        gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    }
    gtk_widget_show_all(dialog);
    int response = gtk_dialog_run(GTK_DIALOG(dialog));
    gtk_widget_destroy(dialog);
    if (response == GTK_RESPONSE_YES) return answerYes;
    if (response == GTK_RESPONSE_NO) return answerNo;
    return yesNo ? answerNo : answerOk;
}

void beep() {
    if (GdkDisplay* display = gdk_display_get_default()) gdk_display_beep(display);
}

TextMetrics fixedFontMetrics(Window) { return desktop.metrics; }

Rect clientRect(Window window) {
    DesktopWindow* w = recordOf(window);
    return w ? Rect{0, 0, w->width, w->height} : Rect{0, 0, 0, 0};
}

void validate(Window window) {
    if (DesktopWindow* w = recordOf(window)) w->invalid = w->eraseNeeded = false;
}

Rect beginPaint(Window window) {
    DesktopWindow* w = recordOf(window);
    if (!w) return Rect{0, 0, 0, 0};
    if (w->eraseNeeded) {
        cairo_t* cr = cairo_create(w->image);
        fillBackground(cr);
        cairo_destroy(cr);
        gtk_widget_queue_draw(w->area);
        w->drawn = true;
    }
    validate(window);
    return clientRect(window);
}

// Text is drawn in its cells on the background colour, like a fixed-font
// text output that paints its own background.
void drawText(Window window, int32_t x, int32_t y, const char* text, size_t length) {
    DesktopWindow* w = recordOf(window);
    if (!w || !text) return;
    char utf8[2 * kMaxDrawn + 1];
    toUtf8(text, std::min(length, kMaxDrawn), utf8);
    cairo_t* cr = cairo_create(w->image);
    PangoLayout* layout = pango_cairo_create_layout(cr);
    pango_layout_set_font_description(layout, desktop.font);
    pango_layout_set_text(layout, utf8, -1);
    int width = 0;
    int height = 0;
    pango_layout_get_pixel_size(layout, &width, &height);
    height = std::max(height, desktop.metrics.height + desktop.metrics.externalLeading);
    cairo_rectangle(cr, x, y, width, height);
    setSource(cr, desktop.windowClass.background);
    cairo_fill(cr);
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_move_to(cr, x, y);
    pango_cairo_show_layout(cr, layout);
    g_object_unref(layout);
    cairo_destroy(cr);
    int left = std::max(0, x);
    int right = std::min(w->width, x + width);
    if (right > left) {
        gtk_widget_queue_draw_area(w->area, left, y, right - left, height);
        w->drawn = true;
    }
}

void endPaint(Window window) {
    if (DesktopWindow* w = recordOf(window)) showNow(*w);
}

void setScrollRange(Window window, Bar bar, int32_t minimum, int32_t maximum) {
    DesktopWindow* w = recordOf(window);
    if (!w) return;
    w->ranges[bar] = ScrollRange{minimum, maximum};
    configure(*w, bar, gtk_adjustment_get_value(w->adjustments[bar]));
}

void setScrollPosition(Window window, Bar bar, int32_t position) {
    if (DesktopWindow* w = recordOf(window)) configure(*w, bar, position);
}

// Moves the painted image; what comes into view is blank until painted.
void scrollWindow(Window window, int32_t dx, int32_t dy) {
    DesktopWindow* w = recordOf(window);
    if (!w) return;
    cairo_surface_t* moved = cairo_image_surface_create(CAIRO_FORMAT_RGB24, std::max(1, w->width),
                                                        std::max(1, w->height));
    cairo_t* cr = cairo_create(moved);
    fillBackground(cr);
    cairo_set_source_surface(cr, w->image, dx, dy);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(w->image);
    w->image = moved;
    w->invalid = true;
    w->drawn = true;
    gtk_widget_queue_draw(w->area);
}

void invalidate(Window window, bool erase) {
    DesktopWindow* w = recordOf(window);
    if (!w) return;
    w->invalid = true;
    w->eraseNeeded = w->eraseNeeded || erase;
}

void update(Window window) {
    DesktopWindow* w = recordOf(window);
    if (w && w->invalid) deliver(w, Msg::paint);
}

intptr_t sendMessage(Window window, Msg message, uintptr_t first, intptr_t second) {
    return deliver(recordOf(window), message, first, second);
}

// Handles the desktop's waiting events, then delivers a paint while the
// window needs one, as a message queue hands them out. Bounded, so that a
// procedure that keeps invalidating cannot hold the printing thread. While
// a menu is down it waits for the menu to close, painting whatever needs it
// meanwhile, as a modal menu loop does.
void dispatchPending(Window window) {
    for (int round = 0; round < kPaintRounds; ++round) {
        for (int n = 0; n < kEventsPerRound; ++n) {
            bool menuDown = desktop.menusDown > 0;
            if (!menuDown && !gtk_events_pending()) break;
            gtk_main_iteration_do(menuDown ? TRUE : FALSE);
            if (menuDown) {
                n = 0;
                if (DesktopWindow* w = recordOf(window); w && w->invalid) deliver(w, Msg::paint);
            }
        }
        DesktopWindow* w = recordOf(window);
        if (!w) return;
        if (!w->invalid) {
            showNow(*w);
            return;
        }
        deliver(w, Msg::paint);
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

// Measured once: every cell of the fixed font has this width.
TextMetrics measureFont() {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1, 1);
    cairo_t* cr = cairo_create(surface);
    PangoLayout* layout = pango_cairo_create_layout(cr);
    pango_layout_set_font_description(layout, desktop.font);
    pango_layout_set_text(layout, "MMMMMMMMMMMMMMMMMMMM", -1);
    int width = 0;
    int height = 0;
    pango_layout_get_pixel_size(layout, &width, &height);
    g_object_unref(layout);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
    return TextMetrics{std::max(1, (width + 10) / 20), std::max(1, height), 1};
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

// The toolkit must not change the process's locale: number formatting of
// the library and the application depends on it.
const Backend* desktopBackend() {
    const char* x11 = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if ((!x11 || !*x11) && (!wayland || !*wayland)) return nullptr;
    gtk_disable_setlocale();
    if (!gtk_init_check(nullptr, nullptr)) return nullptr;
    desktop.font = pango_font_description_from_string(kFontName);
    desktop.metrics = measureFont();
    return &kBackend;
}

}  // namespace fenk::ui
