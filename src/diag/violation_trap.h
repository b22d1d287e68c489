// The memory-violation trap: a SIGSEGV handler that turns a fault inside a
// guarded operation into message index 10 raised in that thread's world.
#ifndef FENK_DIAG_VIOLATION_TRAP_H
#define FENK_DIAG_VIOLATION_TRAP_H

#include "fenkapi.h"

namespace fenk {

// The handler is process-wide while guarded operations of several threads
// overlap, so operations in flight are counted: the first installs the trap
// and keeps the handler it replaced, the last puts that one back. Each
// world's savedSignalHandler records the handler in force when its own
// operation began.
void armTrap(KivGlobal* world);
void disarmTrap();

}  // namespace fenk

#endif
