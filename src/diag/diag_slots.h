/* The slot routines of the diagnostics subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_DIAG_SLOTS_H
#define FENK_DIAG_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Raising (a raise never returns) and the guarded value print */
KivRaiseFn kivRaise __attribute__((noreturn));
KivRaiseWideFn kivRaiseWide __attribute__((noreturn));
KivRaiseTextFn kivRaiseText __attribute__((noreturn));
KivRaiseDataFn kivRaiseData __attribute__((noreturn));
KivRecordMessageFn kivRecordMessage;
KivDisplayPduFn kivDisplayPdu;

/* Return-code descriptions */
KivReturnCodeTextFn kivReturnCodeText;

/* Tracing, dumps and the trace file */
KivHexDumpFn kivHexDump;
KivOpenTraceFileFn kivOpenTraceFile;
KivCloseTraceFileFn kivCloseTraceFile;
KivPrintDottedOctetsFn kivPrintDottedOctets;
KivPrintQuotedOctetsFn kivPrintQuotedOctets;
KivTraceEncoderInputFn kivTraceEncoderInput;
KivTraceEncoderResultFn kivTraceEncoderResult;
KivTraceDecoderInputFn kivTraceDecoderInput;
KivTraceDecoderResultFn kivTraceDecoderResult;

/* Memory-handle reset, current handle and dump */
KivResetMemoryHandleFn kivResetMemoryHandle;
KivCurrentMemoryHandleFn kivCurrentMemoryHandle;
KivDumpMemoryHandleFn kivDumpMemoryHandle;

#ifdef __cplusplus
}
#endif

#endif
