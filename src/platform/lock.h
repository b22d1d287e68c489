// The registry lock: the world's globalLock, a recursive mutex made by the
// companion runtime.
#ifndef FENK_PLATFORM_LOCK_H
#define FENK_PLATFORM_LOCK_H

#include "fenkapi.h"

namespace fenk {

// False when there is no lock or it cannot be taken.
bool enterLock(KivCriticalSection* lock);
void leaveLock(KivCriticalSection* lock);

// Makes a recursive lock in caller storage; false on failure.
bool createLock(KivCriticalSection* lock);
void destroyLock(KivCriticalSection* lock);

}  // namespace fenk

#endif
