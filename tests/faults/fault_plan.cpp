#include "fault_plan.h"

#include <cstdlib>

namespace fenk::test {
namespace {

// The plain routines carry no world, so one plan is in force at a time.
FaultPlan* current = nullptr;
bool paused = false;

void* plainAlloc(size_t size) { return current->allocate(size); }
void* plainRealloc(void* block, size_t size) { return current->reallocate(block, size); }
void plainFree(void* block) { current->release(block); }
void* hookAlloc(KivGlobal*, size_t size) { return current->allocate(size); }
void* hookRealloc(KivGlobal*, void* block, size_t size) { return current->reallocate(block, size); }
void hookFree(KivGlobal*, void* block) { current->release(block); }

}  // namespace

void FaultPlan::install(KivGlobal* world) {
    current = this;
    savedAlloc = world->allocRoutine;
    savedRealloc = world->reallocRoutine;
    savedFree = world->freeRoutine;
    savedAllocHook = world->allocHook;
    savedReallocHook = world->reallocHook;
    savedFreeHook = world->freeHook;
    savedPrivateAlloc = world->privateState->privateAllocRoutine;
    world->allocRoutine = plainAlloc;
    world->reallocRoutine = plainRealloc;
    world->freeRoutine = plainFree;
    world->allocHook = hookAlloc;
    world->reallocHook = hookRealloc;
    world->freeHook = hookFree;
    world->privateState->privateAllocRoutine = plainAlloc;
}

void FaultPlan::uninstall(KivGlobal* world) {
    world->allocRoutine = savedAlloc;
    world->reallocRoutine = savedRealloc;
    world->freeRoutine = savedFree;
    world->allocHook = savedAllocHook;
    world->reallocHook = savedReallocHook;
    world->freeHook = savedFreeHook;
    world->privateState->privateAllocRoutine = savedPrivateAlloc;
    current = nullptr;
}

void* FaultPlan::allocate(size_t size) {
    if (!paused && ++attempts == failAt) return nullptr;
    void* block = std::malloc(size ? size : 1);
    if (block) live.insert(block);
    return block;
}

void* FaultPlan::reallocate(void* block, size_t size) {
    if (!paused && ++attempts == failAt) return nullptr;
    if (block && !live.count(block)) ++strayFrees;
    void* moved = std::realloc(block, size ? size : 1);
    if (moved) {
        live.erase(block);
        live.insert(moved);
    }
    return moved;
}

void pauseFaults() { paused = true; }
void resumeFaults() { paused = false; }

void FaultPlan::release(void* block) {
    if (!block) return;
    if (live.erase(block) == 0) {
        ++strayFrees;  // not ours: leave it alone rather than corrupt the heap
        return;
    }
    std::free(block);
}

}  // namespace fenk::test
