// Helpers of the time-text tests: formatting into a fresh std::string and
// running a formatter under given encoding rules.
#ifndef FENK_TEST_TIME_TEXT_HELPERS_H
#define FENK_TEST_TIME_TEXT_HELPERS_H

#include <cstdio>
#include <string>

#include "fenkapi.h"

namespace fenk::test {

constexpr int32_t kBer = 0;
constexpr int32_t kDer = 3;
constexpr int32_t kCxer = 6;
constexpr int32_t kCer = 7;

// The text a formatter allocated through the table, released again; "#rc"
// when the formatter failed with rc.
template <class Format>
std::string formatted(KivGlobal* w, Format&& format) {
    char* text = nullptr;
    int32_t rc = format(&text);
    if (rc != 0) {
        char failure[32];
        std::snprintf(failure, sizeof failure, "#%d%s", rc, text ? " with text" : "");
        return failure;
    }
    std::string s(text);
    kivReleaseThroughTable(w, text);
    return s;
}

// The fields of a record in one line, for comparing records in tests.
inline std::string describe(const KivTimeFields& f) {
    char b[200];
    std::snprintf(b, sizeof b, "flags %04x C%d Y%d W%u M%u D%u %u:%u:%u .%u/%u res %u zone %02x %s%u:%u",
                  f.flags, f.century, f.year, f.week, f.month, f.day, f.hours, f.minutes,
                  f.seconds, f.fraction, f.fractionDigits, f.reserved, f.zoneFlags,
                  f.zoneNegative ? "-" : "+", f.zoneHours, f.zoneMinutes);
    return b;
}

inline std::string describe(const KivDurationFields& d) {
    char b[200];
    std::snprintf(b, sizeof b, "flags %08x %uY %uM %uW %uD %uH %uM %uS .%u/%u", d.flags, d.years,
                  d.months, d.weeks, d.days, d.hours, d.minutes, d.seconds, d.fraction,
                  d.fractionDigits);
    return b;
}

inline std::string normalized(KivGlobal* w, const char* text, int32_t rules = kBer) {
    w->encodingRules = rules;
    return formatted(w, [&](char** out) { return kivNormalizeTimeText(w, text, out); });
}

}  // namespace fenk::test

#endif
