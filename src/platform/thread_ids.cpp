#include "platform/thread_ids.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace fenk {

uint32_t currentProcessId() { return static_cast<uint32_t>(getpid()); }

// Async-signal-safe: the memory-violation trap calls it from its handler.
uint32_t currentThreadId() { return static_cast<uint32_t>(syscall(SYS_gettid)); }

}  // namespace fenk
