#include "diag/guarded_entry.h"

#include <csetjmp>

#include "api/table_memory.h"
#include "diag/diag_slots.h"
#include "diag/raise.h"
#include "diag/thread_registry.h"
#include "diag/violation_trap.h"

namespace fenk {
namespace {

constexpr uint32_t kNoTrap = 0x200;
constexpr int32_t kSerializationError = 14;  // "0005S: Global data access serialization error"
constexpr int32_t kCodeSerialization = 19;
constexpr int32_t kCodeCleanUpFailed = 18;

void prepareFields(KivGlobal* world, jmp_buf* frame) {
    world->messageOut = nullptr;
    world->parentWorld = nullptr;
    world->childWorld = nullptr;
    world->jumpBuffer = frame;
    world->raiseRoutine = &kivRaise;
    world->currentBlockTable = &world->blockTable;
    const KivPrivate* state = world->privateState;
    if (state && state->userBufferLength != 0) {
        world->userBufferStart = state->userBufferAddress;
        world->userBufferEnd = state->userBufferAddress + state->userBufferLength;
    } else {
        world->userBufferStart = nullptr;
        world->userBufferEnd = nullptr;
    }
}

// The failed operation's temporary chains go back, unless they were carved
// from the application's own buffer.
void freeTemporaryChains(KivGlobal* world) {
    const KivPrivate* state = world->privateState;
    if (state && state->userBufferLength != 0) return;
    if (world->apiTable[kivSlotFreeTempChains])
        KIV_TABLE_CALL(world, KivFreeTempChainsFn, kivSlotFreeTempChains)(world);
}

}  // namespace

// The jump buffer that was in force before the operation is put back when
// it ends, so that the world never points at a frame that no longer exists.
int32_t runGuarded(KivGlobal* world, const GuardedWork& work) {
    jmp_buf frame;
    jmp_buf* const outerFrame = world->jumpBuffer;
    const bool trapped = !(world->decodingFlags & kNoTrap);
    ThreadEntry entry;
    prepareFields(world, &frame);
    volatile int unwinding = 0;
    volatile bool registered = false;
    int value = setjmp(frame);
    if (value == 0) {
        if (trapped) {
            armTrap(world);
            if (!registerThread(world, entry))
                raiseMessage(world, kSerializationError, {ArgumentForm::number, 0});
            registered = true;
        }
        int32_t result = work.run(world, work.context);
        if (trapped) {
            unregisterThread(world);
            disarmTrap();
        }
        world->jumpBuffer = outerFrame;
        return result;
    }
    if (unwinding == 0) {
        unwinding = value;
        freeTemporaryChains(world);
        if (work.afterRaise) work.afterRaise(world, work.context);
    } else {
        value = 0;  // a raise during the clean-up of the first
    }
    // An unwinding with 19 answers 19 whatever happened during the clean-up;
    // it normally means that the registration failed and left nothing to
    // unregister. But the value 19 can also come from the operation itself (a
    // silent world jumps with message index 19): the entry that lives in this
    // frame must then still leave the registry, or the trap would later find
    // this thread's world through an entry that no longer exists.
    const bool serialization = trapped && unwinding == kCodeSerialization;
    if (trapped) {
        if (registered) unregisterThread(world);
        disarmTrap();
    }
    world->jumpBuffer = outerFrame;
    if (serialization) return kCodeSerialization;
    return value == 0 ? kCodeCleanUpFailed : world->errorCode;
}

}  // namespace fenk
