// Reading GeneralizedTime and UTCTime texts into separate fields (slots 65,
// 66 and their 16-bit wrappers 88, 89). Under DER and CER only the
// canonical forms are accepted.
#include "values/time_fields.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

// The seconds may be left out except in canonical form. The day is not
// checked against the month here.
bool readDateAndTime(const char*& at, int yearDigits, bool canonical, ClassicTime& time) {
    if (!readDateAndMinute(at, yearDigits, time)) return false;
    if (!readDigits(at, 2, time.second)) {
        if (canonical) return false;
        time.second = 0;
    }
    return time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 &&
           time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

// A 'Z' or 'z' stands only at the very end.
bool readUtcMark(const char* at, int32_t& zone) {
    if (at[1] != '\0') return false;
    zone = kZoneUtc;
    return true;
}

// At least one digit; canonical form wants no trailing zero, which also
// refuses a fraction of zeros only.
bool readFraction(const char*& at, bool canonical, ClassicTime& time) {
    const FractionDigits f = readFractionDigits(at);
    if (f.last == '\0' || (canonical && f.last == '0')) return false;
    time.fractionValue = f.value;
    time.fractionDigits = static_cast<uint16_t>(f.leading + f.significant);
    return true;
}

}  // namespace

int32_t parseGeneralizedTime(const char* text, bool canonical, ClassicTime& time) {
    if (!text) return kTimeOutOfRange;
    const char* at = text;
    if (!readDateAndTime(at, 4, canonical, time)) return kTimeOutOfRange;
    time.fractionValue = 0;
    time.fractionDigits = 0;
    if (*at == '.' || *at == ',') {
        if (*at == ',' && canonical) return kTimeOutOfRange;
        ++at;
        if (!readFraction(at, canonical, time)) return kTimeOutOfRange;
    }
    switch (*at) {
        case '\0':
            time.zone = kZoneLocal;
            break;
        case 'Z':
        case 'z':
            if (!readUtcMark(at, time.zone)) return kTimeOutOfRange;
            break;
        case '+':
        case '-':
            if (!readOffset(at, true, time.zone)) return kTimeOutOfRange;
            break;
        default:
            return kTimeOutOfRange;
    }
    // An offset of +1 minute reads as zone 1 and so passes as UTC.
    if (canonical && time.zone != kZoneUtc) return kTimeOutOfRange;
    return kTimeOk;
}

// Canonical form asks only for the seconds here; any zone is accepted.
int32_t parseUtcTime(const char* text, bool canonical, ClassicTime& time) {
    if (!text) return kTimeOutOfRange;
    const char* at = text;
    if (!readDateAndTime(at, 2, canonical, time)) return kTimeOutOfRange;
    time.fractionValue = 0;
    time.fractionDigits = 0;
    bool zoneRead = false;
    if (*at == 'Z' || *at == 'z')
        zoneRead = readUtcMark(at, time.zone);
    else if (*at == '+' || *at == '-')
        zoneRead = readOffset(at, false, time.zone);
    return zoneRead ? kTimeOk : kTimeOutOfRange;
}

}  // namespace fenk

using fenk::ClassicTime;

int32_t kivParseGeneralizedTime(KivGlobal* world, const char* text, uint32_t* year,
                                uint32_t* month, uint32_t* day, uint32_t* hour, uint32_t* minute,
                                uint32_t* second, uint32_t* fractionValue,
                                uint16_t* fractionDigits, int32_t* zone) {
    if (!world || !year || !month || !day || !hour || !minute || !second || !fractionValue ||
        !fractionDigits || !zone)
        return fenk::kTimeNullArgument;
    ClassicTime t;
    const int32_t code =
        fenk::parseGeneralizedTime(text, fenk::canonicalRules(world->encodingRules), t);
    if (code != fenk::kTimeOk) return code;
    *year = t.year;
    *month = t.month;
    *day = t.day;
    *hour = t.hour;
    *minute = t.minute;
    *second = t.second;
    *fractionValue = t.fractionValue;
    *fractionDigits = t.fractionDigits;
    *zone = t.zone;
    return fenk::kTimeOk;
}

int32_t kivParseUtcTime(KivGlobal* world, const char* text, uint32_t* year, uint32_t* month,
                        uint32_t* day, uint32_t* hour, uint32_t* minute, uint32_t* second,
                        int32_t* zone) {
    if (!world || !year || !month || !day || !hour || !minute || !second || !zone)
        return fenk::kTimeNullArgument;
    ClassicTime t;
    const int32_t code = fenk::parseUtcTime(text, fenk::canonicalRules(world->encodingRules), t);
    if (code != fenk::kTimeOk) return code;
    *year = t.year;
    *month = t.month;
    *day = t.day;
    *hour = t.hour;
    *minute = t.minute;
    *second = t.second;
    *zone = t.zone;
    return fenk::kTimeOk;
}

// The 16-bit wrappers: the parse runs into 32-bit temporaries, so the
// caller's fields change only when the text is accepted.
int32_t kivGeneralizedTimeFields(KivGlobal* world, const char* text, uint16_t* year,
                                 uint16_t* month, uint16_t* day, uint16_t* hour, uint16_t* minute,
                                 uint16_t* second, uint32_t* fractionValue,
                                 uint16_t* fractionDigits, int32_t* zone) {
    if (!year || !month || !day || !hour || !minute || !second) return fenk::kTimeNullArgument;
    uint32_t y, mo, d, h, mi, s;
    const int32_t code = kivParseGeneralizedTime(world, text, &y, &mo, &d, &h, &mi, &s,
                                                 fractionValue, fractionDigits, zone);
    if (code != fenk::kTimeOk) return code;
    *year = static_cast<uint16_t>(y);
    *month = static_cast<uint16_t>(mo);
    *day = static_cast<uint16_t>(d);
    *hour = static_cast<uint16_t>(h);
    *minute = static_cast<uint16_t>(mi);
    *second = static_cast<uint16_t>(s);
    return fenk::kTimeOk;
}

int32_t kivUtcTimeFields(KivGlobal* world, const char* text, uint16_t* year, uint16_t* month,
                         uint16_t* day, uint16_t* hour, uint16_t* minute, uint16_t* second,
                         int32_t* zone) {
    if (!year || !month || !day || !hour || !minute || !second) return fenk::kTimeNullArgument;
    uint32_t y, mo, d, h, mi, s;
    const int32_t code = kivParseUtcTime(world, text, &y, &mo, &d, &h, &mi, &s, zone);
    if (code != fenk::kTimeOk) return code;
    *year = static_cast<uint16_t>(y);
    *month = static_cast<uint16_t>(mo);
    *day = static_cast<uint16_t>(d);
    *hour = static_cast<uint16_t>(h);
    *minute = static_cast<uint16_t>(mi);
    *second = static_cast<uint16_t>(s);
    return fenk::kTimeOk;
}
