// Encoder and decoder flags. Both stores apply the same adjustment; the
// encoder store also refuses indefinite-length encoding (bit 5).
#include "api/api_slots.h"
#include "diag/compose.h"

namespace {

constexpr uint32_t kIndefiniteLength = 0x20;
constexpr int32_t kMessageIndefiniteLength = 58;

// Bit 17 is the caller's switch for the memory-violation trap and thread
// registration; bit 9 is the internal form that guarded operations test
// (set = no trap, no registration).
uint32_t adjustFlags(uint32_t f) {
    if (f & 0x40000000u) f |= 0x00400000u;
    if (f & 0x20000000u) f &= ~0x400u;
    if (f & 0x20000u) f &= ~0x200u;
    else f |= 0x200u;
    return f;
}

}  // namespace

int32_t kivStoreEncoderFlags(KivGlobal* world, uint32_t flags) {
    if (!world) return 6;
    int32_t result = 0;
    if (flags & kIndefiniteLength) {
        flags &= ~kIndefiniteLength;
        result = kivComposeMessage(world, world->messageText, kMessageIndefiniteLength, 'E',
                                   nullptr);
    }
    world->encodingFlags = adjustFlags(flags);
    return result;
}

int32_t kivStoreDecoderFlags(KivGlobal* world, uint32_t flags) {
    if (!world) return 6;
    world->decodingFlags = adjustFlags(flags);
    return 0;
}

int32_t kivStoreAllFlags(KivGlobal* world, uint32_t flags) {
    int32_t result = kivStoreEncoderFlags(world, flags);
    if (result != 6) kivStoreDecoderFlags(world, flags);
    return result;
}

uint32_t kivFetchEncoderFlags(KivGlobal* world) {
    return world ? world->encodingFlags : 0xFFFFFFFFu;
}

uint32_t kivFetchDecoderFlags(KivGlobal* world) {
    return world ? world->decodingFlags : 0xFFFFFFFFu;
}

uint32_t kivFetchAllFlags(KivGlobal* world) {
    return world ? (world->encodingFlags | world->decodingFlags) : 0xFFFFFFFFu;
}
