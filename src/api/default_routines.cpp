// Default memory and print routines (slot 96). The three library-wide
// routines only ever change from unset to the C library's, so they need no
// lock; atomics keep concurrent first calls well defined.
#include <atomic>
#include <cstdlib>

#include "api/api_slots.h"

namespace {

std::atomic<KivPlainAlloc> libraryAlloc{nullptr};
std::atomic<KivPlainFree> libraryFree{nullptr};
std::atomic<KivPrintRoutine> libraryPrint{nullptr};

template <class T>
void setIfUnset(std::atomic<T>& slot, T value) {
    T expected = nullptr;
    slot.compare_exchange_strong(expected, value, std::memory_order_relaxed);
}

void* allocWithLibraryRoutine(size_t size) {
    return libraryAlloc.load(std::memory_order_relaxed)(size);
}

void freeWithLibraryRoutine(void* block) { libraryFree.load(std::memory_order_relaxed)(block); }

// The hooks go through the world's plain routines, so replacing a plain
// routine changes what the hooks do. An unset routine gives null / nothing.
void* allocHookOverPlain(KivGlobal* world, size_t size) {
    return world->allocRoutine ? world->allocRoutine(size) : nullptr;
}

void freeHookOverPlain(KivGlobal* world, void* block) {
    if (world->freeRoutine) world->freeRoutine(block);
}

void* reallocHookOverPlain(KivGlobal* world, void* block, size_t size) {
    return world->reallocRoutine ? world->reallocRoutine(block, size) : nullptr;
}

}  // namespace

int32_t kivInstallDefaultRoutines(KivGlobal* world) {
    if (!world) return 6;
    setIfUnset<KivPlainAlloc>(libraryAlloc, &std::malloc);
    setIfUnset<KivPlainFree>(libraryFree, &std::free);
    setIfUnset<KivPrintRoutine>(libraryPrint, &std::fprintf);
    world->allocRoutine = &allocWithLibraryRoutine;
    world->freeRoutine = &freeWithLibraryRoutine;
    world->printRoutine = libraryPrint.load(std::memory_order_relaxed);
    world->outputStream = stdout;
    world->allocHook = &allocHookOverPlain;
    world->freeHook = &freeHookOverPlain;
    world->reallocHook = &reallocHookOverPlain;
    world->printLimit = 35;
    return 0;
}
