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

/* ---- ISO 8601 time texts: field records, parsers, formatters, normal form,
 * comparison and the canonical-form check ---------------------------------- */

enum {
    kivSlotFormatTimePoint = 302,
    kivSlotParseTimePoint = 303,
    kivSlotFormatDuration = 304,
    kivSlotParseDuration = 305,
    kivSlotFormatStartEnd = 306,
    kivSlotParseStartEnd = 307,
    kivSlotFormatStartDuration = 308,
    kivSlotParseStartDuration = 309,
    kivSlotFormatDurationEnd = 310,
    kivSlotParseDurationEnd = 311,
    kivSlotFormatRecurringDuration = 312,
    kivSlotParseRecurringDuration = 313,
    kivSlotFormatRecurringStartEnd = 314,
    kivSlotParseRecurringStartEnd = 315,
    kivSlotParseRecurringStartDuration = 316,
    kivSlotFormatRecurringStartDuration = 317,
    kivSlotFormatRecurringDurationEnd = 318,
    kivSlotParseRecurringDurationEnd = 319,
    kivSlotClassifyTimeText = 320,
    kivSlotCheckTimeCanonicalForm = 321,
    kivSlotNormalizeTimeText = 322,
    kivSlotTimeTextsDiffer = 323,
    kivSlotScanDuration = 336,
    kivSlotScanDigits = 337,
    kivSlotScanFixedDigits = 338,
    kivSlotPutDigitsMin = 339,
    kivSlotPutDigitsFixed = 340
};

/* KivTimeFields.flags */
#define KIV_TF_CENTURY 0x8000u
#define KIV_TF_YEAR 0x4000u
#define KIV_TF_WEEK 0x2000u
#define KIV_TF_MONTH 0x1000u
#define KIV_TF_DAY 0x0800u
#define KIV_TF_HOUR 0x0400u
#define KIV_TF_MINUTE 0x0200u
#define KIV_TF_SECOND 0x0100u
#define KIV_TF_UTC 0x0080u
#define KIV_TF_FRACTION 0x0040u
#define KIV_TF_ZONE 0x0020u
/* KivTimeFields.zoneFlags: the minutes of the time difference were written. */
#define KIV_TF_ZONE_MINUTES 0x80u

/* A time point of an ISO 8601 text. day is the day of the month with a
 * month, the day of the week with a week, the ordinal day otherwise. */
typedef struct KivTimeFields {
    uint16_t flags;
    int32_t century;
    int32_t year;
    uint16_t week;
    uint16_t month;
    uint16_t day;
    uint16_t hours;
    uint16_t minutes;
    uint16_t seconds;
    uint32_t reserved; /* neither read nor written; parsers clear it */
    uint32_t fractionDigits;
    uint32_t fraction;
    uint8_t zoneFlags;
    uint16_t zoneHours;
    uint16_t zoneMinutes;
    uint8_t zoneNegative;
} KivTimeFields;

/* KivDurationFields.flags */
#define KIV_DF_YEARS 0x80000000u
#define KIV_DF_MONTHS 0x40000000u
#define KIV_DF_WEEKS 0x20000000u
#define KIV_DF_DAYS 0x10000000u
#define KIV_DF_HOURS 0x08000000u
#define KIV_DF_MINUTES 0x04000000u
#define KIV_DF_SECONDS 0x02000000u
#define KIV_DF_FRACTION 0x01000000u /* of the last component */

typedef struct KivDurationFields {
    uint32_t flags;
    uint32_t years;
    uint32_t months;
    uint32_t weeks;
    uint32_t days;
    uint32_t hours;
    uint32_t minutes;
    uint32_t seconds;
    uint32_t fractionDigits;
    uint32_t fraction;
} KivDurationFields;

KIV_STATIC_ASSERT(sizeof(KivTimeFields) == 44, "KivTimeFields is 44 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, century) == 4, "century");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, week) == 12, "week");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, reserved) == 24, "reserved");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, fraction) == 32, "fraction");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, zoneFlags) == 36, "zoneFlags");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, zoneHours) == 38, "zoneHours");
KIV_STATIC_ASSERT(offsetof(KivTimeFields, zoneNegative) == 42, "zoneNegative");
KIV_STATIC_ASSERT(sizeof(KivDurationFields) == 40, "KivDurationFields is 40 bytes");
KIV_STATIC_ASSERT(offsetof(KivDurationFields, seconds) == 28, "seconds");
KIV_STATIC_ASSERT(offsetof(KivDurationFields, fraction) == 36, "fraction");

/* The forms of a time text as slot 320 tells them. */
enum {
    kivTimeFormPoint = 0,
    kivTimeFormDuration = 1,
    kivTimeFormStartEnd = 2,
    kivTimeFormStartDuration = 3,
    kivTimeFormDurationEnd = 4,
    kivTimeFormRecurringDuration = 5,
    kivTimeFormRecurringStartEnd = 6,
    kivTimeFormRecurringStartDuration = 7,
    kivTimeFormRecurringDurationEnd = 8,
    kivTimeFormNone = 9
};

/* A recurrence count is the number after "R", or -1 for "R/" (unlimited). */

/* Parsers: 0 when the whole text was taken, 12 otherwise. */
typedef int32_t KivParseTimePointFn(KivGlobal* world, const char* text, KivTimeFields* point);
typedef int32_t KivParseDurationFn(KivGlobal* world, const char* text, KivDurationFields* duration);
typedef int32_t KivParseStartEndFn(KivGlobal* world, const char* text, KivTimeFields* start,
                                   KivTimeFields* end);
typedef int32_t KivParseStartDurationFn(KivGlobal* world, const char* text, KivTimeFields* start,
                                        KivDurationFields* duration);
typedef int32_t KivParseDurationEndFn(KivGlobal* world, const char* text,
                                      KivDurationFields* duration, KivTimeFields* end);
typedef int32_t KivParseRecurringDurationFn(KivGlobal* world, const char* text,
                                            KivDurationFields* duration, int32_t* count);
typedef int32_t KivParseRecurringStartEndFn(KivGlobal* world, const char* text,
                                            KivTimeFields* start, KivTimeFields* end,
                                            int32_t* count);
typedef int32_t KivParseRecurringStartDurationFn(KivGlobal* world, const char* text,
                                                 KivTimeFields* start,
                                                 KivDurationFields* duration, int32_t* count);
typedef int32_t KivParseRecurringDurationEndFn(KivGlobal* world, const char* text,
                                               KivDurationFields* duration, KivTimeFields* end,
                                               int32_t* count);
typedef int32_t KivClassifyTimeTextFn(KivGlobal* world, const char* text);

/* Formatters: when *out is null the text is allocated through the world's
 * table and belongs to the caller; otherwise it is written at *out. 0 or 12.
 * The start/end formatters may clear the end's time-difference flag for the
 * duration of the call (canonical rules); it is set again before returning. */
typedef int32_t KivFormatTimePointFn(KivGlobal* world, const KivTimeFields* point, char** out);
typedef int32_t KivFormatDurationFn(KivGlobal* world, const KivDurationFields* duration,
                                    char** out);
typedef int32_t KivFormatStartEndFn(KivGlobal* world, const KivTimeFields* start,
                                    KivTimeFields* end, char** out);
typedef int32_t KivFormatStartDurationFn(KivGlobal* world, const KivTimeFields* start,
                                         const KivDurationFields* duration, char** out);
typedef int32_t KivFormatDurationEndFn(KivGlobal* world, const KivDurationFields* duration,
                                       const KivTimeFields* end, char** out);
typedef int32_t KivFormatRecurringDurationFn(KivGlobal* world, const KivDurationFields* duration,
                                             int32_t count, char** out);
typedef int32_t KivFormatRecurringStartEndFn(KivGlobal* world, const KivTimeFields* start,
                                             KivTimeFields* end, int32_t count, char** out);
typedef int32_t KivFormatRecurringStartDurationFn(KivGlobal* world, const KivTimeFields* start,
                                                  const KivDurationFields* duration,
                                                  int32_t count, char** out);
typedef int32_t KivFormatRecurringDurationEndFn(KivGlobal* world,
                                                const KivDurationFields* duration,
                                                const KivTimeFields* end, int32_t count,
                                                char** out);

/* Raises message 277 or 73 when the text is not in canonical form; the
 * world must be inside a guarded operation. */
typedef int32_t KivCheckTimeCanonicalFormFn(KivGlobal* world, const char* text);
typedef int32_t KivNormalizeTimeTextFn(KivGlobal* world, const char* text, char** out);
/* 0 when both texts denote the same value, 1 otherwise. */
typedef int32_t KivTimeTextsDifferFn(KivGlobal* world, const char* a, const char* b);

/* Scanners: a pointer after what was read, or null. */
typedef const char* KivScanDurationFn(const char* text, KivDurationFields* duration,
                                      uint8_t skipZero);
typedef const char* KivScanDigitsFn(const char* text, uint32_t* value);
typedef const char* KivScanFixedDigitsFn(const char* text, uint32_t count, uint32_t* value);
/* Digit writers: no NUL is appended. */
typedef char* KivPutDigitsMinFn(char* destination, uint32_t minimumWidth, uint32_t value);
typedef char* KivPutDigitsFixedFn(char* destination, int32_t width, uint32_t value);

#if KIV_CALL_HELPERS
static inline int32_t kivFormatTimePoint(KivGlobal* w, const KivTimeFields* p, char** out) { return KIV_SLOT(KivFormatTimePointFn, kivSlotFormatTimePoint)(w, p, out); }
static inline int32_t kivParseTimePoint(KivGlobal* w, const char* t, KivTimeFields* p) { return KIV_SLOT(KivParseTimePointFn, kivSlotParseTimePoint)(w, t, p); }
static inline int32_t kivFormatDuration(KivGlobal* w, const KivDurationFields* d, char** out) { return KIV_SLOT(KivFormatDurationFn, kivSlotFormatDuration)(w, d, out); }
static inline int32_t kivParseDuration(KivGlobal* w, const char* t, KivDurationFields* d) { return KIV_SLOT(KivParseDurationFn, kivSlotParseDuration)(w, t, d); }
static inline int32_t kivFormatStartEnd(KivGlobal* w, const KivTimeFields* s, KivTimeFields* e, char** out) { return KIV_SLOT(KivFormatStartEndFn, kivSlotFormatStartEnd)(w, s, e, out); }
static inline int32_t kivParseStartEnd(KivGlobal* w, const char* t, KivTimeFields* s, KivTimeFields* e) { return KIV_SLOT(KivParseStartEndFn, kivSlotParseStartEnd)(w, t, s, e); }
static inline int32_t kivFormatStartDuration(KivGlobal* w, const KivTimeFields* s, const KivDurationFields* d, char** out) { return KIV_SLOT(KivFormatStartDurationFn, kivSlotFormatStartDuration)(w, s, d, out); }
static inline int32_t kivParseStartDuration(KivGlobal* w, const char* t, KivTimeFields* s, KivDurationFields* d) { return KIV_SLOT(KivParseStartDurationFn, kivSlotParseStartDuration)(w, t, s, d); }
static inline int32_t kivFormatDurationEnd(KivGlobal* w, const KivDurationFields* d, const KivTimeFields* e, char** out) { return KIV_SLOT(KivFormatDurationEndFn, kivSlotFormatDurationEnd)(w, d, e, out); }
static inline int32_t kivParseDurationEnd(KivGlobal* w, const char* t, KivDurationFields* d, KivTimeFields* e) { return KIV_SLOT(KivParseDurationEndFn, kivSlotParseDurationEnd)(w, t, d, e); }
static inline int32_t kivFormatRecurringDuration(KivGlobal* w, const KivDurationFields* d, int32_t n, char** out) { return KIV_SLOT(KivFormatRecurringDurationFn, kivSlotFormatRecurringDuration)(w, d, n, out); }
static inline int32_t kivParseRecurringDuration(KivGlobal* w, const char* t, KivDurationFields* d, int32_t* n) { return KIV_SLOT(KivParseRecurringDurationFn, kivSlotParseRecurringDuration)(w, t, d, n); }
static inline int32_t kivFormatRecurringStartEnd(KivGlobal* w, const KivTimeFields* s, KivTimeFields* e, int32_t n, char** out) { return KIV_SLOT(KivFormatRecurringStartEndFn, kivSlotFormatRecurringStartEnd)(w, s, e, n, out); }
static inline int32_t kivParseRecurringStartEnd(KivGlobal* w, const char* t, KivTimeFields* s, KivTimeFields* e, int32_t* n) { return KIV_SLOT(KivParseRecurringStartEndFn, kivSlotParseRecurringStartEnd)(w, t, s, e, n); }
static inline int32_t kivParseRecurringStartDuration(KivGlobal* w, const char* t, KivTimeFields* s, KivDurationFields* d, int32_t* n) { return KIV_SLOT(KivParseRecurringStartDurationFn, kivSlotParseRecurringStartDuration)(w, t, s, d, n); }
static inline int32_t kivFormatRecurringStartDuration(KivGlobal* w, const KivTimeFields* s, const KivDurationFields* d, int32_t n, char** out) { return KIV_SLOT(KivFormatRecurringStartDurationFn, kivSlotFormatRecurringStartDuration)(w, s, d, n, out); }
static inline int32_t kivFormatRecurringDurationEnd(KivGlobal* w, const KivDurationFields* d, const KivTimeFields* e, int32_t n, char** out) { return KIV_SLOT(KivFormatRecurringDurationEndFn, kivSlotFormatRecurringDurationEnd)(w, d, e, n, out); }
static inline int32_t kivParseRecurringDurationEnd(KivGlobal* w, const char* t, KivDurationFields* d, KivTimeFields* e, int32_t* n) { return KIV_SLOT(KivParseRecurringDurationEndFn, kivSlotParseRecurringDurationEnd)(w, t, d, e, n); }
static inline int32_t kivClassifyTimeText(KivGlobal* w, const char* t) { return KIV_SLOT(KivClassifyTimeTextFn, kivSlotClassifyTimeText)(w, t); }
static inline int32_t kivCheckTimeCanonicalForm(KivGlobal* w, const char* t) { return KIV_SLOT(KivCheckTimeCanonicalFormFn, kivSlotCheckTimeCanonicalForm)(w, t); }
static inline int32_t kivNormalizeTimeText(KivGlobal* w, const char* t, char** out) { return KIV_SLOT(KivNormalizeTimeTextFn, kivSlotNormalizeTimeText)(w, t, out); }
static inline int32_t kivTimeTextsDiffer(KivGlobal* w, const char* a, const char* b) { return KIV_SLOT(KivTimeTextsDifferFn, kivSlotTimeTextsDiffer)(w, a, b); }
static inline const char* kivScanDuration(const char* t, KivDurationFields* d, uint8_t skipZero) { return KIV_SLOT(KivScanDurationFn, kivSlotScanDuration)(t, d, skipZero); }
static inline const char* kivScanDigits(const char* t, uint32_t* v) { return KIV_SLOT(KivScanDigitsFn, kivSlotScanDigits)(t, v); }
static inline const char* kivScanFixedDigits(const char* t, uint32_t n, uint32_t* v) { return KIV_SLOT(KivScanFixedDigitsFn, kivSlotScanFixedDigits)(t, n, v); }
static inline char* kivPutDigitsMin(char* d, uint32_t width, uint32_t v) { return KIV_SLOT(KivPutDigitsMinFn, kivSlotPutDigitsMin)(d, width, v); }
static inline char* kivPutDigitsFixed(char* d, int32_t width, uint32_t v) { return KIV_SLOT(KivPutDigitsFixedFn, kivSlotPutDigitsFixed)(d, width, v); }
#endif

/* ---- XML Schema calendar forms: fields to text and back ------------------ */

enum {
    kivSlotDurationToText = 195,
    kivSlotTextToDuration = 196,
    kivSlotDateTimeToText = 197,
    kivSlotTextToDateTime = 198,
    kivSlotTimeToText = 199,
    kivSlotTextToTime = 200,
    kivSlotDateToText = 201,
    kivSlotTextToDate = 202,
    kivSlotYearMonthToText = 203,
    kivSlotTextToYearMonth = 204,
    kivSlotYearToText = 205,
    kivSlotTextToYear = 206,
    kivSlotMonthDayToText = 207,
    kivSlotTextToMonthDay = 208,
    kivSlotDayToText = 209,
    kivSlotTextToDay = 210,
    kivSlotMonthToText = 211,
    kivSlotTextToMonth = 212
};

/* Zone offsets are minutes east of UTC, -840 to 840, or one of these. */
#define KIV_ZONE_NONE 0x7FFFFFFE
#define KIV_ZONE_UTC 0x7FFFFFFF

/* Writers: fields, then out; when *out is null the text is allocated through
 * the world's table. Parsers: text, then out-pointers (all required); a
 * fraction is handed back as a pointer into the text and a count. 0 or 12. */
typedef int32_t KivDurationToTextFn(KivGlobal* world, uint8_t negative, uint32_t years,
                                    uint32_t months, uint32_t days, uint32_t hours,
                                    uint32_t minutes, uint32_t seconds, const char* fraction,
                                    uint32_t fractionCount, char** out);
typedef int32_t KivTextToDurationFn(KivGlobal* world, const char* text, uint8_t* negative,
                                    uint32_t* years, uint32_t* months, uint32_t* days,
                                    uint32_t* hours, uint32_t* minutes, uint32_t* seconds,
                                    const char** fraction, uint32_t* fractionCount);
typedef int32_t KivDateTimeToTextFn(KivGlobal* world, int32_t year, int32_t month, int32_t day,
                                    uint32_t hour, uint32_t minute, uint32_t second,
                                    const char* fraction, uint32_t fractionCount, int32_t zone,
                                    char** out);
typedef int32_t KivTextToDateTimeFn(KivGlobal* world, const char* text, int32_t* year,
                                    int32_t* month, int32_t* day, uint32_t* hour,
                                    uint32_t* minute, uint32_t* second, const char** fraction,
                                    uint32_t* fractionCount, int32_t* zone);
typedef int32_t KivTimeToTextFn(KivGlobal* world, uint32_t hour, uint32_t minute, uint32_t second,
                                const char* fraction, uint32_t fractionCount, int32_t zone,
                                char** out);
typedef int32_t KivTextToTimeFn(KivGlobal* world, const char* text, uint32_t* hour,
                                uint32_t* minute, uint32_t* second, const char** fraction,
                                uint32_t* fractionCount, int32_t* zone);
typedef int32_t KivDateToTextFn(KivGlobal* world, int32_t year, int32_t month, int32_t day,
                                int32_t zone, char** out);
typedef int32_t KivTextToDateFn(KivGlobal* world, const char* text, int32_t* year,
                                int32_t* month, int32_t* day, int32_t* zone);
typedef int32_t KivYearMonthToTextFn(KivGlobal* world, int32_t year, int32_t month, int32_t zone,
                                     char** out);
typedef int32_t KivTextToYearMonthFn(KivGlobal* world, const char* text, int32_t* year,
                                     int32_t* month, int32_t* zone);
typedef int32_t KivYearToTextFn(KivGlobal* world, int32_t year, int32_t zone, char** out);
typedef int32_t KivTextToYearFn(KivGlobal* world, const char* text, int32_t* year, int32_t* zone);
typedef int32_t KivMonthDayToTextFn(KivGlobal* world, int32_t month, int32_t day, int32_t zone,
                                    char** out);
typedef int32_t KivTextToMonthDayFn(KivGlobal* world, const char* text, int32_t* month,
                                    int32_t* day, int32_t* zone);
typedef int32_t KivDayToTextFn(KivGlobal* world, int32_t day, int32_t zone, char** out);
typedef int32_t KivTextToDayFn(KivGlobal* world, const char* text, int32_t* day, int32_t* zone);
typedef int32_t KivMonthToTextFn(KivGlobal* world, int32_t month, int32_t zone, char** out);
typedef int32_t KivTextToMonthFn(KivGlobal* world, const char* text, int32_t* month,
                                 int32_t* zone);

#if KIV_CALL_HELPERS
static inline int32_t kivDurationToText(KivGlobal* w, uint8_t neg, uint32_t y, uint32_t mo, uint32_t d, uint32_t h, uint32_t mi, uint32_t s, const char* f, uint32_t n, char** out) { return KIV_SLOT(KivDurationToTextFn, kivSlotDurationToText)(w, neg, y, mo, d, h, mi, s, f, n, out); }
static inline int32_t kivTextToDuration(KivGlobal* w, const char* t, uint8_t* neg, uint32_t* y, uint32_t* mo, uint32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, const char** f, uint32_t* n) { return KIV_SLOT(KivTextToDurationFn, kivSlotTextToDuration)(w, t, neg, y, mo, d, h, mi, s, f, n); }
static inline int32_t kivDateTimeToText(KivGlobal* w, int32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi, uint32_t s, const char* f, uint32_t n, int32_t z, char** out) { return KIV_SLOT(KivDateTimeToTextFn, kivSlotDateTimeToText)(w, y, mo, d, h, mi, s, f, n, z, out); }
static inline int32_t kivTextToDateTime(KivGlobal* w, const char* t, int32_t* y, int32_t* mo, int32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, const char** f, uint32_t* n, int32_t* z) { return KIV_SLOT(KivTextToDateTimeFn, kivSlotTextToDateTime)(w, t, y, mo, d, h, mi, s, f, n, z); }
static inline int32_t kivTimeToText(KivGlobal* w, uint32_t h, uint32_t mi, uint32_t s, const char* f, uint32_t n, int32_t z, char** out) { return KIV_SLOT(KivTimeToTextFn, kivSlotTimeToText)(w, h, mi, s, f, n, z, out); }
static inline int32_t kivTextToTime(KivGlobal* w, const char* t, uint32_t* h, uint32_t* mi, uint32_t* s, const char** f, uint32_t* n, int32_t* z) { return KIV_SLOT(KivTextToTimeFn, kivSlotTextToTime)(w, t, h, mi, s, f, n, z); }
static inline int32_t kivDateToText(KivGlobal* w, int32_t y, int32_t mo, int32_t d, int32_t z, char** out) { return KIV_SLOT(KivDateToTextFn, kivSlotDateToText)(w, y, mo, d, z, out); }
static inline int32_t kivTextToDate(KivGlobal* w, const char* t, int32_t* y, int32_t* mo, int32_t* d, int32_t* z) { return KIV_SLOT(KivTextToDateFn, kivSlotTextToDate)(w, t, y, mo, d, z); }
static inline int32_t kivYearMonthToText(KivGlobal* w, int32_t y, int32_t mo, int32_t z, char** out) { return KIV_SLOT(KivYearMonthToTextFn, kivSlotYearMonthToText)(w, y, mo, z, out); }
static inline int32_t kivTextToYearMonth(KivGlobal* w, const char* t, int32_t* y, int32_t* mo, int32_t* z) { return KIV_SLOT(KivTextToYearMonthFn, kivSlotTextToYearMonth)(w, t, y, mo, z); }
static inline int32_t kivYearToText(KivGlobal* w, int32_t y, int32_t z, char** out) { return KIV_SLOT(KivYearToTextFn, kivSlotYearToText)(w, y, z, out); }
static inline int32_t kivTextToYear(KivGlobal* w, const char* t, int32_t* y, int32_t* z) { return KIV_SLOT(KivTextToYearFn, kivSlotTextToYear)(w, t, y, z); }
static inline int32_t kivMonthDayToText(KivGlobal* w, int32_t mo, int32_t d, int32_t z, char** out) { return KIV_SLOT(KivMonthDayToTextFn, kivSlotMonthDayToText)(w, mo, d, z, out); }
static inline int32_t kivTextToMonthDay(KivGlobal* w, const char* t, int32_t* mo, int32_t* d, int32_t* z) { return KIV_SLOT(KivTextToMonthDayFn, kivSlotTextToMonthDay)(w, t, mo, d, z); }
static inline int32_t kivDayToText(KivGlobal* w, int32_t d, int32_t z, char** out) { return KIV_SLOT(KivDayToTextFn, kivSlotDayToText)(w, d, z, out); }
static inline int32_t kivTextToDay(KivGlobal* w, const char* t, int32_t* d, int32_t* z) { return KIV_SLOT(KivTextToDayFn, kivSlotTextToDay)(w, t, d, z); }
static inline int32_t kivMonthToText(KivGlobal* w, int32_t mo, int32_t z, char** out) { return KIV_SLOT(KivMonthToTextFn, kivSlotMonthToText)(w, mo, z, out); }
static inline int32_t kivTextToMonth(KivGlobal* w, const char* t, int32_t* mo, int32_t* z) { return KIV_SLOT(KivTextToMonthFn, kivSlotTextToMonth)(w, t, mo, z); }
#endif

/* ---- end of ISO 8601 time texts and XML Schema calendar forms ------------ */

#ifdef __cplusplus
}
#endif

#endif
