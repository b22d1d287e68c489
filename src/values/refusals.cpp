// Two routines that only refuse: a bad argument, else "C representation not
// supported".
#include "values/values_slots.h"

int32_t kivRefuseFour(const void* a, const void* b, const void* c, int32_t d) {
    return (!a || !b || !c || d < 0) ? 6 : 25;
}

int32_t kivRefuseThree(const void* a, const void* b, const void* c, uint8_t) {
    return (!a || !b || !c) ? 6 : 25;
}
