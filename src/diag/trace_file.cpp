// The trace file: while it is open it replaces the world's output stream.
#include <cstdio>

#include "diag/diag_slots.h"

int32_t kivOpenTraceFile(KivGlobal* world, const char* name) {
    if (!world || !name) return 6;
    if (world->savedOutputStream) return 28;  // the first file stays open
    FILE* file = std::fopen(name, "w");
    if (!file) return 27;
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
