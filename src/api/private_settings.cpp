// Settings of the inner record that this library only stores and returns
// (one of them with a copied table).
#include <cstring>

#include "api/api_slots.h"

int32_t kivStorePrivatePointer(KivGlobal* world, uint64_t value) {
    if (!world) return 6;
    world->privateState->privatePointer = value;
    return 0;
}

int32_t kivStorePrivateTable(KivGlobal* world, void* first, void* second, uint16_t count) {
    if (!world || (count != 0 && (!first || !second))) return 6;
    world->privateState->privateTable = first;
    world->privateState->privateTableCount = count;
    world->privateState->privateTable2 = second;
    return 0;
}

uint32_t kivFetchPrivateWord1(KivGlobal* world) {
    return world ? world->privateState->privateWord1 : 0xFFFFFFFFu;
}

int32_t kivStorePrivateWord1(KivGlobal* world, uint32_t value) {
    if (!world) return 6;
    world->privateState->privateWord1 = value;
    return 0;
}

uint32_t kivFetchPrivateWord2(KivGlobal* world) {
    return world ? world->privateState->privateWord2 : 0xFFFFFFFFu;
}

int32_t kivStorePrivateWord2(KivGlobal* world, uint32_t value) {
    if (!world) return 6;
    world->privateState->privateWord2 = value;
    return 0;
}

// The entries (32 bytes each) are copied into memory from the companion's
// privateAllocRoutine, so the caller's table need not outlive the call.
int32_t kivStoreEntryTable(KivGlobal* world, uint64_t context, uint32_t word,
                           const void* entries, uint32_t count, uint64_t extra) {
    if (!world) return 6;
    KivPrivate* p = world->privateState;
    p->entryContext = context;
    p->entryWord = word;
    p->entryExtra = extra;
    if (count == 0 || !entries) return 0;
    size_t size = size_t{count} * 32;
    void* copy = p->privateAllocRoutine ? p->privateAllocRoutine(size) : nullptr;
    p->entryTable = copy;
    if (!copy) return 8;
    std::memcpy(copy, entries, size);
    p->entryCount = count;
    return 0;
}
