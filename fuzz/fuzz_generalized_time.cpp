// GeneralizedTime texts (slot 65): whatever is accepted has its fields in
// range, formats without failure under the same rules (slot 67), and the
// formatted text reads back to the same fields and formats to itself. The
// structure (slot 265) agrees with the fields.
#include "fuzz_time_input.h"

namespace {

struct Fields {
    uint32_t y, mo, d, h, mi, s, fv;
    uint16_t fd;
    int32_t zone;
};

int32_t parse(KivGlobal* w, const char* text, Fields& f) {
    return kivParseGeneralizedTime(w, text, &f.y, &f.mo, &f.d, &f.h, &f.mi, &f.s, &f.fv, &f.fd,
                                   &f.zone);
}

int32_t format(KivGlobal* w, const Fields& f, char* out) {
    return kivFormatGeneralizedTime(w, f.y, static_cast<int32_t>(f.mo), static_cast<int32_t>(f.d),
                                     f.h, f.mi, f.s, f.fv, f.fd, f.zone, out);
}

bool sameTime(const Fields& a, const Fields& b) {
    return a.y == b.y && a.mo == b.mo && a.d == b.d && a.h == b.h && a.mi == b.mi &&
           a.s == b.s && a.zone == b.zone;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fenk::fuzz::TimeInput in;
    if (!fenk::fuzz::takeTimeInput(data, size, in)) return 0;
    Fields f{};
    const int32_t code = parse(in.world, in.text, f);
    KivTimeStruct t{};
    if (kivGeneralizedTimeToStruct(in.world, &t, in.text) != code) std::abort();
    if (code != 0) {
        if (code != 12) std::abort();
        return 0;
    }
    if (f.y > 9999 || f.mo < 1 || f.mo > 12 || f.d < 1 || f.d > 31 || f.h > 23 || f.mi > 59 ||
        f.s > 59 || f.zone < -1439 || f.zone > 1439 || f.fd > size)
        std::abort();
    if (t.year != f.y || t.second != f.s || t.isUtc != (f.zone == 1) || t.milliseconds > 999)
        std::abort();
    char first[400], second[400];
    if (format(in.world, f, first) != 0) std::abort();
    Fields again{};
    if (parse(in.world, first, again) != 0 || !sameTime(f, again)) std::abort();
    if (format(in.world, again, second) != 0 || std::strcmp(first, second) != 0) std::abort();
    return 0;
}
