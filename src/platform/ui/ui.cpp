#include "platform/ui/ui.h"

#include <dlfcn.h>

namespace fenk::ui {

namespace {

const Backend* chooseBackend() {
#if FENK_HAVE_GTK
    if (const Backend* desktop = desktopBackend()) return desktop;
#endif
    return &headlessBackend();
}

}  // namespace

// Chosen once, at the first use of the window system: the desktop when a
// display can be opened, else the headless backend.
const Backend& backend() {
    static const Backend* const chosen = chooseBackend();
    return *chosen;
}

Instance moduleInstance() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&moduleInstance), &info) == 0) return nullptr;
    return info.dli_fbase;
}

}  // namespace fenk::ui
