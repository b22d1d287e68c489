// The error text of a raised message: the message, its argument, the PDU and
// component path, and for XML decoding the position in the input.
#ifndef FENK_DIAG_ERROR_CONTEXT_H
#define FENK_DIAG_ERROR_CONTEXT_H

#include <cstddef>
#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// How the raise argument's value is to be read.
enum class ArgumentForm : int32_t {
    text = 0,      // a pointer to a text
    number = 1,    // the low 32 bits are a number
    wide = 2,      // a 64-bit number
    dataText = 3,  // a pointer to a text built from caller data
};

struct RaiseArgument {
    ArgumentForm form;
    uint64_t value;
};

// The composed text never grows beyond this many characters before its
// closing full stop and newline; the message area holds 520.
constexpr size_t kErrorTextLimit = 510;

// Stores the message's return code into the world's errorCode and, when
// messageOut is set, composes the full error text there.
void composeErrorContext(KivGlobal* world, int32_t index, RaiseArgument argument);

}  // namespace fenk

#endif
