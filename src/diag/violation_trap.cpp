#include "diag/violation_trap.h"

#include <pthread.h>
#include <signal.h>

#include "diag/raise.h"
#include "diag/thread_registry.h"

namespace fenk {
namespace {

constexpr int32_t kMemoryViolation = 10;  // "0014S: A memory-violation error occurred, signal "

pthread_mutex_t trapMutex = PTHREAD_MUTEX_INITIALIZER;
int inFlight = 0;
struct sigaction replaced;

KivSignalHandler handlerOf(const struct sigaction& action) {
    // A three-argument handler is recorded by its address alone.
    if (action.sa_flags & SA_SIGINFO)
        return reinterpret_cast<KivSignalHandler>(reinterpret_cast<void (*)()>(action.sa_sigaction));
    return action.sa_handler;
}

void onViolation(int signal) {
    KivGlobal* world = registeredWorld();
    if (!world) {
        // Not a guarded thread: give the fault back to whatever handled it
        // before; returning re-runs the faulting instruction under it.
        sigaction(SIGSEGV, &replaced, nullptr);
        return;
    }
    // Jumping out of a handler leaves the signal blocked; unblock it so that
    // the next fault of this thread is trapped as well.
    sigset_t faults;
    sigemptyset(&faults);
    sigaddset(&faults, SIGSEGV);
    pthread_sigmask(SIG_UNBLOCK, &faults, nullptr);
    raiseMessage(world, kMemoryViolation, {ArgumentForm::number, static_cast<uint32_t>(signal)});
}

}  // namespace

void armTrap(KivGlobal* world) {
    pthread_mutex_lock(&trapMutex);
    struct sigaction current;
    sigaction(SIGSEGV, nullptr, &current);
    world->savedSignalHandler = handlerOf(current);
    if (inFlight++ == 0) {
        replaced = current;
        struct sigaction trap = {};
        trap.sa_handler = &onViolation;
        sigemptyset(&trap.sa_mask);
        sigaction(SIGSEGV, &trap, nullptr);
    }
    pthread_mutex_unlock(&trapMutex);
}

void disarmTrap() {
    pthread_mutex_lock(&trapMutex);
    if (inFlight > 0 && --inFlight == 0) sigaction(SIGSEGV, &replaced, nullptr);
    pthread_mutex_unlock(&trapMutex);
}

}  // namespace fenk
