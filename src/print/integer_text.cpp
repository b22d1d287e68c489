// 64-bit integers as decimal text.
#include <cinttypes>

#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {
constexpr uint64_t kIntegerTextSize = 32;
}

char* kivInt64ToText(KivGlobal* world, int64_t value) {
    fenk::TextSink out = fenk::newText(world, kIntegerTextSize);
    char* text = out.at;
    out.put("%" PRId64, value);
    return text;
}

char* kivUInt64ToText(KivGlobal* world, uint64_t value) {
    fenk::TextSink out = fenk::newText(world, kIntegerTextSize);
    char* text = out.at;
    out.put("%" PRIu64, value);
    return text;
}
