/* fenkapi: Time types — ISO 8601 TIME values and texts, property-settings checks, XML Schema forms, UTCTime and GeneralizedTime check.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_TIME_H
#define FENKAPI_TIME_H

#ifdef __cplusplus
extern "C" {
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
