// Saving the trace text under a name (slot 29): the temporary file is copied
// in blocks of 10000 bytes while the owner window stays responsive.
#include <cstdio>

#include "platform/ui/ui.h"
#include "tracewin/trace_store.h"
#include "tracewin/tracewin_slots.h"

namespace fenk {
namespace {

constexpr size_t kBlockSize = 10000;
constexpr size_t kBoxTextCapacity = 4200;

void showPathBox(void* owner, const char* format, const char* path, const char* caption,
                 uint32_t style) {
    char text[kBoxTextCapacity];
    std::snprintf(text, sizeof text, format, path);
    ui::backend().messageBox(owner, text, caption, style);
}

long fileLength(FILE* file) {
    if (!file || std::fseek(file, 0, SEEK_END) != 0) return 0;
    long length = std::ftell(file);
    return length > 0 ? length : 0;
}

// Copies the world's temporary file to out; false when something failed or
// the store went away meanwhile.
bool copyTrace(KivGlobal* world, void* owner, FILE* out, const char* path, char* block) {
    const ui::Backend& ui = ui::backend();
    uint32_t resets = traceResetCount();
    long remaining = fileLength(world->traceFile);
    long offset = 0;
    while (remaining > 0) {
        // The window's messages may print meanwhile, which moves the file
        // position: every block is read from its own offset.
        size_t wanted = remaining < static_cast<long>(kBlockSize) ? static_cast<size_t>(remaining) : kBlockSize;
        size_t got = 0;
        if (std::fseek(world->traceFile, offset, SEEK_SET) == 0)
            got = std::fread(block, 1, wanted, world->traceFile);
        if (got == 0) {
            showTraceError(owner, "Cannot Read Tracing Info Temporary File");
            return false;
        }
        if (std::fwrite(block, 1, got, out) != got || std::fflush(out) != 0) {
            showPathBox(owner, "Cannot Write Output File: %s", path, "Error", ui::iconStop);
            return false;
        }
        offset += static_cast<long>(got);
        remaining -= static_cast<long>(got);
        if (owner) {
            ui.invalidate(owner, false);
            ui.update(owner);
            ui.dispatchPending(owner);
        }
        if (!world->traceFile || resets != traceResetCount()) return false;
    }
    return true;
}

}  // namespace
}  // namespace fenk

extern "C" void kivSaveTrace(KivGlobal* world, void* ownerWindow, const char* path) {
    if (!world || !path) return;
    auto* block = world->allocRoutine ? static_cast<char*>(world->allocRoutine(fenk::kBlockSize)) : nullptr;
    if (!block) {
        fenk::showTraceError(ownerWindow, "Cannot Allocate Memory");
        return;
    }
    // Line feeds stay line feeds in a text file here.
    FILE* out = std::fopen(path, "w");
    if (!out) {
        fenk::showPathBox(ownerWindow, "Cannot Open Output File: %s", path, "Error", fenk::ui::iconStop);
    } else {
        if (fenk::copyTrace(world, ownerWindow, out, path, block))
            fenk::showPathBox(ownerWindow, "File %s Was Successfully Written", path, "Info",
                              fenk::ui::iconInformation);
        std::fclose(out);
    }
    world->freeRoutine(block);
}
