// The message table: every diagnostic of the system is an index into it.
#ifndef FENK_DIAG_MESSAGES_H
#define FENK_DIAG_MESSAGES_H

#include <cstdint>

namespace fenk {

struct MessageRecord {
    const char* text;  // begins with its own number and class, e.g. "0103S: "
    int32_t code;      // the return code the message yields
    uint32_t kind;     // bits 0-3 argument kind; 0x40 no PDU context; 0x20 carried only
};

constexpr int32_t kMessageCount = 285;

enum ArgumentKind : uint32_t {
    kArgNone = 0,
    kArgUnformatted = 1,
    kArgTag = 2,
    kArgSigned = 3,
    kArgUnsigned = 4,
    kArgReal = 5,
    kArgText = 6,
    kArgCharacter = 7,
    kArgUnformattedToo = 8,
};

constexpr uint32_t kKindArgumentMask = 0x0F;
constexpr uint32_t kKindNoPduContext = 0x40;

extern const MessageRecord messages[kMessageCount];

}  // namespace fenk

#endif
