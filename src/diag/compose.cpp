#include "diag/compose.h"

#include <cstdio>
#include <cstring>

#include "diag/messages.h"
#include "kivapit.h"

namespace {

// Composing checks no lengths: its callers pass only short arguments (rule
// names), so the text always fits the 520-character message area.
size_t appendArgument(char* out, uint32_t kind, const void* argument) {
    if (!argument) return 0;
    switch (kind & fenk::kKindArgumentMask) {
        case fenk::kArgSigned:
            return static_cast<size_t>(
                std::sprintf(out, "%ld", static_cast<long>(*static_cast<const int32_t*>(argument))));
        case fenk::kArgReal:
            return static_cast<size_t>(std::sprintf(out, "%f", *static_cast<const double*>(argument)));
        case fenk::kArgText:
            return static_cast<size_t>(std::sprintf(out, "'%s'", static_cast<const char*>(argument)));
        default:
            return 0;
    }
}

bool echoToTrace(const KivGlobal* world, char prefix) {
    if (prefix == 'E' && (world->encodingFlags & 0x2)) return true;
    if (prefix == 'D' && (world->decodingFlags & 0x2)) return true;
    return world->privateState && (world->privateState->debugFlags & 0x40);
}

}  // namespace

int32_t kivComposeMessage(KivGlobal* world, char* destination, int32_t index, char prefix,
                          const void* argument) {
    const fenk::MessageRecord& record = fenk::messages[index];
    if (!destination) return record.code;
    char* out = destination;
    *out++ = prefix;
    size_t textLength = std::strlen(record.text);
    std::memcpy(out, record.text, textLength);
    out += textLength;
    out += appendArgument(out, record.kind, argument);
    std::memcpy(out, ".\n", 3);
    // The text goes out verbatim, never as a format.
    if (world && echoToTrace(world, prefix)) kivCompanionPrint(world, "%s", destination);
    return record.code;
}
