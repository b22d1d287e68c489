// Recorded allocation: every block of a value being built is recorded in the
// world's block tables, so that a failed operation can give each one back
// while a successful one simply forgets the tables.
#include <cstdlib>
#include <cstring>

#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace fenk {

namespace {

using Allocator = void* (*)(KivGlobal* world, uint64_t size);

void* fromHeap(KivGlobal* world, uint64_t size) { return heapAlloc(world, size); }

void* fromScratch(KivGlobal* world, uint64_t size) {
    return kivScratchAlloc(world, static_cast<int32_t>(size));
}

// Obtains a block with allocate and records it. A full table is first
// followed by a new one from the same allocator, so the tables and blocks
// come in exact allocation order (which the scratch stack's pop relies on).
// A null block is recorded too; the caller raises.
void* recordBlock(KivGlobal* world, uint64_t size, Allocator allocate) {
    KivBlockTable* table = currentTable(world);
    if (table->count >= KIV_BLOCK_TABLE_ENTRIES) {
        auto* next = static_cast<KivBlockTable*>(allocate(world, sizeof(KivBlockTable)));
        if (!next) raiseMemoryError(world, kMsgOutOfMemory, sizeof(KivBlockTable));
        next->count = 0;
        next->next = nullptr;
        table->next = next;
        world->currentBlockTable = next;
        table = next;
    }
    void* block = allocate(world, size);
    table->entries[table->count++] = block;
    return block;
}

void* allocRecorded(KivGlobal* world, uint64_t size) {
    if (world->poolMode) {
        if (world->poolLeft < size)
            raiseMemoryError(world, kMsgOutputBufferTooSmall, world->decodeBufferLength);
        uint8_t* block = world->poolCursor;
        world->poolCursor += size;
        world->poolLeft -= static_cast<uint32_t>(size);
        return block;
    }
    if (size == 0) return nullptr;
    world->outputBytes += static_cast<uint32_t>(size);
    void* block = recordBlock(world, size, fromHeap);
    if (!block) raiseMemoryError(world, kMsgOutOfMemory, size);
    return block;
}

}  // namespace

uint64_t recordedBlockCount(const KivGlobal* world) {
    uint64_t count = 0;
    for (const KivBlockTable* t = &world->blockTable; t; t = t->next)
        count += static_cast<uint64_t>(t->count);
    return count;
}

}  // namespace fenk

using namespace fenk;

void* kivAllocExact(KivGlobal* world, uint32_t size) { return allocRecorded(world, size); }

void* kivAllocRounded(KivGlobal* world, uint32_t size) {
    return allocRecorded(world, roundUp8(size));
}

void* kivAllocZeroed(KivGlobal* world, int32_t size) {
    void* block = kivAllocRounded(world, static_cast<uint32_t>(size));
    if (block && size > 0) std::memset(block, 0, static_cast<size_t>(size));
    return block;
}

void* kivNewOutputChunk(KivGlobal* world) {
    // A caller buffer has no further chunk; what is left of it is reported.
    if (world->poolMode) raiseMemoryError(world, kMsgOutputBufferTooSmall, world->poolLeft);
    world->outputBytes += KIV_OUTPUT_CHUNK_SIZE;
    void* chunk =
        recordBlock(world, KIV_OUTPUT_CHUNK_SIZE, hasTempBuffer(world) ? fromScratch : fromHeap);
    if (!chunk) raiseMemoryError(world, kMsgOutOfMemory, KIV_OUTPUT_CHUNK_SIZE);
    return chunk;
}

void kivDropBlockTable(KivGlobal* world) {
    KivBlockTable* table = world->blockTable.next;
    while (table) {
        KivBlockTable* next = table->next;
        heapFree(world, table);
        table = next;
    }
    world->blockTable.count = 0;
    world->blockTable.next = nullptr;
    world->outputBytes = 0;
}

void kivFreeTrackedBlocks(KivGlobal* world, KivFreeHook routine) {
    // The tables are linked oldest to newest; reversing the links lets the
    // walk go newest first in one pass. Every chained table is freed anyway.
    KivBlockTable* newest = nullptr;
    for (KivBlockTable* t = &world->blockTable; t;) {
        KivBlockTable* next = t->next;
        t->next = newest;
        newest = t;
        t = next;
    }
    for (KivBlockTable* t = newest; t;) {
        KivBlockTable* older = t->next;
        if (routine) {
            for (int i = t->count - 1; i >= 0; --i)
                if (t->entries[i]) routine(world, t->entries[i]);
            if (t != &world->blockTable) routine(world, t);
        }
        t = older;
    }
    world->blockTable.count = 0;
    world->blockTable.next = nullptr;
    world->outputBytes = 0;
    world->currentBlockTable = &world->blockTable;
}

void kivFreeBlock(KivGlobal* world, void* block) {
    if (world && world->freeHook)
        world->freeHook(world, block);
    else
        std::free(block);
}
