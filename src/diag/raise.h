// The common core of every raise, shared by the raise slots and by the
// memory-violation trap.
#ifndef FENK_DIAG_RAISE_H
#define FENK_DIAG_RAISE_H

#include "diag/error_context.h"

namespace fenk {

// Composes the message with its error context in the outermost world, tells
// the result trace hooks and unwinds to that world's jumpBuffer.
[[noreturn]] void raiseMessage(KivGlobal* world, int32_t index, RaiseArgument argument);

}  // namespace fenk

#endif
