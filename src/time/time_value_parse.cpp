// Slot 324: parses an ISO 8601 TIME value (a time point, a duration, an
// interval or a recurring interval) into a KivTimeValue. Every failure is
// raised with its message index and unwinds to the caller's guarded entry,
// so nothing here may need a destructor.
#include <cstdint>

#include "diag/diag_slots.h"
#include "time/time_slots.h"
#include "time/time_value_order.h"

namespace fenk {
namespace {

// Message indexes.
constexpr int32_t kBadTimeValue = 73;
constexpr int32_t kBadMonth = 74;
constexpr int32_t kBadDay = 75;
constexpr int32_t kBadHour = 76;
constexpr int32_t kBadMinute = 77;
constexpr int32_t kBadSecond = 78;
constexpr int32_t kNumberTooLong = 148;
constexpr int32_t kBadWeek = 278;
constexpr int32_t kBadCentury = 279;
constexpr int32_t kBadYear = 280;

constexpr uint32_t kYearLimit = 0x80000000u;  // years and centuries stay below 2^31

// Date flags.
constexpr uint8_t kDateCentury = 0x80;
constexpr uint8_t kDateYear = 0x40;
constexpr uint8_t kDateWeek = 0x20;
constexpr uint8_t kDateMonth = 0x10;
constexpr uint8_t kDateDay = 0x08;

constexpr uint16_t kMonthDays[2][12] = {{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
                                        {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}};
constexpr uint16_t kYearDays[2] = {365, 366};

struct Cursor {
    KivGlobal* world;
    const char* at;
};

// A run of decimal digits: its value and how many digits it took.
struct Run {
    uint32_t value;
    uint32_t digits;
    bool leadingZero;
};

[[noreturn]] void fail(const Cursor& c, int32_t index, uint32_t number = 0) {
    kivRaise(c.world, index, number);
}

bool isDigit(char ch) { return ch >= '0' && ch <= '9'; }

bool take(Cursor& c, char ch) {
    if (*c.at != ch) return false;
    ++c.at;
    return true;
}

bool takeDecimalSign(Cursor& c) { return take(c, '.') || take(c, ','); }

// The longest run of digits, possibly empty. A value beyond 32 bits raises
// 148 with the number of digits read before the one that overflowed.
Run readRun(Cursor& c) {
    Run run{0, 0, *c.at == '0'};
    while (isDigit(*c.at)) {
        uint64_t next = uint64_t{run.value} * 10 + static_cast<uint32_t>(*c.at - '0');
        if (next > UINT32_MAX) fail(c, kNumberTooLong, run.digits);
        run.value = static_cast<uint32_t>(next);
        ++run.digits;
        ++c.at;
    }
    return run;
}

Run readRequiredRun(Cursor& c) {
    Run run = readRun(c);
    if (run.digits == 0) fail(c, kBadTimeValue);
    return run;
}

bool isLeapYear(int32_t year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// The low bits of the date flags: 0x04 basic, 0x02 proleptic, 0x01
// negative, none for a larger magnitude.
uint8_t yearClass(int32_t year, bool century) {
    int32_t first = century ? 15 : 1582;
    int32_t most = century ? 99 : 9999;
    if (year >= first && year <= most) return 0x04;
    if (year >= 0 && year < first) return 0x02;
    if (year < 0 && year >= -most) return 0x01;
    return 0;
}

// A year or century already checked to lie below 2^31, with its class.
void setYear(KivDatePart& d, uint8_t form, const Run& run, bool negative) {
    int32_t year = static_cast<int32_t>(run.value);
    d.year = negative ? -year : year;
    d.flags = form | yearClass(d.year, form == kDateCentury);
    d.yearDigits = static_cast<uint16_t>(run.digits);
}

// The parts after the year: "-Www[-D]", "-DDD" or "-MM[-DD]". A number
// missing altogether is a missing digit (73), not an out-of-range week,
// month or day.
void parseDateAfterYear(Cursor& c, KivDatePart& d) {
    size_t leap = isLeapYear(d.year) ? 1 : 0;
    if (take(c, 'W')) {
        Run week = readRequiredRun(c);
        if (week.digits != 2 || week.value < 1 || week.value > 53) fail(c, kBadWeek, week.value);
        d.week = static_cast<uint16_t>(week.value);
        d.flags |= kDateWeek;
        if (take(c, '-')) {
            Run day = readRequiredRun(c);
            if (day.digits != 1 || day.value < 1 || day.value > 7) fail(c, kBadDay, day.value);
            d.day = static_cast<uint16_t>(day.value);
            d.flags |= kDateDay;
        }
        return;
    }
    Run run = readRequiredRun(c);
    if (run.digits == 3) {
        if (run.value < 1 || run.value > kYearDays[leap]) fail(c, kBadDay, run.value);
        d.day = static_cast<uint16_t>(run.value);
        d.flags |= kDateDay;
        if (*c.at == '-') fail(c, kBadTimeValue);
        return;
    }
    if (run.digits != 2 || run.value < 1 || run.value > 12) fail(c, kBadMonth, run.value);
    d.month = static_cast<uint16_t>(run.value);
    d.flags |= kDateMonth;
    if (take(c, '-')) {
        Run day = readRequiredRun(c);
        if (day.digits != 2 || day.value < 1 || day.value > kMonthDays[leap][d.month - 1])
            fail(c, kBadDay, day.value);
        d.day = static_cast<uint16_t>(day.value);
        d.flags |= kDateDay;
    }
}

// A date at the cursor, if one is there. Without a sign, fewer than four
// digits and no "C" are no date (they are the hours of a time of day), and
// the cursor is left where it was.
bool parseDate(Cursor& c, KivDatePart& d) {
    const char* start = c.at;
    bool negative = *c.at == '-';
    bool sign = negative || *c.at == '+';
    if (sign) ++c.at;
    Run run = sign ? readRequiredRun(c) : readRun(c);
    if (run.digits == 0) {
        c.at = start;
        return false;
    }
    if (take(c, 'C')) {
        if (run.digits < 2 || run.value >= kYearLimit || (run.digits >= 3 && run.leadingZero))
            fail(c, kBadCentury, run.value);
        setYear(d, kDateCentury, run, negative);
        return true;
    }
    if (run.digits < 4) {
        if (sign) fail(c, kBadYear, run.value);
        c.at = start;
        return false;
    }
    if (run.value >= kYearLimit || (run.digits >= 5 && run.leadingZero)) fail(c, kBadYear, run.value);
    setYear(d, kDateYear, run, negative);
    if (take(c, '-')) parseDateAfterYear(c, d);
    return true;
}

void parseZone(Cursor& c, KivTimeOfDayPart& t, bool negative) {
    t.flags |= 0x04;
    if (negative) t.zoneFlags |= 0x80;
    Run hours = readRequiredRun(c);
    if (hours.digits != 2 || hours.value > 15) fail(c, kBadHour, negative ? 0u - hours.value : hours.value);
    t.zoneHours = static_cast<uint16_t>(hours.value);
    if (take(c, ':')) {
        Run minutes = readRequiredRun(c);
        if (minutes.digits != 2 || minutes.value > 59 || (t.zoneHours == 15 && minutes.value != 0))
            fail(c, kBadMinute, minutes.value);
        t.zoneMinutes = static_cast<uint16_t>(minutes.value);
        t.zoneFlags |= 0x40;
    }
}

void parseTimeOfDay(Cursor& c, KivTimeOfDayPart& t) {
    Run hours = readRequiredRun(c);
    if (hours.digits != 2 || hours.value > 24) fail(c, kBadHour, hours.value);
    t.hours = static_cast<uint16_t>(hours.value);
    t.flags |= 0x80;
    bool midnight = t.hours == 24;  // 24 is only ever followed by zeros
    if (take(c, ':')) {
        Run minutes = readRequiredRun(c);
        if (minutes.digits != 2 || minutes.value > 59 || (midnight && minutes.value != 0))
            fail(c, kBadMinute, minutes.value);
        t.minutes = static_cast<uint16_t>(minutes.value);
        t.flags |= 0x40;
        if (take(c, ':')) {
            Run seconds = readRequiredRun(c);
            if (seconds.digits != 2 || seconds.value > 60 || (midnight && seconds.value != 0))
                fail(c, kBadSecond, seconds.value);
            t.seconds = static_cast<uint16_t>(seconds.value);
            t.flags |= 0x20;
        }
    }
    if (takeDecimalSign(c)) {
        Run fraction = readRequiredRun(c);
        if (midnight && fraction.value != 0) fail(c, kBadTimeValue);
        t.fractionDigits = static_cast<uint16_t>(fraction.digits);
        t.fraction = fraction.value;
        t.flags |= 0x10;
    }
    if (take(c, 'Z')) {
        t.flags |= 0x08;
    } else if (take(c, '+')) {
        parseZone(c, t, false);
    } else if (take(c, '-')) {
        parseZone(c, t, true);
    }
}

// A date, optionally followed by "T" and a time of day, or a time of day
// alone. Only a date with a day may be followed by a time of day.
void parsePoint(Cursor& c, KivTimePoint& p) {
    p = KivTimePoint{};
    if (parseDate(c, p.date)) {
        if (!take(c, 'T')) return;
        if (!(p.date.flags & kDateDay)) fail(c, kBadTimeValue);
    }
    parseTimeOfDay(c, p.timeOfDay);
}

// The duration flag of a designator; 0 when the character is none.
uint8_t designatorFlag(char ch, bool timeSection) {
    if (timeSection) return ch == 'H' ? 0x08 : ch == 'M' ? 0x04 : ch == 'S' ? 0x02 : 0;
    return ch == 'Y' ? 0x80 : ch == 'M' ? 0x40 : ch == 'W' ? 0x20 : ch == 'D' ? 0x10 : 0;
}

uint32_t& durationField(KivDurationPart& d, uint8_t flag) {
    switch (flag) {
        case 0x80: return d.years;
        case 0x40: return d.months;
        case 0x20: return d.weeks;
        case 0x10: return d.days;
        case 0x08: return d.hours;
        case 0x04: return d.minutes;
        default: return d.seconds;
    }
}

// "P" and its components, each a number and a designator, in strictly
// falling order (the flags fall with the designators). Weeks stand alone;
// seconds and a component with a fraction end the duration.
void parseDuration(Cursor& c, KivDurationPart& d) {
    d = KivDurationPart{};
    ++c.at;  // "P"
    bool timeSection = false;
    uint8_t previous = 0;
    for (;;) {
        if (take(c, 'T')) {
            if (timeSection || !isDigit(*c.at)) fail(c, kBadTimeValue);
            timeSection = true;
        }
        if (!isDigit(*c.at)) break;
        Run number = readRun(c);
        if (number.digits > 1 && number.leadingZero) fail(c, kBadTimeValue);
        bool fraction = takeDecimalSign(c);
        if (fraction) {
            Run digits = readRequiredRun(c);
            d.fractionDigits = static_cast<uint16_t>(digits.digits);
            d.fraction = digits.value;
        }
        uint8_t flag = designatorFlag(*c.at, timeSection);
        if (flag == 0 || (flag == 0x20 ? previous != 0 : previous != 0 && flag >= previous))
            fail(c, kBadTimeValue);
        ++c.at;
        durationField(d, flag) = number.value;
        if (number.value != 0) d.flags |= flag;
        if (fraction) d.flags |= 0x01;  // written, even when it is zero
        d.last = previous = flag;
        if (fraction || flag == 0x20 || flag == 0x02) break;
    }
    if (previous == 0) fail(c, kBadTimeValue);
    d.flags |= d.last;
}

// The points of a start/end value must be ordered and of the same
// components; their time differences are set aside for the test.
bool startAfterEnd(const KivTimeValue& v) {
    KivTimePoint start = v.first.point;
    KivTimePoint end = v.second.point;
    start.timeOfDay.flags &= static_cast<uint8_t>(~0x04);
    end.timeOfDay.flags &= static_cast<uint8_t>(~0x04);
    int32_t order = compareTimePoints(start, end);
    return order == 1 || order == -2;
}

}  // namespace
}  // namespace fenk

extern "C" void kivParseTimeValue(KivGlobal* world, const char* text, KivTimeValue* value) {
    using namespace fenk;
    Cursor c{world, text};
    value->kind = 0;
    if (take(c, 'R')) {
        if (*c.at == '0') fail(c, kBadTimeValue);
        Run count = readRun(c);
        value->recurrences = count.digits == 0 ? 0xFFFFFFFFu : count.value;
        value->recurrenceDigits = static_cast<uint16_t>(count.digits);
        if (!take(c, '/')) fail(c, kBadTimeValue);
        value->kind = 0x80;
    }
    if (*c.at == 'P') {
        parseDuration(c, value->first.duration);
        value->kind |= 0x10;
    } else {
        parsePoint(c, value->first.point);
        value->kind |= 0x40;
    }
    if (take(c, '/')) {
        if (*c.at == 'P') {
            // Decided before the second duration is read: its own faults
            // do not matter when there may be no second duration at all.
            if (value->kind & 0x10) fail(c, kBadTimeValue);
            parseDuration(c, value->second.duration);
            value->kind |= 0x08;
        } else {
            parsePoint(c, value->second.point);
            value->kind |= 0x20;
        }
    } else if ((value->kind & 0xC0) == 0xC0) {
        fail(c, kBadTimeValue);  // a recurring start point needs a second component
    }
    if (*c.at != '\0') fail(c, kBadTimeValue);
    if ((value->kind & 0x60) == 0x60 && startAfterEnd(*value)) fail(c, kBadTimeValue);
}
