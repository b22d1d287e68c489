// Slot 172: raising with a text built from caller data. For the value range
// messages the data is a big-endian number shown in hexadecimal; for any
// other message the data octets are the text itself.
#include <cstring>

#include "api/table_memory.h"
#include "diag/diag_slots.h"
#include "diag/raise.h"

namespace fenk {
namespace {

constexpr int32_t kRangeSigned = 22;
constexpr int32_t kRangeUnsigned = 23;

// Temporary memory for the text, from slot 132 of the world's table. Until
// that slot is filled, a per-thread area stands in. Texts longer than it
// could never fit the 510-character error text, so cutting them there shows
// the same message.
char* temporaryText(KivGlobal* world, uint64_t size, uint64_t& capacity) {
    if (world->apiTable[kivSlotTempAlloc]) {
        capacity = size;
        return static_cast<char*>(KIV_TABLE_CALL(world, KivTempAllocFn, kivSlotTempAlloc)(world, size));
    }
    static thread_local char area[2 * kErrorTextLimit + 4];
    capacity = sizeof area;
    return area;
}

const char* buildText(KivGlobal* world, int32_t index, const uint8_t* data, uint32_t length) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    uint64_t capacity = 0;
    if (index == kRangeSigned || index == kRangeUnsigned) {
        char* text = temporaryText(world, 2ull * length + 4, capacity);
        char* out = text;
        char* last = text + capacity - 1;
        if (length > 0) {
            *out++ = '0';
            *out++ = 'x';
            // An unsigned value with its top bit set would read as negative.
            if (index == kRangeUnsigned && data[0] > 127) *out++ = '0';
            for (uint32_t i = 0; i < length && out + 2 <= last; ++i) {
                *out++ = kDigits[data[i] >> 4];
                *out++ = kDigits[data[i] & 0x0F];
            }
        }
        *out = '\0';
        return text;
    }
    char* text = temporaryText(world, uint64_t{length} + 1, capacity);
    uint64_t copied = length < capacity ? length : capacity - 1;
    if (copied) std::memcpy(text, data, copied);
    text[copied] = '\0';
    return text;
}

}  // namespace
}  // namespace fenk

// Null data counts as empty data.
void kivRaiseData(KivGlobal* world, int32_t index, const void* data, uint32_t length) {
    if (!data) length = 0;
    const char* text = fenk::buildText(world, index, static_cast<const uint8_t*>(data), length);
    fenk::raiseMessage(world, index,
                       {fenk::ArgumentForm::dataText, reinterpret_cast<uintptr_t>(text)});
}
