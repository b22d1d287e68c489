/* fenkapi: Trace window — the trace text store and the trace window.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_TRACEWIN_H
#define FENKAPI_TRACEWIN_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
