/* The slot routines of the time types subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_TIME_SLOTS_H
#define FENK_TIME_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* UTCTime and GeneralizedTime check (raises) */
KivCheckGeneralizedOrUTCTimeFn kivCheckGeneralizedOrUTCTime;

#ifdef __cplusplus
}
#endif

#endif
