// Comparison of two component values by their type kind, as encoders ask it
// to decide whether a component equals its DEFAULT value. Only PER and DER
// omit components equal to their default, so only they compare.
#include <cstring>

#include "diag/diag_slots.h"
#include "values/value_shapes.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

constexpr int32_t kMsgNotSupportedByDer = 65;  // "0116S: Data type is not supported by DER ..."
constexpr int32_t kEqual = 0;
constexpr int32_t kDifferent = 1;
constexpr int32_t kNotComparable = 255;
constexpr uint32_t kPointerAtNextPosition = 0xFFFFFFFF;  // bits of kinds 63, 74: data by pointer

// Where the data of a length-prefixed value lies: in place right after its
// length field, or through the pointer at offset 8. The caller of slot 173
// names the position of either instead.
struct Layout {
    bool positioned;
    uint32_t position;

    uint32_t inPlace(bool shortLength) const {
        return positioned ? position : shortLength ? 2u : 4u;
    }
    uint32_t pointer() const { return positioned ? position : kDataPointerOffset; }
};

const uint8_t* at(const void* value, uint32_t offset) {
    return static_cast<const uint8_t*>(value) + offset;
}

int32_t answer(bool differ) { return differ ? kDifferent : kEqual; }

// A bit string held in an integer of 1, 2 or 4 bytes, laid out most
// significant byte first over size bytes (sign-extended): equal when the
// first bits of that layout agree.
int32_t integerBits(const void* a, const void* b, uint32_t size, uint32_t bits) {
    auto read = [size](const void* v) -> int64_t {
        if (size < 2) return *static_cast<const int8_t*>(v);
        if (size < 4) {
            int16_t x;
            std::memcpy(&x, v, sizeof x);
            return x;
        }
        int32_t x;
        std::memcpy(&x, v, sizeof x);
        return x;
    };
    int64_t x = read(a);
    int64_t y = read(b);
    uint64_t layoutBits = uint64_t{size} * 8;
    uint64_t count = bits < layoutBits ? bits : layoutBits;
    for (uint64_t k = 0; k < count; ++k) {
        uint64_t shift = layoutBits - 1 - k;
        if (shift > 63) shift = 63;  // beyond the integer: its sign
        if (((x >> shift) ^ (y >> shift)) & 1) return kDifferent;
    }
    return kEqual;
}

// Lengths equal; empty values equal; then the octets.
int32_t lengthAndOctets(uint32_t lengthA, uint32_t lengthB, const uint8_t* dataA,
                        const uint8_t* dataB, uint64_t octets) {
    if (lengthA != lengthB) return kDifferent;
    if (lengthA == 0) return kEqual;
    return answer(std::memcmp(dataA, dataB, octets) != 0);
}

// Kinds 26, 28, 63 and 74: an empty value is never equal to anything.
int32_t nonEmptyOctets(uint32_t lengthA, uint32_t lengthB, const uint8_t* dataA,
                       const uint8_t* dataB, uint64_t octets) {
    if (lengthA != lengthB || lengthA == 0) return kDifferent;
    return answer(std::memcmp(dataA, dataB, octets) != 0);
}

int32_t compareByKind(KivGlobal* world, const void* a, const void* b, uint32_t size,
                      Layout layout, uint32_t bits, uint32_t kind) {
    int32_t rules = world->encodingRules;
    if (rules != kivRulesPerAligned && rules != kivRulesPerUnaligned && rules != kivRulesDer)
        return kDifferent;
    // The length field of most length-prefixed kinds is 16 bits wide for a
    // size of 2, else 32 bits.
    bool shortLength = size == 2;
    uint32_t lengthA = 0, lengthB = 0;
    auto lengths = [&](bool narrow) {
        lengthA = readLength(a, narrow);
        lengthB = readLength(b, narrow);
    };
    switch (kind) {
        case 0: case 5: case 6: case 7: case 29: case 30: case 55: case 58:
            return answer(size && std::memcmp(a, b, size) != 0);
        case 8:
            return answer((*at(a, 0) ^ *at(b, 0)) & 1);
        case 1:
            return integerBits(a, b, size, bits);
        case 2:
            return answer(bitsDiffer(at(a, 0), at(b, 0), bits));
        case 4:
            lengths(shortLength);
            if (lengthA != lengthB) return kDifferent;
            return answer(bitsDiffer(at(a, layout.inPlace(shortLength)),
                                     at(b, layout.inPlace(shortLength)), lengthA));
        case 3:
            lengths(shortLength);
            if (lengthA != lengthB) return kDifferent;
            return answer(bitsDiffer(readPointer(a, layout.pointer()),
                                     readPointer(b, layout.pointer()), lengthA));
        case 9: case 21: case 23:
            lengths(shortLength);
            return lengthAndOctets(lengthA, lengthB, at(a, layout.inPlace(shortLength)),
                                   at(b, layout.inPlace(shortLength)), lengthA);
        case 10: case 20: case 25: case 53: case 54: {
            lengths(shortLength);
            uint64_t unit = kind == 53 ? 2 : kind == 54 ? 4 : 1;
            return lengthAndOctets(lengthA, lengthB, readPointer(a, layout.pointer()),
                                   readPointer(b, layout.pointer()), unit * lengthA);
        }
        case 62: {
            lengths(shortLength);
            auto number = [&](const void* v, uint32_t length) {
                const uint8_t* data = readPointer(v, layout.pointer());
                return stripHugeInteger({data, data ? length : 0}, bits != 0);
            };
            auto x = number(a, lengthA);
            auto y = number(b, lengthB);
            return lengthAndOctets(static_cast<uint32_t>(x.size()),
                                   static_cast<uint32_t>(y.size()), x.data(), y.data(), x.size());
        }
        case 24: case 59:
            return answer(std::strcmp(reinterpret_cast<const char*>(a),
                                      reinterpret_cast<const char*>(b)) != 0);
        case 26:
            lengths(true);
            return nonEmptyOctets(lengthA, lengthB, at(a, layout.inPlace(true)),
                                  at(b, layout.inPlace(true)), uint64_t{2} * lengthA);
        case 28:
            lengths(true);
            return nonEmptyOctets(lengthA, lengthB, readPointer(a, layout.pointer()),
                                  readPointer(b, layout.pointer()), uint64_t{2} * lengthA);
        case 27:
            return answer(listsDiffer(static_cast<const KivListNode*>(a),
                                      static_cast<const KivListNode*>(b), size,
                                      layout.positioned ? layout.position : sizeof(KivListNode)));
        case 63: case 74: {
            bool narrow = static_cast<int32_t>(size) >= 0 && size < 4;
            lengths(narrow);
            bool byPointer = bits == kPointerAtNextPosition;
            const uint8_t* dataA = byPointer ? readPointer(a, layout.pointer()) : at(a, layout.inPlace(narrow));
            const uint8_t* dataB = byPointer ? readPointer(b, layout.pointer()) : at(b, layout.inPlace(narrow));
            return nonEmptyOctets(lengthA, lengthB, dataA, dataB, lengthA);
        }
        default:
            if (rules == kivRulesDer) kivRaise(world, kMsgNotSupportedByDer, 0);
            return kNotComparable;
    }
}

}  // namespace
}  // namespace fenk

using namespace fenk;

int32_t kivKindValuesDiffer(KivGlobal* world, const void* a, const void* b, uint32_t size,
                            uint32_t position, uint32_t bits, uint32_t kind) {
    return compareByKind(world, a, b, size, {true, position}, bits, kind);
}

// Compared as under PER, so a kind that cannot be compared counts as not
// equal and never raises here.
uint8_t kivEqualsDefault(KivGlobal* world, const void* value, const void* defaultValue,
                         int32_t size, uint32_t bits, uint32_t kind) {
    if (value == defaultValue) return 1;
    if (!value || !defaultValue) return 0;
    if (kind == 50 || kind == 22)
        return size <= 0 || std::memcmp(value, defaultValue, static_cast<size_t>(size)) == 0;
    int32_t saved = world->encodingRules;
    world->encodingRules = kivRulesPerAligned;
    int32_t result =
        compareByKind(world, value, defaultValue, static_cast<uint32_t>(size), {false, 0}, bits, kind);
    world->encodingRules = saved;
    return result == kEqual;
}
