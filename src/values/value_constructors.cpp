// Value constructors: blocks of the layouts generated code expects, taken
// from the world's allocation hook so that the library's free operations
// can release them. Nothing here raises or records a block: every failure
// gives null, after releasing whatever the constructor had obtained.
#include <cstring>

#include "api/api_slots.h"
#include "values/values_slots.h"

namespace {

template <class T>
T* newScalar(KivGlobal* world, T value) {
    auto* block = static_cast<T*>(kivAllocate(world, sizeof(T)));
    if (block) std::memcpy(block, &value, sizeof(T));
    return block;
}

// The common shape of the record constructors: the record first (zero-filled
// when asked); an empty value needs no data and its source is not looked
// at; otherwise a data block of size octets receives copied octets from the
// source. A missing source or a failed allocation releases the record.
void* recordWithData(KivGlobal* world, uint64_t recordSize, bool zeroed, bool empty,
                     const void* source, uint64_t size, uint64_t copied, void** data) {
    void* record = zeroed ? kivAllocateZeroed(world, recordSize) : kivAllocate(world, recordSize);
    *data = nullptr;
    if (!record || empty) return record;
    if (source) *data = kivAllocate(world, size);
    if (!*data) {
        kivRelease(world, record);
        return nullptr;
    }
    std::memcpy(*data, source, copied);
    return record;
}

KivLengthData* newLengthData(KivGlobal* world, uint32_t length, const void* source,
                             uint64_t size, uint64_t copied) {
    void* data;
    auto* record = static_cast<KivLengthData*>(recordWithData(
        world, sizeof(KivLengthData), false, length == 0, source, size, copied, &data));
    if (record) {
        record->length = length;
        record->data = data;
    }
    return record;
}

// The length field keeps the low 32 bits of the count.
KivContaining* newContaining(KivGlobal* world, uint64_t length, const void* source,
                             uint64_t octets) {
    void* data;
    auto* record = static_cast<KivContaining*>(recordWithData(
        world, sizeof(KivContaining), false, length == 0, source, octets, octets, &data));
    if (record) {
        record->length = static_cast<uint32_t>(length);
        record->encoded = static_cast<uint8_t*>(data);
        record->decoded = nullptr;
    }
    return record;
}

uint64_t bitOctets(uint64_t bitCount) { return (bitCount >> 3) + 1; }

// A record whose decoded value is a deep copy made by the guarded copy
// through the hooks (the holder is null, so nothing is carved from a caller
// buffer).
template <class Record>
Record* withCopiedValue(KivGlobal* world, Record* record, const void* value, uint32_t pduNum) {
    if (!record) return nullptr;
    record->decoded = nullptr;
    if (kivCopyValue(world, pduNum, value, &record->decoded) != 0) {
        kivRelease(world, record);
        return nullptr;
    }
    return record;
}

}  // namespace

uint8_t* kivNewValue8a(KivGlobal* world, uint8_t value) { return newScalar(world, value); }
uint8_t* kivNewValue8b(KivGlobal* world, uint8_t value) { return newScalar(world, value); }
uint8_t* kivNewValue8c(KivGlobal* world, uint8_t value) { return newScalar(world, value); }
uint16_t* kivNewValue16a(KivGlobal* world, uint16_t value) { return newScalar(world, value); }
uint16_t* kivNewValue16b(KivGlobal* world, uint16_t value) { return newScalar(world, value); }
uint32_t* kivNewValue32a(KivGlobal* world, uint32_t value) { return newScalar(world, value); }
uint32_t* kivNewValue32b(KivGlobal* world, uint32_t value) { return newScalar(world, value); }
uint32_t* kivNewValue32c(KivGlobal* world, uint32_t value) { return newScalar(world, value); }
uint32_t* kivNewValue32d(KivGlobal* world, uint32_t value) { return newScalar(world, value); }
uint64_t* kivNewValue64a(KivGlobal* world, uint64_t value) { return newScalar(world, value); }
uint64_t* kivNewValue64b(KivGlobal* world, uint64_t value) { return newScalar(world, value); }
uint64_t* kivNewValue64c(KivGlobal* world, uint64_t value) { return newScalar(world, value); }
float* kivNewFloat(KivGlobal* world, float value) { return newScalar(world, value); }
double* kivNewDouble(KivGlobal* world, double value) { return newScalar(world, value); }

char* kivNewEmptyText(KivGlobal* world, uint32_t length) {
    auto* text = static_cast<char*>(kivAllocate(world, uint64_t{length} + 1));
    if (text) text[0] = '\0';
    return text;
}

char* kivNewText(KivGlobal* world, const char* text) {
    size_t size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(kivAllocate(world, size));
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

// The octets are followed by a 0 octet, so that text data stays terminated.
KivLengthData* kivNewOctets(KivGlobal* world, const uint8_t* data, uint32_t length) {
    KivLengthData* record = newLengthData(world, length, data, uint64_t{length} + 1, length);
    if (record && length) static_cast<uint8_t*>(record->data)[length] = 0;
    return record;
}

// Even an empty text gets its one-octet data block.
KivLengthData* kivNewOctetsFromText(KivGlobal* world, const char* text) {
    size_t length = std::strlen(text);
    void* data;
    auto* record = static_cast<KivLengthData*>(recordWithData(
        world, sizeof(KivLengthData), false, false, text, length + 1, length + 1, &data));
    if (record) {
        record->length = static_cast<uint32_t>(length);
        record->data = data;
    }
    return record;
}

KivLengthData* kivNewString16(KivGlobal* world, const uint16_t* units, uint32_t count) {
    uint64_t octets = uint64_t{2} * count;
    return newLengthData(world, count, units, octets, octets);
}

KivLengthData* kivNewString32(KivGlobal* world, const uint32_t* units, uint32_t count) {
    uint64_t octets = uint64_t{4} * count;
    return newLengthData(world, count, units, octets, octets);
}

// One octet more than the bits occupy is read when the count is a multiple
// of 8: callers provide it.
KivLengthData* kivNewBits(KivGlobal* world, const uint8_t* bits, uint32_t bitCount) {
    uint64_t octets = bitOctets(bitCount);
    return newLengthData(world, bitCount, bits, octets, octets);
}

KivArray* kivNewArray(KivGlobal* world, uint32_t count, uint64_t elementSize, uint8_t zero) {
    auto* record = static_cast<KivArray*>(kivAllocate(world, sizeof(KivArray)));
    if (!record) return nullptr;
    void* elements = nullptr;
    if (count != 0) {
        uint64_t size = count * elementSize;
        elements = zero ? kivAllocateZeroed(world, size) : kivAllocate(world, size);
        if (!elements) {
            kivRelease(world, record);
            return nullptr;
        }
    }
    record->count = count;
    record->elements = elements;
    return record;
}

KivArray* kivNewArrayCopy(KivGlobal* world, const void* elements, uint32_t count,
                          uint64_t elementSize) {
    uint64_t size = count * elementSize;
    void* copy;
    auto* record = static_cast<KivArray*>(recordWithData(world, sizeof(KivArray), false,
                                                         count == 0, elements, size, size, &copy));
    if (record) {
        record->count = count;
        record->elements = copy;
    }
    return record;
}

// The record covers at least the common 24 bytes of an open type; further
// fields of the caller's record stay zero. A negative length describes no
// encoding and gives null.
KivOpenType* kivNewOpenTypeEncoded(KivGlobal* world, const uint8_t* encoded, int32_t length,
                                   uint64_t recordSize) {
    if (length < 0 || recordSize < sizeof(KivOpenType)) return nullptr;
    void* copy;
    auto* record = static_cast<KivOpenType*>(
        recordWithData(world, recordSize, true, length == 0, encoded,
                       static_cast<uint64_t>(length), static_cast<uint64_t>(length), &copy));
    if (record) {
        record->length = static_cast<uint32_t>(length);
        record->encoded = static_cast<uint8_t*>(copy);
    }
    return record;
}

KivOpenType* kivNewOpenTypeDecoded(KivGlobal* world, const void* value, uint32_t pduNum,
                                   uint64_t recordSize) {
    if (recordSize < sizeof(KivOpenType)) return nullptr;
    auto* record = withCopiedValue(
        world, static_cast<KivOpenType*>(kivAllocateZeroed(world, recordSize)), value, pduNum);
    if (record) record->pduNum = static_cast<int32_t>(pduNum);
    return record;
}

KivContaining* kivNewContainingBits(KivGlobal* world, const uint8_t* bits, uint64_t bitCount) {
    return newContaining(world, bitCount, bits, bitOctets(bitCount));
}

KivContaining* kivNewContainingOctets(KivGlobal* world, const uint8_t* octets, uint64_t length) {
    return newContaining(world, length, octets, length);
}

KivContaining* kivNewContainingValue(KivGlobal* world, const void* value, uint32_t pduNum) {
    auto* record = withCopiedValue(
        world, static_cast<KivContaining*>(kivAllocate(world, sizeof(KivContaining))), value,
        pduNum);
    if (record) {
        record->length = 0;
        record->encoded = nullptr;
    }
    return record;
}
