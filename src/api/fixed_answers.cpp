// Slots that answer with a fixed value whatever their arguments. The shared
// routines fill several slots each (see the table).
#include "api/api_slots.h"

int32_t kivAnswerZero(void) { return 0; }
int32_t kivAnswerMinusOne(void) { return -1; }
int64_t kivAnswerMinusOneWide(void) { return -1; }
void kivDoNothing(void) {}

int32_t kivNoTrailingBuffer(void) { return 48; }
int32_t kivRepresentationUnsupported(void) { return 25; }
int32_t kivInitialBufferExists(void) { return 47; }
int32_t kivCannotOpenDecoderInput(void) { return 57; }
int32_t kivCannotCloseDecoderInput(void) { return 56; }
int32_t kivCannotOpenEncoderOutput(void) { return 60; }
int32_t kivCannotCloseEncoderOutput(void) { return 59; }
