// The two base-128 numbers at the front of an octet string (seven bits per
// octet, the high bit set on every octet but a number's last), consumed from
// the caller's length-plus-data record.
#include "values/values_slots.h"

namespace {

constexpr uint32_t kMostOctets = 5;

// Reads one number from at most five of the length octets; answers the
// octets used, 0 when no number ends within them.
uint32_t readNumber(const uint8_t* data, uint32_t length, uint32_t* value) {
    const uint32_t limit = length < kMostOctets ? length : kMostOctets;
    uint32_t v = 0;
    for (uint32_t i = 0; i < limit; ++i) {
        v = v * 128 + (data[i] & 0x7Fu);
        if (data[i] < 0x80) {
            *value = v;
            return i + 1;
        }
    }
    return 0;
}

}  // namespace

int32_t kivReadTwoNumbers(KivGlobal* world, KivBuffer* data, uint32_t* first, uint32_t* second) {
    if (!world || !data || !data->value || data->length == 0) return 6;
    uint32_t a = 0;
    uint32_t b = 0;
    const uint32_t usedA = readNumber(data->value, data->length, &a);
    if (usedA == 0) return 5;
    const uint32_t usedB = readNumber(data->value + usedA, data->length - usedA, &b);
    if (usedB == 0) return 5;
    if (first) *first = a;
    if (second) *second = b;
    data->length -= usedA + usedB;
    data->value += usedA + usedB;
    return 0;
}
