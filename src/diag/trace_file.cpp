// The trace file: while it is open it replaces the world's output stream.
// With the trace window on screen, refusals are also shown in a box.
#include <cstdio>

#include "diag/diag_slots.h"
#include "platform/ui/ui.h"

namespace {

void warn(KivGlobal* world, const char* text, uint32_t style) {
    if (world->traceWindow) fenk::ui::backend().messageBox(world->traceWindow, text, "Warning", style);
}

}  // namespace

int32_t kivOpenTraceFile(KivGlobal* world, const char* name) {
    if (!world || !name) return 6;
    if (world->savedOutputStream) {
        // The first file stays open.
        warn(world, "Sorry, Tracing File Is Already Opened", fenk::ui::boxOk);
        if (world->traceWindow) fenk::ui::backend().validate(world->traceWindow);
        return 28;
    }
    FILE* file = std::fopen(name, "w");
    if (!file) {
        warn(world, "Unable To Open a Tracing File", fenk::ui::boxOk | fenk::ui::iconStop);
        return 27;
    }
    world->savedOutputStream = world->outputStream;
    world->outputStream = file;
    return 0;
}

// Design decision: a close that fails still puts the saved stream back, so
// the world never keeps writing to a stream that may be gone.
int32_t kivCloseTraceFile(KivGlobal* world) {
    if (!world) return 6;
    if (!world->savedOutputStream) return 0;
    int failed = std::fclose(world->outputStream);
    world->outputStream = world->savedOutputStream;
    world->savedOutputStream = nullptr;
    return failed ? 46 : 0;
}
