/* fenkapi: Time types — ISO 8601 TIME values and texts, property-settings checks, XML Schema forms, UTCTime and GeneralizedTime check.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_TIME_H
#define FENKAPI_TIME_H

#ifdef __cplusplus
extern "C" {
#endif

/* ISO 8601 TIME values: the structured record, its raising parser (324),
 * ordering (325), equality (326) and the property-settings checks (327-335). */
enum {
    kivSlotParseTimeValue = 324,
    kivSlotCompareTimeValues = 325,
    kivSlotTimeValuesDiffer = 326,
    kivSlotCheckIntervalSettings = 327,
    kivSlotCheckPointDateSettings = 328,
    kivSlotCheckPointTimeSettings = 329,
    kivSlotCheckRecurringInterval = 330,
    kivSlotCheckTimeInterval = 331,
    kivSlotCheckDateOnly = 332,
    kivSlotCheckTimeOfDayOnly = 333,
    kivSlotCheckDateAndTime = 334,
    kivSlotCheckRecurrenceDigits = 335
};

/* A date; all zero when the point has none. flags: 0x80 century, 0x40 year,
 * 0x20 week, 0x10 month, 0x08 day; low bits the year class: 0x04 basic,
 * 0x02 proleptic, 0x01 negative, none for a large year or century. */
typedef struct KivDatePart {
    uint8_t flags;
    uint16_t yearDigits; /* digits of the year or century as written */
    int32_t year;        /* the signed year, or the signed century */
    uint16_t week;
    uint16_t month;
    uint16_t day; /* of the month, of the week, or of the year */
} KivDatePart;

/* A time of day; all zero when the point has none. flags: 0x80 hours,
 * 0x40 minutes, 0x20 seconds, 0x10 decimal fraction, 0x08 "Z", 0x04 time
 * difference. zoneFlags: 0x80 negative difference, 0x40 its minutes written. */
typedef struct KivTimeOfDayPart {
    uint8_t flags;
    uint16_t hours;
    uint16_t minutes;
    uint16_t seconds;
    uint16_t fractionDigits;
    uint32_t fraction; /* fraction / 10^fractionDigits of the last component */
    uint8_t zoneFlags;
    uint16_t zoneHours;
    uint16_t zoneMinutes;
} KivTimeOfDayPart;

typedef struct KivTimePoint {
    KivDatePart date;
    KivTimeOfDayPart timeOfDay;
} KivTimePoint;

/* flags: 0x80 years, 0x40 months, 0x20 weeks, 0x10 days, 0x08 hours,
 * 0x04 minutes, 0x02 seconds (each set when non-zero, and always for the
 * last component written), 0x01 decimal fraction. last: the flag of the last
 * component written; the fraction belongs to it. */
typedef struct KivDurationPart {
    uint8_t flags;
    uint8_t last;
    uint32_t years;
    uint32_t months;
    uint32_t weeks;
    uint32_t days;
    uint32_t hours;
    uint32_t minutes;
    uint32_t seconds;
    uint16_t fractionDigits;
    uint32_t fraction;
} KivDurationPart;

/* A component of a value: a point or a duration, as the kind says. */
typedef union KivTimeComponent {
    KivTimePoint point;
    KivDurationPart duration;
} KivTimeComponent;

/* kind: 0x80 recurring; 0x40 first component a start point, 0x10 a
 * duration; 0x20 second component an end point, 0x08 a duration. */
typedef struct KivTimeValue {
    uint8_t kind;
    uint16_t recurrenceDigits;
    uint32_t recurrences; /* 0xFFFFFFFF: unlimited */
    KivTimeComponent first;
    KivTimeComponent second;
} KivTimeValue;

KIV_STATIC_ASSERT(sizeof(KivDatePart) == 16, "KivDatePart is 16 bytes");
KIV_STATIC_ASSERT(offsetof(KivDatePart, year) == 4, "KivDatePart.year");
KIV_STATIC_ASSERT(offsetof(KivDatePart, day) == 12, "KivDatePart.day");
KIV_STATIC_ASSERT(sizeof(KivTimeOfDayPart) == 24, "KivTimeOfDayPart is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeOfDayPart, fraction) == 12, "KivTimeOfDayPart.fraction");
KIV_STATIC_ASSERT(offsetof(KivTimeOfDayPart, zoneFlags) == 16, "KivTimeOfDayPart.zoneFlags");
KIV_STATIC_ASSERT(offsetof(KivTimeOfDayPart, zoneMinutes) == 20, "KivTimeOfDayPart.zoneMinutes");
KIV_STATIC_ASSERT(sizeof(KivTimePoint) == 40, "KivTimePoint is 40 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimePoint, timeOfDay) == 16, "KivTimePoint.timeOfDay");
KIV_STATIC_ASSERT(sizeof(KivDurationPart) == 40, "KivDurationPart is 40 bytes");
KIV_STATIC_ASSERT(offsetof(KivDurationPart, years) == 4, "KivDurationPart.years");
KIV_STATIC_ASSERT(offsetof(KivDurationPart, fractionDigits) == 32, "KivDurationPart.fractionDigits");
KIV_STATIC_ASSERT(offsetof(KivDurationPart, fraction) == 36, "KivDurationPart.fraction");
KIV_STATIC_ASSERT(sizeof(KivTimeValue) == 88, "KivTimeValue is 88 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeValue, recurrences) == 4, "KivTimeValue.recurrences");
KIV_STATIC_ASSERT(offsetof(KivTimeValue, first) == 8, "KivTimeValue.first");
KIV_STATIC_ASSERT(offsetof(KivTimeValue, second) == 48, "KivTimeValue.second");

/* Parses a NUL-terminated text; every failure is raised. */
typedef void KivParseTimeValueFn(KivGlobal* world, const char* text, KivTimeValue* value);
/* 1 a later or longer, 0 equal, -1 earlier or shorter, -2 not comparable. */
typedef int32_t KivCompareTimeValuesFn(const KivTimeValue* a, const KivTimeValue* b);
/* 0 equal, 1 different. */
typedef int32_t KivTimeValuesDifferFn(const KivTimeValue* a, const KivTimeValue* b);

/* Property-settings checks: 0 when the value passes (text untouched), 1 when
 * it fails (text set to a constant English text, or null where said). */
typedef int32_t KivCheckIntervalSettingsFn(const KivTimeValue* value, uint32_t settings,
                                           uint16_t recurrenceDigits, const char** text);
typedef int32_t KivCheckPointDateSettingsFn(const KivTimeValue* value, uint32_t settings,
                                            uint16_t yearDigits, const char** text);
typedef int32_t KivCheckPointTimeSettingsFn(const KivTimeValue* value, uint32_t settings,
                                            uint16_t fractionDigits, const char** text);
typedef int32_t KivCheckRecurringIntervalFn(const KivTimeValue* value, uint32_t settings,
                                            uint16_t recurrenceDigits, const char** text);
typedef int32_t KivCheckTimeIntervalFn(const KivTimeValue* value, uint32_t settings,
                                       const char** text);
typedef int32_t KivCheckDateOnlyFn(const KivTimeValue* value, uint32_t settings,
                                   uint16_t yearDigits, const char** text);
typedef int32_t KivCheckTimeOfDayOnlyFn(const KivTimeValue* value, uint32_t settings,
                                        uint16_t fractionDigits, const char** text);
typedef int32_t KivCheckDateAndTimeFn(const KivTimeValue* value, const char** text);
typedef int32_t KivCheckRecurrenceDigitsFn(const KivTimeValue* value, uint16_t lowest,
                                           uint16_t highest, const char** text);

#if KIV_CALL_HELPERS
static inline void kivParseTimeValue(KivGlobal* w, const char* text, KivTimeValue* v) { KIV_SLOT(KivParseTimeValueFn, kivSlotParseTimeValue)(w, text, v); }
static inline int32_t kivCompareTimeValues(const KivTimeValue* a, const KivTimeValue* b) { return KIV_SLOT(KivCompareTimeValuesFn, kivSlotCompareTimeValues)(a, b); }
static inline int32_t kivTimeValuesDiffer(const KivTimeValue* a, const KivTimeValue* b) { return KIV_SLOT(KivTimeValuesDifferFn, kivSlotTimeValuesDiffer)(a, b); }
static inline int32_t kivCheckIntervalSettings(const KivTimeValue* v, uint32_t s, uint16_t r, const char** t) { return KIV_SLOT(KivCheckIntervalSettingsFn, kivSlotCheckIntervalSettings)(v, s, r, t); }
static inline int32_t kivCheckPointDateSettings(const KivTimeValue* v, uint32_t s, uint16_t d, const char** t) { return KIV_SLOT(KivCheckPointDateSettingsFn, kivSlotCheckPointDateSettings)(v, s, d, t); }
static inline int32_t kivCheckPointTimeSettings(const KivTimeValue* v, uint32_t s, uint16_t f, const char** t) { return KIV_SLOT(KivCheckPointTimeSettingsFn, kivSlotCheckPointTimeSettings)(v, s, f, t); }
static inline int32_t kivCheckRecurringInterval(const KivTimeValue* v, uint32_t s, uint16_t r, const char** t) { return KIV_SLOT(KivCheckRecurringIntervalFn, kivSlotCheckRecurringInterval)(v, s, r, t); }
static inline int32_t kivCheckTimeInterval(const KivTimeValue* v, uint32_t s, const char** t) { return KIV_SLOT(KivCheckTimeIntervalFn, kivSlotCheckTimeInterval)(v, s, t); }
static inline int32_t kivCheckDateOnly(const KivTimeValue* v, uint32_t s, uint16_t d, const char** t) { return KIV_SLOT(KivCheckDateOnlyFn, kivSlotCheckDateOnly)(v, s, d, t); }
static inline int32_t kivCheckTimeOfDayOnly(const KivTimeValue* v, uint32_t s, uint16_t f, const char** t) { return KIV_SLOT(KivCheckTimeOfDayOnlyFn, kivSlotCheckTimeOfDayOnly)(v, s, f, t); }
static inline int32_t kivCheckDateAndTime(const KivTimeValue* v, const char** t) { return KIV_SLOT(KivCheckDateAndTimeFn, kivSlotCheckDateAndTime)(v, t); }
static inline int32_t kivCheckRecurrenceDigits(const KivTimeValue* v, uint16_t lo, uint16_t hi, const char** t) { return KIV_SLOT(KivCheckRecurrenceDigitsFn, kivSlotCheckRecurrenceDigits)(v, lo, hi, t); }
#endif

/* UTCTime and GeneralizedTime check: kind non-zero means UTCTime, 0
 * GeneralizedTime. A text that passes returns; any fault is raised (message
 * 9, 73 or 74 to 78) and unwinds to the caller's guarded entry. Under DER
 * and CER, bit 0x8000 of levelMask lets a lowercase 'z' stand for 'Z'. */
enum { kivSlotCheckGeneralizedOrUTCTime = 234 };

typedef void KivCheckGeneralizedOrUTCTimeFn(KivGlobal* world, const char* text, uint16_t kind);

#if KIV_CALL_HELPERS
static inline void kivCheckGeneralizedOrUTCTime(KivGlobal* w, const char* t, uint16_t kind) { KIV_SLOT(KivCheckGeneralizedOrUTCTimeFn, kivSlotCheckGeneralizedOrUTCTime)(w, t, kind); }
#endif

#ifdef __cplusplus
}
#endif

#endif
