/* fenkapi: Diagnostics — messages, raising, the guarded entry, error context, return-code texts, tracing and dumps.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_DIAG_H
#define FENKAPI_DIAG_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
