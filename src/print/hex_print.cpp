// Octets in value notation: two upper-case hexadecimal digits each, no
// separators ('0A1B'H).
#include <cstring>

#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {

template <class Sink>
void writeHex(Sink& out, const char* prefix, const uint8_t* octets, int32_t shown, int32_t length,
              const char* suffix) {
    if (prefix) out.put("%s", prefix);
    for (int32_t i = 0; i < shown; ++i) out.put("%02X", octets[i]);
    if (suffix) out.put(shown < length ? " ...%s" : "%s", suffix);
}

}  // namespace

void kivPrintHex(KivGlobal* world, const char* prefix, const uint8_t* octets, int32_t length,
                 const char* suffix) {
    // The limit counts digits: 17 octets show at the default 35.
    int32_t shown = length;
    int32_t limit = fenk::printLimit32(world);
    if (world->printLimit != 0 && 2 * int64_t{length} > limit) shown = limit / 2;
    fenk::PrintSink out{world};
    writeHex(out, prefix, octets, shown, length, suffix);
}

char* kivHexToText(KivGlobal* world, const char* prefix, const uint8_t* octets, int32_t length,
                   const char* suffix) {
    int64_t n = length > 0 ? length : 0;
    fenk::TextSink out = fenk::newText(
        world, std::strlen(prefix) + std::strlen(suffix) + static_cast<uint64_t>(2 * n + 1));
    if (!out.at) return nullptr;
    char* text = out.at;
    writeHex(out, prefix, octets, length, length, suffix);
    return text;
}

void kivPrintOctetString(KivGlobal* world, const uint8_t* octets, int32_t length) {
    kivPrintHex(world, "'", octets, length, "'H");
}

char* kivOctetStringToText(KivGlobal* world, const uint8_t* octets, int32_t length) {
    return kivHexToText(world, "'", octets, length, "'H");
}
