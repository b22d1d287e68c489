// Memory handles: large blocks from the world's allocRoutine carved into
// fragments by first fit, with a remembered large free fragment (the hint)
// tried first. While a handle is in use, its routines are the world's hooks.
#include <cstring>

#include "api/api_slots.h"
#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace fenk {
namespace {

constexpr uint64_t kHeader = sizeof(KivFragment);
constexpr uint64_t kBlockSlack = 64;  // added to every block's payload
constexpr uint64_t kBlockExtra = 32;  // the block's own fields and spare

KivMemoryHandle* handleOf(KivGlobal* world) {
    return static_cast<KivMemoryHandle*>(world->privateState->memoryHandle);
}

KivFragment* firstFragment(KivHandleBlock* block) {
    return reinterpret_cast<KivFragment*>(block + 1);
}

KivFragment* nextFragment(KivFragment* f) {
    return reinterpret_cast<KivFragment*>(reinterpret_cast<uint8_t*>(f + 1) + f->size);
}

void* payloadOf(KivFragment* f) { return f + 1; }

bool addBlock(KivGlobal* world, KivMemoryHandle* h, uint64_t size) {
    uint64_t s = (h->blockSize > size ? h->blockSize : size) + kBlockSlack;
    auto* block = static_cast<KivHandleBlock*>(world->allocRoutine(s + kBlockExtra));
    if (!block) return false;
    block->link = h->newestBlock;
    block->size = s;
    block->freeBytes = s - kHeader;
    h->newestBlock = block;
    h->blockCount += 1;
    h->totalBytes += s + kBlockExtra;
    KivFragment* last = firstFragment(block);
    last->tag = KIV_FRAGMENT_LAST;
    last->size = s - kHeader;
    last->block = block;
    last->previous = nullptr;
    if (!h->hint || h->hint->size < last->size) h->hint = last;
    return true;
}

// Cuts size octets off the front of the free fragment f; the remainder
// (possibly of size 0) gets a header of its own and becomes the hint.
void* split(KivMemoryHandle* h, KivFragment* f, uint64_t size) {
    uint64_t need = size + kHeader;
    auto* rest = reinterpret_cast<KivFragment*>(reinterpret_cast<uint8_t*>(f + 1) + size);
    rest->previous = f;
    rest->size = f->size - need;
    rest->tag = f->tag;
    rest->block = f->block;
    if (rest->tag != KIV_FRAGMENT_LAST) nextFragment(rest)->previous = rest;
    f->tag = KIV_FRAGMENT_USED;
    f->size = size;
    f->block->freeBytes -= need;
    h->hint = rest;
    return payloadOf(f);
}

// First fit from the newest block, skipping blocks with too few free bytes.
void* firstFit(KivMemoryHandle* h, uint64_t size) {
    uint64_t need = size + kHeader;
    for (KivHandleBlock* b = h->newestBlock; b; b = b->link) {
        if (b->freeBytes < need) continue;
        for (KivFragment* f = firstFragment(b);; f = nextFragment(f)) {
            if (f->tag != KIV_FRAGMENT_USED && f->size >= need) return split(h, f, size);
            if (f->tag == KIV_FRAGMENT_LAST) break;
        }
    }
    return nullptr;
}

}  // namespace
}  // namespace fenk

using namespace fenk;

void* kivHandleAlloc(KivGlobal* world, size_t size) {
    if (!world) return nullptr;
    KivMemoryHandle* h = handleOf(world);
    if (!h) return nullptr;
    uint64_t rounded = roundUp8(size);
    uint64_t need = rounded + kHeader;
    if (!h->newestBlock && !addBlock(world, h, rounded)) return nullptr;
    KivFragment* hint = h->hint;
    if (hint && hint->tag != KIV_FRAGMENT_USED && hint->size >= need)
        return split(h, hint, rounded);
    for (;;) {
        if (void* p = firstFit(h, rounded)) return p;
        if (!addBlock(world, h, rounded)) return nullptr;
    }
}

void kivHandleFree(KivGlobal* world, void* block) {
    if (!world || !block) return;
    KivMemoryHandle* h = handleOf(world);
    auto* f = static_cast<KivFragment*>(block) - 1;
    if (f->tag != KIV_FRAGMENT_USED) return;  // already free: ignored
    KivHandleBlock* owner = f->block;
    f->tag = KIV_FRAGMENT_FREE;
    owner->freeBytes += f->size;
    // Merge with free neighbours; each absorbed header is payload again.
    KivFragment* first = f;
    if (f->previous && f->previous->tag != KIV_FRAGMENT_USED) {
        first = f->previous;
        owner->freeBytes += kHeader;
    }
    KivFragment* last = f;
    KivFragment* next = nextFragment(f);
    if (next->tag != KIV_FRAGMENT_USED) {
        last = next;
        owner->freeBytes += kHeader;
    }
    if (first != last) {
        first->tag = last->tag;
        first->size = static_cast<uint64_t>(reinterpret_cast<uint8_t*>(last) -
                                            reinterpret_cast<uint8_t*>(first)) +
                      last->size;
        if (first->tag == KIV_FRAGMENT_FREE) nextFragment(first)->previous = first;
    }
    if (h && (!h->hint || h->hint->size < first->size)) h->hint = first;
}

void* kivHandleRealloc(KivGlobal* world, void* block, size_t size) {
    void* moved = kivHandleAlloc(world, size);
    if (!moved || !block) return moved;
    // Never copy past the new fragment when shrinking.
    uint64_t old = (static_cast<KivFragment*>(block) - 1)->size;
    uint64_t room = (static_cast<KivFragment*>(moved) - 1)->size;
    std::memcpy(moved, block, old < room ? old : room);
    kivHandleFree(world, block);
    return moved;
}

int32_t kivUseMemoryHandle(KivGlobal* world, KivMemoryHandle* handle) {
    if (!world) return 6;
    KivPrivate* p = world->privateState;
    if (handle) {
        if (!p->memoryHandle) {
            p->savedAllocHook = world->allocHook;
            p->savedFreeHook = world->freeHook;
            p->savedReallocHook = world->reallocHook;
            kivStoreMemoryHooks(world, &kivHandleAlloc, &kivHandleFree, &kivHandleRealloc);
        }
    } else if (p->memoryHandle) {
        kivStoreMemoryHooks(world, p->savedAllocHook, p->savedFreeHook, p->savedReallocHook);
    }
    p->memoryHandle = handle;
    return 0;
}

KivMemoryHandle* kivCreateMemoryHandle(KivGlobal* world, uint32_t blockSize) {
    if (!world) return nullptr;
    auto* h = static_cast<KivMemoryHandle*>(world->allocRoutine(sizeof(KivMemoryHandle)));
    if (!h) return nullptr;
    std::memset(h, 0, sizeof *h);
    h->totalBytes = sizeof(KivMemoryHandle);
    h->blockSize = blockSize;
    kivUseMemoryHandle(world, h);
    return h;
}

int32_t kivDestroyMemoryHandle(KivGlobal* world, KivMemoryHandle* handle) {
    if (!world || !handle) return 6;
    if (world->privateState->memoryHandle == handle) kivUseMemoryHandle(world, nullptr);
    for (KivHandleBlock* b = handle->newestBlock; b;) {
        KivHandleBlock* older = b->link;
        world->freeRoutine(b);
        b = older;
    }
    world->freeRoutine(handle);
    return 0;
}
