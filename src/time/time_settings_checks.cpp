// Slots 327 to 335: checks of a parsed TIME value against the property
// settings of its subtype. Each answers 0 when the value passes (the text is
// left alone) and 1 with a constant text naming the rule that failed.
#include "time/time_slots.h"

namespace fenk {
namespace {

using Text = const char*;

constexpr uint8_t kRecurring = 0x80;
constexpr uint8_t kStartPoint = 0x40;
constexpr uint8_t kEndPoint = 0x20;
constexpr uint8_t kFirstDuration = 0x10;
constexpr uint8_t kSecondDuration = 0x08;
constexpr uint8_t kIntervalKinds = kEndPoint | kFirstDuration | kSecondDuration;

// Date flags.
constexpr uint8_t kCentury = 0x80;
constexpr uint8_t kYear = 0x40;
constexpr uint8_t kWeek = 0x20;
constexpr uint8_t kMonth = 0x10;
constexpr uint8_t kDay = 0x08;

// Time-of-day flags.
constexpr uint8_t kHours = 0x80;
constexpr uint8_t kMinutes = 0x40;
constexpr uint8_t kSeconds = 0x20;
constexpr uint8_t kFraction = 0x10;
constexpr uint8_t kUtc = 0x08;
constexpr uint8_t kZone = 0x04;

// Answers 1 with the text when the condition fails; 0 otherwise.
int32_t failUnless(bool passes, Text text, Text* out) {
    if (passes) return 0;
    *out = text;
    return 1;
}

bool has(uint8_t flags, uint8_t bits) { return (flags & bits) == bits; }

// A component that the settings require (bit set) or forbid (bit clear).
Text requiredOrForbidden(uint32_t settings, uint32_t bit, uint8_t flags, uint8_t component,
                         Text required, Text forbidden) {
    if (settings & bit) return (flags & component) ? nullptr : required;
    return (flags & component) ? forbidden : nullptr;
}

struct YearRange {
    uint32_t bit;
    int32_t firstYear, lastYear;
    Text yearText;
    int32_t firstCentury, lastCentury;
    Text centuryText;
};

constexpr YearRange kYearRanges[] = {
    {0x1000, 1582, 9999,
     "the year identification shall be a non-proleptic year in the range 1582 to 9999", 15, 99,
     "the century identification shall be a non-proleptic century in the range 15 to 99"},
    {0x2000, 0, 1581,
     "the year identification shall be a year in the proleptic Gregorian Calendar in the range 0 to 1581",
     0, 14,
     "the century identification shall be a century in the proleptic Gregorian Calendar in the range 0 to 14"},
    {0x4000, -9999, -1, "the year identification shall be a negative year in the range -9999 to -1",
     -99, -1, "the century identification shall be a negative century in the range -99 to -1"},
};

Text dateRules(const KivDatePart& d, uint32_t settings, uint16_t yearDigits) {
    if (settings & 0x0800) {
        if (d.flags & (kYear | kWeek | kMonth | kDay)) return "the date shall represent only a century";
    } else if (settings & 0x0080) {
        if (!(d.flags & kYear)) return "the date shall have a year component";
        // Month before week before day.
        const Text texts[] = {
            requiredOrForbidden(settings, 0x0100, d.flags, kMonth,
                                "the date shall have a month component",
                                "the date shall not have a month component"),
            requiredOrForbidden(settings, 0x0400, d.flags, kWeek, "the date shall have a week component",
                                "the date shall not have a week component"),
            requiredOrForbidden(settings, 0x0200, d.flags, kDay, "the date shall have a day component",
                                "the date shall not have a day component")};
        for (Text text : texts)
            if (text) return text;
    }
    bool century = d.flags & kCentury;
    for (const YearRange& range : kYearRanges) {
        if (!(settings & range.bit)) continue;
        int32_t first = century ? range.firstCentury : range.firstYear;
        int32_t last = century ? range.lastCentury : range.lastYear;
        if (d.year < first || d.year > last) return century ? range.centuryText : range.yearText;
        return nullptr;
    }
    if (settings & 0x8000) {
        if (century && d.yearDigits != yearDigits - 2)
            return "the large century identification has incorrect number of digits";
        if (!century && d.yearDigits != yearDigits)
            return "the large year identification has an incorrect number of digits";
    }
    return nullptr;
}

// Step 3 of the time rules, which also applies alone to an end point.
Text midnightRule(const KivTimeOfDayPart& t, uint32_t settings) {
    if (settings & 0x4000) {
        if (t.hours == 24) return "the time-of-day shall represent midnight at the start of a day";
    } else if (settings & 0x8000) {
        if (t.hours == 0 && t.minutes == 0 && t.seconds == 0 && t.fraction == 0)
            return "the time-of-day shall represent midnight at the end of a day";
    }
    return nullptr;
}

Text timeRules(const KivTimeOfDayPart& t, uint32_t settings, uint16_t fractionDigits) {
    if (settings & 0x0080) {
        if (!(t.flags & kHours)) return "the time-of-day shall have an hours component";
        if (settings & 0x0100) {
            if (!(t.flags & kMinutes)) return "the time-of-day shall have a minutes component";
            if (Text text = requiredOrForbidden(settings, 0x0200, t.flags, kSeconds,
                                                "the time-of-day shall have a seconds component",
                                                "the time-of-day shall not have a seconds component"))
                return text;
        } else if (t.flags & kMinutes) {
            return "the time-of-day shall not have a minutes component";
        }
        if (settings & 0x0040) {
            if (!(t.flags & kFraction)) return "the time-of-day shall have a decimal fraction component";
            if (t.fractionDigits != fractionDigits)
                return "the decimal fraction component has incorrect number of digits";
        } else if (t.flags & kFraction) {
            return "the time-of-day shall not have a decimal fraction component";
        }
    }
    if (settings & 0x0400) {
        if (t.flags & (kUtc | kZone)) return "the time-of-day shall specify a local time only";
    } else if (settings & 0x0800) {
        if (!(t.flags & kUtc)) return "the time-of-day shall specify a UTC time only";
    } else if (settings & 0x1000) {
        if (!(t.flags & kZone))
            return "the time-of-day shall specify a local time and a time difference component";
    }
    return midnightRule(t, settings);
}

// The point that stands for the value: the start point, else the end point;
// null when there is neither.
const KivTimePoint* representativePoint(const KivTimeValue& v) {
    if (v.kind & kStartPoint) return &v.first.point;
    if (v.kind & kEndPoint) return &v.second.point;
    return nullptr;
}

Text intervalRules(const KivTimeValue& v, uint32_t settings, uint16_t recurrenceDigits) {
    uint32_t form = settings & 0x01C0;
    if ((form & 0x00C0) == 0x00C0) {
        if (!has(v.kind, kStartPoint | kEndPoint))
            return "the interval should be specified using a start point and an end point";
    } else if (form == 0x0140) {
        if (!has(v.kind, kStartPoint | kSecondDuration))
            return "the interval should be specified using a start point and a duration";
    } else if (form & 0x0080) {
        if (!has(v.kind, kFirstDuration | kEndPoint))
            return "the interval should be specified using a duration and an end point";
    } else if (form == 0x0100) {
        if (!(v.kind & kFirstDuration) || (v.kind & kEndPoint))
            return "the interval should be specified using only a duration";
    }
    // The parser gives both points of a start/end value the same
    // components, so one point stands for both.
    const KivTimePoint* point = representativePoint(v);
    if ((settings & 0x0E00) && point) {
        bool date = point->date.flags != 0;
        bool time = point->timeOfDay.flags != 0;
        if (settings & 0x0800) {
            if (!date || !time)
                return "both start and end points of the interval shall be specified using a date and a time-of-day";
        } else if (settings & 0x0200) {
            if (!date || time)
                return "both start and end points of the interval shall be specified using a date only";
        } else if (!time || date) {
            return "both start and end points of the interval shall be specified using a time-of-day only";
        }
    }
    // Design decision: R is the most digits the number of recurrences may be
    // written with ("R2" with R 2 passes, "R123" with R 2 does not); a value
    // without digits never meets a nonzero R.
    if ((settings & 0x1000) && (v.kind & kRecurring)) {
        if (recurrenceDigits != 0 &&
            (v.recurrenceDigits == 0 || v.recurrenceDigits > recurrenceDigits))
            return "the recurring interval has an incorrect number of recurrence digits";
        if (recurrenceDigits == 0 && v.recurrenceDigits != 0)
            return "the recurring interval shall not contain recurrence digits because the "
                   "\"Recurrence\" property setting is \"Unlimited\"";
    }
    return nullptr;
}

// A single time point (kind exactly 0x40).
bool isSinglePoint(const KivTimeValue& v) { return v.kind == kStartPoint; }

}  // namespace
}  // namespace fenk

using namespace fenk;

extern "C" int32_t kivCheckIntervalSettings(const KivTimeValue* value, uint32_t settings,
                                            uint16_t recurrenceDigits, const char** text) {
    if (!(value->kind & kIntervalKinds)) return 0;
    Text failed = intervalRules(*value, settings, recurrenceDigits);
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckPointDateSettings(const KivTimeValue* value, uint32_t settings,
                                             uint16_t yearDigits, const char** text) {
    const KivTimePoint* point = representativePoint(*value);
    if (!point || point->date.flags == 0) return 0;
    Text failed = dateRules(point->date, settings, yearDigits);
    return failUnless(failed == nullptr, failed, text);
}

// The start point's time of day passes the time rules and the end point's
// the midnight rule alone; without a start point the end point's time of
// day passes the time rules.
extern "C" int32_t kivCheckPointTimeSettings(const KivTimeValue* value, uint32_t settings,
                                             uint16_t fractionDigits, const char** text) {
    Text failed = nullptr;
    if (value->kind & kStartPoint) {
        if (value->first.point.timeOfDay.flags == 0) return 0;
        failed = timeRules(value->first.point.timeOfDay, settings, fractionDigits);
        if (!failed && (value->kind & kEndPoint))
            failed = midnightRule(value->second.point.timeOfDay, settings);
    } else if ((value->kind & kEndPoint) && value->second.point.timeOfDay.flags != 0) {
        failed = timeRules(value->second.point.timeOfDay, settings, fractionDigits);
    }
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckRecurringInterval(const KivTimeValue* value, uint32_t settings,
                                             uint16_t recurrenceDigits, const char** text) {
    if (!(value->kind & kRecurring)) return failUnless(false, "the value shall be a recurring time interval", text);
    Text failed = intervalRules(*value, settings, recurrenceDigits);
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckTimeInterval(const KivTimeValue* value, uint32_t settings, const char** text) {
    if (!(value->kind & kIntervalKinds) || (value->kind & kRecurring))
        return failUnless(false, "the value shall be a time interval", text);
    Text failed = intervalRules(*value, settings, 0);
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckDateOnly(const KivTimeValue* value, uint32_t settings,
                                    uint16_t yearDigits, const char** text) {
    const KivTimePoint& p = value->first.point;
    if (!isSinglePoint(*value) || p.date.flags == 0 || p.timeOfDay.flags != 0)
        return failUnless(false, "the value shall be a date only", text);
    Text failed = dateRules(p.date, settings, yearDigits);
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckTimeOfDayOnly(const KivTimeValue* value, uint32_t settings,
                                         uint16_t fractionDigits, const char** text) {
    const KivTimePoint& p = value->first.point;
    if (!isSinglePoint(*value) || p.timeOfDay.flags == 0 || p.date.flags != 0)
        return failUnless(false, "the value shall be a time-of-day only", text);
    Text failed = timeRules(p.timeOfDay, settings, fractionDigits);
    return failUnless(failed == nullptr, failed, text);
}

extern "C" int32_t kivCheckDateAndTime(const KivTimeValue* value, const char** text) {
    const KivTimePoint& p = value->first.point;
    bool passes = isSinglePoint(*value) && p.date.flags != 0 && p.timeOfDay.flags != 0;
    return failUnless(passes, "the value shall be a date and a time-of-day", text);
}

// Digit counts of the number of recurrences; an unlimited value (no digits)
// passes only a range whose highest count is 0xFFFF.
extern "C" int32_t kivCheckRecurrenceDigits(const KivTimeValue* value, uint16_t lowest,
                                            uint16_t highest, const char** text) {
    if (!(value->kind & kRecurring)) return failUnless(false, ": expected a recurring time interval", text);
    uint16_t digits = value->recurrenceDigits;
    bool passes = digits != 0 ? digits >= lowest && digits <= highest : highest == 0xFFFF;
    return failUnless(passes, nullptr, text);
}
