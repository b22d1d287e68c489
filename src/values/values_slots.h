/* The slot routines of the value utilities subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_VALUES_SLOTS_H
#define FENK_VALUES_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
