// Coder pairs that a test programs: what to write or decode, what to raise,
// what to answer; they record how they were called.
#ifndef FENK_TEST_SCRIPTED_CODERS_H
#define FENK_TEST_SCRIPTED_CODERS_H

#include <cstdint>
#include <vector>

#include "fenkapi.h"

namespace fenk::test {

struct CoderScript {
    // Programmed behaviour.
    std::vector<uint8_t> octets;  // the encoder's output
    void* decoded = nullptr;      // what the decoder hands back
    int32_t decodedPdu = 0;       // nonzero: the decoder updates the PDU number
    int32_t answer = 0;           // code returned by both coders
    int32_t raiseIndex = 0;       // nonzero: raise this message (the world must be guarded)
    uint32_t scribbleFlags = 0;   // nonzero: overwrite the world's flags while running
    bool traceHooks = false;      // call the trace hooks around the work, as generated coders do

    // What the coders saw.
    int encodeCalls = 0;
    int decodeCalls = 0;
    int32_t lastPdu = 0;
    void* lastValue = nullptr;
    uint32_t lastFlags = 0;
    KivBuffer lastBuffer{0, nullptr};  // encode: the buffer as given; decode: the input
    uint8_t firstOutputOctet = 0;      // the caller buffer's first octet as the encoder found it
};

// Gives the world coder pairs for every family (BER/DER/CER, PER, XER/CXER,
// EXER) that follow the script. The script must outlive the world's use.
void installScriptedCoders(KivGlobal* world, CoderScript* script);

// The same pair alone, for tests that assemble worlds by hand.
extern KivCoderPair scriptedPair;

}  // namespace fenk::test

#endif
