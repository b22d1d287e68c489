// The guarded entry: runs one operation so that any raise below it unwinds
// back here and becomes the operation's answer, with the memory-violation
// trap and thread registration around it.
#ifndef FENK_DIAG_GUARDED_ENTRY_H
#define FENK_DIAG_GUARDED_ENTRY_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// The work of one guarded operation. run does the operation (including any
// keeping of its results on success) and answers its code; afterRaise, when
// set, is extra clean-up for the unwound path, run after the temporary
// chains are freed. Neither may leave objects with destructors on the stack
// across a raise.
struct GuardedWork {
    int32_t (*run)(KivGlobal* world, void* context);
    void (*afterRaise)(KivGlobal* world, void* context);
    void* context;
};

// The caller has checked its arguments and the control table. Sets up the
// world's unwinding and working-memory fields (messageOut, parentWorld and
// childWorld cleared; jumpBuffer, raiseRoutine, currentBlockTable, the
// temporary-memory bounds), then runs the work. Unless bit 0x200 of
// decodingFlags is set, the trap is armed and the thread registered for the
// duration. Answers run's result, the raised message's code, 19 when the
// thread could not be registered, or 18 when the clean-up itself raised.
int32_t runGuarded(KivGlobal* world, const GuardedWork& work);

}  // namespace fenk

#endif
