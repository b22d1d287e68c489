// Raising from working memory: through the raise routine that the operation
// entry installed in the world.
#include <cstdlib>

#include "api/table_memory.h"
#include "diag/diag_slots.h"
#include "memory/working_memory.h"

namespace fenk {

void raiseMemoryError(KivGlobal* world, int32_t index, uint64_t number) {
    // Sizes above 32 bits are reported in their low 32 bits, the width of
    // the raise routine's number.
    auto narrow = static_cast<uint32_t>(number);
    if (world->raiseRoutine) world->raiseRoutine(world, index, narrow);
    // A world outside any operation entry has no raise routine yet: raise
    // through the table's own.
    KivRoutine raise = world->apiTable ? world->apiTable[kivSlotRaise] : nullptr;
    if (raise) reinterpret_cast<KivRaiseFn*>(raise)(world, index, narrow);
    std::abort();  // a raise never returns
}

}  // namespace fenk
