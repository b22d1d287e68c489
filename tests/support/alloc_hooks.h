// Allocation hooks for tests: they count what is outstanding and can fail
// the n-th allocation, to sweep allocation failure through a service.
#ifndef FENK_TEST_ALLOC_HOOKS_H
#define FENK_TEST_ALLOC_HOOKS_H

#include <cstddef>
#include <vector>

#include "fenkapi.h"

namespace fenk::test {

struct AllocCounter {
    long calls = 0;      // allocation attempts (including reallocations)
    long failAt = 0;     // the attempt number that fails; 0 never fails
    long live = 0;       // blocks allocated and not yet freed
    long frees = 0;
    std::vector<void*> freeOrder;  // every block freed, in order
};

// Installs hooks on the world that count through counter (the counter must
// outlive the world's use of the hooks). Uses the world's allocHook slot
// trio, so library code that allocates through the world is counted.
void installCountingHooks(KivGlobal* world, AllocCounter* counter);

}  // namespace fenk::test

#endif
