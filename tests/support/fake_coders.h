// A stand-in for the BER coder table that berCoders points to: the coder
// pair first, and at entry 83 a backward octet writer that prepends octets
// to the output chunks the way a backward encoder does.
#ifndef FENK_TEST_FAKE_CODERS_H
#define FENK_TEST_FAKE_CODERS_H

#include "fenkapi.h"

namespace fenk::test {

// Installs the fake table as the world's berCoders.
void installFakeBerCoders(KivGlobal* world);

// Prepends octets: fills the current chunk from its end (cursor is the first
// written octet, left the free octets before it), taking a new chunk through
// slot 99 whenever the current one is full.
void writeBackward(KivGlobal* world, uint8_t** cursor, uint32_t* left, const uint8_t* octets,
                   uint32_t length);

// Appends octets to the world's forward output (poolCursor, poolLeft).
void writeForward(KivGlobal* world, const uint8_t* octets, uint32_t length);

}  // namespace fenk::test

#endif
