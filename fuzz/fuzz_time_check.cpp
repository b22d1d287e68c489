// The raising check (slot 234) run inside a jump frame, in silent mode so
// that the jump hands back the message index: only messages 9 and 73 to 78
// are raised, and the verdict agrees with the converters (slots 65, 66):
// under BER a text they accept passes (and for UTCTime the reverse too);
// under DER and CER a GeneralizedTime that passes the check is accepted.
#include <csetjmp>
#include <initializer_list>

#include "fuzz_time_input.h"

namespace {

int checkIndex(KivGlobal* world, const char* text, uint16_t kind) {
    jmp_buf frame;
    world->jumpBuffer = &frame;
    world->errorMode = 6;
    const int index = setjmp(frame);
    if (index == 0) kivCheckGeneralizedOrUTCTime(world, text, kind);
    world->jumpBuffer = nullptr;
    return index;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fenk::fuzz::TimeInput in;
    if (!fenk::fuzz::takeTimeInput(data, size, in)) return 0;
    KivGlobal* w = in.world;
    const bool canonical = w->encodingRules != 0;
    const bool lowercase = w->privateState->levelMask != 0;
    uint32_t f[8];
    uint16_t digits;
    int32_t zone;
    for (uint16_t kind : {0, 1}) {
        const int index = checkIndex(w, in.text, kind);
        if (index != 0 && index != 9 && (index < 73 || index > 78)) std::abort();
        const int32_t code =
            kind ? kivParseUtcTime(w, in.text, f, f + 1, f + 2, f + 3, f + 4, f + 5, &zone)
                 : kivParseGeneralizedTime(w, in.text, f, f + 1, f + 2, f + 3, f + 4, f + 5,
                                           f + 6, &digits, &zone);
        if (index >= 74 && code == 0) std::abort();
        if (!canonical && code == 0 && index != 0) std::abort();
        if (!canonical && kind && index == 0 && code != 0) std::abort();
        if (canonical && !kind && !lowercase && index == 0 && code != 0) std::abort();
    }
    return 0;
}
