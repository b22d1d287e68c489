// The two leading base-128 numbers of arbitrary octets: the record is only
// ever shortened by the octets read, and the numbers agree with a plain
// re-reading of those octets.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "fenkapi.h"
#include "kivapit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) std::abort();
    std::vector<uint8_t> octets(data, data + size);  // exact size: overreads are caught
    KivBuffer record{static_cast<uint32_t>(size), octets.data()};
    uint32_t first = 0xDEAD;
    uint32_t second = 0xBEEF;
    const int32_t result = kivReadTwoNumbers(&world, &record, &first, &second);
    if (size == 0) return result == 6 ? 0 : (std::abort(), 0);
    if (result == 5) {
        if (record.length != size || record.value != octets.data()) std::abort();
        if (first != 0xDEAD || second != 0xBEEF) std::abort();
        return 0;
    }
    if (result != 0) std::abort();
    const size_t used = size - record.length;
    if (record.value != octets.data() + used || used < 2 || used > 10) std::abort();
    // Re-read: exactly two octets below 0x80 end numbers among those used.
    uint32_t numbers[2] = {0, 0};
    int index = 0;
    for (size_t i = 0; i < used; ++i) {
        if (index > 1) std::abort();
        numbers[index] = numbers[index] * 128 + (octets[i] & 0x7F);
        if (octets[i] < 0x80) ++index;
    }
    if (index != 2 || numbers[0] != first || numbers[1] != second) std::abort();
    return 0;
}
