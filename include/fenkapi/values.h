/* fenkapi: Value utilities — copy and comparison, constructors, GeneralizedTime and UTCTime conversions, constraint checks and name lookup.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_VALUES_H
#define FENKAPI_VALUES_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
