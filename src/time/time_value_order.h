// Ordering of single time points, shared by the parser's start/end check and
// the ordering and equality slots.
#ifndef FENK_TIME_VALUE_ORDER_H
#define FENK_TIME_VALUE_ORDER_H

#include "fenkapi.h"

namespace fenk {

// 1 when a is later, 0 equal, -1 earlier, -2 when the two points differ in
// their components. Time differences are compared, never applied.
int32_t compareTimePoints(const KivTimePoint& a, const KivTimePoint& b);

}  // namespace fenk

#endif
