// These tests look into the headless window system; the library picks the
// desktop when a display is at hand, so the display is put out of reach
// before anything runs.
#include <cstdlib>

namespace {

const bool kHeadless = [] {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    return true;
}();

}  // namespace
