#include "platform/ui/ui.h"

#include <dlfcn.h>

namespace fenk::ui {

// Only the headless backend exists so far; a desktop backend is chosen here
// when one is built in and a display is available.
const Backend& backend() { return headlessBackend(); }

Instance moduleInstance() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&moduleInstance), &info) == 0) return nullptr;
    return info.dli_fbase;
}

}  // namespace fenk::ui
