// Deep copy and comparison of whole PDU values by the control table's value
// routines, run as guarded operations: a raise anywhere below (an exhausted
// allocation, a user routine, a memory violation) becomes the answer, and a
// failed copy leaves no block behind.
#include "api/table_memory.h"
#include "diag/guarded_entry.h"
#include "memory/memory_slots.h"
#include "values/values_slots.h"

namespace {

constexpr uint32_t kNullArgument = 6;
constexpr uint32_t kNoValueRoutine = 25;

const KivValueRoutines* routinesOf(const KivGlobal* world) {
    return static_cast<const KivValueRoutines*>(world->privateState->valueRoutines);
}

struct CopyRequest {
    KivValueCopier copy;
    uint32_t pduNum;
    const void* source;
    void** destination;
};

// On success the blocks of the copy are the caller's: the block table is
// dropped without freeing them.
int32_t runCopy(KivGlobal* world, void* context) {
    const auto* request = static_cast<const CopyRequest*>(context);
    int32_t result = request->copy(world, request->pduNum, request->source, request->destination);
    if (!world->poolMode) KIV_TABLE_CALL(world, KivDropBlockTableFn, kivSlotDropBlockTable)(world);
    return result;
}

// A failed operation gives back every block it had recorded; a caller
// buffer has nothing to give back.
void freeRecordedBlocks(KivGlobal* world, void*) {
    if (!world->poolMode)
        KIV_TABLE_CALL(world, KivFreeTrackedBlocksFn, kivSlotFreeTrackedBlocks)(world,
                                                                                world->freeHook);
}

// The holder of a failed copy is left null: the copier may already have
// stored the top-level block there, which is now freed (or, in a caller
// buffer, not a value).
void copyFailed(KivGlobal* world, void* context) {
    freeRecordedBlocks(world, context);
    *static_cast<const CopyRequest*>(context)->destination = nullptr;
}

struct CompareRequest {
    KivValueComparator compare;
    uint32_t pduNum;
    const void* first;
    const void* second;
};

int32_t runCompare(KivGlobal* world, void* context) {
    const auto* request = static_cast<const CompareRequest*>(context);
    return request->compare(world, request->pduNum, request->first, request->second);
}

}  // namespace

void kivSetValueRoutines(KivGlobal* world, const KivValueRoutines* routines) {
    if (!world || !world->privateState) return;
    world->privateState->valueRoutines = const_cast<KivValueRoutines*>(routines);
}

// A destination holder that already points at memory names a caller buffer
// of decodeBufferLength octets: the copy is carved from it and nothing is
// recorded.
uint32_t kivCopyValue(KivGlobal* world, uint32_t pduNum, const void* source, void** destination) {
    if (!world || !source || !destination) return kNullArgument;
    const KivValueRoutines* routines = routinesOf(world);
    if (!routines || !routines->copier) return kNoValueRoutine;
    if (*destination) {
        if (world->decodeBufferLength == 0) return kNullArgument;
        world->poolMode = 1;
        world->poolCursor = static_cast<uint8_t*>(*destination);
        world->poolLeft = world->decodeBufferLength;
        *destination = nullptr;
    } else {
        world->poolMode = 0;
        world->poolLeft = 0;
    }
    CopyRequest request{routines->copier, pduNum, source, destination};
    return static_cast<uint32_t>(fenk::runGuarded(world, {&runCopy, &copyFailed, &request}));
}

// Like the copy, also in its clean-up; both values must be given.
uint32_t kivCompareValue(KivGlobal* world, uint32_t pduNum, const void* first,
                         const void* second) {
    if (!world || !first || !second) return kNullArgument;
    const KivValueRoutines* routines = routinesOf(world);
    if (!routines || !routines->comparator) return kNoValueRoutine;
    CompareRequest request{routines->comparator, pduNum, first, second};
    return static_cast<uint32_t>(
        fenk::runGuarded(world, {&runCompare, &freeRecordedBlocks, &request}));
}
