/* fenkapi: Value utilities — copy and comparison, constructors, GeneralizedTime and UTCTime conversions, constraint checks and name lookup.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_VALUES_H
#define FENKAPI_VALUES_H

#ifdef __cplusplus
extern "C" {
#endif

/* KivTimeStruct: the C structure of UTCTime and GeneralizedTime values (18
 * bytes). For UTCTime, year holds the two-digit value. zoneOffset is the
 * offset from UTC in minutes (local time = UTC + zoneOffset); isUtc is 1 for
 * a time in UTC ('Z'). */
typedef struct KivTimeStruct {
    uint16_t year;
    uint16_t month;
    uint16_t day;
    uint16_t hour;
    uint16_t minute;
    uint16_t second;
    uint16_t milliseconds;
    int16_t zoneOffset;
    uint8_t isUtc;
} KivTimeStruct;

KIV_STATIC_ASSERT(sizeof(KivTimeStruct) == 18, "KivTimeStruct is 18 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, milliseconds) == 12, "milliseconds");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, zoneOffset) == 14, "zoneOffset");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, isUtc) == 16, "isUtc");
/* end of KivTimeStruct */

/* GeneralizedTime and UTCTime conversions among text, separate fields,
 * KivTimeStruct and seconds since 1970-01-01T00:00:00Z. Under DER and CER
 * the text routines insist on the canonical forms. Every routine answers 0,
 * 6 (a null argument), 8 (out of memory) or 12 (out-of-range value in time
 * type); none raises.
 * Zone values of the text routines: 0 local time, 1 'Z', otherwise the offset
 * in minutes (negative west of UTC). */
enum {
    kivSlotParseGeneralizedTime = 65,
    kivSlotParseUtcTime = 66,
    kivSlotFormatGeneralizedTime = 67,
    kivSlotFormatUtcTime = 68,
    kivSlotGeneralizedTimeFields = 88,
    kivSlotUtcTimeFields = 89,
    kivSlotGeneralizedTimeToStruct = 265,
    kivSlotUtcTimeToStruct = 266,
    kivSlotNewGeneralizedTimeStruct = 267,
    kivSlotNewUtcTimeStruct = 268,
    kivSlotSecondsToGeneralizedTimeText = 283,
    kivSlotSecondsToGeneralizedTimeStruct = 284,
    kivSlotSecondsToUtcTimeText = 285,
    kivSlotSecondsToUtcTimeStruct = 286,
    kivSlotGeneralizedTimeTextToSeconds = 287,
    kivSlotGeneralizedTimeStructToSeconds = 288,
    kivSlotUtcTimeTextToSeconds = 289,
    kivSlotUtcTimeStructToSeconds = 290
};

typedef int32_t KivParseGeneralizedTimeFn(KivGlobal* world, const char* text, uint32_t* year,
                                          uint32_t* month, uint32_t* day, uint32_t* hour,
                                          uint32_t* minute, uint32_t* second,
                                          uint32_t* fractionValue, uint16_t* fractionDigits,
                                          int32_t* zone);
typedef int32_t KivParseUtcTimeFn(KivGlobal* world, const char* text, uint32_t* year,
                                  uint32_t* month, uint32_t* day, uint32_t* hour,
                                  uint32_t* minute, uint32_t* second, int32_t* zone);
/* The output needs room for 14 digits, a point, the fraction digits, a
 * five-character offset and the terminator. */
typedef int32_t KivFormatGeneralizedTimeFn(KivGlobal* world, uint32_t year, int32_t month,
                                           int32_t day, uint32_t hour, uint32_t minute,
                                           uint32_t second, uint32_t fractionValue,
                                           uint16_t fractionDigits, int32_t zone, char* out);
typedef int32_t KivFormatUtcTimeFn(KivGlobal* world, uint32_t year, int32_t month, int32_t day,
                                   uint32_t hour, uint32_t minute, uint32_t second, int32_t zone,
                                   char* out);
typedef int32_t KivGeneralizedTimeFieldsFn(KivGlobal* world, const char* text, uint16_t* year,
                                           uint16_t* month, uint16_t* day, uint16_t* hour,
                                           uint16_t* minute, uint16_t* second,
                                           uint32_t* fractionValue, uint16_t* fractionDigits,
                                           int32_t* zone);
typedef int32_t KivUtcTimeFieldsFn(KivGlobal* world, const char* text, uint16_t* year,
                                   uint16_t* month, uint16_t* day, uint16_t* hour,
                                   uint16_t* minute, uint16_t* second, int32_t* zone);
typedef int32_t KivTimeTextToStructFn(KivGlobal* world, KivTimeStruct* out, const char* text);
/* A new structure from the allocation hook, or null when the text is refused
 * or there is no memory; it belongs to the caller. */
typedef KivTimeStruct* KivNewTimeStructFn(KivGlobal* world, const char* text);
/* When *text (or *out) is null, a block is allocated through the table and
 * stored there; it belongs to the caller. */
typedef int32_t KivSecondsToTimeTextFn(KivGlobal* world, int32_t seconds, int32_t offsetMinutes,
                                       char** text);
typedef int32_t KivSecondsToTimeStructFn(KivGlobal* world, int32_t seconds,
                                         int32_t offsetMinutes, KivTimeStruct** out);
typedef int32_t KivTimeTextToSecondsFn(KivGlobal* world, const char* text, uint64_t* seconds);
typedef int32_t KivTimeStructToSecondsFn(KivGlobal* world, const KivTimeStruct* value,
                                         uint64_t* seconds);

#if KIV_CALL_HELPERS
static inline int32_t kivParseGeneralizedTime(KivGlobal* w, const char* t, uint32_t* y, uint32_t* mo, uint32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, uint32_t* fv, uint16_t* fd, int32_t* z) { return KIV_SLOT(KivParseGeneralizedTimeFn, kivSlotParseGeneralizedTime)(w, t, y, mo, d, h, mi, s, fv, fd, z); }
static inline int32_t kivParseUtcTime(KivGlobal* w, const char* t, uint32_t* y, uint32_t* mo, uint32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, int32_t* z) { return KIV_SLOT(KivParseUtcTimeFn, kivSlotParseUtcTime)(w, t, y, mo, d, h, mi, s, z); }
static inline int32_t kivFormatGeneralizedTime(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi, uint32_t s, uint32_t fv, uint16_t fd, int32_t z, char* out) { return KIV_SLOT(KivFormatGeneralizedTimeFn, kivSlotFormatGeneralizedTime)(w, y, mo, d, h, mi, s, fv, fd, z, out); }
static inline int32_t kivFormatUtcTime(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi, uint32_t s, int32_t z, char* out) { return KIV_SLOT(KivFormatUtcTimeFn, kivSlotFormatUtcTime)(w, y, mo, d, h, mi, s, z, out); }
static inline int32_t kivGeneralizedTimeFields(KivGlobal* w, const char* t, uint16_t* y, uint16_t* mo, uint16_t* d, uint16_t* h, uint16_t* mi, uint16_t* s, uint32_t* fv, uint16_t* fd, int32_t* z) { return KIV_SLOT(KivGeneralizedTimeFieldsFn, kivSlotGeneralizedTimeFields)(w, t, y, mo, d, h, mi, s, fv, fd, z); }
static inline int32_t kivUtcTimeFields(KivGlobal* w, const char* t, uint16_t* y, uint16_t* mo, uint16_t* d, uint16_t* h, uint16_t* mi, uint16_t* s, int32_t* z) { return KIV_SLOT(KivUtcTimeFieldsFn, kivSlotUtcTimeFields)(w, t, y, mo, d, h, mi, s, z); }
static inline int32_t kivGeneralizedTimeToStruct(KivGlobal* w, KivTimeStruct* out, const char* t) { return KIV_SLOT(KivTimeTextToStructFn, kivSlotGeneralizedTimeToStruct)(w, out, t); }
static inline int32_t kivUtcTimeToStruct(KivGlobal* w, KivTimeStruct* out, const char* t) { return KIV_SLOT(KivTimeTextToStructFn, kivSlotUtcTimeToStruct)(w, out, t); }
static inline KivTimeStruct* kivNewGeneralizedTimeStruct(KivGlobal* w, const char* t) { return KIV_SLOT(KivNewTimeStructFn, kivSlotNewGeneralizedTimeStruct)(w, t); }
static inline KivTimeStruct* kivNewUtcTimeStruct(KivGlobal* w, const char* t) { return KIV_SLOT(KivNewTimeStructFn, kivSlotNewUtcTimeStruct)(w, t); }
static inline int32_t kivSecondsToGeneralizedTimeText(KivGlobal* w, int32_t s, int32_t off, char** t) { return KIV_SLOT(KivSecondsToTimeTextFn, kivSlotSecondsToGeneralizedTimeText)(w, s, off, t); }
static inline int32_t kivSecondsToGeneralizedTimeStruct(KivGlobal* w, int32_t s, int32_t off, KivTimeStruct** out) { return KIV_SLOT(KivSecondsToTimeStructFn, kivSlotSecondsToGeneralizedTimeStruct)(w, s, off, out); }
static inline int32_t kivSecondsToUtcTimeText(KivGlobal* w, int32_t s, int32_t off, char** t) { return KIV_SLOT(KivSecondsToTimeTextFn, kivSlotSecondsToUtcTimeText)(w, s, off, t); }
static inline int32_t kivSecondsToUtcTimeStruct(KivGlobal* w, int32_t s, int32_t off, KivTimeStruct** out) { return KIV_SLOT(KivSecondsToTimeStructFn, kivSlotSecondsToUtcTimeStruct)(w, s, off, out); }
static inline int32_t kivGeneralizedTimeTextToSeconds(KivGlobal* w, const char* t, uint64_t* s) { return KIV_SLOT(KivTimeTextToSecondsFn, kivSlotGeneralizedTimeTextToSeconds)(w, t, s); }
static inline int32_t kivGeneralizedTimeStructToSeconds(KivGlobal* w, const KivTimeStruct* v, uint64_t* s) { return KIV_SLOT(KivTimeStructToSecondsFn, kivSlotGeneralizedTimeStructToSeconds)(w, v, s); }
static inline int32_t kivUtcTimeTextToSeconds(KivGlobal* w, const char* t, uint64_t* s) { return KIV_SLOT(KivTimeTextToSecondsFn, kivSlotUtcTimeTextToSeconds)(w, t, s); }
static inline int32_t kivUtcTimeStructToSeconds(KivGlobal* w, const KivTimeStruct* v, uint64_t* s) { return KIV_SLOT(KivTimeStructToSecondsFn, kivSlotUtcTimeStructToSeconds)(w, v, s); }
#endif

#ifdef __cplusplus
}
#endif

#endif
