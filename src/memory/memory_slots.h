/* The slot routines of the working memory subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_MEMORY_SLOTS_H
#define FENK_MEMORY_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Recorded allocation and temporary memory */
KivAllocZeroedFn kivAllocZeroed;
KivAllocExactFn kivAllocExact;
KivAllocRoundedFn kivAllocRounded;
KivTempAllocFn kivTempAlloc;
KivTempReleaseFn kivTempRelease;

#ifdef __cplusplus
}
#endif

#endif
