// Output chunks: encoders write into 1024-octet chunks recorded in the block
// table, and the chunks are joined into one encoding once at the end, in
// writing order (forward writers) or reversed (backward writers, which fill
// each chunk from its end).
#include <cstring>

#include "api/table_memory.h"
#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace fenk {
namespace {

constexpr uint32_t kChunk = KIV_OUTPUT_CHUNK_SIZE;

// Gives back the chunks just joined, and resets the table. Chunks from the
// scratch stack are popped in reverse order, which is the order the block
// records are freed in.
void giveBackChunks(KivGlobal* world) {
    KivFreeHook routine = hasTempBuffer(world) ? &kivScratchFree : world->freeHook;
    KIV_TABLE_CALL(world, KivFreeTrackedBlocksFn, kivSlotFreeTrackedBlocks)(world, routine);
}

uint8_t* obtainEncoding(KivGlobal* world, uint64_t length) {
    auto* encoding = static_cast<uint8_t*>(heapAlloc(world, length));
    if (!encoding) raiseMemoryError(world, kMsgOutOfMemory, length);
    return encoding;
}

// Keeps the top pendingBits bits of the last, partly written octet, and
// counts that octet as used.
void closePartialOctet(KivGlobal* world) {
    if (world->pendingBits == 0) return;
    *world->poolCursor &= static_cast<uint8_t>(0xFF00u >> world->pendingBits);
    world->poolLeft -= 1;
}

}  // namespace
}  // namespace fenk

using namespace fenk;

void kivJoinBackwardOutput(KivGlobal* world, int32_t freeOctets, uint32_t* length,
                           uint8_t** encoding) {
    uint64_t chunks = recordedBlockCount(world);
    uint64_t total = chunks ? chunks * kChunk - static_cast<uint64_t>(freeOctets) : 0;
    *length = static_cast<uint32_t>(total);
    if (total) {
        uint8_t* out = obtainEncoding(world, total);
        *encoding = out;
        // The first chunk ends the encoding; each later one goes below it.
        uint8_t* at = out + total;
        uint64_t remaining = chunks;
        for (KivBlockTable* t = &world->blockTable; t; t = t->next) {
            for (int i = 0; i < t->count; ++i) {
                auto* chunk = static_cast<const uint8_t*>(t->entries[i]);
                if (--remaining) {
                    at -= kChunk;
                    std::memcpy(at, chunk, kChunk);
                } else {
                    at -= kChunk - freeOctets;
                    std::memcpy(at, chunk + freeOctets, kChunk - freeOctets);
                }
            }
        }
    }
    giveBackChunks(world);
}

void kivJoinForwardOutput(KivGlobal* world, uint32_t* length, uint8_t** encoding) {
    if (world->encodingFlags & KIV_ENCODE_COUNT_ONLY) {
        uint32_t count = world->encodedOctetCount + (world->pendingBits ? 1 : 0);
        *length = count ? count : 1;
        giveBackChunks(world);
        return;
    }
    closePartialOctet(world);
    uint64_t chunks = recordedBlockCount(world);
    uint64_t total = chunks * kChunk - world->poolLeft;
    if (chunks == 0 || total == 0) {
        // An empty complete encoding is one zero octet.
        uint8_t* out = obtainEncoding(world, 1);
        out[0] = 0;
        *encoding = out;
        *length = 1;
    } else {
        uint8_t* out = obtainEncoding(world, total);
        *encoding = out;
        *length = static_cast<uint32_t>(total);
        uint8_t* at = out;
        uint64_t remaining = chunks;
        for (KivBlockTable* t = &world->blockTable; t; t = t->next) {
            for (int i = 0; i < t->count; ++i) {
                uint32_t used = --remaining ? kChunk : kChunk - world->poolLeft;
                std::memcpy(at, t->entries[i], used);
                at += used;
            }
        }
    }
    giveBackChunks(world);
}

void kivFinishBufferOutput(KivGlobal* world, uint32_t* length, uint8_t** buffer,
                           uint32_t encoderFlags) {
    closePartialOctet(world);
    uint32_t size = *length;
    uint32_t used = size - world->poolLeft;
    if (used == 0) {
        *world->poolCursor = 0;
        used = 1;
    }
    if (used != size && (encoderFlags & KIV_ENCODE_AT_BUFFER_END)) {
        // Overlapping move to the end of the buffer.
        std::memmove(*buffer + (size - used), *buffer, used);
        *buffer += size - used;
    }
    *length = used;
}

void kivFinishOutput(KivGlobal* world, uint32_t* length, uint8_t** buffer,
                     uint32_t encoderFlags) {
    if (world->poolMode)
        kivFinishBufferOutput(world, length, buffer, encoderFlags);
    else
        kivJoinForwardOutput(world, length, buffer);
}
