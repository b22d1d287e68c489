// Canonical SET OF ordering under DER and CXER: each component is encoded
// into chunks of its own, joined into a separate octet string when the next
// one starts, and at the end all are sorted and written out in order.
#include <cstring>

#include "memory/memory_slots.h"
#include "memory/working_memory.h"

namespace fenk {
namespace {

constexpr int32_t kRulesDer = 3;
constexpr int32_t kRulesCxer = 6;

struct SetOfEntry {
    uint32_t length;
    uint8_t* octets;
};
static_assert(sizeof(SetOfEntry) == 16);

struct SetOfFrame {
    SetOfFrame* link;
    int32_t count;  // components begun
    SetOfEntry* entries;
    KivBlockTable savedTable;
    KivBlockTable* savedCurrent;
    uint8_t* savedCursor;
    uint32_t savedLeft;
    uint8_t savedPoolMode;
    // Set (in the padding) once the world's state is restored and the sorted
    // components are being written out: the frame then holds no partial
    // component, and unwinding must not restore the state a second time.
    uint8_t writing;
    uint32_t savedCount;
    uint8_t forward;  // CXER writes forward, DER backward
};
static_assert(sizeof(SetOfFrame) == 488);
static_assert(offsetof(SetOfFrame, savedTable) == 24);
static_assert(offsetof(SetOfFrame, savedCurrent) == 456);
static_assert(offsetof(SetOfFrame, savedLeft) == 472);
static_assert(offsetof(SetOfFrame, savedPoolMode) == 476);
static_assert(offsetof(SetOfFrame, savedCount) == 480);
static_assert(offsetof(SetOfFrame, forward) == 484);

bool ordering(const KivGlobal* world) {
    return (world->encodingRules == kRulesDer || world->encodingRules == kRulesCxer) &&
           !(world->encodingFlags & KIV_ENCODE_COUNT_ONLY);
}

SetOfFrame* topFrame(KivGlobal* world) { return static_cast<SetOfFrame*>(world->setOfFrames); }

void startEmptyTable(KivGlobal* world) {
    world->blockTable.count = 0;
    world->blockTable.next = nullptr;
    world->currentBlockTable = &world->blockTable;
}

// Joins the chunks of the component just finished into its entry; the join
// leaves an empty block table.
void joinComponent(KivGlobal* world, SetOfFrame* frame, uint32_t* left) {
    SetOfEntry& entry = frame->entries[frame->count - 1];
    if (frame->forward)
        kivJoinForwardOutput(world, &entry.length, &entry.octets);
    else
        kivJoinBackwardOutput(world, static_cast<int32_t>(*left), &entry.length, &entry.octets);
}

// Octet order with the mask OR-ed into the first octets; a prefix sorts
// before the longer encoding.
int compare(const SetOfEntry& p, const SetOfEntry& q, uint8_t mask) {
    uint32_t common = p.length < q.length ? p.length : q.length;
    if (common) {
        int a = p.octets[0] | mask, b = q.octets[0] | mask;
        if (a != b) return a < b ? -1 : 1;
        if (common > 1) {
            int rest = std::memcmp(p.octets + 1, q.octets + 1, common - 1);
            if (rest) return rest;
        }
    }
    return p.length < q.length ? -1 : p.length > q.length ? 1 : 0;
}

// Shell sort with every other Fibonacci number as gaps. The order of
// entries that compare equal is part of the output, so neither the gaps nor
// the insertion may change.
void sortEntries(SetOfEntry* e, int32_t n, uint8_t mask) {
    int64_t a = 1, b = 2;
    while (b <= n) {
        a += b;
        b += a;
    }
    int64_t y = b - a;
    int64_t g = a - y;
    while (g > 0) {
        for (int64_t i = g; i < n; ++i) {
            SetOfEntry held = e[i];
            int64_t j = i;
            while (j >= g && compare(e[j - g], held, mask) > 0) {
                e[j] = e[j - g];
                j -= g;
            }
            e[j] = held;
        }
        y -= g;
        g -= y;
    }
}

void restoreState(KivGlobal* world, const SetOfFrame* frame) {
    world->blockTable = frame->savedTable;
    world->currentBlockTable = frame->savedCurrent;
    world->poolMode = frame->savedPoolMode;
    world->encodedOctetCount = frame->savedCount;
}

// Pops the frame and frees what it still holds, newest entry first.
void popFrame(KivGlobal* world, SetOfFrame* frame) {
    world->setOfFrames = frame->link;
    for (int32_t i = frame->count - 1; i >= 0; --i) heapFree(world, frame->entries[i].octets);
    heapFree(world, frame->entries);
    heapFree(world, frame);
}

// Appends octets to a forward writer's chunks.
void appendForward(KivGlobal* world, const uint8_t* octets, uint32_t length) {
    while (length) {
        if (world->poolLeft == 0) {
            world->poolCursor = static_cast<uint8_t*>(kivNewOutputChunk(world));
            world->poolLeft = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = length < world->poolLeft ? length : world->poolLeft;
        std::memcpy(world->poolCursor, octets, part);
        world->poolCursor += part;
        world->poolLeft -= part;
        octets += part;
        length -= part;
    }
}

}  // namespace

void unwindSetOfFrames(KivGlobal* world) {
    while (SetOfFrame* frame = topFrame(world)) {
        if (!frame->writing) {
            // The partial component's chunks.
            if (!hasTempBuffer(world)) kivFreeTrackedBlocks(world, world->freeHook);
            restoreState(world, frame);
        }
        popFrame(world, frame);
    }
}

}  // namespace fenk

using namespace fenk;

void kivBeginSetOf(KivGlobal* world, int32_t components, uint8_t** cursor, uint32_t* left) {
    if (!ordering(world)) return;
    auto* frame = static_cast<SetOfFrame*>(heapAlloc(world, sizeof(SetOfFrame)));
    if (!frame) raiseMemoryError(world, kMsgOutOfMemory, sizeof(SetOfFrame));
    std::memset(frame, 0, sizeof *frame);
    // No entry array for no components: there is nothing to hold.
    uint64_t entryBytes = components > 0 ? uint64_t(components) * sizeof(SetOfEntry) : 0;
    if (entryBytes) {
        frame->entries = static_cast<SetOfEntry*>(heapAlloc(world, entryBytes));
        if (!frame->entries) {
            heapFree(world, frame);
            raiseMemoryError(world, kMsgOutOfMemory, entryBytes);
        }
        std::memset(frame->entries, 0, entryBytes);
    }
    frame->forward = world->encodingRules == kRulesCxer;
    frame->savedTable = world->blockTable;
    frame->savedCurrent = world->currentBlockTable;
    frame->savedCursor = *cursor;
    frame->savedLeft = *left;
    frame->savedPoolMode = world->poolMode;
    frame->savedCount = world->encodedOctetCount;
    frame->link = topFrame(world);
    world->setOfFrames = frame;

    startEmptyTable(world);
    world->poolMode = 0;
    *left = 0;  // the first octet asks for a new chunk
}

void kivNextSetOfComponent(KivGlobal* world, uint32_t* left) {
    if (!ordering(world)) return;
    SetOfFrame* frame = topFrame(world);
    if (frame->count > 0) joinComponent(world, frame, left);
    ++frame->count;
    *left = 0;
}

void kivEndSetOf(KivGlobal* world, uint8_t** cursor, uint32_t* left, uint8_t mask) {
    if (!ordering(world)) return;
    SetOfFrame* frame = topFrame(world);
    if (frame->count > 0) {
        joinComponent(world, frame, left);
        sortEntries(frame->entries, frame->count, mask);
    }
    restoreState(world, frame);
    *cursor = frame->savedCursor;
    *left = frame->savedLeft;
    frame->writing = 1;
    if (frame->forward) {
        for (int32_t i = 0; i < frame->count; ++i) {
            SetOfEntry& entry = frame->entries[i];
            appendForward(world, entry.octets, entry.length);
            world->encodedOctetCount += entry.length;
            heapFree(world, entry.octets);
            entry.octets = nullptr;
        }
    } else {
        auto* writer = reinterpret_cast<KivBackwardOctetWriterFn*>(
            reinterpret_cast<KivRoutine*>(world->berCoders)[KIV_CODER_BACKWARD_WRITER]);
        // Last first into a backward-growing output: ascending order.
        for (int32_t i = frame->count - 1; i >= 0; --i) {
            SetOfEntry& entry = frame->entries[i];
            writer(world, cursor, left, entry.octets, entry.length);
            heapFree(world, entry.octets);
            entry.octets = nullptr;
        }
    }
    popFrame(world, frame);
}
