// The input of the time-text fuzz targets: the first byte picks the rules
// (BER, DER or CER) and whether levelMask lets a lowercase 'z' pass; the
// rest, up to its first NUL, is the text.
#ifndef FENK_FUZZ_TIME_INPUT_H
#define FENK_FUZZ_TIME_INPUT_H

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

namespace fenk::fuzz {

struct TimeInput {
    KivGlobal* world;
    char text[320];
};

inline bool takeTimeInput(const uint8_t* data, size_t size, TimeInput& input) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) std::abort();
    if (size == 0 || size >= sizeof input.text) return false;
    static constexpr int32_t kRules[] = {0, 3, 7};
    world.encodingRules = kRules[data[0] % 3];
    world.privateState->levelMask = (data[0] & 0x80) ? 0x8000 : 0;
    std::memcpy(input.text, data + 1, size - 1);
    input.text[size - 1] = '\0';
    input.world = &world;
    return true;
}

}  // namespace fenk::fuzz

#endif
