// Calling slots through the world's apiTable, and the two internal memory
// operations built on it.
#ifndef FENK_API_TABLE_MEMORY_H
#define FENK_API_TABLE_MEMORY_H

#include "api/api_slots.h"

// A slot of the world's own table, cast to its routine type. The library
// calls slots 55, 102, 103, 106, 132, 133, 238, 240 and 291 this way so that
// a replaced routine is the one used.
#define KIV_TABLE_CALL(world, type, slot) (reinterpret_cast<type*>((world)->apiTable[(slot)]))

namespace fenk {

// Allocates with the allocate routine that slot 55 reports; null when there
// is none. (Releasing the same way is slot 167, kivReleaseThroughTable.)
void* allocateThroughTable(KivGlobal* world, size_t size);

}  // namespace fenk

#endif
