// Writing GeneralizedTime and UTCTime texts from separate fields (slots 67
// and 68), in the shortest form the current rules allow: canonical form
// under DER and CER, zero seconds left out under BER.
#include "values/time_fields.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

// Writes value zero-padded to exactly n digits; fails when it does not fit.
bool writeDigits(char*& at, uint32_t value, uint32_t n) {
    char* const end = at + n;
    for (char* p = end; p != at; value /= 10) *--p = static_cast<char>('0' + value % 10);
    if (value != 0) return false;
    at = end;
    return true;
}

bool fieldsInRange(const ClassicTime& time) {
    return time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 &&
           time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

// Sign, then the offset's magnitude as hours and minutes; at most a day.
bool writeOffset(char*& at, int32_t zone) {
    const uint32_t magnitude =
        zone < 0 ? 0u - static_cast<uint32_t>(zone) : static_cast<uint32_t>(zone);
    if (magnitude > 1440) return false;
    *at++ = zone < 0 ? '-' : '+';
    writeDigits(at, magnitude / 60, 2);
    writeDigits(at, magnitude % 60, 2);
    return true;
}

}  // namespace

int32_t formatGeneralizedTime(int32_t rules, const ClassicTime& time, char* out) {
    if (!out || !fieldsInRange(time) || time.year > 9999) return kTimeOutOfRange;
    char* at = out;
    writeDigits(at, time.year, 4);
    writeDigits(at, time.month, 2);
    writeDigits(at, time.day, 2);
    writeDigits(at, time.hour, 2);
    writeDigits(at, time.minute, 2);
    writeDigits(at, time.second, 2);
    char* const point = at;
    *at++ = '.';
    if (!writeDigits(at, time.fractionValue, time.fractionDigits)) return kTimeOutOfRange;
    while (at > point + 1 && at[-1] == '0') --at;
    if (at == point + 1) at = point;
    // With no fraction left, BER drops zero seconds as well.
    if (rules == kRulesBer && at[-1] == '0' && at[-2] == '0') at -= 2;
    const bool canonical = canonicalRules(rules);
    if (time.zone == kZoneUtc) {
        *at++ = 'Z';
    } else if (canonical) {
        return kTimeOutOfRange;
    } else if (time.zone != kZoneLocal && !writeOffset(at, time.zone)) {
        return kTimeOutOfRange;
    }
    *at = '\0';
    return kTimeOk;
}

// Unlike the other text routines, zone 0 is written as 'Z' here and every
// other value, 1 included, as an offset.
int32_t formatUtcTime(int32_t rules, const ClassicTime& time, char* out) {
    if (!out || !fieldsInRange(time)) return kTimeOutOfRange;
    char* at = out;
    writeDigits(at, time.year % 100, 2);
    writeDigits(at, time.month, 2);
    writeDigits(at, time.day, 2);
    writeDigits(at, time.hour, 2);
    writeDigits(at, time.minute, 2);
    if (rules != kRulesBer || time.second != 0) writeDigits(at, time.second, 2);
    if (time.zone == 0) {
        *at++ = 'Z';
    } else if (canonicalRules(rules) || !writeOffset(at, time.zone)) {
        return kTimeOutOfRange;
    }
    *at = '\0';
    return kTimeOk;
}

}  // namespace fenk

int32_t kivFormatGeneralizedTime(KivGlobal* world, uint32_t year, int32_t month, int32_t day,
                                 uint32_t hour, uint32_t minute, uint32_t second,
                                 uint32_t fractionValue, uint16_t fractionDigits, int32_t zone,
                                 char* out) {
    if (!world) return fenk::kTimeNullArgument;
    // A negative month or day becomes a huge one and fails the range check.
    const fenk::ClassicTime time{year,   static_cast<uint32_t>(month), static_cast<uint32_t>(day),
                                 hour,   minute,
                                 second, fractionValue,
                                 fractionDigits, zone};
    return fenk::formatGeneralizedTime(world->encodingRules, time, out);
}

int32_t kivFormatUtcTime(KivGlobal* world, uint32_t year, int32_t month, int32_t day,
                         uint32_t hour, uint32_t minute, uint32_t second, int32_t zone,
                         char* out) {
    if (!world) return fenk::kTimeNullArgument;
    const fenk::ClassicTime time{year,   static_cast<uint32_t>(month), static_cast<uint32_t>(day),
                                 hour,   minute,
                                 second, 0,
                                 0,      zone};
    return fenk::formatUtcTime(world->encodingRules, time, out);
}
