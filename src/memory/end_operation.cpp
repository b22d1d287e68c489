// The clean-up that ends every operation: child worlds, the deferred block,
// SET OF frames, temporary chains and the recorded blocks of a failed
// operation.
#include <cstring>

#include "api/api_slots.h"
#include "api/table_memory.h"
#include "memory/memory_slots.h"
#include "memory/working_memory.h"

using namespace fenk;

void kivReleaseChildWorlds(KivGlobal* world, uint8_t force) {
    if (!world->childWorld) return;
    KivGlobal* innermost = world->childWorld;
    while (innermost->childWorld) innermost = innermost->childWorld;
    // Temporary memory taken inside the children stays accounted for here:
    // tempChunks through extraChunks, five words.
    constexpr size_t kTempState =
        offsetof(KivGlobal, extraChunks) + sizeof(void*) - offsetof(KivGlobal, tempChunks);
    static_assert(kTempState == 40);
    std::memcpy(&world->tempChunks, &innermost->tempChunks, kTempState);
    for (KivGlobal* child = innermost; child && child != world; child = child->parentWorld) {
        heapFree(world, child->deferredBlock);
        child->deferredBlock = nullptr;
        if (!child->poolMode && (force || !hasTempBuffer(child)))
            KIV_TABLE_CALL(child, KivFreeTrackedBlocksFn, kivSlotFreeTrackedBlocks)(
                child, child->freeHook);
    }
}

void kivEndOperationMemory(KivGlobal* world) {
    kivReleaseChildWorlds(world, 0);
    if (world->deferredBlock) {
        kivReleaseThroughTable(world, world->deferredBlock);
        world->deferredBlock = nullptr;
    }
    unwindSetOfFrames(world);
    bool tempBuffer = hasTempBuffer(world);
    if (!tempBuffer) KIV_TABLE_CALL(world, KivFreeTempChainsFn, kivSlotFreeTempChains)(world);
    if (world->poolMode)
        KIV_TABLE_CALL(world, KivDropBlockTableFn, kivSlotDropBlockTable)(world);
    else if (!tempBuffer)
        KIV_TABLE_CALL(world, KivFreeTrackedBlocksFn, kivSlotFreeTrackedBlocks)(world,
                                                                                world->freeHook);
}
