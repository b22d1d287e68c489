// UTCTime texts (slot 66): whatever is accepted has its fields in range; its
// seconds (slot 289) are refused or agree with those of the same instant
// written as GeneralizedTime (slot 287); written back under BER (slot 68) it
// reads to the same fields. The structure (slot 266) agrees.
#include <cstdio>

#include "fuzz_time_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fenk::fuzz::TimeInput in;
    if (!fenk::fuzz::takeTimeInput(data, size, in)) return 0;
    KivGlobal* w = in.world;
    uint32_t y, mo, d, h, mi, s;
    int32_t zone;
    const int32_t code = kivParseUtcTime(w, in.text, &y, &mo, &d, &h, &mi, &s, &zone);
    KivTimeStruct t{};
    if (kivUtcTimeToStruct(w, &t, in.text) != code) std::abort();
    if (code != 0) {
        if (code != 12) std::abort();
        return 0;
    }
    if (y > 99 || mo < 1 || mo > 12 || d < 1 || d > 31 || h > 23 || mi > 59 || s > 59 ||
        zone < -6039 || zone > 6039 || t.year != y || t.milliseconds != 0)
        std::abort();

    // Zone 1 ('Z') is written as 'Z' by slot 68 when given 0.
    const int32_t written = zone == 1 ? 0 : zone;
    const int32_t rules = w->encodingRules;
    w->encodingRules = 0;
    char text[32];
    const int32_t formatted = kivFormatUtcTime(w, y, static_cast<int32_t>(mo),
                                               static_cast<int32_t>(d), h, mi, s, written, text);
    if ((formatted == 0) != (written >= -1440 && written <= 1440)) std::abort();
    uint32_t y2, mo2, d2, h2, mi2, s2;
    int32_t zone2;
    if (formatted == 0 &&
        (kivParseUtcTime(w, text, &y2, &mo2, &d2, &h2, &mi2, &s2, &zone2) != 0 || y2 != y ||
         mo2 != mo || d2 != d || h2 != h || mi2 != mi || s2 != s))
        std::abort();

    uint64_t seconds = 0, gtSeconds = 0;
    const int32_t secondsCode = kivUtcTimeTextToSeconds(w, in.text, &seconds);
    if (zone >= -1439 && zone <= 1439) {
        const int32_t m = zone < 0 ? -zone : zone;
        char gt[64];
        std::snprintf(gt, sizeof gt, "%04u%02u%02u%02u%02u%02u%c%02d%02d", y < 50 ? 2000 + y : 1900 + y,
                      mo, d, h, mi, s, zone < 0 ? '-' : '+', m / 60, m % 60);
        if (kivGeneralizedTimeTextToSeconds(w, gt, &gtSeconds) != secondsCode) std::abort();
        if (secondsCode == 0 && seconds != gtSeconds) std::abort();
    } else if (secondsCode != 12) {
        std::abort();
    }
    w->encodingRules = rules;
    return 0;
}
