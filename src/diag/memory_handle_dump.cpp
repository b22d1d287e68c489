// Resetting and inspecting a memory handle: every fragment freed at once
// (slot 246), the handle in use (249), and a dump of its blocks and
// fragments with byte sums (250).
#include "diag/diag_slots.h"
#include "kivapit.h"

namespace {

constexpr uint64_t kHeader = sizeof(KivFragment);
constexpr uint64_t kHandleSize = 40;

KivFragment* firstFragment(KivHandleBlock* block) { return reinterpret_cast<KivFragment*>(block + 1); }

KivFragment* nextFragment(KivFragment* f) {
    return reinterpret_cast<KivFragment*>(reinterpret_cast<uint8_t*>(f + 1) + f->size);
}

// The low 32 bits of an address, as the dump shows addresses.
unsigned shortAddress(const void* p) { return static_cast<unsigned>(reinterpret_cast<uintptr_t>(p)); }

int asInt(uint64_t v) { return static_cast<int>(static_cast<uint32_t>(v)); }

struct BlockSums {
    uint64_t internal = 0, allocated = 0, free = 0;
};

enum : int32_t { kDamaged = 18 };

// Walks one block's fragments; 18 when a tag or an owner is wrong or a
// header would lie outside the block.
int32_t walkBlock(KivGlobal* world, KivHandleBlock* block, uint32_t detail, bool addresses,
                  BlockSums* sums) {
    auto* end = reinterpret_cast<uint8_t*>(block + 1) + block->size;
    KivFragment* f = firstFragment(block);
    for (int number = 1;; ++number) {
        if (reinterpret_cast<uint8_t*>(f + 1) > end || f->block != block) return kDamaged;
        sums->internal += kHeader;
        if (f->tag == KIV_FRAGMENT_LAST) {
            sums->free += f->size;
            if (detail > 3) {
                if (addresses)
                    kivCompanionPrint(world, "    Fragment #%d [0x%.8x]: status = 'last/free', length = %d\n",
                                      number, shortAddress(f + 1), asInt(f->size));
                else
                    kivCompanionPrint(world, "    Fragment #%d: status = 'last/free', length = %d\n",
                                      number, asInt(f->size));
            }
            return 0;
        }
        if (f->tag != KIV_FRAGMENT_USED && f->tag != KIV_FRAGMENT_FREE) return kDamaged;
        bool used = f->tag == KIV_FRAGMENT_USED;
        (used ? sums->allocated : sums->free) += f->size;
        if (detail > 3) {
            if (addresses)
                kivCompanionPrint(world, "    Fragment #%d [0x%.8x]: status = '%s', length = %d\n",
                                  number, shortAddress(f + 1), used ? "used" : "free", asInt(f->size));
            else
                kivCompanionPrint(world, "    Fragment #%d: status = '%s', length = %d\n", number,
                                  used ? "used" : "free", asInt(f->size));
        }
        if (f->size > static_cast<uint64_t>(end - reinterpret_cast<uint8_t*>(f + 1))) return kDamaged;
        f = nextFragment(f);
    }
}

}  // namespace

int32_t kivResetMemoryHandle(KivGlobal* world, KivMemoryHandle* handle) {
    if (!world || !handle) return 6;
    handle->hint = nullptr;
    for (KivHandleBlock* block = handle->newestBlock; block; block = block->link) {
        KivFragment* first = firstFragment(block);
        block->freeBytes = block->size - kHeader;
        first->size = block->size - kHeader;
        first->tag = KIV_FRAGMENT_LAST;
        first->block = block;
        first->previous = nullptr;
        if (!handle->hint) handle->hint = first;
    }
    return 0;
}

KivMemoryHandle* kivCurrentMemoryHandle(KivGlobal* world) {
    return world ? static_cast<KivMemoryHandle*>(world->privateState->memoryHandle) : nullptr;
}

int32_t kivDumpMemoryHandle(KivGlobal* world, KivMemoryHandle* handle, KivHandleSummary* summary,
                            uint32_t detailWord) {
    if (!world || !handle || !summary) return 6;
    summary->blockCount = handle->blockCount;
    summary->totalBytes = handle->totalBytes;
    summary->internalBytes = summary->allocatedBytes = summary->freeBytes = 0;
    uint32_t detail = detailWord & 0x0F;
    bool addresses = !(detailWord & 0x20);
    if (detail == 0) return 0;
    if (detail > 1) {
        if (addresses) kivCompanionPrint(world, "Handle: [0x%.8x]\n", shortAddress(handle));
        else kivCompanionPrint(world, "Handle:\n");
    }
    summary->internalBytes = kHandleSize;
    int number = 1;
    for (KivHandleBlock* block = handle->newestBlock; block; block = block->link, ++number) {
        if (detail > 2) {
            if (addresses)
                kivCompanionPrint(world, "  Block #%d [0x%.8x]: length = %d bytes\n", number,
                                  shortAddress(block), asInt(block->size));
            else
                kivCompanionPrint(world, "  Block #%d: length = %d bytes\n", number, asInt(block->size));
        }
        BlockSums sums;
        if (walkBlock(world, block, detail, addresses, &sums) != 0) return kDamaged;
        if (detail > 2)
            kivCompanionPrint(world, "  Block summary (bytes): %d allocated, %d free, %d used internally\n",
                              asInt(sums.allocated), asInt(sums.free), asInt(sums.internal));
        summary->internalBytes += sums.internal + kHeader;
        summary->allocatedBytes += sums.allocated;
        summary->freeBytes += sums.free;
    }
    if (detail > 1)
        kivCompanionPrint(world, "Handle summary (bytes): %d allocated, %d free, %d used internally\n",
                          asInt(summary->allocatedBytes), asInt(summary->freeBytes),
                          asInt(summary->internalBytes));
    return 0;
}
