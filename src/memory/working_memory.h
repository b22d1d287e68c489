// Helpers shared by the working-memory routines.
#ifndef FENK_MEMORY_WORKING_MEMORY_H
#define FENK_MEMORY_WORKING_MEMORY_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// Message indices raised by working memory.
constexpr int32_t kMsgOutputBufferTooSmall = 1;  // code 1
constexpr int32_t kMsgOutOfMemory = 7;           // code 8
constexpr int32_t kMsgTempBufferTooSmall = 146;  // code 8

constexpr uint64_t roundUp8(uint64_t size) { return (size + 7) & ~uint64_t{7}; }

// Raises through the world's raise routine; never returns.
[[noreturn]] void raiseMemoryError(KivGlobal* world, int32_t index, uint64_t number);

// True when the application configured a temporary buffer (slot 44): then
// scratch and temporary memory come from it instead of the heap.
inline bool hasTempBuffer(const KivGlobal* world) {
    return world->privateState && world->privateState->userBufferLength != 0;
}

inline void* heapAlloc(KivGlobal* world, uint64_t size) {
    return world->allocHook ? world->allocHook(world, size) : nullptr;
}

inline void heapFree(KivGlobal* world, void* block) {
    if (block && world->freeHook) world->freeHook(world, block);
}

// The table receiving the next record. A world that no operation entry has
// prepared yet records into its first table.
inline KivBlockTable* currentTable(KivGlobal* world) {
    if (!world->currentBlockTable) world->currentBlockTable = &world->blockTable;
    return world->currentBlockTable;
}

// Number of blocks recorded in the world's block tables.
uint64_t recordedBlockCount(const KivGlobal* world);

// Pops every SET OF frame after a failed operation.
void unwindSetOfFrames(KivGlobal* world);

}  // namespace fenk

#endif
