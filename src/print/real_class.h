// The special REAL values as decimal REAL texts hold them.
#ifndef FENK_PRINT_REAL_CLASS_H
#define FENK_PRINT_REAL_CLASS_H

namespace fenk {

// For a text that is exactly one of the held spellings ("PLUS_INFINITY",
// "MINUS_INFINITY", "NOT_A_NUMBER", "0", "-0"), its value-notation word;
// null for any other text.
const char* specialRealWord(const char* text);

}  // namespace fenk

#endif
