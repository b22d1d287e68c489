// Composing a message into a text without raising: used by entry points that
// check their arguments and return the code.
#ifndef FENK_DIAG_COMPOSE_H
#define FENK_DIAG_COMPOSE_H

#include "fenkapi.h"

// Writes prefix, message text, the argument by the message's kind, "." and a
// newline into destination (which must hold 520 characters), echoes it to
// the trace output when the world's flags ask, and answers the message's
// return code. prefix is 'E' on the encoder side, 'D' on the decoder side.
int32_t kivComposeMessage(KivGlobal* world, char* destination, int32_t index, char prefix,
                          const void* argument);

#endif
