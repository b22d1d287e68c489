// The special REAL values: classifying a binary REAL, their words, and
// storing them. Infinities are held as the largest finite value of the C
// type, not as IEEE infinities; not-a-number and minus zero by fixed bit
// patterns.
#include <cfloat>
#include <cmath>
#include <cstring>

#include "print/print_slots.h"
#include "print/real_class.h"

namespace {

// The representations of classes 64 to 67, in code order: the largest
// finite value, its negative, not-a-number, minus zero.
constexpr uint32_t kFloatBits[] = {0x7F7FFFFFu, 0xFF7FFFFFu, 0xFFC00000u, 0x80000000u};
constexpr uint64_t kDoubleBits[] = {0x7FEFFFFFFFFFFFFFull, 0xFFEFFFFFFFFFFFFFull,
                                    0xFFF8000000000000ull, 0x8000000000000000ull};

struct ClassWords {
    int32_t code;
    const char* hyphens;
    const char* underscores;
};

constexpr ClassWords kWords[] = {
    {kivRealZero, "0", "0"},
    {kivRealPlusInfinity, "PLUS-INFINITY", "PLUS_INFINITY"},
    {kivRealMinusInfinity, "MINUS-INFINITY", "MINUS_INFINITY"},
    {kivRealNotANumber, "NOT-A-NUMBER", "NOT_A_NUMBER"},
    {kivRealMinusZero, "-0", "-0"},
};

}  // namespace

int32_t kivClassifyReal(const void* value, int32_t size) {
    double v;
    if (size == 4) {
        float f;
        std::memcpy(&f, value, sizeof f);
        v = f;
    } else {
        std::memcpy(&v, value, sizeof v);
    }
    if (std::isnan(v)) return kivRealNotANumber;
    if (v == 0) return std::copysign(1.0, v) < 0 ? kivRealMinusZero : kivRealZero;
    // The largest finite value of the type stands for infinity.
    double largest = size == 4 ? FLT_MAX : DBL_MAX;
    if (v >= largest) return kivRealPlusInfinity;
    if (v <= -largest) return kivRealMinusInfinity;
    return kivRealOrdinary;
}

int32_t kivRealHasClass(const void* value, int32_t size, int32_t code) {
    return kivClassifyReal(value, size) == code;
}

const char* kivRealClassWord(int32_t code, int32_t underscore) {
    for (const ClassWords& words : kWords)
        if (words.code == code) return underscore ? words.underscores : words.hyphens;
    return nullptr;
}

// Any size other than 4 stores a double, as the classifier reads one.
int32_t kivSetRealClass(void* value, int32_t size, int32_t code) {
    if (code < kivRealPlusInfinity || code > kivRealMinusZero) return 0;
    int index = code - kivRealPlusInfinity;
    if (size == 4)
        std::memcpy(value, &kFloatBits[index], sizeof kFloatBits[index]);
    else
        std::memcpy(value, &kDoubleBits[index], sizeof kDoubleBits[index]);
    return 1;
}

namespace fenk {

const char* specialRealWord(const char* text) {
    for (const ClassWords& words : kWords)
        if (std::strcmp(text, words.underscores) == 0) return words.hyphens;
    return nullptr;
}

}  // namespace fenk
