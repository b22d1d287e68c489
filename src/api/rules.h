// Encoding rules: their names in messages, their coder pairs, and which of
// them the companion reports as linked.
#ifndef FENK_API_RULES_H
#define FENK_API_RULES_H

#include "fenkapi.h"

namespace fenk {

// The name of each rule number as messages show it; null beyond 8.
const char* ruleName(int32_t rules);

// The coder pair that serves the rules, or null (ECN and unknown numbers
// have none).
KivCoderPair* coderPairOf(KivGlobal* world, int32_t rules);

// Asks the companion whether bit b of the linked-rules bitmap is set; a
// null bitmap counts every rule as linked, a bit above the highest as not.
bool ruleLinked(KivGlobal* world, int32_t bit);

}  // namespace fenk

#endif
