// The pieces that the UTCTime and GeneralizedTime conversions and the
// raising check share: the digit, offset and fraction readers, the
// parsed-field record, and the parsers and formatters with the strictness
// passed in.
#ifndef FENK_VALUES_TIME_FIELDS_H
#define FENK_VALUES_TIME_FIELDS_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// Return codes of the time conversions.
constexpr int32_t kTimeOk = 0;
constexpr int32_t kTimeNullArgument = 6;
constexpr int32_t kTimeNoMemory = 8;
constexpr int32_t kTimeOutOfRange = 12;

constexpr int32_t kRulesBer = 0;

// DER and CER demand the canonical forms.
inline bool canonicalRules(int32_t rules) { return rules == 3 || rules == 7; }

// Zone values of the text routines: 0 local time, 1 'Z', else minutes.
constexpr int32_t kZoneLocal = 0;
constexpr int32_t kZoneUtc = 1;

// Named apart from the time texts' class-table reader: two different inline
// bodies under one name would leave the linker to keep either of them.
inline bool asciiDigit(char c) { return c >= '0' && c <= '9'; }

// Reads exactly n digits; on failure the position is left where it was.
inline bool readDigits(const char*& at, int n, uint32_t& value) {
    uint32_t v = 0;
    for (int i = 0; i < n; ++i) {
        if (!asciiDigit(at[i])) return false;
        v = v * 10 + static_cast<uint32_t>(at[i] - '0');
    }
    at += n;
    value = v;
    return true;
}

// A UTCTime or GeneralizedTime as its separate fields.
struct ClassicTime {
    uint32_t year, month, day, hour, minute, second;
    uint32_t fractionValue;
    uint16_t fractionDigits;
    int32_t zone;
};

// Year (yearDigits digits), month, day, hour and minute (two digits each),
// all required. The seconds that may follow are the caller's business.
inline bool readDateAndMinute(const char*& at, int yearDigits, ClassicTime& time) {
    return readDigits(at, yearDigits, time.year) && readDigits(at, 2, time.month) &&
           readDigits(at, 2, time.day) && readDigits(at, 2, time.hour) &&
           readDigits(at, 2, time.minute);
}

// An offset at its sign: two digits of hours, then two of minutes unless
// the text ends after the hours. What follows the minutes is not looked at.
inline bool readOffset(const char* at, bool checkRanges, int32_t& zone) {
    const bool west = *at++ == '-';
    uint32_t hours = 0, minutes = 0;
    if (!readDigits(at, 2, hours)) return false;
    if (*at != '\0' && !readDigits(at, 2, minutes)) return false;
    if (checkRanges && (hours > 23 || minutes > 59)) return false;
    const int32_t magnitude = static_cast<int32_t>(hours * 60 + minutes);
    zone = west ? -magnitude : magnitude;
    return true;
}

// The digits of a fraction after its decimal sign. Leading zeros only count;
// then at most 9 significant digits make the value, and further digits are
// passed over.
struct FractionDigits {
    uint32_t leading;
    uint32_t significant;
    uint32_t value;
    char last;  // the fraction's last digit, NUL when there is none
};

inline FractionDigits readFractionDigits(const char*& at) {
    const char* const start = at;
    FractionDigits f{0, 0, 0, '\0'};
    while (*at == '0') ++at;
    f.leading = static_cast<uint32_t>(at - start);
    while (f.significant < 9 && asciiDigit(*at)) {
        f.value = f.value * 10 + static_cast<uint32_t>(*at++ - '0');
        ++f.significant;
    }
    while (asciiDigit(*at)) ++at;
    if (at != start) f.last = at[-1];
    return f;
}

// Parsers and formatters of the text forms; canonical says whether the DER
// and CER demands apply. Results are return codes (0 or 12).
int32_t parseGeneralizedTime(const char* text, bool canonical, ClassicTime& time);
int32_t parseUtcTime(const char* text, bool canonical, ClassicTime& time);
int32_t formatGeneralizedTime(int32_t rules, const ClassicTime& time, char* out);
int32_t formatUtcTime(int32_t rules, const ClassicTime& time, char* out);

}  // namespace fenk

#endif
