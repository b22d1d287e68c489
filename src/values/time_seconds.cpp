// GeneralizedTime and UTCTime values and seconds since 1970-01-01T00:00:00Z
// (slots 283 to 290). Counts are non-negative signed 32-bit values; texts
// are read and written under BER whatever the current rules.
#include <cstdint>

#include "api/api_slots.h"
#include "api/table_memory.h"
#include "values/time_fields.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

// Days before each month, then the year's length: ordinary year, leap year.
constexpr uint16_t kDaysBefore[2][13] = {
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365},
    {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366}};

constexpr int32_t kMaxOffset = 1439;
constexpr int32_t kSecondsPerDay = 86400;

bool isLeapYear(int64_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

// Days from 1970-01-01 to January 1st of year (from 1969 on, so that every
// quotient below is of a positive number).
int64_t daysBeforeYear(int64_t year) {
    const int64_t y = year - 1;
    return (year - 1970) * 365 + y / 4 - y / 100 + y / 400 - 477;
}

// Seconds of a local time in the given offset (minutes); 'Z' counts as 0.
int32_t secondsFromFields(int64_t year, uint32_t month, uint32_t day, uint32_t hour,
                          uint32_t minute, uint32_t second, int32_t offset, uint64_t* seconds) {
    if (year < 1970 || month < 1 || month > 12 || day < 1 || hour > 23 || minute > 59 ||
        second > 59 || offset < -kMaxOffset || offset > kMaxOffset)
        return kTimeOutOfRange;
    const uint16_t* const before = kDaysBefore[isLeapYear(year)];
    if (day > static_cast<uint32_t>(before[month] - before[month - 1])) return kTimeOutOfRange;
    const int64_t days = daysBeforeYear(year) + before[month - 1] + day - 1;
    const int64_t count = ((days * 24 + hour) * 60 + minute - offset) * 60 + second;
    if (count < 0 || count > INT32_MAX) return kTimeOutOfRange;
    *seconds = static_cast<uint64_t>(count);
    return kTimeOk;
}

int32_t offsetOfZone(int32_t zone) { return zone == kZoneUtc ? 0 : zone; }

// Two-digit years below 50 are 20yy, the others 19yy.
int64_t expandUtcYear(uint32_t year) { return year < 50 ? 2000 + year : 1900 + year; }

struct CalendarTime {
    int64_t year;
    uint32_t month, day, hour, minute, second;
};

int64_t floorDivide(int64_t a, int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// The local calendar time of a count of seconds in the given offset.
int32_t fieldsFromSeconds(int32_t seconds, int32_t offset, CalendarTime& time) {
    if (seconds < 0 || offset < -kMaxOffset || offset > kMaxOffset) return kTimeOutOfRange;
    const int64_t local = int64_t{seconds} + int64_t{offset} * 60;
    const int64_t days = floorDivide(local, kSecondsPerDay);
    const auto clock = static_cast<uint32_t>(local - days * kSecondsPerDay);
    time.hour = clock / 3600;
    time.minute = clock / 60 % 60;
    time.second = clock % 60;
    // A year has at least 365 days, so this guess is never too early.
    int64_t year = 1970 + floorDivide(days, 365);
    while (daysBeforeYear(year) > days) --year;
    const auto dayOfYear = static_cast<uint32_t>(days - daysBeforeYear(year));
    const uint16_t* const before = kDaysBefore[isLeapYear(year)];
    uint32_t month = 12;
    while (before[month - 1] > dayOfYear) --month;
    time.year = year;
    time.month = month;
    time.day = dayOfYear - before[month - 1] + 1;
    return kTimeOk;
}

// UTCTime holds the years 1950 to 2049. Every non-negative 32-bit count falls
// inside (1969 to 2038 with the offsets); the check keeps the rule explicit.
bool inUtcWindow(int64_t year) { return year >= 1950 && year <= 2049; }

using Formatter = int32_t(int32_t, const ClassicTime&, char*);

// The text goes into the caller's buffer, or into 20 bytes allocated through
// the table that become the caller's; they go back if formatting fails
// (which fields made from a count cannot make it do today).
int32_t writeText(KivGlobal* world, const ClassicTime& time, Formatter* format, char** text) {
    const bool obtained = *text == nullptr;
    if (obtained) {
        *text = static_cast<char*>(allocateThroughTable(world, 20));
        if (!*text) return kTimeNoMemory;
    }
    const int32_t code = format(kRulesBer, time, *text);
    if (code != kTimeOk && obtained) {
        kivReleaseThroughTable(world, *text);
        *text = nullptr;
    }
    return code;
}

int32_t writeStruct(KivGlobal* world, const CalendarTime& time, int32_t offset,
                    KivTimeStruct** out) {
    if (!*out) {
        *out = static_cast<KivTimeStruct*>(allocateThroughTable(world, sizeof(KivTimeStruct)));
        if (!*out) return kTimeNoMemory;
    }
    KivTimeStruct* const value = *out;
    value->year = static_cast<uint16_t>(time.year);
    value->month = static_cast<uint16_t>(time.month);
    value->day = static_cast<uint16_t>(time.day);
    value->hour = static_cast<uint16_t>(time.hour);
    value->minute = static_cast<uint16_t>(time.minute);
    value->second = static_cast<uint16_t>(time.second);
    value->milliseconds = 0;
    value->zoneOffset = static_cast<int16_t>(offset);
    value->isUtc = offset == 0;
    return kTimeOk;
}

ClassicTime classicOf(const CalendarTime& time, int32_t zone) {
    return {static_cast<uint32_t>(time.year), time.month, time.day, time.hour, time.minute,
            time.second, 0, 0, zone};
}

}  // namespace
}  // namespace fenk

using fenk::kTimeNullArgument;
using fenk::kTimeOk;
using fenk::kTimeOutOfRange;

int32_t kivGeneralizedTimeTextToSeconds(KivGlobal* world, const char* text, uint64_t* seconds) {
    if (!world || !text || !seconds) return kTimeNullArgument;
    fenk::ClassicTime t;
    const int32_t code = fenk::parseGeneralizedTime(text, false, t);
    if (code != kTimeOk) return code;
    return fenk::secondsFromFields(t.year, t.month, t.day, t.hour, t.minute, t.second,
                                   fenk::offsetOfZone(t.zone), seconds);
}

int32_t kivGeneralizedTimeStructToSeconds(KivGlobal* world, const KivTimeStruct* value,
                                          uint64_t* seconds) {
    if (!world || !value || !seconds) return kTimeNullArgument;
    if (static_cast<int16_t>(value->year) < 0) return kTimeOutOfRange;
    return fenk::secondsFromFields(value->year, value->month, value->day, value->hour,
                                   value->minute, value->second,
                                   value->isUtc ? 0 : value->zoneOffset, seconds);
}

int32_t kivUtcTimeTextToSeconds(KivGlobal* world, const char* text, uint64_t* seconds) {
    if (!world || !text || !seconds) return kTimeNullArgument;
    fenk::ClassicTime t;
    const int32_t code = fenk::parseUtcTime(text, false, t);
    if (code != kTimeOk) return code;
    return fenk::secondsFromFields(fenk::expandUtcYear(t.year), t.month, t.day, t.hour, t.minute,
                                   t.second, fenk::offsetOfZone(t.zone), seconds);
}

int32_t kivUtcTimeStructToSeconds(KivGlobal* world, const KivTimeStruct* value,
                                  uint64_t* seconds) {
    if (!world || !value || !seconds) return kTimeNullArgument;
    if (value->year > 99) return kTimeOutOfRange;
    return fenk::secondsFromFields(fenk::expandUtcYear(value->year), value->month, value->day,
                                   value->hour, value->minute, value->second,
                                   value->isUtc ? 0 : value->zoneOffset, seconds);
}

// An offset of 0 is written as 'Z'; so is an offset of 1 minute, which the
// zone values of the text routines cannot tell from it.
int32_t kivSecondsToGeneralizedTimeText(KivGlobal* world, int32_t seconds, int32_t offset,
                                        char** text) {
    if (!world || !text) return kTimeNullArgument;
    fenk::CalendarTime c;
    const int32_t code = fenk::fieldsFromSeconds(seconds, offset, c);
    if (code != kTimeOk) return code;
    return fenk::writeText(world, fenk::classicOf(c, offset == 0 ? fenk::kZoneUtc : offset),
                           &fenk::formatGeneralizedTime, text);
}

int32_t kivSecondsToUtcTimeText(KivGlobal* world, int32_t seconds, int32_t offset,
                                char** text) {
    if (!world || !text) return kTimeNullArgument;
    fenk::CalendarTime c;
    const int32_t code = fenk::fieldsFromSeconds(seconds, offset, c);
    if (code != kTimeOk) return code;
    if (!fenk::inUtcWindow(c.year)) return kTimeOutOfRange;
    return fenk::writeText(world, fenk::classicOf(c, offset), &fenk::formatUtcTime, text);
}

int32_t kivSecondsToGeneralizedTimeStruct(KivGlobal* world, int32_t seconds, int32_t offset,
                                          KivTimeStruct** out) {
    if (!world || !out) return kTimeNullArgument;
    fenk::CalendarTime c;
    const int32_t code = fenk::fieldsFromSeconds(seconds, offset, c);
    if (code != kTimeOk) return code;
    return fenk::writeStruct(world, c, offset, out);
}

int32_t kivSecondsToUtcTimeStruct(KivGlobal* world, int32_t seconds, int32_t offset,
                                  KivTimeStruct** out) {
    if (!world || !out) return kTimeNullArgument;
    fenk::CalendarTime c;
    const int32_t code = fenk::fieldsFromSeconds(seconds, offset, c);
    if (code != kTimeOk) return code;
    if (!fenk::inUtcWindow(c.year)) return kTimeOutOfRange;
    c.year %= 100;
    return fenk::writeStruct(world, c, offset, out);
}
