#include "recording_raise.h"

#include <csetjmp>

namespace fenk::test {
namespace {

thread_local RaiseRecord* current = nullptr;

[[noreturn]] void recordAndJump(KivGlobal* world, int32_t index, uint32_t number) {
    current->index = index;
    current->number = number;
    current->count += 1;
    std::longjmp(*world->jumpBuffer, index);
}

}  // namespace

void installRecordingRaise(KivGlobal* world, RaiseRecord* record) {
    current = record;
    world->raiseRoutine = &recordAndJump;
}

}  // namespace fenk::test
