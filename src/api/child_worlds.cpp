// Child worlds: a copy of a world that shares its parent's settings, memory
// routines, unwinding target and coders, with working-memory and diagnostic
// positions of its own. Both records come from the parent's temporary
// memory and disappear with it.
#include <cstring>

#include "api/api_slots.h"
#include "api/table_memory.h"

namespace {

// Copies the bytes of the fields first..last (inclusive) of KivGlobal.
#define FENK_COPY_RANGE(to, from, first, last)                                             \
    std::memcpy(reinterpret_cast<char*>(to) + offsetof(KivGlobal, first),                  \
                reinterpret_cast<const char*>(from) + offsetof(KivGlobal, first),          \
                offsetof(KivGlobal, last) + sizeof(KivGlobal::last) - offsetof(KivGlobal, first))

void* takeTemp(KivGlobal* world, size_t size) {
    return KIV_TABLE_CALL(world, KivTempAllocFn, kivSlotTempAlloc)(world, size);
}

void copyPrivate(KivPrivate* child, const KivPrivate* parent) {
    child->outputHook = parent->outputHook;
    child->userBufferLength = parent->userBufferLength;
    child->userBufferAddress = parent->userBufferAddress;
    child->entryWord = parent->entryWord;
    child->entryContext = parent->entryContext;
    child->entryCount = parent->entryCount;
    child->entryTable = parent->entryTable;  // shared, not copied
    child->entryExtra = parent->entryExtra;
    child->companionSetting = parent->companionSetting;
    child->namespaceTable = parent->namespaceTable;
    std::memcpy(child->prefixStem, parent->prefixStem, sizeof child->prefixStem);
    child->namespaceEntries = parent->namespaceEntries;
    child->namespaceFlags = parent->namespaceFlags;
    child->pointerTables.count = 1;
    child->currentPointerTable = &child->pointerTables;
    child->privateListHead = &child->privateListHead;
}

// Coder flag bits that describe the generated code (bit 1: DER support) and
// so hold for the child too.
constexpr uint32_t kInheritedCoderFlags = 0x7;

void copyWorld(KivGlobal* child, const KivGlobal* parent) {
    child->allocRoutine = parent->allocRoutine;
    child->freeRoutine = parent->freeRoutine;
    child->printLimit = parent->printLimit;
    child->coderFlags = parent->coderFlags & kInheritedCoderFlags;
    child->outputStream = parent->outputStream;
    child->printRoutine = parent->printRoutine;
    FENK_COPY_RANGE(child, parent, settingsHeader, settingsBlock);
    child->controlTable = parent->controlTable;
    child->encodingRules = parent->encodingRules;
    child->encodingFlags = parent->encodingFlags;
    FENK_COPY_RANGE(child, parent, jumpBuffer, reserved1312);
    FENK_COPY_RANGE(child, parent, tempChunks, extraChunks);
    child->messageOut = parent->messageOut;
    child->errorPath = parent->errorPath;
    child->errorPduNumber = parent->errorPduNumber;
    child->errorPduInfo = parent->errorPduInfo;
    child->errorMode = parent->errorMode;
    // The reserved range before pendingBits is 32 bits wide; its companion
    // field is copied by copying the whole range.
    FENK_COPY_RANGE(child, parent, reserved2296, reserved2296);
    child->allocHook = parent->allocHook;
    child->freeHook = parent->freeHook;
    child->reallocHook = parent->reallocHook;
    child->raiseRoutine = parent->raiseRoutine;
    FENK_COPY_RANGE(child, parent, traceWindow, reserved2712);
}

}  // namespace

KivGlobal* kivMakeChildWorld(KivGlobal* parent) {
    if (!parent) return nullptr;
    auto* child = static_cast<KivGlobal*>(takeTemp(parent, sizeof(KivGlobal)));
    auto* state = static_cast<KivPrivate*>(takeTemp(parent, sizeof(KivPrivate)));
    std::memset(child, 0, sizeof *child);
    std::memset(state, 0, sizeof *state);
    child->privateState = state;
    copyPrivate(state, parent->privateState);
    copyWorld(child, parent);
    child->currentBlockTable = &child->blockTable;
    child->parentWorld = parent;
    parent->childWorld = child;
    return child;
}

KivGlobal* kivEndChildWorld(KivGlobal* child) {
    if (!child) return nullptr;
    KivGlobal* parent = child->parentWorld;
    if (!parent) return nullptr;
    parent->childWorld = nullptr;
    // Temporary memory taken inside the child stays accounted for in the
    // parent; then both child records are given back.
    FENK_COPY_RANGE(parent, child, tempChunks, extraChunks);
    auto release = KIV_TABLE_CALL(child, KivTempReleaseFn, kivSlotTempRelease);
    release(parent, child->privateState);
    release(parent, child);
    return parent;
}

// Records of a temporary chain: the third word links to the enclosing
// record, the fourth to the next inner one.
//
// Design decision: the records are released innermost first, reading each
// enclosing link before its record is given back. Releasing back to the
// outermost record first would give back the inner records too, and their
// links could then no longer be read safely; the memory returned at the end
// is the same either way (everything from the outermost record on).
void kivReleaseTempChain(KivGlobal* world, void* innermost) {
    if (!world || !innermost) return;
    auto release = KIV_TABLE_CALL(world, KivTempReleaseFn, kivSlotTempRelease);
    auto** record = static_cast<void**>(innermost);
    record[3] = nullptr;
    while (record) {
        auto** enclosing = static_cast<void**>(record[2]);
        release(world, record);
        record = enclosing;
    }
}
