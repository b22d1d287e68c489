/* The public header compiled as C11: the record sizes a C consumer sees. */
#include "fenkapi.h"
#include "kivapit.h"

size_t fenkC11SizeOfGlobal(void) { return sizeof(KivGlobal); }
size_t fenkC11SizeOfPrivate(void) { return sizeof(KivPrivate); }
size_t fenkC11OffsetOfXerCoders(void) { return offsetof(KivGlobal, xerCoders); }
size_t fenkC11OffsetOfExerCoders(void) { return offsetof(KivPrivate, exerCoders); }

/* A C caller uses the helpers exactly as C++ does. */
int32_t fenkC11StoreAndFetchLevel(KivGlobal* world, uint32_t level) {
    kivStoreLevel(world, level);
    return kivFetchLevel(world);
}
