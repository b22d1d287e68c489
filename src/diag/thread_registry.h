// The thread registry: which world each thread's running guarded operation
// uses, so that the memory-violation trap can find it.
#ifndef FENK_DIAG_THREAD_REGISTRY_H
#define FENK_DIAG_THREAD_REGISTRY_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// One registration; it lives in the guarded entry's own frame.
struct ThreadEntry {
    ThreadEntry* next;
    // The link that points at this entry: the previous entry's next, or the
    // registry head itself for the first entry, so unlinking never needs to
    // know which it is.
    ThreadEntry** link;
    uint32_t processId;
    uint32_t threadId;
    KivGlobal* world;
};

// Both take the world's globalLock and fail (changing nothing) when it
// cannot be taken.
bool registerThread(KivGlobal* world, ThreadEntry& entry);
bool unregisterThread(KivGlobal* world);

// The world of the calling thread's newest registration, or null. Called
// from the trap's handler: it takes no world lock.
KivGlobal* registeredWorld();

}  // namespace fenk

#endif
