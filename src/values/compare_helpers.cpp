// The comparison helpers of generated comparators: bit strings, named-bit
// strings, length-plus-data records, arbitrary-length integers, lists and
// open types. All answer 0 for equal and 1 for different, except the
// ordering of arbitrary-length integers.
#include <cstring>

#include "diag/diag_slots.h"
#include "values/value_shapes.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

constexpr int32_t kMsgUserFieldFailed = 33;  // "0079S: User-defined open type user-field-..."

std::span<const uint8_t> hugeInteger(const void* record, bool shortLength, uint32_t position) {
    uint32_t length = readLength(record, shortLength);
    const uint8_t* data = readPointer(record, position);
    if (length == 0 || !data) return {};
    return {data, length};
}

bool octetsDiffer(std::span<const uint8_t> a, std::span<const uint8_t> b) {
    if (a.size() != b.size()) return true;
    return !a.empty() && std::memcmp(a.data(), b.data(), a.size()) != 0;
}

int32_t sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

bool lengthDataDiffer(const void* a, const void* b, int16_t width, int32_t unit,
                      uint32_t position) {
    bool shortLength = isShortLength(width);
    uint32_t length = readLength(a, shortLength);
    if (length != readLength(b, shortLength)) return true;
    const uint8_t* dataA = readPointer(a, position);
    const uint8_t* dataB = readPointer(b, position);
    if (unit < 0) return bitsDiffer(dataA, dataB, length);
    uint64_t octets = dataOctets(length, unit);
    return octets != 0 && std::memcmp(dataA, dataB, octets) != 0;
}

bool hasDecoded(const KivOpenType* v) { return v->decoded != nullptr; }
bool hasEncoded(const KivOpenType* v) { return v->encoded != nullptr; }

KivValueComparator comparatorOf(const KivGlobal* world) {
    const auto* routines = static_cast<const KivValueRoutines*>(world->privateState->valueRoutines);
    return routines ? routines->comparator : nullptr;
}

// Decoded values are equal when both are there, of the same (nonzero) PDU
// and equal by the generated comparator.
bool decodedDiffer(KivGlobal* world, const KivOpenType* a, const KivOpenType* b) {
    if (!hasDecoded(b) || a->pduNum != b->pduNum || a->pduNum == 0) return true;
    KivValueComparator compare = comparatorOf(world);
    return !compare || compare(world, static_cast<uint32_t>(a->pduNum), a->decoded, b->decoded) != 0;
}

bool encodedDiffer(const KivOpenType* a, const KivOpenType* b) {
    if (!hasEncoded(b) || a->length != b->length) return true;
    return std::memcmp(a->encoded, b->encoded, a->length) != 0;
}

}  // namespace

std::span<const uint8_t> stripHugeInteger(std::span<const uint8_t> value, bool isSigned) {
    if (value.empty()) return value;
    if (value[0] < 0x80) {
        while (value.size() > 1 && value[0] == 0x00 && !(isSigned && value[1] >= 0x80))
            value = value.subspan(1);
    } else if (isSigned) {
        while (value.size() > 1 && value[0] == 0xFF && value[1] >= 0x80) value = value.subspan(1);
    }
    return value;
}

bool bitsDiffer(const uint8_t* a, const uint8_t* b, int64_t bitCount) {
    if (bitCount <= 0) return false;
    auto whole = static_cast<size_t>(bitCount / 8);
    if (whole && std::memcmp(a, b, whole) != 0) return true;
    unsigned rest = static_cast<unsigned>(bitCount % 8);
    if (rest == 0) return false;
    auto mask = static_cast<uint8_t>(~(0xFFu >> rest));
    return (a[whole] & mask) != (b[whole] & mask);
}

bool listsDiffer(const KivListNode* a, const KivListNode* b, uint64_t elementSize,
                 uint32_t elementOffset) {
    for (; a && b; a = a->next, b = b->next) {
        const auto* elementA = reinterpret_cast<const uint8_t*>(a) + elementOffset;
        const auto* elementB = reinterpret_cast<const uint8_t*>(b) + elementOffset;
        if (elementSize && std::memcmp(elementA, elementB, elementSize) != 0) return true;
    }
    return a || b;
}

}  // namespace fenk

using namespace fenk;

int32_t kivBitsDiffer(const uint8_t* a, const uint8_t* b, int32_t bitCount) {
    return bitsDiffer(a, b, bitCount);
}

// Trailing zero bits do not count: the strings must agree over the shorter
// length, and the longer one may only have zero bits beyond it.
int32_t kivNamedBitsDiffer(const uint8_t* a, const uint8_t* b, int32_t bitsA, int32_t bitsB) {
    int64_t shorter = bitsA < bitsB ? bitsA : bitsB;
    if (bitsDiffer(a, b, shorter)) return 1;
    if (bitsA == bitsB) return 0;
    const uint8_t* longer = bitsA > bitsB ? a : b;
    int64_t longerBits = bitsA > bitsB ? bitsA : bitsB;
    int64_t from = shorter < 0 ? 0 : shorter;
    for (int64_t byte = from / 8; byte * 8 < longerBits; ++byte) {
        int64_t low = from > byte * 8 ? from - byte * 8 : 0;
        int64_t high = longerBits < byte * 8 + 8 ? longerBits - byte * 8 : 8;
        unsigned mask = (0xFFu >> low) & ~(0xFFu >> high);
        if (longer[byte] & mask) return 1;
    }
    return 0;
}

int32_t kivLengthDataDiffer(const void* a, const void* b, int16_t width, int32_t unit) {
    return lengthDataDiffer(a, b, width, unit, kDataPointerOffset);
}

int32_t kivLengthDataAtDiffer(const void* a, const void* b, int16_t width, int32_t unit,
                              uint32_t position) {
    return lengthDataDiffer(a, b, width, unit, position);
}

int32_t kivHugeIntegersDiffer(const void* a, const void* b, int16_t width, int32_t isSigned) {
    bool shortLength = isShortLength(width);
    return octetsDiffer(stripHugeInteger(hugeInteger(a, shortLength, kDataPointerOffset), isSigned),
                        stripHugeInteger(hugeInteger(b, shortLength, kDataPointerOffset), isSigned));
}

int32_t kivCompareHugeIntegers(const void* a, const void* b, int16_t width, int32_t isSigned,
                               uint32_t position) {
    bool shortLength = isShortLength(width);
    auto x = stripHugeInteger(hugeInteger(a, shortLength, position), isSigned);
    auto y = stripHugeInteger(hugeInteger(b, shortLength, position), isSigned);
    if (x.empty()) return y.empty() ? 0 : -1;
    if (y.empty()) return 1;
    bool negativeX = isSigned && x[0] >= 0x80;
    bool negativeY = isSigned && y[0] >= 0x80;
    if (negativeX != negativeY) return negativeX ? -1 : 1;
    if (x.size() != y.size()) {
        bool longerIsGreater = !negativeX;
        return (x.size() > y.size()) == longerIsGreater ? 1 : -1;
    }
    // Same sign and length: two's complement orders like the plain octets.
    return sign(std::memcmp(x.data(), y.data(), x.size()));
}

int32_t kivListsDiffer(KivListNode* const* a, KivListNode* const* b, int32_t elementSize) {
    return listsDiffer(*a, *b, static_cast<uint32_t>(elementSize), sizeof(KivListNode));
}

int32_t kivListHeadsDiffer(const KivListNode* a, const KivListNode* b, uint32_t elementSize) {
    return listsDiffer(a, b, elementSize, sizeof(KivListNode));
}

// When decoded values were compared, the encoded forms are not looked at.
// Without value routines, two decoded values cannot be shown equal.
int32_t kivOpenTypesDiffer(KivGlobal* world, const KivOpenType* a, const KivOpenType* b) {
    bool comparedDecoded = false;
    if (!(world->decodingFlags & KIV_IGNORE_DECODED_OPEN_TYPE)) {
        if (!hasDecoded(a)) {
            if (hasDecoded(b)) return 1;
        } else {
            if (decodedDiffer(world, a, b)) return 1;
            comparedDecoded = true;
        }
    }
    if (!comparedDecoded && !(world->decodingFlags & KIV_IGNORE_ENCODED_OPEN_TYPE)) {
        if (!hasEncoded(a)) {
            if (hasEncoded(b)) return 1;
        } else if (encodedDiffer(a, b)) {
            return 1;
        }
    }
    KivOpenTypeRoutine userCompare = world->privateState->openTypeComparer;
    if (userCompare &&
        userCompare(world, const_cast<KivOpenType*>(a), const_cast<KivOpenType*>(b)) != 0)
        kivRaise(world, kMsgUserFieldFailed, 0);
    return 0;
}
