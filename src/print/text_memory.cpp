// Texts of the to-text services: taken from temporary memory through the
// world's table, given back with slot 148.
#include <cstdio>

#include "api/table_memory.h"
#include "print/print_sink.h"
#include "print/print_slots.h"

namespace fenk {

void TextSink::put(const char* format, ...) {
    if (!at) return;
    va_list args;
    va_start(args, format);
    int written = std::vsnprintf(at, static_cast<size_t>(end - at), format, args);
    va_end(args);
    if (written > 0) at += written < end - at ? written : end - at - 1;
}

void CountSink::put(const char* format, ...) {
    va_list args;
    va_start(args, format);
    int written = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    if (written > 0) length += static_cast<size_t>(written);
}

TextSink newText(KivGlobal* world, uint64_t size) {
    auto* text =
        static_cast<char*>(KIV_TABLE_CALL(world, KivTempAllocFn, kivSlotTempAlloc)(world, size));
    if (text) *text = '\0';
    return TextSink{text, text ? text + size : nullptr};
}

}  // namespace fenk

void kivFreeText(KivGlobal* world, char* text) {
    KIV_TABLE_CALL(world, KivTempReleaseFn, kivSlotTempRelease)(world, text);
}
