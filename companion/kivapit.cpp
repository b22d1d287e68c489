// Stand-in for the companion runtime and the toolkit initialisation: the few
// services fenkapi imports, and a way to make a ready world.
#include "kivapit.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The linked-rules answer lives in the world's settings block, so that child
// worlds (which copy the block whole) inherit it. A zeroed block means the
// default: highest bit 10, null bitmap (every rule linked).
struct LinkedRulesSetting {
    uint32_t isSet;
    int32_t highestBit;
    const uint8_t* bitmap;
};
static_assert(sizeof(LinkedRulesSetting) <= sizeof(KivGlobal::settingsBlock));

constexpr int32_t kDefaultHighestBit = 10;
constexpr int kSlotTraceVPrint = 26;
constexpr int kSlotInstallDefaultRoutines = 96;

thread_local KivCompanionCall lastCall;

int64_t recordCall(int32_t ordinal, void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5,
                   int64_t a6) {
    lastCall = KivCompanionCall{ordinal, a1, {a2, a3, a4, a5, a6}};
    return ordinal;
}

// The C locale's classes: digits, printable characters (blank to tilde) and
// white space (blank, tab, line feed, vertical tab, form feed, return).
constexpr uint16_t classOf(int c) {
    uint16_t bits = 0;
    if (c >= '0' && c <= '9') bits |= KIV_CLASS_DIGIT;
    if (c >= 0x20 && c <= 0x7E) bits |= KIV_CLASS_PRINTABLE;
    if (c == ' ' || (c >= '\t' && c <= '\r')) bits |= KIV_CLASS_SPACE;
    return bits;
}

struct ClassTable {
    uint16_t bits[256];
};

constexpr ClassTable makeClassTable() {
    ClassTable table{};
    for (int c = 0; c < 256; ++c) table.bits[c] = classOf(c);
    return table;
}

constexpr ClassTable kClasses = makeClassTable();

}  // namespace

extern "C" {

const uint16_t kivCompanionCharClass[256] = {
#define ROW(i)                                                                                 \
    kClasses.bits[i], kClasses.bits[i + 1], kClasses.bits[i + 2], kClasses.bits[i + 3],       \
        kClasses.bits[i + 4], kClasses.bits[i + 5], kClasses.bits[i + 6], kClasses.bits[i + 7]
    ROW(0),   ROW(8),   ROW(16),  ROW(24),  ROW(32),  ROW(40),  ROW(48),  ROW(56),
    ROW(64),  ROW(72),  ROW(80),  ROW(88),  ROW(96),  ROW(104), ROW(112), ROW(120),
    ROW(128), ROW(136), ROW(144), ROW(152), ROW(160), ROW(168), ROW(176), ROW(184),
    ROW(192), ROW(200), ROW(208), ROW(216), ROW(224), ROW(232), ROW(240), ROW(248),
#undef ROW
};

int kivCompanionPrint(KivGlobal* world, const char* format, ...) {
    if (!world || !format) return 0;
    va_list args;
    va_start(args, format);
    int result;
    // The library's output service decides where text goes; a world without
    // a table (or a table without that slot) writes to its stream.
    KivRoutine service = world->apiTable ? world->apiTable[kSlotTraceVPrint] : nullptr;
    if (service) {
        using VPrint = int (*)(KivGlobal*, const char*, va_list);
        result = reinterpret_cast<VPrint>(service)(world, format, args);
    } else {
        result = std::vfprintf(world->outputStream ? world->outputStream : stdout, format, args);
    }
    va_end(args);
    return result;
}

void kivCompanionLinkedRules(KivGlobal* world, int32_t* highestBit, const uint8_t** bitmap) {
    LinkedRulesSetting setting{};
    if (world) std::memcpy(&setting, world->settingsBlock, sizeof setting);
    if (highestBit) *highestBit = setting.isSet ? setting.highestBit : kDefaultHighestBit;
    if (bitmap) *bitmap = setting.isSet ? setting.bitmap : nullptr;
}

void kivCompanionSetLinkedRules(KivGlobal* world, int32_t highestBit, const uint8_t* bitmap) {
    if (!world) return;
    LinkedRulesSetting setting{1, highestBit, bitmap};
    std::memcpy(world->settingsBlock, &setting, sizeof setting);
}

int64_t kivCompanionEntry143(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(143, a1, a2, a3, a4, a5, a6);
}
int64_t kivCompanionEntry144(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(144, a1, a2, a3, a4, a5, a6);
}
int64_t kivCompanionEntry145(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(145, a1, a2, a3, a4, a5, a6);
}
int64_t kivCompanionEntry146(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(146, a1, a2, a3, a4, a5, a6);
}
int64_t kivCompanionEntry148(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(148, a1, a2, a3, a4, a5, a6);
}
int64_t kivCompanionEntry149(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5, int64_t a6) {
    return recordCall(149, a1, a2, a3, a4, a5, a6);
}

KivCompanionCall kivCompanionLastCall(void) { return lastCall; }

int kivCompanionInitWorld(KivGlobal* world, void* controlTable) {
    if (!world) return 6;
    std::memset(world, 0, sizeof *world);
    auto* state = static_cast<KivPrivate*>(std::calloc(1, sizeof(KivPrivate)));
    auto* lock = static_cast<KivCriticalSection*>(std::malloc(sizeof(KivCriticalSection)));
    pthread_mutexattr_t attributes;
    bool locked = lock && pthread_mutexattr_init(&attributes) == 0;
    if (locked) {
        locked = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
                 pthread_mutex_init(&lock->mutex, &attributes) == 0;
        pthread_mutexattr_destroy(&attributes);
    }
    if (!state || !locked) {
        std::free(state);
        std::free(lock);
        return 8;
    }
    state->privateAllocRoutine = &std::malloc;
    world->privateState = state;
    world->globalLock = lock;
    world->apiTable = apiTbl;
    world->controlTable = static_cast<KivControlTable*>(controlTable);
    using Install = int32_t (*)(KivGlobal*);
    reinterpret_cast<Install>(apiTbl[kSlotInstallDefaultRoutines])(world);
    // The toolkit also gives the world a plain reallocation routine, which the
    // library's defaults leave to it.
    world->reallocRoutine = &std::realloc;
    world->defaultPrintRoutine = world->printRoutine;
    return 0;
}

void kivCompanionEndWorld(KivGlobal* world) {
    if (!world) return;
    if (world->globalLock) {
        pthread_mutex_destroy(&world->globalLock->mutex);
        std::free(world->globalLock);
        world->globalLock = nullptr;
    }
    // What the library took from privateAllocRoutine for the world: the
    // entry table and the world's copy of the namespace entries.
    if (world->privateState) {
        std::free(world->privateState->entryTable);
        std::free(world->privateState->namespaceEntries);
    }
    std::free(world->privateState);
    world->privateState = nullptr;
}

}  // extern "C"
