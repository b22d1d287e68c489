// Scratch and temporary memory. With a temporary buffer (slot 44) one region
// serves both: scratch blocks are pushed down from its top, temporary blocks
// carved up from its bottom. Without one, scratch blocks come from the heap
// and every temporary block is a heap chunk of its own behind a header that
// keeps the marks it replaced.
#include <cstring>

#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace fenk {
namespace {

// Header in front of each heap-backed temporary block.
struct TempChunk {
    TempChunk* previous;
    uint8_t* savedEnd;    // userBufferEnd when the chunk was opened
    uint8_t* savedStart;  // userBufferStart when the chunk was opened
};
static_assert(sizeof(TempChunk) == 24);

uint8_t* blockOf(TempChunk* chunk) { return reinterpret_cast<uint8_t*>(chunk + 1); }

// Scratch blocks carry their rounded size in the word below them.
constexpr uint64_t kSizeWord = 8;

// Gives the chunk back and puts back the marks it replaced.
void dropNewestChunk(KivGlobal* world, TempChunk* chunk) {
    world->tempChunks = chunk->previous;
    world->userBufferEnd = chunk->savedEnd;
    world->userBufferStart = chunk->savedStart;
    heapFree(world, chunk);
}

// Obtains a chunk for one block of size octets (already rounded).
TempChunk* openChunk(KivGlobal* world, uint64_t size) {
    auto* chunk = static_cast<TempChunk*>(heapAlloc(world, size + sizeof(TempChunk)));
    if (!chunk) raiseMemoryError(world, kMsgOutOfMemory, size + sizeof(TempChunk));
    return chunk;
}

// The chunk is exactly full: both marks at its end.
void makeNewest(KivGlobal* world, TempChunk* chunk, uint64_t size) {
    world->tempChunks = chunk;
    world->userBufferStart = world->userBufferEnd = blockOf(chunk) + size;
}

bool within(const void* mark, const void* low, const void* high) {
    auto m = reinterpret_cast<uintptr_t>(mark);
    return m >= reinterpret_cast<uintptr_t>(low) && m <= reinterpret_cast<uintptr_t>(high);
}

}  // namespace
}  // namespace fenk

using namespace fenk;

void* kivScratchAlloc(KivGlobal* world, int32_t size) {
    if (!hasTempBuffer(world)) {
        void* block = heapAlloc(world, static_cast<uint32_t>(size));
        if (!block) raiseMemoryError(world, kMsgOutOfMemory, static_cast<uint32_t>(size));
        return block;
    }
    uint64_t rounded = roundUp8(static_cast<uint32_t>(size));
    auto top = reinterpret_cast<uintptr_t>(world->userBufferEnd);
    auto bottom = reinterpret_cast<uintptr_t>(world->userBufferStart);
    if (top < bottom || top - bottom < rounded + kSizeWord)
        raiseMemoryError(world, kMsgTempBufferTooSmall, rounded + kSizeWord);
    world->userBufferEnd -= rounded + kSizeWord;
    std::memcpy(world->userBufferEnd, &rounded, sizeof rounded);
    return world->userBufferEnd + kSizeWord;
}

void kivScratchFree(KivGlobal* world, void* block) {
    if (!hasTempBuffer(world)) {
        heapFree(world, block);
        return;
    }
    // Always the top block: scratch blocks are freed in reverse order.
    uint64_t rounded;
    std::memcpy(&rounded, world->userBufferEnd, sizeof rounded);
    world->userBufferEnd += kSizeWord + rounded;
}

void* kivTempAlloc(KivGlobal* world, uint64_t size) {
    uint64_t rounded = roundUp8(size);
    if (hasTempBuffer(world)) {
        auto top = reinterpret_cast<uintptr_t>(world->userBufferEnd);
        auto bottom = reinterpret_cast<uintptr_t>(world->userBufferStart);
        if (top < bottom || top - bottom < rounded)
            raiseMemoryError(world, kMsgTempBufferTooSmall, rounded);
        uint8_t* block = world->userBufferStart;
        world->userBufferStart += rounded;
        return block;
    }
    TempChunk* chunk = openChunk(world, rounded);
    chunk->previous = static_cast<TempChunk*>(world->tempChunks);
    chunk->savedEnd = world->userBufferEnd;
    chunk->savedStart = world->userBufferStart;
    makeNewest(world, chunk, rounded);
    return blockOf(chunk);
}

void* kivTempGrow(KivGlobal* world, void* block, uint64_t keep, uint64_t size) {
    uint64_t rounded = roundUp8(size);
    auto* bytes = static_cast<uint8_t*>(block);
    auto end = reinterpret_cast<uintptr_t>(world->userBufferEnd);
    auto at = reinterpret_cast<uintptr_t>(bytes);
    if (at <= end && end - at >= rounded) {
        world->userBufferStart = bytes + rounded;
        return block;
    }
    if (hasTempBuffer(world)) raiseMemoryError(world, kMsgTempBufferTooSmall, rounded);
    auto* old = static_cast<TempChunk*>(world->tempChunks);
    TempChunk* chunk = openChunk(world, rounded);
    std::memcpy(blockOf(chunk), bytes, keep);
    *chunk = *old;
    heapFree(world, old);
    makeNewest(world, chunk, rounded);
    return blockOf(chunk);
}

void kivTempRelease(KivGlobal* world, void* mark) {
    if (hasTempBuffer(world)) {
        if (within(mark, world->privateState->userBufferAddress, world->userBufferStart))
            world->userBufferStart = static_cast<uint8_t*>(mark);
        return;
    }
    auto* chunk = static_cast<TempChunk*>(world->tempChunks);
    if (!chunk) return;
    // The mark lies in the newest chunk.
    if (within(mark, blockOf(chunk), world->userBufferStart)) {
        if (mark == blockOf(chunk))
            dropNewestChunk(world, chunk);
        else
            world->userBufferStart = static_cast<uint8_t*>(mark);
        return;
    }
    // Free chunks from the newest on until the one holding the mark (between
    // its block and the low mark kept in the chunk opened after it).
    while (chunk) {
        TempChunk freed = *chunk;
        heapFree(world, chunk);
        chunk = freed.previous;
        world->tempChunks = chunk;
        world->userBufferEnd = freed.savedEnd;
        world->userBufferStart = freed.savedStart;
        if (chunk && within(mark, blockOf(chunk), freed.savedStart)) {
            if (mark == blockOf(chunk))
                dropNewestChunk(world, chunk);
            else
                world->userBufferStart = static_cast<uint8_t*>(mark);
            return;
        }
    }
    // A mark that no chunk holds releases all of them; the marks are then
    // those from before the oldest chunk.
}

void kivFreeTempChains(KivGlobal* world) {
    void* heads[] = {world->tempChunks, world->extraChunks};
    for (void* head : heads) {
        while (head) {
            void* previous = *static_cast<void**>(head);
            heapFree(world, head);
            head = previous;
        }
    }
    world->tempChunks = nullptr;
    world->extraChunks = nullptr;
}
