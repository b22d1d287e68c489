// The world's memory hooks, and allocation and release through them.
#include <cstring>

#include "api/api_slots.h"
#include "api/table_memory.h"

void kivStoreMemoryHooks(KivGlobal* world, KivAllocHook alloc, KivFreeHook release,
                         KivReallocHook realloc) {
    if (!world) return;
    world->allocHook = alloc;
    world->freeHook = release;
    world->reallocHook = realloc;
}

void kivFetchMemoryHooks(KivGlobal* world, KivAllocHook* alloc, KivFreeHook* release,
                         KivReallocHook* realloc) {
    if (!world) return;
    if (alloc) *alloc = world->allocHook;
    if (release) *release = world->freeHook;
    if (realloc) *realloc = world->reallocHook;
}

// Slots 242 to 244 expect a world; a null one gets null or nothing rather
// than a crash.
void* kivAllocate(KivGlobal* world, size_t size) {
    if (!world || !world->allocHook) return nullptr;
    return world->allocHook(world, size);
}

void* kivAllocateZeroed(KivGlobal* world, size_t size) {
    void* block = kivAllocate(world, size);
    if (block) std::memset(block, 0, size);
    return block;
}

void kivRelease(KivGlobal* world, void* block) {
    if (world && world->freeHook) world->freeHook(world, block);
}

// Through the table: whatever routines slot 55 reports are the ones used, so
// a replaced slot 55 (or a memory handle in the hooks) takes effect here too.
namespace fenk {

void* allocateThroughTable(KivGlobal* world, size_t size) {
    KivAllocHook alloc = nullptr;
    KIV_TABLE_CALL(world, KivFetchMemoryHooksFn, kivSlotFetchMemoryHooks)(world, &alloc, nullptr,
                                                                           nullptr);
    return alloc ? alloc(world, size) : nullptr;
}

}  // namespace fenk

void kivReleaseThroughTable(KivGlobal* world, void* block) {
    KivFreeHook release = nullptr;
    KIV_TABLE_CALL(world, KivFetchMemoryHooksFn, kivSlotFetchMemoryHooks)(world, nullptr, &release,
                                                                           nullptr);
    if (release) release(world, block);
}
