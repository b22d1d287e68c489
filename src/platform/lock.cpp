#include "platform/lock.h"

namespace fenk {

bool enterLock(KivCriticalSection* lock) {
    return lock && pthread_mutex_lock(&lock->mutex) == 0;
}

void leaveLock(KivCriticalSection* lock) {
    if (lock) pthread_mutex_unlock(&lock->mutex);
}

bool createLock(KivCriticalSection* lock) {
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0) return false;
    bool made = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
                pthread_mutex_init(&lock->mutex, &attributes) == 0;
    pthread_mutexattr_destroy(&attributes);
    return made;
}

void destroyLock(KivCriticalSection* lock) { pthread_mutex_destroy(&lock->mutex); }

}  // namespace fenk
