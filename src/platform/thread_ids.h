// Process and thread identifiers of the caller, for the thread registry.
#ifndef FENK_PLATFORM_THREAD_IDS_H
#define FENK_PLATFORM_THREAD_IDS_H

#include <cstdint>

namespace fenk {

uint32_t currentProcessId();
uint32_t currentThreadId();

}  // namespace fenk

#endif
