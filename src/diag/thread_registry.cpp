#include "diag/thread_registry.h"

#include <pthread.h>

#include "platform/lock.h"
#include "platform/thread_ids.h"

namespace fenk {
namespace {

ThreadEntry* head = nullptr;

// Worlds made separately may each carry a globalLock of their own, while the
// list is one for the process: this library-wide mutex keeps the list itself
// consistent whatever locks the worlds bring. It is held only around link
// changes and lookups, never while anything can fault or raise.
pthread_mutex_t listMutex = PTHREAD_MUTEX_INITIALIZER;

bool isCurrentThread(const ThreadEntry* entry, uint32_t processId, uint32_t threadId) {
    return entry->processId == processId && entry->threadId == threadId;
}

}  // namespace

bool registerThread(KivGlobal* world, ThreadEntry& entry) {
    if (!enterLock(world->globalLock)) return false;
    entry.processId = currentProcessId();
    entry.threadId = currentThreadId();
    entry.world = world;
    pthread_mutex_lock(&listMutex);
    entry.next = head;
    entry.link = &head;
    if (head) head->link = &entry.next;
    head = &entry;
    pthread_mutex_unlock(&listMutex);
    leaveLock(world->globalLock);
    return true;
}

// The newest entry of this thread goes: nested guarded operations of one
// thread unregister in the reverse order of registering.
bool unregisterThread(KivGlobal* world) {
    if (!enterLock(world->globalLock)) return false;
    const uint32_t processId = currentProcessId();
    const uint32_t threadId = currentThreadId();
    pthread_mutex_lock(&listMutex);
    for (ThreadEntry* entry = head; entry; entry = entry->next) {
        if (!isCurrentThread(entry, processId, threadId)) continue;
        *entry->link = entry->next;
        if (entry->next) entry->next->link = entry->link;
        break;
    }
    pthread_mutex_unlock(&listMutex);
    leaveLock(world->globalLock);
    return true;
}

KivGlobal* registeredWorld() {
    const uint32_t processId = currentProcessId();
    const uint32_t threadId = currentThreadId();
    KivGlobal* world = nullptr;
    pthread_mutex_lock(&listMutex);
    for (const ThreadEntry* entry = head; entry; entry = entry->next) {
        if (isCurrentThread(entry, processId, threadId)) {
            world = entry->world;
            break;
        }
    }
    pthread_mutex_unlock(&listMutex);
    return world;
}

}  // namespace fenk
