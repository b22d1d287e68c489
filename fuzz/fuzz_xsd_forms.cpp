// Feeds arbitrary text to every parser of the XML Schema calendar forms.
// Whatever a parser takes, the matching writer must accept when its ranges
// allow and the written text must read back to the same fields.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

KivGlobal world;

void release(char* text) { kivReleaseThroughTable(&world, text); }

bool timeInRange(uint32_t h, uint32_t m, uint32_t s, uint32_t n) {
    return m <= 59 && s <= 60 && (h < 24 || (h == 24 && m == 0 && s == 0 && n == 0));
}

void dateTime(const char* t) {
    int32_t y, mo, d, z, y2, mo2, d2, z2;
    uint32_t h, mi, s, n, h2, mi2, s2, n2;
    const char *f, *f2;
    if (kivTextToDateTime(&world, t, &y, &mo, &d, &h, &mi, &s, &f, &n, &z) != 0) return;
    char* out = nullptr;
    const int32_t rc = kivDateTimeToText(&world, y, mo, d, h, mi, s, f, n, z, &out);
    if (rc != 0) {
        if (timeInRange(h, mi, s, n) || out) std::abort();
        return;
    }
    if (kivTextToDateTime(&world, out, &y2, &mo2, &d2, &h2, &mi2, &s2, &f2, &n2, &z2) != 0 ||
        y2 != y || mo2 != mo || d2 != d || h2 != h || mi2 != mi || s2 != s || z2 != z ||
        n2 != n || (n && std::memcmp(f2, f, n) != 0))
        std::abort();
    release(out);
}

void duration(const char* t) {
    uint8_t neg;
    uint32_t v[6], w[6], n, n2;
    const char *f, *f2;
    if (kivTextToDuration(&world, t, &neg, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &f, &n) != 0)
        return;
    char* out = nullptr;
    if (kivDurationToText(&world, neg, v[0], v[1], v[2], v[3], v[4], v[5], f, n, &out) != 0)
        std::abort();
    uint8_t neg2;
    if (kivTextToDuration(&world, out, &neg2, &w[0], &w[1], &w[2], &w[3], &w[4], &w[5], &f2,
                          &n2) != 0 ||
        std::memcmp(v, w, sizeof v) != 0 || n2 != n || (n && std::memcmp(f, f2, n) != 0))
        std::abort();
    release(out);
}

// The forms with a year, month and day in any combination and a zone.
void calendar(const char* t) {
    int32_t y, m, d, z, y2, m2, d2, z2;
    char* out = nullptr;
    if (kivTextToDate(&world, t, &y, &m, &d, &z) == 0) {
        if (kivDateToText(&world, y, m, d, z, &out) != 0 ||
            kivTextToDate(&world, out, &y2, &m2, &d2, &z2) != 0 || y2 != y || m2 != m ||
            d2 != d || z2 != z)
            std::abort();
        release(out);
        out = nullptr;
    }
    if (kivTextToYearMonth(&world, t, &y, &m, &z) == 0) {
        if (kivYearMonthToText(&world, y, m, z, &out) != 0 ||
            kivTextToYearMonth(&world, out, &y2, &m2, &z2) != 0 || y2 != y || m2 != m || z2 != z)
            std::abort();
        release(out);
        out = nullptr;
    }
    if (kivTextToYear(&world, t, &y, &z) == 0) {
        if (kivYearToText(&world, y, z, &out) != 0 || kivTextToYear(&world, out, &y2, &z2) != 0 ||
            y2 != y || z2 != z)
            std::abort();
        release(out);
        out = nullptr;
    }
    if (kivTextToMonthDay(&world, t, &m, &d, &z) == 0) {
        if (kivMonthDayToText(&world, m, d, z, &out) != 0 ||
            kivTextToMonthDay(&world, out, &m2, &d2, &z2) != 0 || m2 != m || d2 != d || z2 != z)
            std::abort();
        release(out);
        out = nullptr;
    }
    if (kivTextToDay(&world, t, &d, &z) == 0) {
        if (kivDayToText(&world, d, z, &out) != 0 || kivTextToDay(&world, out, &d2, &z2) != 0 ||
            d2 != d || z2 != z)
            std::abort();
        release(out);
        out = nullptr;
    }
    if (kivTextToMonth(&world, t, &m, &z) == 0) {
        if (kivMonthToText(&world, m, z, &out) != 0 || kivTextToMonth(&world, out, &m2, &z2) != 0 ||
            m2 != m || z2 != z)
            std::abort();
        release(out);
    }
}

void time(const char* t) {
    uint32_t h, m, s, n;
    const char* f;
    int32_t z;
    if (kivTextToTime(&world, t, &h, &m, &s, &f, &n, &z) != 0) return;
    char* out = nullptr;
    const int32_t rc = kivTimeToText(&world, h, m, s, f, n, z, &out);
    if ((rc == 0) != timeInRange(h, m, s, n) || (rc != 0 && out)) std::abort();
    if (out) release(out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) return 0;
    std::string text(reinterpret_cast<const char*>(data), size);
    const char* t = text.c_str();  // stops at the first NUL of the input
    dateTime(t);
    duration(t);
    calendar(t);
    time(t);
    return 0;
}
