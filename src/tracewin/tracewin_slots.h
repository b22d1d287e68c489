/* The slot routines of the trace window subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_TRACEWIN_SLOTS_H
#define FENK_TRACEWIN_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Trace text store and trace window. */
KivTracePrintFn kivTracePrint;
KivTraceVPrintFn kivTraceVPrint;
KivReadTraceLineFn kivReadTraceLine;
KivResetTraceFn kivResetTrace;
KivSaveTraceFn kivSaveTrace;
KivOpenTraceWindowFn kivOpenTraceWindow;

#ifdef __cplusplus
}
#endif

#endif
