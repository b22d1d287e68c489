// Writers of the XML Schema calendar forms: fields to the lexical forms of
// duration, dateTime, time, date, gYearMonth, gYear, gMonthDay, gDay and
// gMonth. Fields are checked before anything is written, except the zone:
// a zone that cannot be written is found after the text, and a buffer
// allocated for it is given back.
#include "time/time_text.h"
#include "time/xsd_forms.h"

namespace fenk {
namespace {

bool zoneWritable(int32_t zone) {
    return zone == kZoneNone || zone == kZoneUtc || (zone >= -kZoneLimit && zone <= kZoneLimit);
}

void putZone(TextSink& s, int32_t zone) {
    if (zone == kZoneNone) return;
    if (zone == kZoneUtc) {
        s.put('Z');
        return;
    }
    const uint32_t magnitude = static_cast<uint32_t>(zone < 0 ? -zone : zone);
    s.put(zone < 0 ? '-' : '+');
    s.digitsMin(2, magnitude / 60);
    s.put(':');
    s.digitsMin(2, magnitude % 60);
}

bool dateValid(int32_t year, int32_t month, int32_t day) {
    return year != 0 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

bool monthValid(int32_t month) { return month >= 1 && month <= 12; }
bool dayValid(int32_t day) { return day >= 1 && day <= 31; }

// Hour 24 stands only for the end of a day: 24:00:00 without a fraction.
bool timeValid(uint32_t hour, uint32_t minute, uint32_t second, const char* fraction,
               uint32_t count) {
    if ((count && !fraction) || minute > 59 || second > 60 || hour > 24) return false;
    return hour < 24 || (minute == 0 && second == 0 && count == 0);
}

// The year's magnitude in at least 4 digits, "-" before a negative one.
void putYear(TextSink& s, int32_t year) {
    if (year < 0) s.put('-');
    s.digitsMin(4, year < 0 ? 0u - static_cast<uint32_t>(year) : static_cast<uint32_t>(year));
}

void putTwo(TextSink& s, char before, uint32_t value) {
    s.put(before);
    s.digitsMin(2, value);
}

void putTime(TextSink& s, uint32_t hour, uint32_t minute, uint32_t second, const char* fraction,
             uint32_t count) {
    s.digitsMin(2, hour);
    putTwo(s, ':', minute);
    putTwo(s, ':', second);
    if (count) {
        s.put('.');
        s.put(fraction, count);
    }
}

// The text written by body, then the zone.
template <class Body>
int32_t emitWithZone(KivGlobal* world, char** out, int32_t zone, Body&& body) {
    const bool allocated = *out == nullptr;
    const bool zoneOk = zoneWritable(zone);
    int32_t result = emitText(world, out, [&](TextSink& s) {
        body(s);
        if (zoneOk) putZone(s, zone);
    });
    if (result != 0 || zoneOk) return result;
    if (allocated) {
        kivReleaseThroughTable(world, *out);
        *out = nullptr;
    }
    return kTimeTextFailure;
}

}  // namespace
}  // namespace fenk

using fenk::kTimeTextFailure;
using fenk::TextSink;

int32_t kivDurationToText(KivGlobal* world, uint8_t negative, uint32_t years, uint32_t months,
                          uint32_t days, uint32_t hours, uint32_t minutes, uint32_t seconds,
                          const char* fraction, uint32_t fractionCount, char** out) {
    if (!world || !out || (fractionCount && !fraction)) return kTimeTextFailure;
    return fenk::emitText(world, out, [&](TextSink& s) {
        if (!(years | months | days | hours | minutes | seconds | fractionCount)) {
            s.put("PT0S");  // zero has one spelling, whatever the sign
            return;
        }
        auto component = [&](uint32_t value, char designator) {
            if (!value) return;
            s.digitsMin(1, value);
            s.put(designator);
        };
        if (negative) s.put('-');
        s.put('P');
        component(years, 'Y');
        component(months, 'M');
        component(days, 'D');
        if (!(hours | minutes | seconds | fractionCount)) return;
        s.put('T');
        component(hours, 'H');
        component(minutes, 'M');
        if (!(seconds | fractionCount)) return;
        s.digitsMin(1, seconds);
        if (fractionCount) {
            s.put('.');
            s.put(fraction, fractionCount);
        }
        s.put('S');
    });
}

int32_t kivDateTimeToText(KivGlobal* world, int32_t year, int32_t month, int32_t day,
                          uint32_t hour, uint32_t minute, uint32_t second, const char* fraction,
                          uint32_t fractionCount, int32_t zone, char** out) {
    if (!world || !out || !fenk::dateValid(year, month, day) ||
        !fenk::timeValid(hour, minute, second, fraction, fractionCount))
        return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        fenk::putYear(s, year);
        fenk::putTwo(s, '-', static_cast<uint32_t>(month));
        fenk::putTwo(s, '-', static_cast<uint32_t>(day));
        s.put('T');
        fenk::putTime(s, hour, minute, second, fraction, fractionCount);
    });
}

int32_t kivTimeToText(KivGlobal* world, uint32_t hour, uint32_t minute, uint32_t second,
                      const char* fraction, uint32_t fractionCount, int32_t zone, char** out) {
    if (!world || !out || !fenk::timeValid(hour, minute, second, fraction, fractionCount))
        return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        fenk::putTime(s, hour, minute, second, fraction, fractionCount);
    });
}

int32_t kivDateToText(KivGlobal* world, int32_t year, int32_t month, int32_t day, int32_t zone,
                      char** out) {
    if (!world || !out || !fenk::dateValid(year, month, day)) return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        fenk::putYear(s, year);
        fenk::putTwo(s, '-', static_cast<uint32_t>(month));
        fenk::putTwo(s, '-', static_cast<uint32_t>(day));
    });
}

int32_t kivYearMonthToText(KivGlobal* world, int32_t year, int32_t month, int32_t zone,
                           char** out) {
    if (!world || !out || year == 0 || !fenk::monthValid(month)) return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        fenk::putYear(s, year);
        fenk::putTwo(s, '-', static_cast<uint32_t>(month));
    });
}

int32_t kivYearToText(KivGlobal* world, int32_t year, int32_t zone, char** out) {
    if (!world || !out || year == 0) return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) { fenk::putYear(s, year); });
}

int32_t kivMonthDayToText(KivGlobal* world, int32_t month, int32_t day, int32_t zone, char** out) {
    if (!world || !out || !fenk::monthValid(month) || !fenk::dayValid(day))
        return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        s.put("--");
        s.digitsMin(2, static_cast<uint32_t>(month));
        fenk::putTwo(s, '-', static_cast<uint32_t>(day));
    });
}

int32_t kivDayToText(KivGlobal* world, int32_t day, int32_t zone, char** out) {
    if (!world || !out || !fenk::dayValid(day)) return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        s.put("---");
        s.digitsMin(2, static_cast<uint32_t>(day));
    });
}

int32_t kivMonthToText(KivGlobal* world, int32_t month, int32_t zone, char** out) {
    if (!world || !out || !fenk::monthValid(month)) return kTimeTextFailure;
    return fenk::emitWithZone(world, out, zone, [&](TextSink& s) {
        s.put("--");
        s.digitsMin(2, static_cast<uint32_t>(month));
    });
}
