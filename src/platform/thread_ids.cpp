#include "platform/thread_ids.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

namespace fenk {
namespace {

// Both identifiers are asked of the kernel once and then kept: every guarded
// operation registers its thread, and the system calls would otherwise be a
// good part of its cost. The thread's own copy uses initial-exec TLS, which
// the memory-violation trap may read from its signal handler without any
// allocation.
__thread uint32_t threadId __attribute__((tls_model("initial-exec"))) = 0;
std::atomic<uint32_t> processId{0};

// A forked child is a new process whose one thread has a new identifier.
void forgetIdentifiers() {
    processId.store(0, std::memory_order_relaxed);
    threadId = 0;
}

const int forgetInChildren = pthread_atfork(nullptr, nullptr, &forgetIdentifiers);

}  // namespace

uint32_t currentProcessId() {
    uint32_t id = processId.load(std::memory_order_relaxed);
    if (id == 0) {
        id = static_cast<uint32_t>(getpid());
        processId.store(id, std::memory_order_relaxed);
    }
    return id;
}

// Async-signal-safe: the memory-violation trap calls it from its handler.
uint32_t currentThreadId() {
    if (threadId == 0) threadId = static_cast<uint32_t>(syscall(SYS_gettid));
    return threadId;
}

}  // namespace fenk
