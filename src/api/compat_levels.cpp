// Compatibility levels: each level stands for a fixed mask of levelMask bits
// that the time-type and REAL code read.
#include "api/api_slots.h"

namespace {
// Index = level.
constexpr uint32_t kLevelMasks[] = {0, 0x280FF, 0x280FE, 0x28080, 0x28000, 0x20000};
constexpr uint32_t kLevelCount = sizeof kLevelMasks / sizeof kLevelMasks[0];
}  // namespace

int32_t kivStoreLevel(KivGlobal* world, uint32_t level) {
    if (!world || level >= kLevelCount) return 6;
    world->privateState->levelMask = kLevelMasks[level];
    return 0;
}

int32_t kivFetchLevel(KivGlobal* world) {
    if (!world) return -1;
    uint32_t mask = world->privateState->levelMask;
    for (uint32_t level = 0; level < kLevelCount; ++level)
        if (kLevelMasks[level] == mask) return static_cast<int32_t>(level);
    return -2;
}

int32_t kivStoreLevelMask(KivGlobal* world, uint32_t mask) {
    if (!world) return 6;
    world->privateState->levelMask = mask;
    return 0;
}
