// Parsing ISO 8601 time texts into KivTimeFields and KivDurationFields: the
// point and duration grammars, the recurrence prefix, classification into
// the ten text forms, and one parser per form. Nothing here raises: every
// failure is 12.
#include <cstring>

#include "time/time_text.h"

namespace fenk {
namespace {

constexpr uint16_t kDateFlags = KIV_TF_YEAR | KIV_TF_CENTURY;

// A digit run with its sign as a signed 32-bit field; false when it does
// not fit (the value would otherwise come back with the wrong sign).
bool signedValue(char sign, uint32_t magnitude, int32_t* out) {
    if (sign == '-') {
        if (magnitude > 0x80000000u) return false;
        *out = static_cast<int32_t>(0u - magnitude);
    } else {
        if (magnitude > 0x7FFFFFFFu) return false;
        *out = static_cast<int32_t>(magnitude);
    }
    return true;
}

bool leapYear(int32_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

uint32_t daysInMonth(int32_t year, uint32_t month) {
    static constexpr uint8_t days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && leapYear(year) ? 29 : days[month - 1];
}

// Exactly n digits with a value from low to high.
const char* fixedInRange(const char* p, uint32_t n, uint32_t low, uint32_t high, uint32_t* v) {
    p = scanFixedDigits(p, n, v);
    return p && *v >= low && *v <= high ? p : nullptr;
}

// The date after its year: week, ordinal day or month, then the day.
const char* scanDateAfterYear(const char* q, KivTimeFields* f) {
    uint32_t v = 0;
    uint32_t n = 0;
    if (q[1] == 'W') {
        q = fixedInRange(q + 2, 2, 1, 53, &v);
        if (!q) return nullptr;
        f->flags |= KIV_TF_WEEK;
        f->week = static_cast<uint16_t>(v);
        if (*q != '-') return q;
        q = fixedInRange(q + 1, 1, 1, 7, &v);
    } else {
        q = scanDigitRun(q + 1, &v, &n);
        if (!q) return nullptr;
        if (n == 3) {
            // Ordinal days run to 366 whatever the year.
            if (v < 1 || v > 366 || *q == '-') return nullptr;
            f->flags |= KIV_TF_DAY;
            f->day = static_cast<uint16_t>(v);
            return q;
        }
        if (n != 2 || v < 1 || v > 12) return nullptr;
        f->flags |= KIV_TF_MONTH;
        f->month = static_cast<uint16_t>(v);
        if (*q != '-') return q;
        q = fixedInRange(q + 1, 2, 1, daysInMonth(f->year, f->month), &v);
    }
    if (!q) return nullptr;
    f->flags |= KIV_TF_DAY;
    f->day = static_cast<uint16_t>(v);
    return q;
}

const char* scanTimeOfDay(const char* q, KivTimeFields* f) {
    uint32_t v = 0;
    uint32_t n = 0;
    q = fixedInRange(q, 2, 0, 24, &v);
    if (!q) return nullptr;
    f->flags |= KIV_TF_HOUR;
    f->hours = static_cast<uint16_t>(v);
    const uint32_t afterMidnight = f->hours == 24 ? 0 : 1;  // hour 24 allows only zeros
    if (*q == ':') {
        q = fixedInRange(q + 1, 2, 0, 59 * afterMidnight, &v);
        if (!q) return nullptr;
        f->flags |= KIV_TF_MINUTE;
        f->minutes = static_cast<uint16_t>(v);
        if (*q == ':') {
            q = fixedInRange(q + 1, 2, 0, 60 * afterMidnight, &v);
            if (!q) return nullptr;
            f->flags |= KIV_TF_SECOND;
            f->seconds = static_cast<uint16_t>(v);
        }
    }
    if (*q == '.' || *q == ',') {
        q = scanDigitRun(q + 1, &v, &n);
        if (!q || n == 0 || (v != 0 && !afterMidnight)) return nullptr;
        f->flags |= KIV_TF_FRACTION;
        f->fractionDigits = n;
        f->fraction = v;
    }
    if (*q == 'Z') {
        f->flags |= KIV_TF_UTC;
        return q + 1;
    }
    if (*q == '+' || *q == '-') {
        f->zoneNegative = *q == '-';
        q = fixedInRange(q + 1, 2, 0, 15, &v);
        if (!q) return nullptr;
        f->flags |= KIV_TF_ZONE;
        f->zoneHours = static_cast<uint16_t>(v);
        if (*q == ':') {
            q = fixedInRange(q + 1, 2, 0, 59, &v);
            if (!q) return nullptr;
            f->zoneFlags |= KIV_TF_ZONE_MINUTES;
            f->zoneMinutes = static_cast<uint16_t>(v);
        }
    }
    return q;
}

// The end point may lack only the start's time difference.
bool endFlagsFit(const KivTimeFields& start, const KivTimeFields& end) {
    return end.flags == start.flags || end.flags == (start.flags & ~KIV_TF_ZONE);
}

const char* expect(const char* p, char c) { return p && *p == c ? p + 1 : nullptr; }

int32_t wholeText(const char* p) { return p && *p == '\0' ? 0 : kTimeTextFailure; }

// The point grammar: a pointer after the point, or null.
const char* scanTimePoint(const char* p, KivTimeFields* f) {
    *f = KivTimeFields{};
    const char* q = p;
    char sign = 0;
    if (*q == '-' || *q == '+') sign = *q++;
    uint32_t v = 0;
    uint32_t n = 0;
    q = scanDigitRun(q, &v, &n);
    if (!q) return nullptr;
    if (*q == 'C') {
        if (n < 2 || !signedValue(sign, v, &f->century)) return nullptr;
        f->flags = KIV_TF_CENTURY;
        ++q;
    } else if (n < 4) {
        if (sign) return nullptr;
        q = p;  // no date: the time of day starts the point
    } else {
        if (!signedValue(sign, v, &f->year)) return nullptr;
        f->flags = KIV_TF_YEAR;
        if (*q == '-') q = scanDateAfterYear(q, f);
        if (!q) return nullptr;
    }
    if (f->flags & kDateFlags) {
        if (*q != 'T') return q;
        if (!(f->flags & KIV_TF_DAY)) return nullptr;
        ++q;
    }
    return scanTimeOfDay(q, f);
}

// "R", then "/" (unlimited, -1) or a count without leading zeros and "/".
const char* scanRecurrence(const char* p, int32_t* count) {
    if (*p++ != 'R') return nullptr;
    if (*p == '/') {
        *count = -1;
        return p + 1;
    }
    if (*p == '0') return nullptr;
    uint32_t v = 0;
    uint32_t n = 0;
    p = scanDigitRun(p, &v, &n);
    // A count beyond 32-bit signed range would read back as "unlimited".
    if (!p || n == 0 || *p != '/' || v > 0x7FFFFFFFu) return nullptr;
    *count = static_cast<int32_t>(v);
    return p + 1;
}

}  // namespace

int32_t parseTimeText(KivGlobal* world, const char* text, TimeText* t) {
    t->form = kivClassifyTimeText(world, text);
    switch (t->form) {
        case kivTimeFormPoint: return kivParseTimePoint(world, text, &t->start);
        case kivTimeFormDuration: return kivParseDuration(world, text, &t->duration);
        case kivTimeFormStartEnd: return kivParseStartEnd(world, text, &t->start, &t->end);
        case kivTimeFormStartDuration:
            return kivParseStartDuration(world, text, &t->start, &t->duration);
        case kivTimeFormDurationEnd:
            return kivParseDurationEnd(world, text, &t->duration, &t->end);
        case kivTimeFormRecurringDuration:
            return kivParseRecurringDuration(world, text, &t->duration, &t->count);
        case kivTimeFormRecurringStartEnd:
            return kivParseRecurringStartEnd(world, text, &t->start, &t->end, &t->count);
        case kivTimeFormRecurringStartDuration:
            return kivParseRecurringStartDuration(world, text, &t->start, &t->duration, &t->count);
        case kivTimeFormRecurringDurationEnd:
            return kivParseRecurringDurationEnd(world, text, &t->duration, &t->end, &t->count);
        default: return kTimeTextFailure;
    }
}

}  // namespace fenk

using fenk::expect;
using fenk::scanRecurrence;
using fenk::scanTimePoint;
using fenk::wholeText;

const char* kivScanDuration(const char* text, KivDurationFields* d, uint8_t skipZero) {
    if (!text || !d || *text != 'P') return nullptr;
    *d = KivDurationFields{};
    // Designators in their strict order; weeks stand alone.
    struct Designator {
        char letter;
        bool timeSection;
        uint32_t flag;
        uint32_t KivDurationFields::*field;
    };
    static constexpr Designator order[] = {
        {'Y', false, KIV_DF_YEARS, &KivDurationFields::years},
        {'M', false, KIV_DF_MONTHS, &KivDurationFields::months},
        {'D', false, KIV_DF_DAYS, &KivDurationFields::days},
        {'H', true, KIV_DF_HOURS, &KivDurationFields::hours},
        {'M', true, KIV_DF_MINUTES, &KivDurationFields::minutes},
        {'S', true, KIV_DF_SECONDS, &KivDurationFields::seconds},
    };
    constexpr int kWeeks = 6;
    constexpr int kSeconds = 5;
    const char* p = text + 1;
    bool timeSection = false;
    int last = -1;  // rank of the last component read
    uint32_t lastFlag = 0;
    for (;;) {
        if (*p == 'T') {
            if (timeSection || !fenk::isDigit(p[1])) return nullptr;
            timeSection = true;
            ++p;
            continue;
        }
        if (!fenk::isDigit(*p)) break;
        uint32_t v = 0;
        uint32_t n = 0;
        const char* digits = p;
        p = fenk::scanDigitRun(p, &v, &n);
        if (!p || (n > 1 && *digits == '0')) return nullptr;
        bool fraction = false;
        if (*p == '.' || *p == ',') {
            p = fenk::scanDigitRun(p + 1, &d->fraction, &d->fractionDigits);
            if (!p || d->fractionDigits == 0) return nullptr;
            fraction = true;
        }
        int rank = -1;
        if (*p == 'W' && !timeSection) {
            if (last != -1) return nullptr;
            rank = kWeeks;
            d->weeks = v;
            lastFlag = KIV_DF_WEEKS;
        } else {
            for (int i = last + 1; i <= kSeconds; ++i)
                if (order[i].letter == *p && order[i].timeSection == timeSection) rank = i;
            if (rank < 0) return nullptr;
            d->*order[rank].field = v;
            lastFlag = order[rank].flag;
        }
        if (!skipZero || v != 0) d->flags |= lastFlag;
        last = rank;
        ++p;
        if (fraction) {
            d->flags |= KIV_DF_FRACTION;
            break;
        }
        if (rank == kWeeks || rank == kSeconds) break;
    }
    if (!lastFlag) return nullptr;
    d->flags |= lastFlag;
    return p;
}

int32_t kivClassifyTimeText(KivGlobal* world, const char* text) {
    if (!world || !text) return kivTimeFormNone;
    if (text[0] != 'R') {
        if (std::strchr(text, '/')) {
            if (text[0] == 'P') return kivTimeFormDurationEnd;
            return std::strchr(text, 'P') ? kivTimeFormStartDuration : kivTimeFormStartEnd;
        }
        if (text[0] == 'P') return kivTimeFormDuration;
        if (fenk::isDigit(text[0]) || text[0] == '-' || text[0] == '+') return kivTimeFormPoint;
        return kivTimeFormNone;
    }
    const char* p = text + 1;
    while (fenk::isDigit(*p)) ++p;
    if (*p++ != '/') return kivTimeFormNone;
    if (*p == 'P')
        return std::strchr(p + 1, '/') ? kivTimeFormRecurringDurationEnd
                                       : kivTimeFormRecurringDuration;
    return std::strchr(p, 'P') ? kivTimeFormRecurringStartDuration
                               : kivTimeFormRecurringStartEnd;
}

int32_t kivParseTimePoint(KivGlobal* world, const char* text, KivTimeFields* point) {
    if (!world || !text || !point) return fenk::kTimeTextFailure;
    return wholeText(scanTimePoint(text, point));
}

int32_t kivParseDuration(KivGlobal* world, const char* text, KivDurationFields* duration) {
    if (!world || !text || !duration) return fenk::kTimeTextFailure;
    return wholeText(kivScanDuration(text, duration, 0));
}

namespace {

// The interval grammars after any recurrence prefix.
const char* scanStartEnd(const char* p, KivTimeFields* start, KivTimeFields* end) {
    p = expect(scanTimePoint(p, start), '/');
    p = p ? scanTimePoint(p, end) : nullptr;
    return p && fenk::endFlagsFit(*start, *end) ? p : nullptr;
}

const char* scanStartDuration(const char* p, KivTimeFields* start, KivDurationFields* d) {
    p = expect(scanTimePoint(p, start), '/');
    return p ? kivScanDuration(p, d, 0) : nullptr;
}

const char* scanDurationEnd(const char* p, KivDurationFields* d, KivTimeFields* end) {
    p = expect(kivScanDuration(p, d, 0), '/');
    return p ? scanTimePoint(p, end) : nullptr;
}

}  // namespace

int32_t kivParseStartEnd(KivGlobal* world, const char* text, KivTimeFields* start,
                         KivTimeFields* end) {
    if (!world || !text || !start || !end) return fenk::kTimeTextFailure;
    return wholeText(scanStartEnd(text, start, end));
}

int32_t kivParseStartDuration(KivGlobal* world, const char* text, KivTimeFields* start,
                              KivDurationFields* duration) {
    if (!world || !text || !start || !duration) return fenk::kTimeTextFailure;
    return wholeText(scanStartDuration(text, start, duration));
}

int32_t kivParseDurationEnd(KivGlobal* world, const char* text, KivDurationFields* duration,
                            KivTimeFields* end) {
    if (!world || !text || !duration || !end) return fenk::kTimeTextFailure;
    return wholeText(scanDurationEnd(text, duration, end));
}

int32_t kivParseRecurringDuration(KivGlobal* world, const char* text,
                                  KivDurationFields* duration, int32_t* count) {
    if (!world || !text || !duration || !count) return fenk::kTimeTextFailure;
    const char* p = scanRecurrence(text, count);
    return wholeText(p ? kivScanDuration(p, duration, 0) : nullptr);
}

int32_t kivParseRecurringStartEnd(KivGlobal* world, const char* text, KivTimeFields* start,
                                  KivTimeFields* end, int32_t* count) {
    if (!world || !text || !start || !end || !count) return fenk::kTimeTextFailure;
    const char* p = scanRecurrence(text, count);
    return wholeText(p ? scanStartEnd(p, start, end) : nullptr);
}

int32_t kivParseRecurringStartDuration(KivGlobal* world, const char* text, KivTimeFields* start,
                                       KivDurationFields* duration, int32_t* count) {
    if (!world || !text || !start || !duration || !count) return fenk::kTimeTextFailure;
    const char* p = scanRecurrence(text, count);
    return wholeText(p ? scanStartDuration(p, start, duration) : nullptr);
}

int32_t kivParseRecurringDurationEnd(KivGlobal* world, const char* text,
                                     KivDurationFields* duration, KivTimeFields* end,
                                     int32_t* count) {
    if (!world || !text || !duration || !end || !count) return fenk::kTimeTextFailure;
    const char* p = scanRecurrence(text, count);
    return wholeText(p ? scanDurationEnd(p, duration, end) : nullptr);
}
