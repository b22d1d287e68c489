// The copy helpers of generated copiers: length-plus-data records, lists,
// texts and open types. They run inside a copy and take their memory from
// working memory, so every block is recorded (or carved from the caller's
// buffer) and a failure anywhere gives it all back.
#include <cstring>

#include "diag/diag_slots.h"
#include "memory/memory_slots.h"
#include "memory/working_memory.h"
#include "values/value_shapes.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

constexpr uint32_t kRecordSize = 16;
constexpr uint32_t kHolderSize = 8;
constexpr int32_t kMsgOpenTypeCopyFailed = 32;  // "0067S: Error in copying an open type"
constexpr int32_t kMsgUserFieldFailed = 33;     // "0079S: User-defined open type user-field-..."

// Data sizes are 32-bit requests to working memory; a larger one cannot be
// had and is reported as exhaustion rather than cut short.
void* allocData(KivGlobal* world, uint64_t size) {
    if (size > UINT32_MAX) raiseMemoryError(world, kMsgOutOfMemory, size);
    return kivAllocRounded(world, static_cast<uint32_t>(size));
}

void* copyOctets(KivGlobal* world, const void* source, uint64_t size) {
    void* copy = allocData(world, size);
    std::memcpy(copy, source, size);
    return copy;
}

// A new record is 16 bytes, or, with the data pointer at a position of the
// caller's choosing, that position and the pointer.
void* copyLengthData(KivGlobal* world, const void* source, void* destination, int16_t width,
                     int32_t unit, uint32_t position, bool atPosition) {
    bool shortLength = isShortLength(width);
    uint32_t length = readLength(source, shortLength);
    if (!destination) {
        destination = atPosition ? kivAllocRounded(world, position + kDataPointerOffset)
                                 : kivAllocExact(world, kRecordSize);
        writeLength(destination, shortLength, length);
    }
    uint64_t octets = dataOctets(length, unit);
    const void* data = octets ? copyOctets(world, readPointer(source, position), octets) : nullptr;
    writePointer(destination, position, data);
    return destination;
}

// Copies the nodes of the list starting at source into newly allocated
// nodes hanging from *head; a doubly linked copy also sets each previous
// pointer. Answers the last node copied (null for an empty list) and counts
// the nodes.
KivListNode* copyNodes(KivGlobal* world, const KivListNode* source, KivListNode** head,
                       uint32_t nodeSize, bool doubly, uint32_t* count) {
    *head = nullptr;
    *count = 0;
    if (!source) return nullptr;
    auto* node = static_cast<KivListNode*>(kivAllocRounded(world, nodeSize));
    *head = node;
    KivListNode* previous = nullptr;
    for (;;) {
        std::memcpy(node, source, nodeSize);
        if (doubly) {
            reinterpret_cast<KivDoubleNode*>(node)->previous =
                reinterpret_cast<KivDoubleNode*>(previous);
        }
        ++*count;
        source = source->next;
        if (!source) return node;
        node->next = static_cast<KivListNode*>(kivAllocRounded(world, nodeSize));
        previous = node;
        node = node->next;
    }
}

KivListNode** copyList(KivGlobal* world, KivListNode* const* source, KivListNode** destination,
                       int32_t nodeSize, bool doubly) {
    if (!destination) destination = static_cast<KivListNode**>(kivAllocExact(world, kHolderSize));
    uint32_t count;
    copyNodes(world, *source, destination, static_cast<uint32_t>(nodeSize), doubly, &count);
    return destination;
}

bool userFieldRecords(const KivGlobal* world) {
    return world->shortSetting & KIV_OPEN_TYPE_USER_FIELD;
}

KivValueCopier copierOf(const KivGlobal* world) {
    const auto* routines = static_cast<const KivValueRoutines*>(world->privateState->valueRoutines);
    return routines ? routines->copier : nullptr;
}

}  // namespace
}  // namespace fenk

using namespace fenk;

void* kivCopyLengthData(KivGlobal* world, const void* source, void* destination, int16_t width,
                        int32_t unit) {
    return copyLengthData(world, source, destination, width, unit, kDataPointerOffset, false);
}

void* kivCopyLengthDataAt(KivGlobal* world, const void* source, void* destination, int16_t width,
                          int32_t unit, uint32_t position) {
    return copyLengthData(world, source, destination, width, unit, position, true);
}

KivListNode** kivCopySinglyLinkedList(KivGlobal* world, KivListNode* const* source,
                                      KivListNode** destination, int32_t nodeSize) {
    return copyList(world, source, destination, nodeSize, false);
}

KivListNode** kivCopyDoublyLinkedList(KivGlobal* world, KivListNode* const* source,
                                      KivListNode** destination, int32_t nodeSize) {
    return copyList(world, source, destination, nodeSize, true);
}

KivCountedList* kivCopyCountedList(KivGlobal* world, KivDoubleNode* const* source,
                                   KivCountedList* destination, uint32_t nodeSize) {
    if (!destination)
        destination = static_cast<KivCountedList*>(kivAllocExact(world, sizeof(KivCountedList)));
    KivListNode* head;
    KivListNode* last = copyNodes(world, reinterpret_cast<const KivListNode*>(*source), &head,
                                  nodeSize, true, &destination->count);
    destination->first = reinterpret_cast<KivDoubleNode*>(head);
    destination->last = reinterpret_cast<KivDoubleNode*>(last);
    return destination;
}

char* kivCopyText(KivGlobal* world, const char* text) {
    return static_cast<char*>(copyOctets(world, text, std::strlen(text) + 1));
}

// The decoded value is copied by the generated copier into a fresh holder:
// the destination's decoded pointer, which may still be the source's, is
// cleared first so that the copier never takes the source for its target.
// Without a copier an open type cannot be copied.
KivOpenType* kivCopyOpenType(KivGlobal* world, const KivOpenType* source,
                             KivOpenType* destination) {
    if (!destination) {
        uint32_t size = userFieldRecords(world) ? sizeof(KivOpenTypeWithUser) : sizeof(KivOpenType);
        destination = static_cast<KivOpenType*>(kivAllocExact(world, size));
        std::memcpy(destination, source, size);
    }
    uint32_t flags = world->decodingFlags;
    if (source->length != 0 && source->encoded) {
        if (flags & KIV_IGNORE_ENCODED_OPEN_TYPE) {
            destination->length = 0;
            destination->encoded = nullptr;
        } else {
            destination->encoded =
                static_cast<uint8_t*>(copyOctets(world, source->encoded, source->length));
        }
    }
    if (source->pduNum != 0 && source->decoded) {
        if (flags & KIV_IGNORE_DECODED_OPEN_TYPE) {
            destination->pduNum = 0;
            destination->decoded = nullptr;
        } else {
            KivValueCopier copy = copierOf(world);
            if (!copy) kivRaise(world, kMsgOpenTypeCopyFailed, 0);
            destination->decoded = nullptr;
            copy(world, static_cast<uint32_t>(source->pduNum), source->decoded,
                 &destination->decoded);
        }
    }
    KivOpenTypeRoutine userCopy = world->privateState->openTypeCopier;
    if (userCopy && userCopy(world, const_cast<KivOpenType*>(source), destination) != 0)
        kivRaise(world, kMsgUserFieldFailed, 0);
    return destination;
}
