// Drives the setting slots with arbitrary values and checks the invariants
// that hold whatever the input: the flag adjustment, the level mapping and
// the work-buffer arithmetic.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

uint32_t take32(const uint8_t*& data, size_t& size) {
    uint32_t v = 0;
    size_t n = size < 4 ? size : 4;
    std::memcpy(&v, data, n);
    data += n;
    size -= n;
    return v;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) std::abort();
    while (size > 0) {
        uint32_t op = take32(data, size) % 5;
        uint32_t v = take32(data, size);
        switch (op) {
            case 0: {
                int32_t r = kivStoreEncoderFlags(&world, v);
                uint32_t f = world.encodingFlags;
                if ((r == 13) != ((v & 0x20) != 0) || (f & 0x20)) std::abort();
                if (((f & 0x200) != 0) == ((f & 0x20000) != 0)) std::abort();
                break;
            }
            case 1: {
                kivStoreDecoderFlags(&world, v);
                uint32_t f = world.decodingFlags;
                if ((f & 0x40000000) && !(f & 0x400000)) std::abort();
                if ((f & 0x20000000) && (f & 0x400)) std::abort();
                break;
            }
            case 2: {
                int32_t r = kivStoreLevel(&world, v);
                if ((r == 0) != (v <= 5)) std::abort();
                if (r == 0 && kivFetchLevel(&world) != static_cast<int32_t>(v)) std::abort();
                break;
            }
            case 3: {
                KivWorkBuffer b{static_cast<int32_t>(v), reinterpret_cast<void*>(uintptr_t{v} * 7)};
                if (kivStoreWorkBuffer(&world, &b) == 0) {
                    uint32_t len = world.privateState->userBufferLength;
                    auto at = reinterpret_cast<uintptr_t>(world.privateState->userBufferAddress);
                    if (len < 16 || len % 16 || at % 8 || at - uintptr_t{v} * 7 > 7) std::abort();
                    if (len + (at - uintptr_t{v} * 7) > v) std::abort();
                }
                break;
            }
            default:
                kivStoreLevelMask(&world, v);
                if (kivFetchLevel(&world) < -2) std::abort();
        }
    }
    return 0;
}
