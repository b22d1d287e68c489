// Working memory: recorded blocks, temporary and scratch memory, the
// pointer-table stack, memory handles, child worlds and the settings the
// world keeps a copy of.
#include <cstring>

#include "sweep.h"

namespace fenk::test {
namespace {

constexpr WorldKind P = WorldKind::plain;

Outcome memoryHandle(KivGlobal* w) {
    KivMemoryHandle* h = kivCreateMemoryHandle(w, 1024);
    if (!h) return failed(0);
    if (kivUseMemoryHandle(w, h) != 0) {
        kivDestroyMemoryHandle(w, h);
        return failed(kWrongResult);
    }
    // Enough blocks of 200 octets to need several large blocks, each filled.
    void* blocks[20];
    int got = 0;
    for (; got < 20; ++got) {
        blocks[got] = got % 2 ? kivAllocateZeroed(w, 200) : kivAllocate(w, 200);
        if (!blocks[got]) break;
        std::memset(blocks[got], got, 200);
    }
    bool intact = true;
    for (int i = 0; i < got; ++i)
        intact = intact && static_cast<uint8_t*>(blocks[i])[199] == i;
    for (int i = 0; i < got; i += 2) kivRelease(w, blocks[i]);
    kivUseMemoryHandle(w, nullptr);
    if (kivDestroyMemoryHandle(w, h) != 0 || !intact) return failed(kWrongResult);
    return got == 20 ? done() : failed(0);
}

void popPointerTables(KivGlobal* w) {
    const KivPrivate* p = w->privateState;
    while (p->currentPointerTable && p->currentPointerTable != &p->pointerTables)
        kivPopPointerTable(w);
}

const ServiceGroup group({
    {"memory", "recorded blocks (97, 98, 130)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         w->currentBlockTable = &w->blockTable;
         // 60 blocks: the world's table overflows into a chained one.
         for (int i = 0; i < 20; ++i) {
             kivAllocExact(w, 24);
             kivAllocRounded(w, 13);
             static_cast<uint8_t*>(kivAllocZeroed(w, 9))[8] = 1;
         }
         const bool counted = w->outputBytes == 20u * (24 + 16 + 16);
         kivEndOperationMemory(w);
         return counted ? done() : failed(kWrongResult);
     },
     kivEndOperationMemory, "slot 175"},
    {"memory", "temporary memory (132, 166, 133)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         auto* first = static_cast<uint8_t*>(kivTempAlloc(w, 100));
         std::memset(first, 1, 100);
         auto* second = static_cast<uint8_t*>(kivTempAlloc(w, 3000));
         std::memset(second, 2, 3000);
         auto* grown = static_cast<uint8_t*>(kivTempGrow(w, second, 3000, 9000));
         const bool kept = grown[2999] == 2 && first[99] == 1;
         kivTempRelease(w, first);
         return kept && w->tempChunks == nullptr ? done() : failed(kWrongResult);
     },
     kivFreeTempChains, "slot 106"},
    {"memory", "scratch memory (131, 168)", P, Fails::raises, 8,
     // One block: on the heap scratch blocks are the caller's own, so one
     // taken before a failing second is the caller's to give back.
     [](KivGlobal* w) {
         void* block = kivScratchAlloc(w, 5000);
         std::memset(block, 3, 5000);
         kivScratchFree(w, block);
         return done();
     }},
    {"memory", "pointer-table stack (189, 190)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         kivPushPointerTable(w);
         kivPushPointerTable(w);
         kivPopPointerTable(w);
         void** base = kivPopPointerTable(w);
         return base == w->privateState->pointerTables.entries ? done() : failed(kWrongResult);
     },
     popPointerTables, "pops what it pushed (190)"},
    {"memory", "memory handle (245, 248, 242-244, 247)", P, Fails::null, 0, memoryHandle},
    {"memory", "child world (178, 176)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         KivGlobal* child = kivMakeChildWorld(w);
         return kivEndChildWorld(child) == w ? done() : failed(kWrongResult);
     },
     kivEndOperationMemory, "slot 175"},
    {"world", "entry table copy (149)", P, Fails::answers, 8,
     [](KivGlobal* w) {
         static const uint8_t entries[3][32] = {{1}, {2}, {3}};
         int32_t code = kivStoreEntryTable(w, 0, 0, entries, 3, 0);
         if (code != 0) return failed(code);
         const bool same = std::memcmp(w->privateState->entryTable, entries, sizeof entries) == 0;
         return same ? done(1) : failed(kWrongResult);
     }},
    {"world", "namespace prefix (216)", P, Fails::answers, 8,
     [](KivGlobal* w) {
         static const KivNamespaceEntry entries[2] = {{0, "urn:a", nullptr}, {0, "urn:b", "b"}};
         static const KivXmlNameTables tables{1, 2, entries, nullptr, "ns"};
         w->privateState->namespaceTable = const_cast<KivXmlNameTables*>(&tables);
         int32_t code = kivSetNamespacePrefix(w, "urn:a", "ex");
         if (code != 0) return failed(code);
         const char* prefix = nullptr;
         kivGetNamespacePrefix(w, "urn:a", &prefix);
         return prefix && std::strcmp(prefix, "ex") == 0 ? done(1) : failed(kWrongResult);
     }},
});

}  // namespace
}  // namespace fenk::test
