// Length trimming for bit strings with named bits and for space-padded texts.
#include "values/values_slots.h"

uint32_t kivSignificantBits(const uint8_t* bits, uint32_t bitCount) {
    for (uint32_t i = bitCount; i > 0; --i) {
        const uint32_t bit = i - 1;
        if (bits[bit / 8] & (0x80u >> (bit % 8))) return i;
    }
    return 0;
}

int32_t kivTrimTrailingBlanks(const char* text, int32_t length) {
    if (length < 1) return length;
    while (length > 0 && (text[length - 1] == ' ' || text[length - 1] == '\0')) --length;
    return length;
}
