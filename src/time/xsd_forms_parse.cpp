// Parsers of the XML Schema calendar forms. Their grammar is their own: a
// year has no "+" and is never zero, a zone is read as minutes, a fraction
// comes back as a pointer into the text and a count. Out-fields may be
// partly filled when a text fails.
#include "time/time_text.h"
#include "time/xsd_forms.h"

namespace fenk {
namespace {

// A run of exactly two digits (a longer run fails).
const char* twoDigits(const char* p, uint32_t* v) {
    uint32_t n = 0;
    p = scanDigitRun(p, v, &n);
    return p && n == 2 ? p : nullptr;
}

const char* expect(const char* p, const char* literal) {
    for (; p && *literal; ++literal, ++p)
        if (*p != *literal) return nullptr;
    return p;
}

const char* year(const char* p, int32_t* year) {
    const bool negative = *p == '-';
    if (negative) ++p;
    uint32_t v = 0;
    uint32_t n = 0;
    p = scanDigitRun(p, &v, &n);
    // The year must also fit the signed field it is handed back in.
    if (!p || n < 4 || v == 0 || v > 0x7FFFFFFFu) return nullptr;
    *year = negative ? -static_cast<int32_t>(v) : static_cast<int32_t>(v);
    return p;
}

const char* month(const char* p, int32_t* month) {
    uint32_t v = 0;
    p = twoDigits(p, &v);
    if (!p || v < 1 || v > 12) return nullptr;
    *month = static_cast<int32_t>(v);
    return p;
}

const char* day(const char* p, int32_t* day) {
    uint32_t v = 0;
    p = twoDigits(p, &v);
    if (!p || v < 1 || v > 31) return nullptr;
    *day = static_cast<int32_t>(v);
    return p;
}

const char* date(const char* p, int32_t* y, int32_t* m, int32_t* d) {
    p = year(p, y);
    p = p && *p == '-' ? month(p + 1, m) : nullptr;
    return p && *p == '-' ? day(p + 1, d) : nullptr;
}

// The zone after the last field; nothing after it is looked at.
int32_t zone(const char* p, int32_t* zone) {
    if (!p) return kTimeTextFailure;
    if (*p == '\0') {
        *zone = kZoneNone;
        return 0;
    }
    if (*p == 'Z') {
        *zone = kZoneUtc;
        return 0;
    }
    if (*p != '+' && *p != '-') return kTimeTextFailure;
    const bool negative = *p == '-';
    uint32_t hours = 0;
    uint32_t minutes = 0;
    p = twoDigits(p + 1, &hours);
    p = p && *p == ':' ? twoDigits(p + 1, &minutes) : nullptr;
    const uint32_t total = hours * 60 + minutes;  // minutes above 59 are taken
    if (!p || total > static_cast<uint32_t>(kZoneLimit)) return kTimeTextFailure;
    *zone = negative ? -static_cast<int32_t>(total) : static_cast<int32_t>(total);
    return 0;
}

// hh:mm:ss without range tests, then an optional fraction.
const char* time(const char* p, uint32_t* h, uint32_t* m, uint32_t* s, const char** fraction,
                 uint32_t* count) {
    p = twoDigits(p, h);
    p = p && *p == ':' ? twoDigits(p + 1, m) : nullptr;
    p = p && *p == ':' ? twoDigits(p + 1, s) : nullptr;
    if (!p) return nullptr;
    *fraction = nullptr;
    *count = 0;
    if (*p != '.') return p;
    const char* digits = ++p;
    while (isDigit(*p)) ++p;
    if (p != digits) {
        *fraction = digits;
        *count = static_cast<uint32_t>(p - digits);
    }
    return p;
}

// One duration component: a digit run taken only when its designator
// follows; otherwise 0 and nothing consumed. An empty run before its
// designator counts as 0. Null when the run overflows.
const char* component(const char* p, char designator, uint32_t* value) {
    uint32_t n = 0;
    const char* after = scanDigitRun(p, value, &n);
    if (!after) return nullptr;
    if (*after == designator) return after + 1;
    *value = 0;
    return p;
}

}  // namespace
}  // namespace fenk

using fenk::kTimeTextFailure;

int32_t kivTextToDuration(KivGlobal* world, const char* text, uint8_t* negative, uint32_t* years,
                          uint32_t* months, uint32_t* days, uint32_t* hours, uint32_t* minutes,
                          uint32_t* seconds, const char** fraction, uint32_t* fractionCount) {
    if (!world || !text || !negative || !years || !months || !days || !hours || !minutes ||
        !seconds || !fraction || !fractionCount)
        return kTimeTextFailure;
    const char* p = text;
    *negative = *p == '-';
    if (*negative) ++p;
    if (*p++ != 'P') return kTimeTextFailure;
    *years = *months = *days = *hours = *minutes = *seconds = 0;
    *fraction = nullptr;
    *fractionCount = 0;
    if (fenk::isDigit(*p)) {
        p = fenk::component(p, 'Y', years);
        p = p ? fenk::component(p, 'M', months) : nullptr;
        p = p ? fenk::component(p, 'D', days) : nullptr;
        if (!p) return kTimeTextFailure;
    } else if (*p != 'T') {
        return kTimeTextFailure;
    }
    if (*p != 'T') return 0;
    p = fenk::component(p + 1, 'H', hours);
    p = p ? fenk::component(p, 'M', minutes) : nullptr;
    if (!p) return kTimeTextFailure;
    // Seconds followed by a decimal sign are taken without their designator.
    uint32_t n = 0;
    const char* after = fenk::scanDigitRun(p, seconds, &n);
    if (!after) return kTimeTextFailure;
    if (*after == '.') {
        const char* digits = after + 1;
        if (!fenk::isDigit(*digits)) return kTimeTextFailure;
        for (after = digits; fenk::isDigit(*after);) ++after;
        *fraction = digits;
        *fractionCount = static_cast<uint32_t>(after - digits);
    } else if (*after != 'S') {
        *seconds = 0;
    }
    return 0;
}

int32_t kivTextToDateTime(KivGlobal* world, const char* text, int32_t* year, int32_t* month,
                          int32_t* day, uint32_t* hour, uint32_t* minute, uint32_t* second,
                          const char** fraction, uint32_t* fractionCount, int32_t* zone) {
    if (!world || !text || !year || !month || !day || !hour || !minute || !second || !fraction ||
        !fractionCount || !zone)
        return kTimeTextFailure;
    const char* p = fenk::date(text, year, month, day);
    p = p && *p == 'T' ? fenk::time(p + 1, hour, minute, second, fraction, fractionCount)
                       : nullptr;
    return fenk::zone(p, zone);
}

int32_t kivTextToTime(KivGlobal* world, const char* text, uint32_t* hour, uint32_t* minute,
                      uint32_t* second, const char** fraction, uint32_t* fractionCount,
                      int32_t* zone) {
    if (!world || !text || !hour || !minute || !second || !fraction || !fractionCount || !zone)
        return kTimeTextFailure;
    return fenk::zone(fenk::time(text, hour, minute, second, fraction, fractionCount), zone);
}

int32_t kivTextToDate(KivGlobal* world, const char* text, int32_t* year, int32_t* month,
                      int32_t* day, int32_t* zone) {
    if (!world || !text || !year || !month || !day || !zone) return kTimeTextFailure;
    return fenk::zone(fenk::date(text, year, month, day), zone);
}

int32_t kivTextToYearMonth(KivGlobal* world, const char* text, int32_t* year, int32_t* month,
                           int32_t* zone) {
    if (!world || !text || !year || !month || !zone) return kTimeTextFailure;
    const char* p = fenk::year(text, year);
    return fenk::zone(p && *p == '-' ? fenk::month(p + 1, month) : nullptr, zone);
}

int32_t kivTextToYear(KivGlobal* world, const char* text, int32_t* year, int32_t* zone) {
    if (!world || !text || !year || !zone) return kTimeTextFailure;
    return fenk::zone(fenk::year(text, year), zone);
}

int32_t kivTextToMonthDay(KivGlobal* world, const char* text, int32_t* month, int32_t* day,
                          int32_t* zone) {
    if (!world || !text || !month || !day || !zone) return kTimeTextFailure;
    const char* p = fenk::expect(text, "--");
    p = p ? fenk::month(p, month) : nullptr;
    return fenk::zone(p && *p == '-' ? fenk::day(p + 1, day) : nullptr, zone);
}

int32_t kivTextToDay(KivGlobal* world, const char* text, int32_t* day, int32_t* zone) {
    if (!world || !text || !day || !zone) return kTimeTextFailure;
    const char* p = fenk::expect(text, "---");
    return fenk::zone(p ? fenk::day(p, day) : nullptr, zone);
}

int32_t kivTextToMonth(KivGlobal* world, const char* text, int32_t* month, int32_t* zone) {
    if (!world || !text || !month || !zone) return kTimeTextFailure;
    const char* p = fenk::expect(text, "--");
    return fenk::zone(p ? fenk::month(p, month) : nullptr, zone);
}
