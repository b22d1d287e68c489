// Internal pieces of the trace text store shared by the store's slots and
// the trace window.
#ifndef FENK_TRACEWIN_TRACE_STORE_H
#define FENK_TRACEWIN_TRACE_STORE_H

#include "fenkapi.h"

namespace fenk {

// Makes a new temporary file for the world's trace text and stores it with
// its name. On failure shows "Unable To Open a Temporary File", validates
// the window (so that it does not keep asking to be painted) and answers
// false, leaving both cleared.
bool openTraceTempFile(KivGlobal* world);

// Changes whenever a store is reset: a long copy or indexing run that lets
// the window handle its messages checks it to see whether the store it
// works on was emptied meanwhile.
uint32_t traceResetCount();

// Error boxes of the store, owned by the given window.
void showTraceError(void* owner, const char* text);

}  // namespace fenk

#endif
