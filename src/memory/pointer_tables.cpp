// The pointer-table stack: 52-entry tables kept in the world's inner record,
// the bottom one embedded there, further ones pushed from the heap.
#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace {

KivBlockTable* currentPointerTable(KivGlobal* world) {
    KivPrivate* p = world->privateState;
    if (!p->currentPointerTable) p->currentPointerTable = &p->pointerTables;
    return p->currentPointerTable;
}

}  // namespace

void** kivPushPointerTable(KivGlobal* world) {
    auto* table = static_cast<KivBlockTable*>(fenk::heapAlloc(world, sizeof(KivBlockTable)));
    if (!table) fenk::raiseMemoryError(world, fenk::kMsgOutOfMemory, sizeof(KivBlockTable));
    // The count is left to the caller (slot 188).
    table->next = currentPointerTable(world);
    world->privateState->currentPointerTable = table;
    return table->entries;
}

void** kivPopPointerTable(KivGlobal* world) {
    KivBlockTable* popped = currentPointerTable(world);
    world->privateState->currentPointerTable = popped->next;
    fenk::heapFree(world, popped);
    return world->privateState->currentPointerTable->entries;
}

void** kivCurrentPointerTable(KivGlobal* world, uint32_t* count) {
    KivBlockTable* table = currentPointerTable(world);
    *count = static_cast<uint32_t>(static_cast<int32_t>(table->count));
    return table->entries;
}

void kivSetPointerTableCount(KivGlobal* world, uint16_t count) {
    currentPointerTable(world)->count = static_cast<int16_t>(count);
}
