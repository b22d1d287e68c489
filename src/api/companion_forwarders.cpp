// Slots 222 to 227 pass their arguments and result through to the
// companion's entries 143 to 146, 148 and 149. The library calls none of them.
#include "api/api_slots.h"
#include "kivapit.h"

#define FENK_FORWARD(ordinal)                                                              \
    int64_t kivCompanionForward##ordinal(void* a1, int64_t a2, int64_t a3, int64_t a4,     \
                                         int64_t a5, int64_t a6) {                         \
        return kivCompanionEntry##ordinal(a1, a2, a3, a4, a5, a6);                         \
    }

FENK_FORWARD(143)
FENK_FORWARD(144)
FENK_FORWARD(145)
FENK_FORWARD(146)
FENK_FORWARD(148)
FENK_FORWARD(149)
