/* fenkapi: Time types — ISO 8601 TIME values and texts, property-settings checks, XML Schema forms, UTCTime and GeneralizedTime check.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_TIME_H
#define FENKAPI_TIME_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
