// An allocator that stands behind every route by which the library obtains
// memory (the world's hooks, its plain routines and the private routine),
// counts what is live, and fails the k-th attempt.
#ifndef FENK_TEST_FAULT_PLAN_H
#define FENK_TEST_FAULT_PLAN_H

#include <cstddef>
#include <unordered_set>

#include "fenkapi.h"

namespace fenk::test {

struct FaultPlan {
    long failAt = 0;  // attempt that fails; 0: none
    long attempts = 0;
    long strayFrees = 0;  // frees of blocks this plan never gave out
    std::unordered_set<void*> live;

    // What install replaced, put back by uninstall.
    KivPlainAlloc savedAlloc, savedPrivateAlloc;
    KivPlainRealloc savedRealloc;
    KivPlainFree savedFree;
    KivAllocHook savedAllocHook;
    KivReallocHook savedReallocHook;
    KivFreeHook savedFreeHook;

    // Routes every allocation of the world through this plan until
    // uninstall, after which blocks the world keeps are the C library's.
    void install(KivGlobal* world);
    void uninstall(KivGlobal* world);

    void* allocate(size_t size);
    void* reallocate(void* block, size_t size);
    void release(void* block);
};

// Between these two, allocations are neither counted nor failed: a service's
// run checks its result without the check's own allocations being swept.
void pauseFaults();
void resumeFaults();

}  // namespace fenk::test

#endif
