// Store-or-fetch accessors of single world settings. A null world answers 6
// where a code is returned and -1 (all bits set) where a value is returned;
// nothing is stored.
#include "api/api_slots.h"

namespace {
constexpr int32_t kNullWorld = 6;
constexpr uint32_t kNoValue = 0xFFFFFFFFu;
}  // namespace

int32_t kivCurrentRules(KivGlobal* world) { return world ? world->encodingRules : -1; }

int32_t kivStoreDecodeBufferLength(KivGlobal* world, uint32_t length) {
    if (!world) return kNullWorld;
    world->decodeBufferLength = length;
    return 0;
}

uint32_t kivFetchDecodeBufferLength(KivGlobal* world) {
    return world ? world->decodeBufferLength : kNoValue;
}

char* kivMessageText(KivGlobal* world) { return world ? world->messageText : nullptr; }

void kivStoreOutput(KivGlobal* world, FILE* stream, KivOutputRoutine routine) {
    if (!world) return;
    if (stream) world->outputStream = stream;
    if (routine) world->outputContext = routine;
}

void kivFetchOutput(KivGlobal* world, FILE** stream, KivOutputRoutine* routine) {
    if (!world) return;
    if (stream) *stream = world->outputStream;
    if (routine) *routine = world->outputContext;
}

void kivStoreOutputHook(KivGlobal* world, FILE* stream, KivOutputRoutine hook) {
    if (!world) return;
    world->privateState->outputHook = hook;
    if (stream) world->outputStream = stream;
}

void kivFetchOutputHook(KivGlobal* world, FILE** stream, KivOutputRoutine* hook) {
    if (!world) return;
    if (stream) *stream = world->outputStream;
    if (hook) *hook = world->privateState->outputHook;
}

void kivStoreOpenTypeHandlers(KivGlobal* world, KivOpenTypeRoutine copier,
                              KivOpenTypeRoutine comparer) {
    if (!world) return;
    world->privateState->openTypeCopier = copier;
    world->privateState->openTypeComparer = comparer;
}

void kivFetchOpenTypeHandlers(KivGlobal* world, KivOpenTypeRoutine* copier,
                              KivOpenTypeRoutine* comparer) {
    if (!world) return;
    if (copier) *copier = world->privateState->openTypeCopier;
    if (comparer) *comparer = world->privateState->openTypeComparer;
}

uint32_t kivFetchPrivateWord(KivGlobal* world) {
    return world ? world->privateState->privateWord0 : kNoValue;
}

int32_t kivFetchByteSetting(KivGlobal* world) {
    return world ? world->privateState->byteSetting : -1;
}

void kivStoreByteSetting(KivGlobal* world, uint8_t value) {
    if (world) world->privateState->byteSetting = value;
}

// The world must not be null for 91 and 92; a null one is tolerated (nothing
// stored, 0 fetched) rather than dereferenced.
void kivStoreShortSetting(KivGlobal* world, uint16_t value) {
    if (world) world->shortSetting = value;
}

uint16_t kivFetchShortSetting(KivGlobal* world) { return world ? world->shortSetting : 0; }

int32_t kivStoreDebugFlags(KivGlobal* world, uint32_t flags) {
    if (!world) return kNullWorld;
    world->privateState->debugFlags = flags;
    return 0;
}

uint32_t kivFetchDebugFlags(KivGlobal* world) {
    return world ? world->privateState->debugFlags : kNoValue;
}
