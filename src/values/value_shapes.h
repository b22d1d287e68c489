// Reading the recurring value shapes shared with generated code: length
// fields of either width, pointers at a byte position within a record, and
// arbitrary-length integers without their redundant leading octets.
#ifndef FENK_VALUES_VALUE_SHAPES_H
#define FENK_VALUES_VALUE_SHAPES_H

#include <cstdint>
#include <cstring>
#include <span>

#include "fenkapi.h"

namespace fenk {

// Data pointers of length-plus-data records sit at this offset.
constexpr uint32_t kDataPointerOffset = 8;

inline bool isShortLength(int16_t width) { return width == KIV_LENGTH_WIDTH_16; }

inline uint32_t readLength(const void* record, bool shortLength) {
    if (shortLength) {
        uint16_t length;
        std::memcpy(&length, record, sizeof length);
        return length;
    }
    uint32_t length;
    std::memcpy(&length, record, sizeof length);
    return length;
}

inline void writeLength(void* record, bool shortLength, uint32_t length) {
    if (shortLength) {
        auto narrow = static_cast<uint16_t>(length);
        std::memcpy(record, &narrow, sizeof narrow);
    } else {
        std::memcpy(record, &length, sizeof length);
    }
}

// Positions come from the caller and need not be aligned.
inline const uint8_t* readPointer(const void* record, uint32_t position) {
    const uint8_t* pointer;
    std::memcpy(&pointer, static_cast<const uint8_t*>(record) + position, sizeof pointer);
    return pointer;
}

inline void writePointer(void* record, uint32_t position, const void* pointer) {
    std::memcpy(static_cast<uint8_t*>(record) + position, &pointer, sizeof pointer);
}

// Octets held by a length-plus-data record: length x unit, or the octets of
// length bits for a negative unit.
inline uint64_t dataOctets(uint32_t length, int32_t unit) {
    if (unit < 0) return (uint64_t{length} + 7) / 8;
    return uint64_t{length} * static_cast<uint32_t>(unit);
}

// The octets of an arbitrary-length integer (big-endian, two's complement
// when signed) without the leading octets that do not change its value.
std::span<const uint8_t> stripHugeInteger(std::span<const uint8_t> value, bool isSigned);

// Bit-string comparison over bitCount bits, most significant bit first.
bool bitsDiffer(const uint8_t* a, const uint8_t* b, int64_t bitCount);

// Two lists walked in step from their first nodes; the element of each node
// is elementSize octets at elementOffset.
bool listsDiffer(const KivListNode* a, const KivListNode* b, uint64_t elementSize,
                 uint32_t elementOffset);

}  // namespace fenk

#endif
