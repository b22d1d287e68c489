// Raising: compose the numbered message with its error context in the
// outermost world and unwind to that world's jump buffer. A raise never
// returns; slot 231 runs the same steps and returns instead of unwinding.
#include "diag/raise.h"

#include <csetjmp>
#include <cstdlib>

#include "api/table_memory.h"
#include "diag/diag_slots.h"

namespace fenk {
namespace {

constexpr int32_t kSilentMode = 6;
constexpr uint32_t kDebugShowErrors = 0x40;

KivGlobal* outermost(KivGlobal* world) {
    while (world->parentWorld) world = world->parentWorld;
    return world;
}

[[noreturn]] void unwind(KivGlobal* world, int value) {
    // Nothing to unwind to: there is no running operation to return a code.
    if (!world->jumpBuffer) std::abort();
    std::longjmp(*world->jumpBuffer, value);
}

// Composes the text and tells the hooks whose slots are filled. Answers
// false when the world is silent and nothing was composed.
bool report(KivGlobal* world, int32_t index, RaiseArgument argument) {
    if (world->errorMode == kSilentMode) return false;
    composeErrorContext(world, index, argument);
    const KivPrivate* state = world->privateState;
    if (!state || !(state->debugFlags & kDebugShowErrors) || !world->messageOut) return true;
    // The result hooks get the message index as their error indicator.
    if (world->messageOut[0] != 'E') {
        if (world->apiTable[kivSlotTraceDecoderResult])
            KIV_TABLE_CALL(world, KivTraceDecoderResultFn, kivSlotTraceDecoderResult)(world, index, 0,
                                                                                     nullptr);
    } else if (world->apiTable[kivSlotTraceEncoderResult]) {
        KIV_TABLE_CALL(world, KivTraceEncoderResultFn, kivSlotTraceEncoderResult)(world, index,
                                                                                 nullptr, 0);
    }
    return true;
}

}  // namespace

void raiseMessage(KivGlobal* world, int32_t index, RaiseArgument argument) {
    world = outermost(world);
    // A silent world expects the message index, not a return code.
    if (!report(world, index, argument)) unwind(world, index);
    unwind(world, world->errorCode);
}

}  // namespace fenk

void kivRaise(KivGlobal* world, int32_t index, uint32_t number) {
    fenk::raiseMessage(world, index, {fenk::ArgumentForm::number, number});
}

void kivRaiseWide(KivGlobal* world, int32_t index, uint64_t number) {
    fenk::raiseMessage(world, index, {fenk::ArgumentForm::wide, number});
}

void kivRaiseText(KivGlobal* world, int32_t index, const char* text) {
    fenk::raiseMessage(world, index,
                       {fenk::ArgumentForm::text, reinterpret_cast<uintptr_t>(text)});
}

// Records the message like a raise but returns. A silent world composes
// nothing here either, and since this slot always returns, it simply
// returns.
void kivRecordMessage(KivGlobal* world, int32_t index, uint32_t number) {
    if (!world) return;
    fenk::report(fenk::outermost(world), index, {fenk::ArgumentForm::number, number});
}
