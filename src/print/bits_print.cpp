// Bit strings in value notation: '10110010 01'B, a blank after every eighth
// bit, the first bit being the most significant bit of the first octet.
#include <cstring>

#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {

template <class Sink>
void writeBits(Sink& out, const char* prefix, const uint8_t* bits, int32_t shown, int32_t count,
               const char* suffix) {
    if (prefix) out.put("%s", prefix);
    for (int32_t i = 0; i < shown; ++i) {
        if (i != 0 && i % 8 == 0) out.put(" ");
        out.put("%d", (bits[i / 8] & (0x80 >> (i % 8))) != 0 ? 1 : 0);
    }
    if (suffix) out.put(shown < count ? " ...%s" : "%s", suffix);
}

// The integer read at its own width (3 reads 32 bits, 5 to 7 read 64), its
// low size bytes laid out most significant first. Sizes above 8 are taken
// as 8 and the bit count is kept within the octets, so that a caller past
// those limits cannot make the printer read beyond its array.
struct IntegerBits {
    uint8_t octets[8];
    int32_t count;
};

IntegerBits layOutInteger(const void* value, uint32_t size, int32_t count) {
    if (size > 8) size = 8;
    uint64_t v = 0;
    if (size == 1) {
        uint8_t x;
        std::memcpy(&x, value, 1);
        v = x;
    } else if (size == 2) {
        uint16_t x;
        std::memcpy(&x, value, 2);
        v = x;
    } else if (size == 3 || size == 4) {
        uint32_t x;
        std::memcpy(&x, value, 4);
        v = x;
    } else if (size >= 5) {
        std::memcpy(&v, value, 8);
    }
    IntegerBits laid{};
    for (uint32_t i = 0; i < size; ++i) laid.octets[i] = static_cast<uint8_t>(v >> (8 * (size - 1 - i)));
    int32_t most = static_cast<int32_t>(8 * size);
    laid.count = count > most ? most : count;
    return laid;
}

}  // namespace

void kivPrintBits(KivGlobal* world, const char* prefix, const uint8_t* bits, int32_t count,
                  const char* suffix) {
    int32_t shown = count;
    int32_t limit = fenk::printLimit32(world);
    if (world->printLimit != 0 && limit < count) shown = limit;
    fenk::PrintSink out{world};
    writeBits(out, prefix, bits, shown, count, suffix);
}

char* kivBitsToText(KivGlobal* world, const char* prefix, const uint8_t* bits, int32_t count,
                    const char* suffix) {
    // A negative count shows no bits, as in the print service.
    int64_t n = count > 0 ? count : 0;
    fenk::TextSink out = fenk::newText(
        world, std::strlen(prefix) + std::strlen(suffix) + static_cast<uint64_t>(n + n / 8 + 1));
    if (!out.at) return nullptr;
    char* text = out.at;
    writeBits(out, prefix, bits, count, count, suffix);
    return text;
}

void kivPrintBitString(KivGlobal* world, const uint8_t* bits, int32_t count) {
    kivPrintBits(world, "'", bits, count, "'B");
}

char* kivBitStringToText(KivGlobal* world, const uint8_t* bits, int32_t count) {
    return kivBitsToText(world, "'", bits, count, "'B");
}

void kivPrintBitsInInteger(KivGlobal* world, const void* value, uint32_t size, int32_t count) {
    IntegerBits laid = layOutInteger(value, size, count);
    kivPrintBitString(world, laid.octets, laid.count);
}

char* kivBitsInIntegerToText(KivGlobal* world, const void* value, uint32_t size, int32_t count) {
    IntegerBits laid = layOutInteger(value, size, count);
    return kivBitStringToText(world, laid.octets, laid.count);
}
